#include "app/start_up.h"

#include <system_error>

#include "files/path_text.h"
#include "files/system.h"

namespace korvinth::app {
namespace {

constexpr LifeStep kStartSteps[] = {
    {"run the parser once", &LifeCycle::RunParserOnce},
    {"prepare the interval texts", &LifeCycle::PrepareIntervalTexts},
    {"put the defaults into the settings", &LifeCycle::SetDefaults},
    {"load definitions and aliases", &LifeCycle::LoadDefinitions},
    {"compute the view mapping", &LifeCycle::ComputeMapping},
    {"set up the working collection", &LifeCycle::SetUpWorkingCollection},
    {"read the collection", &LifeCycle::ReadCollection},
    {"arrange the windows", &LifeCycle::ArrangeWindows},
    {"finish the interval texts", &LifeCycle::FinishIntervalTexts},
};

constexpr LifeStep kEndSteps[] = {
    {"write the settings", &LifeCycle::WriteSettings},
    {"offer to save the collection", &LifeCycle::OfferToSave},
    {"stop the timers", &LifeCycle::StopTimers},
    {"close the sliders", &LifeCycle::CloseSliders},
    {"close the other windows", &LifeCycle::CloseWindows},
};

constexpr const char* kFolder = "korvinth";

}  // namespace

std::span<const LifeStep> StartSteps() { return kStartSteps; }
std::span<const LifeStep> EndSteps() { return kEndSteps; }

void RunSteps(std::span<const LifeStep> steps, LifeCycle& cycle)
{
    for (const LifeStep& step : steps) (cycle.*step.run)();
}

files::Path ProgramDirectory(const DirectorySurroundings& surroundings)
{
    const auto directory = [&](const char* name) -> std::optional<files::Path> {
        const std::optional<std::string> value = surroundings.variable(name);
        if (!value || value->empty()) return std::nullopt;
        return files::PathOf(*value);
    };
    if (const auto home = directory("KORVINTH_HOME")) return *home;
    const files::Path& executable = surroundings.executable_directory;
    if (surroundings.exists(executable / "korvinth.portable")) return executable;
    if (surroundings.data_directory) return *surroundings.data_directory / kFolder;
    // A relative path in XDG_DATA_HOME is to be ignored, as its definition says.
    const auto data = directory("XDG_DATA_HOME");
    if (data && data->is_absolute()) return *data / kFolder;
    if (const auto home = directory("HOME")) return *home / ".local" / "share" / kFolder;
    return executable;
}

files::Path UseProgramDirectory(const files::Path& executable_directory)
{
    const DirectorySurroundings surroundings{
        .variable = files::EnvironmentVariable,
        .exists =
            [](const files::Path& file) {
                std::error_code fault;
                return files::Disk().Exists(file, fault);
            },
        .executable_directory = executable_directory,
        .data_directory = files::UserDataDirectory(),
    };
    files::Path directory = ProgramDirectory(surroundings);
    files::Disk().MakeFolders(directory);  // whoever writes a file there reports a fault
    return directory;
}

}  // namespace korvinth::app
