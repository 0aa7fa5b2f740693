// A parsed term before its names are looked up.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "term/token.h"

namespace korvinth::term {

enum class SyntaxKind : std::uint8_t { Number, Name, Call, Operation };

struct SyntaxNode
{
    SyntaxKind kind = SyntaxKind::Number;
    Operator op = Operator::None;
    // Operation: operands, right is -1 with a prefix or postfix operator.
    // Call: index of the first argument in SyntaxTree::arguments and number of arguments.
    std::int32_t left = -1;
    std::int32_t right = -1;
    double value = 0;
    std::string_view name;    // refers to the text that was parsed
    std::uint32_t depth = 1;  // levels below and with this one
};

struct SyntaxTree
{
    std::vector<SyntaxNode> nodes;
    std::vector<std::int32_t> arguments;
    std::int32_t root = -1;  // -1: the empty term, which stands for 0

    void Clear()
    {
        nodes.clear();
        arguments.clear();
        root = -1;
    }
};

}  // namespace korvinth::term
