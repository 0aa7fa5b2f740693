// Changes parameters in a fixed order and keeps their windows in step with the plot.
#pragma once

#include <QObject>
#include <QString>
#include <set>
#include <string>

#include "document/parameter_values.h"
#include "document/plot_document.h"
#include "document/slots.h"
#include "term/math_parser.h"
#include "ui/dialogs.h"

namespace korvinth::ui {
class ParameterColumn;
class ParameterList;
class TimerDialog;
}  // namespace korvinth::ui

namespace korvinth::app {

// What a change of a parameter reaches beyond the plot and the parameters' own windows.
class ParameterHost
{
public:
    virtual ~ParameterHost() = default;
    virtual void RereadRanges() = 0;  // the ranges use a parameter that has changed
    virtual void RedrawGraph() = 0;
    virtual void RefreshCalculator() = 0;  // its variables have changed
    virtual document::Bounds DisplayedXRange() const = 0;
    virtual void FamilyChosen() = 0;  // a function or a parameter of one, after the redraw
};

class ParameterControl : public QObject
{
    Q_OBJECT
public:
    // All outlive the control.
    ParameterControl(document::PlotDocument& document, term::MathParser& parser,
                     ui::ParameterColumn& column, ui::Dialogs& dialogs, ParameterHost& host);

    // The list, made on first use, shows the plot from now on.
    void SetList(ui::ParameterList& list);
    void ShowList();

    // A parameter came into use (document::PlotHost::InitSlider).
    void InitSlider(document::ParameterIndex index);
    // After every ApplyPlot: new parameters get their windows, those no term uses lose theirs, a
    // window that the user closed stays closed; lists and bounds follow the plot.
    void FollowPlot();
    // After a change of the displayed x-range: integral bounds follow it.
    void FollowRange();

    void ShowWindow(document::ParameterIndex index, bool visible);
    void ShowAllWindows(bool visible);  // all slider windows or none
    void OpenTimerDialog(document::ParameterIndex index);
    ui::TimerDialog& TimerSettings();  // made on first use

    // Sets a value in the fixed order: ranges, slider, redraw, calculator, value field.
    void setpar(document::ParameterIndex index, double value, bool from_slider = false);
    // Takes typed bounds over or refuses them.
    void chpari(document::ParameterIndex index, const QString& lower, const QString& upper);
    // Stores bounds and places the slider again.
    void setparb(document::ParameterIndex index, const document::Bounds& bounds);
    void TakeValue(document::ParameterIndex index, const QString& text);
    // False when the step is refused.
    bool TakeTimer(document::ParameterIndex index, const QString& step,
                   document::AnimationMode mode);
    void SetFamily(document::ParameterIndex index, bool family);  // one parameter at most has it
    void ReleaseFamily();

    void ShowRunning(document::ParameterIndex index, bool running);
    void ShowCouplings();  // in the pop-ups and the list

    // While one lives, setpar holds ranges, redraw and calculator back; each is done once when the
    // last one ends.
    class Together
    {
    public:
        explicit Together(ParameterControl& control) : control_(control) { ++control_.held_; }
        ~Together() { control_.Release(); }
        Together(const Together&) = delete;
        Together& operator=(const Together&) = delete;

    private:
        ParameterControl& control_;
    };

Q_SIGNALS:
    // The timer symbol of a parameter that has a step was clicked.
    void timerToggled(korvinth::document::ParameterIndex index);
    void stepChanged(korvinth::document::ParameterIndex index);
    // The user has couplings changed, in a pop-up or in the list.
    void couplingChosen(korvinth::document::ParameterIndex index,
                        korvinth::document::Coupling coupling);
    void couplingsReset();

private:
    void ConnectWindows();
    void ClickTimer(document::ParameterIndex index);
    void ConfirmTimer(document::ParameterIndex index, const QString& step,
                      document::AnimationMode mode);
    void AllowFamily(document::SlotIndex slot, bool allowed);
    void RereadRanges();
    void Release();
    void Redraw();
    void ShowButton();  // of the window `Parameter`
    bool InUse(document::ParameterIndex index) const;

    document::PlotDocument& document_;
    term::MathParser& parser_;
    ui::ParameterColumn& column_;
    ui::ParameterList* list_ = nullptr;
    ui::Dialogs& dialogs_;
    ParameterHost& host_;
    ui::TimerDialog* timer_dialog_ = nullptr;
    std::set<std::string> closed_names_;  // of parameters in use whose windows the user closed
    std::set<std::string> shown_names_;   // of parameters in use that have had their window
    document::SlotTable<document::Bounds> followed_;  // what the integral bounds followed last
    int held_ = 0;
    bool ranges_wait_ = false;
    bool redraw_waits_ = false;
};

}  // namespace korvinth::app
