#include "app/start_up.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <filesystem>
#include <optional>
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

TEST(LifeCycle, StepsRunInTheFixedOrder)
{
    RecordingCycle start, end;
    RunSteps(StartSteps(), start);
    EXPECT_EQ(start.calls, (std::vector<std::string>{"parser", "intervals", "defaults",
                                                     "definitions", "mapping", "working collection",
                                                     "collection", "arrange", "-oo; +oo"}));
    RunSteps(EndSteps(), end);
    EXPECT_EQ(end.calls,
              (std::vector<std::string>{"settings", "save?", "timers", "sliders", "windows"}));
}

// An environment of KORVINTH_HOME, XDG_DATA_HOME and HOME.
struct DirectoryCase
{
    std::string_view behaviour;
    std::optional<std::string> own, data, home;
    bool portable;
    std::string_view directory;
    std::optional<std::filesystem::path> data_directory = std::nullopt;
};

constexpr auto kUnset = std::nullopt;
constexpr const char* kAnna = "/home/anna";
const DirectoryCase kDirectoryCases[] = {
    {"KORVINTH_HOME comes first", "/mine", "/data", kAnna, true, "/mine"},
    {"a portable program's is its own", kUnset, "/data", kAnna, true, "/opt/korvinth"},
    {"the user's data directory", kUnset, "/data", kAnna, false, "/data/korvinth"},
    {"its default place", kUnset, kUnset, kAnna, false, "/home/anna/.local/share/korvinth"},
    {"an empty variable is none", "", "", kAnna, false, "/home/anna/.local/share/korvinth"},
    {"not a relative one", kUnset, "data", kAnna, false, "/home/anna/.local/share/korvinth"},
    {"the executable's without a home", kUnset, kUnset, kUnset, false, "/opt/korvinth"},
    {"the system's own comes first", kUnset, "/data", kAnna, false, "/profile/korvinth",
     "/profile"},
};

TEST(ProgramDirectory, FollowsTheSurroundings)
{
    for (const DirectoryCase& row : kDirectoryCases) {
        SCOPED_TRACE(row.behaviour);
        const DirectorySurroundings surroundings{
            .variable =
                [&](const std::string& name) {
                    if (name == "KORVINTH_HOME") return row.own;
                    return name == "HOME" ? row.home : row.data;
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
