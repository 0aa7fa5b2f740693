#include "ui/zoom_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <cmath>

#include "document/display_attributes.h"
#include "document/number_text.h"
#include "ui/storable_fields.h"

namespace korvinth::ui {

ZoomDialog::ZoomDialog(term::MathParser& parser, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      parser_(parser),
      dialogs_(dialogs),
      x_factor_(new QLineEdit(this)),
      y_factor_(new QLineEdit(this))
{
    setObjectName("optionszoom");
    setWindowTitle("Zoom-Einstellungen");
    auto* layout = new QGridLayout(this);
    const auto add = [this, layout](int row, const QString& caption, const QString& name,
                                    QLineEdit* field) {
        field->setObjectName(name);
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        field->setToolTip("Zahl oder Term, mindestens 1");
        KeepReadable(*field);
        layout->addWidget(label, row, 0);
        layout->addWidget(field, row, 1);
    };
    add(0, "Zoomfaktor in &x-Richtung:", "Text1", x_factor_);
    add(1, "Zoomfaktor in &y-Richtung:", "Text2", y_factor_);

    auto* apply = new QPushButton("Ü&bernehmen", this);
    apply->setObjectName("Command1");
    apply->setDefault(true);
    apply->setToolTip("Die Faktoren gelten von jetzt an");
    connect(apply, &QPushButton::clicked, this, &ZoomDialog::Apply);
    auto* close = new QPushButton("&Schließen", this);
    close->setObjectName("Command2");
    close->setAutoDefault(false);
    close->setToolTip("Schließt das Fenster (Esc)");
    connect(close, &QPushButton::clicked, this, &QDialog::close);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(apply);
    buttons->addWidget(close);
    layout->addLayout(buttons, 2, 0, 1, 2);
    setval({});
}

void ZoomDialog::setval(const render::ZoomFactors& factors)
{
    factors_ = factors;
    x_factor_->setText(QString::fromStdString(document::ShortestGermanText(factors.x)));
    y_factor_->setText(QString::fromStdString(document::ShortestGermanText(factors.y)));
}

// A refused field keeps its text for the correction.
void ZoomDialog::TakeField(QLineEdit& field, double& factor, const char* refusal)
{
    const double value = document::EvalNumberField(parser_, field.text().toStdString());
    parser_.EvalText("");
    if (value >= document::kSmallestZoomFactor && std::isfinite(value)) {
        factor = value;
        field.setText(QString::fromStdString(document::ShortestGermanText(value)));
        return;
    }
    dialogs_.ShowError("Fehlerhafte Eingabe", refusal);
    field.setFocus();
    field.selectAll();
}

void ZoomDialog::Apply()
{
    TakeField(*x_factor_, factors_.x, "ungültiger Zoomfaktor in x-Richtung!");
    TakeField(*y_factor_, factors_.y, "ungültiger Zoomfaktor in y-Richtung!");
    Q_EMIT applied(factors_);
}

}  // namespace korvinth::ui
