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
    virtual void StopAnimation() = 0;                             // all timers, menu caption
    virtual void StoreRows(PlotDocument& document) = 0;           // the editor's rows -> rows
    virtual void RowsChecked(const PlotDocument& document) = 0;   // rows are in their normal form
    virtual void UpdateMapping() = 0;                             // sets xmu, xmi, ymu, ymi
    virtual void InitSlider(ParameterIndex index) = 0;            // a parameter came into use
    virtual std::vector<double> DisplayedArguments() const = 0;   // samples of the displayed range
};

struct PlotReport
{
    std::string errors;       // collected messages, "" when all is well
    std::string notes;        // right terms that have no value anywhere in the displayed range
    std::int16_t count = 0;   // number of collected messages
    std::string status;       // "Ok." or the collected text
    std::string row_errors;   // the part of `errors` that comes from checking the rows
};

// Step 2 and 3 of every rebuild, alone at start-up: variables, standard definitions, angle mode.
void DefineSystemVariables(term::MathParser& parser, PlotDocument& document);

PlotReport ApplyPlot(PlotDocument& document, term::MathParser& parser, PlotHost& host);

}  // namespace korvinth::document
