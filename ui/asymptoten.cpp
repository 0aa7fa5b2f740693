#include "ui/asymptoten.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <optional>

#include "ui/storable_fields.h"

namespace korvinth::ui {
namespace {

using document::AdditionalLine;
using document::LineType;

const char* const kHint = "Gleichungen der Gestalt x=a oder y=m*x+t";

Qt::PenStyle StyleOf(LineType type)
{
    switch (type) {
        case LineType::Dash: return Qt::DashLine;
        case LineType::Dot: return Qt::DotLine;
        case LineType::DashDot: return Qt::DashDotLine;
        case LineType::DashDotDot: return Qt::DashDotDotLine;
        case LineType::Invisible: return Qt::NoPen;
        case LineType::Solid:
        case LineType::SolidInside: break;
    }
    return Qt::SolidLine;
}

std::string Number(LineType type) { return std::to_string(static_cast<int>(type)); }

}  // namespace

Asymptoten::Asymptoten(Dialogs& dialogs, QWidget* parent)
    : QWidget(parent),
      dialogs_(dialogs),
      common_colour_(document::DisplayAttributes{}.line_colour),
      input_(new QLineEdit),
      type_field_(new QLineEdit("0")),
      list_(new ItemList(this)),
      message_(new MessageLine(this))
{
    setObjectName("Asymptoten");
    KeepStorableTerm(*input_);
    setWindowTitle("Zusätzliche Geraden");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(6);
    MakeInput(*layout);
    list_->setObjectName("List1");
    list_->setAccessibleName("Zusätzliche Geraden");
    list_->setAccessibleDescription("F2 bearbeitet, die Leertaste blendet ein und aus");
    layout->addWidget(list_, 1);
    layout->addLayout(list_->MakeCommands([this] { ChooseColour(); }, [this] { remove(); }));
    list_->AddCommand("&Gemeinsame Farbe", {}, [this] { TakeCommonColour(); });
    message_->setObjectName("meldung");
    layout->addWidget(message_);
    connect(list_, &ItemList::edited, this, &Asymptoten::TakeText);
    connect(list_, &ItemList::toggled, this, [this](int row) {
        Line(row).hidden = !Line(row).hidden;
        ShowItem(row);
        Restyle();
    });
    connect(list_, &ItemList::reordered, this, [this](const std::vector<int>& order) {
        std::vector<AdditionalLine> lines;
        lines.reserve(order.size());
        for (const int place : order) lines.push_back(Line(place));
        lines_ = std::move(lines);
        Restyle();
    });
    connect(list_, &QListWidget::itemSelectionChanged, this, &Asymptoten::ShowSelected);
}

void Asymptoten::MakeInput(QVBoxLayout& layout)
{
    auto* hint = new QLabel(QString::fromUtf8(kHint), this);
    hint->setObjectName("hinweis");
    hint->setWordWrap(true);
    hint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    input_->setObjectName("Text1");
    input_->setAccessibleName("Neue Gerade");
    input_->setAccessibleDescription(QString::fromUtf8(kHint));
    input_->setPlaceholderText("zum Beispiel y=2*x+1");
    auto* add = new QPushButton("Hin&zufügen", this);
    add->setObjectName("hinzu");
    add->setToolTip("Gerade hinzufügen (Eingabetaste)");
    KeepReadable(*type_field_);
    type_field_->setObjectName("Text2");
    type_field_->setAccessibleName("Linienart: ( 0 - 6 )");
    type_field_->setToolTip(
        "0 durchgezogen, 1 gestrichelt, 2 gepunktet, 3 und 4 Strich und Punkte, 5 unsichtbar, "
        "6 durchgezogen (innen)");
    type_field_->setMaximumWidth(8 * fontMetrics().averageCharWidth());
    auto* label = new QLabel("L&inienart:     ( 0 - 6 )", this);
    label->setObjectName("Label1");
    label->setBuddy(type_field_);

    auto* grid = new QGridLayout;
    grid->setSpacing(6);
    grid->addWidget(hint, 0, 0, 1, 3);
    grid->addWidget(input_, 1, 0, 1, 2);
    grid->addWidget(add, 1, 2);
    grid->addWidget(label, 2, 0);
    grid->addWidget(type_field_, 2, 1, Qt::AlignLeft);
    grid->setColumnStretch(1, 1);
    layout.addLayout(grid);
    setTabOrder(input_, add);
    setTabOrder(add, type_field_);
    setTabOrder(type_field_, list_);
    connect(input_, &QLineEdit::returnPressed, this, &Asymptoten::asytaste);
    connect(add, &QPushButton::clicked, this, &Asymptoten::asytaste);
    connect(type_field_, &QLineEdit::editingFinished, this, &Asymptoten::chdicke);
}

void Asymptoten::text2list(std::string_view lines_text)
{
    std::vector<AdditionalLine> lines = document::Text2List(lines_text);
    if (lines == lines_) return;  // the selection stays
    lines_ = std::move(lines);
    std::vector<ItemList::Item> items;
    for (const AdditionalLine& line : lines_) items.push_back(ItemOf(line));
    list_->SetItems(items);
    ShowProblems("");
}

void Asymptoten::SetCommonColour(document::Colour colour)
{
    common_colour_ = colour;
    for (int row = 0; row < list_->count(); ++row) {
        if (!Line(row).colour) ShowItem(row);
    }
}

void Asymptoten::ShowProblems(std::string_view problems)
{
    std::string text(problems);
    const auto idle = std::ranges::find(
        lines_, document::LineDirection::None,
        [](const AdditionalLine& line) { return document::DirectionOf(line.equation); });
    if (idle != lines_.end()) text += idle->equation + " wird nicht gezeichnet. " + kHint;
    message_->ShowError(ToText(text).trimmed());
}

void Asymptoten::nimms() { Q_EMIT taken(takeit()); }

void Asymptoten::Restyle() { Q_EMIT restyled(takeit()); }

void Asymptoten::asytaste()
{
    const std::string equation = document::LineEquation(input_->text().trimmed().toStdString());
    if (equation.empty()) return;
    const std::optional<std::size_t> known = document::FindInList(lines_, equation);
    const int row = static_cast<int>(known.value_or(lines_.size()));
    if (known) {
        Line(row).type = type_;
        ShowItem(row);
    } else {
        lines_.push_back({equation, type_, {}, false});
        list_->AddItem(ItemOf(lines_.back()));
    }
    input_->clear();
    activate(row);
    ShowProblems("");
    nimms();
}

void Asymptoten::chdicke()
{
    if (!type_field_->isModified()) return;
    type_field_->setModified(false);
    const auto type = document::ReadLineType(type_field_->text().toStdString());
    if (!type) {
        type_field_->setText(ToText(Number(type_)));
        dialogs_.ShowError(std::string(document::kWrongLineTypeTitle),
                           std::string(document::kWrongLineType));
        return;
    }
    type_ = *type;
    const std::vector<int> rows = list_->SelectedRows();
    for (const int row : rows) chli(row, type_);
    if (!rows.empty()) Restyle();
}

void Asymptoten::chli(int row, LineType type)
{
    Line(row).type = type;
    ShowItem(row);
}

void Asymptoten::remove()
{
    const std::vector<int> rows = list_->SelectedRows();
    if (rows.empty()) return;
    // From below, so that the numbers of the others hold.
    std::for_each(rows.rbegin(), rows.rend(),
                  [this](int row) { lines_.erase(lines_.begin() + row); });
    std::vector<ItemList::Item> items;
    for (const AdditionalLine& line : lines_) items.push_back(ItemOf(line));
    list_->SetItems(items);
    if (!lines_.empty()) activate(std::min(rows.front(), list_->count() - 1));
    ShowProblems("");
    nimms();
}

void Asymptoten::activate(int row) { list_->Select(row); }

void Asymptoten::ShowSelected()
{
    const std::vector<int> rows = list_->SelectedRows();
    if (rows.empty() || type_field_->isModified()) return;
    type_ = Line(rows.front()).type;
    type_field_->setText(ToText(Number(type_)));
}

void Asymptoten::TakeText(int row)
{
    const std::string equation =
        document::LineEquation(list_->item(row)->text().trimmed().toStdString());
    const bool changed = !equation.empty() && equation != Line(row).equation;
    if (changed) Line(row).equation = equation;
    ShowItem(row);
    if (!changed) return;
    ShowProblems("");
    nimms();
}

template <class Change>
void Asymptoten::ChangeSelected(Change change)
{
    const std::vector<int> rows = list_->SelectedRows();
    if (rows.empty()) return;
    for (const int row : rows) {
        change(Line(row));
        ShowItem(row);
    }
    Restyle();
}

void Asymptoten::ChooseColour()
{
    const std::vector<int> rows = list_->SelectedRows();
    if (rows.empty()) return;
    const auto colour = dialogs_.ChooseColour(Line(rows.front()).colour.value_or(common_colour_));
    if (colour) ChangeSelected([&](AdditionalLine& line) { line.colour = colour; });
}

void Asymptoten::TakeCommonColour()
{
    ChangeSelected([](AdditionalLine& line) { line.colour.reset(); });
}

ItemList::Item Asymptoten::ItemOf(const AdditionalLine& line) const
{
    const QColor colour = ToColour(line.colour.value_or(common_colour_));
    const QIcon sign = list_->MakeSign([&](QPainter& painter, QRectF paper) {
        painter.setPen(QPen(colour, 1.5, StyleOf(line.type)));
        painter.drawLine(QPointF(paper.left() + 3, paper.center().y()),
                         QPointF(paper.right() - 3, paper.center().y()));
    });
    return {ToText(line.equation), sign, !line.hidden};
}

void Asymptoten::ShowItem(int row) { list_->ChangeItem(row, ItemOf(Line(row))); }

}  // namespace korvinth::ui
