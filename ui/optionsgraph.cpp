#include "ui/optionsgraph.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

namespace korvinth::ui {
namespace {

using Attributes = document::DisplayAttributes;
using document::Setting;

// Dark red on pale red in light and dark desktops alike; the sign says it without colour.
constexpr QColor kErrorText(0x8A, 0x0F, 0x12);
constexpr QColor kErrorBackground(0xFB, 0xE3, 0xE4);
constexpr int kGroupMargin = 12;
constexpr int kSpacing = 6;

struct FieldRow
{
    Setting setting;
    const char* object;
    const char* caption;
    const char* tip;
};
constexpr FieldRow kFieldRows[] = {
    {Setting::XAxisName, "xname", "&Name der x-Achse:", "höchstens 20 Zeichen"},
    {Setting::YAxisName, "yname", "Na&me der y-Achse:", "höchstens 20 Zeichen"},
    {Setting::FontPoints, "fontsize", "Schriftg&röße in Punkt:", "6 bis 36"},
    {Setting::AxisWidth, "axwidth", "&Breite der Achsen in Pixeln:", "0,25 bis 8"},
    {Setting::HelpLineWidth, "helpwidth", "Brei&te der Hilfslinien in Pixeln:", "0,25 bis 8"},
    {Setting::XStep, "xstep", "feste &Schrittweite in x:", "ein Term, größer als 0: pi/3"},
    {Setting::YStep, "ystep", "feste Schritt&weite in y:", "ein Term, größer als 0: 0,25"},
    {Setting::SampleCount, "samples", "Anzahl der &x-Werte:", "2 bis 20000"},
    {Setting::NumericLimit, "limit",
     "n&umerische Grenze für 1/(1+abs(x)):", "ein Term, größer als 0 und kleiner als 1"},
    {Setting::FamilyStep, "famstep", "&Schrittweite:", "ein Term"},
    {Setting::FamilyCount, "famcount", "Anzahl der Schar&kurven:", "0 bis 21"},
    {Setting::TimerInterval, "interval", "Zeitabstan&d in Millisekunden:", "10 bis 1000"},
};
static_assert(std::size(kFieldRows) == document::kSettingCount);

struct ColourRow
{
    document::Colour Attributes::*colour;
    const char* object;
    const char* caption;
};
constexpr ColourRow kColourRows[] = {
    {&Attributes::background, "colback", "&Hintergrund:"},
    {&Attributes::axis_colour, "colaxes", "Achs&en:"},
    {&Attributes::number_colour, "colnumbers", "&Zahlen:"},
    {&Attributes::help_line_colour, "colhelp", "Hilfs&linien:"},
    {&Attributes::extra_help_line_colour, "colhelpdopp", "&weitere Hilfslinien:"},
    {&Attributes::line_colour, "collines", "zusätzliche Ge&raden:"},
};

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString WithoutMnemonic(QString caption)
{
    caption.remove('&');
    if (caption.endsWith(':')) caption.chop(1);
    return caption;
}

QColor ToQt(document::Colour colour)
{
    return {document::Red(colour), document::Green(colour), document::Blue(colour)};
}

QFormLayout* MakeForm(QWidget* parent)
{
    auto* form = new QFormLayout(parent);
    form->setContentsMargins(kGroupMargin, kGroupMargin, kGroupMargin, kGroupMargin);
    form->setSpacing(kSpacing);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    return form;
}

QFormLayout* AddGroup(QVBoxLayout* page, const QString& title)
{
    auto* group = new QGroupBox(title);
    page->addWidget(group);
    return MakeForm(group);
}

QVBoxLayout* PageLayout(QWidget* page)
{
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(kGroupMargin, kGroupMargin, kGroupMargin, kGroupMargin);
    layout->setSpacing(kGroupMargin);
    return layout;
}

}  // namespace

OptionsGraph::OptionsGraph(term::MathParser& parser, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      parser_(parser),
      dialogs_(dialogs),
      tabs_(new QTabWidget(this)),
      message_(new QLabel(this))
{
    static_assert(std::size(kColourRows) == kColourCount);
    setObjectName("optionsgraph");
    setWindowTitle("Allgemeine Einstellungen");
    setSizeGripEnabled(true);

    tabs_->setObjectName("pages");
    AddPage(ColourPage(), "&Farben und Linien");
    AddPage(AxisPage(), "&Achsen");
    AddPage(DrawingPage(), "&Graphen");

    message_->setObjectName("message");
    message_->setAccessibleName("Meldung");
    message_->setTextFormat(Qt::PlainText);
    message_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    message_->setWordWrap(true);
    message_->setMargin(4);
    message_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    constexpr int kMessageLines = 2;  // kept free, so that nothing jumps
    message_->setMinimumHeight(kMessageLines * message_->fontMetrics().lineSpacing() + 8);

    auto* buttons = new QDialogButtonBox(this);
    auto* ok = buttons->addButton("OK", QDialogButtonBox::AcceptRole);
    auto* cancel = buttons->addButton("Abbre&chen", QDialogButtonBox::RejectRole);
    auto* defaults = buttons->addButton("&Voreinstellungen", QDialogButtonBox::ResetRole);
    ok->setObjectName("cmok");
    ok->setDefault(true);
    cancel->setObjectName("cmcancel");
    defaults->setObjectName("cmdefault");
    defaults->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (Faultless()) accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(defaults, &QPushButton::clicked, this, &OptionsGraph::RestoreDefaults);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kGroupMargin, kGroupMargin, kGroupMargin, kGroupMargin);
    layout->setSpacing(kSpacing);
    layout->addWidget(tabs_, 1);
    layout->addWidget(message_);
    layout->addWidget(buttons);
}

// Pages scroll where the screen is small.
QWidget* OptionsGraph::AddPage(QWidget* page, const QString& caption)
{
    auto* scroll = new QScrollArea(tabs_);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(page);
    // In the colours of the page that the tabs draw.
    scroll->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);
    tabs_->addTab(scroll, caption);
    return scroll;
}

void OptionsGraph::AddField(QFormLayout* form, Setting setting)
{
    const FieldRow& row = *std::find_if(std::begin(kFieldRows), std::end(kFieldRows),
                                        [&](const FieldRow& r) { return r.setting == setting; });
    constexpr int kFieldCharacters = 14;
    auto* field = new QLineEdit(form->parentWidget());
    field->setObjectName(row.object);
    field->setAccessibleName(WithoutMnemonic(row.caption));
    field->setToolTip(row.tip);
    field->setMinimumWidth(kFieldCharacters * field->fontMetrics().averageCharWidth());
    field->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(field, &QLineEdit::textEdited, this, [this, setting] { Typed(setting); });
    connect(field, &QLineEdit::editingFinished, this, [this, setting] { Finished(setting); });
    form->addRow(row.caption, field);
    fields_[static_cast<std::size_t>(setting)] = field;
}

void OptionsGraph::AddColour(QFormLayout* form, std::size_t row)
{
    auto* button = new QPushButton(form->parentWidget());
    button->setObjectName(kColourRows[row].object);
    button->setAutoDefault(false);
    const int height = button->fontMetrics().height();
    button->setIconSize({2 * height, height});
    connect(button, &QPushButton::clicked, this, [this, row] { ChooseColour(row); });
    form->addRow(kColourRows[row].caption, button);
    colours_[row] = button;
}

QComboBox* OptionsGraph::AddStepMode(QFormLayout* form, const char* name, const QString& caption,
                                     document::AxisStep Attributes::*step)
{
    auto* box = new QComboBox(form->parentWidget());
    box->setObjectName(name);
    box->setAccessibleName(WithoutMnemonic(caption));
    box->addItems({"automatisch", "feste Schrittweite", "Vielfache von π"});
    connect(box, &QComboBox::activated, this, [this, step](int mode) {
        if (!edit_) return;
        Attributes changed = edit_->now;
        (changed.*step).mode = static_cast<document::StepMode>(mode);
        Change(changed);
        EnableFields();
    });
    form->addRow(caption, box);
    return box;
}

QCheckBox* OptionsGraph::AddFlag(QFormLayout* form, const char* name, const QString& caption,
                                 bool Attributes::*flag)
{
    auto* box = new QCheckBox(caption, form->parentWidget());
    box->setObjectName(name);
    box->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(box, &QCheckBox::clicked, this, [this, flag](bool checked) {
        if (!edit_) return;
        Attributes changed = edit_->now;
        changed.*flag = checked;
        Change(changed);
        EnableFields();
    });
    form->addRow(box);
    return box;
}

QWidget* OptionsGraph::ColourPage()
{
    auto* page = new QWidget;
    QVBoxLayout* layout = PageLayout(page);
    QFormLayout* colours = AddGroup(layout, "Farben");
    for (std::size_t row = 0; row < kColourCount; ++row) AddColour(colours, row);
    QFormLayout* widths = AddGroup(layout, "Linien");
    AddField(widths, Setting::AxisWidth);
    AddField(widths, Setting::HelpLineWidth);
    layout->addStretch();
    return page;
}

QWidget* OptionsGraph::AxisPage()
{
    auto* page = new QWidget;
    QVBoxLayout* layout = PageLayout(page);
    QFormLayout* names = AddGroup(layout, "Beschriftung");
    AddField(names, Setting::XAxisName);
    AddField(names, Setting::YAxisName);
    AddField(names, Setting::FontPoints);
    QFormLayout* steps = AddGroup(layout, "Schritte");
    x_mode_ = AddStepMode(steps, "xstepmode", "auf der &x-Achse:", &Attributes::x_step);
    AddField(steps, Setting::XStep);
    y_mode_ = AddStepMode(steps, "ystepmode", "auf der &y-Achse:", &Attributes::y_step);
    AddField(steps, Setting::YStep);
    layout->addStretch();
    return page;
}

QWidget* OptionsGraph::DrawingPage()
{
    auto* page = new QWidget;
    QVBoxLayout* layout = PageLayout(page);
    QFormLayout* drawing = AddGroup(layout, "Zeichnung");
    smooth_ = AddFlag(drawing, "smooth", "Glatt &zeichnen", &Attributes::smooth_drawing);
    graph_names_ = AddFlag(drawing, "names", "&Namen der Graphen", &Attributes::graph_names);
    constant_count_ = AddFlag(drawing, "constsamples", "Anzahl der x-Werte konstant &lassen",
                              &Attributes::constant_sample_count);
    AddField(drawing, Setting::SampleCount);
    AddField(drawing, Setting::NumericLimit);
    QFormLayout* families = AddGroup(layout, "Scharen");
    AddField(families, Setting::FamilyStep);
    AddField(families, Setting::FamilyCount);
    QFormLayout* animation = AddGroup(layout, "Animation");
    AddField(animation, Setting::TimerInterval);
    layout->addStretch();
    return page;
}

QSize OptionsGraph::sizeHint() const
{
    int width = 0;
    int height = 0;
    for (int i = 0; i < tabs_->count(); ++i) {
        const QSize page = qobject_cast<QScrollArea*>(tabs_->widget(i))->widget()->sizeHint();
        width = std::max(width, page.width());
        height = std::max(height, page.height());
    }
    const QSize frame = QDialog::sizeHint() - tabs_->sizeHint();
    constexpr int kScrollBar = 24;
    const QSize wanted(std::max(QDialog::sizeHint().width(), width + frame.width() + kScrollBar),
                       height + frame.height() + tabs_->tabBar()->sizeHint().height() + 8);
    constexpr double kPartOfScreen = 0.95;
    const QScreen* screen = this->screen();
    return screen == nullptr ? wanted : wanted.boundedTo(screen->availableSize() * kPartOfScreen);
}

void OptionsGraph::Open(const Attributes& attributes, int samples_in_force)
{
    edit_ = Edit{attributes, attributes};
    if (!attributes.constant_sample_count) edit_->now.sample_count = samples_in_force;
    Fill();
    AlignFields();
    if (!isVisible()) resize(sizeHint());
    if (parentWidget() != nullptr && !isVisible()) {
        // Beside the graph, which shows every change.
        constexpr QPoint kFromCorner(24, 64);
        move(parentWidget()->window()->pos() + kFromCorner);
    }
    show();
    raise();
    activateWindow();
}

// All fields begin on one line, whatever the font.
void OptionsGraph::AlignFields()
{
    int widest = 0;
    for (const QLabel* label : tabs_->findChildren<QLabel*>()) {
        widest = std::max(widest, label->sizeHint().width());
    }
    for (QLabel* label : tabs_->findChildren<QLabel*>()) label->setMinimumWidth(widest);
}

void OptionsGraph::Fill()
{
    const Attributes& now = edit_->now;
    for (const FieldRow& row : kFieldRows) {
        QLineEdit* field = FieldOf(row.setting);
        field->setText(Text(document::SettingText(now, row.setting)));
        Unmark(field);
    }
    x_mode_->setCurrentIndex(static_cast<int>(now.x_step.mode));
    y_mode_->setCurrentIndex(static_cast<int>(now.y_step.mode));
    smooth_->setChecked(now.smooth_drawing);
    graph_names_->setChecked(now.graph_names);
    constant_count_->setChecked(now.constant_sample_count);
    FillColours();
    EnableFields();
}

void OptionsGraph::FillColours()
{
    for (std::size_t row = 0; row < kColourCount; ++row) {
        QPushButton* button = colours_[row];
        const QColor colour = ToQt(edit_->now.*kColourRows[row].colour);
        QPixmap sample(button->iconSize() * devicePixelRatioF());
        sample.setDevicePixelRatio(devicePixelRatioF());
        sample.fill(colour);
        QPainter painter(&sample);
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawRect(QRect({0, 0}, button->iconSize()).adjusted(0, 0, -1, -1));
        painter.end();
        button->setIcon(sample);
        button->setText("Ändern …");
        button->setToolTip(colour.name().toUpper());
        button->setAccessibleName("Farbe: " + WithoutMnemonic(kColourRows[row].caption) + ", " +
                                  colour.name().toUpper());
    }
}

// A field that does not count shows what it would count with.
void OptionsGraph::EnableFields()
{
    const Attributes& now = edit_->now;
    const auto enable = [&](Setting setting, bool enabled) {
        QLineEdit* field = FieldOf(setting);
        field->setEnabled(enabled);
        if (enabled) return;
        field->setText(Text(document::SettingText(now, setting)));
        Unmark(field);
    };
    enable(Setting::XStep, now.x_step.mode == document::StepMode::Fixed);
    enable(Setting::YStep, now.y_step.mode == document::StepMode::Fixed);
    enable(Setting::SampleCount, now.constant_sample_count);
}

void OptionsGraph::Change(const Attributes& attributes)
{
    if (attributes == edit_->now) return;
    edit_->now = attributes;
    Q_EMIT settingsChanged(attributes);
}

std::string OptionsGraph::Take(Setting setting)
{
    Attributes changed = edit_->now;
    const std::string typed = FieldOf(setting)->text().toStdString();
    std::string refusal = document::TakeSetting(changed, setting, typed, parser_);
    if (refusal.empty()) Change(changed);
    return refusal;
}

// What may become a number as one types is not complained about yet.
void OptionsGraph::Typed(Setting setting)
{
    if (!edit_) return;
    Unmark(FieldOf(setting));
    Take(setting);
}

void OptionsGraph::Finished(Setting setting)
{
    if (!edit_) return;
    const std::string refusal = Take(setting);
    if (!refusal.empty()) Mark(setting, refusal);
}

bool OptionsGraph::Faultless()
{
    for (const FieldRow& row : kFieldRows) {
        QLineEdit* field = FieldOf(row.setting);
        const std::string refusal = field->isEnabled() ? Take(row.setting) : "";
        if (refusal.empty()) continue;
        Mark(row.setting, refusal);
        for (int i = 0; i < tabs_->count(); ++i) {
            if (tabs_->widget(i)->isAncestorOf(field)) tabs_->setCurrentIndex(i);
        }
        field->setFocus();
        field->selectAll();
        return false;
    }
    return true;
}

void OptionsGraph::Mark(Setting setting, const std::string& refusal)
{
    QPalette colours;
    colours.setColor(QPalette::WindowText, kErrorText);
    colours.setColor(QPalette::Window, kErrorBackground);
    message_->setPalette(colours);
    message_->setAutoFillBackground(true);
    message_->setText("⚠ " + Text(refusal));

    QPalette field_colours;
    field_colours.setColor(QPalette::Text, kErrorText);
    field_colours.setColor(QPalette::Base, kErrorBackground);
    FieldOf(setting)->setPalette(field_colours);
}

void OptionsGraph::Unmark(QLineEdit* field)
{
    field->setPalette({});
    message_->setPalette({});
    message_->setAutoFillBackground(false);
    message_->clear();
}

void OptionsGraph::ChooseColour(std::size_t row)
{
    if (!edit_) return;
    const auto colour = kColourRows[row].colour;
    const auto chosen = dialogs_.ChooseColour(edit_->now.*colour);
    if (!chosen || !edit_) return;
    Attributes changed = edit_->now;
    changed.*colour = *chosen;
    Change(changed);
    FillColours();
}

void OptionsGraph::RestoreDefaults()
{
    if (!edit_) return;
    Attributes changed = edit_->now;
    document::CopyGeneralSettings(Attributes(), changed);
    Change(changed);
    Fill();
}

void OptionsGraph::done(int result)
{
    if (edit_) {
        const Edit edit = *edit_;
        edit_.reset();
        if (result != Accepted && edit.now != edit.before) {
            Q_EMIT settingsChanged(edit.before);
        }
    }
    QDialog::done(result);
}

}  // namespace korvinth::ui
