#include "ui/symbol_bar.h"

#include <QHBoxLayout>
#include <QToolButton>

namespace korvinth::ui {
namespace {

constexpr int kAroundSign = 12;  // pixels

struct Symbol
{
    const char* caption;
    const char* typed;
    const char* name;
};
constexpr Symbol kSymbols[] = {
    {"²", "²", "Hoch 2"},
    {"³", "³", "Hoch 3"},
    {"π", "pi", "Kreiszahl pi"},
    {"√", "wurzel(", "Quadratwurzel"},
    {"≤", "≤", "Kleiner oder gleich"},
    {"≥", "≥", "Größer oder gleich"},
    {"·", "*", "Mal"},
    {"'", "'", "Ableitung: f'(x), f''(x)"},
};

}  // namespace

SymbolBar::SymbolBar(QWidget* parent) : QWidget(parent)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (const Symbol& symbol : kSymbols) {
        auto* button = new QToolButton(this);
        button->setObjectName(QStringLiteral("symbol[%1]").arg(buttons_.size()));
        button->setText(symbol.caption);
        button->setAutoRaise(true);
        button->setToolTip(symbol.name);
        button->setAccessibleName(symbol.name);
        button->setAccessibleDescription(
            QStringLiteral("Schreibt das Zeichen in die Eingabezeile"));
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QToolButton::clicked, this,
                [this, text = QString(symbol.typed)] { Q_EMIT typed(text); });
        layout->addWidget(button);
        buttons_.push_back(button);
    }
}

void SymbolBar::LayoutButtons(const QFont& font, int height)
{
    const int width = QFontMetrics(font).horizontalAdvance("≤") + kAroundSign;
    for (QToolButton* button : buttons_) {
        button->setFont(font);
        button->setFixedSize(width, height);
    }
}

}  // namespace korvinth::ui
