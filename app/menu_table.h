// The menus as tables: the menu bar and the graph's pop-up menu.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace korvinth::app {

enum class EntryKind {
    Menu,       // opens its entries
    Command,    //
    Check,      // carries a check mark
    Exclusive,  // one of its menu carries the mark
    Separator,
};

struct MenuEntry
{
    std::string_view menu;     // object name of the menu that holds it, "" for the outermost
    std::string_view name;     // object name, "" for a separator
    std::string_view caption;  // with its mnemonic
    EntryKind kind = EntryKind::Command;
    std::string_view shortcut;  // portable, "" for none
};

// In the order of the menus; a menu comes before its entries.
std::span<const MenuEntry> MainMenu();
// The graph's pop-up `mn_pop1`; the row's pop-up is the part of it that concerns one row.
std::span<const MenuEntry> GraphPopUp();
bool ConcernsRow(const MenuEntry& entry);

// Sizes of the description's font in points, the captions of mnfs1[0] to mnfs1[8].
inline constexpr int kDescriptionPoints[] = {8, 10, 12, 14, 18, 20, 24, 30, 36};

// A caption as a tool tip or an accessible name: without mnemonics, no double blanks.
std::string PlainCaption(std::string_view caption);

}  // namespace korvinth::app
