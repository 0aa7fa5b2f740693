// Runs the animated parameters: the running set and the timer that drives it.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <functional>
#include <utility>

#include "app/parameter_control.h"
#include "document/animation.h"
#include "document/plot_document.h"
#include "document/slots.h"

namespace korvinth::app {

inline constexpr int kDefaultTickInterval = 40;  // milliseconds
inline constexpr int kShortestTickInterval = 10;
inline constexpr int kLongestTickInterval = 1000;

class AnimationControl : public QObject
{
    Q_OBJECT
public:
    // Both outlive the control; it listens to the timer symbols of `parameters`.
    AnimationControl(document::PlotDocument& document, ParameterControl& parameters);

    bool Active() const { return active_; }  // whether Timer1 runs
    const document::RunningSet& Running() const { return running_; }
    // What mn_timergo does next.
    QString MenuCaption() const;

    void StartOrStopAll();                        // mn_timergo
    void StopAll();                               // document::PlotHost::StopAnimation
    void Toggle(document::ParameterIndex index);  // nothing without a step
    void Tick();                                  // one redraw for all running parameters
    void SetInterval(int milliseconds);           // limited to 10 to 1000
    int Interval() const { return interval_; }
    // While this says so, the picture of the last tick is not complete, and no tick comes.
    void SetBusy(std::function<bool()> busy) { busy_ = std::move(busy); }

Q_SIGNALS:
    void activeChanged(bool active);

private:
    void Start(document::ParameterIndex index);
    void Stop(document::ParameterIndex index);
    void FollowStep(document::ParameterIndex index);
    void SetActive(bool active);
    void Arm();
    void Advance(document::ParameterIndex index);

    document::PlotDocument& document_;
    ParameterControl& parameters_;
    document::RunningSet running_;
    std::function<bool()> busy_ = [] { return false; };
    QTimer timer1_;
    QElapsedTimer clock_;
    qint64 due_ = 0;  // on the clock
    int interval_ = kDefaultTickInterval;
    bool active_ = false;
};

}  // namespace korvinth::app
