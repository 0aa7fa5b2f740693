#include "render/axis_scale.h"

#include "document/general_settings.h"

namespace korvinth::render {
namespace {

AxisScale ReadScale(const document::AxisStep& step, StepLadder automatic, term::MathParser& parser)
{
    switch (step.mode) {
        case document::StepMode::MultiplesOfPi: return {StepLadder::Pi};
        case document::StepMode::Fixed: {
            const double value = document::StepValue(step.fixed, parser);
            return value > 0 ? AxisScale{StepLadder::Decimal, value} : AxisScale{automatic};
        }
        case document::StepMode::Automatic: break;
    }
    return {automatic};
}

StepLadder LadderOfAngles(term::TrigMode mode)
{
    switch (mode) {
        case term::TrigMode::Degrees: return StepLadder::Degrees;
        case term::TrigMode::Grads: return StepLadder::Grads;
        case term::TrigMode::Radians: break;
    }
    return StepLadder::Decimal;
}

}  // namespace

AxisScales ReadAxisScales(const document::DisplayAttributes& attributes, term::MathParser& parser)
{
    return {ReadScale(attributes.x_step, LadderOfAngles(attributes.angle_mode), parser),
            ReadScale(attributes.y_step, StepLadder::Decimal, parser)};
}

}  // namespace korvinth::render
