#include "ui/term_row.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QPalette>
#include <algorithm>

#include "ui/storable_fields.h"
#include "ui/told_texts.h"

namespace korvinth::ui {
namespace {

constexpr int kCorner = 3;         // pixels
constexpr int kHighlightEdge = 3;  // pixels around the row
constexpr int kHighlightAlpha = 70;

// Readable on light and on dark fields.
QColor FaultColour(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128 ? QColor(0xFF, 0x6B, 0x6B)
                                                           : QColor(0xC6, 0x1A, 0x1F);
}

bool HasLineBreak(const QString& text)
{
    return std::ranges::any_of(text, [](QChar c) {
        return c == '\n' || c == '\r' || c == QChar::LineSeparator ||
               c == QChar::ParagraphSeparator;
    });
}

}  // namespace

ColourField::ColourField(QWidget* parent) : QWidget(parent) { setCursor(Qt::PointingHandCursor); }

void ColourField::Show(QColor colour, bool visible)
{
    colour_ = colour;
    hollow_ = !visible;
    update();
}

void ColourField::mousePressEvent(QMouseEvent*) { Q_EMIT pressed(); }

// The press before has opened the chooser.
void ColourField::mouseDoubleClickEvent(QMouseEvent*) {}

void ColourField::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double line = std::max(2.0, height() / 10.0);
    const double inset = hollow_ ? line / 2 + 1 : 1;
    painter.setPen(hollow_ ? QPen(colour_, line) : QPen(Qt::NoPen));
    painter.setBrush(hollow_ ? QBrush(Qt::NoBrush) : QBrush(colour_));
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kCorner,
                            kCorner);
}

TermField::TermField(QWidget* parent) : QLineEdit(parent)
{
    // No text of the document is cut off; what is pasted has a limit of its own.
    setMaxLength(100 * kLongestText);
    KeepStorableTerm(*this);
}

void TermField::ShowText(const QString& shown)
{
    if (text() == shown) return;
    const auto from_end = static_cast<int>(text().size()) - cursorPosition();
    setText(shown);
    setCursorPosition(hasFocus() ? std::max(0, static_cast<int>(shown.size()) - from_end) : 0);
}

void TermField::ReplaceText(const QString& replacement)
{
    selectAll();
    if (replacement.isEmpty()) {
        del();
    } else {
        insert(replacement);
    }
}

QString TermField::TextWith(const QString& inserted) const
{
    if (!hasSelectedText()) return text().insert(cursorPosition(), inserted);
    return text().replace(selectionStart(), selectionLength(), inserted);
}

void TermField::ShowFault(const QString& message)
{
    faulty_ = !message.isEmpty();
    // As rich text the tip wraps its lines.
    setToolTip(faulty_ ? "<p>" + message.toHtmlEscaped() + "</p>" : QString());
    TellDescription(*this,
                    faulty_ ? message : QStringLiteral("Die Eingabetaste zeichnet alle Zeilen"));
    update();
}

bool TermField::Offered(const QString& text)
{
    const bool fits = !HasLineBreak(text) && TextWith(text).size() <= kLongestText;
    if (!fits) Q_EMIT unfitTextOffered(text);
    return !fits;
}

void TermField::Paste()
{
    if (!Offered(QApplication::clipboard()->text())) paste();
}

void TermField::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Paste)) {
        Paste();
        event->accept();
        return;
    }
    // As the validator does, but so that the field's own undo goes on.
    if (event->text() == "{" || event->text() == "}") {
        insert(event->text() == "{" ? "(" : ")");
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void TermField::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction* entry : menu->actions()) {
        if (!entry->text().startsWith(QLineEdit::tr("&Paste"))) continue;
        disconnect(entry, &QAction::triggered, this, nullptr);
        connect(entry, &QAction::triggered, this, &TermField::Paste);
        entry->setObjectName("mn_row_paste");
    }
    menu->addSeparator();
    QAction* row_menu = menu->addAction("&Graph dieser Zeile ...");
    row_menu->setObjectName("mn_row");
    const QPoint position = event->globalPos();
    // Once this menu is closed, the other one can open.
    connect(
        row_menu, &QAction::triggered, this,
        [this, position] { Q_EMIT rowMenuRequested(position); }, Qt::QueuedConnection);
    menu->popup(position);
}

void TermField::mouseReleaseEvent(QMouseEvent* event)
{
    const QClipboard* clipboard = QApplication::clipboard();
    if (event->button() == Qt::MiddleButton && clipboard->supportsSelection() &&
        Offered(clipboard->text(QClipboard::Selection))) {
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
}

// Files are for the window around.
void TermField::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls()) {
        event->ignore();
    } else {
        QLineEdit::dragEnterEvent(event);
    }
}

void TermField::dropEvent(QDropEvent* event)
{
    if (event->source() != this && Offered(event->mimeData()->text())) {
        event->setDropAction(Qt::CopyAction);
        event->accept();
        return;
    }
    QLineEdit::dropEvent(event);
}

void TermField::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    if (!faulty_) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(FaultColour(palette()), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kCorner, kCorner);
}

void TermRowsPane::Highlight(const QWidget* field)
{
    highlighted_ = field;
    update();
}

void TermRowsPane::paintEvent(QPaintEvent*)
{
    if (highlighted_ == nullptr) return;
    QColor soft = palette().color(QPalette::Highlight);
    soft.setAlpha(kHighlightAlpha);
    const QRect row = highlighted_->geometry();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(soft);
    painter.drawRoundedRect(
        QRect(0, row.y() - kHighlightEdge, width(), row.height() + 2 * kHighlightEdge), kCorner,
        kCorner);
}

}  // namespace korvinth::ui
