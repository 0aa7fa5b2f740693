// Draws a page with the plot: picture and legend.
#pragma once

#include <QPainter>
#include <QRectF>
#include <string>

#include "app/application.h"
#include "render/picture_options.h"

namespace korvinth::app {

struct PageReport
{
    std::string fault;  // German; "" when the page is drawn
    std::string note;   // what of the plot the page leaves out
};

// `page` is the whole sheet in millimetres, seen from the painter's origin: for a painter that
// begins at the printable area its corner is negative. The painter draws on a device of that many
// dots an inch as it says; it is as it was afterwards. The screen's picture is left alone.
PageReport DrawPage(QPainter& painter, const QRectF& page, const render::PageOptions& options,
                    Application& application);

}  // namespace korvinth::app
