// The factors of one zoom step.
#pragma once

#include <QDialog>

#include "render/view_zoom.h"
#include "term/math_parser.h"
#include "ui/dialogs.h"

class QLineEdit;

namespace korvinth::ui {

// The window `optionszoom`. Reads its fields as terms; takes each factor of at least 1 by itself.
class ZoomDialog : public QDialog
{
    Q_OBJECT
public:
    ZoomDialog(term::MathParser& parser, Dialogs& dialogs, QWidget* parent = nullptr);

    // Shows the factors in force.
    void setval(const render::ZoomFactors& factors);

Q_SIGNALS:
    // The button was pressed: the factors from now on; the settings are to be saved.
    void applied(const korvinth::render::ZoomFactors& factors);

private:
    void Apply();
    void TakeField(QLineEdit& field, double& factor, const char* refusal);

    term::MathParser& parser_;
    Dialogs& dialogs_;
    QLineEdit* x_factor_;
    QLineEdit* y_factor_;
    render::ZoomFactors factors_;
};

}  // namespace korvinth::ui
