#include "ui/status_line.h"

#include <QEvent>
#include <QPalette>

#include "ui/told_texts.h"

namespace korvinth::ui {
namespace {

constexpr int kMostLines = 4;
constexpr int kLongestText = 300;  // characters
constexpr int kLongestTip = 1500;
constexpr int kTextMargin = 4;  // pixels

// Dark red on pale red in light and dark desktops alike; the sign says it without colour.
constexpr QColor kErrorText(0x8A, 0x0F, 0x12);
constexpr QColor kErrorBackground(0xFB, 0xE3, 0xE4);

QString Shortened(const QString& text, int characters)
{
    return text.size() <= characters ? text : text.left(characters - 1) + "…";
}

}  // namespace

StatusLine::StatusLine(QWidget* parent) : QLabel(parent)
{
    setAccessibleDescription("Was aus den Eingabezeilen geworden ist");
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setWordWrap(true);
    setMargin(kTextMargin);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    LimitHeight();
    ShowStatus("", false);
}

void StatusLine::ShowStatus(std::string_view text, bool error)
{
    QPalette colours;  // those of the desktop
    if (error) {
        colours.setColor(QPalette::WindowText, kErrorText);
        colours.setColor(QPalette::Window, kErrorBackground);
    }
    setPalette(colours);
    setAutoFillBackground(error);
    const QString message =
        text.empty() ? QStringLiteral("o.k.")
                     : QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    setText((error ? "⚠ " : "") + Shortened(message, kLongestText));
    TellName(*this, "Status: " + message);
    // As rich text the tip wraps its lines.
    setToolTip(error ? "<p>" + Shortened(message, kLongestTip).toHtmlEscaped() + "</p>"
                     : QString());
}

int StatusLine::HeightOfOneLine() const { return fontMetrics().lineSpacing() + 2 * kTextMargin; }

void StatusLine::LimitHeight()
{
    setMaximumHeight(kMostLines * fontMetrics().lineSpacing() + 2 * kTextMargin);
}

void StatusLine::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange) LimitHeight();
}

}  // namespace korvinth::ui
