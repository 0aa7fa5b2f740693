#include "ui/first_paint.h"

#include <QEvent>
#include <QTimer>
#include <utility>

namespace korvinth::ui {
namespace {

class FirstPaint : public QObject
{
public:
    FirstPaint(QWidget& window, std::function<void()> action)
        : QObject(&window), action_(std::move(action))
    {
        window.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            // What is painted reaches the screen when this event is over.
            QTimer::singleShot(0, this, [this] {
                action_();
                deleteLater();
            });
        }
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> action_;
};

}  // namespace

void AfterFirstPaint(QWidget& window, std::function<void()> action)
{
    new FirstPaint(window, std::move(action));  // the window's child
}

}  // namespace korvinth::ui
