#include "app/plot_picture.h"

#include <algorithm>
#include <vector>

#include "app/application.h"
#include "app/plot_request.h"
#include "render/qt/raster_surface.h"

namespace korvinth::app {

ParsedCommandLine ReadPlotDescription(std::string_view description)
{
    std::vector<std::string> arguments;
    for (std::size_t begin = 0; begin <= description.size();) {
        const std::size_t end = std::min(description.find('|', begin), description.size());
        arguments.emplace_back(description.substr(begin, end - begin));
        begin = end + 1;
    }
    return ParseCommandLine(arguments);
}

QImage DrawPlotPicture(std::string_view description, double ratio, std::string* fault)
{
    const ParsedCommandLine parsed = ReadPlotDescription(description);
    Application application;
    std::string errors = parsed.usage_error + parsed.input_error;
    if (errors.empty()) errors = ApplyRequest(application, parsed.command).errors;
    if (fault != nullptr) *fault = errors;
    if (!errors.empty()) return {};
    render::RasterSurface surface(parsed.command.width, parsed.command.height, render::kSmoothSteps,
                                  ratio);
    application.Draw(surface);
    surface.Refresh();
    QImage image = surface.Image().copy();
    image.setDevicePixelRatio(ratio);
    return image;
}

}  // namespace korvinth::app
