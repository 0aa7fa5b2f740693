#include "ui/item_list.h"

#include <QAction>
#include <QDropEvent>
#include <QGridLayout>
#include <QPainter>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "ui/told_texts.h"

namespace korvinth::ui {
namespace {

constexpr int kPlaceRole = Qt::UserRole;  // where an item was when the order was last told
constexpr int kLinesOfMessage = 4;

// As in every window of the program, in light and dark desktops alike.
constexpr QColor kErrorText(0x8A, 0x0F, 0x12);
constexpr QColor kErrorBackground(0xFB, 0xE3, 0xE4);

QPushButton* MakeButton(QAction* command, const char* name, const char* description)
{
    auto* button = new QPushButton(command->text());
    button->setObjectName(QLatin1String(name));
    const QString key = command->shortcut().toString(QKeySequence::NativeText);
    const QString tip = QString::fromUtf8(description);
    button->setToolTip(key.isEmpty() ? tip : tip + " (" + key + ")");
    QObject::connect(button, &QPushButton::clicked, command, &QAction::trigger);
    return button;
}

}  // namespace

QString ToText(const std::string& utf8) { return QString::fromStdString(utf8); }

QColor ToColour(document::Colour colour)
{
    return {document::Red(colour), document::Green(colour), document::Blue(colour)};
}

ItemList::ItemList(QWidget* parent) : QListWidget(parent)
{
    setSelectionMode(ExtendedSelection);
    setDragDropMode(InternalMove);
    setEditTriggers(DoubleClicked | EditKeyPressed);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideRight);
    const int side = fontMetrics().height();
    setIconSize({2 * side, side});
    setMinimumHeight(2 * side);  // on small screens the fields around it need the room
    connect(this, &QListWidget::itemChanged, this, &ItemList::Changed);
}

QSize ItemList::sizeHint() const
{
    constexpr int kCharacters = 42;
    constexpr int kLines = 6;
    return {kCharacters * fontMetrics().averageCharWidth(), kLines * fontMetrics().height()};
}

void ItemList::SetItems(const std::vector<Item>& items)
{
    clear();
    items_.clear();
    for (const Item& item : items) AddItem(item);
}

void ItemList::AddItem(const Item& item)
{
    items_.push_back(item);
    auto* added = new QListWidgetItem;
    added->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable |
                    Qt::ItemIsUserCheckable | Qt::ItemIsDragEnabled);
    added->setData(kPlaceRole, count());
    FillItem(added, item);
    addItem(added);
}

void ItemList::ChangeItem(int row, const Item& item)
{
    items_[static_cast<std::size_t>(row)] = item;
    const QSignalBlocker silent(this);
    FillItem(this->item(row), item);
}

void ItemList::FillItem(QListWidgetItem* target, const Item& item) const
{
    target->setText(item.text);
    target->setToolTip(item.text.toHtmlEscaped());
    target->setIcon(item.sign);
    target->setCheckState(item.shown ? Qt::Checked : Qt::Unchecked);
    // Hidden items are pale, besides their missing check mark.
    target->setForeground(item.shown ? QBrush() : palette().placeholderText());
}

void ItemList::Select(int row)
{
    clearSelection();
    setCurrentRow(row);
    if (currentItem() != nullptr) scrollToItem(currentItem());
}

std::vector<int> ItemList::SelectedRows() const
{
    std::vector<int> rows;
    for (const QModelIndex& index : selectedIndexes()) rows.push_back(index.row());
    std::ranges::sort(rows);
    return rows;
}

QAction* ItemList::AddCommand(const QString& caption, const QKeySequence& key,
                              const std::function<void()>& command)
{
    auto* action = new QAction(caption, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, command);
    addAction(action);
    return action;
}

QGridLayout* ItemList::MakeCommands(const std::function<void()>& choose_colour,
                                    const std::function<void()>& remove)
{
    AddCommand("&Bearbeiten", {}, [this] { edit(currentIndex()); });
    QAction* colour = AddCommand("F&arbe …", {}, choose_colour);
    QAction* up =
        AddCommand("Nach &oben", QKeySequence(Qt::CTRL | Qt::Key_Up), [this] { MoveSelected(-1); });
    QAction* down = AddCommand("Nach &unten", QKeySequence(Qt::CTRL | Qt::Key_Down),
                               [this] { MoveSelected(1); });
    QAction* deletion = AddCommand("&Löschen", QKeySequence(Qt::Key_Delete), remove);
    auto* buttons = new QGridLayout;
    buttons->setSpacing(6);
    buttons->addWidget(MakeButton(up, "oben", "Rückt die gewählten Einträge nach oben"), 0, 0);
    buttons->addWidget(MakeButton(colour, "farbe", "Ändert die Farbe der gewählten Einträge"), 0,
                       1);
    buttons->addWidget(MakeButton(down, "unten", "Rückt die gewählten Einträge nach unten"), 1, 0);
    buttons->addWidget(MakeButton(deletion, "weg", "Löscht die gewählten Einträge"), 1, 1);
    return buttons;
}

QIcon ItemList::MakeSign(const std::function<void(QPainter&, QRectF)>& draw) const
{
    const qreal ratio = devicePixelRatioF();
    QPixmap image((QSizeF(iconSize()) * ratio).toSize());
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF paper(QPointF(0, 0), QSizeF(iconSize()));
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(paper, 3, 3);
    draw(painter, paper);
    return {image};
}

void ItemList::MoveSelected(int by)
{
    std::vector<int> rows = SelectedRows();
    if (rows.empty() || rows.front() + by < 0 || rows.back() + by >= count()) return;
    if (by > 0) std::ranges::reverse(rows);
    const int current = currentRow();
    {
        const QSignalBlocker silent(this);
        for (const int row : rows) insertItem(row + by, takeItem(row));
        clearSelection();
        setCurrentRow(current + by);
        for (const int row : rows) item(row + by)->setSelected(true);
    }
    TellOrder();
}

void ItemList::dropEvent(QDropEvent* event)
{
    QListWidget::dropEvent(event);
    TellOrder();
}

void ItemList::TellOrder()
{
    std::vector<int> order;
    std::vector<Item> items;
    const QSignalBlocker silent(model());
    for (int row = 0; row < count(); ++row) {
        order.push_back(item(row)->data(kPlaceRole).toInt());
        items.push_back(items_[static_cast<std::size_t>(order.back())]);
        item(row)->setData(kPlaceRole, row);
    }
    items_ = std::move(items);
    if (std::ranges::is_sorted(order)) return;
    Q_EMIT reordered(order);
}

void ItemList::Changed(QListWidgetItem* item)
{
    const int row = this->row(item);
    if (row < 0 || std::cmp_greater_equal(row, items_.size())) return;
    Item& known = items_[static_cast<std::size_t>(row)];
    if (item->text() != known.text) {
        known.text = item->text();
        Q_EMIT edited(row);
    } else if ((item->checkState() == Qt::Checked) != known.shown) {
        known.shown = !known.shown;
        Q_EMIT toggled(row);
    }
}

MessageLine::MessageLine(QWidget* parent) : QLabel(parent)
{
    setAccessibleName("Meldung");
    setAccessibleDescription("Was an der Eingabe nicht stimmt");
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setWordWrap(true);
    setMargin(4);
    setMaximumHeight(kLinesOfMessage * fontMetrics().lineSpacing() + 10);
    // A long message without a blank must not widen the window.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    hide();
}

void MessageLine::ShowError(const QString& text)
{
    QPalette colours;
    colours.setColor(QPalette::WindowText, kErrorText);
    colours.setColor(QPalette::Window, kErrorBackground);
    setPalette(colours);
    setAutoFillBackground(true);
    setText("⚠ " + text);
    TellName(*this, "Meldung: " + text);
    setToolTip("<p>" + text.toHtmlEscaped() + "</p>");
    setVisible(!text.isEmpty());
}

}  // namespace korvinth::ui
