#include "app/headless.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "app/collection_run.h"
#include "document/list_text.h"
#include "tests/render/pixel_count.h"

namespace korvinth::app {
namespace {

using render::CountPixels;
using Arguments = std::vector<std::string>;

struct Outcome
{
    int status = 0;
    std::string out, errors;
};

Outcome Call(const Arguments& arguments)
{
    std::ostringstream out;
    std::ostringstream errors;
    const ParsedCommandLine parsed = ParseCommandLine(arguments);
    int status = ReportFaults(parsed, errors);
    if (status == kAllWell) {
        EXPECT_FALSE(parsed.command.OpensWindow());
        status = RunHeadless(parsed.command, out, errors);
    }
    return {status, out.str(), errors.str()};
}

Arguments Separated(std::string_view text)
{
    const std::vector<std::string_view> parts = document::SplitText(text, "|");
    return {parts.begin(), parts.end()};
}

document::Colour SlotColour(int slot)
{
    return document::DisplayAttributes()
        .slots[document::SlotIndex{static_cast<std::int16_t>(slot)}]
        .colour;
}

TEST(Headless, ListsAndDrawsTheEntriesOfACollection)
{
    const QTemporaryDir folder;
    const std::string file = folder.filePath("a.txt").toStdString();
    const std::string picture = folder.filePath("a.png").toStdString();
    QFile source(folder.filePath("a.txt"));
    ASSERT_TRUE(source.open(QIODevice::WriteOnly));
    source.write(
        "[Funktionenplotter]\r\n{short:one\r\nf(x)=3\r\na=2}\r\n"
        "{*short:Gl\xFC/ck\r\nf(x)=a*x\r\na=7}\r\n{short:bad\r\nf(x)=x\r\nx[1;]\r\nt[1;]}\r\n");
    source.close();

    Outcome outcome = Call({file, "--liste"});
    EXPECT_EQ(outcome.out, "1   one\n2 * Glü/ck\n3   bad\n");
    EXPECT_EQ(outcome.status, kAllWell);
    for (const char* const entry : {"2", "Glü/ck"}) {
        EXPECT_EQ(Call({file, "--eintrag", entry, "--rechne=f(2)"}).out, "14\n");
    }
    outcome = Call({file, "--eintrag=none", "--ausgabe", picture});
    EXPECT_EQ(outcome.status, kInputError);
    EXPECT_EQ(outcome.errors, "Einen Eintrag „none“ gibt es nicht\n");
    outcome = Call({file, "--ausgabe", picture});
    EXPECT_EQ(outcome.status, kInputError) << "no plot beside the entries";
    EXPECT_FALSE(QFile::exists(QString::fromStdString(picture)));
    EXPECT_EQ(Call({file, "--eintrag=1", "--ausgabe", picture}).status, kAllWell);
    EXPECT_GT(CountPixels(QImage(QString::fromStdString(picture)), SlotColour(0)), 300);

    outcome = Call({file, "--alle", "--ausgabe", folder.path().toStdString() + "/"});
    EXPECT_EQ(outcome.status, kInputError);
    EXPECT_EQ(outcome.errors, "„bad“: „x[1;]“: Das ist keine Zahl\n„t[1;]“: Das ist keine Zahl\n");
    for (const char* const name : {"1-one.png", "2-Glü_ck.png", "3-bad.png"}) {
        EXPECT_TRUE(QFile::exists(folder.filePath(name))) << name;
    }
    outcome = Call({file, "--alle", "--ausgabe=/none/"});
    EXPECT_EQ(outcome.errors, "„/none/“: Den Ordner gibt es nicht\n");
    EXPECT_EQ(Call({folder.filePath("none.txt").toStdString(), "--liste"}).status, kInputError);

    std::vector<std::size_t> progress;
    Application application;
    application.SetAreaSize(40, 30);
    DrawAll(application, ReadCollectionFile(file).collection, folder.path().toStdString() + "/", {},
            [&](std::size_t done, std::size_t count) {
                EXPECT_EQ(count, 3U);
                progress.push_back(done);
            });
    EXPECT_EQ(progress, (std::vector<std::size_t>{1, 2, 3}));
}

// Arguments stand between "|".
TEST(Headless, CalculatesAndTabulates)
{
    struct Case
    {
        std::string_view behaviour, arguments, out;
    };
    constexpr Case kCases[] = {
        {"German notation, decimal point in the result", "--rechne|1,5*wurzel(4)", "3\n"},
        {"three places", "--rechne=2/3", "0.667\n"},
        {"as many places as asked for", "--rechne=2/3|--stellen=5", "0.66667\n"},
        {"a negative term as next argument", "--rechne|-2^2", "-4\n"},
        {"several terms, a line each", "--rechne=1|--rechne=2", "1\n2\n"},
        {"the empty term", "--rechne=", "0\n"},
        {"functions of the rows", "--zeichne=f(x)=x^2|--rechne=f(2)", "4\n"},
        {"functions named by the free letters", "--zeichne=x|--zeichne=3x|--rechne=g(2)", "6\n"},
        {"parameters of the rows", "--zeichne=a*x|--parameter=a=2|--rechne=f(3)+a", "8\n"},
        {"a parameter that no row uses", "--parameter=a=2|--rechne=a+1", "3\n"},
        {"parameters built on earlier ones", "--parameter=a=1,5|--parameter|b=2a|--rechne=b",
         "3\n"},
        {"degrees", "--winkel=deg|--rechne=sin(90)", "1\n"},
        {"grads", "--winkel=grad|--rechne=sin(100)", "1\n"},
        {"derivatives with a fine step", "--zeichne=f(x)=x^2|--rechne=f'(3)", "6\n"},
        {"a table", "--zeichne|f(x)=x^2|--zeichne=g(x)=1/x|--tabelle|-1;1;0,5",
         "x;f(x);g(x)\n-1;1;-1\n-0,5;0,25;-2\n0;0;\n0,5;0,25;2\n1;1;1\n"},
        {"a table long enough for the block form of the evaluator",
         "--zeichne=betrag(x)|--zeichne=floor(x/2)|--tabelle=-9;-1;1",
         "x;f(x);g(x)\n-9;9;-5\n-8;8;-4\n-7;7;-4\n-6;6;-3\n-5;5;-3\n-4;4;-2\n-3;3;-2\n-2;2;-1\n"
         "-1;1;-1\n"},
        {"calculator before table", "--zeichne=x|--tabelle=0;0;1|--rechne=7", "7\nx;f(x)\n0;0\n"},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.behaviour);
        const Outcome outcome = Call(Separated(row.arguments));
        EXPECT_EQ(outcome.out, row.out);
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, kAllWell);
    }
}

TEST(Headless, ReportsWrongInputAndPrintsNothingElse)
{
    struct Case
    {
        std::string_view behaviour;
        std::string arguments;
        std::string_view out;      // what stdout begins with
        std::string_view message;  // part of stderr
    };
    const Case cases[] = {
        {"an undefined name", "--rechne=x", "Error: Syntax\n", "„x“"},
        {"a division by zero", "--rechne=1/0", "Error: Division durch 0\n", "Division durch 0"},
        {"one wrong term of two", "--rechne=1|--rechne=x", "Error: Syntax\n", "Syntax"},
        {"a wrong row leaves the result unsaid", "--zeichne=f(x)=(x|--rechne=1", "", "f(x)"},
        {"a wrong row leaves the table unsaid", "--zeichne=f(x)=(x|--tabelle=0;1;1", "", "f"},
        {"two rows of one name", "--zeichne=f(x)=1|--zeichne=f(x)=2|--rechne=1", "",
         "Funktionsname f wird bereits verwendet!"},
        {"bounds in the wrong order", "--x=5;-5|--rechne=1", "", "x-Bereich: Die untere"},
        {"bounds without a value", "--y=1/0;5|--rechne=1", "", "Division durch 0"},
        {"bounds beyond the number format", "--x=0;10^16|--rechne=1", "", "10^15"},
        {"bounds too close", "--x=10^9;10^9+10^-6|--rechne=1", "", "zu schmal"},
        {"an interval of no function", "--zeichne=x|--intervall=k:0;1|--rechne=1", "",
         "keine Funktion „k“"},
        {"a parameter that is no name", "--parameter=2a=1|--rechne=1", "", "kein Name"},
        {"a parameter named as a constant", "--parameter=pi=3|--rechne=1", "", "vergeben"},
        {"a parameter without a value", "--parameter=a=ln(0)|--rechne=1", "", "Parameter „a“"},
        {"a table without end", "--zeichne=x|--tabelle=0;1;0", "", "Tabelle"},
        {"bytes that are no text", "--rechne=\xff", "", "UTF-8"},
        {"a megabyte of brackets", "--rechne=" + std::string(1'000'000, '('), "Error: ", "((("},
        {"a megabyte row", "--zeichne=" + std::string(1'000'000, 'x') + "|--rechne=1", "", "f"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.behaviour);
        const Outcome outcome = Call(Separated(row.arguments));
        EXPECT_EQ(outcome.out.empty(), row.out.empty());
        EXPECT_TRUE(outcome.out.starts_with(row.out)) << outcome.out;
        EXPECT_NE(outcome.errors.find(row.message), std::string::npos) << outcome.errors;
        EXPECT_EQ(outcome.status, kInputError);
    }
}

TEST(Headless, AnswersWrongCallsWithOneLineOfUsage)
{
    const Outcome outcome = Call({"--farbe=rot", "--rechne=1"});
    EXPECT_EQ(outcome.status, kWrongCall);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(outcome.errors.starts_with("Unbekanntes Argument: „--farbe=rot“. Aufruf: "));
    EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1);
}

TEST(Headless, HelpAndVersionAreResults)
{
    EXPECT_TRUE(Call({"--version"}).out.starts_with("Korvinth 2."));
    const Outcome help = Call({"--help"});
    EXPECT_EQ(help.out, HelpText());
    EXPECT_EQ(help.status, kAllWell);
}

TEST(Headless, ASinkThatTakesNothingIsReported)
{
    std::ostringstream out;
    std::ostringstream errors;
    out.setstate(std::ios::badbit);
    CommandLine command;
    command.calculations = {"1"};
    EXPECT_EQ(RunHeadless(command, out, errors), kInputError);
    EXPECT_NE(errors.str(), "");
}

class HeadlessPicture : public testing::Test
{
protected:
    std::string File(const char* name) const { return folder_.filePath(name).toStdString(); }
    // A picture of 200 x 100 pixels of the graph of 1 with further arguments.
    QImage Drawn(const Arguments& further) const
    {
        Arguments arguments = {"--zeichne=1", "--x=-5;5", "--groesse=200x100", "--ausgabe",
                               File("bild.png")};
        arguments.insert(arguments.end(), further.begin(), further.end());
        EXPECT_EQ(Call(arguments).status, kAllWell);
        return Picture(File("bild.png"));
    }
    static QImage Picture(const std::string& file) { return QImage(QString::fromStdString(file)); }

    QTemporaryDir folder_;
};

TEST_F(HeadlessPicture, ShowsTheGraphsInTheirColours)
{
    const std::string file = File("bild.png");
    const Outcome outcome =
        Call({"--zeichne", "f(x)=a*sin(x)+b", "--zeichne", "x^2", "--parameter=a=2", "--x=-5;5",
              "--y=-3;3", "--groesse=400x300", "--ausgabe", file, "--rechne=a"});
    EXPECT_EQ(outcome.status, kAllWell);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.out, "2\n");
    const QImage picture = Picture(file);
    ASSERT_EQ(picture.size(), QSize(400, 300));
    EXPECT_GT(CountPixels(picture, SlotColour(0)), 100);
    EXPECT_GT(CountPixels(picture, SlotColour(1)), 100);
    EXPECT_EQ(CountPixels(picture, SlotColour(2)), 0);
}

TEST_F(HeadlessPicture, FollowsRangesAndIntervals)
{
    // y = 1 crosses the whole picture, or the part from 0 to 5 of -5 to 5; one scale on both axes
    // puts it 20 pixels above the middle.
    const QImage whole = Drawn({});
    const QImage part = Drawn({"--intervall=f:0;oo"});
    const QImage high = Drawn({"--y=0;100"});  // 1 is a pixel above the edge
    EXPECT_EQ(CountPixels(high.copy(0, 0, 200, 90), SlotColour(0)), 0);

    const QRect left_half(0, 26, 95, 8);
    const QRect right_half(105, 26, 85, 8);
    EXPECT_GT(CountPixels(whole.copy(left_half), SlotColour(0)), 80);
    EXPECT_GT(CountPixels(whole.copy(right_half), SlotColour(0)), 70);
    EXPECT_EQ(CountPixels(part.copy(left_half), SlotColour(0)), 0);
    EXPECT_GT(CountPixels(part.copy(right_half), SlotColour(0)), 70);
}

TEST_F(HeadlessPicture, ATermWithoutValuesIsANoteOnly)
{
    const Outcome outcome =
        Call({"--zeichne=wurzel(x)", "--x=-5;-1", "--groesse=50x50", "--ausgabe", File("a.png")});
    EXPECT_EQ(outcome.status, kAllWell);
    EXPECT_NE(outcome.errors, "");
    EXPECT_FALSE(Picture(File("a.png")).isNull());
    const Outcome shifted = Call(
        {"--zeichne=wurzel(x-100)", "--x=100;110", "--groesse=50x50", "--ausgabe", File("b.png")});
    EXPECT_EQ(shifted.errors, "") << "it has values in the range that is shown";
}

TEST_F(HeadlessPicture, AnErrorWritesNothing)
{
    const std::string file = File("bild.png");
    EXPECT_EQ(Call({"--zeichne=f(x)=(x", "--ausgabe", file}).status, kInputError);
    EXPECT_EQ(Call({"--rechne=1/0", "--ausgabe", file}).status, kInputError);
    EXPECT_FALSE(QFile::exists(QString::fromStdString(file)));
}

TEST_F(HeadlessPicture, AFileThatCannotBeWrittenIsReportedWithItsName)
{
    const std::string in_no_folder = File("nirgends/bild.png");
    const Outcome outcome =
        Call({"--zeichne=x", "--groesse=50x50", "--ausgabe", in_no_folder, "--rechne=1"});
    EXPECT_EQ(outcome.status, kInputError);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.errors.find("“: Den Ordner gibt es nicht"), std::string::npos)
        << outcome.errors;

    ASSERT_TRUE(QFile::link("/dev/null", QString::fromStdString(File("null.png"))));
    EXPECT_EQ(Call({"--groesse=50x50", "--ausgabe", File("null.png")}).status, kInputError);
    EXPECT_FALSE(QFileInfo("/dev/null").isFile());
}

}  // namespace
}  // namespace korvinth::app
