#include "term/arithmetic.h"

#include <array>
#include <cmath>
#include <limits>

namespace korvinth::term {

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
}

double Factorial(double x)
{
    static const auto kTable = [] {
        std::array<double, kLargestFactorial + 1> table{};
        long double product = 1;
        for (std::size_t n = 0; n < table.size(); ++n) {
            if (n > 1) product *= static_cast<long double>(n);
            table[n] = static_cast<double>(product);
        }
        return table;
    }();
    if (!(x >= 0 && x <= kLargestFactorial) || x != std::floor(x)) return kNaN;
    return kTable[static_cast<std::size_t>(x)];
}

double WholePower(double x, int n)
{
    double result = (n & 1) != 0 ? x : 1;
    double square = x;
    while (n > 1) {
        n >>= 1;
        square *= square;
        if ((n & 1) != 0) result *= square;
    }
    return result;
}

double WholeQuotient(double a, double b)
{
    const double dividend = std::nearbyint(a);
    const double divisor = std::nearbyint(b);
    if (divisor == 0) return kNaN;
    // The remainder is exact, so the quotient cannot round up to the next whole number.
    return std::trunc((dividend - std::fmod(dividend, divisor)) / divisor);
}

double Power(double a, double b)
{
    if (std::isnan(a) || std::isnan(b)) return kNaN;
    if (a == 0 && b < 0) return kNaN;
    return std::pow(a, b);
}

}  // namespace korvinth::term
