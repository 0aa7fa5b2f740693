// A parameter's slider window: name and value, slider between its bounds, timer symbol.
#pragma once

#include <QString>
#include <QWidget>

#include "document/parameter_values.h"
#include "document/plot_document.h"
#include "document/slots.h"

class QLabel;
class QLineEdit;
class QMenu;
class QSlider;
class QToolButton;

namespace korvinth::ui {

class TimerSymbol;

// Shows one parameter and reports what the user did; it changes no plot. Its signals carry the
// parameter's index.
class Para : public QWidget
{
    Q_OBJECT
public:
    explicit Para(document::ParameterIndex index, QWidget* parent = nullptr);

    document::ParameterIndex Index() const { return index_; }

    // Fills the window for the parameter that the index stands for now.
    void init(const document::Parameter& parameter);
    // None of these raises a signal.
    void PlaceSlider(double value);
    void ShowValue(double value);
    void ShowBounds(const document::Bounds& bounds, double value);
    void ShowRunning(bool running);  // framed symbol, locked fields
    void ShowStep(double step);
    void ShowFamily(bool family);  // check mark of the pop-up

    void FocusSlider();
    // Puts the controls behind `previous` in the tab order; the last of them.
    QWidget* FollowInTabOrder(QWidget* previous);

    // The pop-up on a right click.
    QMenu* ContextMenu() const { return menu_; }

Q_SIGNALS:
    void sliderMoved(korvinth::document::ParameterIndex index, double value);
    void valueTyped(korvinth::document::ParameterIndex index, const QString& text);
    void boundsTyped(korvinth::document::ParameterIndex index, const QString& lower,
                     const QString& upper);
    void timerClicked(korvinth::document::ParameterIndex index);         // left button
    void timerSettingsWanted(korvinth::document::ParameterIndex index);  // right button
    void familyChosen(korvinth::document::ParameterIndex index, bool family);
    void closed(korvinth::document::ParameterIndex index);  // hides; the parameter stays

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    class BusyMark;

    void SetUpControls();
    void SetUpMenu();
    void Arrange();
    void FollowFont();
    void ElideName();
    void changepar(int position);
    void TakeText(QLineEdit* field);
    void RestoreText(QLineEdit* field);

    document::ParameterIndex index_;
    document::Bounds bounds_;  // as shown
    double value_ = 0;         // as shown
    QString title_;
    bool busy_ = false;  // the window itself places the slider
    QLabel* name_;
    QSlider* h_scroll1_;
    QLineEdit* text1_;
    QLineEdit* text2_;
    QLineEdit* text3_;
    TimerSymbol* image1_;
    QToolButton* command1_;
    QMenu* menu_;
    QAction* family_;
};

}  // namespace korvinth::ui
