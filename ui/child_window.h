// The frame of a child window: a slim title bar with the name and a close button.
#pragma once

#include <QMdiSubWindow>
#include <QPoint>

class QLabel;
class QScrollArea;
class QShortcut;
class QSizeGrip;
class QToolButton;

namespace korvinth::ui {

// Shows the name; the window can be dragged by it when it is free.
class SlimTitleBar : public QWidget
{
    Q_OBJECT
public:
    explicit SlimTitleBar(QWidget* parent);

    void SetTitle(const QString& title);
    void SetActive(bool active);
    void SetDraggable(bool draggable) { draggable_ = draggable; }

Q_SIGNALS:
    void closeRequested();
    void dragged(QPoint by);  // in pixels, since the last report

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QLabel* title_;
    QToolButton* close_;
    bool active_ = false;
    bool draggable_ = false;
    QPoint grip_;  // where the pointer took hold, on the screen
};

// Takes a window's content, title and object name ("termform" stands in "termform_frame").
// Closing it hides it. A content that needs more room than it has scrolls.
class ChildWindow : public QMdiSubWindow
{
    Q_OBJECT
public:
    explicit ChildWindow(QWidget* content);

    QWidget* Content() const { return content_; }
    // A free window can be moved by its title and sized by its lower right corner, as far as its
    // content allows: by the arrow keys with Alt, and with Shift as well. It stays above
    // those that are not free.
    void SetFree(bool free);
    bool IsFree() const { return free_; }
    // Esc closes it, unless its content has another use for the key at the moment.
    void SetClosedByEsc() { closed_by_esc_ = true; }
    // Width and height of the window when its content has the given one.
    int WidthFor(int content_width) const;
    int HeightFor(int content_height) const;
    // Shows it, brings it to the front and puts the focus into its content.
    void BringToFront();

Q_SIGNALS:
    void hidden();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void MakeKeys();
    void MoveBy(QPoint by);  // stays within reach
    void GrowBy(QPoint by);
    void RaiseFreeWindows() const;  // all of the area, in their order
    void ScrollAsNeeded();
    // The first of the content in the order of the tab key, nullptr when it has none.
    QWidget* FirstControl() const;

    QWidget* content_;
    SlimTitleBar* bar_;
    QSizeGrip* grip_;
    QScrollArea* scroll_ = nullptr;  // around a content that is too large
    QList<QShortcut*> keys_;         // that move and size it
    bool free_ = false;
    bool closed_by_esc_ = false;
};

}  // namespace korvinth::ui
