// Builds the menus out of their tables and finds entries by name.
#pragma once

#include <QMainWindow>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "app/menu_table.h"

class QAction;
class QActionGroup;
class QMenu;

namespace korvinth::app {

// The actions and pop-up menus are children of the main window.
class Menus
{
public:
    explicit Menus(QMainWindow& window);

    // The entry of this name; there is one for each row of the tables.
    QAction& Entry(std::string_view name) const;
    QMenu& Menu(std::string_view name) const;

    // The check marks follow the state; no entry counts as triggered by that.
    void SetChecked(std::string_view name, bool checked) const;
    void SetEnabled(std::string_view name, bool enabled) const;
    void SetCaption(std::string_view name, const QString& caption) const;

    // mn_pop1 with all its entries, or those for one row only.
    QMenu& GraphMenu() const;
    QMenu& RowMenu() const;

private:
    void Build(std::span<const MenuEntry> table, bool in_menu_bar);
    void AddEntry(const MenuEntry& entry);

    QMainWindow& window_;
    std::map<std::string, QAction*, std::less<>> entries_;
    std::map<std::string, QMenu*, std::less<>> menus_;
    std::map<std::string, QActionGroup*, std::less<>> groups_;  // by their menu
};

}  // namespace korvinth::app
