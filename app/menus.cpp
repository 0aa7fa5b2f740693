#include "app/menus.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMenuBar>

namespace korvinth::app {
namespace {

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

Menus::Menus(QMainWindow& window) : window_(window)
{
    Build(MainMenu(), true);
    Build(GraphPopUp(), false);
    int number = 0;
    for (const int points : kDescriptionPoints) {
        SetCaption("mnfs1[" + std::to_string(number++) + "]",
                   QStringLiteral("%1 Punkt").arg(points));
    }
}

void Menus::Build(std::span<const MenuEntry> table, bool in_menu_bar)
{
    for (const MenuEntry& entry : table) {
        if (entry.kind == EntryKind::Separator) {
            Menu(entry.menu).addSeparator();
        } else if (entry.kind == EntryKind::Menu) {
            QMenu* menu = nullptr;
            if (!entry.menu.empty()) {
                menu = Menu(entry.menu).addMenu(Text(entry.caption));
            } else if (in_menu_bar) {
                menu = window_.menuBar()->addMenu(Text(entry.caption));
            } else {
                menu = new QMenu(Text(entry.caption), &window_);
            }
            menu->setObjectName(Text(entry.name));
            menu->setAccessibleName(Text(PlainCaption(entry.caption)));
            menu->setToolTipsVisible(false);
            menus_[std::string(entry.name)] = menu;
            entries_[std::string(entry.name)] = menu->menuAction();
        } else {
            AddEntry(entry);
        }
    }
}

void Menus::AddEntry(const MenuEntry& entry)
{
    QMenu& menu = Menu(entry.menu);
    QAction* action = menu.addAction(Text(entry.caption));
    action->setObjectName(Text(entry.name));
    action->setToolTip(Text(PlainCaption(entry.caption)));
    action->setCheckable(entry.kind != EntryKind::Command);
    if (entry.kind == EntryKind::Exclusive) {
        QActionGroup*& group = groups_[std::string(entry.menu)];
        if (group == nullptr) group = new QActionGroup(&menu);
        group->addAction(action);
    }
    if (!entry.shortcut.empty()) {
        action->setShortcut(QKeySequence::fromString(Text(entry.shortcut)));
    }
    entries_[std::string(entry.name)] = action;
}

QAction& Menus::Entry(std::string_view name) const { return *entries_.find(name)->second; }

QMenu& Menus::Menu(std::string_view name) const { return *menus_.find(name)->second; }

void Menus::SetChecked(std::string_view name, bool checked) const
{
    Entry(name).setChecked(checked);
}

void Menus::SetEnabled(std::string_view name, bool enabled) const
{
    Entry(name).setEnabled(enabled);
}

void Menus::SetCaption(std::string_view name, const QString& caption) const
{
    Entry(name).setText(caption);
}

QMenu& Menus::GraphMenu() const
{
    for (const MenuEntry& entry : GraphPopUp()) {
        if (!entry.name.empty()) Entry(entry.name).setVisible(true);
    }
    return Menu("mn_pop1");
}

QMenu& Menus::RowMenu() const
{
    for (const MenuEntry& entry : GraphPopUp()) {
        if (!entry.name.empty()) Entry(entry.name).setVisible(ConcernsRow(entry));
    }
    return Menu("mn_pop1");
}

}  // namespace korvinth::app
