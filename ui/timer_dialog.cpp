#include "ui/timer_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <algorithm>

#include "document/parameter_values.h"
#include "ui/storable_fields.h"

namespace korvinth::ui {
namespace {

constexpr int kLongestTerm = 10'000;  // characters

}  // namespace

TimerDialog::TimerDialog(QWidget* parent)
    : QDialog(parent), combo1_(new QComboBox(this)), text1_(new QLineEdit(this))
{
    setObjectName("Dialog");
    combo1_->setObjectName("Combo1");
    combo1_->addItem(QStringLiteral("Schleife"), static_cast<int>(document::AnimationMode::Wrap));
    combo1_->addItem(QStringLiteral("Richtungsumkehr"),
                     static_cast<int>(document::AnimationMode::Bounce));
    combo1_->setToolTip(QStringLiteral("Was an den Grenzen des Parameters geschieht"));
    text1_->setObjectName("Text1");
    text1_->setMaxLength(kLongestTerm);
    KeepReadable(*text1_);
    text1_->setToolTip(QStringLiteral("Schrittweite pro Takt, 0 für keinen Timer"));

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    ok->setObjectName("OKButton");
    ok->setDefault(true);
    ok->setToolTip(QStringLiteral("Übernimmt Ablauf und Schrittweite"));
    QPushButton* cancel =
        buttons->addButton(QStringLiteral("Abbrechen"), QDialogButtonBox::RejectRole);
    cancel->setObjectName("CancelButton");
    cancel->setToolTip(QStringLiteral("Lässt den Timer, wie er war"));

    auto* layout = new QFormLayout(this);
    layout->addRow(QStringLiteral("&Ablauf:"), combo1_);
    layout->addRow(QStringLiteral("&Schrittweite pro Takt:"), text1_);
    layout->addRow(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    combo1_->setAccessibleName(QStringLiteral("Ablauf"));
    text1_->setAccessibleName(QStringLiteral("Schrittweite pro Takt"));

    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        Q_EMIT confirmed(index_, text1_->text(),
                         document::AnimationMode{combo1_->currentData().toInt()});
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void TimerDialog::init(document::ParameterIndex index, const document::Parameter& parameter)
{
    index_ = index;
    setWindowTitle(QStringLiteral("Timer für ") + QString::fromStdString(parameter.name));
    combo1_->setCurrentIndex(combo1_->findData(static_cast<int>(parameter.mode)));
    text1_->setText(QString::fromStdString(document::FieldText(parameter.step)));
    AskAgain();
}

void TimerDialog::OpenBelow(const QWidget& slider)
{
    constexpr int kTitleBar = 40;  // pixels, before the window manager has told
    adjustSize();
    const QRect screen = slider.screen()->availableGeometry();
    QPoint place = slider.mapToGlobal(slider.rect().bottomLeft());
    if (place.y() + height() + kTitleBar > screen.bottom()) {
        place.setY(slider.mapToGlobal(QPoint()).y() - height() - kTitleBar);
    }
    place.setX(
        std::clamp(place.x(), screen.left(), std::max(screen.left(), screen.right() - width())));
    move(place);
    open();
}

void TimerDialog::AskAgain()
{
    text1_->setFocus();
    text1_->selectAll();
}

}  // namespace korvinth::ui
