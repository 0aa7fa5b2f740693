#include "app/mouse_coupling.h"

#include <algorithm>

#include "app/parameter_control.h"
#include "document/parameter_values.h"

namespace korvinth::app {

using document::Coupling;
using document::ParameterIndex;

MouseCoupling::MouseCoupling(document::PlotDocument& document, ParameterControl& parameters)
    : document_(document), parameters_(parameters)
{
    connect(&parameters_, &ParameterControl::couplingChosen, this, &MouseCoupling::Couple);
    connect(&parameters_, &ParameterControl::couplingsReset, this, &MouseCoupling::Reset);
}

void MouseCoupling::SetActive(bool active)
{
    active_ = active;
    held_ = false;
    Q_EMIT changed();
}

void MouseCoupling::Reset()
{
    for (document::Parameter& parameter : document_.parameters) parameter.coupling = Coupling::None;
    for (auto& [name, parameter] : document_.dormant_parameters)
        parameter.coupling = Coupling::None;
    parameters_.ShowCouplings();
    SetActive(false);
}

void MouseCoupling::Couple(ParameterIndex index, Coupling coupling)
{
    document_.parameters[index].coupling = coupling;
    parameters_.ShowCouplings();
    const bool any = std::any_of(
        document_.parameters.begin(), document_.parameters.end(),
        [](const document::Parameter& parameter) { return parameter.coupling != Coupling::None; });
    SetActive(any);
}

void MouseCoupling::FollowPointer(double x, double y)
{
    if (!active_ || held_) return;
    const ParameterControl::Together together(parameters_);
    for (const ParameterIndex index : document::AllParameters()) {
        const document::Parameter& parameter = document_.parameters[index];
        if (parameter.name.empty() || parameter.coupling == Coupling::None) continue;
        parameters_.setpar(index, document::CoupledValue(parameter.coupling, x, y,
                                                         document_.attributes.angle_mode));
    }
}

void MouseCoupling::parkop() { held_ = active_ && !held_; }

}  // namespace korvinth::app
