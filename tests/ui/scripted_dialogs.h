// Dialogs that answer as a test has written down, and note what was shown.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "ui/dialogs.h"

namespace korvinth::ui {

class ScriptedDialogs : public Dialogs
{
public:
    void ShowError(const std::string& title, const std::string& text) override
    {
        errors.push_back(title + "|" + text);
    }
    void ShowExclamation(const std::string& title, const std::string& text) override
    {
        exclamations.push_back(title + "|" + text);
    }
    bool AskYesNo(const std::string& title, const std::string& text, Preset preset) override
    {
        questions.push_back(title + "|" + text + (preset == Preset::No ? "|Nein" : ""));
        return yes;
    }
    std::optional<std::string> OpenFile(const std::string& title, const std::string&) override
    {
        return ChosenFile(title);
    }
    std::optional<std::string> SaveFile(const std::string& title, const std::string&) override
    {
        return ChosenFile(title);
    }
    std::optional<document::Colour> ChooseColour(document::Colour initial) override
    {
        offered_colours.push_back(initial);
        return colour;
    }
    std::optional<int> AskNumber(const std::string&, const std::string&, int value, int,
                                 int) override
    {
        offered_numbers.push_back(value);
        return number;
    }

    bool yes = false;
    std::deque<std::string> files;  // chosen one after the other; then cancelled
    std::optional<document::Colour> colour;
    std::optional<int> number;

    // "title|text", of questions whose preset answer is No "title|text|Nein".
    std::vector<std::string> errors, exclamations, questions;
    std::vector<std::string> file_dialogs;  // titles
    std::vector<document::Colour> offered_colours;
    std::vector<int> offered_numbers;

private:
    std::optional<std::string> ChosenFile(const std::string& title)
    {
        file_dialogs.push_back(title);
        if (files.empty()) return std::nullopt;
        std::string file = std::move(files.front());
        files.pop_front();
        return file;
    }
};

}  // namespace korvinth::ui
