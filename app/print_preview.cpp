#include "app/print_preview.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>

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
    static_cast<QBoxLayout*>(dialog_->layout())->insertLayout(0, options_row);

    connect(dialog_.get(), &QPrintPreviewDialog::paintRequested, this,
            [this](QPrinter* printer) { DrawOn(*printer); });
    connect(dialog_.get(), &QDialog::finished, this, &PrintPreview::finished);
    auto* preview = dialog_->findChild<QPrintPreviewWidget*>();
    connect(box_, &ui::PageOptionsBox::changed, preview, &QPrintPreviewWidget::updatePreview);
    dialog_->resize(window->size() * 3 / 4);
    dialog_->open();
}

PrintPreview::~PrintPreview() = default;

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
