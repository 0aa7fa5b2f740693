#include "ui/entry_list.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

#include "ui/storable_fields.h"

namespace korvinth::ui {
namespace {

constexpr int kBetweenRows = 4;         // pixels
constexpr int kPictureMargin = 3;       // around a picture, pixels
constexpr int kPause = 20;              // between two pictures, milliseconds
constexpr double kPictureLines = 1.75;  // its height in lines of text
constexpr double kPictureShape = 1.5;   // width by height
constexpr int kSmallestList = 2;        // rows
constexpr int kUsualList = 3;

struct ListKey
{
    int key;
    Qt::KeyboardModifiers modifiers;
    EntryCommand command;
};
constexpr ListKey kKeys[] = {
    {Qt::Key_Return, Qt::NoModifier, EntryCommand::Draw},
    {Qt::Key_Enter, Qt::KeypadModifier, EntryCommand::Draw},
    {Qt::Key_F2, Qt::NoModifier, EntryCommand::Rename},
    {Qt::Key_Delete, Qt::NoModifier, EntryCommand::Remove},
    {Qt::Key_C, Qt::ControlModifier, EntryCommand::Copy},
    {Qt::Key_X, Qt::ControlModifier, EntryCommand::Cut},
    {Qt::Key_V, Qt::ControlModifier, EntryCommand::Insert},
    {Qt::Key_Z, Qt::ControlModifier, EntryCommand::Undo},
    {Qt::Key_Y, Qt::ControlModifier, EntryCommand::Redo},
    {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, EntryCommand::Redo},
};

std::optional<EntryCommand> CommandOf(const QKeyEvent& event)
{
    for (const ListKey& row : kKeys) {
        if (event.key() == row.key && event.modifiers() == row.modifiers) return row.command;
    }
    return std::nullopt;
}

// A padlock that fills the box.
void PaintLock(QPainter& painter, const QRectF& box, const QColor& ink)
{
    const qreal unit = box.height() / 12;
    const QRectF body(box.center().x() - 4 * unit, box.y() + 5.5 * unit, 8 * unit, 6 * unit);
    QPainterPath shackle;
    const QRectF arc(box.center().x() - 2.4 * unit, box.y() + 1.2 * unit, 4.8 * unit, 4.8 * unit);
    shackle.moveTo(arc.left(), body.top());
    shackle.arcTo(arc, 180, -180);
    shackle.lineTo(arc.right(), body.top());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 1.5 * unit));
    painter.drawPath(shackle);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawRoundedRect(body, unit, unit);
    painter.restore();
}

class EntryDelegate : public QStyledItemDelegate
{
public:
    EntryDelegate(QSize picture, QObject* parent) : QStyledItemDelegate(parent), picture_(picture)
    {
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        QStyleOptionViewItem item = option;
        initStyleOption(&item, index);
        QStyle* style = item.widget->style();
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, item.widget);
        PaintPicture(*painter, item.rect, index.data(Qt::DecorationRole).value<QPixmap>());
        const bool selected = item.state.testFlag(QStyle::State_Selected);
        const auto ink = selected ? QPalette::HighlightedText : QPalette::Text;
        QRect text = item.rect;
        text.setLeft(TextLeft(text));
        text.setRight(text.right() - kPictureMargin);
        if (index.data(EntryModel::kProtectedRole).toBool()) {
            const int side = item.fontMetrics.ascent();
            const QRectF box(text.right() - side, text.center().y() - side / 2.0, side, side);
            PaintLock(*painter, box, item.palette.color(ink));
            text.setRight(text.right() - side - kPictureMargin);
        }
        const QString name = item.fontMetrics.elidedText(item.text, Qt::ElideRight, text.width());
        style->drawItemText(painter, text, Qt::AlignVCenter | Qt::AlignLeft, item.palette,
                            item.state.testFlag(QStyle::State_Enabled), name, ink);
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override
    {
        const int text = QFontMetrics(option.font).height();
        return {picture_.width() + 10 * text,
                std::max(picture_.height() + 2 * kPictureMargin, text + kBetweenRows)};
    }

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex&) const override
    {
        auto* editor = new QLineEdit(parent);
        editor->setObjectName("samml_name");
        editor->setAccessibleName("Name des Eintrags");
        KeepStorableName(*editor);
        return editor;
    }

    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override
    {
        const auto* field = static_cast<QLineEdit*>(editor);
        model->setData(index, ShownText(StoredText(*field)), Qt::EditRole);
    }

    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex&) const override
    {
        QRect box = option.rect;
        box.setLeft(TextLeft(box));
        editor->setGeometry(box);
    }

private:
    int TextLeft(const QRect& row) const
    {
        return row.left() + picture_.width() + 2 * kPictureMargin;
    }

    // White paper, also while there is no picture.
    void PaintPicture(QPainter& painter, const QRect& row, const QPixmap& picture) const
    {
        const QRect box(row.left() + kPictureMargin, row.center().y() - picture_.height() / 2,
                        picture_.width(), picture_.height());
        painter.fillRect(box, Qt::white);
        if (!picture.isNull()) painter.drawPixmap(box, picture);
        painter.setPen(QColor(0xC4, 0xC9, 0xCF));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(box.adjusted(0, 0, -1, -1));
    }

    QSize picture_;
};

}  // namespace

EntryList::EntryList(const document::CollectionEditor& editor, PreviewSource previews,
                     QWidget* parent)
    : QListView(parent), pictures_(std::move(previews)), model_(editor, pictures_, this)
{
    setModel(&model_);
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setDragDropMode(InternalMove);
    setDragDropOverwriteMode(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerPixel);
    picture_timer_.setSingleShot(true);
    picture_timer_.setInterval(kPause);
    connect(&picture_timer_, &QTimer::timeout, this, &EntryList::DrawNextPicture);
    FollowFont();
}

QSize EntryList::PictureSize() const
{
    const double height = kPictureLines * fontMetrics().height();
    return QSizeF(kPictureShape * height, height).toSize();
}

void EntryList::FollowFont()
{
    const QAbstractItemDelegate* const former = itemDelegate();
    setItemDelegate(new EntryDelegate(PictureSize(), this));
    delete former;
    verticalScrollBar()->setSingleStep(RowHeight());
    updateGeometry();
}

int EntryList::RowHeight() const
{
    QStyleOptionViewItem option;
    option.font = font();
    return itemDelegate()->sizeHint(option, {}).height();
}

QSize EntryList::sizeHint() const
{
    return {24 * fontMetrics().height(), kUsualList * RowHeight() + 2 * frameWidth()};
}

QSize EntryList::minimumSizeHint() const
{
    return {8 * fontMetrics().height(), kSmallestList * RowHeight() + 2 * frameWidth()};
}

std::vector<std::size_t> EntryList::SelectedPlaces() const
{
    std::vector<std::size_t> places;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            places.push_back(model_.Place(row));
        }
    }
    std::ranges::sort(places);
    return places;
}

std::optional<std::size_t> EntryList::CurrentPlace() const
{
    const QModelIndex current = currentIndex();
    if (current.isValid() && selectionModel()->isSelected(current)) {
        return model_.Place(current.row());
    }
    const std::vector<std::size_t> places = SelectedPlaces();
    if (places.empty()) return std::nullopt;
    return places.front();
}

void EntryList::Select(const std::vector<std::size_t>& places)
{
    QItemSelection selection;
    std::optional<int> first;
    for (std::size_t i = 0; i < places.size();) {
        const std::optional<int> row = model_.Row(places[i]);
        ++i;
        if (!row) continue;
        int last = *row;
        while (i < places.size() && model_.Row(places[i]) == last + 1) {
            ++last;
            ++i;
        }
        selection.append({model_.index(*row), model_.index(last)});
        if (!first) first = row;
    }
    if (first) {
        selectionModel()->setCurrentIndex(model_.index(*first), QItemSelectionModel::NoUpdate);
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    if (first) scrollTo(model_.index(*first));
}

void EntryList::EditName(std::size_t place)
{
    const std::optional<int> row = model_.Row(place);
    if (!row) return;
    setFocus();
    selectionModel()->setCurrentIndex(model_.index(*row), QItemSelectionModel::NoUpdate);
    edit(currentIndex());
}

void EntryList::FinishEditing()
{
    if (state() != EditingState) return;
    QWidget* editor = indexWidget(currentIndex());
    if (editor == nullptr) return;
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
}

// The keys belong to the list before they are the main window's.
bool EntryList::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride &&
        CommandOf(*static_cast<QKeyEvent*>(event)).has_value()) {
        event->accept();
        return true;
    }
    return QListView::event(event);
}

void EntryList::keyPressEvent(QKeyEvent* event)
{
    // A key that ends the editing of a name comes here as well.
    const bool editing = state() == EditingState;
    const std::optional<EntryCommand> command = CommandOf(*event);
    if (command && !editing) {
        Q_EMIT commandWanted(*command);
    } else {
        QListView::keyPressEvent(event);
    }
}

void EntryList::mouseDoubleClickEvent(QMouseEvent* event)
{
    QListView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->pos()).isValid()) {
        Q_EMIT commandWanted(EntryCommand::Draw);
    }
}

void EntryList::paintEvent(QPaintEvent* event)
{
    model_.SetPictureSize((QSizeF(PictureSize()) * devicePixelRatioF()).toSize());
    QListView::paintEvent(event);
    if (model_.rowCount() == 0) PaintHint();
    if (!picture_timer_.isActive() && RowWithoutPicture()) picture_timer_.start();
}

void EntryList::SetPlaceholder(const QString& text)
{
    placeholder_ = text;
    viewport()->update();
}

void EntryList::PaintHint()
{
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(6, 6, -6, -6), Qt::AlignCenter | Qt::TextWordWrap,
                     placeholder_);
}

std::optional<int> EntryList::RowWithoutPicture() const
{
    const QModelIndex top = indexAt({1, 1});
    if (!top.isValid()) return std::nullopt;
    const int rows = viewport()->height() / std::max(RowHeight(), 1) + 2;
    const int end = std::min(top.row() + rows, model_.rowCount());
    for (int row = top.row(); row < end; ++row) {
        if (pictures_.Find(model_.Entry(row), model_.PictureSize()) == nullptr) return row;
    }
    return std::nullopt;
}

// One at a time, so that the list answers at once in between.
void EntryList::DrawNextPicture()
{
    const std::optional<int> row = RowWithoutPicture();
    if (!row) return;
    pictures_.Draw(model_.Entry(*row), model_.PictureSize(), devicePixelRatioF());
    update(model_.index(*row));
    picture_timer_.start();
}

// What comes from elsewhere has not been let in.
void EntryList::dropEvent(QDropEvent* event)
{
    const QPoint place = event->position().toPoint();
    const QModelIndex target = indexAt(place);
    std::size_t before = 0;
    if (target.isValid()) {
        const bool lower_half = place.y() > visualRect(target).center().y();
        before = model_.Place(target.row()) + (lower_half ? 1 : 0);
    } else if (model_.rowCount() > 0) {
        before = model_.Place(model_.rowCount() - 1) + 1;
    }
    // Moving is done by whoever hears of it; the view is not to take rows out by itself.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
    Q_EMIT moved(SelectedPlaces(), before);
}

void EntryList::changeEvent(QEvent* event)
{
    QListView::changeEvent(event);
    if (event->type() == QEvent::FontChange) FollowFont();
}

void EntryList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QListView::selectionChanged(selected, deselected);
    Q_EMIT selectedChanged();
}

}  // namespace korvinth::ui
