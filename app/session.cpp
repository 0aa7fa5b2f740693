#include "app/session.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScopedValueRollback>
#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "document/general_settings.h"
#include "document/parameters_of.h"
#include "document/plot_entry.h"
#include "document/terms_text.h"
#include "render/sampling.h"
#include "ui/asymptoten.h"
#include "ui/graphform.h"
#include "ui/interform.h"
#include "ui/minicalc.h"
#include "ui/parameter_column.h"
#include "ui/punkte.h"
#include "ui/termform.h"

namespace korvinth::app {
namespace {

constexpr int kSmallestRowPoints = 8;
constexpr int kLargestRowPoints = 36;

// Collected texts end with a separator.
std::string_view WithoutSeparator(std::string_view text)
{
    while (!text.empty() && (text.back() == ' ' || text.back() == ';')) text.remove_suffix(1);
    return text;
}

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

Session::Session(Application& application, const PlotWindows& windows, ui::Dialogs& dialogs)
    : application_(application),
      windows_(windows),
      dialogs_(dialogs),
      parameters_(application.Document(), application.Parser(), windows.sliders, dialogs, *this),
      animation_(application.Document(), parameters_),
      coupling_(application.Document(), parameters_),
      additions_(application, parameters_, dialogs)
{
    application_.Attach(this);
    View().SetListener(this);
    Connect();
}

Session::~Session()
{
    View().SetListener(nullptr);
    application_.Attach(nullptr);
}

// Each signal has one receiver here; what follows from it stands in the receiver's statements.
void Session::Connect()
{
    connect(&windows_.terms, &ui::TermForm::applied, this, [this](document::EditorState state) {
        if (state == document::EditorState::Terms) {
            ApplyRows();
        } else {
            ApplyIntervals();
        }
    });
    connect(&windows_.terms, &ui::TermForm::visibilityToggled, this, &Session::ToggleVisible);
    connect(&windows_.terms, &ui::TermForm::colourChosen, this, &Session::TakeColour);
    connect(&windows_.terms, &ui::TermForm::heightFitted, this, &Session::layoutChanged);
    connect(&windows_.terms, &ui::TermForm::stateChanged, this, &Session::stateChanged);
    connect(&windows_.graph, &ui::GraphForm::areaResized, this, &Session::FollowArea);
    connect(&windows_.graph, &ui::GraphForm::modeChanged, this, &Session::stateChanged);
    connect(&windows_.graph, &ui::GraphForm::pointerMoved, &coupling_,
            &MouseCoupling::FollowPointer);
    connect(&windows_.graph, &ui::GraphForm::plainClicked, &coupling_, &MouseCoupling::parkop);
    connect(&coupling_, &MouseCoupling::changed, this, &Session::stateChanged);
    connect(&additions_, &AdditionsControl::pointGrabbed, this,
            [this] { before_drag_ = document::TakeSnapshot(Document()); });
    connect(&additions_, &AdditionsControl::pointMoved, this, &Session::RedrawGraph);
    connect(&additions_, &AdditionsControl::pointDropped, this, [this] {
        undo_.Push(std::move(before_drag_), document::TakeSnapshot(Document()));
        Q_EMIT stateChanged();
    });
    windows_.graph.SetPointHandle(&additions_);
    connect(&animation_, &AnimationControl::activeChanged, this, &Session::stateChanged);
    animation_.SetBusy([this] { return windows_.graph.Unfinished(); });
}

void Session::SetLines(ui::Asymptoten& lines)
{
    connect(&lines, &ui::Asymptoten::taken, this, [this](const std::string& text) {
        additions_.LinesTaken();
        TakeList(&document::PlotDocument::lines_text, text, true);
    });
    connect(&lines, &ui::Asymptoten::restyled, this, [this](const std::string& text) {
        TakeList(&document::PlotDocument::lines_text, text, false);
    });
    additions_.SetLines(lines);
}

void Session::SetPoints(ui::Punkte& points)
{
    connect(&points, &ui::Punkte::taken, this, [this](const std::string& text) {
        TakeList(&document::PlotDocument::points_text, text, true);
    });
    connect(&points, &ui::Punkte::restyled, this, [this](const std::string& text) {
        TakeList(&document::PlotDocument::points_text, text, false);
    });
    additions_.SetPoints(points);
}

document::CollectionEntry Session::CurrentPlot()
{
    return document::EntryOfPlot(Document(), application_.Ranges());
}

void Session::DrawEntry(const document::CollectionEntry& entry)
{
    std::string faults;
    AsOneStep([&] {
        faults = application_.TakeEntry(entry);
        counts_are_stored_ = true;
        FollowSettings();
        windows_.terms.init();
        Rebuild();
    });
    Q_EMIT settingsTouched();
    if (!faults.empty()) dialogs_.ShowExclamation("Meldung:", faults);
}

void Session::DrawRequest(const CommandLine& command)
{
    AsOneStep([&] {
        document::FillPlot({}, application_.Document());
        counts_are_stored_ = false;
        ShowPlot(ApplyRequest(application_, command));
    });
}

void Session::ShowPlot(const PlotRequestReport& request)
{
    document::PlotReport report;
    report.errors = request.errors;
    report.notes = request.notes;
    report.first_faulty_row = request.first_faulty_row;
    parameters_.FollowPlot();
    windows_.terms.init();
    ShowReport(report);
}

void Session::ApplyRows()
{
    AsOneStep([this] {
        const QScopedValueRollback<bool> storing(rows_are_applied_, true);
        Rebuild();
    });
}

void Session::ApplyIntervals()
{
    AsOneStep([this] {
        windows_.terms.StoreIntervals(application_.Document());
        Rebuild();
    });
    windows_.terms.setstate(-1);
}

void Session::ClearAllRows()
{
    if (windows_.terms.FilledRows() > 1 &&
        !dialogs_.AskYesNo("Achtung!", "Sollen alle Einträge gelöscht werden?")) {
        return;
    }
    windows_.terms.clrall();
    ApplyRows();
}

void Session::ForgetSteps()
{
    undo_ = {};
    Q_EMIT stateChanged();
}

void Session::Undo() { GoTo(undo_.Undo(document::TakeSnapshot(Document()))); }

void Session::Redo() { GoTo(undo_.Redo(document::TakeSnapshot(Document()))); }

void Session::GoTo(const std::optional<document::PlotSnapshot>& snapshot)
{
    if (!snapshot) return;
    document::RestoreSnapshot(application_.Document(), *snapshot);
    Rebuild();
    windows_.terms.init();
    Q_EMIT layoutChanged();
}

// The step is kept when the plot is another one afterwards.
template <class Change>
void Session::AsOneStep(Change change)
{
    document::PlotSnapshot before = document::TakeSnapshot(Document());
    change();
    undo_.Push(std::move(before), document::TakeSnapshot(Document()));
    Q_EMIT stateChanged();
}

void Session::Rebuild()
{
    const document::PlotReport report = application_.Apply();
    parameters_.FollowPlot();
    windows_.terms.Refresh();
    ShowReport(report);
}

void Session::ShowReport(const document::PlotReport& report)
{
    const std::string_view fault = report.row_errors.empty() ? report.errors : report.row_errors;
    const bool faulty = !fault.empty();
    windows_.terms.showerror(faulty ? WithoutSeparator(fault) : "o.k.", faulty);
    windows_.terms.ClearFaultyRow();
    if (report.first_faulty_row) {
        windows_.terms.MarkFaultyRow(*report.first_faulty_row, WithoutSeparator(fault));
    }
    if (ranges_ != nullptr) ranges_->updateall();
    additions_.FollowPlot();
    RedrawGraph();
    RefreshCalculator();
    const std::string_view outcome = report.errors.empty() ? report.notes : report.errors;
    Q_EMIT outcomeChanged(outcome.empty() ? QStringLiteral("Ok.")
                                          : Text(WithoutSeparator(outcome)));
    Q_EMIT layoutChanged();
    Q_EMIT stateChanged();
}

void Session::ChooseGraphAt(double area_x, double area_y)
{
    const auto point = application_.ProbeGraphs(area_x, area_y);
    if (point) windows_.terms.SetCurrentRow(windows_.terms.RowOf(point->slot));
}

document::SlotIndex Session::DrawnSlot(document::SlotIndex row) const
{
    const document::SlotIndex slot = windows_.terms.SlotOf(row);
    if (Document().slots[slot].curve_link != document::kCurveYPart) return slot;
    for (const document::SlotIndex x_part : document::AllSlots()) {
        if (Document().slots[x_part].curve_link == document::Number(slot)) return x_part;
    }
    return slot;
}

// `change` is done to the slot that is drawn and, of a curve, to the other part as well, so that
// both rows show the same.
template <class Change>
void Session::ChangeGraph(document::SlotIndex row, Change change)
{
    const document::SlotIndex drawn = DrawnSlot(row);
    AsOneStep([&] {
        change(drawn);
        const std::int16_t link = Document().slots[drawn].curve_link;
        if (link >= 0) change(document::SlotIndex{link});
        ShowChange();
    });
}

void Session::ShowChange()
{
    windows_.terms.Refresh();
    RedrawGraph();
}

void Session::ToggleVisible(document::SlotIndex row)
{
    document::PlotDocument& plot = application_.Document();
    const bool visible = !plot.slots[DrawnSlot(row)].visible;
    ChangeGraph(row, [&](document::SlotIndex slot) { plot.slots[slot].visible = visible; });
}

void Session::TakeColour(document::SlotIndex row, document::Colour colour)
{
    document::PlotDocument& plot = application_.Document();
    ChangeGraph(row, [&](document::SlotIndex slot) {
        const document::SlotIndex entry{plot.slots[slot].colour_index};
        plot.attributes.slots[entry].colour = colour;
    });
}

void Session::AskLineWidth(document::SlotIndex row)
{
    document::DisplayAttributes& attributes = application_.Document().attributes;
    const std::optional<int> width = dialogs_.AskNumber(
        "Liniendicke ändern", "Liniendicke in Bildpunkten:", attributes.slots[DrawnSlot(row)].width,
        1, document::kWidestLine);
    if (!width) return;
    ChangeGraph(row, [&](document::SlotIndex slot) {
        attributes.slots[slot].width = static_cast<std::int16_t>(*width);
    });
}

void Session::SetLineType(document::SlotIndex row, document::LineType type)
{
    document::DisplayAttributes& attributes = application_.Document().attributes;
    ChangeGraph(row, [&](document::SlotIndex slot) { attributes.slots[slot].type = type; });
}

void Session::SetPointRadius(document::SlotIndex row, int radius)
{
    document::PlotDocument& plot = application_.Document();
    ChangeGraph(row, [&](document::SlotIndex slot) {
        plot.slots[slot].point_radius = static_cast<std::int16_t>(radius);
    });
}

void Session::AskSampleCount(document::SlotIndex row)
{
    const document::SlotIndex slot = Document().SampledSlot(DrawnSlot(row));
    const std::optional<int> points = dialogs_.AskNumber(
        "Stützstellenanzahl ändern", "Anzahl der Stützstellen:", application_.SampleCount(slot) + 1,
        static_cast<int>(document::kFewestSupportPoints),
        static_cast<int>(document::kMostSupportPoints));
    if (!points) return;
    const document::ParameterIndex count = document::SampleCountParameter(slot);
    if (Document().parameters[count].name.empty()) {
        AsOneStep([&] {
            application_.Document().slots[slot].support_points = *points;
            RedrawGraph();
        });
    } else {
        parameters_.setpar(count, *points);
    }
}

void Session::SetFamilyAllowed(document::SlotIndex row, bool allowed)
{
    document::PlotDocument& plot = application_.Document();
    ChangeGraph(row, [&](document::SlotIndex slot) { plot.slots[slot].family_allowed = allowed; });
    parameters_.ShowList();
    FamilyChosen();
}

void Session::ShowParametersOf(document::SlotIndex row, bool only)
{
    const std::set<document::ParameterIndex> needed =
        document::ParametersOf(Document(), DrawnSlot(row));
    for (const document::ParameterIndex index : document::AllParameters()) {
        if (needed.contains(index)) {
            parameters_.ShowWindow(index, true);
        } else if (only) {
            parameters_.ShowWindow(index, false);
        }
    }
    Q_EMIT parametersWanted();
}

void Session::TakeList(std::string document::PlotDocument::*list, const std::string& text,
                       bool apply)
{
    AsOneStep([&] {
        application_.Document().*list = text;
        if (apply) {
            Rebuild();
        } else {
            RedrawGraph();
        }
    });
    Q_EMIT settingsTouched();
}

void Session::TakeGeneralSettings(const document::DisplayAttributes& settings)
{
    document::DisplayAttributes& attributes = application_.Document().attributes;
    const bool counts_change = settings.constant_sample_count != attributes.constant_sample_count ||
                               settings.sample_count != attributes.sample_count;
    document::CopyGeneralSettings(settings, attributes);
    if (counts_change) application_.ForgetSampleCounts();
    FollowSettings();
}

void Session::FollowSettings()
{
    const document::DisplayAttributes& attributes = Document().attributes;
    animation_.SetInterval(attributes.timer_milliseconds);
    additions_.FollowSettings();
    View().SetZoomFactors({attributes.zoom_factor_x, attributes.zoom_factor_y});
    windows_.graph.SetSmooth(attributes.smooth_drawing);  // redraws
    if (calculator_ != nullptr) calculator_->FollowSettings();
    Q_EMIT stateChanged();
}

void Session::UseDefaultSettings()
{
    const document::DisplayAttributes defaults;
    document::DisplayAttributes& attributes = application_.Document().attributes;
    attributes.zoom_factor_x = defaults.zoom_factor_x;
    attributes.zoom_factor_y = defaults.zoom_factor_y;
    TakeGeneralSettings(defaults);
    application_.UpdateMapping();
    Q_EMIT settingsTouched();
}

void Session::AskRowFont()
{
    const std::optional<int> points = dialogs_.AskNumber(
        "Schriftgröße ändern", "Schriftgröße in Punkten:", windows_.terms.RowPoints(),
        kSmallestRowPoints, kLargestRowPoints);
    if (points) windows_.terms.SetRowPoints(points);
}

void Session::TakeZoomFactors(const render::ZoomFactors& factors)
{
    document::DisplayAttributes& attributes = application_.Document().attributes;
    attributes.zoom_factor_x = factors.x;
    attributes.zoom_factor_y = factors.y;
    View().SetZoomFactors(factors);
    Q_EMIT settingsTouched();
}

void Session::ToggleSwitch(bool document::DisplayAttributes::*flag)
{
    document::DisplayAttributes& attributes = application_.Document().attributes;
    attributes.*flag = !(attributes.*flag);
    RedrawGraph();
    Q_EMIT stateChanged();
}

void Session::SetAngleMode(term::TrigMode mode)
{
    AsOneStep([&] {
        application_.Document().attributes.angle_mode = mode;
        application_.Parser().SetTrigMode(mode);
        // The width of hatching stripes is an angle to the parser; constants and bounds as well.
        Rebuild();
    });
}

void Session::ToggleIntegralDetection()
{
    AsOneStep([this] {
        bool& detect = application_.Document().attributes.detect_integrals;
        detect = !detect;
        Rebuild();
    });
}

void Session::CopyTerms(bool with_values) const
{
    const std::string text =
        document::TermsText(Document(), with_values ? document::TermsTextMode::WithParameterValues
                                                    : document::TermsTextMode::AsTyped);
    QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void Session::FollowRedraw()
{
    counts_are_stored_ = false;
    additions_.FollowRedraw();
}

void Session::FollowArea()
{
    const QSize size = windows_.graph.AreaSize();
    const bool other_width = application_.SetAreaSize(size.width(), size.height());
    // The counts of a stored plot are not those of an area that did not show it yet.
    if (!counts_are_stored_) {
        const bool follow = !Document().attributes.constant_sample_count;
        if (other_width && follow) application_.ForgetSampleCounts();
        TellSampleCounts();
    }
    parameters_.FollowRange();
    if (ranges_ != nullptr) ranges_->updateall();
    RedrawGraph();
}

// An area of another width has set the sample counts anew; integral functions follow.
void Session::TellSampleCounts()
{
    if (Document().attributes.constant_sample_count) return;
    const ParameterControl::Together together(parameters_);
    for (const document::SlotIndex slot : document::AllSlots()) {
        const document::ParameterIndex count = document::SampleCountParameter(slot);
        if (Document().parameters[count].name.empty()) continue;
        parameters_.setpar(count, render::DefaultSampleCount(application_.View()) + 1);
    }
}

void Session::StopAnimation() { animation_.StopAll(); }

void Session::StoreRows(document::PlotDocument& plot)
{
    if (rows_are_applied_) windows_.terms.StoreRows(plot);
    rows_are_applied_ = false;  // a second run of the same rebuild has them already
}

void Session::RowsChecked(const document::PlotDocument&) {}  // Rebuild shows them at its end

void Session::InitSlider(document::ParameterIndex index) { parameters_.InitSlider(index); }

void Session::RereadRanges()
{
    constexpr unsigned kInRanges = document::kInXRange | document::kInYRange | document::kInTRange;
    for (const document::ParameterIndex index : document::AllParameters()) {
        if ((Document().parameters[index].state & kInRanges) != 0) View().FollowParameter(index);
    }
}

void Session::RefreshCalculator()
{
    if (calculator_ != nullptr) calculator_->Refresh();
}

// The settings file is written at once.
void Session::TakeCalculatorPlaces(int places)
{
    application_.Document().attributes.calculator_places = places;
    Q_EMIT settingsTouched();
}

// Without further curves a new family looks as if nothing had happened.
void Session::FamilyChosen()
{
    const document::PlotDocument& plot = Document();
    const bool complete = std::ranges::any_of(plot.parameters, &document::Parameter::family) &&
                          std::ranges::any_of(plot.slots, [](const document::FunctionSlot& slot) {
                              return slot.family_allowed && !slot.name.empty();
                          });
    if (!complete || plot.attributes.family_count > 0) return;
    Q_EMIT outcomeChanged(
        "Die Schar hat noch keine weiteren Kurven: Ihre Anzahl steht unter „Allgemeine "
        "Einstellungen“, „Graphen“");
}

document::Bounds Session::DisplayedXRange() const
{
    const render::ViewRange& view = application_.View();
    return {view.x_min, view.x_max};
}

void Session::RedrawGraph()
{
    windows_.graph.Redraw();
    Q_EMIT touched();
}

void Session::updatex()
{
    parameters_.FollowRange();
    if (ranges_ != nullptr) ranges_->updatex();
}

void Session::updatey()
{
    if (ranges_ != nullptr) ranges_->updatey();
}

void Session::updatet()
{
    if (ranges_ != nullptr) ranges_->updatet();
}

void Session::HistoryChanged(bool) { Q_EMIT stateChanged(); }

void Session::CollectParameters()
{
    before_ranges_ = document::TakeSnapshot(Document());
    Rebuild();
}

void Session::ParametersCollected(const document::RangeTexts& before)
{
    before_ranges_.TakeRanges(before);
    undo_.Push(std::move(before_ranges_), document::TakeSnapshot(Document()));
    Q_EMIT stateChanged();
}

}  // namespace korvinth::app
