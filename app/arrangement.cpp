#include "app/arrangement.h"

#include <algorithm>

namespace korvinth::app {
namespace {

// Widths and heights in heights of a line, so that they follow the font.
constexpr int kColumnLines = 24;          // a term of about forty letters
constexpr int kLeastParameterLines = 7;   // title and one slider, or what stands in its place
constexpr int kLeastCollectionLines = 6;  // title, search and an entry

// In percent of the area.
constexpr int kWidestColumn = 40;
constexpr int kNarrowestColumn = 24;
constexpr int kLeastTerms = 30;
constexpr int kSureTerms = 40;
constexpr int kMostOfRoom = 60;  // for a single row, of what the collection leaves
constexpr int kMostCollection = 40;
constexpr int kSureCollection = 30;

int ColumnWidth(const ArrangementRequest& request)
{
    if (!request.has_terms && !request.has_parameters && !request.has_collection) return 0;
    const int wanted = kColumnLines * request.font_height;
    const int widest = std::max(request.width * kWidestColumn / 100,
                                std::min(request.least_width, request.width / 2));
    return std::clamp(wanted, request.width * kNarrowestColumn / 100, widest);
}

int CollectionHeight(const ArrangementRequest& request)
{
    if (!request.has_collection) return 0;
    if (!request.has_terms && !request.has_parameters) return request.height;
    const int others = (request.has_terms ? request.least_terms_height : 0) +
                       (request.has_parameters ? kLeastParameterLines * request.font_height : 0);
    if (request.height - others < kLeastCollectionLines * request.font_height) return 0;
    const int least =
        std::min(request.least_collection_height, request.height * kSureCollection / 100);
    const int most = request.height * kMostCollection / 100;
    // More entries show as far as rows in use and sliders leave room.
    const int left_over = request.height - (request.has_terms ? request.terms_height : 0) -
                          (request.has_parameters ? request.parameters_height : 0);
    return std::clamp(std::min(request.collection_height, left_over), least, most);
}

// Of the room that the collection leaves.
int TermsHeight(const ArrangementRequest& request, int room)
{
    if (!request.has_terms) return 0;
    if (!request.has_parameters) return room;
    // The rows in use stay in view as far as that leaves the sliders most of the room.
    const int sure = std::clamp(request.terms_height, request.height * kLeastTerms / 100,
                                request.height * kSureTerms / 100);
    const int least =
        std::max(sure, std::min(request.least_terms_height, room * kMostOfRoom / 100));
    // Half of the room each, and the rows take what the sliders leave, as far as there are rows.
    // When there is too little for both, the sliders come first, since they are worked while they
    // are looked at.
    const int sliders =
        std::max(request.parameters_height, kLeastParameterLines * request.font_height);
    const int wanted = std::max({room / 2, request.terms_height, request.all_terms_height});
    return std::max(std::min(wanted, room - sliders), least);
}

// The left column from top to bottom: terms, parameters, collection.
void FillColumn(const ArrangementRequest& request, int width, Arrangement& places)
{
    const int collection = CollectionHeight(request);
    const int room = request.height - collection;
    const int terms = TermsHeight(request, room);
    places.terms = {0, 0, width, terms};
    if (request.has_parameters) places.parameters = {0, terms, width, room - terms};
    places.collection = {0, room, width, collection};
}

}  // namespace

Arrangement Arrange(const ArrangementRequest& request)
{
    Arrangement places;
    const int column = ColumnWidth(request);
    FillColumn(request, column, places);
    if (request.graph_place == GraphPlace::Free) return places;

    int below = 0;
    const bool has_room = request.ranges_width <= request.width - column &&
                          request.ranges_height <= request.height / 2;
    if (request.graph_place == GraphPlace::Docked && has_room) below = request.ranges_height;
    places.graph = {column, 0, request.width - column, request.height - below};
    if (below > 0) places.ranges = {column, request.height - below, request.width - column, below};
    return places;
}

}  // namespace korvinth::app
