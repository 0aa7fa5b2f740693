// Tokens of the term language.
#pragma once

#include <cstdint>
#include <string_view>

namespace korvinth::term {

enum class Operator : std::uint8_t {
    None,
    Imp,
    Eqv,
    Xor,
    Or,
    And,
    Not,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
    Add,
    Subtract,
    Multiply,
    Divide,
    IntDivide,
    Negate,
    Power,
    Factorial,
};

enum class TokenKind : std::uint8_t {
    Number,
    Name,      // a variable
    Function,  // a name directly followed by "("; the bracket is the next token
    Operator,
    NotCall,  // "not" directly followed by "("
    LeftBracket,
    RightBracket,
    Comma,
    End,
};

struct Token
{
    TokenKind kind = TokenKind::End;
    Operator op = Operator::None;
    double value = 0;       // of a number
    std::string_view text;  // as typed
};

}  // namespace korvinth::term
