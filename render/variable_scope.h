// Gives a parser variable back the value that it had.
#pragma once

#include "term/math_parser.h"

namespace korvinth::render {

class VariableScope
{
public:
    VariableScope(term::MathParser& parser, term::VariableHandle handle)
        : parser_(parser), handle_(handle), value_(parser.VariableValue(handle))
    {
    }
    ~VariableScope() { parser_.SetVariableValue(handle_, value_); }
    VariableScope(const VariableScope&) = delete;
    VariableScope& operator=(const VariableScope&) = delete;

    double Value() const { return value_; }

private:
    term::MathParser& parser_;
    term::VariableHandle handle_;
    double value_;
};

}  // namespace korvinth::render
