// The symbol of a parameter's timer.
#pragma once

#include <QAbstractButton>

namespace korvinth::ui {

// A stop watch in the colours of the palette, framed while the timer runs.
class TimerSymbol : public QAbstractButton
{
    Q_OBJECT
public:
    explicit TimerSymbol(QWidget* parent);
    bool Framed() const { return framed_; }
    void SetFramed(bool framed);
    void SetStep(bool has_step);  // pale without one
    QSize sizeHint() const override;

Q_SIGNALS:
    void settingsWanted();  // right button or menu key

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    bool framed_ = false;
    bool has_step_ = false;
};

}  // namespace korvinth::ui
