// What the windows of the additional lines and points are made of: an editable list and a message.
#pragma once

#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QString>
#include <functional>
#include <vector>

#include "document/display_attributes.h"

class QAction;
class QGridLayout;
class QPainter;

namespace korvinth::ui {

QString ToText(const std::string& utf8);
QColor ToColour(document::Colour colour);

// A list whose items are edited in place, shown or hidden by their check marks, moved by keys, menu
// and mouse. It tells what the user did; whoever uses it keeps the things that the items stand for.
class ItemList : public QListWidget
{
    Q_OBJECT
public:
    explicit ItemList(QWidget* parent);

    struct Item
    {
        QString text;
        QIcon sign;
        bool shown;
    };
    void SetItems(const std::vector<Item>& items);
    void AddItem(const Item& item);
    void ChangeItem(int row, const Item& item);
    void Select(int row);                   // alone, and scrolls to it
    std::vector<int> SelectedRows() const;  // ascending

    // A command of the pop-up menu, with a key.
    QAction* AddCommand(const QString& caption, const QKeySequence& key,
                        const std::function<void()>& command);
    // The commands of every list, and buttons for them.
    QGridLayout* MakeCommands(const std::function<void()>& choose_colour,
                              const std::function<void()>& remove);

    // A sign for an item, drawn on the graph's paper: `draw` gets a painter and the middle.
    QIcon MakeSign(const std::function<void(QPainter&, QRectF)>& draw) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    void edited(int row);   // the text
    void toggled(int row);  // the check mark
    // The item now at place i was at order[i].
    void reordered(const std::vector<int>& order);

protected:
    void dropEvent(QDropEvent* event) override;

private:
    void MoveSelected(int by);  // -1 up, +1 down
    void FillItem(QListWidgetItem* target, const Item& item) const;
    void TellOrder();
    void Changed(QListWidgetItem* item);

    std::vector<Item> items_;  // as last shown or told
};

// One short sentence; an error is red on pale red with a sign.
class MessageLine : public QLabel
{
    Q_OBJECT
public:
    explicit MessageLine(QWidget* parent);
    void ShowError(const QString& text);  // "" clears it
};

}  // namespace korvinth::ui
