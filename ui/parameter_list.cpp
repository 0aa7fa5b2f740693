#include "ui/parameter_list.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <algorithm>

namespace korvinth::ui {
namespace {

constexpr int kNoParameter = -1;  // data of "KEINER"
constexpr int kCouplingRole = Qt::UserRole + 1;
constexpr int kFunctionLines = 4;
constexpr int kParameterLines = 8;

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// Bounds and sample counts tell what they are for, the user's parameters are known by name.
QString EntryText(document::ParameterIndex index, const document::Parameter& parameter)
{
    const bool own = document::Number(index) >= document::kFirstUserParameter;
    return Text(own ? parameter.name : parameter.caption);
}

document::ParameterIndex IndexOf(const QVariant& number)
{
    return document::ParameterIndex{static_cast<std::int16_t>(number.toInt())};
}

QLabel* MakeLabel(QWidget* parent, const QString& text, QWidget* buddy)
{
    auto* label = new QLabel(text, parent);
    label->setWordWrap(true);
    label->setBuddy(buddy);
    return label;
}

}  // namespace

ParameterList::ParameterList(QWidget* parent)
    : QWidget(parent),
      functions_(new QListWidget(this)),
      family_parameter_(new QComboBox(this)),
      parameters_(new QListWidget(this)),
      coupling_(new QComboBox(this)),
      show_all_(new QPushButton(this))
{
    setObjectName("Parameter");
    setWindowTitle(QStringLiteral("Parameter"));
    functions_->setObjectName("Scharfunktionen");
    functions_->setAccessibleName(QStringLiteral("Scharfunktionen"));
    functions_->setToolTip(QStringLiteral("Funktionen, die als Schar gezeichnet werden"));
    family_parameter_->setObjectName("Scharparameter");
    family_parameter_->setAccessibleName(QStringLiteral("Scharparameter"));
    family_parameter_->setToolTip(
        QStringLiteral("Der Parameter, dessen Werte die Kurven einer Schar unterscheiden"));
    functions_->setAccessibleDescription(functions_->toolTip());
    // A long name must not widen the window.
    family_parameter_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    parameters_->setObjectName("List1");
    parameters_->setAccessibleName(QStringLiteral("Parameter"));
    parameters_->setToolTip(QStringLiteral("Doppelklick oder Eingabetaste: Regler anzeigen"));
    parameters_->setAccessibleDescription(parameters_->toolTip());
    coupling_->setObjectName("Mauskopplung");
    coupling_->setAccessibleName(QStringLiteral("Mauskopplung"));
    coupling_->setToolTip(QStringLiteral("Der gewählte Parameter folgt der Maus im Graphen"));
    coupling_->addItems({QStringLiteral("ohne"), QStringLiteral("X-Koordinate"),
                         QStringLiteral("Y-Koordinate"), QStringLiteral("Winkel")});
    show_all_->setObjectName("Command1");
    show_all_->setToolTip(QStringLiteral("Alle Schieberegler ein- oder ausblenden"));

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(12, 12, 12, 12);
    grid->setSpacing(6);
    grid->addWidget(MakeLabel(this, QStringLiteral("Scharf&unktionen:"), functions_), 0, 0, 1, 2);
    grid->addWidget(functions_, 1, 0, 1, 2);
    grid->addWidget(MakeLabel(this, QStringLiteral("Scha&rparameter:"), family_parameter_), 2, 0);
    grid->addWidget(family_parameter_, 2, 1);
    grid->setRowMinimumHeight(3, 6);
    auto* tip = MakeLabel(this, QStringLiteral("Zum An&zeigen in  der Liste unten doppelklicken"),
                          parameters_);
    grid->addWidget(tip, 4, 0, 1, 2);
    grid->addWidget(parameters_, 5, 0, 1, 2);
    grid->addWidget(show_all_, 6, 0, 1, 2, Qt::AlignRight);
    grid->addWidget(MakeLabel(this, QStringLiteral("&Mauskopplung"), coupling_), 7, 0);
    grid->addWidget(coupling_, 7, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(1, 1);
    grid->setRowStretch(5, 3);
    for (QListWidget* entries : {functions_, parameters_}) {
        entries->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        entries->setTextElideMode(Qt::ElideRight);
    }
    const int line = fontMetrics().height() + 4;
    functions_->setMinimumHeight(2 * line);
    parameters_->setMinimumHeight(3 * line);
    resize(52 * fontMetrics().averageCharWidth() + 24,
           (kFunctionLines + kParameterLines + 8) * line);

    connect(parameters_, &QListWidget::itemActivated, this, &ParameterList::getclick);
    connect(parameters_, &QListWidget::currentRowChanged, this, &ParameterList::ShowCoupling);
    connect(coupling_, &QComboBox::activated, this, [this](int entry) {
        if (const QListWidgetItem* item = parameters_->currentItem()) {
            Q_EMIT couplingChosen(IndexOf(item->data(Qt::UserRole)), document::Coupling{entry});
        }
    });
    connect(functions_, &QListWidget::itemChanged, this, [this](const QListWidgetItem* item) {
        if (filling_) return;
        const auto slot = static_cast<std::int16_t>(item->data(Qt::UserRole).toInt());
        Q_EMIT familyFunctionToggled(document::SlotIndex{slot}, item->checkState() == Qt::Checked);
    });
    connect(family_parameter_, &QComboBox::activated, this, &ParameterList::TakeFamilyParameter);
    connect(show_all_, &QPushButton::clicked, this, [this] { Q_EMIT showAllWanted(!all_shown_); });
    schalt(false);
}

void ParameterList::refpar(const document::PlotDocument& document)
{
    filling_ = true;
    FillFunctions(document);
    FillParameters(document);
    filling_ = false;
}

void ParameterList::FillFunctions(const document::PlotDocument& document)
{
    const int row = functions_->currentRow();
    functions_->clear();
    for (const document::SlotIndex index : document::AllSlots()) {
        const document::FunctionSlot& slot = document.slots[index];
        if (slot.name.empty() || slot.curve_link == document::kCurveYPart) continue;
        auto* item = new QListWidgetItem(Text(slot.name + "(" + slot.argument + ")"), functions_);
        item->setData(Qt::UserRole, document::Number(index));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(slot.family_allowed ? Qt::Checked : Qt::Unchecked);
    }
    functions_->setCurrentRow(std::min(row, functions_->count() - 1));
}

void ParameterList::FillParameters(const document::PlotDocument& document)
{
    const int row = parameters_->currentRow();
    parameters_->clear();
    family_parameter_->clear();
    family_parameter_->addItem(QStringLiteral("KEINER"), kNoParameter);
    for (const document::ParameterIndex index : document::AllParameters()) {
        const document::Parameter& parameter = document.parameters[index];
        if (parameter.name.empty()) continue;
        const QString text = EntryText(index, parameter);
        auto* item = new QListWidgetItem(text, parameters_);
        item->setData(Qt::UserRole, document::Number(index));
        item->setData(kCouplingRole, static_cast<int>(parameter.coupling));
        item->setToolTip("<p>" + Text(parameter.caption).toHtmlEscaped() + "</p>");
        // The number of samples is none of the function's own parameters.
        if ((parameter.state & document::kSampleCountState) != 0) continue;
        family_parameter_->addItem(Text(parameter.name), document::Number(index));
        if (!parameter.family) continue;
        family_parameter_->setCurrentIndex(family_parameter_->count() - 1);
    }
    parameters_->setCurrentRow(std::min(row, parameters_->count() - 1));
    show_all_->setEnabled(parameters_->count() > 0);
    ShowCoupling();
}

void ParameterList::ShowCoupling()
{
    const QListWidgetItem* item = parameters_->currentItem();
    coupling_->setEnabled(item != nullptr);
    coupling_->setCurrentIndex(item != nullptr ? item->data(kCouplingRole).toInt() : 0);
}

void ParameterList::schalt(bool all_shown)
{
    all_shown_ = all_shown;
    show_all_->setText((all_shown ? QStringLiteral("&Keinen") : QStringLiteral("&Alle")) +
                       QStringLiteral(" anzeigen"));
}

void ParameterList::getclick(const QListWidgetItem* item)
{
    Q_EMIT sliderWanted(IndexOf(item->data(Qt::UserRole)));
}

void ParameterList::TakeFamilyParameter(int entry)
{
    const QVariant chosen = family_parameter_->itemData(entry);
    if (chosen.toInt() == kNoParameter) {
        Q_EMIT noFamilyParameterChosen();
    } else {
        Q_EMIT familyParameterChosen(IndexOf(chosen));
    }
}

}  // namespace korvinth::ui
