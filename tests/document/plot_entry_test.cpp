#include "document/plot_entry.h"

#include <random>
#include <string>
#include <vector>

#include "document/additional_lines.h"
#include "document/additional_points.h"
#include "document/collection_file.h"
#include "document/interval_text.h"
#include "document/list_text.h"
#include "document/plot_undo.h"
#include "document/storable_text.h"
#include "plot_fixture.h"
#include "shown_entry.h"
#include "term/words.h"

namespace korvinth::document {
namespace {

using term::ReplaceAll;

// Through the bytes of a file and back.
CollectionEntry ThroughAFile(const CollectionEntry& entry)
{
    Collection written;
    written.buffer = entry;
    written.entries.push_back(entry);
    Collection read;
    EXPECT_EQ(ReadCollection(WriteCollection(written), ReadMode::Open, read), "");
    EXPECT_EQ(read.buffer, entry);
    read.entries.at(0).Set(Column::ShortText, "");
    return read.entries.at(0);
}

class PlotEntryTest : public PlotTest
{
protected:
    void SetValue(std::string_view name, double value)
    {
        Parameter* parameter = document.FindParameter(name);
        ASSERT_NE(parameter, nullptr) << name;
        parameter->value = value;
    }

    Parameter Find(std::string_view name)
    {
        const Parameter* parameter = document.FindParameter(name);
        EXPECT_NE(parameter, nullptr) << name;
        return parameter == nullptr ? Parameter() : *parameter;
    }

    void SetInterval(int slot, std::string_view lower, std::string_view upper)
    {
        document.slots[Slot(slot)].lower_bound = lower;
        document.slots[Slot(slot)].upper_bound = upper;
        document.slots[Slot(slot)].interval = IntervalText(lower, upper);
    }

    // What columns 2 to 6, 11 and 12 of the plot's entry hold, line by line.
    std::string Lines() const
    {
        const CollectionEntry entry = EntryOfPlot(document, ranges);
        std::string text;
        for (const Column column :
             {Column::Functions, Column::Parameters, Column::Details, Column::Ranges,
              Column::Integrals, Column::Lines, Column::Points}) {
            if (!entry[column].empty()) text += ReplaceAll(entry[column], "\r\n", "\n") + "\n";
        }
        return text;
    }

    std::string FillAndApply(const CollectionEntry& entry)
    {
        const std::string messages = FillPlot(entry, document);
        Apply();
        return messages;
    }

    CollectionEntry EntryOfLines(std::string_view lines)
    {
        Collection collection;
        const std::string text = "[Funktionenplotter]\n{" + std::string(lines) + "}";
        EXPECT_EQ(ReadCollection(text, ReadMode::Open, collection), "");
        return collection.entries.at(0);
    }

    // What an entry tells of a plot: the colour of a function, not its place in the table, and
    // nothing of rows that are none.
    static PlotSnapshot Described(const PlotDocument& plot)
    {
        PlotSnapshot seen = TakeSnapshot(plot);
        for (const SlotIndex index : AllSlots()) {
            seen.rows[index] = term::TrimBlanks(seen.rows[index]);
            PlotSnapshot::Slot& slot = seen.slots[index];
            const bool used = !slot.name.empty();
            const Colour colour = plot.attributes.slots[SlotIndex{slot.colour_index}].colour;
            if (!used) slot = PlotSnapshot::Slot();
            slot.look = plot.attributes.slots[index];
            slot.look.colour = used ? colour : Colour();
            slot.colour_index = 0;
        }
        std::erase_if(seen.parameters, [&](const PlotSnapshot::ParameterState& state) {
            return plot.dormant_parameters.contains(state.name);
        });
        seen.lines_text = ReadList(Text2List(plot.lines_text));
        seen.points_text = ReadPoints(Text2Points(plot.points_text));
        return seen;
    }

    // The plot comes back from its entry, and the entry from that plot.
    void ExpectRoundTrip()
    {
        const PlotDocument before = document;
        const CollectionEntry entry = EntryOfPlot(document, ranges);
        ASSERT_EQ(ThroughAFile(entry), entry);
        Apply({"h(x)=p*x^2", "k(x)=q"});  // another plot lies between
        document.slots[Slot(0)].visible = false;
        document.lines_text = "y=7";
        document.attributes = DisplayAttributes();
        EXPECT_EQ(FillAndApply(entry), "");
        EXPECT_EQ(EntryOfPlot(document, ranges), entry) << Lines();
        const PlotSnapshot now = Described(document);
        const PlotSnapshot then = Described(before);
        EXPECT_TRUE(now.SamePlot(then)) << Lines();
        EXPECT_EQ(now.parameters, then.parameters);
        for (const SlotIndex index : AllSlots()) {
            EXPECT_EQ(document.slots[index].parser_term, before.slots[index].parser_term);
            EXPECT_EQ(document.slots[index].curve_link, before.slots[index].curve_link);
        }
    }

    DisplayedRanges ranges;
};

TEST_F(PlotEntryTest, IsWrittenInThisForm)
{
    Apply({"f(x)=a*x^2+u1", "", "G(x)=F(x)", "xk(t)=3*cos(t)", "yk(t)=asy*sin(t)", "k="});
    document.slots[Slot(2)].visible = false;
    document.slots[Slot(0)].support_points = 500;
    document.slots[Slot(0)].point_radius = 3;
    document.slots[Slot(2)].support_points = 700;
    SetInterval(0, "0", "");
    SetInterval(3, "0", "wenn(a==1;2;2*pi)");
    SetValue("a", 0.1);
    SetValue("Gu", -2.5);
    document.FindParameter("a")->coupling = Coupling::Y;
    document.FindParameter("asy")->family = true;
    document.ranges.y_lower = "-3";
    document.ranges.y_upper = "a+1";
    ranges.y_lower = -3;
    ranges.y_upper = 1.1;
    document.lines_text =
        TakeLines(std::vector<AdditionalLine>{{"y=7\\n*x", LineType::Dot, {}, true}});
    document.points_text =
        ReadPoints(std::vector<AdditionalPoint>{{.x = "a", .y = "2", .name = "Ä"}});
    document.unknown_lines = "Z[1]\r\n2w=x";
    EXPECT_EQ(Lines(), R"(f(x)=a*x^2+u1
$
$G(x)=F(x)
xk(t)=3*cos(t)
yk(t)=asy*sin(t)
$$k=
a=0.1
Dxk[0;wenn(a==1;2;2*pi)]
2w=x
PGu[-10;10;0;0;0;0]
PGanz[2;20000;0;0;0;0]
Pa[-10;10;0;0;2;0]
Pu1[-10;10;0;0;0;0]
Pasy[-10;10;0;0;0;1;1]
Sf[3;0;500]
SG[0;0;0]
Sxk[0;0;0]
Syk[0;0;0]
Sk[0;0;0]
Z[1]
x[-10;10]
y[-3;1.1]
y$[-3;a+1]
t[0;6.283185307179586]
t$[0;2*pi]
Df[0;]
u[G]=-2.5
u[G,anz]=1001
u1=1
y=7\ n*x:c=+2:-1
(a)(2):n=Ä
)");
}

struct PlotCase
{
    std::string_view behaviour;
    std::initializer_list<std::string_view> rows;
};
const PlotCase kPlotCases[] = {
    {"curves, an integral, functions of functions",
     {"x1(t)=r*cos(t)", "y1(t)=r*sin(t)", "f(x)=x^2", "F(x)", "g(s)=f(s)+f'(s)", "q=F(x)"}},
    {"rows without names, comparisons, signs",
     {"x²≤4 und x>1", "1:2", "wenn(x==a;1;2)", "fill(x^2)"}},
    {"a row with a fault and rows behind it", {"f(x)=b*x", "g(x)==2", "", "h(x)=c", " \\n {x} $"}},
    {"a fault of a row that begins with a mark",
     {"$f(x)=2=", "$$x", "Sf[1;0;0]", "u[f]=1", "x[0;1]"}},
    {"names that read as marks",
     {"f(x)=asy+Punkte+Attribs+Coltab+LDicke+LArt+u+D+S+P+x_int+short"}},
    {"functions whose names are marks",
     {"P(x)=1", "S(x)=2", "D(x)=a", "u(x)=3", "y(x)=4", "t(x)=5"}},
    {"a very long row", {"f(x)=sin(x)", "g(x)=1+2+3+4+5+6+7+8+9+10+11+12+13+14+15+16+17+18+19"}},
    {"thirteen rows, the last ones only", {"", "", "", "", "", "", "", "", "", "", "", "x", "2*x"}},
    {"nothing", {}},
};

TEST_F(PlotEntryTest, PlotsComeBackFromFiles)
{
    for (const PlotCase& row : kPlotCases) {
        SCOPED_TRACE(row.behaviour);
        document = PlotDocument();
        SetRows(row.rows);
        for (std::string& text : document.rows) text = StorableTerm(text);
        Apply();
        ExpectRoundTrip();
    }
}

TEST_F(PlotEntryTest, RandomPlotsComeBackFromFiles)
{
    constexpr unsigned kSeed = 6;
    RecordProperty("seed", static_cast<int>(kSeed));
    std::mt19937 generator(kSeed);
    const auto pick = [&](const std::vector<std::string>& from) {
        return from[generator() % from.size()];
    };
    std::vector<std::string> rows{
        "",        "f(x)=a*x",        "g(t)=b+u1",  "xk(t)=r*t",   "yk(t)=dichte", "h(x)=F(x)",
        "fill(x)", "x^asy",           "k(x)=\\n+(", "m(x)",        "w(x)=2*x_int", "v(x)=c^d",
        "l(x)=-x", "p(x)=f(x)+g'(x)", "n(x)=ü",     "  q = a ≤ b "};
    const std::vector<std::string> bounds{"",   "0",    "a",        "(b)=1", "b==2",
                                          "(1", "2*pi", "max(1,2)", "-1,5"};
    const std::vector<std::string> range_terms{"-a", "1/3", "-5,5", "wenn(a=1;1;2)"};
    const auto number = [&] { return std::ldexp(static_cast<double>(generator()) - 2e9, -20); };
    int with_faults = 0;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        document = PlotDocument();
        std::shuffle(rows.begin(), rows.end(), generator);
        for (const SlotIndex index : AllSlots()) {
            if (generator() % 4 == 0) {
                document.rows[index] = StorableTerm(rows[static_cast<std::size_t>(index)]);
            }
        }
        with_faults += Apply().errors.empty() ? 0 : 1;
        std::shuffle(document.attributes.slots.begin(), document.attributes.slots.end(), generator);
        document.attributes.slots[Slot(round % kSlotCount)].width = 7;
        document.attributes.slots[Slot(round % kSlotCount)].type = LineType::DashDot;
        document.attributes.x_axis_name = "Zeit ü%";
        document.attributes.y_axis_name = pick(bounds);
        document.attributes.family_count = static_cast<int>(generator() % 9);
        document.attributes.axis_colour = Colour{static_cast<std::int32_t>(generator() % 999)};
        int colour = static_cast<int>(generator() % kSlotCount);
        for (FunctionSlot& slot : document.slots) {
            slot.colour_index = static_cast<std::int16_t>(colour++ % kSlotCount);
            slot.visible = generator() % 3 != 0;
            if (slot.name.empty()) continue;
            slot.family_allowed = generator() % 2 == 0;
            slot.point_radius = static_cast<std::int16_t>(generator() % 11);
            slot.lower_bound = pick(bounds);
            slot.upper_bound = pick(bounds);
            slot.interval = IntervalText(slot.lower_bound, slot.upper_bound);
        }
        if (round % 2 == 0)
            document.ranges = {pick(range_terms), "9", "", "", "-1", pick(range_terms)};
        document.lines_text = TakeLines(std::vector<AdditionalLine>{
            {LineEquation(StorableTerm(pick(rows))), LineType::Dash, Colour{5}, round % 2 == 0},
            {"x=" + pick(bounds), LineType::Solid, {}, false}});
        document.points_text = ReadPoints(
            std::vector<AdditionalPoint>{{.x = "1}", .y = pick(range_terms), .name = "A:\\n{}"},
                                         {.x = pick(range_terms), .y = "b", .name = ""}});
        Apply();
        bool family = false;
        for (Parameter& parameter : document.parameters) {
            if (parameter.name.empty()) continue;
            const bool whole = (parameter.state & (kSampleCountState | kIntegerState)) != 0;
            parameter.value = whole ? 17 : number();
            parameter.coupling = Coupling{static_cast<int>(generator() % 4)};
            parameter.mode = AnimationMode{static_cast<int>(generator() % 2)};
            if ((parameter.state & kSampleCountState) == 0) parameter.lower = -5000 - number();
            parameter.step = 0.1;
            parameter.family = !std::exchange(family, true);
        }
        ranges = {number() - 5000, 9 + number() * number(), -1e15, 1e-300, -1, 1e15};
        if (!(ranges.x_lower < ranges.x_upper) || std::abs(ranges.x_upper) > 1e15)
            ranges.x_upper = 1e9;
        ExpectRoundTrip();
        if (HasFailure()) break;
    }
    EXPECT_GT(with_faults, 50);
    EXPECT_LT(with_faults, 350);
}

TEST_F(PlotEntryTest, WhatAnEntryDoesNotStateHasItsDefault)
{
    EXPECT_EQ(FillAndApply(EntryOfLines("f(x)=a*x\nx[0;5]\ny$[;]\nPa[0;5]\nSf[2]\nZ[(1)]")), "");
    EXPECT_EQ(document.rows[Slot(0)], "f(x) = a*x");
    EXPECT_EQ(document.ranges.x_upper, "5");
    EXPECT_EQ(document.ranges.y_upper, "");
    EXPECT_EQ(document.ranges.t_upper, "2*pi");
    EXPECT_EQ(Find("a").value, 1);
    EXPECT_EQ(Find("a").upper, 5);
    EXPECT_EQ(document.slots[Slot(0)].point_radius, 2);
    EXPECT_EQ(document.unknown_lines, "Z[(1)]");

    // Of an integral function, in whatever order the lines come.
    EXPECT_EQ(FillAndApply(EntryOfLines("PGanz[5;10]\nPGu[0;3]\nu[G,anz]=7\nG(x)=F(x)\nf(x)=x")),
              "");
    EXPECT_EQ(Find("Ganz").value, 7);
    EXPECT_EQ(Find("Ganz").upper, 10);
    EXPECT_EQ(Find("Gu").value, 0);
    EXPECT_EQ(Find("Gu").upper, 3);
    EXPECT_EQ(document.unknown_lines, "");
}

constexpr std::string_view kWrongLines =
    "a=1e999|a=nan|a=|a=1x|b_int=0.5|u[f]=x|u[f,anz]=1e9|Pa[5;1]|Pa[1;inf]|Pa[0;1;2]|Pa[0;1;0;2]|"
    "Pa[0;1;0;0;4]|Pa[0;1;0;0;0;2]|Pa[0;1;0;0;0;0;z]|Sf[11]|Sf[0;2]|Sf[0;0;1]|Sf[0;0;20001]|"
    "Sf[0;0;2.5]|Sh[0]|Dh[0;1]|Df[0]|x[1;1]|x[nan;1]|y[0;1e16]|y[0]|x$[;]|y$[;1]|y$[  "
    ";1]|t$[\x04;1]|x$[1]|"
    "$h(x)=$\n$\n$\n$\n$\n$\n$\n$\n$\n$\n$\n$\n$";

TEST_F(PlotEntryTest, WrongItemsAreNamedOnceAndTheRestIsTaken)
{
    for (const std::string_view line : SplitText(kWrongLines, "|")) {
        SCOPED_TRACE(line);
        const std::string messages =
            FillAndApply(EntryOfLines("f(x)=a*x\n" + std::string(line) + "\nt[0;3]"));
        const std::string_view last = line.substr(line.rfind('\n') + 1);
        EXPECT_TRUE(messages.starts_with("„" + std::string(last) + "“: ")) << messages;
        EXPECT_EQ(messages.find('\n'), std::string::npos) << messages;
        EXPECT_NE(document.slots[Slot(0)].parser_term, "");
        EXPECT_EQ(document.ranges.t_upper, "3");
        EXPECT_TRUE(std::isfinite(Find("a").value));
        EXPECT_LT(Find("a").lower, Find("a").upper);
    }
    // A parameter that turns out to be a sample count keeps to its bounds.
    EXPECT_EQ(FillAndApply(EntryOfLines("fanz=1e300\nPfanz[-5;1e300]\nf(x)=G(x)\ng(x)=x")), "");
    EXPECT_EQ(Find("fanz").value, 20000);
    EXPECT_EQ(Find("fanz").upper, 20000);
    // Two parameters of families would multiply.
    EXPECT_EQ(FillAndApply(EntryOfLines("Pa[0;1;0;0;0;1]\nPb[0;1;0;0;0;1]")),
              "„Pb[0;1;0;0;0;1]“: Nur ein Parameter kann Scharparameter sein");
}

// Whatever a file holds: what is taken of it is a plot that comes back.
TEST_F(PlotEntryTest, RandomLinesGiveAPlotThatComesBack)
{
    constexpr unsigned kSeed = 7;
    RecordProperty("seed", static_cast<int>(kSeed));
    std::mt19937 generator(kSeed);
    const std::vector<std::string> pieces{
        "f",  "g",    "x",    "y",    "t",    "a",      "u",   "D",   "P",    "S",
        "(",  ")",    "(x)",  "(t)",  "=",    "==",     "[",   "]",   ";",    "$",
        "$$", "\r\n", "\r\n", "\r\n", "1",    "-2",     "1e9", "nan", "+",    "*",
        "²",  "F(x)", "anz",  ",anz", "x$[",  "u[",     "Pa[", "Df[", "Sf[",  " ",
        "\\", "n",    "{",    "ü",    ":c=+", "dichte", "asy", ".5",  "_int", "'"};
    const auto text = [&] {
        std::string joined;
        for (std::size_t count = generator() % 40; count > 0; --count) {
            joined += pieces[generator() % pieces.size()];
        }
        return joined;
    };
    int drawn = 0;
    for (int round = 0; round < 3000; ++round) {
        CollectionEntry first;
        for (int column = 2; column < kColumnCount; ++column) first.Set(Column{column}, text());
        SCOPED_TRACE(Shown(first));
        FillAndApply(first);
        drawn += document.slots_in_use > 0 ? 1 : 0;
        const CollectionEntry entry = EntryOfPlot(document, ranges);
        ASSERT_EQ(ThroughAFile(entry), entry);
        ASSERT_EQ(FillAndApply(entry), "");
        ASSERT_EQ(EntryOfPlot(document, ranges), entry);
    }
    EXPECT_GT(drawn, 300);
}

TEST_F(PlotEntryTest, HugeEntriesAreCutToWhatTheWindowsCouldHold)
{
    CollectionEntry entry;
    std::string many_lines, many_values;
    for (int i = 0; i < 20000; ++i) {
        many_lines += "y=1:c=+0\r\n";
        many_values += "a" + std::to_string(i) + "=1\r\n";
    }
    entry.Set(Column::Lines, many_lines);
    entry.Set(Column::Parameters, many_values);
    entry.Set(Column::Functions, "f(x)=" + std::string(100'001, '1'));
    const std::string messages = FillPlot(entry, document);
    EXPECT_EQ(Text2List(document.lines_text).size(), kMostListItems);
    EXPECT_EQ(document.dormant_parameters.size(), kMostParameterNames);
    EXPECT_EQ(document.rows[Slot(0)], "");
    EXPECT_TRUE(messages.ends_with("... und 28991 weitere")) << messages;
}

}  // namespace
}  // namespace korvinth::document
