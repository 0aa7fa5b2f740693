#include "app/main_window.h"

#include <QAction>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>

#include "ui/graphform.h"
#include "ui/interform.h"
#include "ui/termlist.h"

namespace korvinth::app {
namespace {

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// Collected texts end with a separator.
std::string_view WithoutSeparator(std::string_view text)
{
    while (!text.empty() && (text.back() == ' ' || text.back() == ';')) text.remove_suffix(1);
    return text;
}

}  // namespace

MainWindow::MainWindow(Application& application, QWidget* parent)
    : QMainWindow(parent), application_(application)
{
    setObjectName("mother");
    setWindowTitle("Korvinth 2 - Funktionsgraphen und Kurven mit dynamischen Parametern");
    MakeMenus();

    auto* splitter = new QSplitter(this);
    terms_ = new ui::TermList(splitter);
    graph_ = new ui::GraphForm(
        application_.View(), application_.Views(),
        [this](render::DrawingSurface& surface) { application_.Draw(surface); }, splitter);
    graph_->SetProbe([this](double x, double y) { return application_.ProbeGraphs(x, y); });
    ranges_ =
        new ui::InterForm(application_.Document(), application_.View(), application_.Views(), this);
    ranges_->setWindowFlag(Qt::Tool);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    // The terms' width follows the font; the graph takes the rest.
    const int terms_width = 30 * terms_->fontMetrics().averageCharWidth() + 60;
    splitter->setSizes({terms_width, 10 * terms_width});
    setCentralWidget(splitter);
    resize(1280, 800);

    terms_->SetColours(application_.Document().attributes.slots);
    terms_->SetRows(application_.Document().rows);
    connect(terms_, &ui::TermList::applied, this, &MainWindow::ApplyRows);
    connect(graph_, &ui::GraphForm::areaResized, this, &MainWindow::FollowArea);
    connect(graph_, &ui::GraphForm::rangeWindowWanted, this, &MainWindow::ShowRanges);
    application_.Views().SetListener(this);
}

MainWindow::~MainWindow() { application_.Views().SetListener(nullptr); }

void MainWindow::MakeMenus()
{
    QMenu* file = menuBar()->addMenu("&Datei");
    file->setObjectName("mn_file");
    QAction* close = file->addAction("S&chließen", QKeySequence::Quit, this, &QWidget::close);
    close->setObjectName("mn_close");
}

void MainWindow::ApplyRows()
{
    document::PlotDocument& plot = application_.Document();
    for (const document::SlotIndex row : document::AllSlots()) plot.rows[row] = terms_->Row(row);
    const document::PlotReport report = application_.Apply();
    terms_->SetRows(plot.rows);
    ShowOutcome(report.errors, report.notes);
}

void MainWindow::ShowOutcome(std::string_view errors, std::string_view notes)
{
    terms_->ShowStatus(WithoutSeparator(errors));
    const std::string_view outcome = errors.empty() ? notes : errors;
    statusBar()->showMessage(outcome.empty() ? "Ok." : Text(WithoutSeparator(outcome)));
    graph_->Redraw();
}

void MainWindow::ShowRanges()
{
    ranges_->updateall();
    ranges_->show();
    ranges_->raise();
    ranges_->activateWindow();
}

void MainWindow::updatex() { ranges_->updatex(); }

void MainWindow::updatey() { ranges_->updatey(); }

void MainWindow::updatet() { ranges_->updatet(); }

void MainWindow::RedrawGraph() { graph_->Redraw(); }

void MainWindow::FollowArea()
{
    const QSize size = graph_->AreaSize();
    application_.SetAreaSize(size.width(), size.height());
    graph_->Redraw();
}

}  // namespace korvinth::app
