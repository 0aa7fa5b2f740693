#include "term/math_parser.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <unordered_map>
#include <vector>

#include "term/arithmetic.h"
#include "term/block_code.h"
#include "term/compiler.h"
#include "term/definitions.h"
#include "term/kernels.h"
#include "term/program.h"

namespace korvinth::term {

namespace {

// Below this many samples the scalar code is quicker than setting up blocks.
constexpr std::size_t kFewSamples = 8;
// Samples without a value are looked for in portions of this size.
constexpr std::size_t kNanStep = 32;

std::string_view Trim(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

Limits ParseLimits(std::string_view configuration)
{
    Limits limits;
    const std::array<std::size_t Limits::*, 5> fields = {&Limits::characters, &Limits::variables,
                                                         &Limits::functions, &Limits::instructions,
                                                         &Limits::nesting};
    for (const auto field : fields) {
        const std::size_t comma = std::min(configuration.find(','), configuration.size());
        const std::string_view item = Trim(configuration.substr(0, comma));
        std::size_t value = 0;
        const auto parsed = std::from_chars(item.data(), item.data() + item.size(), value);
        if (parsed.ec == std::errc{} && value > 0) {
            limits.*field = std::min(value, kLargestLimits.*field);
        }
        configuration.remove_prefix(std::min(comma + 1, configuration.size()));
    }
    return limits;
}

std::string_view DataOf(Error error)
{
    return error == Error::ArgumentType ? "!" : std::string_view();
}

// "name(p1, p2, ...)=body", without a look at the body.
Error ParseHead(std::string_view definition, UserFunction& function)
{
    const std::size_t open = definition.find('(');
    const std::size_t close = definition.find(')');
    const std::size_t equals = definition.find('=');
    constexpr std::size_t kNone = std::string_view::npos;
    if (open == kNone || close == kNone || equals == kNone || close < open || equals < close ||
        !Trim(definition.substr(close + 1, equals - close - 1)).empty()) {
        return Error::InvalidTerm;
    }
    const std::string_view name = Trim(definition.substr(0, open));
    if (!IsName(name)) return Error::InvalidTerm;
    function.name = LowerCase(name);
    function.text = definition.substr(equals + 1);
    std::string_view list = definition.substr(open + 1, close - open - 1);
    while (true) {
        const std::size_t comma = std::min(list.find(','), list.size());
        const std::string_view parameter = Trim(list.substr(0, comma));
        if (!IsName(parameter)) return Error::InvalidTerm;
        function.parameters.emplace_back(parameter);
        if (function.parameters.size() > kMaxFunctionParameters) return Error::OutOfSpace;
        if (comma == list.size()) return Error::None;
        list.remove_prefix(comma + 1);
    }
}

bool Overlap(std::span<const double> a, std::span<const double> b)
{
    return a.data() < b.data() + b.size() && b.data() < a.data() + a.size();
}

}  // namespace

class MathParser::Impl
{
public:
    Impl() { definitions.Clear(Limits{}); }

    Program* Find(ExprHandle handle) const
    {
        const auto found = programs.find(handle);
        return found == programs.end() ? nullptr : found->second;
    }
    Variable* Find(VariableHandle handle) const
    {
        const auto found = variables.find(handle);
        return found == variables.end() ? nullptr : found->second;
    }
    // The program of a text that is compiled already, else nullptr.
    Program* Find(std::string_view text) const
    {
        const auto found = programs_by_text.find(text);
        return found == programs_by_text.end() ? nullptr : found->second.get();
    }
    // Looks the names of a program up anew when definitions have changed.
    void Link(Program& program)
    {
        if (program.generation != definitions.Generation()) compiler.Compile(program.text, program);
    }

    Definitions definitions;
    Compiler compiler{definitions};
    const KernelTable& kernels = *AvailableKernels().front();
    std::unordered_map<std::string_view, std::unique_ptr<Program>> programs_by_text;
    std::unordered_map<ExprHandle, Program*> programs;
    std::unordered_map<VariableHandle, Variable*> variables;
    std::int32_t next_expression = 1001;
    std::int32_t next_variable = 1;

    Program text_program;           // of EvalText
    std::vector<double> registers;  // of EvaluateBlock
    std::array<double, kBlockSize> arguments{};
    double no_variable = 0;  // stands for an unknown variable in EvaluateBlock
};

MathParser::MathParser() : impl_(std::make_unique<Impl>()) {}
MathParser::~MathParser() = default;

void MathParser::ForgetRecent()
{
    recent_programs_.fill({});
    recent_variables_.fill({});
}

double MathParser::Fail(Error error, std::string_view data)
{
    error_ = error;
    error_data_ = data;
    return 0;
}

double MathParser::FailOfState()
{
    const Error error = FaultOf(state_);
    state_.error = Error::None;
    return Fail(error, DataOf(error));
}

void MathParser::Reset(std::string_view configuration)
{
    ForgetRecent();
    impl_->programs.clear();
    impl_->programs_by_text.clear();
    impl_->variables.clear();
    impl_->definitions.Clear(ParseLimits(configuration));
    ClearError();
}

ExprHandle MathParser::Parse(std::string_view term)
{
    ClearError();
    if (Program* const known = impl_->Find(term)) {
        impl_->Link(*known);
        if (known->fault == Error::None) {
            ++known->references;
            return known->handle;
        }
        Fail(known->fault, known->fault_data);
        return ExprHandle::Invalid;
    }
    auto program = std::make_unique<Program>();
    impl_->compiler.Compile(term, *program);
    if (program->fault != Error::None) {
        Fail(program->fault, program->fault_data);
        return ExprHandle::Invalid;
    }
    program->text = term;
    program->references = 1;
    program->handle = ExprHandle{impl_->next_expression++};
    const ExprHandle handle = program->handle;
    const std::string_view key = program->text;
    impl_->programs.emplace(handle, program.get());
    impl_->programs_by_text.emplace(key, std::move(program));
    return handle;
}

double MathParser::EvaluateSlowly(ExprHandle handle)
{
    Program* const program = impl_->Find(handle);
    if (program == nullptr) return Fail(Error::InvalidTerm, {});
    impl_->Link(*program);
    if (program->fault != Error::None) return Fail(program->fault, program->fault_data);
    const ScalarNode& root = program->scalar.Root();
    recent_programs_[Place(handle)] = {handle, root.run, &root};
    return Evaluate(handle);
}

double MathParser::EvalText(std::string_view term)
{
    ClearError();
    if (term.empty()) return 0;
    Program* program = impl_->Find(term);
    if (program != nullptr) {
        impl_->Link(*program);
    } else {
        program = &impl_->text_program;
        impl_->compiler.Compile(term, *program);
    }
    if (program->fault != Error::None) return Fail(program->fault, program->fault_data);
    const double value = program->scalar.Run(state_);
    return std::isnan(value) ? FailOfState() : value;
}

void MathParser::EvaluateBlock(ExprHandle handle, VariableHandle variable,
                               std::span<const double> arguments, std::span<double> results,
                               std::span<Error> errors)
{
    ClearError();
    const std::size_t count = std::min({arguments.size(), results.size(), errors.size()});
    Program* const program = impl_->Find(handle);
    if (program != nullptr) impl_->Link(*program);
    const Error fault = program == nullptr ? Error::InvalidTerm : program->fault;
    if (fault != Error::None) {
        std::fill_n(results.begin(), count, 0.0);
        std::fill_n(errors.begin(), count, fault);
        Fail(fault, program == nullptr ? std::string_view() : program->fault_data);
        return;
    }
    Variable* const known = impl_->Find(variable);
    double& cell = known == nullptr ? impl_->no_variable : known->value;
    const double kept = cell;
    const auto run_sample = [&](double argument, double& result, Error& error) {
        cell = argument;
        result = program->scalar.Run(state_);
        error = Error::None;
        if (!std::isnan(result)) return;
        result = 0;
        error = FaultOf(state_);
        state_.error = Error::None;
        if (error_ == Error::None) Fail(error, DataOf(error));
    };
    if (count < kFewSamples || !program->block.Prepare(program->graph, &cell, impl_->kernels)) {
        for (std::size_t i = 0; i < count; ++i) run_sample(arguments[i], results[i], errors[i]);
        cell = kept;
        return;
    }
    program->block.BeginPass(program->scalar);
    const Error domain_error = program->block.DomainError();
    for (std::size_t start = 0; start < count; start += kBlockSize) {
        const std::size_t n = std::min(kBlockSize, count - start);
        std::span<const double> in = arguments.subspan(start, n);
        const std::span<double> out = results.subspan(start, n);
        if (Overlap(in, out)) {
            std::copy(in.begin(), in.end(), impl_->arguments.begin());
            in = std::span<const double>(impl_->arguments).first(n);
        }
        program->block.Run(in, out, impl_->registers);
        if (!impl_->kernels.clear_errors(out.data(), &errors[start], n)) continue;
        // Where the block form finds no value, the scalar code decides which error it is.
        for (std::size_t i = 0; i < n; i += kNanStep) {
            const std::size_t end = std::min(i + kNanStep, n);
            if (!impl_->kernels.clear_errors(&out[i], &errors[start + i], end - i)) continue;
            for (std::size_t k = i; k < end; ++k) {
                if (!std::isnan(out[k])) continue;
                if (domain_error != Error::None &&
                    std::bit_cast<std::uint64_t>(out[k]) == kDomainErrorBits) {
                    out[k] = 0;
                    errors[start + k] = domain_error;
                    if (error_ == Error::None) Fail(domain_error, {});
                } else {
                    run_sample(in[k], out[k], errors[start + k]);
                }
            }
        }
    }
    cell = kept;
}

void MathParser::ReleaseExpr(ExprHandle handle)
{
    Program* const program = impl_->Find(handle);
    if (program == nullptr || --program->references > 0) return;
    recent_programs_[Place(handle)] = {};
    impl_->programs.erase(handle);
    impl_->programs_by_text.erase(impl_->programs_by_text.find(program->text));
}

VariableHandle MathParser::DefineVariable(std::string_view definition)
{
    ClearError();
    const std::size_t equals = std::min(definition.find('='), definition.size());
    const std::string_view name = Trim(definition.substr(0, equals));
    Definitions& definitions = impl_->definitions;
    if (!IsName(name) || definitions.FindOperatorWord(name) != Operator::None) {
        Fail(Error::InvalidTerm, {});
        return VariableHandle::Invalid;
    }
    double value = 0;
    if (equals < definition.size()) {
        value = EvalText(definition.substr(equals + 1));
        if (error_ != Error::None) return VariableHandle::Invalid;
    }
    const Variable* const known = definitions.FindVariable(name);
    if (known != nullptr) {
        impl_->variables.erase(known->handle);
    } else if (definitions.VariableCount() >= definitions.GetLimits().variables) {
        Fail(Error::OutOfSpace, {});
        return VariableHandle::Invalid;
    }
    ForgetRecent();
    const VariableHandle handle{impl_->next_variable++};
    Variable* const variable = definitions.DefineVariable(name, handle);
    variable->value = value;
    impl_->variables.emplace(handle, variable);
    return handle;
}

void MathParser::SetSlowly(VariableHandle handle, double value)
{
    Variable* const variable = impl_->Find(handle);
    if (variable == nullptr) return;
    variable->value = value;
    recent_variables_[Place(handle)] = {handle, &variable->value};
}

double MathParser::VariableValue(VariableHandle handle) const
{
    const Variable* const variable = impl_->Find(handle);
    return variable == nullptr ? 0 : variable->value;
}

void MathParser::ReleaseVariable(VariableHandle handle)
{
    const Variable* const variable = impl_->Find(handle);
    if (variable == nullptr) return;
    ForgetRecent();
    const std::string name = variable->name;
    impl_->variables.erase(handle);
    impl_->definitions.RemoveVariable(name);
}

void MathParser::DefineFunction(std::string_view definition)
{
    ClearError();
    ForgetRecent();
    auto function = std::make_unique<UserFunction>();
    if (const Error error = ParseHead(definition, *function); error != Error::None) {
        Fail(error, {});
        return;
    }
    // The old definition goes first: a body that needs it would call itself.
    Definitions& definitions = impl_->definitions;
    definitions.RemoveFunction(function->name, function->parameters.size());
    if (definitions.FunctionCount() >= definitions.GetLimits().functions) {
        Fail(Error::OutOfSpace, {});
        return;
    }
    // A body without text leaves the function undefined and is no error.
    if (Trim(function->text).empty()) return;
    const Fault fault = impl_->compiler.CheckFunction(*function);
    if (fault.error != Error::None) {
        Fail(fault.error, fault.data);
        return;
    }
    definitions.AddFunction(std::move(function));
}

void MathParser::ReleaseFunction(std::string_view name)
{
    ForgetRecent();
    impl_->definitions.RemoveFunction(name, {});
}

void MathParser::Alias(std::string_view name, std::string_view existing)
{
    ClearError();
    ForgetRecent();
    if (!IsName(name)) {
        Fail(Error::InvalidTerm, {});
    } else if (!impl_->definitions.AddAlias(name, existing)) {
        Fail(Error::UndefinedFunction, existing);
    }
}

bool MathParser::IsBuiltinName(std::string_view name) const
{
    return impl_->definitions.IsBuiltinName(name);
}

void MathParser::SetTrigMode(TrigMode mode)
{
    if (mode < TrigMode::Radians || mode > TrigMode::Grads) return;
    ForgetRecent();
    impl_->definitions.SetMode(mode);
}

std::string MathParser::GetErrorData(int index) const
{
    return index == 0 && error_ != Error::None ? error_data_ : std::string();
}

std::string MathParser::ErrorText(std::int32_t code) const
{
    const std::int32_t number = code == -1 ? static_cast<std::int32_t>(error_) : code;
    return ErrorMessage(number, GetErrorData());
}

std::size_t MathParser::OperationCount(ExprHandle handle) const
{
    Program* const program = impl_->Find(handle);
    if (program == nullptr) return 0;
    impl_->Link(*program);
    return program->graph.nodes.size();
}

std::size_t MathParser::LivePrograms() const { return impl_->programs.size(); }

}  // namespace korvinth::term
