#include "app/arrangement.h"

#include <algorithm>

namespace korvinth::app {
namespace {

// Widths and heights in heights of a line, so that they follow the font.
constexpr int kColumnLines = 21;         // a term of about forty letters
constexpr int kLeastParameterLines = 9;  // two sliders
constexpr int kCollectionLines = 10;
constexpr int kLeastCollectionLines = 5;

// In percent of the area.
constexpr int kWidestColumn = 44;
constexpr int kNarrowestColumn = 24;
constexpr int kHighestTerms = 60;
constexpr int kLeastTerms = 30;

int ColumnWidth(const ArrangementRequest& request)
{
    const int wanted = kColumnLines * request.font_height;
    return std::clamp(wanted, request.width * kNarrowestColumn / 100,
                      request.width * kWidestColumn / 100);
}

// The left column from top to bottom: terms, parameters, collection.
void FillColumn(const ArrangementRequest& request, int width, Arrangement& places)
{
    const int height = request.height;
    const int line = request.font_height;
    int collection = 0;
    if (request.has_collection) {
        collection = std::clamp(height / 4, std::min(kLeastCollectionLines * line, height / 4),
                                kCollectionLines * line);
    }
    const int highest = std::max(
        height * kLeastTerms / 100,
        std::min(height * kHighestTerms / 100, height - collection - kLeastParameterLines * line));
    const int terms =
        std::clamp(request.terms_height, height * kLeastTerms / 100, std::max(highest, 0));
    places.terms = {0, 0, width, terms};
    places.parameters = {0, terms, width, height - terms - collection};
    if (collection > 0) places.collection = {0, height - collection, width, collection};
}

}  // namespace

Arrangement Arrange(const ArrangementRequest& request)
{
    Arrangement places;
    const int column = ColumnWidth(request);
    FillColumn(request, column, places);
    if (request.graph_place == GraphPlace::Free) return places;

    int below = 0;
    if (request.graph_place == GraphPlace::Docked) {
        below = std::min(request.ranges_height, request.height / 2);
    }
    places.graph = {column, 0, request.width - column, request.height - below};
    if (below > 0) places.ranges = {column, request.height - below, request.width - column, below};
    return places;
}

}  // namespace korvinth::app
