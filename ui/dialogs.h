// Message boxes, file dialogs and the colour chooser behind one interface: a test answers them.
#pragma once

#include <optional>
#include <string>

#include "document/display_attributes.h"

namespace korvinth::ui {

// What Enter and the space bar answer.
enum class Preset { Yes, No };

class Dialogs
{
public:
    virtual ~Dialogs() = default;

    virtual void ShowError(const std::string& title, const std::string& text) = 0;
    virtual void ShowExclamation(const std::string& title, const std::string& text) = 0;
    virtual bool AskYesNo(const std::string& title, const std::string& text,
                          Preset preset = Preset::Yes) = 0;

    // `filter` as "Textdateien (*.txt)|*.txt|Alle Dateien (*.*)|*.*"; nothing when cancelled. The
    // file may exist or not in both; a name typed without an ending takes that of the filter when
    // it is for saving.
    virtual std::optional<std::string> OpenFile(const std::string& title,
                                                const std::string& filter) = 0;
    virtual std::optional<std::string> SaveFile(const std::string& title,
                                                const std::string& filter) = 0;
    virtual std::optional<document::Colour> ChooseColour(document::Colour initial) = 0;
    // A whole number typed by the user, within the bounds.
    virtual std::optional<int> AskNumber(const std::string& title, const std::string& label,
                                         int value, int lowest, int highest) = 0;
};

}  // namespace korvinth::ui
