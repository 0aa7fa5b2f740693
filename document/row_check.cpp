#include "document/row_check.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "term/words.h"

namespace korvinth::document {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

struct LeftSide
{
    std::string name;
    std::string variable;
};

// "f(t)" names f and t; "f", "f()" and what has one bracket only have the variable x.
// Deliberate: brackets in the wrong order are exchanged, "f)x(" is read like "f(x)".
LeftSide SplitLeftSide(std::string_view text)
{
    std::size_t open = text.find('(');
    std::size_t close = text.find(')');
    if (open == kNone || close == kNone) return {std::string(text), "x"};
    if (close < open) std::swap(open, close);
    LeftSide left{std::string(text.substr(0, open)), "x"};
    if (close > open + 1) left.variable = text.substr(open + 1, close - open - 1);
    return left;
}

std::string LowerCase(std::string text)
{
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

std::string ListItem(std::string_view name, SlotIndex slot)
{
    return std::string(name) + "," + std::to_string(Number(slot)) + ":";
}

// The term as typed: blanks inside are kept, unlike in the text that the name is read from.
std::string RawTerm(std::string_view row)
{
    const std::size_t equals = row.find('=');
    return std::string(term::TrimBlanks(equals == kNone ? row : row.substr(equals + 1)));
}

// One run over the rows.
class RowChecker
{
public:
    RowChecker(PlotDocument& document, term::MathParser& parser)
        : document_(document), parser_(parser)
    {
    }

    RowCheck Run()
    {
        ResetTables();
        for (SlotIndex slot : AllSlots()) CheckRow(slot);
        checkxy(document_);
        for (const std::string& name : temporary_functions_) parser_.ReleaseFunction(name);
        parser_.EvalText("");
        return result_;
    }

private:
    void ResetTables()
    {
        document_.slots_in_use = 0;
        document_.last_slot_in_use = -1;
        document_.name_list = ":";
        document_.x_list = ":";
        document_.free_names = kFreeNames;
        for (const FunctionSlot& slot : document_.slots) document_.TakeName(slot.name);
    }

    void CheckRow(SlotIndex slot)
    {
        FunctionSlot& function = document_.slots[slot];
        function.name.clear();
        function.term.clear();
        function.argument = "x";
        function.curve_link = kPlainFunction;

        std::string text = term::ReplaceAll(document_.rows[slot], " ", "");
        if (text.empty()) return;
        if (text.find('=') == kNone) text = document_.free_names.substr(0, 1) + "(x)=" + text;
        const std::size_t equals = text.find('=');
        if (text.find("==", equals) != kNone) {
            Report(slot, "Zu viele Gleichheitszeichen!");
            return;
        }
        // Deliberate: behind a faulty row no name and no term is tested any more; those rows are
        // left out, and only their equals signs can still be complained about.
        if (!result_.errors.empty()) return;
        const LeftSide left = SplitLeftSide(std::string_view(text).substr(0, equals));
        if (left.name.empty()) {
            Report(slot, "Funktionsname fehlt!");
        } else if (equals + 1 == text.size()) {
            Report(slot, "Funktionsterm fehlt!");
        } else if (const std::string message = TestName(left.name); !message.empty()) {
            Report(slot, message);
        } else {
            Take(slot, left);
        }
    }

    void Report(SlotIndex slot, const std::string& message)
    {
        result_.errors += message;
        if (result_.first_faulty) return;
        result_.first_faulty = slot;
        result_.first_message = message;
    }

    // A name that can be called already is taken; one that cannot be called even when it is defined
    // is no name. The definition stays until all rows are checked, so that names that occur twice
    // are found.
    std::string TestName(const std::string& name)
    {
        const std::string call = name + "(1)";
        if (parser_.IsBuiltinName(name) || Evaluates(call)) {
            return "Funktionsname " + name + " wird bereits verwendet!";
        }
        parser_.DefineFunction(name + "(" + std::string(term::kFreeVariable) + ")=1");
        temporary_functions_.push_back(name);
        if (Evaluates(call)) return {};
        return parser_.ErrorText() + ": " + LowerCase(parser_.GetErrorData());
    }

    bool Evaluates(const std::string& term)
    {
        parser_.EvalText(term);
        return parser_.GetError() == term::Error::None;
    }

    void Take(SlotIndex slot, const LeftSide& left)
    {
        FunctionSlot& function = document_.slots[slot];
        function.name = left.name;
        function.argument = left.variable;
        function.raw_term = RawTerm(document_.rows[slot]);
        function.term = term::ReplaceWord(function.raw_term, left.variable, term::kFreeVariable,
                                          term::kWholeWord);
        document_.rows[slot] = left.name + "(" + left.variable + ") = " + function.raw_term;
        document_.TakeName(LowerCase(left.name));  // to the parser, F and f are one function
        ++document_.slots_in_use;
        document_.last_slot_in_use = static_cast<std::int16_t>(slot);
        document_.name_list += ListItem(left.name, slot);
        if (left.name.starts_with('x')) {
            document_.x_list += ListItem(std::string_view(left.name).substr(1), slot);
        }
    }

    PlotDocument& document_;
    term::MathParser& parser_;
    std::vector<std::string> temporary_functions_;
    RowCheck result_;
};

}  // namespace

RowCheck CheckNames(PlotDocument& document, term::MathParser& parser)
{
    return RowChecker(document, parser).Run();
}

void checkxy(PlotDocument& document)
{
    for (SlotIndex slot : AllSlots()) {
        FunctionSlot& y_part = document.slots[slot];
        if (!y_part.name.starts_with('y')) continue;
        const std::string key = ":" + y_part.name.substr(1) + ",";
        const std::size_t found = document.x_list.find(key);
        if (found == kNone) continue;
        const std::string_view number =
            std::string_view(document.x_list).substr(found + key.size());
        std::int16_t x_row = 0;
        std::from_chars(number.data(), number.data() + number.size(), x_row);
        y_part.curve_link = kCurveYPart;
        document.slots[SlotIndex{x_row}].curve_link = static_cast<std::int16_t>(slot);
    }
}

}  // namespace korvinth::document
