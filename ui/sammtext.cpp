#include "ui/sammtext.h"

#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "document/display_attributes.h"
#include "ui/storable_fields.h"

namespace korvinth::ui {
namespace {

constexpr int kPause = 1500;            // milliseconds that end a burst of typing
constexpr double kLettersOfALine = 45;  // of a font that follows the window
constexpr int kMeasuredPoints = 100;    // large enough for the letters' width in proportion

}  // namespace

SammText::SammText(QWidget* parent) : QWidget(parent), text_(new QPlainTextEdit(this))
{
    setObjectName("sammtext");
    setWindowTitle("Detaillierte Beschreibung");
    text_->setObjectName("samml_text");
    text_->setAccessibleName("Detaillierte Beschreibung");
    text_->setAccessibleDescription("Text zum angewählten Eintrag der Sammlung");
    text_->setFrameShape(QFrame::NoFrame);
    text_->setTabChangesFocus(true);
    text_->document()->setDocumentMargin(8);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(text_);
    setFocusProxy(text_);
    pause_.setSingleShot(true);
    pause_.setInterval(kPause);
    KeepStorable(*text_);  // first, so that what is told is what stays
    connect(text_, &QPlainTextEdit::textChanged, this, &SammText::TakeText);
    ShowNothing();
}

QSize SammText::sizeHint() const
{
    return {28 * fontMetrics().height(), 12 * fontMetrics().height()};
}

void SammText::ShowText(std::string_view stored, bool writable)
{
    text_->setReadOnly(!writable);
    text_->setPlaceholderText("Noch keine Beschreibung");
    if (StoredText(*text_) != stored) Show(stored);
}

void SammText::ShowNothing()
{
    text_->setReadOnly(true);
    text_->setPlaceholderText("(kein Eintrag angewählt)");
    Show("");
}

void SammText::Show(std::string_view stored)
{
    const QScopedValueRollback<bool> showing(showing_, true);
    pause_.stop();
    text_->setPlainText(ShownText(stored));
}

void SammText::TakeText()
{
    if (showing_) return;
    const document::Typing typing =
        pause_.isActive() ? document::Typing::Continued : document::Typing::Anew;
    pause_.start();
    Q_EMIT edited(StoredText(*text_), typing);
}

void SammText::SetFontPoints(std::optional<int> points)
{
    points_ = points;
    FitFont();
}

// While nobody sees it, no font is loaded for it.
void SammText::FitFont()
{
    if (!isVisible()) return;
    QFont font = text_->font();
    if (points_) {
        font.setPointSize(*points_);
    } else {
        font.setPointSize(kMeasuredPoints);
        const double letter = QFontMetricsF(font, text_).averageCharWidth() / kMeasuredPoints;
        const double points = text_->viewport()->width() / (kLettersOfALine * letter);
        font.setPointSize(static_cast<int>(std::clamp<double>(
            std::floor(points), document::kSmallestDescription, document::kLargestDescription)));
    }
    if (font != text_->font()) text_->setFont(font);
}

void SammText::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    FitFont();
}

void SammText::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (!points_) FitFont();
}

}  // namespace korvinth::ui
