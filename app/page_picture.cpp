#include "app/page_picture.h"

#include <QTextLayout>
#include <QTextOption>
#include <algorithm>
#include <cmath>
#include <vector>

#include "app/page_layout.h"
#include "document/plot_legend.h"
#include "render/dash_pattern.h"
#include "render/qt/conversions.h"
#include "render/qt/painter_surface.h"

namespace korvinth::app {
namespace {

using render::kVectorSteps;

constexpr double kMmPerInch = 25.4;

// The legend is drawn on a grid of hundredths of a millimetre.
constexpr double kLegendStep = 0.01;  // mm
constexpr int kLetters = 350;         // steps, about 10 points
constexpr double kSampleWidth = 800;  // of the piece of the graph's line before its term
constexpr double kSampleGap = 200;
constexpr double kAboveLegend = 300;
constexpr double kMostOfTheRoom = 0.5;

// Functions and parameter values in lines of the room's width.
class Legend
{
public:
    Legend(const document::PlotDocument& plot, double width_mm)
        : width_(width_mm / kLegendStep), entries_(document::PlotLegend(plot))
    {
        for (const document::LegendLine& entry : entries_) Lay(entry);
    }

    double Height() const { return lines_.empty() ? 0 : (height_ + kAboveLegend) * kLegendStep; }

    // Lines that the height does not hold are left out; true when there are some.
    bool Draw(QPainter& painter, double height_mm) const
    {
        painter.setFont(Face());
        for (const Line& line : lines_) {
            const double top = line.top + kAboveLegend;
            if ((top + line.height) * kLegendStep > height_mm) return true;
            if (line.graph) DrawSample(painter, *line.graph, top + line.height / 2);
            painter.setPen(Qt::black);
            painter.drawText(QPointF(line.left, top + line.ascent), line.text);
        }
        return false;
    }

private:
    struct Line
    {
        QString text;
        double left, top, ascent, height;
        std::optional<document::SlotAttributes> graph;
    };

    static QFont Face() { return render::UnhintedFont(render::Font{}, kLetters); }

    void Lay(const document::LegendLine& entry)
    {
        const QString text = render::ToQt(entry.text);
        const double left = entry.graph ? kSampleWidth + kSampleGap : 0;
        QTextLayout layout(text, Face());
        QTextOption wrapping;
        wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(wrapping);
        layout.beginLayout();
        auto graph = entry.graph;
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(std::max(width_ - left, 1.0));
            lines_.push_back({text.mid(line.textStart(), line.textLength()), left, height_,
                              line.ascent(), line.height(), graph});
            height_ += line.height();
            graph.reset();
        }
        layout.endLayout();
    }

    static void DrawSample(QPainter& painter, const document::SlotAttributes& look, double y)
    {
        constexpr double kWidest = 200;
        const double width =
            std::min(look.width * kMmPerInch / render::kUsualResolution / kLegendStep, kWidest);
        if (look.type == document::LineType::Invisible) return;
        QPen pen(render::ToQt(look.colour), width, Qt::SolidLine, Qt::FlatCap);
        const render::DashPattern dashes(look.type, width);
        QVector<qreal> multiples;
        for (const double length : dashes.Lengths()) multiples << length / width;
        if (!dashes.Unbroken()) pen.setDashPattern(multiples);
        painter.setPen(pen);
        painter.drawLine(QPointF(0, y), QPointF(kSampleWidth, y));
    }

    double width_;
    std::vector<document::LegendLine> entries_;
    std::vector<Line> lines_;
    double height_ = 0;
};

Room RoomOn(const QRectF& page, const render::PageMargins& margins)
{
    return {margins.left, margins.top, page.width() - margins.left - margins.right,
            page.height() - margins.top - margins.bottom};
}

PlacedPicture PictureIn(const Room& room, const render::PageOptions& options,
                        Application& application)
{
    if (!(room.width > 0 && room.height > 0)) {
        PlacedPicture none;
        none.fault = "Die Ränder lassen keinen Platz für das Bild";
        return none;
    }
    return options.scale ? ScalePictureOnPage(application.View(), *options.scale, room)
                         : FitPicture(application.View(), room);
}

}  // namespace

PageReport DrawPage(QPainter& painter, const QRectF& page, const render::PageOptions& options,
                    Application& application)
{
    const Room room = RoomOn(page, options.margins);
    std::optional<Legend> legend;
    if (options.legend) legend.emplace(application.Document(), room.width);
    const double legend_height =
        legend ? std::min(legend->Height(), room.height * kMostOfTheRoom) : 0;
    Room picture_room = room;
    picture_room.height -= legend_height;
    const PlacedPicture picture = PictureIn(picture_room, options, application);
    if (!picture.fault.empty()) return {picture.fault, ""};

    PageReport report{"", picture.note};
    painter.save();
    painter.scale(painter.device()->logicalDpiX() / kMmPerInch,
                  painter.device()->logicalDpiY() / kMmPerInch);
    painter.translate(page.topLeft());

    painter.save();
    // From the middle of the first pixel to its corner.
    painter.translate(picture.left - picture.mm_per_pixel / 2,
                      picture.top - picture.mm_per_pixel / 2);
    painter.scale(picture.mm_per_pixel / kVectorSteps, picture.mm_per_pixel / kVectorSteps);
    {
        render::PainterSurface surface(painter, picture.width, picture.height);
        application.Draw(surface, picture.view);
    }
    painter.restore();

    if (legend) {
        painter.translate(room.left, picture.top + picture.height * picture.mm_per_pixel);
        painter.scale(kLegendStep, kLegendStep);
        if (legend->Draw(painter, legend_height)) {
            if (!report.note.empty()) report.note += "; ";
            report.note += "Nicht alle Terme haben unter dem Bild Platz";
        }
    }
    painter.restore();
    return report;
}

}  // namespace korvinth::app
