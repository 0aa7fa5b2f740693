#include "document/collection_editor.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace korvinth::document {
namespace {

CollectionEntry Named(std::string name, std::string terms = "")
{
    CollectionEntry entry;
    entry.Set(Column::ShortText, std::move(name));
    entry.Set(Column::Functions, std::move(terms));
    return entry;
}

class CollectionEditorTest : public testing::Test
{
protected:
    // One letter an entry.
    void Fill(std::string_view names)
    {
        for (const char name : names) collection_.entries.push_back(Named(std::string(1, name)));
        editor_.Forget();
    }
    std::string Names() const
    {
        std::string names;
        for (const CollectionEntry& entry : editor_.Entries()) names += entry[Column::ShortText];
        return names;
    }

    Collection collection_;
    CollectionEditor editor_{collection_};
};

struct MoveCase
{
    std::vector<std::size_t> places;
    std::size_t before;
    std::string_view order;
    std::size_t first;
};

TEST_F(CollectionEditorTest, EntriesMoveInFrontOfAnotherOne)
{
    Fill("abcdef");
    const MoveCase cases[] = {
        {{0}, 6, "bcdefa", 5},       {{5}, 0, "fabcde", 0},    {{1, 4}, 3, "acbedf", 2},
        {{0, 2, 5}, 0, "acfbde", 0}, {{2, 3}, 3, "abcdef", 2}, {{2, 3}, 4, "abcdef", 2},
        {{0, 1}, 2, "abcdef", 0},
    };
    for (const MoveCase& row : cases) {
        SCOPED_TRACE(row.order);
        const std::size_t changes = editor_.Changes();
        EXPECT_EQ(editor_.Move(row.places, row.before), row.first);
        EXPECT_EQ(Names(), row.order);
        EXPECT_EQ(editor_.Changes() > changes, row.order != "abcdef") << "staying is no change";
        while (editor_.Undo()) {
        }
        EXPECT_EQ(Names(), "abcdef");
    }
}

TEST_F(CollectionEditorTest, AnyChangesAreTakenBackAndDoneAgain)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    Fill("abcdefgh");
    std::vector<Collection> states{collection_};
    while (states.size() <= CollectionEditor::kDepth) {
        const std::size_t count = editor_.Entries().size();
        std::vector<std::size_t> places;
        for (std::size_t place = 0; place < count; ++place) {
            if (below(3) == 0) places.push_back(place);
        }
        const std::size_t changes = editor_.Changes();
        const std::size_t place = below(count + 1);
        const std::string text = std::to_string(random());
        switch (below(6)) {
            case 0: editor_.Insert(place, {Named(text), Named("z")}); break;
            case 1:
                if (count > 20) editor_.Remove(places);
                break;
            case 2: editor_.Move(places, place); break;
            case 3: editor_.SetText(below(count), Column::LongText, text); break;
            case 4: editor_.SetPlot(below(count), Named("", text)); break;
            case 5: editor_.SetProtected(places, below(2) == 0); break;
        }
        EXPECT_EQ(editor_.Changes() > changes, collection_ != states.back());
        if (editor_.Changes() > changes) states.push_back(collection_);
    }
    for (std::size_t back = states.size() - 1; back-- > 0;) {
        ASSERT_TRUE(editor_.Undo());
        ASSERT_EQ(collection_, states[back]);
    }
    EXPECT_FALSE(editor_.Undo());
    for (std::size_t next = 1; next < states.size(); ++next) {
        ASSERT_TRUE(editor_.Redo());
        ASSERT_EQ(collection_, states[next]);
    }
    EXPECT_FALSE(editor_.Redo());
}

TEST_F(CollectionEditorTest, TakenBackToWhatWasSavedItIsNotModified)
{
    Fill("abc");
    EXPECT_FALSE(editor_.Modified());
    const std::size_t one[] = {1};
    editor_.Remove(one);
    EXPECT_TRUE(editor_.Modified());
    EXPECT_EQ(editor_.Undo(), 1U);
    EXPECT_FALSE(editor_.Modified());
    editor_.Redo();
    editor_.SetModified(false);
    EXPECT_FALSE(editor_.Modified());
    editor_.Undo();
    EXPECT_TRUE(editor_.Modified()) << "the file lacks the entry that is back";
    editor_.SetText(0, Column::ShortText, "x");
    EXPECT_FALSE(editor_.Redo()) << "another change has taken its place";
    editor_.Undo();
    EXPECT_TRUE(editor_.Modified());
}

TEST_F(CollectionEditorTest, ABurstOfTypingIsOneChange)
{
    Fill("ab");
    const auto type = [&](std::size_t place, const char* text, Typing typing) {
        editor_.SetText(place, Column::LongText, text, typing);
    };
    type(0, "T", Typing::Anew);
    type(0, "Te", Typing::Continued);
    type(0, "Text", Typing::Continued);
    type(1, "andere", Typing::Continued);
    type(1, "anderer Eintrag", Typing::Continued);
    editor_.SetModified(false);
    type(1, "gespeichert", Typing::Continued);
    const auto text = [&](std::size_t place) {
        return std::string(editor_.Entries()[place][Column::LongText]);
    };
    editor_.Undo();
    EXPECT_EQ(text(1), "anderer Eintrag");
    EXPECT_FALSE(editor_.Modified());
    editor_.Undo();
    EXPECT_EQ(text(1), "");
    EXPECT_EQ(text(0), "Text");
    editor_.Undo();
    EXPECT_EQ(text(0), "");
    editor_.Redo();
    EXPECT_EQ(text(0), "Text");
}

TEST_F(CollectionEditorTest, APlotTakenOverLeavesDescriptionsAndProtection)
{
    Fill("a");
    const std::size_t first[] = {0};
    editor_.SetText(0, Column::LongText, "Text");
    editor_.SetProtected(first, true);
    CollectionEntry plot = Named("Puffer", "f(x)=x");
    plot.Set(Column::LongText, "anderer Text");
    editor_.SetPlot(0, plot);
    const CollectionEntry& entry = editor_.Entries()[0];
    EXPECT_EQ(entry[Column::ShortText], "a");
    EXPECT_EQ(entry[Column::LongText], "Text");
    EXPECT_EQ(entry[Column::Functions], "f(x)=x");
    EXPECT_TRUE(entry.is_protected);
}

TEST_F(CollectionEditorTest, FindsDescriptionsAndTermsWithoutRegardToCase)
{
    editor_.Insert(0, {Named("Überlagerung", "f(x)=sin(x)"), Named("Kreis", "x_a(t)=COS(t)")});
    editor_.SetText(1, Column::LongText, "Ω dreht sich, ÄRGER");
    struct FindCase
    {
        const char* text;
        std::vector<std::size_t> places;
    };
    const FindCase cases[] = {
        {"überl", {0}}, {"ÜBERL", {0}}, {"ärger", {1}}, {"ω", {1}},  {"cos(T)", {1}},
        {"SIN(x", {0}}, {"(", {0, 1}},  {"", {0, 1}},   {"tan", {}}, {"Kreisx", {}},
    };
    for (const FindCase& row : cases) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(editor_.Find(row.text), row.places);
    }
}

}  // namespace
}  // namespace korvinth::document
