#include "app/print_preview.h"

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QGraphicsView>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <utility>

#include "app/page_picture.h"
#include "app/picture_file.h"
#include "ui/page_options_box.h"

namespace korvinth::app {
namespace {

std::unique_ptr<QPrinter> MakePrinter(bool landscape)
{
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setDocName("Korvinth");
    printer->setPageSize(QPageSize(QPageSize::A4));
    printer->setPageOrientation(landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer->setFullPage(true);  // the margins are the page's own matter
    return printer;
}

// What the toolkit's bar shows, in its order; "" is a line. A plot has one page, so nothing of it
// turns pages.
constexpr const char* kTools[] = {
    "Zeigt die Seite so breit wie das Fenster",
    "Zeigt die ganze Seite",
    "",
    "Wie groß die Seite zu sehen ist, in Prozent",
    "Zeigt die Seite kleiner",
    "Zeigt die Seite größer",
    "",
    "Stellt das Blatt hoch",
    "Legt das Blatt quer",
    "",
    "Geht zur ersten Seite",
    "Geht eine Seite zurück",
    "Nummer der gezeigten Seite",
    "Geht eine Seite weiter",
    "Geht zur letzten Seite",
    "",
    "Zeigt eine Seite",
    "Zeigt zwei Seiten nebeneinander",
    "Zeigt alle Seiten",
    "",
    "Größe und Ränder des Blattes",
    "Wählt den Drucker und druckt",
};
constexpr std::size_t kFirstOfPages = 10;
constexpr std::size_t kPageNumber = 12;
constexpr std::size_t kBehindPages = 19;

// For the keyboard and for those who listen: the toolkit leaves both out.
void PrepareTools(QToolBar& bar)
{
    const QList<QAction*> actions = bar.actions();
    for (QAction* action : actions) {
        auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(action));
        if (button != nullptr) button->setFocusPolicy(Qt::TabFocus);
    }
    if (std::cmp_not_equal(actions.size(), std::size(kTools))) return;
    for (std::size_t place = 0; place < std::size(kTools); ++place) {
        QAction* action = actions[static_cast<qsizetype>(place)];
        bar.widgetForAction(action)->setAccessibleDescription(kTools[place]);
        action->setVisible(place < kFirstOfPages || place >= kBehindPages);
    }
    for (auto* factor : bar.findChildren<QComboBox*>()) {
        factor->setAccessibleName("Vergrößerung");
        if (factor->lineEdit() != nullptr) factor->lineEdit()->setAccessibleName("Vergrößerung");
    }
    auto* page = bar.widgetForAction(actions[kPageNumber])->findChild<QLineEdit*>();
    if (page == nullptr) return;
    page->setAccessibleName("Seite");
    page->setAccessibleDescription(kTools[kPageNumber]);
}

}  // namespace

PrintPreview::PrintPreview(Application& application, ui::Dialogs& dialogs,
                           const render::PageOptions& options, files::FileSystem& disk,
                           QWidget* window)
    : application_(application),
      dialogs_(dialogs),
      options_(options),
      disk_(disk),
      printer_(MakePrinter(options.landscape)),
      dialog_(std::make_unique<QPrintPreviewDialog>(printer_.get(), window)),
      box_(new ui::PageOptionsBox),
      note_(new QLabel)
{
    dialog_->setObjectName("print");
    dialog_->setWindowTitle("Drucken");
    note_->setObjectName("print_note");
    note_->setTextFormat(Qt::PlainText);
    note_->setWordWrap(true);
    box_->Show(options);
    auto* options_row = new QHBoxLayout;
    options_row->setContentsMargins(12, 6, 12, 6);
    options_row->addWidget(box_);
    options_row->addWidget(note_, 1);
    options_row->addLayout(MakeButtons());
    static_cast<QBoxLayout*>(dialog_->layout())->insertLayout(0, options_row);

    connect(dialog_.get(), &QPrintPreviewDialog::paintRequested, this,
            [this](QPrinter* printer) { DrawOn(*printer); });
    connect(dialog_.get(), &QDialog::finished, this, &PrintPreview::finished);
    auto* preview = dialog_->findChild<QPrintPreviewWidget*>();
    connect(box_, &ui::PageOptionsBox::changed, preview, &QPrintPreviewWidget::updatePreview);
    PrepareTools(*dialog_->findChild<QToolBar*>());
    auto* sheet = preview->findChild<QGraphicsView*>();
    sheet->setAccessibleName("Vorschau");
    sheet->setAccessibleDescription("Die Seite, wie sie gedruckt wird");
    dialog_->resize(window->size() * 3 / 4);
    dialog_->open();
}

PrintPreview::~PrintPreview() = default;

QLayout* PrintPreview::MakeButtons()
{
    auto* print = new QPushButton("&Drucken...");
    print->setObjectName("print_start");
    print->setToolTip("Wählt den Drucker und druckt");
    print->setDefault(true);
    connect(print, &QPushButton::clicked, dialog_->findChild<QToolBar*>()->actions().constLast(),
            &QAction::trigger);
    auto* close = new QPushButton("Schließen");
    close->setObjectName("print_close");
    close->setToolTip("Druckt nicht (Esc)");
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, dialog_.get(), &QDialog::reject);
    auto* buttons = new QVBoxLayout;
    buttons->addWidget(print);
    buttons->addWidget(close);
    buttons->addStretch(1);
    return buttons;
}

render::PageOptions PrintPreview::Options() const
{
    render::PageOptions options = options_;
    box_->StoreIn(options);
    options.landscape = printer_->pageLayout().orientation() == QPageLayout::Landscape;
    return options;
}

// For the preview and for the printer, once one is chosen.
void PrintPreview::DrawOn(QPrinter& printer)
{
    // The toolkit would not tell that a file cannot be written to its end.
    const bool to_file =
        printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty();
    const std::string fault = to_file ? WriteFile(printer) : DrawPaper(printer);
    if (!fault.empty()) dialogs_.ShowExclamation("Drucken", fault);
}

std::string PrintPreview::DrawPaper(QPrinter& printer)
{
    QPainter painter;
    if (!painter.begin(&printer)) return "Der Drucker nimmt die Seite nicht an";
    const QSizeF sheet = printer.pageLayout().fullRect(QPageLayout::Millimeter).size();
    const PageReport report = DrawPage(painter, {QPointF(), sheet}, Options(), application_);
    note_->setText(QString::fromStdString(report.fault + report.note));
    const bool printed = painter.end() && printer.printerState() != QPrinter::Error;
    return printed ? "" : "Die Seite konnte nicht gedruckt werden";
}

std::string PrintPreview::WriteFile(const QPrinter& printer)
{
    const PictureBytes page = MakePage(application_, printer.pageLayout().pageSize(), Options());
    return WriteBytes(printer.outputFileName().toStdString(), page, disk_);
}

}  // namespace korvinth::app
