#include "app/main_window.h"

#include <QAction>
#include <QColorDialog>
#include <QMenuBar>
#include <QSplitter>
#include <QStatusBar>

#include "ui/dialogs.h"
#include "ui/graphform.h"
#include "ui/termform.h"

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

// Only colours are chosen so far.
class SystemDialogs final : public ui::Dialogs
{
public:
    explicit SystemDialogs(QWidget* parent) : parent_(parent) {}
    void ShowError(const std::string&, const std::string&) override {}
    void ShowExclamation(const std::string&, const std::string&) override {}
    bool AskYesNo(const std::string&, const std::string&) override { return false; }
    std::optional<std::string> OpenFile(const std::string&, const std::string&) override
    {
        return {};
    }
    std::optional<std::string> SaveFile(const std::string&, const std::string&) override
    {
        return {};
    }
    std::optional<document::Colour> ChooseColour(document::Colour initial) override
    {
        const QColor colour =
            QColorDialog::getColor(QColor(Red(initial), Green(initial), Blue(initial)), parent_);
        if (!colour.isValid()) return {};
        return document::MakeColour(colour.red(), colour.green(), colour.blue());
    }
    std::optional<int> AskNumber(const std::string&, const std::string&, int, int, int) override
    {
        return {};
    }

private:
    QWidget* parent_;
};

}  // namespace

MainWindow::~MainWindow() = default;

MainWindow::MainWindow(Application& application, QWidget* parent)
    : QMainWindow(parent),
      application_(application),
      dialogs_(std::make_unique<SystemDialogs>(this))
{
    setObjectName("mother");
    setWindowTitle("Korvinth 2 - Funktionsgraphen und Kurven mit dynamischen Parametern");
    MakeMenus();

    auto* splitter = new QSplitter(this);
    terms_ = new ui::TermForm(application_.Document(), *dialogs_, splitter);
    graph_ = new ui::GraphForm(
        [this](render::DrawingSurface& surface) { application_.Draw(surface); }, splitter);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    // The terms' width follows the font; the graph takes the rest.
    const int terms_width = 30 * terms_->fontMetrics().averageCharWidth() + 60;
    splitter->setSizes({terms_width, 10 * terms_width});
    setCentralWidget(splitter);
    resize(1280, 800);

    connect(terms_, &ui::TermForm::applied, this, [this](document::EditorState state) {
        state == document::EditorState::Terms ? ApplyRows() : ApplyIntervals();
    });
    connect(terms_, &ui::TermForm::visibilityToggled, this, [this](document::SlotIndex row) {
        bool& visible = application_.Document().slots[terms_->SlotOf(row)].visible;
        visible = !visible;
        terms_->Refresh();
        graph_->Redraw();
    });
    connect(terms_, &ui::TermForm::colourChosen, this,
            [this](document::SlotIndex row, document::Colour colour) {
                document::PlotDocument& plot = application_.Document();
                const document::SlotIndex entry{plot.slots[terms_->SlotOf(row)].colour_index};
                plot.attributes.slots[entry].colour = colour;
                terms_->Refresh();
                graph_->Redraw();
            });
    connect(graph_, &ui::GraphForm::areaResized, this, &MainWindow::FollowArea);
}

void MainWindow::MakeMenus()
{
    QMenu* file = menuBar()->addMenu("&Datei");
    file->setObjectName("mn_file");
    QAction* close = file->addAction("S&chließen", QKeySequence::Quit, this, &QWidget::close);
    close->setObjectName("mn_close");
}

void MainWindow::ApplyRows()
{
    terms_->StoreRows(application_.Document());
    const document::PlotReport report = application_.Apply();
    terms_->Refresh();
    ShowOutcome(report.errors, report.notes);
    if (report.first_faulty_row) {
        terms_->MarkFaultyRow(*report.first_faulty_row, WithoutSeparator(report.row_errors));
    } else {
        terms_->ClearFaultyRow();
    }
}

void MainWindow::ApplyIntervals()
{
    terms_->StoreIntervals(application_.Document());
    graph_->Redraw();
}

void MainWindow::ShowOutcome(std::string_view errors, std::string_view notes)
{
    terms_->showerror(WithoutSeparator(errors), !errors.empty());
    const std::string_view outcome = errors.empty() ? notes : errors;
    statusBar()->showMessage(outcome.empty() ? "Ok." : Text(WithoutSeparator(outcome)));
    graph_->Redraw();
}

void MainWindow::FollowArea()
{
    const QSize size = graph_->AreaSize();
    application_.SetAreaSize(size.width(), size.height());
    graph_->Redraw();
}

}  // namespace korvinth::app
