// What can be done with the entries of the collection, from its list and from the menus.
#pragma once

namespace korvinth::ui {

enum class EntryCommand {
    AddPlot,   // the current plot as a new entry
    NewEntry,  // an empty one
    Draw,
    TakePlot,  // the current plot becomes that of the selected entry
    Rename,
    Copy,
    Insert,       // from the clipboard, in front of the selected entry
    InsertAfter,  // and behind it
    Cut,
    Remove,
    Protect,  // or release
    Undo,
    Redo,
};

}  // namespace korvinth::ui
