#include "ui/punkte.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/storable_fields.h"

namespace korvinth::ui {
namespace {

using document::AdditionalPoint;
using document::PointShape;

const char* const kNoPoint = "Ein Punkt hat die Gestalt (x | y).";
const char* const kShapeNames[] = {"Punkt", "Kreis", "Kreuz", "Quadrat"};
static_assert(std::size(kShapeNames) == document::kPointShapeCount);

void PaintShape(QPainter& painter, const AdditionalPoint& point, QPointF middle, qreal limit)
{
    const QColor colour = ToColour(point.colour);
    const qreal radius = std::min<qreal>(point.radius, limit);
    const QRectF box(middle.x() - radius, middle.y() - radius, 2 * radius, 2 * radius);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    switch (point.shape) {
        case PointShape::Dot: painter.drawEllipse(box); break;
        case PointShape::Square: painter.drawRect(box); break;
        case PointShape::Circle:
            painter.setPen(QPen(colour, 1.5));
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(box.adjusted(0.75, 0.75, -0.75, -0.75));
            break;
        case PointShape::Cross:
            painter.setPen(QPen(colour, 2));
            painter.drawLine(box.topLeft(), box.bottomRight());
            painter.drawLine(box.bottomLeft(), box.topRight());
            break;
    }
}

}  // namespace

Punkte::Punkte(Dialogs& dialogs, QWidget* parent)
    : QWidget(parent),
      dialogs_(dialogs),
      input_(new QLineEdit),
      list_(new ItemList(this)),
      shape_(new QComboBox),
      radius_(new QSpinBox),
      name_(new QLineEdit),
      with_values_(new QCheckBox("mit &Werten")),
      message_(new MessageLine(this))
{
    setObjectName("Punkte");
    setWindowTitle("Zusätzliche Punkte");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(6);
    MakeInput(*layout);
    list_->setObjectName("List1");
    list_->setAccessibleName("Zusätzliche Punkte");
    list_->setAccessibleDescription("F2 bearbeitet, die Leertaste blendet ein und aus");
    layout->addWidget(list_, 1);
    MakeLook(*layout);
    layout->addLayout(list_->MakeCommands([this] { ChooseColour(); }, [this] { remove(); }));
    message_->setObjectName("meldung");
    layout->addWidget(message_);
    connect(list_, &ItemList::edited, this, &Punkte::TakeText);
    connect(list_, &ItemList::toggled, this, [this](int row) {
        Point(row).hidden = !Point(row).hidden;
        ShowItem(row);
        Q_EMIT restyled(readlist());
    });
    connect(list_, &ItemList::reordered, this, [this](const std::vector<int>& order) {
        std::vector<AdditionalPoint> points;
        points.reserve(order.size());
        for (const int place : order) points.push_back(Point(place));
        points_ = std::move(points);
        Q_EMIT restyled(readlist());
    });
    connect(list_, &QListWidget::itemSelectionChanged, this, &Punkte::ShowSelected);
    ShowSelected();
}

void Punkte::MakeInput(QVBoxLayout& layout)
{
    input_->setObjectName("Text1");
    KeepStorableTerm(*input_);
    input_->setAccessibleName("Neuer Punkt");
    input_->setAccessibleDescription("Name und Koordinaten, die Terme sein dürfen: P(2 | a)");
    input_->setPlaceholderText("zum Beispiel P(2 | a)");
    auto* add = new QPushButton("Hin&zufügen", this);
    add->setObjectName("hinzu");
    add->setToolTip("Punkt hinzufügen (Eingabetaste)");
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(input_, 1);
    row->addWidget(add);
    layout.addLayout(row);
    setTabOrder(input_, add);
    setTabOrder(add, list_);
    connect(input_, &QLineEdit::returnPressed, this, &Punkte::Add);
    connect(add, &QPushButton::clicked, this, &Punkte::Add);
}

void Punkte::MakeLook(QVBoxLayout& layout)
{
    for (const char* name : kShapeNames) shape_->addItem(QString::fromUtf8(name));
    radius_->setRange(1, document::kLargestPoint);
    radius_->setValue(next_.radius);
    const auto label = [this](const char* caption, QWidget* field, const char* name,
                              const char* description) {
        auto* made = new QLabel(QString::fromUtf8(caption), this);
        made->setBuddy(field);
        field->setObjectName(QLatin1String(name));
        field->setAccessibleName(made->text().remove('&').remove(':'));
        field->setAccessibleDescription(QString::fromUtf8(description));
        return made;
    };
    auto* grid = new QGridLayout;
    grid->setSpacing(6);
    grid->addWidget(label("For&m:", shape_, "form", "Gestalt der gewählten und neuer Punkte"), 0,
                    0);
    grid->addWidget(shape_, 0, 1);
    grid->addWidget(label("&Radius:", radius_, "radius", "Größe in Bildpunkten"), 0, 2);
    grid->addWidget(radius_, 0, 3);
    grid->addWidget(label("&Name:", name_, "name", "Steht neben dem gewählten Punkt"), 1, 0);
    grid->addWidget(name_, 1, 1);
    with_values_->setObjectName("werte");
    with_values_->setToolTip("Die Koordinaten stehen mit am Punkt: P(2|4)");
    grid->addWidget(with_values_, 1, 2, 1, 2);
    grid->setColumnStretch(1, 1);
    layout.addLayout(grid);
    connect(shape_, &QComboBox::activated, this, [this](int index) {
        ChangeLook([index](AdditionalPoint& point) {
            point.shape = PointShape{static_cast<std::int16_t>(index)};
        });
    });
    connect(radius_, &QSpinBox::valueChanged, this, [this](int value) {
        ChangeLook([value](AdditionalPoint& point) { point.radius = value; });
    });
    connect(with_values_, &QCheckBox::clicked, this, [this](bool checked) {
        ChangeLook([checked](AdditionalPoint& point) { point.with_values = checked; });
    });
    KeepReadable(*name_);
    connect(name_, &QLineEdit::editingFinished, this, [this] {
        const std::vector<int> rows = list_->SelectedRows();
        if (!name_->isModified() || rows.size() != 1) return;
        name_->setModified(false);
        Point(rows[0]).name = name_->text().trimmed().toStdString();
        ShowItem(rows[0]);
        Q_EMIT restyled(readlist());
    });
}

void Punkte::text2list(std::string_view points_text)
{
    std::vector<AdditionalPoint> points = document::Text2Points(points_text);
    if (points == points_) return;  // the selection stays
    if (points.size() == points_.size()) {
        // A dragged point stays selected.
        points_.swap(points);
        for (int row = 0; row < list_->count(); ++row) {
            if (Point(row) != points[static_cast<std::size_t>(row)]) ShowItem(row);
        }
    } else {
        points_ = std::move(points);
        list_->SetItems(Items());
        ShowProblems("");
    }
    ShowSelected();
}

void Punkte::ShowProblems(std::string_view problems)
{
    message_->ShowError(QString::fromUtf8(problems.data(), std::ssize(problems)).trimmed());
}

void Punkte::Add()
{
    AdditionalPoint point = next_;
    document::ReadPointText(input_->text().trimmed().toStdString(), point);
    if (point.x.empty() && point.y.empty()) return;
    if (point.x.empty() || point.y.empty()) {
        ShowProblems(kNoPoint);  // what was typed stays
        return;
    }
    ShowProblems("");
    points_.push_back(point);
    list_->AddItem(ItemOf(point));
    input_->clear();
    list_->Select(list_->count() - 1);
    Q_EMIT taken(readlist());
}

void Punkte::remove()
{
    const std::vector<int> rows = list_->SelectedRows();
    if (rows.empty()) return;
    // From below, so that the numbers of the others hold.
    std::for_each(rows.rbegin(), rows.rend(),
                  [this](int row) { points_.erase(points_.begin() + row); });
    list_->SetItems(Items());
    if (!points_.empty()) list_->Select(std::min(rows.front(), list_->count() - 1));
    ShowSelected();
    ShowProblems("");
    Q_EMIT taken(readlist());
}

void Punkte::ShowSelected()
{
    const std::vector<int> rows = list_->SelectedRows();
    name_->setEnabled(rows.size() == 1);
    name_->clear();
    if (rows.empty()) return;
    const AdditionalPoint& point = Point(rows.front());
    next_ = point;
    next_.hidden = false;
    const QSignalBlocker silent(radius_);
    shape_->setCurrentIndex(static_cast<int>(point.shape));
    radius_->setValue(point.radius);
    with_values_->setChecked(point.with_values);
    if (rows.size() == 1) name_->setText(ToText(point.name));
}

void Punkte::TakeText(int row)
{
    AdditionalPoint point = Point(row);
    document::ReadPointText(list_->item(row)->text().trimmed().toStdString(), point);
    const bool same = point == Point(row) || point.x.empty();
    if (!same) Point(row) = point;
    ShowItem(row);
    if (same) return;
    ShowSelected();
    ShowProblems(point.y.empty() ? kNoPoint : "");
    Q_EMIT taken(readlist());
}

void Punkte::ChooseColour()
{
    const auto colour = dialogs_.ChooseColour(next_.colour);
    if (colour) ChangeLook([&](AdditionalPoint& point) { point.colour = *colour; });
}

template <class Change>
void Punkte::ChangeLook(Change change)
{
    change(next_);
    const std::vector<int> rows = list_->SelectedRows();
    if (rows.empty()) return;
    for (const int row : rows) {
        change(Point(row));
        ShowItem(row);
    }
    Q_EMIT restyled(readlist());
}

std::vector<ItemList::Item> Punkte::Items() const
{
    std::vector<ItemList::Item> items;
    for (const AdditionalPoint& point : points_) items.push_back(ItemOf(point));
    return items;
}

ItemList::Item Punkte::ItemOf(const AdditionalPoint& point) const
{
    const QIcon sign = list_->MakeSign([&](QPainter& painter, QRectF paper) {
        PaintShape(painter, point, paper.center(), paper.height() / 2 - 1);
    });
    return {ToText(document::PointText(point)), sign, !point.hidden};
}

void Punkte::ShowItem(int row) { list_->ChangeItem(row, ItemOf(Point(row))); }

}  // namespace korvinth::ui
