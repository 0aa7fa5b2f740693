#include "ui/page_options_box.h"

#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>

namespace korvinth::ui {
namespace {

constexpr const char* kFitPage = "an die Seite an&gepasst";

}  // namespace

PageOptionsBox::PageOptionsBox(QWidget* parent)
    : QWidget(parent),
      fit_(new QRadioButton(kFitPage, this)),
      exact_(new QRadioButton("1 &Einheit =", this)),
      centimetres_(new QDoubleSpinBox(this)),
      legend_(new QCheckBox("&Terme und Parameterwerte unter dem Bild", this))
{
    fit_->setObjectName("page_fit");
    fit_->setToolTip("Das Bild wird so groß, wie der Platz es zulässt");
    fit_->setChecked(true);
    exact_->setObjectName("page_exact");
    exact_->setToolTip("Das Bild hat auf dem Papier einen genauen Maßstab");
    centimetres_->setObjectName("page_cm");
    centimetres_->setAccessibleName("Zentimeter einer Einheit");
    centimetres_->setToolTip("So lang ist eine Einheit der Achsen auf dem Papier");
    centimetres_->setDecimals(3);
    centimetres_->setRange(render::kSmallestScale, render::kLargestScale);
    centimetres_->setSingleStep(0.5);
    centimetres_->setValue(1);
    centimetres_->setSuffix(" cm");
    legend_->setObjectName("page_legend");
    legend_->setToolTip("Schreibt unter das Bild, was gezeichnet ist");

    auto* scale = new QHBoxLayout;
    scale->addWidget(exact_);
    scale->addWidget(centimetres_);
    scale->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(fit_);
    layout->addLayout(scale);
    layout->addWidget(legend_);

    connect(exact_, &QRadioButton::toggled, this, &PageOptionsBox::FollowChoice);
    connect(centimetres_, &QDoubleSpinBox::valueChanged, this, &PageOptionsBox::changed);
    connect(legend_, &QCheckBox::toggled, this, &PageOptionsBox::changed);
    FollowChoice();
}

void PageOptionsBox::Show(const render::PageOptions& options)
{
    if (options.scale) centimetres_->setValue(*options.scale);
    (options.scale ? exact_ : fit_)->setChecked(true);
    legend_->setChecked(options.legend);
}

void PageOptionsBox::StoreIn(render::PageOptions& options) const
{
    options.scale.reset();
    if (AtScale()) options.scale = centimetres_->value();
    options.legend = legend_->isEnabled() && legend_->isChecked();
}

void PageOptionsBox::SetAvailable(bool scale, bool page)
{
    fit_->setText(page ? kFitPage : "in der &gewählten Größe");
    fit_->setEnabled(scale);
    exact_->setEnabled(scale);
    centimetres_->setEnabled(AtScale());
    legend_->setEnabled(page);
}

bool PageOptionsBox::AtScale() const { return exact_->isEnabled() && exact_->isChecked(); }

void PageOptionsBox::FollowChoice()
{
    centimetres_->setEnabled(AtScale());
    Q_EMIT changed();
}

}  // namespace korvinth::ui
