#include "ui/termform.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStringList>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "ui/term_row.h"

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
constexpr int kFewestRows = 3;    // that the smallest window shows
constexpr int kFewestFitted = 5;  // that a fitted window shows
constexpr int kLinesOfStatus = 4;
constexpr int kLongestStatus = 300;  // characters
constexpr int kLongestTip = 1500;
constexpr std::size_t kRememberedMoves = 20;

// Dark red on pale red in light and dark desktops alike; the sign says it without colour.
constexpr QColor kErrorText(0x8A, 0x0F, 0x12);
constexpr QColor kErrorBackground(0xFB, 0xE3, 0xE4);

struct Symbol
{
    const char* caption;
    const char* typed;  // a sign that terms do not know is entered as its word or operator
    const char* name;
};
constexpr Symbol kSymbols[] = {
    {"²", "²", "Hoch 2"},
    {"³", "³", "Hoch 3"},
    {"π", "pi", "Kreiszahl pi"},
    {"√", "wurzel(", "Quadratwurzel"},
    {"≤", "≤", "Kleiner oder gleich"},
    {"≥", "≥", "Größer oder gleich"},
    {"·", "*", "Mal"},
    {"'", "'", "Ableitung: f'(x), f''(x)"},
};

SlotIndex Row(int number) { return SlotIndex{static_cast<std::int16_t>(number)}; }
constexpr SlotIndex kLastRow{kSlotCount - 1};

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

template <class Controls, class Control>
std::optional<SlotIndex> IndexOf(const Controls& controls, const Control* control)
{
    const auto found = std::ranges::find(controls, control);
    if (found == controls.end()) return std::nullopt;
    return Row(static_cast<int>(found - controls.begin()));
}

}  // namespace

struct TermForm::KeyAction
{
    int key;
    Qt::KeyboardModifiers modifiers;
    void (*run)(TermForm& form);
};

const TermForm::KeyAction* TermForm::FindKeyAction(const QKeyEvent& event)
{
    static const KeyAction kActions[] = {
        {Qt::Key_Return, {}, [](TermForm& form) { form.findandgetpre(form.state_); }},
        {Qt::Key_Return, Qt::ShiftModifier,
         [](TermForm& form) { form.InsertBelow(form.current_, true); }},
        {Qt::Key_Insert, {}, [](TermForm& form) { form.InsertBelow(form.current_, false); }},
        {Qt::Key_Insert, Qt::ControlModifier,
         [](TermForm& form) {
             if (form.current_ != kLastRow) form.add_before(form.current_, false);
         }},
        {Qt::Key_Delete, Qt::ShiftModifier, [](TermForm& form) { form.clr(form.current_); }},
        {Qt::Key_Escape,
         {},
         [](TermForm& form) {
             if (form.fnam_[form.current_]->text() == form.text_at_focus_) return;
             form.fnam_[form.current_]->ReplaceText(form.text_at_focus_);
         }},
        {Qt::Key_PageUp, {}, [](TermForm& form) { form.RequestRowMenu(); }},
        {Qt::Key_PageDown, {}, [](TermForm& form) { form.RequestRowMenu(); }},
        {Qt::Key_PageDown, Qt::ShiftModifier,
         [](TermForm& form) { form.ToggleVisibility(form.current_); }},
        {Qt::Key_PageUp, Qt::ShiftModifier,
         [](TermForm& form) { form.setstate(form.state_ == EditorState::Terms ? 1 : 0); }},
        {Qt::Key_Up, {}, [](TermForm& form) { form.Step(-1); }},
        {Qt::Key_Down, {}, [](TermForm& form) { form.Step(1); }},
    };
    const int key = event.key() == Qt::Key_Enter ? Qt::Key_Return : event.key();
    const Qt::KeyboardModifiers modifiers =
        event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
    const auto* found = std::ranges::find_if(kActions, [&](const KeyAction& action) {
        return action.key == key && action.modifiers == modifiers;
    });
    return found == std::end(kActions) ? nullptr : found;
}

TermForm::TermForm(const document::PlotDocument& document, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), document_(document), dialogs_(dialogs)
{
    setObjectName("termform");
    pane_ = new TermRowsPane(this);
    MakeRows(pane_);
    scroll_ = new QScrollArea(this);
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(true);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setWidget(pane_);
    buttons_ = MakeButtons();
    MakeStatus();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    layout->addWidget(scroll_, 1);
    layout->addWidget(buttons_);
    layout->addWidget(status_);
    layout->addStretch();

    LayoutRows();
    setstate(0);
    init();
    SetCurrentRow(Row(0));
    showerror("", false);
}

void TermForm::MakeRows(TermRowsPane* pane)
{
    auto* grid = new QGridLayout(pane);
    grid->setContentsMargins(kSpacing / 2, kSpacing / 2, kSpacing / 2, kSpacing / 2);
    grid->setSpacing(kSpacing);
    for (const SlotIndex row : AllSlots()) {
        const int number = Number(row);
        auto* colour = new ColourField(pane);
        colour->setObjectName(Numbered("fcol", number));
        colour->setToolTip("Farbe ändern");
        connect(colour, &ColourField::pressed, this, [this, row] {
            SetCurrentRow(row);
            showcd();
        });
        auto* field = new TermField(pane);
        field->setObjectName(Numbered("fnam", number));
        field->installEventFilter(this);
        connect(field, &QLineEdit::textChanged, this,
                [this, row](const QString& text) { Typed(row, text); });
        connect(field, &TermField::unfitTextOffered, this,
                [this, row](const QString& text) { PasteLines(row, text); });
        connect(field, &TermField::rowMenuRequested, this,
                [this](QPoint position) { RequestRowMenu(position); });
        auto* plus = new QToolButton(pane);
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
}

QWidget* TermForm::MakeButtons()
{
    auto* line = new QWidget(this);
    auto* layout = new QHBoxLayout(line);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    btback_ = new QPushButton(line);
    btback_->setObjectName("btback");
    btback_->setAutoDefault(false);
    connect(btback_, &QPushButton::clicked, this,
            [this] { setstate(state_ == EditorState::Terms ? 1 : 0); });
    layout->addWidget(btback_);
    layout->addStretch();
    for (const Symbol& symbol : kSymbols) {
        auto* button = new QToolButton(line);
        button->setObjectName(Numbered("symbol", static_cast<int>(symbols_.size())));
        button->setText(symbol.caption);
        button->setAutoRaise(true);
        button->setToolTip(symbol.name);
        button->setAccessibleName(symbol.name);
        button->setFocusPolicy(Qt::TabFocus);  // a click leaves the caret in its row
        connect(button, &QToolButton::clicked, this, [this, button, typed = QString(symbol.typed)] {
            if (!button->hasFocus()) FocusRow(current_);
            fnam_[current_]->insert(typed);
        });
        layout->addWidget(button);
        symbols_.push_back(button);
    }
    return line;
}

void TermForm::MakeStatus()
{
    status_ = new QLabel(this);
    status_->setObjectName("status");
    status_->setAccessibleName("Status");
    status_->setTextFormat(Qt::PlainText);
    status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    status_->setWordWrap(true);
    status_->setMargin(4);
    status_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // A long message without a blank must not widen the window.
    status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void TermForm::LayoutRows(bool reset)
{
    QFont row_font = font();
    row_font.setPointSizeF(std::max<qreal>(row_font.pointSizeF(), kSmallestPoints));
    pane_->setFont(row_font);
    const int height = fnam_[Row(0)]->sizeHint().height();
    const QFontMetrics metrics(row_font);
    for (const SlotIndex row : AllSlots()) {
        fnam_[row]->setFixedHeight(height);
        fcol_[row]->setFixedSize(height, height);
        cmplus_[row]->setFixedSize(2 * metrics.horizontalAdvance('+'), height);
    }
    scroll_->setMaximumHeight(kSlotCount * (height + kSpacing) + kSpacing);
    for (QToolButton* symbol : symbols_) {
        symbol->setFont(row_font);
        symbol->setFixedSize(metrics.horizontalAdvance("≤") + 12, btback_->sizeHint().height());
    }
    status_->setMaximumHeight(kLinesOfStatus * fontMetrics().lineSpacing() + 10);
    if (reset) {
        clrall();
        setstate(0);
    }
    fitheight();
}

int TermForm::HeightOf(int rows) const
{
    const int row_height = fnam_[Row(0)]->height() + kSpacing;
    const int status = fontMetrics().lineSpacing() + 2 * status_->margin();
    return 2 * kMargin + rows * row_height + kSpacing + buttons_->sizeHint().height() + kSpacing +
           status;
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

QSize TermForm::minimumSizeHint() const
{
    return {buttons_->minimumSizeHint().width() + 2 * kMargin, HeightOf(kFewestRows)};
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
        fcol_[row]->setAccessibleName(QStringLiteral("Farbe der Zeile %1%2")
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

void TermForm::Step(int rows)
{
    const int number = Number(current_) + rows;
    if (number < 0 || number >= kSlotCount) return;
    fnam_[Row(number)]->setCursorPosition(fnam_[current_]->cursorPosition());
    FocusRow(Row(number));
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

void TermForm::InsertBelow(SlotIndex row, bool focus)
{
    if (row == kLastRow) return;
    if (add_before(row, true) && focus) FocusRow(Row(Number(row) + 1));
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

void TermForm::PlusClicked(SlotIndex row, bool shift)
{
    if (!shift) {
        InsertBelow(row, true);
        return;
    }
    clr(row);
    FocusRow(row == kLastRow ? Row(Number(row) - 1) : row);
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

void TermForm::ToggleVisibility(SlotIndex row)
{
    if (rows_.IsNew(row)) {
        rows_.ToggleNewRow(row);
        ShowRows();
    } else {
        Q_EMIT visibilityToggled(row);
    }
}

void TermForm::RequestRowMenu(std::optional<QPoint> global_position)
{
    if (const auto x_part = rows_.XPartOf(current_)) SetCurrentRow(*x_part);
    const TermField* field = fnam_[current_];
    const QPoint below = field->mapToGlobal(QPoint(0, field->height()));
    Q_EMIT rowMenuRequested(current_, global_position.value_or(below));
}

void TermForm::showerror(std::string_view text, bool error)
{
    QPalette colours;  // those of the desktop
    if (error) {
        colours.setColor(QPalette::WindowText, kErrorText);
        colours.setColor(QPalette::Window, kErrorBackground);
    }
    status_->setPalette(colours);
    status_->setAutoFillBackground(error);
    const QString message = text.empty() ? QStringLiteral("o.k.") : Text(text);
    status_->setText((error ? "⚠ " : "") + Shortened(message, kLongestStatus));
    // As rich text the tip wraps its lines.
    status_->setToolTip(error ? "<p>" + Shortened(message, kLongestTip).toHtmlEscaped() + "</p>"
                              : QString());
}

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

bool TermForm::eventFilter(QObject* watched, QEvent* event)
{
    if (const auto plus = IndexOf(cmplus_, static_cast<QToolButton*>(watched))) {
        if (event->type() != QEvent::MouseButtonRelease) return false;
        const auto* mouse = static_cast<QMouseEvent*>(event);
        shift_held_ = mouse->modifiers().testFlag(Qt::ShiftModifier);
        if (mouse->button() == Qt::LeftButton) return false;  // becomes a click
        SetCurrentRow(*plus);
        ToggleVisibility(*plus);
        return true;
    }
    const auto row = IndexOf(fnam_, static_cast<TermField*>(watched));
    if (!row) return QWidget::eventFilter(watched, event);
    switch (event->type()) {
        case QEvent::FocusIn: {
            SetCurrentRow(*row);
            const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
            if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason) {
                text_at_focus_ = fnam_[*row]->text();
            }
            return false;
        }
        case QEvent::MouseButtonPress: SetCurrentRow(*row); return false;
        case QEvent::ShortcutOverride:
            if (FindKeyAction(*static_cast<QKeyEvent*>(event)) == nullptr) return false;
            event->accept();
            return true;
        case QEvent::KeyPress: {
            SetCurrentRow(*row);
            const auto* key = static_cast<QKeyEvent*>(event);
            if (const KeyAction* action = FindKeyAction(*key)) {
                action->run(*this);
                return true;
            }
            return key->matches(QKeySequence::Undo) && !fnam_[*row]->isUndoAvailable() &&
                   TakeBackMove();
        }
        default: return false;
    }
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
