#include "ui/sammlung.h"

#include <QAction>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QScrollArea>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/elided_label.h"
#include "ui/entry_list.h"
#include "ui/storable_fields.h"
#include "ui/told_texts.h"

namespace korvinth::ui {
namespace {

using document::Column;

constexpr int kMargin = 6;
constexpr int kSpacing = 4;
constexpr int kLeastRows = 3;
constexpr int kMostRows = 30;         // more do not fit on any screen
constexpr int kLinesOfDetails = 6;    // at least
constexpr int kLongestDetail = 2000;  // characters
constexpr int kLongestSearch = 200;

struct Detail
{
    Column column;
    const char* label;
};
constexpr Detail kDetails[] = {
    {Column::Functions, "Funktionen"},
    {Column::Parameters, "Parameter"},
    {Column::Details, "Eigenschaften"},
    {Column::Ranges, "Bereiche"},
    {Column::Integrals, "Integrale"},
    {Column::Colours, "Farben"},
    {Column::Widths, "Liniendicken"},
    {Column::LineTypes, "Linienarten"},
    {Column::Attributes, "Einstellungen"},
    {Column::Lines, "Geraden"},
    {Column::Points, "Punkte"},
};

struct MenuRow
{
    const char* name;
    const char* caption;  // behind the tab: its key in the list
    EntryCommand command;
    bool line_above = false;
};
constexpr MenuRow kMenu[] = {
    {"samml_draw", "&Zeichnen\tEingabe", EntryCommand::Draw},
    {"samml_take", "Daten in den angewählten Eintrag &übernehmen", EntryCommand::TakePlot},
    {"samml_addplot", "Aktuelle Daten &hinzufügen", EntryCommand::AddPlot, true},
    {"samml_new", "&Neuen Eintrag hinzufügen", EntryCommand::NewEntry},
    {"samml_rename", "U&mbenennen\tF2", EntryCommand::Rename, true},
    {"samml_copy", "&Kopieren\tStrg+C", EntryCommand::Copy},
    {"samml_cut", "Aus&schneiden\tStrg+X", EntryCommand::Cut},
    {"samml_insert", "&Einfügen\tStrg+V", EntryCommand::Insert},
    {"samml_insaft", "Einfügen &danach", EntryCommand::InsertAfter},
    {"samml_clr", "&Löschen\tEntf", EntryCommand::Remove},
    {"samml_protect", "Schü&tzen", EntryCommand::Protect, true},
    {"samml_undo", "&Rückgängig\tStrg+Z", EntryCommand::Undo, true},
    {"samml_redo", "&Wiederherstellen\tStrg+Y", EntryCommand::Redo},
};

const char* const kNothingSelected = " (kein Eintrag angewählt)";

// The lines of a column that are not empty, as many as can be looked at.
QString DetailText(std::string_view column)
{
    document::LineCursor lines(column);
    QString text;
    for (std::string_view line = lines.NextFull(); line != "end" && text.size() <= kLongestDetail;
         line = lines.NextFull()) {
        if (!text.isEmpty()) text += '\n';
        text += ShownText(line);
    }
    return text.size() > kLongestDetail ? text.left(kLongestDetail) + " …" : text;
}

}  // namespace

Sammlung::Sammlung(const document::CollectionEditor& editor, PreviewSource previews,
                   QWidget* parent)
    : QWidget(parent),
      editor_(editor),
      unfold_(new QToolButton(this)),
      selected_(new ElidedLabel(this)),
      search_(new QLineEdit(this)),
      list_(new EntryList(editor, std::move(previews), this)),
      details_(new QScrollArea(this)),
      menu_(new QMenu(this))
{
    setObjectName("sammlung");
    ShowFile("", false);
    list_->setObjectName("samml_list");
    list_->setAccessibleName("Einträge der Sammlung");
    list_->setAccessibleDescription("Die Eingabetaste zeichnet den angewählten Eintrag");
    MakeDetails();
    MakeMenu();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kSpacing, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addWidget(MakeHead());
    layout->addWidget(list_, 1);
    layout->addWidget(details_, 1);
    setFocusProxy(list_);

    connect(list_, &EntryList::commandWanted, this, &Sammlung::commandWanted);
    connect(list_, &EntryList::moved, this, &Sammlung::moved);
    connect(list_, &EntryList::selectedChanged, this, &Sammlung::ShowSelected);
    connect(&list_->Entries(), &EntryModel::renamed, this, &Sammlung::renamed);
    ShowEntries({});
}

QWidget* Sammlung::MakeHead()
{
    unfold_->setObjectName("samml_einzelheiten");
    unfold_->setCheckable(true);
    unfold_->setAutoRaise(true);
    unfold_->setArrowType(Qt::RightArrow);
    unfold_->setText("Einzelheiten");
    unfold_->setToolTip("Einzelheiten: was der angewählte Eintrag enthält");
    unfold_->setAccessibleName("Einzelheiten");
    connect(unfold_, &QToolButton::toggled, this, [this](bool shown) {
        unfold_->setArrowType(shown ? Qt::DownArrow : Qt::RightArrow);
        details_->setVisible(shown);
        Q_EMIT heightChanged();
    });
    selected_->setObjectName("samml_eintrag");
    selected_->setTextFormat(Qt::PlainText);
    selected_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    search_->setObjectName("samml_suche");
    search_->setAccessibleName("Einträge suchen");
    search_->setPlaceholderText("Suchen");
    search_->setMaxLength(kLongestSearch);
    search_->setToolTip("Sucht in Namen, Beschreibungen und Termen");
    search_->installEventFilter(this);
    connect(search_, &QLineEdit::textChanged, this, &Sammlung::TakeSearch);
    auto* add = new QToolButton(this);
    add->setObjectName("samml_add");
    add->setText("+");
    add->setAutoRaise(true);
    add->setToolTip("Aktuelle Daten als Eintrag hinzufügen");
    add->setAccessibleName("Aktuelle Daten hinzufügen");
    connect(add, &QToolButton::clicked, this,
            [this] { Q_EMIT commandWanted(EntryCommand::AddPlot); });

    auto* head = new QWidget(this);
    auto* row = new QHBoxLayout(head);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kSpacing);
    row->addWidget(unfold_);
    row->addWidget(selected_, 3);
    row->addWidget(search_, 2);
    row->addWidget(add);
    return head;
}

void Sammlung::MakeDetails()
{
    auto* sheet = new QWidget;
    fields_ = new QFormLayout(sheet);
    fields_->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    fields_->setHorizontalSpacing(12);
    fields_->setVerticalSpacing(kSpacing);
    fields_->setRowWrapPolicy(QFormLayout::DontWrapRows);
    fields_->setLabelAlignment(Qt::AlignLeft | Qt::AlignTop);
    for (const Detail& detail : kDetails) {
        auto* content = new QLabel(sheet);
        content->setObjectName(
            QStringLiteral("samml_detail[%1]").arg(static_cast<int>(detail.column)));
        content->setAccessibleDescription("Was der angewählte Eintrag enthält");
        content->setTextFormat(Qt::PlainText);
        content->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        fields_->addRow(QString::fromUtf8(detail.label) + ":", content);
        contents_[detail.column] = content;
    }
    details_->setObjectName("samml_details");
    details_->setWidgetResizable(true);
    details_->setWidget(sheet);
    details_->setMinimumHeight(2 * fontMetrics().height());
    details_->hide();
}

void Sammlung::MakeMenu()
{
    menu_->setObjectName("samml_pop");
    connect(menu_, &QMenu::aboutToShow, this, &Sammlung::menuOpens);
    for (const MenuRow& row : kMenu) {
        if (row.line_above) menu_->addSeparator();
        QAction* action = menu_->addAction(QString::fromUtf8(row.caption));
        action->setObjectName(row.name);
        connect(action, &QAction::triggered, this,
                [this, command = row.command] { Q_EMIT commandWanted(command); });
        actions_[row.command] = action;
    }
    actions_[EntryCommand::Protect]->setCheckable(true);
    list_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(list_, &QWidget::customContextMenuRequested, this,
            [this](QPoint place) { menu_->popup(list_->viewport()->mapToGlobal(place)); });
}

void Sammlung::ShowEntries(const std::vector<std::size_t>& select)
{
    list_->SetPlaceholder(editor_.Entries().empty()
                              ? QStringLiteral("Noch keine Einträge. „+“ nimmt das Bild auf.")
                              : QStringLiteral("Nichts gefunden"));
    {
        const QSignalBlocker silent(list_);
        list_->Entries().ShowEntries();
        list_->Select(select);
    }
    sought_from_.clear();
    ShowSelected();
}

void Sammlung::ShowEntry(std::size_t place)
{
    list_->Entries().ShowEntry(place);
    if (place == CurrentPlace()) ShowSelected();
}

void Sammlung::ShowFile(const QString& name, bool modified)
{
    const QString shown = name.isEmpty() ? QStringLiteral("(noch ohne Bezeichnung)") : name;
    setWindowTitle("Sammlung: " + shown + (modified ? " *" : ""));
}

void Sammlung::ShowCommand(EntryCommand command, bool possible)
{
    actions_[command]->setEnabled(possible);
}

void Sammlung::ShowProtection(bool all_protected)
{
    actions_[EntryCommand::Protect]->setChecked(all_protected);
}

void Sammlung::ShowSelected()
{
    const std::vector<std::size_t> places = SelectedPlaces();
    const std::optional<std::size_t> current = CurrentPlace();
    const document::CollectionEntry* entry = current ? &editor_.Entries()[*current] : nullptr;
    QString text = QString::fromUtf8(kNothingSelected);
    if (places.size() == 1) {
        text = ShownText((*entry)[Column::ShortText]);
    } else if (!places.empty()) {
        text = QStringLiteral("%1 Einträge angewählt").arg(places.size());
    }
    selected_->setText(text);
    TellName(*selected_, "Angewählter Eintrag: " + text);
    selected_->setToolTip(entry != nullptr ? "<p>" + text.toHtmlEscaped() + "</p>" : QString());
    ShowDetails(entry);
    Q_EMIT selectedChanged();
}

void Sammlung::ShowDetails(const document::CollectionEntry* entry)
{
    for (const auto& [column, content] : contents_) {
        const QString text = entry != nullptr ? DetailText((*entry)[column]) : QString();
        content->setText(text);
        fields_->setRowVisible(content, !text.isEmpty());
    }
}

// The entry that was selected before stays so, also when the search has left it out for a while.
void Sammlung::TakeSearch(const QString& text)
{
    std::vector<std::size_t> selected = SelectedPlaces();
    if (!selected.empty()) {
        sought_from_ = std::move(selected);
    }
    {
        const QSignalBlocker silent(list_);
        list_->Entries().SetSearch(text);
        list_->Select(sought_from_);
    }
    ShowSelected();
}

// Made when there may be something to clear: finding its icon takes long at the start.
void Sammlung::MakeClearButton()
{
    if (search_->isClearButtonEnabled()) return;
    search_->setClearButtonEnabled(true);
    for (auto* clear : search_->findChildren<QToolButton*>()) {
        clear->setAccessibleName("Leeren");
        clear->setToolTip("Sucht nicht mehr (Esc)");
    }
}

bool Sammlung::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == search_ && event->type() == QEvent::FocusIn) MakeClearButton();
    if (watched != search_ || event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
        case Qt::Key_Escape: search_->clear(); return true;
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter: break;
        default: return false;
    }
    const bool draws = static_cast<QKeyEvent*>(event)->key() != Qt::Key_Down;
    if (list_->Entries().rowCount() == 0) return true;
    if (!CurrentPlace()) list_->Select({list_->Entries().Place(0)});
    list_->setFocus();
    if (draws) Q_EMIT commandWanted(EntryCommand::Draw);
    return true;
}

std::vector<std::size_t> Sammlung::SelectedPlaces() const { return list_->SelectedPlaces(); }

std::optional<std::size_t> Sammlung::CurrentPlace() const { return list_->CurrentPlace(); }

void Sammlung::EditName(std::size_t place) { list_->EditName(place); }

void Sammlung::FinishEditing() { list_->FinishEditing(); }

void Sammlung::ClearSearch() { search_->clear(); }

int Sammlung::HeightOfRows(int rows) const
{
    const int head = std::max(search_->sizeHint().height(), unfold_->sizeHint().height());
    int height =
        kSpacing + head + kSpacing + rows * list_->RowHeight() + 2 * list_->frameWidth() + kMargin;
    if (!details_->isHidden()) height += kSpacing + kLinesOfDetails * fontMetrics().height();
    return height;
}

int Sammlung::LeastHeight() const { return HeightOfRows(kLeastRows); }

int Sammlung::FullHeight() const
{
    const auto entries = std::min<std::size_t>(editor_.Entries().size(), kMostRows);
    return HeightOfRows(std::max(kLeastRows, static_cast<int>(entries)));
}

}  // namespace korvinth::ui
