// The window of the general settings: colours, axes, drawing, families.
#pragma once

#include <QDialog>
#include <array>
#include <cstddef>
#include <optional>

#include "document/display_attributes.h"
#include "document/general_settings.h"
#include "term/math_parser.h"
#include "ui/dialogs.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace korvinth::ui {

// Every accepted change is told at once, "Abbrechen" tells the settings of before, "OK" (accepted)
// keeps what was told last. What is refused stays in its field, marked, until it is edited. The
// window keeps attributes only while it is open.
class OptionsGraph : public QDialog
{
    Q_OBJECT
public:
    OptionsGraph(term::MathParser& parser, Dialogs& dialogs, QWidget* parent = nullptr);

    // Shows the settings; the receiver of settingsChanged has to have these attributes. The sample
    // count in force is what "konstant lassen" keeps.
    void Open(const document::DisplayAttributes& attributes, int samples_in_force);

    void done(int result) override;
    QSize sizeHint() const override;

Q_SIGNALS:
    // To be taken with document::CopyGeneralSettings, which leaves the switches of the menus alone.
    void settingsChanged(const document::DisplayAttributes& attributes);

private:
    struct Edit
    {
        document::DisplayAttributes before;
        document::DisplayAttributes now;
    };
    static constexpr std::size_t kColourCount = 6;

    QWidget* ColourPage();
    QWidget* AxisPage();
    QWidget* DrawingPage();
    QWidget* AddPage(QWidget* page, const QString& caption);
    void AddField(QFormLayout* form, document::Setting setting);
    void AddColour(QFormLayout* form, std::size_t row);
    QComboBox* AddStepMode(QFormLayout* form, const char* name, const QString& caption,
                           document::AxisStep document::DisplayAttributes::*step);
    QCheckBox* AddFlag(QFormLayout* form, const char* name, const QString& caption,
                       const char* description, bool document::DisplayAttributes::*flag);

    QLineEdit* FieldOf(document::Setting setting) const
    {
        return fields_[static_cast<std::size_t>(setting)];
    }
    void AlignFields();
    void Fill();
    void FillColours();
    void EnableFields();
    void Change(const document::DisplayAttributes& attributes);
    // The refusal of what a field holds; takes it when there is none.
    std::string Take(document::Setting setting);
    void Typed(document::Setting setting);
    void Finished(document::Setting setting);
    bool Faultless();
    void Mark(document::Setting setting, const std::string& refusal);
    void Unmark(QLineEdit* field);
    void ChooseColour(std::size_t row);
    void RestoreDefaults();

    term::MathParser& parser_;
    Dialogs& dialogs_;
    std::optional<Edit> edit_;

    QTabWidget* tabs_;
    QLabel* message_;
    std::array<QLineEdit*, document::kSettingCount> fields_{};
    std::array<QPushButton*, kColourCount> colours_{};
    QComboBox* x_mode_ = nullptr;
    QComboBox* y_mode_ = nullptr;
    QCheckBox* constant_count_ = nullptr;
    QCheckBox* smooth_ = nullptr;
    QCheckBox* graph_names_ = nullptr;
};

}  // namespace korvinth::ui
