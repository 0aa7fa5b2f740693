#include "render/view_range.h"

namespace korvinth::render {

void UpdateDerived(ViewRange& view)
{
    view.width = view.x_max - view.x_min;
    view.height = view.y_max - view.y_min;
    view.ymu = view.area_height / view.height;
    view.xmu = view.area_width / view.width;
}

void UpdateMapping(ViewRange& view, term::MathParser& parser,
                   const document::SystemVariables& variables)
{
    UpdateDerived(view);
    parser.SetVariableValue(variables.xmu, view.xmu);
    parser.SetVariableValue(variables.xmi, view.x_min);
    parser.SetVariableValue(variables.ymu, view.ymu);
    parser.SetVariableValue(variables.ymi, view.y_min);
}

std::string makemx(std::string_view term) { return "xmu*(" + std::string(term) + "-xmi)"; }

std::string makemy(std::string_view term) { return "ymu*(" + std::string(term) + "-ymi)"; }

void SetStandardRange(ViewRange& view)
{
    constexpr double kHalfWidth = 10;
    view.x_min = -kHalfWidth;
    view.x_max = kHalfWidth;
    const double half_height = kHalfWidth * view.HeightInPixels() / view.WidthInPixels();
    view.y_min = -half_height;
    view.y_max = half_height;
    UpdateDerived(view);
}

bool scrlr(ViewRange& view, std::int16_t percent)
{
    if (percent == 0) return false;
    const double shift = percent * view.width / 100;
    view.x_min += shift;
    view.x_max += shift;
    UpdateDerived(view);
    return true;
}

bool scrud(ViewRange& view, std::int16_t percent)
{
    if (percent == 0) return false;
    const double shift = percent * view.height / 100;
    view.y_min += shift;
    view.y_max += shift;
    UpdateDerived(view);
    return true;
}

}  // namespace korvinth::render
