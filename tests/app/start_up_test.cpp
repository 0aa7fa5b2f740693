#include "app/start_up.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "files/path_text.h"

namespace korvinth::app {
namespace {

class RecordingCycle final : public LifeCycle
{
public:
    void RunParserOnce() override { calls.push_back("parser"); }
    void PrepareIntervalTexts() override { calls.push_back("intervals"); }
    void SetDefaults() override { calls.push_back("defaults"); }
    void LoadDefinitions() override { calls.push_back("definitions"); }
    void ComputeMapping() override { calls.push_back("mapping"); }
    void SetUpWorkingCollection() override { calls.push_back("working collection"); }
    void ReadCollection() override { calls.push_back("collection"); }
    void ArrangeWindows() override { calls.push_back("arrange"); }
    void FinishIntervalTexts() override { calls.push_back("-oo; +oo"); }
    void WriteSettings() override { calls.push_back("settings"); }
    void OfferToSave() override { calls.push_back("save?"); }
    void StopTimers() override { calls.push_back("timers"); }
    void CloseSliders() override { calls.push_back("sliders"); }
    void CloseWindows() override { calls.push_back("windows"); }

    std::vector<std::string> calls;
};

TEST(StartUp, StepsRunInTheFixedOrder)
{
    RecordingCycle cycle;
    RunSteps(StartSteps(), cycle);
    EXPECT_EQ(cycle.calls, (std::vector<std::string>{"parser", "intervals", "defaults",
                                                     "definitions", "mapping", "working collection",
                                                     "collection", "arrange", "-oo; +oo"}));
}

TEST(ShutDown, StepsRunInTheFixedOrder)
{
    RecordingCycle cycle;
    RunSteps(EndSteps(), cycle);
    EXPECT_EQ(cycle.calls,
              (std::vector<std::string>{"settings", "save?", "timers", "sliders", "windows"}));
}

struct DirectoryCase
{
    std::string_view behaviour;
    std::map<std::string, std::string> variables;
    bool portable;
    std::string_view directory;
    std::optional<std::filesystem::path> data_directory = std::nullopt;
};

const DirectoryCase kDirectoryCases[] = {
    {"KORVINTH_HOME comes first",
     {{"KORVINTH_HOME", "/mine"}, {"XDG_DATA_HOME", "/data"}, {"HOME", "/home/anna"}},
     true,
     "/mine"},
    {"a portable program keeps its files beside itself",
     {{"XDG_DATA_HOME", "/data"}, {"HOME", "/home/anna"}},
     true,
     "/opt/korvinth"},
    {"the user's data directory",
     {{"XDG_DATA_HOME", "/data"}, {"HOME", "/home/anna"}},
     false,
     "/data/korvinth"},
    {"its default place", {{"HOME", "/home/anna"}}, false, "/home/anna/.local/share/korvinth"},
    {"an empty variable counts as none",
     {{"KORVINTH_HOME", ""}, {"XDG_DATA_HOME", ""}, {"HOME", "/home/anna"}},
     false,
     "/home/anna/.local/share/korvinth"},
    {"a relative data directory is ignored",
     {{"XDG_DATA_HOME", "data"}, {"HOME", "/home/anna"}},
     false,
     "/home/anna/.local/share/korvinth"},
    {"without a home the executable's directory is left", {}, false, "/opt/korvinth"},
    {"the system's own answer comes before the environment",
     {{"XDG_DATA_HOME", "/data"}, {"HOME", "/home/anna"}},
     false,
     "/profile/korvinth",
     "/profile"},
};

TEST(ProgramDirectory, FollowsTheSurroundings)
{
    for (const DirectoryCase& row : kDirectoryCases) {
        SCOPED_TRACE(row.behaviour);
        const DirectorySurroundings surroundings{
            .variable = [&](const std::string& name) -> std::optional<std::string> {
                const auto found = row.variables.find(name);
                if (found == row.variables.end()) return std::nullopt;
                return found->second;
            },
            .exists =
                [&](const std::filesystem::path& file) {
                    return row.portable && file == "/opt/korvinth/korvinth.portable";
                },
            .executable_directory = "/opt/korvinth",
            .data_directory = row.data_directory,
        };
        EXPECT_EQ(ProgramDirectory(surroundings), row.directory);
    }
}

TEST(ProgramDirectory, IsMadeOnFirstUse)
{
    const std::filesystem::path home =
        std::filesystem::path(testing::TempDir()) / "korvinth_start_up" / "home";
    std::filesystem::remove_all(home.parent_path());
    ASSERT_TRUE(qputenv("KORVINTH_HOME", QByteArray::fromStdString(files::Utf8(home))));
    EXPECT_EQ(UseProgramDirectory("/nowhere"), home);
    EXPECT_TRUE(std::filesystem::is_directory(home));
    qunsetenv("KORVINTH_HOME");
    std::filesystem::remove_all(home.parent_path());
}

}  // namespace
}  // namespace korvinth::app
