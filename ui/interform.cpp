#include "ui/interform.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "document/number_text.h"
#include "render/pointer_text.h"
#include "ui/click_button.h"
#include "ui/storable_fields.h"
#include "ui/told_texts.h"

namespace korvinth::ui {
namespace {

constexpr std::array kAxes = {RangeAxis::X, RangeAxis::Y, RangeAxis::T};

const QColor kErrorText(0xB3, 0x26, 0x1E);
const QColor kErrorBackground(0xFD, 0xEC, 0xEA);

// Where the bounds of an axis stand.
struct AxisBounds
{
    std::string document::RangeTexts::*lower_text;
    std::string document::RangeTexts::*upper_text;
    double render::ViewRange::*lower;
    double render::ViewRange::*upper;
};
constexpr std::array kBounds = {
    AxisBounds{&document::RangeTexts::x_lower, &document::RangeTexts::x_upper,
               &render::ViewRange::x_min, &render::ViewRange::x_max},
    AxisBounds{&document::RangeTexts::y_lower, &document::RangeTexts::y_upper,
               &render::ViewRange::y_min, &render::ViewRange::y_max},
    AxisBounds{&document::RangeTexts::t_lower, &document::RangeTexts::t_upper,
               &render::ViewRange::t_min, &render::ViewRange::t_max},
};

const AxisBounds& Bounds(RangeAxis axis) { return kBounds[static_cast<std::size_t>(axis)]; }

double Resolution(const render::ViewRange& view, RangeAxis axis)
{
    constexpr double kStepsOfT = 1000;
    switch (axis) {
        case RangeAxis::X: return render::PixelWidth(view);
        case RangeAxis::Y: return render::PixelHeight(view);
        case RangeAxis::T: break;
    }
    return (view.t_max - view.t_min) / kStepsOfT;
}

// The term as typed; a number that the view has come to is shown as far as the picture tells.
QString Shown(const std::string& term, double value, double resolution)
{
    if (!term.empty() && term != document::ShortestText(value)) return QString::fromStdString(term);
    return QString::fromStdString(document::RoundedText(value, resolution)).replace('.', ',');
}

std::string TypedText(const QLineEdit& field, const std::string& term, double value)
{
    if (field.isModified()) return field.text().toStdString();
    return term.empty() ? document::ShortestText(value) : term;
}

void ShowAsFaulty(QLineEdit& field, const QString& fault)
{
    field.setToolTip(fault.isEmpty() ? field.accessibleName() : fault);
    TellDescription(field, fault.isEmpty() ? "Zahl oder Term, auch mit Parametern" : fault);
    field.setStyleSheet(fault.isEmpty() ? ""
                                        : "QLineEdit { border: 1px solid #C01C28; "
                                          "background: #FDECEA; color: #7A1016; }");
}

}  // namespace

bool InterForm::FieldPair::Edited() const { return lower->isModified() || upper->isModified(); }

InterForm::InterForm(const document::PlotDocument& document, const render::ViewRange& view,
                     RangeActions& actions, QWidget* parent)
    : QWidget(parent),
      document_(document),
      view_(view),
      actions_(actions),
      status_(new QLabel(this))
{
    setObjectName("interform");
    setWindowTitle("Dargestellter Bereich");
    auto* rows = new QGridLayout;
    rows->addWidget(new QLabel("von", this), 0, 1);
    rows->addWidget(new QLabel("bis", this), 0, 2);
    AddRow(*rows, RangeAxis::X, "x");
    AddRow(*rows, RangeAxis::Y, "y");
    AddRow(*rows, RangeAxis::T, "t");
    rows->setColumnStretch(1, 1);
    rows->setColumnStretch(2, 1);

    status_->setObjectName("interstatus");
    status_->setTextFormat(Qt::PlainText);
    status_->setWordWrap(true);
    constexpr int kMargin = 4;
    constexpr int kLines = 2;  // room for a message, so that nothing jumps when there is one
    status_->setMargin(kMargin);
    status_->setMinimumHeight(kLines * fontMetrics().lineSpacing() + 2 * kMargin);
    QPalette colours;
    colours.setColor(QPalette::Window, kErrorBackground);
    colours.setColor(QPalette::WindowText, kErrorText);
    status_->setPalette(colours);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(rows);
    layout->addWidget(status_);
    layout->addStretch(1);
    AddButtons(*rows);
    updateall();
}

void InterForm::AddRow(QGridLayout& layout, RangeAxis axis, const QString& variable)
{
    const int row = layout.rowCount();
    FieldPair& pair = Fields(axis);
    pair.lower = MakeField(variable + "u", "untere Grenze von " + variable);
    pair.upper = MakeField(variable + "o", "obere Grenze von " + variable);
    auto* label = new QLabel("&" + variable + ":", this);
    label->setBuddy(pair.lower);
    layout.addWidget(label, row, 0);
    layout.addWidget(pair.lower, row, 1);
    layout.addWidget(pair.upper, row, 2);
}

QLineEdit* InterForm::MakeField(const QString& name, const QString& caption)
{
    constexpr int kCharacters = 10;
    auto* field = new QLineEdit(this);
    field->setObjectName(name);
    field->setAccessibleName(caption);
    KeepStorableTerm(*field);
    ShowAsFaulty(*field, "");
    field->setMinimumHeight(field->sizeHint().height());  // also as a faulty one
    field->setMinimumWidth(kCharacters * fontMetrics().horizontalAdvance('0'));
    connect(field, &QLineEdit::returnPressed, this, &InterForm::TakeFields);
    return field;
}

// Beside the fields, which leaves the graph above the more room.
void InterForm::AddButtons(QGridLayout& layout)
{
    auto* standard = new QPushButton("Sta&ndardbereich", this);
    standard->setObjectName("Command2");
    standard->setToolTip("x von −10 bis 10, y im gleichen Maßstab um 0");
    connect(standard, &QPushButton::clicked, this, [this] {
        ForgetEdits();
        actions_.UseStandardRange();
    });
    auto* one_to_one = new ClickButton(this);
    one_to_one->setObjectName("einszueins");
    one_to_one->setText("&1:1");
    one_to_one->setToolTip("Links oder rechts anklicken für Skalierungsverhältnis 1:1");
    connect(one_to_one, &ClickButton::clickedWith, this, [this](render::ClickButton button) {
        ForgetEdits();
        actions_.einszueins(button);
    });
    auto* take = new QPushButton("&Übernehmen", this);
    take->setObjectName("Command1");
    take->setToolTip("Zeichnet den eingegebenen Bereich (Eingabetaste)");
    connect(take, &QPushButton::clicked, this, &InterForm::TakeFields);
    constexpr int kColumn = 3;
    int row = 1;  // below the captions
    for (QAbstractButton* button :
         std::initializer_list<QAbstractButton*>{take, standard, one_to_one}) {
        button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
        layout.addWidget(button, row++, kColumn);
    }
}

void InterForm::FocusFirstField()
{
    QLineEdit& first = *Fields(RangeAxis::X).lower;
    first.setFocus();
    first.selectAll();
}

void InterForm::ShowAxis(RangeAxis axis)
{
    if (taking_) return;
    const AxisBounds& bounds = Bounds(axis);
    const FieldPair& pair = Fields(axis);
    const double resolution = Resolution(view_, axis);
    const auto show = [&](QLineEdit& field, auto text, auto value) {
        if (field.isModified() && field.hasFocus()) return;
        const QString shown = Shown(document_.ranges.*text, view_.*value, resolution);
        if (field.text() != shown) field.setText(shown);
        field.setModified(false);
        ShowAsFaulty(field, "");
    };
    show(*pair.lower, bounds.lower_text, bounds.lower);
    show(*pair.upper, bounds.upper_text, bounds.upper);
}

void InterForm::updateall()
{
    for (const RangeAxis axis : kAxes) ShowAxis(axis);
}

void InterForm::ForgetEdits()
{
    for (const FieldPair& pair : fields_) {
        pair.lower->setModified(false);
        pair.upper->setModified(false);
    }
    updateall();
    ShowFaults({});
}

void InterForm::TakeFields()
{
    document::RangeTexts typed = document_.ranges;
    for (const RangeAxis axis : kAxes) {
        const AxisBounds& bounds = Bounds(axis);
        const FieldPair& pair = Fields(axis);
        if (!pair.Edited()) continue;
        typed.*bounds.lower_text =
            TypedText(*pair.lower, document_.ranges.*bounds.lower_text, view_.*bounds.lower);
        typed.*bounds.upper_text =
            TypedText(*pair.upper, document_.ranges.*bounds.upper_text, view_.*bounds.upper);
    }
    taking_ = true;
    const std::vector<RangeFault> faults = actions_.TakeRanges(typed);
    taking_ = false;
    for (const RangeAxis axis : kAxes) {
        const bool refused = std::ranges::any_of(
            faults, [axis](const RangeFault& fault) { return fault.axis == axis; });
        if (refused) continue;
        Fields(axis).lower->setModified(false);
        Fields(axis).upper->setModified(false);
        ShowAxis(axis);
    }
    ShowFaults(faults);
}

void InterForm::ShowFaults(const std::vector<RangeFault>& faults)
{
    for (const FieldPair& pair : fields_) {
        ShowAsFaulty(*pair.lower, "");
        ShowAsFaulty(*pair.upper, "");
    }
    QStringList lines;
    QLineEdit* first = nullptr;
    for (const RangeFault& fault : faults) {
        const QString text = QString::fromStdString(fault.text);
        const FieldPair& pair = Fields(fault.axis);
        lines << "⚠ " + text;
        if (fault.bound != RangeBound::Upper) ShowAsFaulty(*pair.lower, text);
        if (fault.bound != RangeBound::Lower) ShowAsFaulty(*pair.upper, text);
        if (first == nullptr) first = fault.bound == RangeBound::Upper ? pair.upper : pair.lower;
    }
    status_->setText(lines.join('\n'));
    status_->setAutoFillBackground(!faults.empty());
    if (first == nullptr) return;
    first->setFocus();
    first->selectAll();
}

// Esc takes back what is typed; when there is nothing, the frame closes.
void InterForm::keyPressEvent(QKeyEvent* event)
{
    const bool edited = std::ranges::any_of(fields_, &FieldPair::Edited);
    if (edited && event->key() == Qt::Key_Escape) {
        ForgetEdits();
    } else {
        QWidget::keyPressEvent(event);
    }
}

}  // namespace korvinth::ui
