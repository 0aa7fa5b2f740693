#include "ui/child_window.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QShortcut>
#include <QSizeGrip>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>

#include "ui/elided_label.h"

namespace korvinth::ui {
namespace {

constexpr int kAccentWidth = 3;

// Between the window's colour and that of its text: a bar that shows in light and dark colours.
QColor BarColour(const QPalette& palette, bool active)
{
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    const double share = active ? 0.14 : 0.07;
    const auto mix = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
    return {mix(window.red(), text.red()), mix(window.green(), text.green()),
            mix(window.blue(), text.blue())};
}

}  // namespace

SlimTitleBar::SlimTitleBar(QWidget* parent)
    : QWidget(parent), title_(new ElidedLabel(this)), close_(new QToolButton(this))
{
    title_->setTextFormat(Qt::PlainText);
    title_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    close_->setText(QStringLiteral("×"));
    close_->setAutoRaise(true);
    close_->setFocusPolicy(Qt::NoFocus);  // the keyboard closes with Ctrl+W
    close_->setToolTip(QStringLiteral("Fenster schließen (Strg+W)"));
    close_->setAccessibleName(QStringLiteral("Schließen"));
    const int side = fontMetrics().height() + 2;
    close_->setFixedSize(side, side);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(kAccentWidth + 6, 1, 2, 1);
    layout->setSpacing(6);
    layout->addWidget(title_, 1);
    layout->addWidget(close_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(close_, &QToolButton::clicked, this, &SlimTitleBar::closeRequested);
}

void SlimTitleBar::SetTitle(const QString& title) { title_->setText(title); }

void SlimTitleBar::SetActive(bool active)
{
    active_ = active;
    QFont font = title_->font();
    font.setBold(active);
    title_->setFont(font);
    update();
}

void SlimTitleBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), BarColour(palette(), active_));
    if (active_) {
        painter.fillRect(0, 0, kAccentWidth, height(), palette().color(QPalette::Highlight));
    }
}

void SlimTitleBar::mousePressEvent(QMouseEvent* event)
{
    grip_ = event->globalPosition().toPoint();
    event->ignore();  // the frame becomes the active one
}

void SlimTitleBar::mouseMoveEvent(QMouseEvent* event)
{
    if (!draggable_ || !(event->buttons() & Qt::LeftButton)) return;
    const QPoint place = event->globalPosition().toPoint();
    Q_EMIT dragged(place - grip_);
    grip_ = place;
}

ChildWindow::ChildWindow(QWidget* content)
    : content_(content), bar_(new SlimTitleBar(this)), grip_(nullptr)
{
    setWindowFlags(Qt::SubWindow | Qt::FramelessWindowHint);
    setObjectName(content->objectName() + "_frame");
    setWindowTitle(content->windowTitle());
    setAccessibleName(content->windowTitle());
    bar_->SetTitle(content->windowTitle());

    auto* frame = new QWidget(this);
    frame->setBackgroundRole(QPalette::Mid);
    frame->setAutoFillBackground(true);
    bar_->setAutoFillBackground(true);
    // The line's colour is the frame's alone; it would be passed on to what stands inside.
    content->setBackgroundRole(QPalette::Window);
    content->setAutoFillBackground(true);
    auto* layout = new QVBoxLayout(frame);
    layout->setContentsMargins(0, 0, 1, 1);  // docked windows share their lines
    layout->setSpacing(0);
    layout->addWidget(bar_);
    layout->addWidget(content, 1);
    setWidget(frame);
    // A content that holds its size holds that of the window.
    frame->layout()->setSizeConstraint(QLayout::SetMaximumSize);
    QMdiSubWindow::layout()->setSizeConstraint(QLayout::SetMaximumSize);
    grip_ = new QSizeGrip(frame);
    grip_->hide();
    setFocusProxy(nullptr);

    connect(bar_, &SlimTitleBar::closeRequested, this, &QWidget::close);
    connect(bar_, &SlimTitleBar::dragged, this, [this](QPoint by) { move(pos() + by); });
    MakeKeys();
    connect(content, &QWidget::windowTitleChanged, this, [this](const QString& title) {
        setWindowTitle(title);
        setAccessibleName(title);
        bar_->SetTitle(title);
    });
    // The toolkit tells it in its destructor as well, when this part of the object is gone.
    connect(this, &QMdiSubWindow::windowStateChanged, bar_,
            [bar = bar_](Qt::WindowStates, Qt::WindowStates present) {
                bar->SetActive(present.testFlag(Qt::WindowActive));
            });
}

void ChildWindow::MakeKeys()
{
    struct Arrow
    {
        Qt::Key key;
        QPoint way;
    };
    constexpr int kStep = 20;
    constexpr Arrow kArrows[] = {{Qt::Key_Left, {-kStep, 0}},
                                 {Qt::Key_Right, {kStep, 0}},
                                 {Qt::Key_Up, {0, -kStep}},
                                 {Qt::Key_Down, {0, kStep}}};
    const auto on = [this](QKeyCombination keys, auto action) {
        auto* shortcut = new QShortcut(QKeySequence(keys), this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        shortcut->setEnabled(false);
        keys_.append(shortcut);
        connect(shortcut, &QShortcut::activated, this, action);
    };
    for (const Arrow& arrow : kArrows) {
        on(Qt::ALT | arrow.key, [this, way = arrow.way] { MoveBy(way); });
        on(Qt::ALT | Qt::SHIFT | arrow.key, [this, way = arrow.way] { GrowBy(way); });
    }
}

void ChildWindow::MoveBy(QPoint by)
{
    auto* box = qobject_cast<QComboBox*>(focusWidget());
    if (box != nullptr && by.y() != 0) {
        box->showPopup();  // the keys are those of boxes everywhere
        return;
    }
    const QPoint last(parentWidget()->width() - width(), parentWidget()->height() - height());
    const QPoint to = pos() + by;
    move(std::clamp(to.x(), std::min(0, last.x()), std::max(0, last.x())),
         std::clamp(to.y(), std::min(0, last.y()), std::max(0, last.y())));
}

void ChildWindow::GrowBy(QPoint by)
{
    const QSize room(parentWidget()->width() - x(), parentWidget()->height() - y());
    resize((size() + QSize(by.x(), by.y())).boundedTo(room).expandedTo(minimumSizeHint()));
}

void ChildWindow::SetFree(bool free)
{
    free_ = free;
    bar_->SetDraggable(free);
    bar_->setCursor(free ? Qt::SizeAllCursor : Qt::ArrowCursor);
    grip_->setVisible(free);
    for (QShortcut* shortcut : keys_) shortcut->setEnabled(free);
    widget()->layout()->setContentsMargins(free ? 1 : 0, free ? 1 : 0, 1, 1);
    grip_->raise();
    RaiseFreeWindows();
}

// Whenever a docked window is raised, the free ones go back above it: a click into the graph would
// hide a small window for good.
bool ChildWindow::event(QEvent* event)
{
    const bool handled = QMdiSubWindow::event(event);
    if (event->type() == QEvent::ZOrderChange && !free_) RaiseFreeWindows();
    return handled;
}

void ChildWindow::RaiseFreeWindows() const
{
    if (parentWidget() == nullptr) return;
    QList<ChildWindow*> free_windows;  // the children stand in the order of their stacking
    bool covered = false;
    for (QObject* sibling : parentWidget()->children()) {
        auto* window = qobject_cast<ChildWindow*>(sibling);
        if (window == nullptr) continue;
        if (window->free_) {
            free_windows.append(window);
        } else {
            covered = covered || !free_windows.isEmpty();
        }
    }
    if (!covered) return;
    for (ChildWindow* window : free_windows) window->raise();
}

int ChildWindow::WidthFor(int content_width) const
{
    const QMargins margins = widget()->layout()->contentsMargins();
    return content_width + margins.left() + margins.right();
}

int ChildWindow::HeightFor(int content_height) const
{
    const QMargins margins = widget()->layout()->contentsMargins();
    return content_height + bar_->sizeHint().height() + margins.top() + margins.bottom();
}

void ChildWindow::BringToFront()
{
    show();
    raise();
    if (mdiArea() != nullptr) mdiArea()->setActiveSubWindow(this);
    QWidget* inner = content_->focusWidget();
    if (inner == nullptr) inner = FirstControl();
    if (inner != nullptr) inner->setFocus();
}

QWidget* ChildWindow::FirstControl() const
{
    // Controls made later stand behind those of other windows.
    for (QWidget* inner = content_->nextInFocusChain(); inner != content_;
         inner = inner->nextInFocusChain()) {
        if (!content_->isAncestorOf(inner)) continue;
        const bool takes_keys = (inner->focusPolicy() & Qt::TabFocus) == Qt::TabFocus;
        if (takes_keys && inner->isVisibleTo(content_) && inner->isEnabled()) return inner;
    }
    return nullptr;
}

void ChildWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    hide();
    Q_EMIT hidden();
}

void ChildWindow::keyPressEvent(QKeyEvent* event)
{
    if (closed_by_esc_ && event->key() == Qt::Key_Escape) {
        close();
    } else {
        QMdiSubWindow::keyPressEvent(event);
    }
}

void ChildWindow::resizeEvent(QResizeEvent* event)
{
    QMdiSubWindow::resizeEvent(event);
    const QSize size = grip_->sizeHint();
    grip_->resize(size);
    grip_->move(widget()->width() - size.width(), widget()->height() - size.height());
    // After all windows have found their places.
    QMetaObject::invokeMethod(this, &ChildWindow::ScrollAsNeeded, Qt::QueuedConnection);
}

void ChildWindow::ScrollAsNeeded()
{
    const QSize least = content_->minimumSizeHint().expandedTo(content_->minimumSize());
    const QSize room(width() - WidthFor(0), height() - HeightFor(0));
    const bool fits = least.boundedTo(room) == least;
    if (!isVisible() || fits == (scroll_ == nullptr)) return;
    QWidget* const focused = window()->focusWidget();
    const bool has_focus = focused != nullptr && content_->isAncestorOf(focused);
    const auto replace = [this](QWidget* from, QWidget* to) {
        const std::unique_ptr<QLayoutItem> former(widget()->layout()->replaceWidget(from, to));
    };
    if (fits) {
        replace(scroll_, scroll_->takeWidget());
        scroll_->deleteLater();
        scroll_ = nullptr;
    } else {
        scroll_ = new QScrollArea(widget());
        scroll_->setFrameShape(QFrame::NoFrame);
        scroll_->setFocusPolicy(Qt::NoFocus);
        scroll_->setWidgetResizable(true);
        replace(content_, scroll_);
        scroll_->setWidget(content_);
        scroll_->show();
    }
    content_->show();
    grip_->raise();
    if (has_focus) focused->setFocus();
}

}  // namespace korvinth::ui
