// Reads the includes of the tree: rooms see only the rooms below them, the core sees no toolkit.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <regex>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Room
{
    std::string_view folder;
    bool may_use_qt;
};

// From the bottom up: a room includes itself and what stands before it.
constexpr std::array kRooms = {
    Room{"term", false},     Room{"document", false}, Room{"render", false},
    Room{"render/qt", true}, Room{"ui", true},        Room{"app", true},
};

// The room of a file named from the root of the tree; render/qt is none of render's folders.
std::optional<std::size_t> RoomOf(std::string_view file)
{
    const std::size_t slash = file.rfind('/');
    const std::string_view folder = file.substr(0, slash == std::string_view::npos ? 0 : slash);
    for (std::size_t i = 0; i < kRooms.size(); ++i) {
        if (kRooms[i].folder == folder) return i;
    }
    return std::nullopt;
}

// What is wrong with the includes of one source file, "" when nothing is.
std::string IncludeFaults(std::string_view file, const std::string& source)
{
    static const std::regex include_line(R"(^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)[>"])",
                                         std::regex::ECMAScript | std::regex::multiline);
    static const std::regex qt_header(R"((Qt?[A-Z]\w*|q\w+\.h)(/.*)?)");
    const std::optional<std::size_t> room = RoomOf(file);
    if (!room) return std::string(file) + " stands in no known room\n";

    std::string faults;
    for (std::sregex_iterator it(source.begin(), source.end(), include_line), end; it != end;
         ++it) {
        const std::string name = (*it)[2];
        std::string fault;
        if ((*it)[1] == "\"") {
            const std::optional<std::size_t> target = RoomOf(name);
            if (!target) fault = "is not named from the root of the tree";
            if (target && *target > *room) fault = "points upwards";
        } else if (RoomOf(name)) {
            fault = "names a room in angle brackets";
        } else if (!kRooms[*room].may_use_qt && std::regex_match(name, qt_header)) {
            fault = "brings the toolkit into the core";
        }
        if (!fault.empty()) faults += std::string(file) + ": " + name + " " + fault + "\n";
    }
    return faults;
}

struct IncludeCase
{
    std::string_view behaviour, file, source;
    bool allowed;
};

constexpr IncludeCase kIncludeCases[] = {
    {"a room includes the one below", "ui/a.cpp", "#include \"render/b.h\"\n", true},
    {"a room includes one further down", "app/a.cpp", "#include \"term/b.h\"\n", true},
    {"a room includes itself", "term/a.cpp", "#include \"term/a.h\"\n", true},
    {"windows include the toolkit", "ui/a.cpp", "#include <QWidget>\n", true},
    {"the surfaces of the toolkit include it", "render/qt/a.cpp", "#include <QtGui/QImage>\n",
     true},
    {"the core includes the standard library", "term/a.cpp", "#include <queue>\n", true},
    {"an arrow upwards", "document/a.cpp", "#include \"render/b.h\"\n", false},
    {"an arrow upwards below other lines", "term/a.h", "int a;\n  # include \"app/b.h\"\n", false},
    {"the geometry includes the surfaces of the toolkit", "render/a.cpp",
     "#include \"render/qt/b.h\"\n", false},
    {"the core includes the toolkit", "document/a.cpp", "#include <QString>\n", false},
    {"the core includes the toolkit with its folder", "render/a.cpp", "#include <QtCore/QString>\n",
     false},
    {"the core includes an old header of the toolkit", "term/a.cpp", "#include <qstring.h>\n",
     false},
    {"an include beside the file", "term/a.cpp", "#include \"a.h\"\n", false},
    {"a room in angle brackets", "term/a.cpp", "#include <app/a.h>\n", false},
    {"a file in no room", "misc/a.cpp", "", false},
};

TEST(Architecture, JudgesIncludes)
{
    for (const IncludeCase& row : kIncludeCases) {
        SCOPED_TRACE(row.behaviour);
        EXPECT_EQ(IncludeFaults(row.file, std::string(row.source)).empty(), row.allowed);
    }
}

TEST(Architecture, RoomsIncludeOnlyWhatStandsBelowThem)
{
    namespace fs = std::filesystem;
    const fs::path root = KORVINTH_SOURCE_DIR;
    std::map<std::size_t, int> files_read;
    std::string faults;
    for (const std::string_view top : {"term", "document", "render", "ui", "app"}) {
        for (const auto& entry : fs::recursive_directory_iterator(root / top)) {
            const std::string extension = entry.path().extension();
            if (extension != ".h" && extension != ".cpp") continue;
            std::ostringstream source;
            source << std::ifstream(entry.path()).rdbuf();
            const std::string file = entry.path().lexically_relative(root).generic_string();
            faults += IncludeFaults(file, source.str());
            if (const auto room = RoomOf(file)) ++files_read[*room];
        }
    }
    EXPECT_EQ(faults, "");
    for (std::size_t i = 0; i < kRooms.size(); ++i) {
        EXPECT_GE(files_read[i], 2) << "hardly anything read in " << kRooms[i].folder;
    }
}

}  // namespace
