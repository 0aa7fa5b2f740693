// What the scalar code of a term carries along while it runs.
#pragma once

#include <limits>

#include "term/error.h"

namespace korvinth::term {

// A failing operation notes its number, if it is the first, and yields NaN; every operation hands
// NaN on. So the result is NaN exactly when the term has no value.
struct EvalState
{
    Error error = Error::None;

    double Fail(Error number)
    {
        if (error == Error::None) error = number;
        return std::numeric_limits<double>::quiet_NaN();
    }
};

struct ScalarNode;
using ScalarRun = double (*)(const ScalarNode&, EvalState&);

}  // namespace korvinth::term
