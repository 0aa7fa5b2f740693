// The window `Parameter`: families, and the list that chooses which sliders are shown.
#pragma once

#include <QString>
#include <QWidget>

#include "document/plot_document.h"
#include "document/slots.h"

class QComboBox;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace korvinth::ui {

class ParameterList : public QWidget
{
    Q_OBJECT
public:
    explicit ParameterList(QWidget* parent = nullptr);

    // Rebuilds the lists from the document.
    void refpar(const document::PlotDocument& document);
    // The button shows all slider windows, or none when all are shown.
    void schalt(bool all_shown);

Q_SIGNALS:
    void sliderWanted(korvinth::document::ParameterIndex index);  // double click or Enter
    void showAllWanted(bool shown);
    void familyParameterChosen(korvinth::document::ParameterIndex index);
    void noFamilyParameterChosen();
    void familyFunctionToggled(korvinth::document::SlotIndex slot, bool allowed);

private:
    void getclick(const QListWidgetItem* item);
    void TakeFamilyParameter(int entry);
    void FillFunctions(const document::PlotDocument& document);
    void FillParameters(const document::PlotDocument& document);

    bool filling_ = false;
    bool all_shown_ = false;
    QListWidget* functions_;
    QComboBox* family_parameter_;
    QListWidget* parameters_;
    QComboBox* coupling_;
    QPushButton* show_all_;
};

}  // namespace korvinth::ui
