#include "app/animation_control.h"

#include <algorithm>

namespace korvinth::app {

using document::ParameterIndex;

AnimationControl::AnimationControl(document::PlotDocument& document, ParameterControl& parameters)
    : document_(document), parameters_(parameters), timer1_(this)
{
    timer1_.setObjectName("Timer1");
    timer1_.setSingleShot(true);
    timer1_.setTimerType(Qt::PreciseTimer);
    clock_.start();
    connect(&timer1_, &QTimer::timeout, this, [this] {
        if (!busy_()) Tick();
        Arm();
    });
    connect(&parameters_, &ParameterControl::timerToggled, this, &AnimationControl::Toggle);
    connect(&parameters_, &ParameterControl::stepChanged, this, &AnimationControl::FollowStep);
}

QString AnimationControl::MenuCaption() const
{
    return active_ ? QStringLiteral("Alle &Timer anhalten")
                   : QStringLiteral("Alle &Timer gleichzeitig starten");
}

void AnimationControl::StartOrStopAll()
{
    if (active_) {
        StopAll();
        return;
    }
    for (const ParameterIndex index : document::AllParameters()) {
        if (document_.parameters[index].step != 0) Start(index);
    }
    // Deliberate: it runs although nothing may have a step; the first tick finds that out.
    SetActive(true);
}

void AnimationControl::StopAll()
{
    for (const ParameterIndex index : running_.Members()) Stop(index);
    SetActive(false);
}

void AnimationControl::Toggle(ParameterIndex index)
{
    if (running_.Contains(index)) {
        Stop(index);
    } else if (document_.parameters[index].step != 0) {
        Start(index);
    }
    SetActive(!running_.Empty());
}

void AnimationControl::FollowStep(ParameterIndex index)
{
    if (running_.Contains(index) && document_.parameters[index].step == 0) Toggle(index);
}

void AnimationControl::Start(ParameterIndex index)
{
    running_.Add(index);
    parameters_.ShowRunning(index, true);
}

void AnimationControl::Stop(ParameterIndex index)
{
    running_.Remove(index);
    parameters_.ShowRunning(index, false);
}

void AnimationControl::SetActive(bool active)
{
    if (active_ == active) return;
    active_ = active;
    due_ = clock_.elapsed();
    timer1_.stop();
    Arm();
    Q_EMIT activeChanged(active_);
}

void AnimationControl::SetInterval(int milliseconds)
{
    interval_ = std::clamp(milliseconds, kShortestTickInterval, kLongestTickInterval);
}

// Counts from when the last tick was due, so that the time it has taken does not slow the rate.
void AnimationControl::Arm()
{
    if (!active_) return;
    const qint64 now = clock_.elapsed();
    due_ = document::NextTickTime(due_, now, interval_);
    timer1_.start(static_cast<int>(due_ - now));
}

void AnimationControl::Tick()
{
    if (running_.Empty()) {
        SetActive(false);
        return;
    }
    const ParameterControl::Together together(parameters_);
    for (const ParameterIndex index : running_.Members()) Advance(index);
}

void AnimationControl::Advance(ParameterIndex index)
{
    document::Parameter& parameter = document_.parameters[index];
    const document::TickResult next = document::NextTick(parameter);
    parameter.step = next.step;
    parameters_.setpar(index, next.value);
}

}  // namespace korvinth::app
