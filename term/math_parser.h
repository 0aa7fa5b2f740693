// The expression parser: compiles terms, evaluates them, keeps variables and functions.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "term/error.h"
#include "term/eval_state.h"

namespace korvinth::term {

enum class ExprHandle : std::int32_t { Invalid = 0 };
enum class VariableHandle : std::int32_t { Invalid = 0 };

// The unit of angles: arguments of the trigonometric functions, results of their inverses.
enum class TrigMode : std::int32_t { Radians = 1, Degrees = 2, Grads = 3 };

// Limits in the order: characters of a term, variables, user functions, instructions of one term
// as written, nesting depth. Exceeding one is Error::OutOfSpace.
inline constexpr std::string_view kParserConfiguration = "35000,1000,1000,4000,300";

// Failures are never exceptions: after each call GetError tells the error number, which stays until
// the next parse or evaluation; EvalText("") clears it. With an error, results are 0.
//
// Terms and function bodies find variables and functions by name at the time of evaluation: names
// may be released and defined anew after a term was parsed. Function names, operator words and
// aliases match without regard to case, variables with it; the two are separate name spaces.
class MathParser
{
public:
    MathParser();
    ~MathParser();
    MathParser(const MathParser&) = delete;
    MathParser& operator=(const MathParser&) = delete;

    // Empties every table and invalidates every handle; starts in radians. `configuration` holds
    // the five limits, separated by commas; a missing or senseless one keeps its default.
    void Reset(std::string_view configuration = kParserConfiguration);

    // Compiles a term; Invalid when it has an error. A text that is compiled already yields the
    // same handle again and counts one more reference. Handles count up from 1001.
    ExprHandle Parse(std::string_view term);
    // Value at the present values of the variables. Free of allocation unless a definition changed
    // since the term was last used; an unknown handle raises Error::InvalidTerm.
    double Evaluate(ExprHandle handle)
    {
        const RecentProgram& recent = recent_programs_[Place(handle)];
        if (recent.handle != handle) [[unlikely]]
            return EvaluateSlowly(handle);
        const double value = recent.run(*recent.root, state_);
        if (value != value) [[unlikely]]
            return FailOfState();
        error_ = Error::None;
        return value;
    }
    // Evaluates at arguments.size() values of one variable: results[i] and errors[i] are what
    // Evaluate would give with the variable at arguments[i] (vector arithmetic: up to 4 units in
    // the last place apart). The three spans have one size; `results` may be the same as
    // `arguments`. The variable keeps its value. The error state becomes that of the first faulty
    // sample.
    void EvaluateBlock(ExprHandle handle, VariableHandle variable,
                       std::span<const double> arguments, std::span<double> results,
                       std::span<Error> errors);
    // Parses and evaluates in one step; the empty text yields 0 and no error.
    double EvalText(std::string_view term);
    // Gives one reference back. Unknown handles are ignored.
    void ReleaseExpr(ExprHandle handle);

    // "name" (value 0) or "name=term". Defining a name again yields a new handle and makes the old
    // one invalid. Invalid on error.
    VariableHandle DefineVariable(std::string_view definition);
    void SetVariableValue(VariableHandle handle, double value)
    {
        const RecentVariable& recent = recent_variables_[Place(handle)];
        if (recent.handle == handle) [[likely]] {
            *recent.cell = value;
        } else {
            SetSlowly(handle, value);
        }
    }
    // 0 for an unknown handle.
    double VariableValue(VariableHandle handle) const;
    void ReleaseVariable(VariableHandle handle);

    // "name(p1, p2, ...)=body"; replaces an earlier function of this name and number of parameters.
    // A body that is empty or has an error leaves the name undefined; a function that would call
    // itself, directly or around a corner, is Error::UndefinedFunction.
    void DefineFunction(std::string_view definition);
    // Removes the user's functions of this name, whatever their number of parameters.
    void ReleaseFunction(std::string_view name);
    // Makes `name` a second name of an existing function or operator word.
    void Alias(std::string_view name, std::string_view existing);
    // True for built-in functions, operator words and their aliases.
    bool IsBuiltinName(std::string_view name) const;

    void SetTrigMode(TrigMode mode);

    Error GetError() const { return error_; }
    // The name involved in the last error; only index 0 exists.
    std::string GetErrorData(int index = 0) const;
    // The German message of an error number; -1 stands for the current error.
    std::string ErrorText(std::int32_t code = -1) const;

    // Operations that an evaluation takes at most, through all functions called; 0 for a handle
    // that is unknown or whose term has an error now.
    std::size_t OperationCount(ExprHandle handle) const;
    // Number of compiled programs that are alive; for checks that redraws leak none.
    std::size_t LivePrograms() const;

private:
    class Impl;

    // Setting a variable and evaluating a handle are done for every sample, so the objects last
    // used are found by a glance at a small table. It holds linked programs without a fault only
    // and is emptied by every change of definitions.
    static constexpr std::size_t kRecent = 64;
    struct RecentProgram
    {
        ExprHandle handle{-1};
        ScalarRun run = nullptr;
        const ScalarNode* root = nullptr;
    };
    struct RecentVariable
    {
        VariableHandle handle{-1};
        double* cell = nullptr;
    };
    template <class Handle>
    static std::size_t Place(Handle handle)
    {
        return static_cast<std::uint32_t>(handle) % kRecent;
    }

    void ForgetRecent();
    double EvaluateSlowly(ExprHandle handle);
    void SetSlowly(VariableHandle handle, double value);
    void ClearError() { error_ = Error::None; }
    double Fail(Error error, std::string_view data);
    double FailOfState();  // the error that state_ has noted

    std::array<RecentProgram, kRecent> recent_programs_{};
    std::array<RecentVariable, kRecent> recent_variables_{};
    EvalState state_;  // clean between evaluations
    Error error_ = Error::None;
    std::string error_data_;
    std::unique_ptr<Impl> impl_;
};

}  // namespace korvinth::term
