#include "app/plot_commands.h"

#include <QAction>
#include <QMenu>
#include <string>

namespace korvinth::app {
namespace {

using document::DisplayAttributes;

struct SwitchEntry
{
    std::string_view name;
    bool DisplayAttributes::*flag;
};
constexpr SwitchEntry kSwitches[] = {
    {"mn_viewnumb", &DisplayAttributes::x_numbers},
    {"mn_viewnumby", &DisplayAttributes::y_numbers},
    {"mn_helpline", &DisplayAttributes::help_lines},
    {"mn_helpdopp", &DisplayAttributes::extra_help_lines},
    {"mn_axevis", &DisplayAttributes::axes},
    {"mn_axname", &DisplayAttributes::axis_names},
    {"mn_asyvis", &DisplayAttributes::lines},
    {"mn_puvis", &DisplayAttributes::points},
};

struct AngleEntry
{
    std::string_view name;
    term::TrigMode mode;
};
constexpr AngleEntry kAngles[] = {
    {"mn_rad", term::TrigMode::Radians},
    {"mn_deg", term::TrigMode::Degrees},
    {"mn_grad", term::TrigMode::Grads},
};

constexpr int kLargestPoint = 10;

constexpr document::LineType kLineTypes[] = {
    document::LineType::Solid,      document::LineType::Dash,       document::LineType::Dot,
    document::LineType::DashDot,    document::LineType::DashDotDot, document::LineType::Invisible,
    document::LineType::SolidInside};

std::string TypeEntry(document::LineType type)
{
    return "mng_line[" + std::to_string(static_cast<int>(type)) + "]";
}

std::string PointEntry(int radius) { return "mng_point[" + std::to_string(radius) + "]"; }

}  // namespace

PlotCommands::PlotCommands(const Menus& menus, Session& session, ui::TermForm& terms,
                           ui::GraphForm& graph)
    : menus_(menus), session_(session), terms_(terms), graph_(graph)
{
    ConnectPlot();
    ConnectView();
    ConnectRow();
    connect(&session_, &Session::stateChanged, this, &PlotCommands::ShowState);
    ShowState();
}

template <class Action>
void PlotCommands::On(std::string_view entry, Action action)
{
    connect(&menus_.Entry(entry), &QAction::triggered, this, action);
}

void PlotCommands::ConnectPlot()
{
    On("mn_allclr", [this] { session_.ClearAllRows(); });
    On("mn_undo", [this] { session_.Undo(); });
    On("mn_redo", [this] { session_.Redo(); });
    On("mn_copytermo", [this] { session_.CopyTerms(false); });
    On("mn_paracopy", [this] { session_.CopyTerms(true); });
    On("mn_autoint", [this] { session_.ToggleIntegralDetection(); });
    for (const char* const entry : {"mnka", "mng_couple"}) {
        On(entry, [this](bool active) { session_.PointerCoupling().SetActive(active); });
    }
    for (const char* const entry : {"mnkc", "mng_uncouple"}) {
        On(entry, [this] { session_.PointerCoupling().Reset(); });
    }
    On("mn_timergo", [this] { session_.Animation().StartOrStopAll(); });
    for (const SwitchEntry& entry : kSwitches) {
        On(entry.name, [this, &entry] { session_.ToggleSwitch(entry.flag); });
    }
    for (const AngleEntry& entry : kAngles) {
        On(entry.name, [this, &entry] { session_.SetAngleMode(entry.mode); });
    }
}

void PlotCommands::ConnectView()
{
    On("mn_std", [this] { session_.View().UseStandardRange(); });
    On("mng_back", [this] { session_.View().PopView(); });
    On("mn_zoomtoggle", [this] {
        session_.View().SetClickZoomLocked(!session_.View().ClickZoomLocked());
        ShowState();
    });
    On("mn_verhx", [this] { ChooseKeptRatio(KeptRatio::X); });
    On("mn_verhy", [this] { ChooseKeptRatio(KeptRatio::Y); });
    On("mng_move", [this] { ToggleMode(ui::PointerMode::Move); });
    for (const char* const entry : {"mn_trace", "mng_trace"}) {
        On(entry, [this] { ToggleTracing(); });
    }
    connect(&graph_, &ui::GraphForm::tracingChanged, this, &PlotCommands::ShowState);
    On("mng_zoom", [this] { ToggleMode(ui::PointerMode::ZoomFrame); });
}

void PlotCommands::ConnectRow()
{
    On("mng_rowafter", [this] { terms_.add_before(terms_.CurrentRow(), true); });
    On("mng_rowbefore", [this] { terms_.add_before(terms_.CurrentRow(), false); });
    On("mng_rowclr", [this] { terms_.clr(terms_.CurrentRow()); });
    On("mng_vis", [this] { session_.ToggleVisible(terms_.CurrentRow()); });
    On("mng_colour", [this] { terms_.showcd(); });
    On("mng_terms", [this] { SetState(document::EditorState::Terms); });
    On("mng_intervals", [this] { SetState(document::EditorState::Intervals); });
    On("mng_fontvar", [this](bool own) {
        terms_.SetRowPoints(own ? std::optional(terms_.RowPoints()) : std::nullopt);
    });
    On("mng_font", [this] { session_.AskRowFont(); });
    On("mng_width", [this] { session_.AskLineWidth(terms_.CurrentRow()); });
    On("mng_samples", [this] { session_.AskSampleCount(terms_.CurrentRow()); });
    On("mng_onlypara", [this] { session_.ShowParametersOf(terms_.CurrentRow(), true); });
    On("mng_alsopara", [this] { session_.ShowParametersOf(terms_.CurrentRow(), false); });
    On("mng_family",
       [this](bool allowed) { session_.SetFamilyAllowed(terms_.CurrentRow(), allowed); });
    for (const document::LineType type : kLineTypes) {
        On(TypeEntry(type), [this, type] { session_.SetLineType(terms_.CurrentRow(), type); });
    }
    for (int radius = 0; radius <= kLargestPoint; ++radius) {
        On(PointEntry(radius),
           [this, radius] { session_.SetPointRadius(terms_.CurrentRow(), radius); });
    }
}

// At most one of the two is in force; choosing it again releases it.
void PlotCommands::ChooseKeptRatio(KeptRatio ratio)
{
    ViewControl& view = session_.View();
    view.SetKeptRatio(view.Kept() == ratio ? KeptRatio::None : ratio);
    ShowState();
}

void PlotCommands::ToggleMode(ui::PointerMode mode)
{
    graph_.SetMode(graph_.Mode() == mode ? ui::PointerMode::Plain : mode);
    ShowState();
}

void PlotCommands::ToggleTracing()
{
    const bool tracing = !graph_.Tracing();
    if (tracing) menus_.Entry("mn_graph").trigger();  // may be closed
    graph_.setFocus();
    graph_.SetTracing(tracing);
    ShowState();
}

void PlotCommands::SetState(document::EditorState state)
{
    const document::SlotIndex row = terms_.CurrentRow();
    menus_.Entry("mn_term").trigger();  // the editor may be closed; goes to the row it was left in
    terms_.setstate(static_cast<int>(state));
    terms_.FocusRow(row);
}

void PlotCommands::ShowRowMenu(QPoint place)
{
    ShowRowState();
    menus_.RowMenu().popup(place);
}

void PlotCommands::ShowGraphMenu(QPoint place)
{
    ShowRowState();
    menus_.GraphMenu().popup(place);
}

void PlotCommands::ShowState()
{
    const DisplayAttributes& attributes = session_.Document().attributes;
    for (const SwitchEntry& entry : kSwitches) {
        menus_.SetChecked(entry.name, attributes.*entry.flag);
    }
    for (const AngleEntry& entry : kAngles) {
        menus_.SetChecked(entry.name, attributes.angle_mode == entry.mode);
    }
    menus_.SetChecked("mn_autoint", attributes.detect_integrals);
    menus_.SetChecked("mnka", session_.PointerCoupling().Active());
    menus_.SetChecked("mng_couple", session_.PointerCoupling().Active());
    const ViewControl& view = session_.View();
    menus_.SetChecked("mn_verhx", view.Kept() == KeptRatio::X);
    menus_.SetChecked("mn_verhy", view.Kept() == KeptRatio::Y);
    menus_.SetChecked("mn_zoomtoggle", view.ClickZoomLocked());
    menus_.SetChecked("mng_move", graph_.Mode() == ui::PointerMode::Move);
    menus_.SetChecked("mng_zoom", graph_.Mode() == ui::PointerMode::ZoomFrame);
    menus_.SetChecked("mn_trace", graph_.Tracing());
    menus_.SetChecked("mng_trace", graph_.Tracing());
    menus_.SetEnabled("mng_back", !view.History().Empty());
    const bool terms_shown = terms_.State() == document::EditorState::Terms;
    menus_.SetEnabled("mng_terms", !terms_shown);
    menus_.SetEnabled("mng_intervals", terms_shown);
    menus_.SetEnabled("mn_undo", session_.CanUndo());
    menus_.SetEnabled("mn_redo", session_.CanRedo());
    menus_.SetCaption("mn_timergo", session_.Animation().MenuCaption());
}

void PlotCommands::ShowRowState()
{
    const document::SlotIndex row = terms_.CurrentRow();
    const document::SlotIndex drawn = session_.DrawnSlot(row);
    const document::FunctionSlot& slot = session_.Document().slots[drawn];
    const bool used = !slot.name.empty();
    menus_.SetChecked("mng_vis", slot.visible);
    menus_.SetChecked("mng_fontvar", terms_.HasOwnRowPoints());
    menus_.SetChecked("mng_family", slot.family_allowed);
    menus_.SetChecked(TypeEntry(session_.Document().attributes.slots[drawn].type), true);
    menus_.SetChecked(PointEntry(slot.point_radius), true);
    for (const std::string_view entry :
         {"mng_vis", "mng_samples", "mng_onlypara", "mng_alsopara", "mng_family"}) {
        menus_.SetEnabled(entry, used);
    }
    menus_.SetEnabled("mng_rowafter", row != document::AllSlots().back());
    menus_.SetEnabled("mng_rowbefore", row != document::AllSlots().back());
}

}  // namespace korvinth::app
