#include "ui/termform.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStringList>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/status_line.h"
#include "ui/symbol_bar.h"
#include "ui/term_row.h"
#include "ui/told_texts.h"

namespace korvinth::ui {
namespace {

using document::AllSlots;
using document::EditorState;
using document::kSlotCount;
using document::Number;
using document::SlotIndex;

constexpr int kSmallestPoints = 11;
constexpr int kSpacing = 6;  // pixels between controls
constexpr int kMargin = 6;
constexpr int kFewestRows = 2;    // that the smallest window shows: those of a curve
constexpr int kFewestFitted = 5;  // that a fitted window shows
constexpr int kLongestTip = 1500;
constexpr std::size_t kRememberedMoves = 20;

SlotIndex Row(int number) { return SlotIndex{static_cast<std::int16_t>(number)}; }

QString Numbered(const char* name, int number)
{
    return QStringLiteral("%1[%2]").arg(QLatin1String(name)).arg(number);
}

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString Shortened(const QString& text, int characters)
{
    return text.size() <= characters ? text : text.left(characters - 1) + "…";
}

}  // namespace

TermForm::TermForm(const document::PlotDocument& document, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), document_(document), dialogs_(dialogs)
{
    setObjectName("termform");
    MakeRows();
    MakeButtons();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(btback_);
    buttons->addStretch();
    buttons->addWidget(symbols_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addWidget(scroll_, 1);
    layout->addLayout(buttons);
    layout->addWidget(status_);
    layout->addStretch();

    LayoutRows();
    setstate(0);
    init();
    SetCurrentRow(Row(0));
}

void TermForm::MakeRows()
{
    pane_ = new TermRowsPane(this);
    auto* grid = new QGridLayout(pane_);
    grid->setContentsMargins(kSpacing / 2, kSpacing / 2, kSpacing / 2, kSpacing / 2);
    grid->setSpacing(kSpacing);
    for (const SlotIndex row : AllSlots()) {
        const int number = Number(row);
        auto* colour = new ColourField(pane_);
        colour->setObjectName(Numbered("fcol", number));
        colour->setToolTip("Farbe ändern");
        connect(colour, &ColourField::pressed, this, [this, row] {
            SetCurrentRow(row);
            showcd();
        });
        auto* field = new TermField(pane_);
        field->setObjectName(Numbered("fnam", number));
        field->installEventFilter(this);
        connect(field, &QLineEdit::textChanged, this,
                [this, row](const QString& text) { Typed(row, text); });
        connect(field, &TermField::unfitTextOffered, this,
                [this, row](const QString& text) { PasteLines(row, text); });
        connect(field, &TermField::rowMenuRequested, this,
                [this](QPoint position) { RequestRowMenu(position); });
        auto* plus = new QToolButton(pane_);
        plus->setObjectName(Numbered("cmplus", number));
        plus->setText("+");
        plus->setAutoRaise(true);
        plus->setFocusPolicy(Qt::NoFocus);  // the keys of the row do the same
        plus->setToolTip("Zeile hinzufügen / löschen (mit Umschalttaste)");
        plus->setAccessibleName(
            QStringLiteral("Zeile hinzufügen / löschen (mit Umschalttaste), Zeile %1")
                .arg(number + 1));
        plus->installEventFilter(this);
        connect(plus, &QToolButton::clicked, this,
                [this, row] { PlusClicked(row, std::exchange(shift_held_, false)); });
        grid->addWidget(colour, number, 0);
        grid->addWidget(field, number, 1);
        grid->addWidget(plus, number, 2);
        fcol_[row] = colour;
        fnam_[row] = field;
        cmplus_[row] = plus;
    }
    grid->setRowStretch(kSlotCount, 1);
    scroll_ = new QScrollArea(this);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(true);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setWidget(pane_);
    // Also when a message takes room from the rows.
    connect(scroll_->verticalScrollBar(), &QScrollBar::rangeChanged, this,
            [this] { scroll_->ensureWidgetVisible(fnam_[current_], 0, kSpacing); });
}

void TermForm::MakeButtons()
{
    btback_ = new QPushButton(this);
    btback_->setObjectName("btback");
    btback_->setAutoDefault(false);
    connect(btback_, &QPushButton::clicked, this, &TermForm::SwitchState);
    symbols_ = new SymbolBar(this);
    connect(symbols_, &SymbolBar::typed, this, &TermForm::TypeSymbol);
    status_ = new StatusLine(this);
    status_->setObjectName("status");
}

void TermForm::SetRowPoints(std::optional<int> points)
{
    row_points_ = points;
    LayoutRows();
}

int TermForm::RowPoints() const { return qRound(pane_->font().pointSizeF()); }

void TermForm::LayoutRows()
{
    QFont row_font = font();
    row_font.setFamily("Arial");
    row_font.setPointSizeF(row_points_ ? *row_points_
                                       : std::max<qreal>(row_font.pointSizeF(), kSmallestPoints));
    pane_->setFont(row_font);
    const int height = fnam_[Row(0)]->sizeHint().height();
    const QFontMetrics metrics(row_font);
    for (const SlotIndex row : AllSlots()) {
        fnam_[row]->setFixedHeight(height);
        fcol_[row]->setFixedSize(height, height);
        cmplus_[row]->setFixedSize(2 * metrics.horizontalAdvance('+'), height);
    }
    scroll_->setMaximumHeight(kSlotCount * (height + kSpacing) + kSpacing);
    symbols_->LayoutButtons(row_font, btback_->sizeHint().height());
    fitheight();
}

int TermForm::HeightOf(int rows) const
{
    const int row_height = fnam_[Row(0)]->height() + kSpacing;
    return 2 * kMargin + rows * row_height + kSpacing + btback_->sizeHint().height() + kSpacing +
           status_->HeightOfOneLine();
}

QSize TermForm::sizeHint() const
{
    const auto last = rows_.LastRowWithTerm();
    const int in_use = last ? Number(*last) + 1 : 0;
    const int width = 30 * pane_->fontMetrics().averageCharWidth() + fcol_[Row(0)]->width() +
                      cmplus_[Row(0)]->width() + 4 * kSpacing;
    return {std::max(width, minimumSizeHint().width()),
            HeightOf(std::clamp(in_use + 1, kFewestFitted, kSlotCount))};
}

int TermForm::HeightOfAllRows() const { return HeightOf(kSlotCount); }

QSize TermForm::minimumSizeHint() const
{
    return {btback_->sizeHint().width() + kSpacing + symbols_->sizeHint().width() + 2 * kMargin,
            HeightOf(kFewestRows)};
}

void TermForm::fitheight()
{
    const int height = sizeHint().height();
    if (height == fitted_height_) return;
    fitted_height_ = height;
    updateGeometry();
    Q_EMIT heightFitted(height);
}

void TermForm::init()
{
    rows_.Fill(document_);
    former_rows_.clear();
    RowsMoved();
}

void TermForm::Refresh()
{
    rows_.Refresh(document_);
    ShowRows();
    fitheight();
}

void TermForm::ShowRows()
{
    bool all_empty = true;
    for (const SlotIndex row : AllSlots()) {
        const QString text = Text(rows_.Text(state_, row));
        all_empty = all_empty && text.isEmpty();
        fnam_[row]->ShowText(text);
        const document::FunctionSlot& function = rows_.Function(row);
        const SlotIndex colour_entry =
            Row(std::clamp<int>(function.colour_index, 0, kSlotCount - 1));
        const document::Colour colour = document_.attributes.slots[colour_entry].colour;
        fcol_[row]->Show(QColor(Red(colour), Green(colour), Blue(colour)), function.visible);
        const bool faulty =
            state_ == EditorState::Terms && !rows_.IsNew(row) && faulty_slot_ == rows_.SlotOf(row);
        fnam_[row]->ShowFault(faulty ? fault_ : QString());
        const bool hidden = !function.visible;
        TellName(*fcol_[row], QStringLiteral("Farbe der Zeile %1%2")
                                  .arg(Number(row) + 1)
                                  .arg(hidden ? ", Graph unsichtbar" : ""));
    }
    fnam_[Row(0)]->setPlaceholderText(all_empty && state_ == EditorState::Terms ? "zum Beispiel x^2"
                                                                                : "");
}

void TermForm::StoreRows(document::PlotDocument& document)
{
    rows_.StoreRows(document);
    former_rows_.clear();
}

void TermForm::StoreIntervals(document::PlotDocument& document)
{
    rows_.StoreIntervals(document);
    ShowRows();
}

void TermForm::setstate(int state)
{
    const EditorState former = state_;
    if (state >= 0) state_ = state == 0 ? EditorState::Terms : EditorState::Intervals;
    const bool terms = state_ == EditorState::Terms;
    setWindowTitle(terms ? "Funktionsterme" : "Darstellungsintervalle");
    btback_->setText(terms ? "[ a ; b ]" : "Terme");
    btback_->setToolTip(terms ? "Darstellungsintervalle zeigen (Umschalt+Bild auf)"
                              : "Funktionsterme zeigen (Umschalt+Bild auf)");
    btback_->setAccessibleName(terms ? "Darstellungsintervalle zeigen" : "Funktionsterme zeigen");
    for (const SlotIndex row : AllSlots()) {
        fnam_[row]->setAccessibleName(QStringLiteral("%1 %2")
                                          .arg(terms ? "Funktionsterm" : "Darstellungsintervall")
                                          .arg(Number(row) + 1));
    }
    ShowRows();
    text_at_focus_ = fnam_[current_]->text();
    if (state_ != former) Q_EMIT stateChanged(state_);
}

void TermForm::SwitchState() { setstate(state_ == EditorState::Terms ? 1 : 0); }

void TermForm::TypeSymbol(const QString& text)
{
    const QWidget* focus = focusWidget();
    // By keyboard the focus stays at the symbols.
    if (focus == nullptr || !symbols_->isAncestorOf(focus)) FocusRow(current_);
    fnam_[current_]->insert(text);
}

void TermForm::SetCurrentRow(SlotIndex row)
{
    pane_->Highlight(fnam_[row]);
    scroll_->ensureWidgetVisible(fnam_[row], 0, kSpacing);
    if (row == current_) return;
    current_ = row;
    Q_EMIT currentRowChanged(row);
}

void TermForm::FocusRow(SlotIndex row)
{
    SetCurrentRow(row);
    fnam_[row]->setFocus(Qt::OtherFocusReason);
}

void TermForm::Typed(SlotIndex row, const QString& text)
{
    const std::string typed = text.toStdString();
    if (typed == rows_.Text(state_, row)) return;  // shown, not typed
    rows_.SetText(state_, row, typed);
    former_rows_.clear();
    if (state_ == EditorState::Terms && faulty_slot_ == rows_.SlotOf(row)) ClearFaultyRow();
    if (row == Row(0)) fnam_[row]->setPlaceholderText("");
}

void TermForm::PasteLines(SlotIndex row, const QString& text)
{
    QString whole = fnam_[row]->TextWith(text);
    whole.replace("\r\n", "\n");
    for (const QChar mark :
         {QChar('\r'), QChar(QChar::LineSeparator), QChar(QChar::ParagraphSeparator)}) {
        whole.replace(mark, '\n');
    }
    QStringList lines = whole.split('\n');
    while (lines.size() > 1 && lines.back().isEmpty()) lines.removeLast();
    const QStringList beyond = lines.mid(kSlotCount - Number(row));
    lines = lines.mid(0, kSlotCount - Number(row));
    if (std::ranges::any_of(
            lines, [](const QString& line) { return line.size() > TermField::kLongestText; })) {
        showerror("Nichts eingefügt: Eine Zeile ist länger als 100000 Zeichen.", true);
        return;
    }
    int replaced = 0;
    for (int k = 0; k < lines.size(); ++k) {
        TermField* field = fnam_[Row(Number(row) + k)];
        if (k > 0 && !field->text().isEmpty() && field->text() != lines[k]) ++replaced;
        field->ReplaceText(lines[k]);
    }
    fitheight();
    FocusRow(Row(Number(row) + static_cast<int>(lines.size()) - 1));
    if (!beyond.isEmpty()) {
        const QString message =
            QStringLiteral("Kein Platz mehr für %1 %2: %3")
                .arg(beyond.size())
                .arg(beyond.size() == 1 ? "Zeile" : "Zeilen",
                     Shortened(beyond.mid(0, kLongestTip).join(" | "), kLongestTip));
        showerror(message.toStdString(), true);
    } else if (replaced > 0) {
        showerror("Zeilen ersetzt. Strg+Z in einer Zeile holt ihren Text zurück.", false);
    }
}

int TermForm::FilledRows() const
{
    int filled = 0;
    for (const SlotIndex row : document::AllSlots()) {
        const std::string& text = rows_.Text(EditorState::Terms, row);
        if (text.find_first_not_of(' ') != std::string::npos) ++filled;
    }
    return filled;
}

void TermForm::clrall()
{
    RememberRows();
    rows_.ClearAll();
    RowsMoved();
}

void TermForm::clr(SlotIndex row)
{
    RememberRows();
    rows_.Clear(row);
    RowsMoved();
}

bool TermForm::add_before(SlotIndex row, bool after)
{
    RememberRows();
    const bool inserted = rows_.AddBefore(row, after);
    if (inserted) {
        RowsMoved();
    } else {
        former_rows_.pop_back();
        showerror("Keine Zeile eingefügt: Die letzte Zeile ist nicht leer.", true);
    }
    return inserted;
}

// Nothing typed is lost by a wrong key: until something else is typed or applied, Strg+Z in a field
// that has nothing of its own to take back brings the rows back.
void TermForm::RememberRows()
{
    if (former_rows_.size() == kRememberedMoves) former_rows_.erase(former_rows_.begin());
    former_rows_.push_back(rows_);
}

bool TermForm::TakeBackMove()
{
    if (former_rows_.empty()) return false;
    rows_ = std::move(former_rows_.back());
    former_rows_.pop_back();
    rows_.Refresh(document_);
    RowsMoved();
    return true;
}

void TermForm::RowsMoved()
{
    ShowRows();
    text_at_focus_ = fnam_[current_]->text();
    fitheight();
}

void TermForm::findandgetpre(EditorState state)
{
    Q_EMIT applied(state);
    text_at_focus_ = fnam_[current_]->text();
}

void TermForm::showcd()
{
    const SlotIndex row = current_;
    const SlotIndex entry =
        Row(std::clamp<int>(rows_.Function(row).colour_index, 0, kSlotCount - 1));
    const auto colour = dialogs_.ChooseColour(document_.attributes.slots[entry].colour);
    if (colour) Q_EMIT colourChosen(row, *colour);
}

void TermForm::showerror(std::string_view text, bool error) { status_->ShowStatus(text, error); }

void TermForm::MarkFaultyRow(SlotIndex slot, std::string_view message)
{
    faulty_slot_ = slot;
    fault_ = Shortened(Text(message), kLongestTip);
    ShowRows();
}

void TermForm::ClearFaultyRow()
{
    faulty_slot_.reset();
    ShowRows();
}

void TermForm::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    const bool laid_out = status_ != nullptr;
    if (laid_out && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)) {
        LayoutRows();
    }
}

}  // namespace korvinth::ui
