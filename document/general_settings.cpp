#include "document/general_settings.h"

#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

#include "document/escaped_signs.h"
#include "document/number_text.h"
#include "term/error.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

using Attributes = DisplayAttributes;

// A number that is typed, with the bounds it has to keep.
struct NumberField
{
    double lowest = 0;
    double highest = 0;
    int Attributes::*whole = nullptr;  // one of both
    double Attributes::*real = nullptr;
};

struct Field
{
    Setting setting;
    std::string_view name;
    NumberField number;                       // of a number
    std::string Attributes::*text = nullptr;  // of a name or a term
    AxisStep Attributes::*step = nullptr;
};

constexpr double kLargestNumber = std::numeric_limits<double>::max();

constexpr Field kFields[] = {
    {Setting::XAxisName, "Name der x-Achse", {}, &Attributes::x_axis_name},
    {Setting::YAxisName, "Name der y-Achse", {}, &Attributes::y_axis_name},
    {Setting::FontPoints, "Schriftgröße", {6, 36, &Attributes::font_points}},
    {Setting::AxisWidth, "Breite der Achsen", {0.25, 8, nullptr, &Attributes::axis_width}},
    {Setting::HelpLineWidth,
     "Breite der Hilfslinien",
     {0.25, 8, nullptr, &Attributes::help_line_width}},
    {Setting::XStep, "Schrittweite der x-Achse", {}, nullptr, &Attributes::x_step},
    {Setting::YStep, "Schrittweite der y-Achse", {}, nullptr, &Attributes::y_step},
    {Setting::SampleCount,
     "Anzahl der x-Werte",
     {kFewestSettableSamples, kMostSettableSamples, &Attributes::sample_count}},
    {Setting::NumericLimit, "numerische Grenze für 1/(1+abs(x))", {}, &Attributes::integrand_limit},
    {Setting::FamilyStep,
     "Schrittweite der Scharen",
     {-kLargestNumber, kLargestNumber, nullptr, &Attributes::family_step}},
    {Setting::FamilyCount,
     "Anzahl der Scharkurven",
     {0, kMostFamilyMembers, &Attributes::family_count}},
    {Setting::TimerInterval,
     "Zeitabstand der Animation",
     {10, 1000, &Attributes::timer_milliseconds}},
};
static_assert(std::size(kFields) == kSettingCount);

const Field& FieldOf(Setting setting) { return kFields[static_cast<std::size_t>(setting)]; }

std::size_t Characters(std::string_view utf8)
{
    std::size_t count = 0;
    for (const char c : utf8) count += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1U : 0U;
    return count;
}

// The fault of a term, "" when it has a value, which need not be finite.
std::string Evaluate(std::string_view text, term::MathParser& parser, double& value)
{
    if (text.empty()) return "Hier fehlt eine Eingabe";
    value = EvalNumberField(parser, text);
    std::string fault;
    if (parser.GetError() != term::Error::None) fault = parser.ErrorText();
    parser.EvalText("");
    return fault;
}

bool TooLong(std::string_view text)
{
    return EscapeSigns(text, kSignsOfItems).size() > kLongestStoredText;
}

bool Accepts(const NumberField& field, double value)
{
    return value >= field.lowest && value <= field.highest;
}

void Store(const NumberField& field, double value, Attributes& attributes)
{
    if (field.whole != nullptr) {
        attributes.*field.whole = static_cast<int>(value);
    } else {
        attributes.*field.real = value;
    }
}

bool IsStep(double value) { return value > 0 && std::isfinite(value); }
bool IsLimit(double value) { return value > 0 && value < 1; }

std::string TakeName(std::string& name, std::string_view text)
{
    if (Characters(text) > kLongestAxisName) {
        return "Höchstens " + std::to_string(kLongestAxisName) + " Zeichen sind möglich";
    }
    if (TooLong(text)) return "Mit diesen Zeichen ist der Name zu lang";
    for (const char c : text) {
        // A curly bracket would end the line that keeps the settings in a file.
        const auto code = static_cast<unsigned char>(c);
        if (code < ' ' || code == 0x7F || c == '{' || c == '}') {
            return "Geschweifte Klammern und Steuerzeichen sind nicht möglich";
        }
    }
    name = text;
    return "";
}

// As it is kept: "pi" for the sign, and round brackets in place of curly ones, which the files that
// keep the settings do not hold.
std::string KeptTerm(std::string_view text)
{
    std::string term = term::ReplaceAll(text, "\u03C0", "pi");
    term = term::ReplaceAll(term, "{", "(");
    return term::ReplaceAll(term, "}", ")");
}

std::string TermTooLong()
{
    return "Der Term darf höchstens " + std::to_string(kLongestStoredText) + " Zeichen haben";
}

std::string TakeStep(AxisStep& step, std::string_view text, term::MathParser& parser)
{
    const std::string kept = KeptTerm(text);
    if (TooLong(kept)) return TermTooLong();
    double value = 0;
    std::string fault = Evaluate(kept, parser, value);
    if (!fault.empty()) return fault;
    if (!IsStep(value)) return "Die Schrittweite muss größer als 0 sein";
    step.fixed = kept;
    return "";
}

std::string TakeLimit(std::string& limit, std::string_view text, term::MathParser& parser)
{
    const std::string kept = KeptTerm(text);
    if (TooLong(kept)) return TermTooLong();
    double value = 0;
    std::string fault = Evaluate(kept, parser, value);
    if (!fault.empty()) return fault;
    if (!IsLimit(value)) return "Der Wert muss größer als 0 und kleiner als 1 sein";
    limit = term::ReplaceAll(kept, ",", ".");  // it becomes part of a term
    return "";
}

std::string TakeNumber(Attributes& attributes, const NumberField& field, std::string_view text,
                       term::MathParser& parser)
{
    double value = 0;
    std::string fault = Evaluate(text, parser, value);
    if (!fault.empty()) return fault;
    if (field.whole != nullptr && std::isfinite(value)) value = std::nearbyint(value);
    if (!Accepts(field, value)) {
        if (field.highest == kLargestNumber) return "Die Eingabe ist keine Zahl";
        return "Die Zahl muss zwischen " + ShortestGermanText(field.lowest) + " und " +
               ShortestGermanText(field.highest) + " liegen";
    }
    Store(field, value, attributes);
    return "";
}

// Nothing when it is not a plain number as a whole.
std::optional<double> PlainNumber(std::string_view text)
{
    double value = 0;
    const char* const end = text.data() + text.size();
    const auto read = std::from_chars(text.data(), end, value);
    if (read.ec != std::errc() || read.ptr != end) return std::nullopt;
    return value;
}

// Whether a term of a file can be kept: one that is no number has to be a term
// to the parser, whatever its names mean.
bool IsStorableTerm(std::string_view text, bool (*accepts)(double))
{
    if (text.empty() || TooLong(text) || KeptTerm(text) != text) return false;
    const std::string with_points = term::ReplaceAll(text, ",", ".");
    if (const std::optional<double> number = PlainNumber(with_points)) return accepts(*number);
    term::MathParser parser;
    if (parser.Parse(with_points) != term::ExprHandle::Invalid) return true;
    const term::Error error = parser.GetError();
    return error == term::Error::UndefinedVariable || error == term::Error::UndefinedFunction;
}

void TakeStoredNumber(const NumberField& field, std::string_view text, Attributes& attributes)
{
    const std::optional<double> value = PlainNumber(text);
    if (!value || !Accepts(field, *value)) return;
    if (field.whole == nullptr || *value == std::nearbyint(*value)) {
        Store(field, *value, attributes);
    }
}

std::string Take(Attributes& attributes, const Field& field, std::string_view text,
                 term::MathParser& parser)
{
    if (field.setting == Setting::NumericLimit) {
        return TakeLimit(attributes.*field.text, text, parser);
    }
    if (field.text != nullptr) return TakeName(attributes.*field.text, text);
    if (field.step != nullptr) return TakeStep(attributes.*field.step, text, parser);
    return TakeNumber(attributes, field.number, text, parser);
}

}  // namespace

std::string_view SettingName(Setting setting) { return FieldOf(setting).name; }

std::string SettingText(const DisplayAttributes& attributes, Setting setting)
{
    const bool with_comma =
        setting == Setting::NumericLimit || FieldOf(setting).number.real != nullptr;
    std::string text = StoredSetting(attributes, setting);
    return with_comma ? term::ReplaceAll(text, ".", ",") : text;
}

std::string TakeSetting(DisplayAttributes& attributes, Setting setting, std::string_view text,
                        term::MathParser& parser)
{
    const Field& field = FieldOf(setting);
    const std::string fault = Take(attributes, field, term::TrimBlanks(text), parser);
    return fault.empty() ? "" : std::string(field.name) + ": " + fault;
}

std::string StoredSetting(const DisplayAttributes& attributes, Setting setting)
{
    const Field& field = FieldOf(setting);
    if (field.text != nullptr) return attributes.*field.text;
    if (field.step != nullptr) return (attributes.*field.step).fixed;
    if (field.number.whole != nullptr) return std::to_string(attributes.*field.number.whole);
    return ShortestText(attributes.*field.number.real);
}

void TakeStoredSetting(DisplayAttributes& attributes, Setting setting, std::string_view text)
{
    text = term::TrimBlanks(text);  // as the window does
    const Field& field = FieldOf(setting);
    if (setting == Setting::NumericLimit) {
        const bool in_parser_syntax = text.find(',') == std::string_view::npos;
        if (in_parser_syntax && IsStorableTerm(text, IsLimit)) attributes.*field.text = text;
    } else if (field.text != nullptr) {
        TakeName(attributes.*field.text, text);
    } else if (field.step != nullptr) {
        if (IsStorableTerm(text, IsStep)) (attributes.*field.step).fixed = text;
    } else {
        TakeStoredNumber(field.number, text, attributes);
    }
}

void CopyGeneralSettings(const DisplayAttributes& from, DisplayAttributes& to)
{
    for (const Field& field : kFields) {
        if (field.text != nullptr) to.*field.text = from.*field.text;
        if (field.step != nullptr) to.*field.step = from.*field.step;
        if (field.number.whole != nullptr) to.*field.number.whole = from.*field.number.whole;
        if (field.number.real != nullptr) to.*field.number.real = from.*field.number.real;
    }
    for (const auto colour : {&Attributes::background, &Attributes::axis_colour,
                              &Attributes::number_colour, &Attributes::help_line_colour,
                              &Attributes::extra_help_line_colour, &Attributes::line_colour}) {
        to.*colour = from.*colour;
    }
    for (const auto flag : {&Attributes::constant_sample_count, &Attributes::graph_names,
                            &Attributes::smooth_drawing}) {
        to.*flag = from.*flag;
    }
}

double StepValue(std::string_view text, term::MathParser& parser)
{
    double value = 0;
    const std::string fault = Evaluate(term::TrimBlanks(text), parser, value);
    return fault.empty() && IsStep(value) ? value : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace korvinth::document
