#include "ui/termlist.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPalette>
#include <QScrollArea>
#include <QVBoxLayout>
#include <algorithm>

namespace korvinth::ui {
namespace {

constexpr int kSmallestPoints = 11;
constexpr int kLongestRow = 1'000'000;  // characters; the parser answers what is too long for it
constexpr int kLinesOfStatus = 4;

// Dark red on pale red in light and dark desktops alike; the sign says it without colour.
constexpr QColor kErrorText(0x8A, 0x0F, 0x12);
constexpr QColor kErrorBackground(0xFB, 0xE3, 0xE4);

QString Numbered(const char* name, document::SlotIndex row)
{
    return QStringLiteral("%1[%2]").arg(QLatin1String(name)).arg(document::Number(row));
}

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

ColourSquare::ColourSquare(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void ColourSquare::SetColour(document::Colour colour)
{
    colour_ = colour;
    update();
}

QSize ColourSquare::sizeHint() const
{
    const int side = fontMetrics().height() + 2;
    return {side, side};
}

void ColourSquare::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        QColor(document::Red(colour_), document::Green(colour_), document::Blue(colour_)));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

TermList::TermList(QWidget* parent) : QWidget(parent), status_(new QLabel(this))
{
    setObjectName("termform");
    setWindowTitle("Funktionsterme");
    QFont row_font = font();
    row_font.setPointSizeF(std::max<qreal>(row_font.pointSizeF(), kSmallestPoints));
    setFont(row_font);

    auto* rows = new QWidget(this);
    auto* grid = new QGridLayout(rows);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(6);
    for (const document::SlotIndex row : document::AllSlots()) {
        const int number = document::Number(row);
        auto* colour = new ColourSquare(rows);
        colour->setObjectName(Numbered("fcol", row));
        colour->setAccessibleName(QStringLiteral("Farbe der Zeile %1").arg(number + 1));
        auto* field = new QLineEdit(rows);
        field->setObjectName(Numbered("fnam", row));
        field->setAccessibleName(QStringLiteral("Funktionsterm %1").arg(number + 1));
        field->setMaxLength(kLongestRow);
        if (number == 0) field->setPlaceholderText(QStringLiteral("zum Beispiel x^2"));
        connect(field, &QLineEdit::returnPressed, this, &TermList::applied);
        grid->addWidget(colour, number, 0, Qt::AlignVCenter);
        grid->addWidget(field, number, 1);
        fcol_[row] = colour;
        fnam_[row] = field;
    }
    grid->setRowStretch(document::kSlotCount, 1);

    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(rows);
    scroll->setMaximumHeight(rows->sizeHint().height());

    status_->setObjectName("status");
    status_->setAccessibleName("Status");
    status_->setTextFormat(Qt::PlainText);
    status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    status_->setWordWrap(true);
    status_->setMargin(4);
    status_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    status_->setMaximumHeight(kLinesOfStatus * fontMetrics().lineSpacing() + 10);
    // A long message without a blank must not widen the window.
    status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 6, 6);
    layout->setSpacing(6);
    layout->addWidget(scroll, 1);
    layout->addWidget(status_);
    layout->addStretch();
    ShowStatus("");
}

std::string TermList::Row(document::SlotIndex row) const
{
    return fnam_[row]->text().toStdString();
}

void TermList::SetRows(const document::SlotTable<std::string>& rows)
{
    for (const document::SlotIndex row : document::AllSlots()) {
        const QString text = Text(rows[row]);
        if (fnam_[row]->text() != text) fnam_[row]->setText(text);
    }
}

void TermList::SetColours(const document::SlotTable<document::SlotAttributes>& slots)
{
    for (const document::SlotIndex row : document::AllSlots()) {
        fcol_[row]->SetColour(slots[row].colour);
    }
}

void TermList::ShowStatus(std::string_view error)
{
    QPalette colours;  // those of the desktop
    if (!error.empty()) {
        colours.setColor(QPalette::WindowText, kErrorText);
        colours.setColor(QPalette::Window, kErrorBackground);
    }
    status_->setPalette(colours);
    status_->setAutoFillBackground(!error.empty());
    status_->setText(error.empty() ? QStringLiteral("o.k.") : QStringLiteral("⚠ ") + Text(error));
    // As rich text the tip wraps its lines.
    status_->setToolTip(error.empty() ? QString() : "<p>" + Text(error).toHtmlEscaped() + "</p>");
}

}  // namespace korvinth::ui
