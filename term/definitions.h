// Variables, user functions, aliases and settings that terms refer to by name.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "term/error.h"
#include "term/limits.h"
#include "term/math_parser.h"
#include "term/syntax_tree.h"
#include "term/words.h"

namespace korvinth::term {

struct Variable
{
    std::string name;
    double value = 0;
    VariableHandle handle = VariableHandle::Invalid;
};

struct UserFunction
{
    std::string name;  // lower case
    std::vector<std::string> parameters;
    std::string text;  // of the body; `body` refers to it
    SyntaxTree body;

    // Known while `generation` is that of the definitions.
    std::uint64_t generation = 0;
    std::uint32_t depth = 0;  // levels of bodies, those of called functions included
    Error fault = Error::None;
    std::string fault_data;
};

struct TextHash
{
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const
    {
        return std::hash<std::string_view>{}(text);
    }
};
template <class T>
using NameMap = std::unordered_map<std::string, T, TextHash, std::equal_to<>>;

bool IsName(std::string_view text);

class Definitions
{
public:
    void Clear(const Limits& limits);

    const Limits& GetLimits() const { return limits_; }
    TrigMode Mode() const { return mode_; }
    void SetMode(TrigMode mode);
    // Grows with every change that may give a term another meaning.
    std::uint64_t Generation() const { return generation_; }

    // The operator that a word stands for, None when it is no operator word.
    Operator FindOperatorWord(std::string_view name) const;

    const Variable* FindVariable(std::string_view name) const;
    Variable* DefineVariable(std::string_view name, VariableHandle handle);
    void RemoveVariable(std::string_view name);
    std::size_t VariableCount() const { return variables_.size(); }

    // The user's function, nullptr when there is none; aliases are followed.
    UserFunction* FindFunction(std::string_view name, std::size_t arity) const;
    // True when some function, built in or the user's, has this name.
    bool IsFunctionName(std::string_view name) const;
    void AddFunction(std::unique_ptr<UserFunction> function);
    // Removes one function or, without an arity, all of this name.
    void RemoveFunction(std::string_view name, std::optional<std::size_t> arity);
    std::size_t FunctionCount() const { return function_count_; }

    // False when `existing` is unknown.
    bool AddAlias(std::string_view name, std::string_view existing);
    bool IsBuiltinName(std::string_view name) const;
    // The name that an alias stands for, in lower case; other names come back in lower case.
    std::string Canonical(std::string_view name) const;

private:
    Limits limits_;
    TrigMode mode_ = TrigMode::Radians;
    std::uint64_t generation_ = 1;
    NameMap<std::unique_ptr<Variable>> variables_;
    NameMap<std::vector<std::unique_ptr<UserFunction>>> functions_;
    std::size_t function_count_ = 0;
    NameMap<std::string> aliases_;
    NameMap<Operator> operator_words_;
};

}  // namespace korvinth::term
