// Limits that keep any text from exhausting memory, stack or time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace korvinth::term {

struct Limits
{
    std::size_t characters = 35000;
    std::size_t variables = 1000;
    std::size_t functions = 1000;
    std::size_t instructions = 4000;  // of one term as written, without what it calls
    std::size_t nesting = 300;
};

// What a configuration may ask for at most; beyond it the evaluators' recursion is not safe.
inline constexpr Limits kLargestLimits{10'000'000, 1'000'000, 1'000'000, 8000, 2000};

// Instructions of a term with the bodies of all functions called; calls of one function with the
// same arguments count once.
inline constexpr std::size_t kMaxCompiledInstructions = 30'000;
// Levels of the recursions that compile and evaluate, through all functions called.
inline constexpr std::uint32_t kMaxEvaluationDepth = 6000;
inline constexpr std::size_t kMaxFunctionParameters = 32;

}  // namespace korvinth::term
