#include "app/arrangement.h"

#include <gtest/gtest.h>

#include <vector>

namespace korvinth::app {
namespace {

bool HasArea(const Box& box) { return box.width > 0 && box.height > 0; }

bool Overlap(const Box& a, const Box& b)
{
    return HasArea(a) && HasArea(b) && a.x < b.Right() && b.x < a.Right() && a.y < b.Bottom() &&
           b.y < a.Bottom();
}

// From the smallest usable main window (its menu and status bar taken off) to a large screen, with
// small and large fonts, and every number of rows.
std::vector<ArrangementRequest> ManyRequests()
{
    std::vector<ArrangementRequest> requests;
    for (const auto& [width, height] : {std::pair{1024, 540},
                                        {1280, 740},
                                        {1920, 1010},
                                        {1100, 1900},
                                        {3840, 2050},
                                        {2560, 560}}) {
        for (const int font : {14, 17, 24, 34}) {
            for (const int terms : {0, 120, 420, 900}) {
                for (const bool collection : {false, true}) {
                    for (const int ranges : {0, 130, 300}) {
                        for (const GraphPlace place :
                             {GraphPlace::Docked, GraphPlace::FullHeight, GraphPlace::Free}) {
                            requests.push_back({.width = width,
                                                .height = height,
                                                .font_height = font,
                                                .terms_height = terms,
                                                .all_terms_height = 600,
                                                .parameters_height = terms / 2,
                                                .has_collection = collection,
                                                .least_collection_height = 8 * font,
                                                .collection_height = 8 * font + 2 * terms,
                                                .ranges_height = ranges,
                                                .graph_place = place});
                        }
                    }
                }
            }
        }
    }
    return requests;
}

TEST(Arrangement, EveryWindowHasAUsablePlaceOfItsOwnAndTheGraphMostOfTheRoom)
{
    for (const ArrangementRequest& request : ManyRequests()) {
        SCOPED_TRACE(testing::Message()
                     << request.width << "x" << request.height << " font " << request.font_height
                     << " terms " << request.terms_height);
        const Arrangement places = Arrange(request);
        const Box boxes[] = {places.terms, places.parameters, places.collection, places.graph,
                             places.ranges};
        for (const Box& box : boxes) {
            EXPECT_TRUE(box.x >= 0 && box.y >= 0 && box.Right() <= request.width &&
                        box.Bottom() <= request.height);
            for (const Box& other : boxes) {
                EXPECT_TRUE(&box == &other || !Overlap(box, other));
            }
        }
        if (request.font_height > 24) continue;
        EXPECT_GE(places.terms.width, 13 * request.font_height);
        EXPECT_GE(places.terms.height, request.height * 3 / 10);
        EXPECT_GE(places.parameters.height, 4 * request.font_height);
        EXPECT_EQ(HasArea(places.collection), request.has_collection);
        if (request.graph_place == GraphPlace::Free) {
            EXPECT_FALSE(HasArea(places.graph));
        } else {
            EXPECT_GT(places.graph.width, request.width / 2);
            EXPECT_GE(places.graph.height, request.height / 2);
        }
    }
}

TEST(Arrangement, TermsParametersAndCollectionFillTheLeftColumnInThisOrder)
{
    const Arrangement places = Arrange({.width = 1280,
                                        .height = 740,
                                        .has_collection = true,
                                        .least_collection_height = 140,
                                        .collection_height = 140});
    EXPECT_EQ(places.terms.y, 0);
    EXPECT_EQ(places.parameters.y, places.terms.Bottom());
    EXPECT_EQ(places.collection.y, places.parameters.Bottom());
    EXPECT_EQ(places.collection.Bottom(), 740);
    EXPECT_EQ(places.graph, (Box{places.terms.Right(), 0, 1280 - places.terms.Right(), 740}));
}

TEST(Arrangement, TermsAndSlidersShareTheColumnByTheirNeeds)
{
    ArrangementRequest request{.width = 1280, .height = 740};
    EXPECT_EQ(Arrange(request).terms.height, 370) << "half each";
    request.terms_height = 500;
    EXPECT_EQ(Arrange(request).terms.height, 500);
    request.parameters_height = 300;
    EXPECT_EQ(Arrange(request).terms.height, 440) << "the sliders come first";
    request.parameters_height = 2000;
    EXPECT_EQ(Arrange(request).terms.height, 296) << "terms stay usable";
    request.terms_height = 100;
    EXPECT_EQ(Arrange(request).terms.height, 222);
    request.all_terms_height = 480;
    request.parameters_height = 140;
    EXPECT_EQ(Arrange(request).terms.height, 480) << "rows take what sliders do not need";
    request.all_terms_height = 900;
    EXPECT_EQ(Arrange(request).terms.height, 600);
}

TEST(Arrangement, TheCollectionGrowsWithItsEntriesIntoRoomThatIsLeft)
{
    ArrangementRequest request{.width = 1280,
                               .height = 740,
                               .terms_height = 200,
                               .parameters_height = 100,
                               .has_collection = true,
                               .least_collection_height = 140,
                               .collection_height = 200};
    EXPECT_EQ(Arrange(request).collection.height, 200);
    request.collection_height = 5000;
    EXPECT_EQ(Arrange(request).collection.height, 296);
    request.parameters_height = 350;
    EXPECT_EQ(Arrange(request).collection.height, 190);
    request.parameters_height = 900;
    EXPECT_EQ(Arrange(request).collection.height, 140) << "some entries are sure";
    request.has_terms = request.has_parameters = false;
    EXPECT_EQ(Arrange(request).collection.height, 740);
}

TEST(Arrangement, WhatIsClosedLeavesItsPlaceToItsNeighbours)
{
    ArrangementRequest request{.width = 1280, .height = 740};
    request.has_terms = false;
    EXPECT_EQ(Arrange(request).parameters.height, 740);
    request.has_parameters = false;
    EXPECT_EQ(Arrange(request).graph, (Box{0, 0, 1280, 740}));
    request.has_terms = true;
    EXPECT_EQ(Arrange(request).terms.height, 740);
    EXPECT_GT(Arrange(request).graph.x, 0);
}

TEST(Arrangement, InVeryLargeLettersRowsAndOneSliderComeBeforeTheCollection)
{
    ArrangementRequest request{.width = 1020,
                               .height = 490,
                               .font_height = 38,
                               .least_width = 480,
                               .least_terms_height = 220,
                               .has_collection = true,
                               .least_collection_height = 250};
    EXPECT_FALSE(HasArea(Arrange(request).collection));
    EXPECT_GE(Arrange(request).terms.height, 220);
    EXPECT_GE(Arrange(request).parameters.height, 240);
    EXPECT_EQ(Arrange(request).terms.width, 480);
    request.least_width = 900;
    EXPECT_EQ(Arrange(request).terms.width, 510) << "half is the graph's";
    request.height = 740;
    EXPECT_GE(Arrange(request).collection.height, 200);
}

TEST(Arrangement, TheRangeWindowStandsBelowTheDockedGraphOnly)
{
    ArrangementRequest request{.width = 1280, .height = 740, .ranges_height = 140};
    EXPECT_EQ(Arrange(request).graph.height, 600);
    EXPECT_EQ(Arrange(request).ranges.y, 600);
    request.graph_place = GraphPlace::FullHeight;
    EXPECT_EQ(Arrange(request).graph.height, 740);
    EXPECT_FALSE(HasArea(Arrange(request).ranges));
}

}  // namespace
}  // namespace korvinth::app
