#include "document/display_attributes.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace korvinth::document {
namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

// Linear RGB as seen with normal sight and with complete red or green blindness, after Machado,
// Oliveira and Fernandes (2009).
constexpr Matrix kSights[] = {
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868},
      {0.114503, 0.786281, 0.099216},
      {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968},
      {0.280085, 0.672501, 0.047413},
      {-0.011820, 0.042940, 0.968881}}},
};
constexpr Matrix kToXyz = {{{0.4124564, 0.3575761, 0.1804375},
                            {0.2126729, 0.7151522, 0.0721750},
                            {0.0193339, 0.1191920, 0.9503041}}};

Triple Product(const Matrix& matrix, const Triple& vector)
{
    Triple result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t k = 0; k < 3; ++k) result[row] += matrix[row][k] * vector[k];
    }
    return result;
}

double Linear(int channel)
{
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

Triple LinearRgb(Colour colour)
{
    return {Linear(Red(colour)), Linear(Green(colour)), Linear(Blue(colour))};
}

Triple Lab(Triple linear)
{
    for (double& channel : linear) channel = std::clamp(channel, 0.0, 1.0);
    const Triple xyz = Product(kToXyz, linear);
    const auto f = [](double t) {
        return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116;
    };
    const double x = f(xyz[0] / 0.95047);
    const double y = f(xyz[1]);
    const double z = f(xyz[2] / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

// The smallest CIE 1976 difference of two colours among the three kinds of sight.
double Difference(Colour a, Colour b)
{
    double smallest = 1000;
    for (const Matrix& sight : kSights) {
        const Triple p = Lab(Product(sight, LinearRgb(a)));
        const Triple q = Lab(Product(sight, LinearRgb(b)));
        smallest = std::min(smallest, std::hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]));
    }
    return smallest;
}

double SmallestDifference(int count)
{
    const DisplayAttributes attributes;
    double smallest = 1000;
    for (int i = 0; i < count; ++i) {
        for (int j = 0; j < i; ++j) {
            const auto colour = [&](int k) {
                return attributes.slots[SlotIndex{static_cast<std::int16_t>(k)}].colour;
            };
            smallest = std::min(smallest, Difference(colour(i), colour(j)));
        }
    }
    return smallest;
}

TEST(Palette, DifferencesAreMeasuredRight)
{
    const Colour white = MakeColour(255, 255, 255);
    const Colour black = MakeColour(0, 0, 0);
    EXPECT_NEAR(Difference(white, black), 100, 0.1);
    EXPECT_NEAR(Lab(LinearRgb(MakeColour(255, 0, 0)))[0], 53.24, 0.05);
    // A red and a green that differ by much, but hardly with red blindness.
    EXPECT_LT(Difference(MakeColour(0xC0, 0x40, 0x00), MakeColour(0x60, 0x60, 0x00)), 25);
}

TEST(Palette, AnyTwoColoursCanBeToldApartByColourBlindPeople)
{
    EXPECT_GT(SmallestDifference(kSlotCount), 12);
    EXPECT_GT(SmallestDifference(6), 21);
}

TEST(Palette, EveryColourStandsOutFromWhite)
{
    for (const SlotAttributes& slot : DisplayAttributes().slots) {
        const double luminance = Product(kToXyz, LinearRgb(slot.colour))[1];
        EXPECT_GE(1.05 / (luminance + 0.05), 3);
    }
}

}  // namespace
}  // namespace korvinth::document
