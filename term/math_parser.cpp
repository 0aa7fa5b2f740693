#include "term/math_parser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>

#include "term/compiler.h"
#include "term/definitions.h"
#include "term/kernels.h"
#include "term/program.h"

namespace korvinth::term {

namespace {

// Below this many samples the scalar code is quicker than setting up blocks.
constexpr std::size_t kFewSamples = 8;

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

// Finds objects by handle, with a small direct-mapped cache in front of the map: evaluating a
// sample must not cost a hash look-up. The objects are owned elsewhere.
template <class Handle, class T>
class HandleTable
{
public:
    explicit HandleTable(std::int32_t first) : next_(first) {}

    Handle NextHandle() { return Handle{next_++}; }
    void Add(Handle handle, T* object) { objects_.emplace(handle, object); }
    T* Find(Handle handle) const
    {
        const Entry& entry = cache_[static_cast<std::uint32_t>(handle) % kCacheSize];
        if (entry.handle == handle) [[likely]]
            return entry.object;
        return FindSlowly(handle);
    }
    void Remove(Handle handle)
    {
        objects_.erase(handle);
        cache_[static_cast<std::uint32_t>(handle) % kCacheSize] = {};
    }
    void Clear()
    {
        objects_.clear();
        cache_.fill({});
    }
    std::size_t Count() const { return objects_.size(); }

private:
    static constexpr std::size_t kCacheSize = 64;
    struct Entry
    {
        Handle handle = Handle::Invalid;
        T* object = nullptr;
    };

    T* FindSlowly(Handle handle) const
    {
        const auto found = objects_.find(handle);
        if (found == objects_.end()) return nullptr;
        cache_[static_cast<std::uint32_t>(handle) % kCacheSize] = {handle, found->second};
        return found->second;
    }

    std::unordered_map<Handle, T*> objects_;
    mutable std::array<Entry, kCacheSize> cache_{};
    std::int32_t next_;
};

}  // namespace

class MathParser::Impl
{
public:
    Impl() { definitions_.Clear(Limits{}); }

    void Reset(std::string_view configuration)
    {
        programs_.Clear();
        programs_by_text_.clear();
        variables_.Clear();
        definitions_.Clear(ParseLimits(configuration));
        ClearError();
    }

    ExprHandle Parse(std::string_view term)
    {
        const auto known = programs_by_text_.find(term);
        if (known != programs_by_text_.end()) {
            Program& program = *known->second;
            Link(program);
            if (!Raise(program.fault, program.fault_data)) return ExprHandle::Invalid;
            ++program.references;
            return program.handle;
        }
        auto program = std::make_unique<Program>();
        compiler_.Compile(term, *program);
        if (!Raise(program->fault, program->fault_data)) return ExprHandle::Invalid;
        program->text = term;
        program->references = 1;
        program->handle = programs_.NextHandle();
        programs_.Add(program->handle, program.get());
        const ExprHandle handle = program->handle;
        const std::string_view key = program->text;
        programs_by_text_.emplace(key, std::move(program));
        return handle;
    }

    double Evaluate(ExprHandle handle)
    {
        Program* const program = programs_.Find(handle);
        if (program == nullptr) [[unlikely]] return Fail(Error::InvalidTerm, {});
        Link(*program);
        if (program->fault != Error::None) [[unlikely]] {
            return Fail(program->fault, program->fault_data);
        }
        return Run(*program);
    }

    void EvaluateBlock(ExprHandle handle, VariableHandle variable,
                       std::span<const double> arguments, std::span<double> results,
                       std::span<Error> errors)
    {
        ClearError();
        const std::size_t count = std::min({arguments.size(), results.size(), errors.size()});
        Program* const found = programs_.Find(handle);
        Variable* const cell = variables_.Find(variable);
        Error fault = found == nullptr ? Error::InvalidTerm : Error::None;
        if (found != nullptr) {
            Link(*found);
            fault = found->fault;
        }
        if (fault != Error::None) {
            std::fill_n(results.begin(), count, 0.0);
            std::fill_n(errors.begin(), count, fault);
            if (count > 0) Fail(fault, found == nullptr ? std::string() : found->fault_data);
            return;
        }
        Program& program = *found;
        double& value = cell == nullptr ? no_variable_ : cell->value;
        const double kept = value;
        const bool blocks =
            count >= kFewSamples && program.block.Prepare(program.graph, &value, kernels_);
        if (blocks) program.block.BeginPass(program.scalar);
        for (std::size_t start = 0; start < count; start += kBlockSize) {
            const std::size_t n = std::min(kBlockSize, count - start);
            if (blocks) {
                RunBlock(program, value, arguments.subspan(start, n), results.subspan(start, n),
                         errors.subspan(start, n));
            } else {
                for (std::size_t i = start; i < start + n; ++i) {
                    RunSample(program, value, arguments[i], results[i], errors[i]);
                }
            }
        }
        value = kept;
    }

    double EvalText(std::string_view term)
    {
        if (term.empty()) {
            ClearError();
            return 0;
        }
        const auto known = programs_by_text_.find(term);
        Program* program = &text_program_;
        if (known != programs_by_text_.end()) {
            program = known->second.get();
            Link(*program);
        } else {
            compiler_.Compile(term, text_program_);
        }
        if (program->fault != Error::None) return Fail(program->fault, program->fault_data);
        return Run(*program);
    }

    void ReleaseExpr(ExprHandle handle)
    {
        Program* const found = programs_.Find(handle);
        if (found == nullptr || --found->references > 0) return;
        programs_.Remove(handle);
        programs_by_text_.erase(programs_by_text_.find(found->text));
    }

    VariableHandle DefineVariable(std::string_view definition)
    {
        const std::size_t equals = std::min(definition.find('='), definition.size());
        const std::string_view name = Trim(definition.substr(0, equals));
        double value = 0;
        ClearError();
        if (!IsName(name) || definitions_.FindOperatorWord(name) != Operator::None) {
            Fail(Error::InvalidTerm, {});
            return VariableHandle::Invalid;
        }
        if (equals < definition.size()) {
            value = EvalText(definition.substr(equals + 1));
            if (error_ != Error::None) return VariableHandle::Invalid;
        }
        const Variable* const known = definitions_.FindVariable(name);
        if (known == nullptr &&
            definitions_.VariableCount() >= definitions_.GetLimits().variables) {
            Fail(Error::OutOfSpace, {});
            return VariableHandle::Invalid;
        }
        if (known != nullptr) variables_.Remove(known->handle);
        const VariableHandle handle = variables_.NextHandle();
        Variable* const variable = definitions_.DefineVariable(name, handle);
        variable->value = value;
        variables_.Add(handle, variable);
        return handle;
    }

    void SetVariableValue(VariableHandle handle, double value)
    {
        if (Variable* const variable = variables_.Find(handle)) variable->value = value;
    }

    double VariableValue(VariableHandle handle) const
    {
        const Variable* const variable = variables_.Find(handle);
        return variable == nullptr ? 0 : variable->value;
    }

    void ReleaseVariable(VariableHandle handle)
    {
        const Variable* const variable = variables_.Find(handle);
        if (variable == nullptr) return;
        const std::string name = variable->name;
        variables_.Remove(handle);
        definitions_.RemoveVariable(name);
    }

    void DefineFunction(std::string_view definition)
    {
        ClearError();
        auto function = std::make_unique<UserFunction>();
        if (const Error error = ParseHead(definition, *function); error != Error::None) {
            Fail(error, {});
            return;
        }
        // The old definition goes first: a body that needs it would call itself.
        const std::size_t arity = function->parameters.size();
        definitions_.RemoveFunction(function->name, arity);
        if (definitions_.FunctionCount() >= definitions_.GetLimits().functions) {
            Fail(Error::OutOfSpace, {});
            return;
        }
        // A body without text leaves the function undefined and is no error.
        if (Trim(function->text).empty()) return;
        const Fault fault = compiler_.CheckFunction(*function);
        if (!Raise(fault.error, fault.data)) return;
        definitions_.AddFunction(std::move(function));
    }

    void ReleaseFunction(std::string_view name) { definitions_.RemoveFunction(name, {}); }

    void Alias(std::string_view name, std::string_view existing)
    {
        ClearError();
        if (!IsName(name)) {
            Fail(Error::InvalidTerm, {});
        } else if (!definitions_.AddAlias(name, existing)) {
            Fail(Error::UndefinedFunction, existing);
        }
    }

    bool IsBuiltinName(std::string_view name) const { return definitions_.IsBuiltinName(name); }
    void SetTrigMode(TrigMode mode)
    {
        if (mode >= TrigMode::Radians && mode <= TrigMode::Grads) definitions_.SetMode(mode);
    }

    Error GetError() const { return error_; }
    std::string GetErrorData(int index) const
    {
        return index == 0 && error_ != Error::None ? error_data_ : std::string();
    }
    std::size_t LivePrograms() const { return programs_.Count(); }

private:
    void ClearError() { error_ = Error::None; }

    [[gnu::cold, gnu::noinline]] double Fail(Error error, std::string_view data)
    {
        error_ = error;
        error_data_ = data;
        return 0;
    }

    // True when there is no fault.
    bool Raise(Error error, std::string_view data)
    {
        ClearError();
        if (error != Error::None) Fail(error, data);
        return error == Error::None;
    }

    // Looks the names of a program up anew when definitions have changed.
    void Link(Program& program)
    {
        if (program.generation == definitions_.Generation()) [[likely]]
            return;
        const std::string text = program.text;
        compiler_.Compile(text, program);
    }

    double Run(const Program& program)
    {
        EvalState state;
        const double value = program.scalar.Run(state);
        if (std::isnan(value)) [[unlikely]] {
            return Fail(FaultOf(state), DataOf(FaultOf(state)));
        }
        ClearError();
        return value;
    }

    static std::string_view DataOf(Error error)
    {
        return error == Error::ArgumentType ? "!" : std::string_view();
    }

    void RunSample(const Program& program, double& variable, double argument, double& result,
                   Error& error)
    {
        variable = argument;
        EvalState state;
        const double value = program.scalar.Run(state);
        error = Error::None;
        result = value;
        if (std::isnan(value)) {
            result = 0;
            error = FaultOf(state);
            if (error_ == Error::None) Fail(error, DataOf(error));
        }
    }

    // Where the block form finds no value, the scalar code decides which error it is.
    void RunBlock(Program& program, double& variable, std::span<const double> arguments,
                  std::span<double> results, std::span<Error> errors)
    {
        if (results.data() < arguments.data() + arguments.size() &&
            arguments.data() < results.data() + results.size()) {
            std::copy(arguments.begin(), arguments.end(), arguments_.begin());
            arguments = std::span<const double>(arguments_).first(arguments.size());
        }
        program.block.Run(arguments, results, registers_);
        std::memset(errors.data(), 0, errors.size_bytes());
        if (!kernels_.any_nan(results.data(), results.size())) [[likely]]
            return;
        for (std::size_t i = 0; i < results.size(); ++i) {
            if (std::isnan(results[i])) {
                RunSample(program, variable, arguments[i], results[i], errors[i]);
            }
        }
    }

    // "name(p1, p2, ...)=body"
    static Error ParseHead(std::string_view definition, UserFunction& function)
    {
        const std::size_t open = definition.find('(');
        const std::size_t close = definition.find(')');
        const std::size_t equals = definition.find('=');
        if (open == std::string_view::npos || close == std::string_view::npos || close < open ||
            equals == std::string_view::npos || equals < close ||
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
            const std::string parameter(Trim(list.substr(0, comma)));
            if (!IsName(parameter)) return Error::InvalidTerm;
            function.parameters.push_back(parameter);
            if (function.parameters.size() > kMaxFunctionParameters) return Error::OutOfSpace;
            if (comma == list.size()) return Error::None;
            list.remove_prefix(comma + 1);
        }
    }

    Definitions definitions_;
    Compiler compiler_{definitions_};
    const KernelTable& kernels_ = *AvailableKernels().front();
    std::unordered_map<std::string_view, std::unique_ptr<Program>> programs_by_text_;
    HandleTable<ExprHandle, Program> programs_{1001};
    HandleTable<VariableHandle, Variable> variables_{1};
    Program text_program_;
    double no_variable_ = 0;  // stands for an unknown variable in EvaluateBlock
    std::vector<double> registers_;
    std::array<double, kBlockSize> arguments_{};
    Error error_ = Error::None;
    std::string error_data_;
};

MathParser::MathParser() : impl_(std::make_unique<Impl>()) {}
MathParser::~MathParser() = default;

void MathParser::Reset(std::string_view configuration)
{
    impl_->Reset(configuration);
}
ExprHandle MathParser::Parse(std::string_view term)
{
    return impl_->Parse(term);
}
double MathParser::Evaluate(ExprHandle handle)
{
    return impl_->Evaluate(handle);
}
void MathParser::EvaluateBlock(ExprHandle handle, VariableHandle variable,
                               std::span<const double> arguments, std::span<double> results,
                               std::span<Error> errors)
{
    impl_->EvaluateBlock(handle, variable, arguments, results, errors);
}
double MathParser::EvalText(std::string_view term)
{
    return impl_->EvalText(term);
}
void MathParser::ReleaseExpr(ExprHandle handle)
{
    impl_->ReleaseExpr(handle);
}
VariableHandle MathParser::DefineVariable(std::string_view definition)
{
    return impl_->DefineVariable(definition);
}
void MathParser::SetVariableValue(VariableHandle handle, double value)
{
    impl_->SetVariableValue(handle, value);
}
double MathParser::VariableValue(VariableHandle handle) const
{
    return impl_->VariableValue(handle);
}
void MathParser::ReleaseVariable(VariableHandle handle)
{
    impl_->ReleaseVariable(handle);
}
void MathParser::DefineFunction(std::string_view definition)
{
    impl_->DefineFunction(definition);
}
void MathParser::ReleaseFunction(std::string_view name)
{
    impl_->ReleaseFunction(name);
}
void MathParser::Alias(std::string_view name, std::string_view existing)
{
    impl_->Alias(name, existing);
}
bool MathParser::IsBuiltinName(std::string_view name) const
{
    return impl_->IsBuiltinName(name);
}
void MathParser::SetTrigMode(TrigMode mode)
{
    impl_->SetTrigMode(mode);
}
Error MathParser::GetError() const
{
    return impl_->GetError();
}
std::string MathParser::GetErrorData(int index) const
{
    return impl_->GetErrorData(index);
}
std::string MathParser::ErrorText(std::int32_t code) const
{
    const std::int32_t number = code == -1 ? static_cast<std::int32_t>(GetError()) : code;
    return ErrorMessage(number, GetErrorData());
}
std::size_t MathParser::LivePrograms() const
{
    return impl_->LivePrograms();
}

}  // namespace korvinth::term
