// Number rules that both evaluators share. Out of their domain they give NaN.
#pragma once

#include <bit>
#include <cstdint>

namespace korvinth::term {

// The NaN of an operation outside its domain. Arithmetic hands its bits on, so that a result which
// still has them tells that some operation has failed, not merely that no number came out.
inline constexpr std::uint64_t kDomainErrorBits = 0x7FF8'4B6F'7276'0001;
inline constexpr double kDomainError = std::bit_cast<double>(kDomainErrorBits);

inline constexpr int kLargestFactorial = 170;
inline constexpr int kLargestWholePower = 16;

// n! for whole n from 0 to 170.
double Factorial(double x);
// x^n for n >= 1 by products, in one fixed order.
double WholePower(double x, int n);
// Quotient of the operands rounded half to even, cut toward zero; NaN for a divisor of 0.
double WholeQuotient(double a, double b);
// a^b; 0^0 is 1; NaN for a negative base with a fractional exponent and for 0 to a negative power.
double Power(double a, double b);

}  // namespace korvinth::term
