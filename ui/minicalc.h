// The pocket calculator: one term and its rounded result.
#pragma once

#include <QWidget>

#include "document/plot_document.h"
#include "term/math_parser.h"
#include "ui/dialogs.h"
#include "ui/term_history.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace korvinth::ui {

// The window `minicalc`, "Taschenrechner".
class MiniCalc : public QWidget
{
    Q_OBJECT
public:
    // Calculates with the definitions of the parser and the plot. All outlive the window.
    MiniCalc(term::MathParser& parser, const document::PlotDocument& document, Dialogs& dialogs,
             QWidget* parent = nullptr);

    void docalc();
    // Takes a number of decimal places, given as a term, then calculates; a number that is none
    // is told.
    void checkround(const QString& text);

    // The result follows definitions and parameters; a term that is being typed has none yet.
    void Refresh();
    // The number of places is another one.
    void FollowSettings();

    QSize sizeHint() const override;

Q_SIGNALS:
    void placesChosen(int places);  // the receiver stores and writes it before it returns
    void closeWanted();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void MakeControls();
    void Connect();
    bool TakeTermKey(int key);                    // in Text1; true when it was one of its own
    bool TakePlacesKey(int key);                  // in Text2, likewise
    void FollowPlacesField(const QEvent& event);  // Text2
    void Calculate();
    void Clear();
    void ShowResult();
    void ShowLine(const QString& line);
    void ShowPlaces();
    void HoldSize();
    void PlaceControls();
    int Scaled(int units) const;  // pixels

    term::MathParser& parser_;
    const document::PlotDocument& document_;
    Dialogs& dialogs_;
    QLabel* term_caption_;
    QLineEdit* term_;
    QPushButton* equals_;
    QLabel* result_caption_;
    QLabel* result_;
    QPushButton* clear_;
    QLabel* places_caption_;
    QLineEdit* places_;
    QPushButton* close_;
    TermHistory history_;
    TermHistory places_history_;
    QString calculated_;          // the term whose result is shown
    bool enter_is_down_ = false;  // was pressed in Text2
};

}  // namespace korvinth::ui
