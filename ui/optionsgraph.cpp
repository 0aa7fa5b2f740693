#include "ui/optionsgraph.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

#include "ui/optionsgraph_rows.h"

namespace korvinth::ui {
namespace {

using Attributes = document::DisplayAttributes;
using document::Setting;

// Dark red on pale red in light and dark desktops alike; the sign says it without colour.
constexpr QColor kErrorText(0x8A, 0x0F, 0x12);
constexpr QColor kErrorBackground(0xFB, 0xE3, 0xE4);

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QColor ToQt(document::Colour colour)
{
    return {document::Red(colour), document::Green(colour), document::Blue(colour)};
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
    tabs_->setAccessibleName("Seiten der Einstellungen");
    tabs_->setAccessibleDescription("Die Pfeiltasten wechseln die Seite");
    AddPage(ColourPage(), "&Farben und Linien");
    AddPage(AxisPage(), "&Achsen");
    AddPage(DrawingPage(), "&Graphen");

    message_->setObjectName("message");
    message_->setAccessibleName("Meldung");
    message_->setAccessibleDescription("Was an einer Eingabe nicht stimmt");
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
    ok->setAccessibleDescription("Behält die Einstellungen und schließt das Fenster");
    cancel->setAccessibleDescription("Stellt die Einstellungen von vorher wieder her");
    defaults->setAccessibleDescription("Setzt alle Felder auf die Werte eines neuen Programms");
    cancel->setObjectName("cmcancel");
    defaults->setObjectName("cmdefault");
    defaults->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        if (Faultless()) accept();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(defaults, &QPushButton::clicked, this, &OptionsGraph::RestoreDefaults);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(kSettingsMargin, kSettingsMargin, kSettingsMargin, kSettingsMargin);
    layout->setSpacing(kSettingsSpacing);
    layout->addWidget(tabs_, 1);
    layout->addWidget(message_);
    layout->addWidget(buttons);
}

void OptionsGraph::Open(const Attributes& attributes, int samples_in_force)
{
    // Asked for a second time, the window still takes back all since the first.
    edit_ = Edit{isVisible() && edit_ ? edit_->before : attributes, attributes};
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
    message_->setAccessibleName("Meldung: " + Text(refusal));

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
    message_->setAccessibleName("Meldung");
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
