// A compiled term: what a handle stands for.
#pragma once

#include <cstdint>
#include <string>

#include "term/block_code.h"
#include "term/error.h"
#include "term/graph.h"
#include "term/math_parser.h"
#include "term/scalar_code.h"

namespace korvinth::term {

struct Program
{
    std::string text;
    ExprHandle handle = ExprHandle::Invalid;
    int references = 0;

    // The definitions that the program was linked with, 0 while it has a fault; it is linked anew
    // when the present ones are others.
    std::uint64_t generation = 0;
    Error fault = Error::None;  // found when linking; an evaluation raises it
    std::string fault_data;

    Graph graph;
    ScalarCode scalar;
    BlockCode block;  // made when first needed
};

}  // namespace korvinth::term
