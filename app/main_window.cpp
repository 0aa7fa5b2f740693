#include "app/main_window.h"

#include <QAction>
#include <QCloseEvent>
#include <QDropEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMessageBox>
#include <QMimeData>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>
#include <algorithm>

#include "render/picture_text.h"
#include "ui/asymptoten.h"
#include "ui/child_window.h"
#include "ui/graphform.h"
#include "ui/help_pages.h"
#include "ui/interform.h"
#include "ui/minicalc.h"
#include "ui/optionsgraph.h"
#include "ui/parameter_column.h"
#include "ui/parameter_list.h"
#include "ui/punkte.h"
#include "ui/sammlung.h"
#include "ui/sammtext.h"
#include "ui/termform.h"
#include "ui/told_texts.h"
#include "ui/zoom_dialog.h"

namespace korvinth::app {
namespace {

constexpr QSize kFirstSize(1280, 800);

void Place(QWidget* window, const Box& box)
{
    if (box.width > 0 && box.height > 0) window->setGeometry(box.x, box.y, box.width, box.height);
}

}  // namespace

MainWindow::MainWindow(Application& application, ui::Dialogs& dialogs, QWidget* parent)
    : QMainWindow(parent),
      application_(application),
      dialogs_(dialogs),
      menus_(*this),
      area_(new QMdiArea(this)),
      outcome_(new QLabel)
{
    setObjectName("mother");
    setAcceptDrops(true);
    setWindowTitle("Korvinth 2 - Funktionsgraphen und Kurven mit dynamischen Parametern");
    statusBar()->setObjectName("statusbar");
    // A label of its own: a message of the status bar would go when a menu opens.
    outcome_->setObjectName("outcome");
    outcome_->setAccessibleDescription("Was beim letzten Zeichnen herauskam");
    outcome_->setTextFormat(Qt::PlainText);
    outcome_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    outcome_->setContentsMargins(6, 0, 0, 0);
    statusBar()->addWidget(outcome_, 1);
    area_->setObjectName("area");
    area_->setFrameShape(QFrame::NoFrame);
    area_->setMinimumSize(1, 1);  // the status bar stays on the screen when the children do not fit
    area_->setBackground(palette().brush(QPalette::Mid));
    area_->setActivationOrder(QMdiArea::CreationOrder);
    area_->viewport()->installEventFilter(this);
    setCentralWidget(area_);

    MakeChildren(application);
    session_ = std::make_unique<Session>(application,
                                         PlotWindows{*termform_, *graphform_, *sliders_}, dialogs_);
    commands_ = std::make_unique<PlotCommands>(menus_, *session_, *termform_, *graphform_);
    MakeCollection(application);
    ConnectSession();
    ConnectWindowEntries();
    MakeShortcuts();
    resize(kFirstSize);
}

MainWindow::~MainWindow() = default;

void MainWindow::MakeChildren(Application& application)
{
    ViewControl& view = application.Views();
    termform_ = new ui::TermForm(application.Document(), dialogs_, this);
    sliders_ = new ui::ParameterColumn(this);
    graphform_ = new ui::GraphForm(
        view.View(), view,
        [this, &application](render::DrawingSurface& surface) {
            return [this, &application, redraw = application.BeginDrawing(surface)]() mutable {
                if (application.ContinueDrawing(redraw)) return true;
                if (session_ != nullptr) session_->FollowRedraw();
                return false;
            };
        },
        this);
    graphform_->SetProbe(
        [&application](double x, double y) { return application.ProbeGraphs(x, y); });
    graphform_->SetTrace(&application.Trace());
    graphform_->SetDescription(
        [&application] { return render::PictureText(application.Document(), application.View()); });
    terms_frame_ = MakeChild(termform_);
    sliders_frame_ = MakeChild(sliders_);
    graph_frame_ = MakeChild(graphform_);
}

void MainWindow::MakeCollection(Application& application)
{
    collection_ = std::make_unique<CollectionControl>(*session_, application.Document().attributes,
                                                      menus_, dialogs_, this);
    collection_frame_ = MakeChild(&collection_->Window());
    connect(collection_.get(), &CollectionControl::windowWanted, this, &MainWindow::ShowCollection);
    connect(collection_.get(), &CollectionControl::descriptionWanted, this,
            &MainWindow::ShowDescription);
    for (const auto signal : {&CollectionControl::changed, &CollectionControl::entriesReplaced}) {
        connect(collection_.get(), signal, this, &MainWindow::ArrangeWindows);
    }
    connect(&collection_->Window(), &ui::Sammlung::heightChanged, this,
            &MainWindow::ArrangeWindows);
}

ui::ChildWindow* MainWindow::MakeChild(QWidget* content)
{
    auto* child = new ui::ChildWindow(content);
    area_->addSubWindow(child, child->windowFlags());
    connect(child, &ui::ChildWindow::hidden, this, [this] {
        ArrangeWindows();
        ActivateFormer();
    });
    return child;
}

ui::ChildWindow* MainWindow::MakeFreeChild(QWidget* content)
{
    ui::ChildWindow* child = MakeChild(content);
    child->SetFree(true);
    child->SetClosedByEsc();
    child->hide();
    return child;
}

QList<ui::ChildWindow*> MainWindow::Children() const
{
    QList<ui::ChildWindow*> children;
    for (QMdiSubWindow* window : area_->subWindowList(QMdiArea::CreationOrder)) {
        if (auto* child = qobject_cast<ui::ChildWindow*>(window)) children.append(child);
    }
    return children;
}

void MainWindow::ConnectSession()
{
    connect(session_.get(), &Session::outcomeChanged, this, &MainWindow::ShowOutcome);
    connect(session_.get(), &Session::layoutChanged, this, &MainWindow::ArrangeWindows);
    connect(session_.get(), &Session::parametersWanted, this,
            [this] { ShowChild(sliders_frame_); });
    connect(termform_, &ui::TermForm::rowMenuRequested, this,
            [this](document::SlotIndex, QPoint place) { commands_->ShowRowMenu(place); });
    connect(graphform_, &ui::GraphForm::menuWanted, this, [this](QPoint global, QPointF place) {
        session_->ChooseGraphAt(place.x(), place.y());
        commands_->ShowGraphMenu(global);
    });
    connect(graphform_, &ui::GraphForm::rangeWindowWanted, this, &MainWindow::ShowRanges);
    connect(graphform_, &ui::GraphForm::zoomFactorsWanted, this, &MainWindow::ShowZoomFactors);
}

void MainWindow::ConnectWindowEntries()
{
    const auto on = [this](std::string_view entry, auto action) {
        connect(&menus_.Entry(entry), &QAction::triggered, this, action);
    };
    on("mn_close", [this] { close(); });
    on("mn_spal", [this] { ShowParameterList(); });
    on("mn_para", [this] {
        session_->Parameters().ShowAllWindows(true);
        ShowChild(sliders_frame_);
    });
    on("mn_pardock", [this] {
        ShowChild(sliders_frame_);
        ArrangeWindows();
    });
    on("mn_zoomoptions", [this] { ShowZoomFactors(); });
    on("mn_groptions", [this] { ShowSettings(); });
    on("mn_optdef", [this] {
        session_->UseDefaultSettings();
        if (settings_ != nullptr && settings_->isVisible()) ShowSettings();
    });
    on("mn_calc", [this] { ShowCalculator(); });
    on("mn_asy", [this] { ShowLines(); });
    on("mn_punkt", [this] { ShowPoints(); });
    on("mn_inter", [this] { ShowRanges(); });
    on("mn_graph", [this] { ShowChild(graph_frame_); });
    on("mn_term", [this] { ShowChild(terms_frame_); });
    on("mn_dock", [this] { DockAll(); });
    on("mn_gri", [this] { SetGraphFree(); });
    on("mn_ghm", [this] { MaximiseGraph(); });
    on("mn_about", [this] { ShowAbout(); });
}

// The keys reach the main window from whichever child has the focus.
void MainWindow::MakeShortcuts()
{
    const auto on = [this](const char* keys, auto action) {
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, action);
    };
    on("Ctrl+Tab", [this] { ActivateNext(1); });
    on("Ctrl+Shift+Tab", [this] { ActivateNext(-1); });
    on("Ctrl+W", [this] {
        if (QMdiSubWindow* child = area_->activeSubWindow()) child->close();
    });
    menus_.Entry("mn_redo").setShortcuts({QKeySequence("Ctrl+Shift+Z"), QKeySequence("Ctrl+Y")});
}

void MainWindow::ShowOutcome(const QString& outcome)
{
    outcome_->setText(outcome);
    ui::TellName(*outcome_, "Ergebnis: " + outcome);
    outcome_->setToolTip("<p>" + outcome.toHtmlEscaped() + "</p>");
}

void MainWindow::ArrangeWindows()
{
    ArrangementRequest request;
    request.width = area_->viewport()->width();
    request.height = area_->viewport()->height();
    request.font_height = fontMetrics().height();
    request.least_terms_height = terms_frame_->HeightFor(termform_->minimumSizeHint().height());
    request.terms_height = terms_frame_->HeightFor(termform_->sizeHint().height());
    request.all_terms_height = terms_frame_->HeightFor(termform_->HeightOfAllRows());
    request.parameters_height = sliders_frame_->HeightFor(sliders_->HeightOfWindows());
    request.least_width = terms_frame_->WidthFor(termform_->minimumSizeHint().width());
    request.has_collection = collection_waits_ || !collection_frame_->isHidden();
    request.least_collection_height =
        collection_frame_->HeightFor(collection_->Window().LeastHeight());
    request.collection_height = collection_frame_->HeightFor(collection_->Window().FullHeight());
    request.graph_place = graph_place_;
    request.has_terms = !terms_frame_->isHidden();
    request.has_parameters = !sliders_frame_->isHidden();
    if (ranges_frame_ != nullptr && !ranges_frame_->isHidden()) {
        request.ranges_width = interform_->minimumSizeHint().width();
        request.ranges_height = ranges_frame_->HeightFor(interform_->sizeHint().height());
    }
    const Arrangement places = Arrange(request);
    Place(terms_frame_, places.terms);
    Place(sliders_frame_, places.parameters);
    if (request.has_collection) PlaceCollection(places.collection);
    Place(graph_frame_, places.graph);
    if (ranges_frame_ == nullptr) return;
    Place(ranges_frame_, places.ranges);
    SetRangesFree(places.ranges.height == 0);
}

// Without a place in the column it waits until it is wanted, above the graph then, or until there
// is room again.
void MainWindow::PlaceCollection(const Box& place)
{
    const bool has_room = place.height > 0;
    if (has_room == collection_frame_->IsFree()) {
        collection_frame_->SetFree(!has_room);
        if (!has_room) collection_frame_->hide();
    }
    if (has_room) {
        collection_frame_->show();
        Place(collection_frame_, place);
    }
    collection_waits_ = collection_frame_->isHidden();
}

void MainWindow::ShowCollection()
{
    if (collection_frame_->IsFree()) {
        ShowBesideGraph(collection_frame_, &collection_->Window());
        ArrangeWindows();
    } else {
        ShowChild(collection_frame_);
    }
}

void MainWindow::SetRangesFree(bool free)
{
    const bool was_free = ranges_frame_->IsFree();
    ranges_frame_->SetFree(free);
    if (free && !was_free) PlaceFreeRanges();
}

// Over the graph's lower edge, as large as it needs to be.
void MainWindow::PlaceFreeRanges()
{
    const QRect room = area_->viewport()->rect();
    const QSize needed(ranges_frame_->WidthFor(interform_->minimumSizeHint().width()),
                       ranges_frame_->HeightFor(interform_->sizeHint().height()));
    QRect place(QPoint(), needed.boundedTo(room.size()));
    place.moveBottomRight(room.bottomRight());
    ranges_frame_->setGeometry(place);
}

void MainWindow::ShowChild(ui::ChildWindow* child)
{
    const bool was_hidden = child->isHidden();
    child->BringToFront();
    if (was_hidden) ArrangeWindows();
}

// Free windows stand over the graph's right edge, so that the sliders stay in view.
void MainWindow::ShowBesideGraph(ui::ChildWindow* child, QWidget* content)
{
    if (child->isHidden()) {
        const QSize room = area_->viewport()->size();
        const int height = std::max(content->sizeHint().height(), room.height() / 2);
        const QSize size =
            QSize(content->sizeHint().width(), child->HeightFor(height)).boundedTo(room);
        child->setGeometry(QRect(QPoint(room.width() - size.width(), 0), size));
    }
    child->BringToFront();
}

void MainWindow::ShowParameterList()
{
    if (parameter_list_ == nullptr) {
        parameter_list_ = new ui::ParameterList(this);
        list_frame_ = MakeFreeChild(parameter_list_);
        session_->Parameters().SetList(*parameter_list_);
    }
    parameter_list_->refpar(session_->Document());
    ShowBesideGraph(list_frame_, parameter_list_);
}

void MainWindow::ShowRanges()
{
    if (interform_ == nullptr) {
        ViewControl& view = application_.Views();
        interform_ = new ui::InterForm(application_.Document(), view.View(), view, this);
        ranges_frame_ = MakeChild(interform_);
        ranges_frame_->SetClosedByEsc();
        ranges_frame_->hide();
        session_->SetRanges(*interform_);
    }
    interform_->updateall();
    const bool was_hidden = ranges_frame_->isHidden();
    ShowChild(ranges_frame_);
    if (was_hidden && ranges_frame_->IsFree()) PlaceFreeRanges();
    interform_->FocusFirstField();
}

void MainWindow::ShowLines()
{
    if (lines_ == nullptr) {
        lines_ = new ui::Asymptoten(dialogs_, this);
        lines_frame_ = MakeFreeChild(lines_);
        session_->SetLines(*lines_);
    }
    ShowBesideGraph(lines_frame_, lines_);
}

void MainWindow::ShowPoints()
{
    if (points_ == nullptr) {
        points_ = new ui::Punkte(dialogs_, this);
        points_frame_ = MakeFreeChild(points_);
        session_->SetPoints(*points_);
    }
    ShowBesideGraph(points_frame_, points_);
}

void MainWindow::ShowDescription()
{
    ui::SammText& description = collection_->DescriptionWindow();
    if (description_frame_ == nullptr) description_frame_ = MakeFreeChild(&description);
    ShowBesideGraph(description_frame_, &description);
}

void MainWindow::ShowCalculator()
{
    if (calculator_ == nullptr) {
        calculator_ = new ui::MiniCalc(application_.Parser(), application_.Document(), dialogs_);
        calculator_frame_ = MakeFreeChild(calculator_);
        session_->SetCalculator(*calculator_);
        connect(calculator_, &ui::MiniCalc::placesChosen, session_.get(),
                &Session::TakeCalculatorPlaces);
        connect(calculator_, &ui::MiniCalc::closeWanted, calculator_frame_, &QWidget::close);
    }
    ShowBesideGraph(calculator_frame_, calculator_);
}

void MainWindow::DockAll()
{
    graph_place_ = GraphPlace::Docked;
    menus_.SetChecked("mn_gri", false);
    graph_frame_->SetFree(false);
    for (ui::ChildWindow* child : {terms_frame_, sliders_frame_, graph_frame_}) child->show();
    collection_waits_ = true;
    ArrangeWindows();
}

void MainWindow::SetGraphFree()
{
    const bool free = graph_place_ != GraphPlace::Free;
    graph_place_ = free ? GraphPlace::Free : GraphPlace::Docked;
    menus_.SetChecked("mn_gri", free);
    graph_frame_->SetFree(free);
    ArrangeWindows();
}

// A free graph keeps its width and place.
void MainWindow::MaximiseGraph()
{
    graph_frame_->show();
    if (graph_place_ == GraphPlace::Free) {
        graph_frame_->setGeometry(graph_frame_->x(), 0, graph_frame_->width(),
                                  area_->viewport()->height());
        return;
    }
    graph_place_ = GraphPlace::FullHeight;
    ArrangeWindows();
}

void MainWindow::ActivateNext(int step)
{
    QList<ui::ChildWindow*> shown;
    for (ui::ChildWindow* child : Children()) {
        if (!child->isHidden()) shown.append(child);
    }
    if (shown.isEmpty()) return;
    const qsizetype present =
        shown.indexOf(qobject_cast<ui::ChildWindow*>(area_->activeSubWindow()));
    shown[(present + step + shown.size()) % shown.size()]->BringToFront();
}

// The keys go on to the window that had them before the one just closed.
void MainWindow::ActivateFormer()
{
    const QList<QMdiSubWindow*> windows = area_->subWindowList(QMdiArea::ActivationHistoryOrder);
    const auto former =
        std::find_if(windows.rbegin(), windows.rend(),
                     [](const QMdiSubWindow* window) { return !window->isHidden(); });
    if (former == windows.rend()) return;
    if (auto* child = qobject_cast<ui::ChildWindow*>(*former)) child->BringToFront();
}

void MainWindow::ShowZoomFactors()
{
    if (zoom_dialog_ == nullptr) {
        zoom_dialog_ = new ui::ZoomDialog(application_.Parser(), dialogs_, this);
        connect(zoom_dialog_, &ui::ZoomDialog::applied, this,
                [this](const render::ZoomFactors& factors) { session_->TakeZoomFactors(factors); });
    }
    zoom_dialog_->setval(session_->View().Factors());
    zoom_dialog_->show();
    zoom_dialog_->raise();
    zoom_dialog_->activateWindow();
}

void MainWindow::ShowSettings()
{
    if (settings_ == nullptr) {
        settings_ = new ui::OptionsGraph(application_.Parser(), dialogs_, this);
        connect(settings_, &ui::OptionsGraph::settingsChanged, session_.get(),
                &Session::TakeGeneralSettings);
        connect(settings_, &QDialog::finished, session_.get(), &Session::settingsTouched);
    }
    const document::SlotIndex first_slot = document::AllSlots().front();
    settings_->Open(session_->Document().attributes, session_->SampleCount(first_slot));
}

void MainWindow::ShowAbout()
{
    auto* box = new QMessageBox(
        QMessageBox::Information, QStringLiteral("über Korvinth"),
        QStringLiteral(
            "<h3>Korvinth 2</h3><p>Version %1</p>"
            "<p>Korvinth zeichnet Graphen von Funktionen und ebene Kurven, deren Terme "
            "Parameter enthalten dürfen. Die Parameter lassen sich mit Schiebereglern "
            "verändern und animieren, und das Bild folgt ihnen sofort.</p>"
            "<p>Korvinth ist freie Software unter der MIT-Lizenz. Es verwendet Qt %2 unter "
            "der GNU Lesser General Public License (LGPL), Version 3.</p>")
            .arg(KORVINTH_VERSION, qVersion()),
        QMessageBox::Ok, this);
    box->setDetailedText(ui::LicenceText());
    box->setObjectName("about");
    box->setDefaultButton(QMessageBox::Ok);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

void MainWindow::CloseSliders() { session_->Parameters().ShowAllWindows(false); }

void MainWindow::CloseWindows()
{
    for (QDialog* dialog : std::initializer_list<QDialog*>{zoom_dialog_, settings_}) {
        if (dialog != nullptr) dialog->close();
    }
    for (ui::ChildWindow* child : Children()) child->hide();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    Q_EMIT closing();
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    const QList<QUrl> files = event->mimeData()->urls();
    if (files.size() == 1 && files[0].isLocalFile()) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    const QString file = event->mimeData()->urls().constFirst().toLocalFile();
    // A question may follow; the program that the file came from is not kept waiting for it.
    QTimer::singleShot(0, this, [this, file] { Q_EMIT fileDropped(file); });
}

// Typing can begin at once.
void MainWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (event->spontaneous()) return;
    ShowChild(terms_frame_);
    termform_->FocusRow(termform_->CurrentRow());
}

void MainWindow::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        area_->setBackground(palette().brush(QPalette::Mid));
    }
    if (event->type() == QEvent::FontChange) ArrangeWindows();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == area_->viewport() && event->type() == QEvent::Resize) ArrangeWindows();
    return QMainWindow::eventFilter(watched, event);
}

}  // namespace korvinth::app
