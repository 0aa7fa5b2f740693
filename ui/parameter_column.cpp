#include "ui/parameter_column.h"

#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

namespace korvinth::ui {
namespace {

constexpr int kCharactersWide = 38;
constexpr int kWindowsHigh = 4;  // wanted, not needed

}  // namespace

ParameterColumn::ParameterColumn(QWidget* parent)
    : QWidget(parent), scroll_(new QScrollArea(this)), stack_(new QVBoxLayout), hint_(new QLabel)
{
    setObjectName("paracolumn");
    setWindowTitle(QStringLiteral("Parameter"));
    hint_->setObjectName("hint");
    hint_->setText(
        QStringLiteral("Jeder freie Name in einem Term, zum Beispiel a in a*sin(x), bekommt hier "
                       "einen Schieberegler."));
    hint_->setWordWrap(true);
    hint_->setMargin(6);
    hint_->setForegroundRole(QPalette::PlaceholderText);

    auto* windows = new QWidget;
    windows->setLayout(stack_);
    stack_->setContentsMargins(0, 0, 0, 0);
    stack_->setSpacing(0);
    stack_->addWidget(hint_);
    for (Para*& window : windows_) window = nullptr;
    stack_->addStretch();

    scroll_->setObjectName("parascroll");
    scroll_->setFrameShape(QFrame::NoFrame);
    scroll_->setWidgetResizable(true);
    scroll_->setFocusPolicy(Qt::NoFocus);
    scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_->setWidget(windows);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll_);
}

// Windows stand in the order of their parameters, whenever they were made.
Para& ParameterColumn::Make(document::ParameterIndex index)
{
    Para*& window = windows_[index];
    if (window != nullptr) return *window;
    int place = 1;  // below the hint
    for (const document::ParameterIndex other : document::AllParameters()) {
        if (other < index && windows_[other] != nullptr) ++place;
    }
    window = new Para(index, scroll_->widget());
    window->hide();
    stack_->insertWidget(place, window);
    connect(window, &Para::sliderMoved, this, &ParameterColumn::sliderMoved);
    connect(window, &Para::valueTyped, this, &ParameterColumn::valueTyped);
    connect(window, &Para::boundsTyped, this, &ParameterColumn::boundsTyped);
    connect(window, &Para::timerClicked, this, &ParameterColumn::timerClicked);
    connect(window, &Para::timerSettingsWanted, this, &ParameterColumn::timerSettingsWanted);
    connect(window, &Para::familyChosen, this, &ParameterColumn::familyChosen);
    connect(window, &Para::closed, this, &ParameterColumn::closed);
    QWidget* last = nullptr;
    for (Para* each : windows_) {
        if (each != nullptr) last = each->FollowInTabOrder(last);
    }
    return *window;
}

void ParameterColumn::ShowWindow(document::ParameterIndex index, bool visible)
{
    if (visible) {
        Make(index).show();
    } else if (windows_[index] != nullptr) {
        windows_[index]->hide();
    }
    hint_->setVisible(Shown().empty());
}

bool ParameterColumn::IsShown(document::ParameterIndex index) const
{
    return windows_[index] != nullptr && !windows_[index]->isHidden();
}

std::vector<document::ParameterIndex> ParameterColumn::Shown() const
{
    std::vector<document::ParameterIndex> shown;
    for (const document::ParameterIndex index : document::AllParameters()) {
        if (IsShown(index)) shown.push_back(index);
    }
    return shown;
}

void ParameterColumn::Reveal(document::ParameterIndex index)
{
    ShowWindow(index, true);
    windows_[index]->FocusSlider();
    // A window that was hidden has its place only after the layout's turn.
    const auto scroll = [this, index] { scroll_->ensureWidgetVisible(windows_[index], 0, 0); };
    QMetaObject::invokeMethod(this, scroll, Qt::QueuedConnection);
}

QSize ParameterColumn::sizeHint() const
{
    const int line = fontMetrics().height();
    return {kCharactersWide * fontMetrics().averageCharWidth(), kWindowsHigh * (2 * line + 20)};
}

int ParameterColumn::HeightOfWindows() const
{
    stack_->layout()->activate();
    return stack_->sizeHint().height();
}

}  // namespace korvinth::ui
