// The column of slider windows: one below the other, scrollable when they are many.
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

#include "document/plot_document.h"
#include "document/slots.h"
#include "ui/para.h"

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace korvinth::ui {

// Slider windows are made on first use and kept. Their signals come out of the column.
class ParameterColumn : public QWidget
{
    Q_OBJECT
public:
    explicit ParameterColumn(QWidget* parent = nullptr);

    Para* Window(document::ParameterIndex index) const { return windows_[index]; }  // or nullptr
    Para& Make(document::ParameterIndex index);
    void ShowWindow(document::ParameterIndex index, bool visible);
    bool IsShown(document::ParameterIndex index) const;
    std::vector<document::ParameterIndex> Shown() const;
    void Reveal(document::ParameterIndex index);  // scrolled into view, the slider gets the focus

    QSize sizeHint() const override;
    int HeightOfWindows() const;  // that shows all without scrolling

Q_SIGNALS:
    void sliderMoved(korvinth::document::ParameterIndex index, double value);
    void valueTyped(korvinth::document::ParameterIndex index, const QString& text);
    void boundsTyped(korvinth::document::ParameterIndex index, const QString& lower,
                     const QString& upper);
    void timerClicked(korvinth::document::ParameterIndex index);
    void timerSettingsWanted(korvinth::document::ParameterIndex index);
    void familyChosen(korvinth::document::ParameterIndex index, bool family);
    void closed(korvinth::document::ParameterIndex index);

private:
    document::ParameterTable<Para*> windows_;
    QScrollArea* scroll_;
    QVBoxLayout* stack_;
    QLabel* hint_;  // what to do while there is no slider
};

}  // namespace korvinth::ui
