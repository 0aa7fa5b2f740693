#include "app/picture_file.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QStringList>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <vector>

#include "app/picture_image.h"
#include "app/plot_request.h"
#include "render/recording_surface.h"
#include "tests/files/failing_disk.h"

namespace korvinth::app {
namespace {

using files::FailingDisk;

// 400 x 300 pixels, x from -5 to 5.
struct PictureFileTest : testing::Test
{
    PictureFileTest() { Plot(400, 300); }

    void Plot(int width, int height)
    {
        CommandLine command;
        command.rows = {"f(x)=a*sin(x)"};
        command.parameters = {{"a", "2"}};
        command.x_range = BoundTerms{"-5", "5"};
        command.width = width;
        command.height = height;
        ASSERT_EQ(ApplyRequest(application, command).errors, "");
    }
    PictureBytes Make(render::PictureFormat format)
    {
        return MakePicture(application, format, options);
    }
    auto ScreenCommands()
    {
        render::RecordingSurface surface(400, 300, 1);
        application.Draw(surface);
        return surface.Commands();
    }

    Application application;
    render::PictureOptions options;
};

// The paths that a page strokes, in millimetres from the upper left corner of the sheet.
using PagePath = std::vector<QPointF>;

std::vector<PagePath> StrokedPaths(const std::string& pdf)
{
    constexpr double kSheetHeight = 842;  // points
    constexpr double kMmPerPoint = 25.4 / 72;
    std::vector<PagePath> paths;
    const QByteArray bytes = QByteArray::fromStdString(pdf);
    const qsizetype start = bytes.indexOf("stream\n") + 7;
    QByteArray packed = bytes.mid(start, bytes.indexOf("endstream", start) - start);
    packed.prepend(4, '\0');  // the size, which is not known
    std::vector<QTransform> saved(1);
    std::vector<double> numbers;
    PagePath path;
    const auto place = [&](double x, double y) {
        const QPointF points = saved.back().map(QPointF(x, y));
        return QPointF(points.x(), kSheetHeight - points.y()) * kMmPerPoint;
    };
    for (const QByteArray& token : qUncompress(packed).simplified().split(' ')) {
        bool is_number = false;
        const double number = token.toDouble(&is_number);
        if (is_number) {
            numbers.push_back(number);
            continue;
        }
        const std::size_t n = numbers.size();
        if (token == "q") saved.push_back(saved.back());
        if (token == "Q") saved.pop_back();
        if (token == "cm" && n >= 6) {
            saved.back() = QTransform(numbers[n - 6], numbers[n - 5], numbers[n - 4],
                                      numbers[n - 3], numbers[n - 2], numbers[n - 1]) *
                           saved.back();
        }
        if (token == "m" && n >= 2) path = {place(numbers[n - 2], numbers[n - 1])};
        if (token == "l" && n >= 2) path.push_back(place(numbers[n - 2], numbers[n - 1]));
        if (token == "S") paths.push_back(path);
        numbers.clear();
    }
    return paths;
}

// Of lines across most of the picture: help lines and axes.
std::vector<double> Positions(const std::vector<PagePath>& paths, bool upright)
{
    constexpr double kLong = 30;  // mm
    std::vector<double> found;
    for (const PagePath& path : paths) {
        if (path.size() != 2) continue;
        const QPointF along = path[1] - path[0];
        const double aside = upright ? along.x() : along.y();
        if (std::abs(aside) > 1e-6 || std::abs(along.x() + along.y()) < kLong) continue;
        found.push_back(upright ? path[0].x() : path[0].y());
    }
    std::ranges::sort(found);
    return found;
}

TEST_F(PictureFileTest, APageKeepsItsScaleInBothDirections)
{
    document::DisplayAttributes& look = application.Document().attributes;
    look.x_step = look.y_step = {document::StepMode::Fixed, "1"};
    for (const double scale : {1.0, 0.5, 1.3}) {
        for (const bool landscape : {false, true}) {
            SCOPED_TRACE(testing::Message() << scale << (landscape ? " across" : " upright"));
            options.page.scale = scale;
            options.page.landscape = landscape;
            options.page.legend = landscape;
            const PictureBytes pdf = Make(render::PictureFormat::Pdf);
            ASSERT_EQ(pdf.fault + pdf.note, "");
            std::vector<PagePath> paths = StrokedPaths(pdf.bytes);
            if (landscape) {
                // The sheet's upper edge is 595 points up.
                for (PagePath& path : paths) {
                    for (QPointF& point : path) point.ry() -= (842 - 595) * 25.4 / 72;
                }
            }
            for (const bool upright : {true, false}) {
                const std::vector<double> lines = Positions(paths, upright);
                ASSERT_GE(lines.size(), 7U);
                for (std::size_t i = 1; i < lines.size(); ++i) {
                    const double step = lines[i] - lines[i - 1];
                    // An axis lies on a help line.
                    EXPECT_NEAR(step, step > 1 ? 10 * scale : 0, 0.02);
                }
                // The axis is in the middle of the range, on a line of squared paper.
                const double axis = (lines.front() + lines.back()) / 2;
                EXPECT_NEAR(std::remainder(axis, 5), 0, 0.06);
            }
            // sin has its maximum 2 above the axis at pi/2.
            const auto graph = std::ranges::max_element(paths, {}, &PagePath::size);
            const auto top = std::ranges::min_element(*graph, {}, &QPointF::y);
            const std::vector<double> rows = Positions(paths, false);
            EXPECT_NEAR((rows.front() + rows.back()) / 2 - top->y(), 20 * scale, 0.05);
        }
    }
}

TEST_F(PictureFileTest, NothingDisturbsTheScreensPicture)
{
    const auto before = ScreenCommands();
    const double step = application.Parser().VariableValue(application.Document().variables.sw);
    const double scale = application.Parser().VariableValue(application.Document().variables.xmu);
    options.page.scale = 2;
    options.resolution = 300;
    for (const auto format : {render::PictureFormat::Png, render::PictureFormat::Svg,
                              render::PictureFormat::Pdf, render::PictureFormat::Emf}) {
        EXPECT_EQ(Make(format).fault, "");
        EXPECT_EQ(application.View().area_width, 400 * 15);
        EXPECT_EQ(application.View().x_min, -5);
        const document::SystemVariables& names = application.Document().variables;
        EXPECT_EQ(application.Parser().VariableValue(names.sw), step);
        EXPECT_EQ(application.Parser().VariableValue(names.xmu), scale);
        EXPECT_TRUE(ScreenCommands() == before);
    }
}

TEST_F(PictureFileTest, AnImageKnowsItsResolutionAndGrowsWithIt)
{
    Plot(401, 300);  // no whole number of screen pixels at 300 dots an inch
    for (const double resolution : {96.0, 300.0}) {
        options.resolution = resolution;
        const PictureBytes png = Make(render::PictureFormat::Png);
        const QImage image = QImage::fromData(QByteArray::fromStdString(png.bytes));
        EXPECT_EQ(image.size(), QSize(401, 300));
        EXPECT_EQ(image.dotsPerMeterX(), std::lround(resolution / 0.0254));
        // The graph is 2 pixels of the screen wide.
        int column = 0;
        for (int y = 0; y < 150; ++y) {
            column += qBlue(image.pixel(263, y)) > 2 * qRed(image.pixel(263, y)) ? 1 : 0;
        }
        EXPECT_NEAR(column, 2 * resolution / 96, 1.5);
    }
}

TEST_F(PictureFileTest, AllSizesGiveAPictureOrAMessage)
{
    for (const QSize size :
         {QSize(1, 1), QSize(0, 0), QSize(30'000, 1), QSize(1, 30'000), QSize(30'000, 30'000)}) {
        SCOPED_TRACE(testing::Message() << size.width() << "x" << size.height());
        application.SetAreaSize(size.width(), size.height());
        for (const auto format :
             {render::PictureFormat::Svg, render::PictureFormat::Pdf, render::PictureFormat::Emf}) {
            EXPECT_EQ(Make(format).fault, "");
        }
        const PictureBytes png = Make(render::PictureFormat::Png);
        EXPECT_EQ(png.fault.empty(), size.width() < 30'000 || size.height() < 30'000);
        EXPECT_EQ(png.bytes.empty(), !png.fault.empty());
    }
}

TEST_F(PictureFileTest, WritesWhatTheEndingSays)
{
    FailingDisk disk;
    const auto written = [&](const char* name) {
        EXPECT_EQ(WritePicture(application, name, options, disk).fault, "");
        return disk.Bytes(name);
    };
    EXPECT_TRUE(written("a.png").starts_with("\x89PNG"));
    EXPECT_TRUE(written("a.SVG").starts_with("<svg "));
    EXPECT_TRUE(written("a.b.pdf").starts_with("%PDF-"));
    EXPECT_EQ(written("a.Emf").substr(40, 4), " EMF");
    EXPECT_NE(WritePicture(application, "a.jpg", options, disk).fault, "");
    EXPECT_NE(WritePicture(application, "svg", options, disk).fault, "");
    EXPECT_EQ(disk.Count(), 4U);
}

TEST_F(PictureFileTest, AFailedExportLeavesTheFileAsItWas)
{
    FailingDisk disk;
    disk.Put("a.svg", "vorher");
    disk.SetRoom(100);
    EXPECT_EQ(WritePicture(application, "a.svg", options, disk).fault,
              "Auf dem Datenträger ist kein Platz mehr");
    disk.SetRoom(1'000'000);
    disk.SetReadOnly(true);
    EXPECT_EQ(WritePicture(application, "a.svg", options, disk).fault,
              "Der Datenträger ist schreibgeschützt");
    EXPECT_EQ(disk.Bytes("a.svg"), "vorher");
    EXPECT_EQ(disk.Count(), 1U);
    options.page.scale = 1000;
    disk.SetReadOnly(false);
    EXPECT_NE(WritePicture(application, "a.svg", options, disk).fault, "") << "no picture at all";
    EXPECT_EQ(disk.Bytes("a.svg"), "vorher");
}

// Of a part of the plane that is not the screen's, so that each has a mapping of its own.
TEST_F(PictureFileTest, APictureIsDrawnPieceByPieceWhileTheScreensIsDrawnInBetween)
{
    CommandLine command;
    command.rows = {"f(x)=sin(x)", "h(x)=x/2", "x(t)=3*cos(t)", "y(t)=3*sin(t)"};
    ASSERT_EQ(ApplyRequest(application, command).errors, "");
    const auto screen = ScreenCommands();
    render::ViewRange view = application.View();
    view.x_max = 20;
    view.y_min = -1;
    const QSize dots(200, 150);
    const QImage whole = DrawImage(application, view, dots, 1);
    ImageDrawing drawing(application, view, dots, 1);
    const QImage axes = drawing.Image();
    int pieces = 0;
    while (drawing.Continue()) {
        ++pieces;
        EXPECT_EQ(ScreenCommands(), screen);
    }
    EXPECT_GE(pieces, 3);
    EXPECT_EQ(drawing.Image(), whole);
    EXPECT_NE(axes, whole);
}

}  // namespace
}  // namespace korvinth::app
