#include "ui/export_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/page_options_box.h"

namespace korvinth::ui {
namespace {

using render::PictureFormat;

constexpr QSize kPreviewRoom(320, 320);          // in pixels as the toolkit counts them
constexpr int kRestMs = 80;                      // after a change, before the preview follows
constexpr std::chrono::milliseconds kSlice(40);  // of drawing it, before events have their turn

struct FormatEntry
{
    PictureFormat format;
    const char* caption;
};
constexpr FormatEntry kFormats[] = {
    {PictureFormat::Png, "PNG – Bild aus Bildpunkten"},
    {PictureFormat::Svg, "SVG – Vektorgraphik"},
    {PictureFormat::Pdf, "PDF – Seite zum Drucken"},
    {PictureFormat::Emf, "EMF – Vektorgraphik für Office"},
};

int Whole(double value) { return static_cast<int>(std::lround(value)); }

}  // namespace

ExportDialog::ExportDialog(Preview preview, QWidget* parent)
    : QDialog(parent),
      preview_(std::move(preview)),
      format_(new QComboBox(this)),
      width_(MakeSide("export_width")),
      height_(MakeSide("export_height")),
      keep_ratio_(new QCheckBox("Seiten&verhältnis beibehalten", this)),
      resolution_(new QSpinBox(this)),
      paper_size_(new QLabel(this)),
      orientation_(new QComboBox(this)),
      page_(new PageOptionsBox(this)),
      picture_(new QLabel(this))
{
    setObjectName("export");
    setWindowTitle("Graphik exportieren");
    picture_->setObjectName("export_preview");
    picture_->setAccessibleName("Vorschau");
    picture_->setFixedSize(kPreviewRoom);
    picture_->setAlignment(Qt::AlignCenter);
    picture_->setWordWrap(true);
    picture_->setTextFormat(Qt::PlainText);

    auto* save = new QPushButton("&Speichern unter...", this);
    save->setObjectName("export_save");
    save->setToolTip("Fragt nach dem Namen der Datei und schreibt sie");
    save->setDefault(true);
    auto* cancel = new QPushButton("Abbrechen", this);
    cancel->setObjectName("export_cancel");
    cancel->setToolTip("Schließt das Fenster, ohne zu schreiben (Esc)");
    cancel->setAutoDefault(false);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(save);
    buttons->addWidget(cancel);
    auto* columns = new QHBoxLayout;
    columns->setSpacing(12);
    columns->addLayout(MakeFields());
    columns->addWidget(picture_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(save, &QPushButton::clicked, this, &ExportDialog::saveWanted);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    Connect();
    FollowChoice();
}

QSpinBox* ExportDialog::MakeSide(const char* name)
{
    auto* side = new QSpinBox(this);
    side->setObjectName(name);
    side->setRange(1, render::kLongestSide);
    side->setSingleStep(10);
    side->setSuffix(" Bildpunkte");
    side->setToolTip("Größe des Bildes, wie sie in der Datei steht");
    return side;
}

QFormLayout* ExportDialog::MakeFields()
{
    format_->setObjectName("export_format");
    format_->setAccessibleName("Format");
    format_->setToolTip("Was die Datei enthält: Bildpunkte, Linien oder eine Seite");
    for (const FormatEntry& entry : kFormats) format_->addItem(entry.caption);
    keep_ratio_->setObjectName("export_ratio");
    keep_ratio_->setToolTip("Breite und Höhe folgen einander wie im Graphenfenster");
    keep_ratio_->setChecked(true);
    resolution_->setObjectName("export_resolution");
    resolution_->setRange(Whole(render::kLeastResolution), Whole(render::kMostResolution));
    resolution_->setValue(Whole(render::kUsualResolution));
    resolution_->setSuffix(" dpi");
    resolution_->setToolTip("Bildpunkte je Zoll; mehr davon lassen Schrift und Linien wachsen");
    paper_size_->setObjectName("export_paper_size");
    orientation_->setObjectName("export_orientation");
    orientation_->setAccessibleName("Seite");
    orientation_->setToolTip("Wie das Blatt im PDF liegt");
    orientation_->addItems({"Hochformat", "Querformat"});

    auto* fields = new QFormLayout;
    fields->addRow("&Format:", format_);
    fields->addRow("&Breite:", width_);
    fields->addRow("&Höhe:", height_);
    fields->addRow("", keep_ratio_);
    fields->addRow("&Auflösung:", resolution_);
    fields->addRow("", paper_size_);
    fields->addRow("Se&ite:", orientation_);
    fields->addRow("Bild:", page_);
    return fields;
}

void ExportDialog::Connect()
{
    connect(format_, &QComboBox::currentIndexChanged, this, &ExportDialog::FollowChoice);
    connect(page_, &PageOptionsBox::changed, this, &ExportDialog::FollowChoice);
    connect(keep_ratio_, &QCheckBox::toggled, this,
            [this] { KeepRatio(*width_, *height_, 1 / ratio_); });
    connect(width_, &QSpinBox::valueChanged, this,
            [this] { KeepRatio(*width_, *height_, 1 / ratio_); });
    connect(height_, &QSpinBox::valueChanged, this,
            [this] { KeepRatio(*height_, *width_, ratio_); });
    const auto later = [this] { redraw_.start(); };
    connect(resolution_, &QSpinBox::valueChanged, this, later);
    connect(orientation_, &QComboBox::currentIndexChanged, this, later);
    redraw_.setSingleShot(true);
    redraw_.setInterval(kRestMs);
    connect(&redraw_, &QTimer::timeout, this, &ExportDialog::DrawPreview);
    connect(&slice_, &QTimer::timeout, this, &ExportDialog::ContinuePreview);
    // The plot may change from then on.
    connect(this, &QDialog::finished, this, [this] {
        redraw_.stop();
        slice_.stop();
        shown_.draw = nullptr;
    });
}

void ExportDialog::KeepRatio(const QSpinBox& edited, QSpinBox& other, double factor)
{
    if (keep_ratio_->isChecked()) {
        const QSignalBlocker blocker(other);
        other.setValue(Whole(std::min(edited.value() * factor, double{render::kLongestSide})));
    }
    redraw_.start();
}

// Only what the format has can be chosen.
void ExportDialog::FollowChoice()
{
    const PictureFormat format = Format();
    const bool page = format == PictureFormat::Pdf;
    page_->SetAvailable(page || format == PictureFormat::Svg, page);
    const bool sized = !page && !page_->AtScale();
    for (QWidget* field : {static_cast<QWidget*>(width_), static_cast<QWidget*>(height_),
                           static_cast<QWidget*>(keep_ratio_)}) {
        field->setEnabled(sized);
    }
    resolution_->setEnabled(format == PictureFormat::Png);
    orientation_->setEnabled(page);
    redraw_.start();
}

void ExportDialog::Open(QSize area)
{
    ratio_ = double(area.width()) / area.height();
    if (!std::exchange(opened_, true)) {
        const QSignalBlocker blocker(height_);
        height_->setValue(area.height());
        width_->setValue(area.width());
    } else {
        KeepRatio(*width_, *height_, 1 / ratio_);
    }
    DrawPreview();
    open();
    if (const QWidget* window = parentWidget()) {  // at its left edge: the graph stays in view
        move(window->mapToGlobal(QPoint(0, std::max(0, (window->height() - height()) / 2))));
    }
}

PictureFormat ExportDialog::Format() const
{
    return kFormats[static_cast<std::size_t>(std::max(0, format_->currentIndex()))].format;
}

render::PictureOptions ExportDialog::Options() const
{
    render::PictureOptions options;
    if (width_->isEnabled()) options.size = {width_->value(), height_->value()};
    if (resolution_->isEnabled()) options.resolution = resolution_->value();
    options.page.landscape = orientation_->isEnabled() && orientation_->currentIndex() == 1;
    page_->StoreIn(options.page);
    return options;
}

void ExportDialog::DrawPreview()
{
    redraw_.stop();
    slice_.stop();
    ShowPaperSize();
    shown_ = preview_(Format(), Options(), kPreviewRoom * devicePixelRatioF());
    if (shown_.draw) {
        ContinuePreview();
    } else {
        ShowPreview(shown_.image);
    }
}

// What is slow to draw is shown as far as it has come.
void ExportDialog::ContinuePreview()
{
    QImage image;
    if (shown_.draw(kSlice, image)) {
        slice_.start();
    } else {
        slice_.stop();
        shown_.draw = nullptr;
    }
    ShowPreview(image);
}

void ExportDialog::ShowPreview(QImage image)
{
    if (image.isNull()) {
        picture_->setText(shown_.fault);
        return;
    }
    image.setDevicePixelRatio(devicePixelRatioF());
    picture_->setPixmap(QPixmap::fromImage(image));
}

// As other programs insert the picture.
void ExportDialog::ShowPaperSize()
{
    constexpr double kCentimetresPerInch = 2.54;
    const render::PictureOptions options = Options();
    if (!options.size) {
        paper_size_->clear();
        return;
    }
    const auto centimetres = [&options](int pixels) {
        return QLocale(QLocale::German)
            .toString(pixels / options.resolution * kCentimetresPerInch, 'f', 1);
    };
    paper_size_->setText(
        QStringLiteral("in einem Text %1 × %2 cm groß")
            .arg(centimetres(options.size->width), centimetres(options.size->height)));
}

}  // namespace korvinth::ui
