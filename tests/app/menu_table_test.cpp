#include "app/menu_table.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMainWindow>
#include <QMenu>
#include <set>

#include "app/menus.h"

namespace korvinth::app {
namespace {

struct Expected
{
    const char* menu;
    const char* name;
    const char* caption;
};

// What users and other windows rely on, word by word.
const Expected kExpected[] = {
    {"mn_file", "mn_open", "&Öffnen"},
    {"mn_file", "mn_mrg", "&Anhängen"},
    {"mn_file", "mn_save", "&Speichern"},
    {"mn_file", "mn_saveas", "Speichern &unter..."},
    {"mn_file", "mn_saveopt", "&Einstellungen speichern"},
    {"mn_file", "mn_optdef", "&Voreinstellungen aktivieren"},
    {"mn_file", "mn_close", "&S&chließen"},
    {"mn_edit", "mn_allclr", "Alle Einträge löschen"},
    {"mn_edit", "mn_std", "Standardbereich verwenden"},
    {"mn_edit", "mn_copytoclip", "Graphik als Bitmap in Zwischenablage &kopieren"},
    {"mn_edit", "mn_emf", "Graphik im &EMF-Format in Zwischenablage kopieren"},
    {"mn_edit", "mn_copytermo", "&Terme in Zwischenablage kopieren"},
    {"mn_edit", "mn_paracopy", "Terme mit ersetzten &Parametern in Zwischenablage"},
    {"mn_edit", "mn_undo", "&Rückgängig"},
    {"mn_edit", "mn_redo", "&Wiederherstellen"},
    {"mn_samml", "mn_shc", "Sammlung anzeigen"},
    {"mn_samml", "mn_dtl", "Detaillierte Beschreibung anzeigen"},
    {"mn_samml", "mn_ivar", "Schriftgröße der Beschreibung individuell änderbar"},
    {"mn_safo", "mnfs1[0]", "8 Punkt"},
    {"mn_safo", "mnfs1[8]", "36 Punkt"},
    {"mn_samml", "mn_add", "Aktuelle Daten &hinzfügen"},
    {"mn_samml", "mn_newentry", "&Neuen Eintrag hinzufügen"},
    {"mn_samml", "mn_einakt", "Angewählten Eintrag &zeichnen"},
    {"mn_samml", "mn_rename", "&Umbenennen"},
    {"mn_samml", "mn_copy", "&Kopieren"},
    {"mn_samml", "mn_insert", "&Einfügen"},
    {"mn_samml", "mn_insaft", "Einfügen &danach"},
    {"mn_samml", "mn_cut", "Aus&schneiden"},
    {"mn_samml", "mn_clr", "&Löschen"},
    {"mn_samml", "mn_protect", "Schü&tzen"},
    {"mn_pmw", "mn_spal", "Parameteraus&wahlliste anzeigen"},
    {"mn_pmw", "mn_para", "Alle &Parameter anzeigen"},
    {"mnk1", "mnka", "aktivieren"},
    {"mnk1", "mnkc", "zurücksetzen"},
    {"mn_pmw", "mn_pardock", "&Parameterfenster anordnen"},
    {"mn_pmw", "mn_autoint", "automatische Erkennung von &Integralfunktionen"},
    {"mn_pmw", "mn_timergo", "Alle &Timer gleichzeitig starten"},
    {"mn_extra", "mn_groptions", "Allgemeine  &Einstellungen"},
    {"mn_helpum", "mn_viewnumb", "&x-Achsen-Beschriftung sichtbar"},
    {"mn_helpum", "mn_viewnumby", "&y-Achsen-Beschriftung sichtbar"},
    {"mn_helpum", "mn_helpline", "Hilfs&linien sichtbar"},
    {"mn_helpum", "mn_helpdopp", "&Zusätzliche Hilfslinien sichtbar"},
    {"mn_helpum", "mn_axevis", "&Achsen sichtbar"},
    {"mn_helpum", "mn_axname", "Achsen&name sichtbar"},
    {"mn_helpum", "mn_asyvis", "zusätzliche &Geraden sichtbar"},
    {"mn_helpum", "mn_puvis", "zusätzliche &Punkte sichtbar"},
    {"mn_zoomum", "mn_zoomoptions", "&Zoom-Faktoren"},
    {"mn_zoomum", "mn_zoomtoggle", "Zoom sperren"},
    {"mn_zoomum", "mn_verhx", "Verhältnis &x:y = x:1"},
    {"mn_zoomum", "mn_verhy", "Verhältnis x:&y = 1:y"},
    {"mn_winkum", "mn_rad", "&Bogenmaß (Vollwinkel = 2 pi rad)"},
    {"mn_winkum", "mn_deg", "&Gradmaß (Vollwinkel = 360°)"},
    {"mn_winkum", "mn_grad", "Neugrad&maß (Vollwinkel = 400 grad)"},
    {"mn_win", "mn_calc", "&Taschenrechner"},
    {"mn_win", "mn_col", "&Sammlung"},
    {"mn_win", "mnf_det", "Detaillierte Beschreibung"},
    {"mn_win", "mn_asy", "G&eraden"},
    {"mn_win", "mn_punkt", "Punkte"},
    {"mn_win", "mn_inter", "&Intervalle"},
    {"mn_win", "mn_graph", "&Graphische Darstellung"},
    {"mn_win", "mn_term", "Funktions&terme"},
    {"mn_win", "mn_dock", "Haupt&fenster andocken"},
    {"mn_win", "mn_gri", "Graphenfenster individuell änderbar"},
    {"mn_win", "mn_ghm", "Graphfenster-H&öhe maximieren"},
    {"mn_help", "mn_hlpm", "Hilfe zum markierten Objekt"},
    {"mn_help", "mn_about", "über Korvinth"},
    {"mng_left", "mng_move", "Verschieben des Koordinatensystems"},
    {"mng_left", "mng_zoom", "In Auswahlrahmen zoomen"},
    {"mn_pop1", "mng_couple", "Parameterkopplung aktivieren"},
    {"mn_pop1", "mng_uncouple", "Parameterkopplung zurücksetzen"},
    {"mn_pop1", "mng_back", "zurück zoomen"},
    {"mn_pop1", "mng_rowafter", "zusätzliche Eingabezeile nach dieser"},
    {"mn_pop1", "mng_rowbefore", "zusätzliche Eingabezeile vor dieser"},
    {"mn_pop1", "mng_rowclr", "Eingabezeile löschen"},
    {"mn_pop1", "mng_vis", "sichtbar"},
    {"mn_pop1", "mng_colour", "Farbe ändern"},
    {"mn_pop1", "mng_terms", "Funktionsterme ändern"},
    {"mn_pop1", "mng_intervals", "Darstellungsintervall ändern"},
    {"mn_pop1", "mng_width", "Liniendicke ändern"},
    {"mng_style", "mng_point[0]", "Linie"},
    {"mng_style", "mng_point[1]", "Punkt 1"},
    {"mng_style", "mng_point[10]", "Punkt 10"},
    {"mn_pop1", "mng_samples", "Stützstellenanzahl ändern"},
    {"mn_pop1", "mng_fontvar", "Schriftgröße individuell änderbar"},
    {"mn_pop1", "mng_font", "Schriftgröße ändern"},
    {"mn_pop1", "mng_onlypara", "Nur die Parameter zu dieser Funktion anzeigen"},
    {"mn_pop1", "mng_alsopara", "Auch die Parameter zu dieser Funktion anzeigen"},
    {"mn_pop1", "mng_family", "Als Scharfunktion zulassen"},
};

const Expected kExpectedMenus[] = {
    {"", "mn_file", "&Datei"},
    {"", "mn_edit", "&Bearbeiten"},
    {"", "mn_samml", "&Sammlung"},
    {"", "mn_pmw", "&Parameter"},
    {"", "mn_extra", "&Einstellungen"},
    {"", "mn_win", "&Fenster"},
    {"", "mn_help", "&Hilfe"},
    {"mn_samml", "mn_safo", "Schriftgröße der Beschreibung ändern"},
    {"mn_pmw", "mnk1", "Parameterkopplung"},
    {"mn_extra", "mn_helpum", "Verschiedene Objekte ein- und ausblenden"},
    {"mn_extra", "mn_zoomum", "Einstellungen für den Zoom"},
    {"mn_extra", "mn_winkum", "Einstellung der Winkelmaße"},
    {"mn_pop1", "mng_left", "Linke Maustaste..."},
    {"mn_pop1", "mng_style", "Linie oder diskrete Punkte"},
};

TEST(Menus, EveryEntryStandsInItsMenuUnderItsNameAndCaption)
{
    QMainWindow window;
    const Menus menus(window);
    for (const Expected& row : kExpected) {
        SCOPED_TRACE(row.name);
        const auto* entry = window.findChild<QAction*>(row.name);
        ASSERT_NE(entry, nullptr);
        EXPECT_EQ(entry->text().toStdString(), row.caption);
        EXPECT_TRUE(menus.Menu(row.menu).actions().contains(entry));
    }
    for (const Expected& row : kExpectedMenus) {
        SCOPED_TRACE(row.name);
        const auto* menu = window.findChild<QMenu*>(row.name);
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->title().toStdString(), row.caption);
        if (*row.menu != 0) {
            EXPECT_TRUE(menus.Menu(row.menu).actions().contains(menu->menuAction()));
        }
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
}

TEST(MenuTable, AToolTipIsTheCaptionWithoutItsMarks)
{
    EXPECT_EQ(PlainCaption("&S&chließen"), "Schließen");
    EXPECT_EQ(PlainCaption("Allgemeine  &Einstellungen"), "Allgemeine Einstellungen");
}

}  // namespace
}  // namespace korvinth::app
