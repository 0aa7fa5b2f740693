// Lets parameters follow the pointer in the graph.
#pragma once

#include <QObject>

#include "document/plot_document.h"

namespace korvinth::app {

class ParameterControl;

// While the coupling is active, each coupled parameter takes the pointer's coordinate, or the angle
// of its position vector, without a click. A plain click holds the values, another one lets go.
class MouseCoupling : public QObject
{
    Q_OBJECT
public:
    // Both outlive the object.
    MouseCoupling(document::PlotDocument& document, ParameterControl& parameters);

    bool Active() const { return active_; }
    void SetActive(bool active);  // mnka
    void Reset();                 // mnkc: no parameter is coupled, the coupling is off
    // Coupling a parameter switches the coupling on.
    void Couple(document::ParameterIndex index, document::Coupling coupling);

    void FollowPointer(double x, double y);  // world coordinates
    void parkop();                           // a plain left click in the graph

Q_SIGNALS:
    void changed();  // active or not, or another choice of parameters

private:
    document::PlotDocument& document_;
    ParameterControl& parameters_;
    bool active_ = false;
    bool held_ = false;
};

}  // namespace korvinth::app
