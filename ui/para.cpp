#include "ui/para.h"

#include <QAction>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSlider>
#include <QToolButton>
#include <initializer_list>

#include "ui/storable_fields.h"
#include "ui/timer_symbol.h"
#include "ui/told_texts.h"

namespace korvinth::ui {
namespace {

constexpr int kLongestTerm = 10'000;  // characters; the parser answers what is too long for it
constexpr int kNameCharacters = 8;    // room for the name
constexpr int kBoundCharacters = 6;
constexpr qreal kSmallFont = 0.88;  // of the window's font
constexpr qreal kLargeFont = 1.12;

constexpr auto kFieldTip = "Anklicken, Wert eintippen und mit Eingabetaste bestätigen";
constexpr auto kTimerTip = "Rechte Maustaste: Einstellungen  -  linke Maustaste: Timer an / aus";

struct CouplingEntry
{
    const char* name;
    const char* caption;
    document::Coupling coupling;  // None resets all
};
constexpr CouplingEntry kCouplings[] = {
    {"mnp_x", "mit &x-Koordinate der Maus koppeln", document::Coupling::X},
    {"mnp_y", "mit &y-Koordinate der Maus koppeln", document::Coupling::Y},
    {"mnp_winkel", "mit &Winkel zwischen x-Achse und Maus-Ortsvektor koppeln",
     document::Coupling::Angle},
    {"mnp_reset", "&alle zurücksetzen", document::Coupling::None},
};

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QFont Scaled(QFont font, qreal factor)
{
    if (font.pointSizeF() > 0) {
        font.setPointSizeF(font.pointSizeF() * factor);
    } else {
        font.setPixelSize(qRound(font.pixelSize() * factor));
    }
    return font;
}

QLineEdit* MakeField(QWidget* parent, const char* name)
{
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setToolTip(kFieldTip);
    field->setMaxLength(kLongestTerm);
    KeepReadable(*field);
    return field;
}

}  // namespace

// The window itself moves the slider while one of these lives.
class Para::BusyMark
{
public:
    explicit BusyMark(Para& window) : window_(window), before_(window.busy_)
    {
        window_.busy_ = true;
    }
    ~BusyMark() { window_.busy_ = before_; }
    BusyMark(const BusyMark&) = delete;
    BusyMark& operator=(const BusyMark&) = delete;

private:
    Para& window_;
    bool before_;
};

Para::Para(document::ParameterIndex index, QWidget* parent)
    : QWidget(parent),
      index_(index),
      name_(new QLabel(this)),
      h_scroll1_(new QSlider(Qt::Horizontal, this)),
      text1_(MakeField(this, "Text1")),
      text2_(MakeField(this, "Text2")),
      text3_(MakeField(this, "Text3")),
      image1_(new TimerSymbol(this)),
      command1_(new QToolButton(this)),
      menu_(new QMenu(this)),
      family_(menu_->addAction(QStringLiteral("Als &Scharparameter festlegen")))
{
    setObjectName(QStringLiteral("para[%1]").arg(document::Number(index)));
    SetUpControls();
    SetUpMenu();
    Arrange();
    FollowFont();
}

void Para::SetUpControls()
{
    name_->setObjectName("Label1");
    name_->setTextFormat(Qt::PlainText);
    text1_->setAlignment(Qt::AlignRight);
    h_scroll1_->setObjectName("HScroll1");
    h_scroll1_->setRange(0, document::kSliderSteps);
    h_scroll1_->setSingleStep(1);
    h_scroll1_->setPageStep(document::kSliderPage);
    h_scroll1_->setFocusPolicy(Qt::StrongFocus);
    image1_->setObjectName("Image1");
    image1_->setToolTip(kTimerTip);
    command1_->setObjectName("Command1");
    command1_->setAutoRaise(true);
    command1_->setText(QStringLiteral("✕"));
    command1_->setToolTip(QStringLiteral("Schieberegler schließen"));
    command1_->setFocusPolicy(Qt::StrongFocus);

    connect(h_scroll1_, &QSlider::valueChanged, this, &Para::changepar);
    for (QLineEdit* field : {text1_, text2_, text3_}) {
        field->installEventFilter(this);
        connect(field, &QLineEdit::returnPressed, this, [this, field] {
            TakeText(field);
            field->selectAll();
        });
        connect(field, &QLineEdit::editingFinished, this, [this, field] {
            if (field->isModified()) TakeText(field);
        });
    }
    connect(image1_, &QAbstractButton::clicked, this, [this] { Q_EMIT timerClicked(index_); });
    connect(image1_, &TimerSymbol::settingsWanted, this,
            [this] { Q_EMIT timerSettingsWanted(index_); });
    connect(command1_, &QToolButton::clicked, this, &QWidget::close);
}

void Para::SetUpMenu()
{
    menu_->setObjectName("mn_pop2");
    for (const CouplingEntry& entry : kCouplings) {
        auto* action = new QAction(QString::fromUtf8(entry.caption), menu_);
        menu_->insertAction(family_, action);
        action->setObjectName(entry.name);
        if (entry.coupling == document::Coupling::None) {
            connect(action, &QAction::triggered, this, &Para::couplingsReset);
            continue;
        }
        action->setCheckable(true);
        action->setData(static_cast<int>(entry.coupling));
        connect(action, &QAction::triggered, this, [this, &entry](bool coupled) {
            Q_EMIT couplingChosen(index_, coupled ? entry.coupling : document::Coupling::None);
        });
    }
    menu_->insertSeparator(family_);
    family_->setObjectName("mnp_schar");
    family_->setCheckable(true);
    connect(family_, &QAction::triggered, this,
            [this](bool family) { Q_EMIT familyChosen(index_, family); });
}

void Para::Arrange()
{
    auto* first = new QHBoxLayout;
    first->setSpacing(4);
    first->addWidget(name_);
    first->addWidget(text3_, 1);
    first->addWidget(image1_);
    first->addWidget(command1_);
    auto* second = new QHBoxLayout;
    second->setSpacing(4);
    second->addWidget(text1_);
    second->addWidget(h_scroll1_, 1);
    second->addWidget(text2_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 4);
    layout->setSpacing(1);
    layout->addLayout(first);
    layout->addLayout(second);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void Para::FocusSlider() { h_scroll1_->setFocus(); }

QWidget* Para::FollowInTabOrder(QWidget* previous)
{
    const std::initializer_list<QWidget*> controls = {text3_, text1_,  h_scroll1_,
                                                      text2_, image1_, command1_};
    for (QWidget* control : controls) {
        if (previous != nullptr) setTabOrder(previous, control);
        previous = control;
    }
    return previous;
}

void Para::FollowFont()
{
    QFont large = Scaled(font(), kLargeFont);
    text3_->setFont(large);
    large.setBold(true);
    name_->setFont(large);
    const QFont small = Scaled(font(), kSmallFont);
    for (QLineEdit* field : {text1_, text2_}) {
        field->setFont(small);
        const QFontMetrics metrics(small);
        field->setFixedWidth(kBoundCharacters * metrics.horizontalAdvance('0') + 12);
        field->setFixedHeight(metrics.height() + 4);
    }
    text3_->setFixedHeight(QFontMetrics(text3_->font()).height() + 6);
    name_->setFixedWidth(kNameCharacters * QFontMetrics(name_->font()).horizontalAdvance('n'));
    ElideName();
}

void Para::ElideName()
{
    name_->setText(name_->fontMetrics().elidedText(title_, Qt::ElideRight, name_->width()));
}

void Para::init(const document::Parameter& parameter)
{
    title_ = Text(parameter.name);
    setWindowTitle(title_);
    TellName(*this, Text(parameter.caption));
    // As rich text the tip wraps its lines.
    name_->setToolTip("<p>" + Text(parameter.caption).toHtmlEscaped() + "</p>");
    h_scroll1_->setToolTip(name_->toolTip());
    TellDescription(*h_scroll1_, Text(parameter.caption));
    ElideName();
    TellName(*text1_, QStringLiteral("Untere Grenze von ") + title_);
    TellName(*text2_, QStringLiteral("Obere Grenze von ") + title_);
    TellName(*text3_, QStringLiteral("Wert von ") + title_);
    TellName(*h_scroll1_, QStringLiteral("Schieberegler für ") + title_);
    TellName(*image1_, QStringLiteral("Timer für ") + title_);
    TellName(*command1_, QStringLiteral("Schieberegler für %1 schließen").arg(title_));
    ShowBounds({parameter.lower, parameter.upper}, parameter.value);
    ShowValue(parameter.value);
    ShowStep(parameter.step);
    ShowCoupling(parameter.coupling);
    ShowFamily(parameter.family);
}

void Para::PlaceSlider(double value)
{
    const BusyMark mark(*this);
    h_scroll1_->setValue(document::SliderPosition(value, bounds_));
}

void Para::ShowValue(double value)
{
    value_ = value;
    RestoreText(text3_);
}

void Para::ShowBounds(const document::Bounds& bounds, double value)
{
    bounds_ = bounds;
    PlaceSlider(value);
    RestoreText(text1_);
    RestoreText(text2_);
}

void Para::ShowRunning(bool running)
{
    image1_->SetFramed(running);
    for (QLineEdit* field : {text1_, text2_, text3_}) field->setEnabled(!running);
    // The moving value stays as easy to read as one at rest.
    QPalette colours;
    if (running) {
        colours.setColor(QPalette::Disabled, QPalette::Text,
                         colours.color(QPalette::Active, QPalette::WindowText));
    }
    text3_->setPalette(colours);
}

void Para::ShowStep(double step) { image1_->SetStep(step != 0); }

void Para::ShowCoupling(document::Coupling coupling)
{
    for (QAction* action : menu_->actions()) {
        if (action->data().isValid()) {
            action->setChecked(action->data().toInt() == static_cast<int>(coupling));
        }
    }
}

void Para::ShowFamily(bool family) { family_->setChecked(family); }

void Para::changepar(int position)
{
    if (!busy_) Q_EMIT sliderMoved(index_, document::SliderValue(position, bounds_));
}

// Unmodified before the receiver acts: a message box takes the focus away from the field.
void Para::TakeText(QLineEdit* field)
{
    field->setModified(false);
    if (field == text3_) {
        Q_EMIT valueTyped(index_, field->text());
    } else {
        Q_EMIT boundsTyped(index_, text1_->text(), text2_->text());
    }
}

void Para::RestoreText(QLineEdit* field)
{
    const double number = field == text1_   ? bounds_.lower
                          : field == text2_ ? bounds_.upper
                                            : value_;
    const QString text = Text(document::FieldText(number));
    if (field->text() != text) field->setText(text);
    field->setModified(false);
    if (!field->hasFocus()) field->setCursorPosition(0);
}

bool Para::eventFilter(QObject* watched, QEvent* event)
{
    auto* field = qobject_cast<QLineEdit*>(watched);
    const auto* key =
        event->type() == QEvent::KeyPress ? dynamic_cast<const QKeyEvent*>(event) : nullptr;
    const bool escape = key != nullptr && key->key() == Qt::Key_Escape;
    if (field == nullptr || !escape || !field->isModified()) {
        return QWidget::eventFilter(watched, event);
    }
    RestoreText(field);
    return true;
}

void Para::contextMenuEvent(QContextMenuEvent* event) { menu_->popup(event->globalPos()); }

void Para::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange) FollowFont();
    QWidget::changeEvent(event);
}

void Para::closeEvent(QCloseEvent* event)
{
    event->accept();
    Q_EMIT closed(index_);
}

}  // namespace korvinth::ui
