// How the window of the general settings is built: pages, groups, fields.
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

#include "ui/optionsgraph.h"
#include "ui/optionsgraph_rows.h"
#include "ui/storable_fields.h"

namespace korvinth::ui {
namespace {

using Attributes = document::DisplayAttributes;
using document::Setting;

QFormLayout* MakeForm(QWidget* parent)
{
    auto* form = new QFormLayout(parent);
    form->setContentsMargins(kSettingsMargin, kSettingsMargin, kSettingsMargin, kSettingsMargin);
    form->setSpacing(kSettingsSpacing);
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
    layout->setContentsMargins(kSettingsMargin, kSettingsMargin, kSettingsMargin, kSettingsMargin);
    layout->setSpacing(kSettingsMargin);
    return layout;
}

}  // namespace

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
    KeepReadable(*field);
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
    button->setAccessibleDescription("Öffnet die Auswahl einer Farbe");
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
    box->setAccessibleDescription("Wie die Abstände der Marken auf der Achse bestimmt werden");
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
                                 const char* description, bool Attributes::*flag)
{
    auto* box = new QCheckBox(caption, form->parentWidget());
    box->setObjectName(name);
    box->setToolTip(description);
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
    smooth_ = AddFlag(drawing, "smooth", "Glatt &zeichnen",
                      "Linien ohne Stufen; ohne Haken nach genauen Bildpunkten",
                      &Attributes::smooth_drawing);
    graph_names_ = AddFlag(drawing, "names", "&Namen der Graphen",
                           "Der Name jeder Funktion steht am rechten Ende ihres Graphen",
                           &Attributes::graph_names);
    constant_count_ = AddFlag(drawing, "constsamples", "Anzahl der x-Werte konstant &lassen",
                              "Sonst richtet sie sich nach der Breite des Bildes",
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

// All fields begin on one line, whatever the font.
void OptionsGraph::AlignFields()
{
    int widest = 0;
    for (const QLabel* label : tabs_->findChildren<QLabel*>()) {
        widest = std::max(widest, label->sizeHint().width());
    }
    for (QLabel* label : tabs_->findChildren<QLabel*>()) label->setMinimumWidth(widest);
}

}  // namespace korvinth::ui
