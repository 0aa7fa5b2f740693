#include "app/menu_table.h"

#include <algorithm>
#include <array>

namespace korvinth::app {
namespace {

using enum EntryKind;

constexpr bool kLater = false;  // the function does not exist yet

constexpr MenuEntry Line(std::string_view menu) { return {menu, "", "", Separator, ""}; }

// Deliberate: captions stand as users know them, "&S&chließen", "hinzfügen" and a double blank too.
constexpr MenuEntry kMainMenu[] = {
    {"", "mn_file", "&Datei", Menu, ""},
    {"mn_file", "mn_open", "&Öffnen", Command, "Ctrl+O"},
    {"mn_file", "mn_mrg", "&Anhängen", Command, ""},
    {"mn_file", "mn_save", "&Speichern", Command, "Ctrl+S"},
    {"mn_file", "mn_saveas", "Speichern &unter...", Command, "Ctrl+Shift+S"},
    {"mn_file", "mn_examples", "&Beispiele", Command, ""},
    Line("mn_file"),
    {"mn_file", "mn_saveopt", "&Einstellungen speichern", Command, ""},
    {"mn_file", "mn_optdef", "&Voreinstellungen aktivieren", Command, ""},
    Line("mn_file"),
    {"mn_file", "mn_export", "Graphik &exportieren...", Command, "Ctrl+E"},
    {"mn_file", "mn_print", "&Drucken...", Command, "Ctrl+P"},
    Line("mn_file"),
    {"mn_file", "mn_close", "&S&chließen", Command, "Ctrl+Q"},

    {"", "mn_edit", "&Bearbeiten", Menu, ""},
    {"mn_edit", "mn_allclr", "Alle Einträge löschen", Command, ""},
    {"mn_edit", "mn_std", "Standardbereich verwenden", Command, ""},
    Line("mn_edit"),
    {"mn_edit", "mn_copytoclip", "Graphik als Bitmap in Zwischenablage &kopieren", Command,
     "Ctrl+C"},
    {"mn_edit", "mn_emf", "Graphik im &EMF-Format in Zwischenablage kopieren", Command, ""},
    {"mn_edit", "mn_copytermo", "&Terme in Zwischenablage kopieren", Command, ""},
    {"mn_edit", "mn_paracopy", "Terme mit ersetzten &Parametern in Zwischenablage", Command, ""},
    Line("mn_edit"),
    {"mn_edit", "mn_undo", "&Rückgängig", Command, "Ctrl+Z"},
    {"mn_edit", "mn_redo", "&Wiederherstellen", Command, "Ctrl+Shift+Z"},

    {"", "mn_samml", "&Sammlung", Menu, ""},
    {"mn_samml", "mn_shc", "Sammlung anzeigen", Command, ""},
    {"mn_samml", "mn_dtl", "Detaillierte Beschreibung anzeigen", Command, ""},
    {"mn_samml", "mn_ivar", "Schriftgröße der Beschreibung individuell änderbar", Check, ""},
    {"mn_samml", "mn_safo", "Schriftgröße der Beschreibung ändern", Menu, ""},
    {"mn_safo", "mnfs1[0]", "", Exclusive, ""},
    {"mn_safo", "mnfs1[1]", "", Exclusive, ""},
    {"mn_safo", "mnfs1[2]", "", Exclusive, ""},
    {"mn_safo", "mnfs1[3]", "", Exclusive, ""},
    {"mn_safo", "mnfs1[4]", "", Exclusive, ""},
    {"mn_safo", "mnfs1[5]", "", Exclusive, ""},
    {"mn_safo", "mnfs1[6]", "", Exclusive, ""},
    {"mn_safo", "mnfs1[7]", "", Exclusive, ""},
    {"mn_safo", "mnfs1[8]", "", Exclusive, ""},
    Line("mn_samml"),
    {"mn_samml", "mn_add", "Aktuelle Daten &hinzfügen", Command, ""},
    {"mn_samml", "mn_newentry", "&Neuen Eintrag hinzufügen", Command, ""},
    {"mn_samml", "mn_einakt", "Angewählten Eintrag &zeichnen", Command, ""},
    Line("mn_samml"),
    {"mn_samml", "mn_rename", "&Umbenennen", Command, ""},
    {"mn_samml", "mn_copy", "&Kopieren", Command, ""},
    {"mn_samml", "mn_insert", "&Einfügen", Command, ""},
    {"mn_samml", "mn_insaft", "Einfügen &danach", Command, ""},
    {"mn_samml", "mn_cut", "Aus&schneiden", Command, ""},
    {"mn_samml", "mn_clr", "&Löschen", Command, ""},
    {"mn_samml", "mn_protect", "Schü&tzen", Check, ""},

    {"", "mn_pmw", "&Parameter", Menu, ""},
    {"mn_pmw", "mn_spal", "Parameteraus&wahlliste anzeigen", Command, ""},
    {"mn_pmw", "mn_para", "Alle &Parameter anzeigen", Command, ""},
    {"mn_pmw", "mnk1", "Parameterkopplung", Menu, ""},
    {"mnk1", "mnka", "aktivieren", Check, ""},
    {"mnk1", "mnkc", "zurücksetzen", Command, ""},
    {"mn_pmw", "mn_pardock", "&Parameterfenster anordnen", Command, ""},
    Line("mn_pmw"),
    {"mn_pmw", "mn_autoint", "automatische Erkennung von &Integralfunktionen", Check, ""},
    {"mn_pmw", "mn_timergo", "Alle &Timer gleichzeitig starten", Command, "F5"},

    {"", "mn_extra", "&Einstellungen", Menu, ""},
    {"mn_extra", "mn_groptions", "Allgemeine  &Einstellungen", Command, ""},
    {"mn_extra", "mn_helpum", "Verschiedene Objekte ein- und ausblenden", Menu, ""},
    {"mn_helpum", "mn_viewnumb", "&x-Achsen-Beschriftung sichtbar", Check, ""},
    {"mn_helpum", "mn_viewnumby", "&y-Achsen-Beschriftung sichtbar", Check, ""},
    {"mn_helpum", "mn_helpline", "Hilfs&linien sichtbar", Check, ""},
    {"mn_helpum", "mn_helpdopp", "&Zusätzliche Hilfslinien sichtbar", Check, ""},
    {"mn_helpum", "mn_axevis", "&Achsen sichtbar", Check, ""},
    {"mn_helpum", "mn_axname", "Achsen&name sichtbar", Check, ""},
    {"mn_helpum", "mn_asyvis", "zusätzliche &Geraden sichtbar", Check, ""},
    {"mn_helpum", "mn_puvis", "zusätzliche &Punkte sichtbar", Check, ""},
    {"mn_extra", "mn_zoomum", "Einstellungen für den Zoom", Menu, ""},
    {"mn_zoomum", "mn_zoomoptions", "&Zoom-Faktoren", Command, ""},
    {"mn_zoomum", "mn_zoomtoggle", "Zoom sperren", Check, ""},
    {"mn_zoomum", "mn_verhx", "Verhältnis &x:y = x:1", Check, ""},
    {"mn_zoomum", "mn_verhy", "Verhältnis x:&y = 1:y", Check, ""},
    {"mn_extra", "mn_winkum", "Einstellung der Winkelmaße", Menu, ""},
    {"mn_winkum", "mn_rad", "&Bogenmaß (Vollwinkel = 2 pi rad)", Exclusive, ""},
    {"mn_winkum", "mn_deg", "&Gradmaß (Vollwinkel = 360°)", Exclusive, ""},
    {"mn_winkum", "mn_grad", "Neugrad&maß (Vollwinkel = 400 grad)", Exclusive, ""},

    {"", "mn_win", "&Fenster", Menu, ""},
    {"mn_win", "mn_calc", "&Taschenrechner", Command, "Ctrl+R"},
    {"mn_win", "mn_col", "&Sammlung", Command, ""},
    {"mn_win", "mnf_det", "Detaillierte Beschreibung", Command, ""},
    {"mn_win", "mn_asy", "G&eraden", Command, ""},
    {"mn_win", "mn_punkt", "Punkte", Command, ""},
    {"mn_win", "mn_inter", "&Intervalle", Command, "Ctrl+I"},
    {"mn_win", "mn_graph", "&Graphische Darstellung", Command, "Ctrl+G"},
    {"mn_win", "mn_term", "Funktions&terme", Command, "Ctrl+T"},
    Line("mn_win"),
    {"mn_win", "mn_trace", "Graph mit den Pfeiltasten a&btasten", Check, ""},
    Line("mn_win"),
    {"mn_win", "mn_dock", "Haupt&fenster andocken", Command, ""},
    {"mn_win", "mn_gri", "Graphenfenster individuell änderbar", Check, ""},
    {"mn_win", "mn_ghm", "Graphfenster-H&öhe maximieren", Command, ""},

    {"", "mn_help", "&Hilfe", Menu, ""},
    {"mn_help", "mn_hlpm", "Hilfe zum markierten Objekt", Command, "F1"},
    {"mn_help", "mn_about", "über Korvinth", Command, ""},
};

constexpr MenuEntry kGraphPopUp[] = {
    {"", "mn_pop1", "Graph", Menu, ""},
    {"mn_pop1", "mng_left", "Linke Maustaste...", Menu, ""},
    {"mng_left", "mng_move", "Verschieben des Koordinatensystems", Check, ""},
    {"mng_left", "mng_zoom", "In Auswahlrahmen zoomen", Check, ""},
    {"mn_pop1", "mng_trace", "Graph mit den Pfeiltasten abtasten", Check, ""},
    {"mn_pop1", "mng_couple", "Parameterkopplung aktivieren", Check, ""},
    {"mn_pop1", "mng_uncouple", "Parameterkopplung zurücksetzen", Command, ""},
    {"mn_pop1", "mng_back", "zurück zoomen", Command, ""},
    Line("mn_pop1"),
    {"mn_pop1", "mng_rowafter", "zusätzliche Eingabezeile nach dieser", Command, ""},
    {"mn_pop1", "mng_rowbefore", "zusätzliche Eingabezeile vor dieser", Command, ""},
    {"mn_pop1", "mng_rowclr", "Eingabezeile löschen", Command, ""},
    Line("mn_pop1"),
    {"mn_pop1", "mng_vis", "sichtbar", Check, ""},
    {"mn_pop1", "mng_colour", "Farbe ändern", Command, ""},
    {"mn_pop1", "mng_terms", "Funktionsterme ändern", Command, ""},
    {"mn_pop1", "mng_intervals", "Darstellungsintervall ändern", Command, ""},
    {"mn_pop1", "mng_width", "Liniendicke ändern", Command, ""},
    {"mn_pop1", "mng_type", "Linienart ändern", Menu, ""},
    {"mng_type", "mng_line[0]", "durchgezogen", Exclusive, ""},
    {"mng_type", "mng_line[1]", "gestrichelt", Exclusive, ""},
    {"mng_type", "mng_line[2]", "gepunktet", Exclusive, ""},
    {"mng_type", "mng_line[3]", "Strich, Punkt", Exclusive, ""},
    {"mng_type", "mng_line[4]", "Strich, zwei Punkte", Exclusive, ""},
    {"mng_type", "mng_line[5]", "unsichtbar", Exclusive, ""},
    {"mng_type", "mng_line[6]", "durchgezogen, innerhalb", Exclusive, ""},
    {"mn_pop1", "mng_style", "Linie oder diskrete Punkte", Menu, ""},
    {"mng_style", "mng_point[0]", "Linie", Exclusive, ""},
    {"mng_style", "mng_point[1]", "Punkt 1", Exclusive, ""},
    {"mng_style", "mng_point[2]", "Punkt 2", Exclusive, ""},
    {"mng_style", "mng_point[3]", "Punkt 3", Exclusive, ""},
    {"mng_style", "mng_point[4]", "Punkt 4", Exclusive, ""},
    {"mng_style", "mng_point[5]", "Punkt 5", Exclusive, ""},
    {"mng_style", "mng_point[6]", "Punkt 6", Exclusive, ""},
    {"mng_style", "mng_point[7]", "Punkt 7", Exclusive, ""},
    {"mng_style", "mng_point[8]", "Punkt 8", Exclusive, ""},
    {"mng_style", "mng_point[9]", "Punkt 9", Exclusive, ""},
    {"mng_style", "mng_point[10]", "Punkt 10", Exclusive, ""},
    {"mn_pop1", "mng_samples", "Stützstellenanzahl ändern", Command, ""},
    {"mn_pop1", "mng_fontvar", "Schriftgröße individuell änderbar", Check, ""},
    {"mn_pop1", "mng_font", "Schriftgröße ändern", Command, ""},
    Line("mn_pop1"),
    {"mn_pop1", "mng_onlypara", "Nur die Parameter zu dieser Funktion anzeigen", Command, ""},
    {"mn_pop1", "mng_alsopara", "Auch die Parameter zu dieser Funktion anzeigen", Command, ""},
    {"mn_pop1", "mng_family", "Als Scharfunktion zulassen", Check, ""},
    Line("mn_pop1"),
    {"mn_pop1", "mng_copytoclip", "Graphik als Bitmap in Zwischenablage kopieren", Command, ""},
    {"mn_pop1", "mng_emf", "Graphik im EMF-Format in Zwischenablage kopieren", Command, ""},
};

constexpr std::string_view kOfRow[] = {
    "mn_pop1",     "mng_rowafter",  "mng_rowbefore", "mng_rowclr",   "mng_vis",    "mng_colour",
    "mng_terms",   "mng_intervals", "mng_width",     "mng_type",     "mng_style",  "mng_samples",
    "mng_fontvar", "mng_font",      "mng_onlypara",  "mng_alsopara", "mng_family",
};

}  // namespace

std::span<const MenuEntry> MainMenu() { return kMainMenu; }
std::span<const MenuEntry> GraphPopUp() { return kGraphPopUp; }

bool ConcernsRow(const MenuEntry& entry)
{
    const auto listed = [](std::string_view name) {
        return std::ranges::find(kOfRow, name) != std::end(kOfRow);
    };
    return listed(entry.name) || entry.menu == "mng_type" || entry.menu == "mng_style";
}

std::string PlainCaption(std::string_view caption)
{
    std::string plain;
    for (const char c : caption) {
        if (c == '&') continue;
        if (c == ' ' && plain.ends_with(' ')) continue;
        plain += c;
    }
    return plain;
}

}  // namespace korvinth::app
