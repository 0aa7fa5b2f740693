#include "app/menu_table.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <set>

#include "app/menus.h"

namespace korvinth::app {
namespace {

// Deliberate: captions stand as users know them.
TEST(Menus, OddCaptionsAndThoseSetAtRunTimeStandAsTheyAre)
{
    QMainWindow window;
    const Menus menus(window);
    for (const auto& [name, caption] : {std::pair{"mn_close", "&S&chließen"},
                                        {"mn_add", "Aktuelle Daten &hinzfügen"},
                                        {"mn_groptions", "Allgemeine  &Einstellungen"},
                                        {"mnfs1[0]", "8 Punkt"},
                                        {"mnfs1[8]", "36 Punkt"},
                                        {"mn_timergo", "Alle &Timer gleichzeitig starten"}}) {
        const auto* entry = window.findChild<QAction*>(name);
        ASSERT_NE(entry, nullptr) << name;
        EXPECT_EQ(entry->text().toStdString(), caption);
    }
}

TEST(Menus, NamesAndShortcutsAreUniqueAndMenusComeBeforeTheirEntries)
{
    std::set<std::string_view> menus{""}, names, shortcuts;
    for (const auto table : {MainMenu(), GraphPopUp()}) {
        for (const MenuEntry& entry : table) {
            SCOPED_TRACE(entry.name);
            EXPECT_TRUE(menus.contains(entry.menu));
            if (entry.kind == EntryKind::Menu) menus.insert(entry.name);
            if (!entry.name.empty()) {
                EXPECT_TRUE(names.insert(entry.name).second);
            }
            if (!entry.shortcut.empty()) {
                EXPECT_TRUE(shortcuts.insert(entry.shortcut).second);
            }
        }
    }
}

TEST(Menus, ARowsMenuLeavesOutWhatConcernsTheWholeGraph)
{
    QMainWindow window;
    const Menus menus(window);
    const auto visible = [&](QMenu& menu, std::string_view name) {
        return menu.isEmpty() ? false : menus.Entry(name).isVisible();
    };
    EXPECT_TRUE(visible(menus.GraphMenu(), "mng_back"));
    EXPECT_TRUE(visible(menus.GraphMenu(), "mng_point[3]"));
    EXPECT_FALSE(visible(menus.RowMenu(), "mng_back"));
    EXPECT_TRUE(visible(menus.RowMenu(), "mng_point[3]"));
    EXPECT_TRUE(visible(menus.RowMenu(), "mng_width"));
    EXPECT_TRUE(visible(menus.RowMenu(), "mng_font")) << "of the rows";
}

TEST(MenuTable, AToolTipIsTheCaptionWithoutItsMarks)
{
    EXPECT_EQ(PlainCaption("&S&chließen"), "Schließen");
    EXPECT_EQ(PlainCaption("Allgemeine  &Einstellungen"), "Allgemeine Einstellungen");
}

}  // namespace
}  // namespace korvinth::app
