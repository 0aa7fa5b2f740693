#include "app/working_collection.h"

#include <gtest/gtest.h>

#include "document/collection_file.h"

namespace korvinth::app {
namespace {

using namespace std::chrono_literals;

TEST(WorkingCollection, IsWrittenSoonAndALargeOneWhenNothingMoves)
{
    struct Case
    {
        std::string_view behaviour;
        WorkingState state;
        bool due;
    };
    constexpr std::size_t kLarge = kLargeCollection;
    const Case cases[] = {
        {"a small one is written within two seconds", {1000, 1500ms, 0ms, true}, true},
        {"but not at every step of a slider", {1000, 400ms, 0ms, false}, false},
        {"a large one waits for the end of a drag", {kLarge, 5000ms, 100ms, false}, false},
        {"and is written when all is quiet", {kLarge, 5000ms, 2500ms, false}, true},
        {"it waits for an animation", {kLarge, 20000ms, 2500ms, true}, false},
        {"but no longer than half a minute", {kLarge, 29500ms, 0ms, true}, true},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(IsDue(row.state), row.due);
    }
}

TEST(WorkingCollection, RemembersThatEntriesWereChanged)
{
    for (const std::string& text : {std::string("a"), std::string("\u03C0")}) {
        document::Collection collection;
        collection.entries.resize(1);
        collection.entries[0].Set(document::Column::ShortText, text);
        const std::string bytes = document::WriteCollection(collection);
        EXPECT_FALSE(HasModifiedMark(WithModifiedMark(bytes, false)));
        const std::string marked = WithModifiedMark(bytes, true);
        EXPECT_TRUE(HasModifiedMark(marked));
        document::Collection read;
        EXPECT_EQ(document::ReadCollection(marked, document::ReadMode::Open, read), "");
        EXPECT_EQ(read.entries, collection.entries);
    }
}

}  // namespace
}  // namespace korvinth::app
