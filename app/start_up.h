// The fixed orders in which the program starts and ends, and the directory of its files.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "files/file_system.h"

namespace korvinth::app {

// What starting and ending consist of. The main function implements it; a test writes down calls.
class LifeCycle
{
public:
    virtual ~LifeCycle() = default;

    virtual void RunParserOnce() = 0;         // a first evaluation
    virtual void PrepareIntervalTexts() = 0;  // the term editor's
    virtual void SetDefaults() = 0;           // the general settings
    virtual void LoadDefinitions() = 0;       // of the parser: standard functions and aliases
    virtual void ComputeMapping() = 0;
    virtual void SetUpWorkingCollection() = 0;  // with the settings file
    virtual void ReadCollection() = 0;
    virtual void ArrangeWindows() = 0;
    virtual void FinishIntervalTexts() = 0;  // "-oo; +oo"

    virtual void WriteSettings() = 0;
    virtual void OfferToSave() = 0;
    virtual void StopTimers() = 0;
    virtual void CloseSliders() = 0;
    virtual void CloseWindows() = 0;
};

struct LifeStep
{
    std::string_view name;
    void (LifeCycle::*run)();
};

// In their order.
std::span<const LifeStep> StartSteps();
std::span<const LifeStep> EndSteps();
void RunSteps(std::span<const LifeStep> steps, LifeCycle& cycle);

// What the choice of the directory looks at.
struct DirectorySurroundings
{
    std::function<std::optional<std::string>(const std::string&)> variable;  // environment
    std::function<bool(const files::Path&)> exists;
    files::Path executable_directory;
    // The user's, where the system itself names it; it comes before those of the environment.
    std::optional<files::Path> data_directory = std::nullopt;
};

// KORVINTH_HOME if it is set; else the executable's own directory if it holds a file
// "korvinth.portable"; else the user's data directory.
files::Path ProgramDirectory(const DirectorySurroundings& surroundings);

// The same from the real surroundings; created when it does not exist.
files::Path UseProgramDirectory(const files::Path& executable_directory);

}  // namespace korvinth::app
