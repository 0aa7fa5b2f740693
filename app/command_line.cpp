#include "app/command_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "app/message_text.h"
#include "document/slots.h"
#include "files/path_text.h"

namespace korvinth::app {
namespace {

std::string Trimmed(std::string_view text)
{
    const std::size_t begin = std::min(text.find_first_not_of(' '), text.size());
    return std::string(text.substr(begin, text.find_last_not_of(' ') + 1 - begin));
}

// The parts between the semicolons that stand in no bracket, without blanks at their ends.
std::vector<std::string> SplitTerms(std::string_view text)
{
    std::vector<std::string> parts(1);
    int depth = 0;
    for (const char c : text) {
        if (c == '(') ++depth;
        if (c == ')') --depth;
        if (c == ';' && depth <= 0) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    for (std::string& part : parts) part = Trimmed(part);
    return parts;
}

bool AnyEmpty(const std::vector<std::string>& parts)
{
    return std::ranges::any_of(parts, &std::string::empty);
}

std::optional<int> WholeNumber(std::string_view text)
{
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

// Each of these takes an option's value into the description; the result is a complaint or "".

std::string TakeRow(CommandLine& command, const std::string& value)
{
    if (command.rows.size() == document::kSlotCount) return "höchstens 13 Terme sind möglich";
    command.rows.push_back(value);
    return "";
}

std::string TakeParameter(CommandLine& command, const std::string& value)
{
    const std::size_t equals = value.find('=');
    const std::string name = Trimmed(std::string_view(value).substr(0, equals));
    std::string term;
    if (equals != std::string::npos) term = Trimmed(std::string_view(value).substr(equals + 1));
    if (name.empty() || term.empty()) return "erwartet wird NAME=TERM, zum Beispiel a=2";
    command.parameters.push_back({name, std::move(term)});
    return "";
}

std::string TakeRange(std::optional<BoundTerms>& range, const std::string& value)
{
    std::vector<std::string> parts = SplitTerms(value);
    if (parts.size() != 2 || AnyEmpty(parts)) {
        return "erwartet werden zwei Grenzen, zum Beispiel -5;5";
    }
    range = BoundTerms{std::move(parts[0]), std::move(parts[1])};
    return "";
}

std::string TakeXRange(CommandLine& command, const std::string& value)
{
    return TakeRange(command.x_range, value);
}

std::string TakeYRange(CommandLine& command, const std::string& value)
{
    return TakeRange(command.y_range, value);
}

std::string TakeInterval(CommandLine& command, const std::string& value)
{
    const std::size_t colon = value.find(':');
    std::string function = Trimmed(std::string_view(value).substr(0, colon));
    std::vector<std::string> parts;
    if (colon != std::string::npos) parts = SplitTerms(std::string_view(value).substr(colon + 1));
    if (function.empty() || parts.size() != 2) {
        return "erwartet werden Funktion und Grenzen, zum Beispiel f:0;2*pi";
    }
    if (parts[0] == "-oo") parts[0].clear();
    if (parts[1] == "oo" || parts[1] == "+oo") parts[1].clear();
    command.intervals.push_back(
        {std::move(function), BoundTerms{std::move(parts[0]), std::move(parts[1])}});
    return "";
}

std::string TakeAngleMode(CommandLine& command, const std::string& value)
{
    using enum term::TrigMode;
    constexpr std::pair<std::string_view, term::TrigMode> kModes[] = {
        {"rad", Radians}, {"deg", Degrees}, {"grad", Grads}};
    for (const auto& [name, mode] : kModes) {
        if (name != value) continue;
        command.angle_mode = mode;
        return "";
    }
    return "erwartet wird rad, deg oder grad";
}

std::string TakeSize(CommandLine& command, const std::string& value)
{
    const std::size_t cross = value.find('x');
    if (cross == std::string::npos) return "erwartet wird BREITExHÖHE, zum Beispiel 800x600";
    const auto width = WholeNumber(std::string_view(value).substr(0, cross));
    const auto height = WholeNumber(std::string_view(value).substr(cross + 1));
    const auto possible = [](std::optional<int> side) {
        return side && *side >= 1 && *side <= render::kLongestSide;
    };
    if (!possible(width) || !possible(height)) {
        return "Breite und Höhe sind ganze Zahlen von 1 bis 30000";
    }
    if (std::int64_t{*width} * *height > render::kLargestPicture) {
        return "das Bild hätte mehr als 100 Millionen Pixel";
    }
    command.width = *width;
    command.height = *height;
    return "";
}

// "bilder/", and with the other slash where that is one.
bool NamesFolder(const std::string& name)
{
    const files::Path path = files::PathOf(name);
    return !path.empty() && !path.has_filename();
}

std::string TakeOutput(CommandLine& command, const std::string& value)
{
    if (!NamesFolder(value) && !render::FormatOf(value)) {
        return "Bilder gibt es als .png, .svg, .pdf und .emf";
    }
    command.output = value;
    return "";
}

std::string TakeCollection(CommandLine& command, const std::string& value)
{
    command.collection = value;
    return value.empty() ? "erwartet wird eine Sammlungsdatei" : "";
}

std::string TakeEntry(CommandLine& command, const std::string& value)
{
    command.entry = value;
    return "";
}

std::string TakeList(CommandLine& command, const std::string&)
{
    command.list = true;
    return "";
}

std::string TakeAll(CommandLine& command, const std::string&)
{
    command.all = true;
    return "";
}

// A number with a decimal comma, or point, and what follows it; nothing else.
std::optional<double> NumberBefore(std::string text, std::string_view unit)
{
    std::ranges::replace(text, ',', '.');
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string_view rest(end, static_cast<std::size_t>(text.data() + text.size() - end));
    if (error != std::errc() || Trimmed(rest) != unit) return std::nullopt;
    return number;
}

std::string TakeScale(CommandLine& command, const std::string& value)
{
    const std::optional<double> scale = NumberBefore(value, "cm");
    if (!scale) return "erwartet wird die Länge einer Einheit, zum Beispiel 1cm oder 0,5cm";
    if (!(*scale >= render::kSmallestScale && *scale <= render::kLargestScale)) {
        return "eine Einheit kann 0,001cm bis 1000cm lang sein";
    }
    command.picture.page.scale = scale;
    return "";
}

std::string TakeResolution(CommandLine& command, const std::string& value)
{
    const std::optional<double> resolution = NumberBefore(value, "");
    if (!resolution ||
        !(*resolution >= render::kLeastResolution && *resolution <= render::kMostResolution)) {
        return "erwartet werden 10 bis 2400 Punkte pro Zoll, zum Beispiel 300";
    }
    command.picture.resolution = *resolution;
    return "";
}

std::string TakeLandscape(CommandLine& command, const std::string&)
{
    command.picture.page.landscape = true;
    return "";
}

std::string TakeLegend(CommandLine& command, const std::string&)
{
    command.picture.page.legend = true;
    return "";
}

// Options that the format of the picture has no use for.
std::string UnusedPictureOption(const CommandLine& command)
{
    const std::optional<render::PictureFormat> format =
        command.all ? render::PictureFormat::Png : render::FormatOf(command.output);
    const bool page = format == render::PictureFormat::Pdf;
    const render::PictureOptions& picture = command.picture;
    if (picture.page.scale && !page && format != render::PictureFormat::Svg) {
        return "--massstab gibt es nur für --ausgabe mit .pdf und .svg";
    }
    if (picture.resolution != render::kUsualResolution && format != render::PictureFormat::Png) {
        return "--aufloesung gibt es nur für --ausgabe mit .png";
    }
    if (picture.page.landscape && !page) {
        return "--querformat gibt es nur für --ausgabe mit .pdf";
    }
    if (picture.page.legend && !page) return "--legende gibt es nur für --ausgabe mit .pdf";
    return "";
}

std::string TakeCalculation(CommandLine& command, const std::string& value)
{
    command.calculations.push_back(value);
    return "";
}

std::string TakePlaces(CommandLine& command, const std::string& value)
{
    const std::optional<int> places = WholeNumber(value);
    if (!places || *places < 0 || *places > kMostPlaces) {
        return "erwartet wird eine ganze Zahl von 0 bis 22";
    }
    command.places = places;
    return "";
}

std::string TakeTable(CommandLine& command, const std::string& value)
{
    const std::vector<std::string> parts = SplitTerms(value);
    if (parts.size() != 3 || AnyEmpty(parts)) {
        return "erwartet werden Anfang, Ende und Schrittweite, zum Beispiel -2;2;0,5";
    }
    command.table = value;
    return "";
}

struct Option
{
    std::string_view name;
    std::string_view value;  // what stands for the value in the help text, "" when there is none
    std::string (*take)(CommandLine&, const std::string&);
    bool repeatable;
    std::string_view help;
};

constexpr Option kOptions[] = {
    {"--zeichne", "TERM", TakeRow, true, "Term oder Gleichung, bis zu 13-mal: 'f(x)=a*sin(x)'"},
    {"--parameter", "NAME=TERM", TakeParameter, true, "Wert eines Parameters: a=2"},
    {"--x", "VON;BIS", TakeXRange, false, "x-Bereich: '-5;5' (sonst -10 bis 10)"},
    {"--y", "VON;BIS", TakeYRange, false, "y-Bereich (sonst in beiden Richtungen gleich skaliert)"},
    {"--intervall", "NAME:VON;BIS", TakeInterval, true,
     "Darstellungsintervall einer Funktion: 'f:0;2*pi', offen: 'f:0;oo'"},
    {"--winkel", "rad|deg|grad", TakeAngleMode, false, "Winkelmaß (sonst rad)"},
    {"--ausgabe", "DATEI", TakeOutput, false,
     "zeichnet in eine Datei statt ins Fenster: .png, .svg, .pdf oder .emf"},
    {"--groesse", "BREITExHÖHE", TakeSize, false, "Größe des Bildes in Pixeln (sonst 800x600)"},
    {"--aufloesung", "DPI", TakeResolution, false,
     "Pixel pro Zoll in einer PNG-Datei (sonst 96): Schrift und Linien wachsen mit"},
    {"--massstab", "LÄNGE", TakeScale, false,
     "Länge einer Einheit im PDF oder SVG: 1cm oder 0,5cm (sonst füllt das Bild die Seite)"},
    {"--querformat", "", TakeLandscape, false, "PDF-Seite im Querformat"},
    {"--legende", "", TakeLegend, false, "Terme und Parameterwerte unter dem Bild im PDF"},
    {"--rechne", "TERM", TakeCalculation, true, "gibt den Wert eines Terms aus"},
    {"--stellen", "ANZAHL", TakePlaces, false, "Nachkommastellen von --rechne (sonst 3)"},
    {"--tabelle", "VON;BIS;SCHRITT", TakeTable, false,
     "gibt eine Wertetabelle der Funktionen aus (CSV)"},
    {"--sammlung", "DATEI", TakeCollection, false, "nimmt die Plots einer Sammlungsdatei"},
    {"--liste", "", TakeList, false, "gibt Nummer und Namen ihrer Einträge aus, * für geschützte"},
    {"--eintrag", "NAME|NUMMER", TakeEntry, false,
     "wählt einen Eintrag (sonst die zuletzt bearbeiteten Daten)"},
    {"--alle", "", TakeAll, false, "zeichnet jeden Eintrag in den Ordner --ausgabe ORDNER/"},
};

const Option* FindOption(std::string_view name)
{
    const auto* const found = std::ranges::find(kOptions, name, &Option::name);
    return found == std::ranges::end(kOptions) ? nullptr : found;
}

// Options that do not go together; "" when all is well.
std::string Contradiction(const CommandLine& command)
{
    const bool choice = command.entry || command.all || command.list;
    if (choice && command.collection.empty()) {
        return "--liste, --eintrag und --alle brauchen --sammlung";
    }
    if (!command.collection.empty() && command.AsksForPlot()) {
        return "--sammlung bringt ihren Plot mit und verträgt sich nicht mit --zeichne, "
               "--parameter, --x, --y, --intervall und --winkel";
    }
    if (command.entry && command.all) return "--eintrag und --alle schließen sich aus";
    if (command.all != NamesFolder(command.output)) {
        return "--alle und --ausgabe ORDNER/ gehören zusammen";
    }
    if (command.all && (!command.calculations.empty() || command.table)) {
        return "--alle zeichnet nur";
    }
    if (command.entry && command.OpensWindow()) {
        return "--eintrag braucht --ausgabe, --rechne oder --tabelle";
    }
    return "";
}

}  // namespace

ParsedCommandLine ParseCommandLine(std::span<const std::string> arguments)
{
    ParsedCommandLine result;
    std::array<bool, std::size(kOptions)> seen{};
    const auto wrong = [&result](std::string complaint) -> ParsedCommandLine& {
        result.usage_error = std::move(complaint);
        return result;
    };

    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--hilfe" || argument == "--help") {
            result.command.help = true;
            return result;
        }
        if (argument == "--version") {
            result.command.version = true;
            return result;
        }
        const std::size_t equals = argument.find('=');
        const Option* option = FindOption(argument.substr(0, equals));
        const bool is_file = option == nullptr && !argument.starts_with('-');
        if (is_file) option = FindOption("--sammlung");
        if (option == nullptr) return wrong("Unbekanntes Argument: " + Quoted(argument));

        const std::string name(option->name);  // the argument may be a file's
        std::string value;
        if (is_file) {
            value = argument;
        } else if (option->value.empty()) {
            if (equals != std::string::npos) return wrong(name + " hat keinen Wert");
        } else if (equals != std::string::npos) {
            value = argument.substr(equals + 1);
        } else if (i + 1 < arguments.size() && FindOption(arguments[i + 1]) == nullptr) {
            value = arguments[++i];
        } else {
            return wrong(name + " braucht einen Wert: " + std::string(option->value));
        }

        bool& repeated = seen[static_cast<std::size_t>(option - std::begin(kOptions))];
        if (repeated && !option->repeatable) return wrong(name + " steht mehrfach da");
        repeated = true;
        if (!IsUtf8(value)) {
            if (result.input_error.empty()) {
                result.input_error = name + ": " + Quoted(value) + " ist kein Text in UTF-8";
            }
            continue;
        }
        const std::string complaint = option->take(result.command, value);
        if (!complaint.empty()) return wrong(name + " " + Quoted(value) + ": " + complaint);
    }
    std::string contradiction = Contradiction(result.command);
    if (contradiction.empty()) contradiction = UnusedPictureOption(result.command);
    if (!contradiction.empty()) return wrong(contradiction);
    return result;
}

std::string_view UsageLine()
{
    return "Aufruf: korvinth [--zeichne TERM] [--ausgabe DATEI] [--rechne TERM] "
           "[--tabelle VON;BIS;SCHRITT] ..., alles Weitere mit --hilfe";
}

std::string HelpText()
{
    constexpr std::size_t kHelpColumn = 30;
    std::string text =
        "Korvinth 2 zeichnet Graphen von Funktionen.\n"
        "Aufruf: korvinth [OPTION]... [SAMMLUNGSDATEI]\n\n";
    const auto add = [&text](std::string left, std::string_view help) {
        std::size_t shown = 0;  // characters, not bytes
        for (const char c : left) shown += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
        left.append(shown < kHelpColumn ? kHelpColumn - shown : 1, ' ');
        text += "  ";
        text += left;
        text += help;
        text += '\n';
    };
    for (const Option& option : kOptions) {
        const std::string value = option.value.empty() ? "" : " " + std::string(option.value);
        add(std::string(option.name) + value, option.help);
    }
    add("--hilfe, --help", "zeigt diese Hilfe");
    add("--version", "zeigt die Version");
    text +=
        "\nOhne --ausgabe, --rechne, --tabelle und --liste öffnet sich das Fenster. Werte folgen\n"
        "nach \"=\" oder als nächstes Argument; Grenzen sind Terme mit Dezimalkomma.\n";
    return text;
}

}  // namespace korvinth::app
