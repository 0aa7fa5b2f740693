// Rebuilds the parser's state from the plot document.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "document/plot_document.h"
#include "term/math_parser.h"

namespace korvinth::document {

// What ApplyPlot needs of the windows and the view. The command line implements it without windows.
class PlotHost
{
public:
    virtual ~PlotHost() = default;
    virtual void StopAnimation() = 0;                            // all timers, menu caption
    virtual void StoreRows(PlotDocument& document) = 0;          // the editor's rows -> rows
    virtual void RowsChecked(const PlotDocument& document) = 0;  // rows are in their normal form
    virtual void UpdateMapping() = 0;                            // sets xmu, xmi, ymu, ymi
    virtual void InitSlider(ParameterIndex index) = 0;           // a parameter came into use
    virtual std::vector<double> DisplayedArguments() const = 0;  // samples of the displayed range
};

struct PlotReport
{
    std::string errors;      // collected messages, "" when all is well
    std::string notes;       // right terms that have no value anywhere in the displayed range
    std::int16_t count = 0;  // number of collected messages
    std::string status;      // "Ok." or the collected text
    std::string row_errors;  // the part of `errors` that comes from checking the rows
};

// The variables that the program keeps, the standard definitions and aliases, and the angle mode:
// what every rebuild begins with, and all that the parser knows at start-up.
void DefineSystemVariables(term::MathParser& parser, PlotDocument& document);

// The document's rows become functions and parameters that the parser knows. Errors never stop the
// rebuild: a faulty slot is left undrawn (empty parser_term), the messages are collected.
PlotReport ApplyPlot(PlotDocument& document, term::MathParser& parser, PlotHost& host);

}  // namespace korvinth::document
