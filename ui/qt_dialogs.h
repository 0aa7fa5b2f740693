// Message boxes, file dialogs and the colour chooser of the toolkit.
#pragma once

#include <QFileDialog>
#include <QPointer>
#include <QString>
#include <QWidget>

#include "ui/dialogs.h"

namespace korvinth::ui {

class QtDialogs final : public Dialogs
{
public:
    // Dialogs open over `window`, once it is there.
    void SetWindow(QWidget* window) { window_ = window; }

    void ShowError(const std::string& title, const std::string& text) override;
    void ShowExclamation(const std::string& title, const std::string& text) override;
    bool AskYesNo(const std::string& title, const std::string& text, Preset preset) override;
    std::optional<std::string> OpenFile(const std::string& title,
                                        const std::string& filter) override;
    std::optional<std::string> SaveFile(const std::string& title,
                                        const std::string& filter) override;
    std::optional<document::Colour> ChooseColour(document::Colour initial) override;
    std::optional<int> AskNumber(const std::string& title, const std::string& label, int value,
                                 int lowest, int highest) override;

private:
    std::optional<std::string> ChooseFile(const std::string& title, const std::string& filter,
                                          QFileDialog::AcceptMode mode);

    QPointer<QWidget> window_;
    QString folder_;  // of the file chosen last
};

// "Textdateien (*.txt)|*.txt|Alle Dateien (*.*)|*.*" in the toolkit's form: the captions, each with
// its pattern, separated by ";;". *.* becomes *, since names need no dot.
QString ToolkitFilter(const std::string& filter);

}  // namespace korvinth::ui
