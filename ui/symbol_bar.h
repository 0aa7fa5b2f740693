// Buttons for signs that keyboards hide: ² ³ π √ ≤ ≥ · '
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

class QToolButton;

namespace korvinth::ui {

class SymbolBar : public QWidget
{
    Q_OBJECT
public:
    explicit SymbolBar(QWidget* parent);

    // Sizes from the font; `height` in pixels.
    void LayoutButtons(const QFont& font, int height);

Q_SIGNALS:
    // A sign that terms do not know is reported as its word or operator. A click takes no focus.
    void typed(const QString& text);

private:
    std::vector<QToolButton*> buttons_;
};

}  // namespace korvinth::ui
