#include "term/definitions.h"

#include <algorithm>

#include "term/builtins.h"

namespace korvinth::term {

namespace {

struct OperatorWord
{
    std::string_view name;
    Operator op;
};
constexpr OperatorWord kOperatorWords[] = {
    {"imp", Operator::Imp},       {"eqv", Operator::Eqv}, {"xor", Operator::Xor},
    {"or", Operator::Or},         {"and", Operator::And}, {"not", Operator::Not},
    {"div", Operator::IntDivide},
};

constexpr bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }

// Looks a name up without regard to case, without a copy when it is in lower case already.
template <class Map>
auto FindFolded(Map& map, std::string_view name)
{
    if (std::none_of(name.begin(), name.end(), IsUpper)) return map.find(name);
    return map.find(LowerCase(name));
}

}  // namespace

bool IsName(std::string_view text)
{
    const auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || IsUpper(c) || c == '_'; };
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    return !text.empty() && is_letter(text.front()) &&
           std::all_of(text.begin(), text.end(),
                       [&](char c) { return is_letter(c) || is_digit(c); });
}

void Definitions::Clear(const Limits& limits)
{
    limits_ = limits;
    mode_ = TrigMode::Radians;
    ++generation_;
    variables_.clear();
    functions_.clear();
    function_count_ = 0;
    aliases_.clear();
    operator_words_.clear();
    for (const OperatorWord& word : kOperatorWords) operator_words_.emplace(word.name, word.op);
}

void Definitions::SetMode(TrigMode mode)
{
    if (mode == mode_) return;
    mode_ = mode;
    ++generation_;
}

Operator Definitions::FindOperatorWord(std::string_view name) const
{
    const auto found = FindFolded(operator_words_, name);
    return found == operator_words_.end() ? Operator::None : found->second;
}

const Variable* Definitions::FindVariable(std::string_view name) const
{
    const auto found = variables_.find(name);
    return found == variables_.end() ? nullptr : found->second.get();
}

Variable* Definitions::DefineVariable(std::string_view name, VariableHandle handle)
{
    ++generation_;
    auto variable = std::make_unique<Variable>();
    variable->name = name;
    variable->handle = handle;
    auto& entry = variables_[variable->name];
    entry = std::move(variable);
    return entry.get();
}

void Definitions::RemoveVariable(std::string_view name)
{
    const auto found = variables_.find(name);
    if (found == variables_.end()) return;
    variables_.erase(found);
    ++generation_;
}

UserFunction* Definitions::FindFunction(std::string_view name, std::size_t arity) const
{
    auto found = FindFolded(functions_, name);
    if (found == functions_.end()) {
        const auto alias = FindFolded(aliases_, name);
        if (alias == aliases_.end()) return nullptr;
        found = functions_.find(alias->second);
        if (found == functions_.end()) return nullptr;
    }
    for (const auto& function : found->second) {
        if (function->parameters.size() == arity) return function.get();
    }
    return nullptr;
}

bool Definitions::IsFunctionName(std::string_view name) const
{
    const std::string canonical = Canonical(name);
    return functions_.contains(LowerCase(name)) || functions_.contains(canonical) ||
           IsBuiltinFunction(canonical);
}

void Definitions::AddFunction(std::unique_ptr<UserFunction> function)
{
    RemoveFunction(function->name, function->parameters.size());
    ++generation_;
    ++function_count_;
    functions_[function->name].push_back(std::move(function));
}

void Definitions::RemoveFunction(std::string_view name, std::optional<std::size_t> arity)
{
    const auto found = FindFolded(functions_, name);
    if (found == functions_.end()) return;
    const std::size_t removed = std::erase_if(found->second, [&](const auto& function) {
        return !arity || function->parameters.size() == *arity;
    });
    if (found->second.empty()) functions_.erase(found);
    if (removed > 0) ++generation_;
    function_count_ -= removed;
}

bool Definitions::AddAlias(std::string_view name, std::string_view existing)
{
    const Operator op = FindOperatorWord(existing);
    if (op != Operator::None) {
        operator_words_.insert_or_assign(LowerCase(name), op);
    } else if (IsFunctionName(existing)) {
        aliases_.insert_or_assign(LowerCase(name), Canonical(existing));
    } else {
        return false;
    }
    ++generation_;
    return true;
}

bool Definitions::IsBuiltinName(std::string_view name) const
{
    return FindOperatorWord(name) != Operator::None || IsBuiltinFunction(Canonical(name));
}

std::string Definitions::Canonical(std::string_view name) const
{
    const auto alias = FindFolded(aliases_, name);
    return alias == aliases_.end() ? LowerCase(name) : alias->second;
}

}  // namespace korvinth::term
