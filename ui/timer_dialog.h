// The timer settings of one parameter: mode and step.
#pragma once

#include <QDialog>
#include <QString>

#include "document/plot_document.h"
#include "document/slots.h"

class QComboBox;
class QLineEdit;

namespace korvinth::ui {

class TimerDialog : public QDialog
{
    Q_OBJECT
public:
    explicit TimerDialog(QWidget* parent = nullptr);

    // Fills the dialog for a parameter.
    void init(document::ParameterIndex index, const document::Parameter& parameter);
    document::ParameterIndex Index() const { return index_; }
    // Opens below the slider that it is for, above it where the screen ends: not over the graph.
    void OpenBelow(const QWidget& slider);
    // The typed step was refused: the dialog stays, the step is marked for typing anew.
    void AskAgain();

Q_SIGNALS:
    // OK was pressed; whoever takes the step closes the dialog with accept().
    void confirmed(korvinth::document::ParameterIndex index, const QString& step,
                   korvinth::document::AnimationMode mode);

private:
    document::ParameterIndex index_{};
    QComboBox* combo1_;
    QLineEdit* text1_;
};

}  // namespace korvinth::ui
