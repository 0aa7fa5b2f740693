// Finds the parameters of a plot and defines their parser variables.
#pragma once

#include <string>
#include <string_view>

#include "document/apply_plot.h"
#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

// Parameters as they are when their names come into use for the first time.
Parameter LowerBoundOf(const std::string& function);   // of an integral function
Parameter SampleCountOf(const std::string& function);  // of an integral function
Parameter UserParameter(const std::string& name);

// Starts with an empty parameter table; what was in it becomes dormant. A parameter whose name was
// there before comes back with its value, bounds, step and mode.
class ParameterCollector
{
public:
    ParameterCollector(PlotDocument& document, term::MathParser& parser, PlotHost& host);

    // Lower bound and sample count of every integral function: "gu" and "ganz" for one in slot g.
    void SetUpIntegrals();

    // The names that the parser does not know in the slots, lines, points and ranges, in order of
    // first appearance. A German message when they are too many, "" otherwise.
    std::string CollectUserParameters();

private:
    void Define(ParameterIndex index, Parameter initial);
    bool DefineUnknownNames(const std::string& term);

    PlotDocument& document_;
    term::MathParser& parser_;
    PlotHost& host_;
    int next_user_parameter_ = kFirstUserParameter;
};

}  // namespace korvinth::document
