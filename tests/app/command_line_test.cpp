#include "app/command_line.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "app/message_text.h"

namespace korvinth::app {
namespace {

using Arguments = std::vector<std::string>;

CommandLine Parsed(const Arguments& arguments)
{
    const ParsedCommandLine parsed = ParseCommandLine(arguments);
    EXPECT_EQ(parsed.usage_error, "");
    EXPECT_EQ(parsed.input_error, "");
    return parsed.command;
}

TEST(CommandLine, TakesValuesAfterAnEqualsSignAndAsNextArgument)
{
    struct Case
    {
        std::string_view behaviour;
        Arguments arguments;
        BoundTerms x_range;
    };
    const Case cases[] = {
        {"after =", {"--x=-5;5"}, {"-5", "5"}},
        {"as next argument, beginning with a minus", {"--x", "-5;5"}, {"-5", "5"}},
        {"as next argument, beginning with two", {"--x", "--5;5"}, {"--5", "5"}},
        {"blanks around the bounds", {"--x= -pi ; 2 pi "}, {"-pi", "2 pi"}},
        {"decimal commas stay", {"--x=-1,5;2,5"}, {"-1,5", "2,5"}},
        {"semicolons in brackets separate nothing",
         {"--x=wenn(1;2;3);exp(2;3)"},
         {"wenn(1;2;3)", "exp(2;3)"}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(Parsed(row.arguments).x_range, row.x_range);
    }
}

TEST(CommandLine, CollectsEverythingThatMayRepeat)
{
    const CommandLine command = Parsed({"--zeichne", "f(x)=x^2", "--zeichne=-x", "--parameter",
                                        "a = 2", "--parameter=b=a=1", "--intervall", "f:0;2*pi",
                                        "--intervall=g:-oo;+oo", "--rechne", "1", "--rechne=2"});
    EXPECT_EQ(command.rows, (Arguments{"f(x)=x^2", "-x"}));
    EXPECT_EQ(command.parameters, (std::vector<CommandLine::Parameter>{{"a", "2"}, {"b", "a=1"}}));
    EXPECT_EQ(command.intervals,
              (std::vector<CommandLine::Interval>{{"f", {"0", "2*pi"}}, {"g", {"", ""}}}));
    EXPECT_EQ(command.calculations, (Arguments{"1", "2"}));
}

TEST(CommandLine, ReadsSettings)
{
    const CommandLine command =
        Parsed({"--winkel", "grad", "--groesse=1x30000", "--ausgabe", "-bild.PNG", "--stellen=22",
                "--tabelle", "-2;2;0,5", "--y=a;b"});
    EXPECT_EQ(command.angle_mode, term::TrigMode::Grads);
    EXPECT_EQ(command.width, 1);
    EXPECT_EQ(command.height, 30'000);
    EXPECT_EQ(command.output, "-bild.PNG");
    EXPECT_EQ(command.places, 22);
    EXPECT_EQ(command.table, "-2;2;0,5");
    EXPECT_EQ(command.y_range, (BoundTerms{"a", "b"}));
}

TEST(CommandLine, OpensTheWindowUnlessSomethingElseIsAskedFor)
{
    EXPECT_TRUE(Parsed({}).OpensWindow());
    EXPECT_TRUE(Parsed({"--zeichne", "x", "--x=0;1"}).OpensWindow());
    for (const std::string argument :
         {"--rechne=1", "--tabelle=0;1;1", "--ausgabe=a.png", "--hilfe", "--help", "--version"}) {
        SCOPED_TRACE(argument);
        EXPECT_FALSE(Parsed({"--zeichne", "x", argument}).OpensWindow());
    }
}

TEST(CommandLine, ComplainsAboutWrongCallsInOneLine)
{
    struct Case
    {
        std::string_view behaviour;
        Arguments arguments;
        std::string_view complaint;  // part of the message
    };
    const Case cases[] = {
        {"unknown option", {"--farbe=rot"}, "Unbekanntes Argument: „--farbe=rot“"},
        {"two collections", {"a.txt", "b.txt"}, "--sammlung steht mehrfach da"},
        {"the name of a file that would steer the terminal",
         {"a.txt", "b\n\x1B[2J"},
         "--sammlung steht mehrfach da"},
        {"an entry of nothing", {"--eintrag=1", "--ausgabe=a.png"}, "brauchen --sammlung"},
        {"a collection and a plot", {"a.txt", "--zeichne=x"}, "bringt ihren Plot mit"},
        {"all entries into one file", {"a.txt", "--alle", "--ausgabe=a.png"}, "ORDNER/"},
        {"a folder for one picture", {"--zeichne=x", "--ausgabe=a/"}, "ORDNER/"},
        {"a list with a value", {"a.txt", "--liste=1"}, "hat keinen Wert"},
        {"an abbreviated option", {"--zeich", "x"}, "Unbekanntes Argument"},
        {"value missing at the end", {"--rechne"}, "braucht einen Wert"},
        {"another option in the value's place",
         {"--ausgabe", "--rechne", "1"},
         "--ausgabe braucht"},
        {"a single option twice", {"--x=0;1", "--x=0;2"}, "mehrfach"},
        {"fourteen rows", Arguments(14, "--zeichne=x"), "höchstens 13"},
        {"one bound", {"--x=5"}, "zwei Grenzen"},
        {"three bounds", {"--y=1;2;3"}, "zwei Grenzen"},
        {"an empty bound", {"--y=;2"}, "zwei Grenzen"},
        {"parameter without a value", {"--parameter=a="}, "NAME=TERM"},
        {"parameter without a name", {"--parameter= =2"}, "NAME=TERM"},
        {"interval without a function", {"--intervall=0;1"}, "f:0;2*pi"},
        {"interval with one bound", {"--intervall=f:0"}, "f:0;2*pi"},
        {"unknown angle mode", {"--winkel=Rad"}, "rad, deg oder grad"},
        {"no cross in the size", {"--groesse=800"}, "800x600"},
        {"a side of nothing", {"--groesse=0x600"}, "1 bis 30000"},
        {"a side too long", {"--groesse=30001x1"}, "1 bis 30000"},
        {"a side beyond all numbers", {"--groesse=99999999999x1"}, "1 bis 30000"},
        {"a negative side", {"--groesse=-800x600"}, "1 bis 30000"},
        {"text after the size", {"--groesse=800x600px"}, "1 bis 30000"},
        {"more pixels than memory", {"--groesse=30000x30000"}, "100 Millionen"},
        {"an unknown format", {"--ausgabe=bild.jpg"}, ".png, .svg, .pdf und .emf"},
        {"no suffix", {"--ausgabe=png"}, ".png, .svg, .pdf und .emf"},
        {"a suffix in a folder's name", {"--ausgabe=a.png/b"}, ".png, .svg, .pdf und .emf"},
        {"a scale without its unit", {"--ausgabe=a.pdf", "--massstab=1"}, "1cm oder 0,5cm"},
        {"a scale of nothing", {"--ausgabe=a.pdf", "--massstab=0cm"}, "0,001cm bis"},
        {"a scale that is no number", {"--ausgabe=a.pdf", "--massstab=nancm"}, "0,001cm bis"},
        {"a scale for pixels", {"--massstab=1cm", "--ausgabe=a.png"}, "nur für"},
        {"a resolution without dots", {"--ausgabe=a.png", "--aufloesung=9"}, "10 bis 2400"},
        {"a resolution for lines", {"--ausgabe=a.svg", "--aufloesung=300"}, "nur für"},
        {"a page for an image", {"--ausgabe=a.png", "--querformat"}, "nur für"},
        {"a legend without a page", {"--ausgabe=a.svg", "--legende"}, "nur für"},
        {"a value for a switch", {"--ausgabe=a.pdf", "--legende=ja"}, "hat keinen Wert"},
        {"23 places", {"--stellen=23"}, "0 bis 22"},
        {"fewer than no places", {"--stellen", "-1"}, "0 bis 22"},
        {"table without a step", {"--tabelle=0;1"}, "Schrittweite"},
        {"control characters", {"--x=\x1b[2J\n"}, "„?[2J?“"},
        {"a megabyte", {"--x=" + std::string(1'000'000, '1')}, "111..."},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.behaviour);
        const std::string message = ParseCommandLine(row.arguments).usage_error;
        EXPECT_NE(message.find(row.complaint), std::string::npos) << message;
        EXPECT_EQ(message.find('\n'), std::string::npos);
        EXPECT_LT(message.size(), 300U);
    }
}

TEST(CommandLine, ReadsWhatAPictureIsToBeLike)
{
    const ParsedCommandLine page = ParseCommandLine(
        Arguments{"--querformat", "--legende", "--massstab", "0,5 cm", "--ausgabe=a.PDF"});
    ASSERT_EQ(page.usage_error, "");
    EXPECT_TRUE(page.command.picture.page.landscape);
    EXPECT_TRUE(page.command.picture.page.legend);
    EXPECT_EQ(page.command.picture.page.scale, 0.5);
    const ParsedCommandLine image =
        ParseCommandLine(Arguments{"--ausgabe=a.png", "--aufloesung=300"});
    EXPECT_EQ(image.usage_error, "");
    EXPECT_EQ(image.command.picture.resolution, 300);
}

TEST(CommandLine, RefusesBytesThatAreNoText)
{
    const ParsedCommandLine parsed = ParseCommandLine(Arguments{"--zeichne=x\xff", "--rechne=1"});
    EXPECT_EQ(parsed.usage_error, "");
    EXPECT_EQ(parsed.input_error, "--zeichne: „x?“ ist kein Text in UTF-8");
    EXPECT_EQ(parsed.command.calculations, Arguments{"1"}) << "what follows is still read";
}

TEST(MessageText, TellsUtf8FromOtherBytes)
{
    struct Case
    {
        std::string_view behaviour, bytes;
        bool is_text;
    };
    constexpr Case kCases[] = {
        {"nothing", "", true},
        {"umlauts, signs, emoji", "ä² ≤ \U0001F600", true},
        {"a lone continuation", "\x80", false},
        {"a character cut off", "\xE2\x89", false},
        {"overlong slash", "\xC0\xAF", false},
        {"overlong in three bytes", "\xE0\x80\xAF", false},
        {"a surrogate", "\xED\xA0\x80", false},
        {"the last character", "\xF4\x8F\xBF\xBF", true},
        {"one beyond", "\xF4\x90\x80\x80", false},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(IsUtf8(row.bytes), row.is_text);
    }
}

TEST(MessageText, ShowsOnlyWhatATerminalMayShow)
{
    EXPECT_EQ(Printable("a\tb\x7f\xC2\x9B"
                        "c\xFF"
                        "ä"),
              "a?b??c?ä");
    EXPECT_EQ(Printable("äöü", 5), "äö...") << "never half a character";
    EXPECT_EQ(Printable("äöü", 6), "äöü");
}

}  // namespace
}  // namespace korvinth::app
