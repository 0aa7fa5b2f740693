// Where the child windows stand inside the main window.
#pragma once

namespace korvinth::app {

// In pixels from the top left corner of the area that holds the child windows.
struct Box
{
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int Right() const { return x + width; }
    int Bottom() const { return y + height; }
    bool operator==(const Box&) const = default;
};

enum class GraphPlace {
    Docked,      // the right column, above the range window when that is shown
    FullHeight,  // the right column from top to bottom
    Free,        // wherever the user has put it
};

struct ArrangementRequest
{
    int width = 0;  // of the area
    int height = 0;
    int font_height = 16;        // of one line of text
    int least_width = 0;         // what the left column's windows cannot do without
    int least_terms_height = 0;  // what the term editor needs to show a single row
    int terms_height = 0;        // and to show its rows in use
    int all_terms_height = 0;    // and to show every row
    int parameters_height = 0;   // what the sliders need
    bool has_collection = false;
    int least_collection_height = 0;  // what the collection needs to show a few entries
    int collection_height = 0;        // and to show all of them
    int ranges_width = 0;             // what the range window needs
    int ranges_height = 0;            // while it is shown, else 0
    GraphPlace graph_place = GraphPlace::Docked;
    // What the user has closed leaves its place to its neighbours.
    bool has_terms = true;
    bool has_parameters = true;
};

// Boxes without area belong to windows that have no place in this arrangement. The others do not
// overlap and stay inside the area.
struct Arrangement
{
    Box terms;
    Box parameters;
    Box collection;  // no area when too little room would be left for terms and sliders
    Box graph;       // no area when the graph is free
    Box ranges;      // no area when there is no room for it below the graph
};

Arrangement Arrange(const ArrangementRequest& request);

}  // namespace korvinth::app
