// Error numbers of the expression parser and their German messages.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvinth::term {

// The numbers are part of the parser's contract: callers test some of them by value.
enum class Error : std::int32_t {
    None = 0,
    DataOnly = 1,
    Brackets = 2,
    UndefinedVariable = 3,
    BinaryNumber = 4,
    OctalNumber = 5,
    HexNumber = 6,
    FactorialOverflow = 7,
    Quotes = 8,
    InvalidTerm = 9,
    OutOfSpace = 10,
    UndefinedFunction = 11,
    ArgumentCount = 12,
    ArgumentType = 13,
    DivisionByZero = 14,
    IntegerDivisionByZero = 15,
    InvalidExponent = 16,
    InvalidRoot = 17,
    InvalidLog2 = 18,
    InvalidLog10 = 19,
    InvalidLog = 20,
    InvalidArcsine = 21,
    InvalidArccosine = 22,
    InvalidSecant = 23,
    InvalidCosecant = 24,
    InvalidCotangent = 25,
    InvalidCoth = 26,
    InvalidCsch = 27,
    InvalidAcosh = 28,
    InvalidAtanh = 29,
    InvalidAcoth = 30,
    InvalidAsech = 31,
    InvalidAcsch = 32,
};

// The German message for an error number, with `data` (the name involved) appended where the
// message asks for it. Numbers outside 1..32 give the empty text.
std::string ErrorMessage(std::int32_t number, std::string_view data);

// True for an error that depends on the values, not on the wording of the term (7 and 14 to 32):
// the term is right, it merely has no value at this point.
constexpr bool IsValueError(Error error)
{
    return error == Error::FactorialOverflow || error >= Error::DivisionByZero;
}

}  // namespace korvinth::term
