// Changes the plot and its windows, each change in one fixed order of statements.
#pragma once

#include <QObject>
#include <string>
#include <string_view>

#include "app/additions_control.h"
#include "app/animation_control.h"
#include "app/application.h"
#include "app/collection_host.h"
#include "app/mouse_coupling.h"
#include "app/parameter_control.h"
#include "app/plot_request.h"
#include "app/view_control.h"
#include "document/collection.h"
#include "document/plot_undo.h"
#include "ui/dialogs.h"

namespace korvinth::ui {
class Asymptoten;
class GraphForm;
class InterForm;
class MiniCalc;
class ParameterColumn;
class Punkte;
class TermForm;
}  // namespace korvinth::ui

namespace korvinth::app {

// The windows that always show the plot.
struct PlotWindows
{
    ui::TermForm& terms;
    ui::GraphForm& graph;
    ui::ParameterColumn& sliders;
};

class Session final : public QObject, public CollectionHost, ApplyHooks, ParameterHost, ViewListener
{
    Q_OBJECT
public:
    // All outlive the session.
    Session(Application& application, const PlotWindows& windows, ui::Dialogs& dialogs);
    ~Session() override;
    Q_DISABLE_COPY_MOVE(Session)

    // Draws what the command line asks for; the plot of before can be brought back.
    void DrawRequest(const CommandLine& command);

    void Redraw() { RedrawGraph(); }
    void ForgetSteps();  // nothing can be undone

    // The rows or intervals as typed become the plot.
    void ApplyRows();
    void ApplyIntervals();
    void ClearAllRows();  // mn_allclr
    void Undo();
    void Redo();
    bool CanUndo() const { return undo_.CanUndo(); }
    bool CanRedo() const { return undo_.CanRedo(); }

    // CollectionHost. What is wrong with an entry is shown.
    document::CollectionEntry CurrentPlot() override;
    void DrawEntry(const document::CollectionEntry& entry) override;

    // For the graph of an editor's row; a curve is changed in both of its rows.
    void ToggleVisible(document::SlotIndex row);  // swvis
    void TakeColour(document::SlotIndex row, document::Colour colour);
    void AskLineWidth(document::SlotIndex row);
    void SetLineType(document::SlotIndex row, document::LineType type);
    void SetPointRadius(document::SlotIndex row, int radius);
    void AskSampleCount(document::SlotIndex row);
    void SetFamilyAllowed(document::SlotIndex row, bool allowed);
    // Sliders of the parameters that this function needs, with or without those shown already.
    void ShowParametersOf(document::SlotIndex row, bool only);
    // Makes the row of the graph near a place of the area, if there is one, the current row.
    void ChooseGraphAt(double area_x, double area_y);
    // The slot that draws the row's graph: the x-part for both rows of a curve.
    document::SlotIndex DrawnSlot(document::SlotIndex row) const;

    void ToggleSwitch(bool document::DisplayAttributes::*flag);
    void SetAngleMode(term::TrigMode mode);
    void ToggleIntegralDetection();
    void CopyTerms(bool with_values) const;  // to the clipboard

    // The general settings, as typed in their window or their defaults (mn_optdef).
    void TakeGeneralSettings(const document::DisplayAttributes& settings);
    void UseDefaultSettings();
    // After the attributes were set past the session (the settings file was read).
    void FollowSettings();
    void AskRowFont();  // of the term editor
    void TakeZoomFactors(const render::ZoomFactors& factors);
    // Windows made on first use show the plot and follow it from now on; they outlive the session.
    void SetCalculator(ui::MiniCalc& calculator) { calculator_ = &calculator; }
    void SetRanges(ui::InterForm& ranges) { ranges_ = &ranges; }
    void SetLines(ui::Asymptoten& lines);
    void SetPoints(ui::Punkte& points);
    void TakeCalculatorPlaces(int places);
    // After the picture was drawn.
    void FollowRedraw();

    const document::PlotDocument& Document() const { return application_.Document(); }
    int SampleCount(document::SlotIndex slot) const { return application_.SampleCount(slot); }
    ViewControl& View() { return application_.Views(); }
    ParameterControl& Parameters() { return parameters_; }
    AnimationControl& Animation() { return animation_; }
    MouseCoupling& PointerCoupling() { return coupling_; }

Q_SIGNALS:
    void stateChanged();                   // check marks and enabled entries are to follow
    void outcomeChanged(QString outcome);  // of the last applied plot: "Ok." or the messages
    void layoutChanged();                  // other heights suit the windows
    void parametersWanted();               // the column of sliders is to be seen
    void settingsTouched();                // what the settings file keeps
    void touched();                        // anything that an entry of a collection holds

private:
    // ApplyHooks
    void StopAnimation() override;
    void StoreRows(document::PlotDocument& plot) override;
    void RowsChecked(const document::PlotDocument& plot) override;
    void InitSlider(document::ParameterIndex index) override;
    // ParameterHost
    void RereadRanges() override;
    void RefreshCalculator() override;
    document::Bounds DisplayedXRange() const override;
    void FamilyChosen() override;
    // ParameterHost and ViewListener
    void RedrawGraph() override;
    // ViewListener
    void updatex() override;
    void updatey() override;
    void updatet() override;
    void HistoryChanged(bool can_go_back) override;
    void CollectParameters() override;
    void ParametersCollected(const document::RangeTexts& before) override;

    void Connect();
    void FollowArea();
    void TellSampleCounts();
    // Applies the document; the windows show what came of it.
    void Rebuild();
    void ShowReport(const document::PlotReport& report);
    void ShowPlot(const PlotRequestReport& request);
    void TakeList(std::string document::PlotDocument::*list, const std::string& text, bool apply);
    void GoTo(const std::optional<document::PlotSnapshot>& snapshot);
    void ShowChange();  // of looks
    template <class Change>
    void ChangeGraph(document::SlotIndex row, Change change);
    template <class Change>
    void AsOneStep(Change change);

    Application& application_;
    PlotWindows windows_;
    ui::Dialogs& dialogs_;
    ParameterControl parameters_;
    AnimationControl animation_;
    MouseCoupling coupling_;
    AdditionsControl additions_;
    ui::MiniCalc* calculator_ = nullptr;
    ui::InterForm* ranges_ = nullptr;
    document::PlotUndo undo_;
    document::PlotSnapshot before_drag_;    // of an additional point
    document::PlotSnapshot before_ranges_;  // that brought new parameters
    bool rows_are_applied_ = false;         // Apply takes the editor's rows
    bool counts_are_stored_ = false;        // of samples: an entry's, which was not drawn yet
};

}  // namespace korvinth::app
