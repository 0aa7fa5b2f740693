#include "render/stroke_raster.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace korvinth::render {
namespace {

constexpr int kWidth = 70;
constexpr int kHeight = 40;

double Distance(PixelPoint p, PixelPoint a, PixelPoint b)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double square = dx * dx + dy * dy;
    const double t =
        square == 0 ? 0 : std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / square, 0.0, 1.0);
    return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

// Largest difference, over all pixels, from coverage worked out pixel by pixel.
int LargestDifference(const std::vector<PixelPoint>& points, double width)
{
    StrokeRaster raster(kWidth, kHeight);
    raster.AddSmooth(points, width, {});
    int largest = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            double distance = 1e9;
            for (std::size_t i = 1; i < points.size(); ++i) {
                distance =
                    std::min(distance, Distance({x + 0.5, y + 0.5}, points[i - 1], points[i]));
            }
            const double wanted = 255 * std::clamp(width / 2 + 0.5 - distance, 0.0, 1.0);
            largest =
                std::max(largest, static_cast<int>(std::abs(raster.CoverageAt(x, y) - wanted)));
        }
    }
    return largest;
}

TEST(StrokeRaster, CoversByTheDistanceFromTheLine)
{
    constexpr unsigned kSeed = 4711;
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> x(-30, kWidth + 30);
    std::uniform_real_distribution<double> y(-30, kHeight + 30);
    for (const double width : {1.0, 1.25, 2.0, 5.0, 10.0, 30.0}) {
        for (int i = 0; i < 60; ++i) {
            SCOPED_TRACE(testing::Message()
                         << "seed " << kSeed << " width " << width << " line " << i);
            std::vector<PixelPoint> points;
            for (int k = 0; k < 4; ++k) points.push_back({x(random), y(random)});
            ASSERT_LE(LargestDifference(points, width), 3);
        }
    }
}

TEST(StrokeRaster, CoversUprightLevelAndTinyLines)
{
    const std::vector<PixelPoint> lines[] = {
        {{10.5, -5}, {10.5, 60}},   {{-20, 7.5}, {100, 7.5}}, {{20, 20}, {20, 20}},
        {{20, 20}, {20.3, 20.1}},   {{5, 5}, {9, 9}, {5, 5}}, {{30, 30}, {30, 10}, {30, 35}},
        {{-1e9, -1e9}, {1e9, 1e9}},
    };
    for (const auto& line : lines) {
        SCOPED_TRACE(testing::Message() << line[0].x << " " << line[0].y);
        EXPECT_LE(LargestDifference(line, 2), 3);
    }
}

TEST(StrokeRaster, StaysWithinATenthOfAPixelWhereItJoinsSamples)
{
    std::vector<PixelPoint> curve;
    for (int i = -5; i < kWidth + 5; ++i) {
        curve.push_back({i + 0.5, std::round((20 + 15 * std::sin(i / 9.0)) * 5) / 5});
    }
    EXPECT_LE(LargestDifference(curve, 2), 28);
}

TEST(StrokeRaster, BreaksAtPointsThatAreNoNumbers)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    StrokeRaster raster(kWidth, kHeight);
    const PixelPoint points[] = {{5.5, 5.5},  {10.5, 5.5}, {nan, 5.5},
                                 {20.5, 5.5}, {25.5, 5.5}, {25.5, infinity}};
    raster.AddSmooth(points, 1, {});
    EXPECT_EQ(raster.CoverageAt(8, 5), 255);
    EXPECT_EQ(raster.CoverageAt(15, 5), 0);
    EXPECT_EQ(raster.CoverageAt(22, 5), 255);
}

TEST(StrokeRaster, LaysOneEvenColourWhereAStrokeCrossesItself)
{
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(kWidth * kHeight), 0xFFFFFFFFU);
    StrokeRaster raster(kWidth, kHeight);
    const PixelPoint there_and_back[] = {{5, 10}, {60, 10}, {5, 10}};
    raster.AddSmooth(there_and_back, 1, {});
    raster.Composite({pixels.data(), kWidth}, 0xFF000000U);
    EXPECT_EQ(pixels[10 * kWidth + 30], 0xFF7F7F7FU);  // half a pixel above and below the line
    EXPECT_EQ(raster.CoverageAt(30, 10), 0);           // ready for the next stroke
    raster.Composite({pixels.data(), kWidth}, 0xFF0000FFU);
    EXPECT_EQ(pixels[10 * kWidth + 30], 0xFF7F7F7FU);
}

std::string Row(const StrokeRaster& raster, int y, int length)
{
    std::string row;
    for (int x = 0; x < length; ++x) row += raster.CoverageAt(x, y) == 255 ? '#' : '.';
    return row;
}

struct HardCase
{
    std::string_view behaviour;
    PixelIndex from, to;
    std::string_view rows[4];
};
constexpr HardCase kHardCases[] = {
    {"the last pixel is left out", {0, 0}, {4, 0}, {"####..", "......", "......", "......"}},
    {"to the left too", {4, 1}, {0, 1}, {"......", ".####.", "......", "......"}},
    {"upwards too", {2, 3}, {2, 0}, {"......", "..#...", "..#...", "..#..."}},
    {"a diagonal", {0, 0}, {3, 3}, {"#.....", ".#....", "..#...", "......"}},
    {"two columns a row", {0, 0}, {6, 3}, {"#.....", ".##...", "...##.", ".....#"}},
    {"the part inside the picture", {-3, 2}, {3, 2}, {"......", "......", "###...", "......"}},
    {"no length draws nothing", {2, 2}, {2, 2}, {"......", "......", "......", "......"}},
};

TEST(StrokeRaster, DrawsHardLinesPixelByPixel)
{
    for (const HardCase& row : kHardCases) {
        SCOPED_TRACE(row.behaviour);
        StrokeRaster raster(kWidth, kHeight);
        const PixelIndex points[] = {row.from, row.to};
        raster.AddHard(points, 1, {});
        for (int y = 0; y < 4; ++y) EXPECT_EQ(Row(raster, y, 6), row.rows[y]) << "row " << y;
    }
}

TEST(StrokeRaster, JoinsWideHardLinesWithoutANotch)
{
    constexpr double kHalfWidth = 4;
    const std::vector<PixelPoint> corners{{20, 10}, {20, 30}, {45, 33}, {48, 15}, {60, 5}};
    std::vector<PixelIndex> points;
    for (const PixelPoint& p : corners) {
        points.push_back({static_cast<int>(p.x), static_cast<int>(p.y)});
    }
    StrokeRaster raster(kWidth, kHeight);
    raster.AddHard(points, static_cast<int>(2 * kHalfWidth), {});
    for (std::size_t i = 1; i + 1 < corners.size(); ++i) {
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const double away = std::hypot(x - corners[i].x, y - corners[i].y);
                EXPECT_TRUE(away >= kHalfWidth - 1 || raster.CoverageAt(x, y) == 255)
                    << x << " " << y;
            }
        }
    }
}

TEST(StrokeRaster, ContinuesDashesAlongTheCurve)
{
    const DashPattern dots(document::LineType::Dot, 2);  // 2 pixels on, 4 off
    StrokeRaster raster(kWidth, kHeight);
    const PixelIndex points[] = {{0, 0}, {5, 0}, {9, 0}, {20, 0}};
    raster.AddHard(points, 1, dots);
    EXPECT_EQ(Row(raster, 0, 20), "##....##....##....##");
}

// Each dot is nearly without length, so that sums of lengths could miss it.
TEST(StrokeRaster, DrawsDotsUpToTheEndOfALine)
{
    for (const double width : {2.0, 3.3, 4.0}) {
        const DashPattern dots(document::LineType::Dot, width);
        StrokeRaster raster(kWidth, kHeight);
        const PixelPoint points[] = {{0, 10.5}, {kWidth, 10.5}};
        raster.AddSmooth(points, width, dots);
        for (double middle = width / 2; middle < kWidth; middle += dots.Period()) {
            EXPECT_GT(raster.CoverageAt(static_cast<int>(middle - width / 2), 10), 150) << middle;
        }
    }
}

TEST(StrokeRaster, KeepsTheDashesInPlaceOutsideThePicture)
{
    const DashPattern dash(document::LineType::Dash, 2);  // 10 on, 6 off
    const PixelPoint far[] = {{-1600000, 10.5}, {80, 10.5}};
    const PixelPoint close[] = {{0, 10.5}, {80, 10.5}};
    StrokeRaster from_far(kWidth, kHeight);
    StrokeRaster from_close(kWidth, kHeight);
    from_far.AddSmooth(far, 2, dash);
    from_close.AddSmooth(close, 2, dash);
    for (int x = 2; x < kWidth; ++x) {
        EXPECT_NEAR(from_far.CoverageAt(x, 10), from_close.CoverageAt(x, 10), 3) << x;
    }
    EXPECT_EQ(from_close.CoverageAt(5, 10), 255);
    EXPECT_EQ(from_close.CoverageAt(12, 10), 0);
}

TEST(DashPattern, GrowsWithTheWidthAndKeepsItsGapsAtTheThinnest)
{
    constexpr std::size_t kLengths[] = {0, 2, 2, 4, 6, 0, 0};  // of the line types 0 to 6
    for (std::int16_t type = 0; type <= 6; ++type) {
        const DashPattern thin(document::LineType{type}, 0.5);
        const DashPattern wide(document::LineType{type}, 4);
        EXPECT_EQ(thin.Lengths().size(), kLengths[type]);
        for (const double length : thin.Lengths()) EXPECT_GE(length, 1.5);
        EXPECT_DOUBLE_EQ(wide.Period() / 4, thin.Period() / 1.5);
    }
}

}  // namespace
}  // namespace korvinth::render
