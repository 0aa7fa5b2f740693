// Reads the sources of the tree: rooms see only the rooms below them, the core sees no toolkit, the
// system and its files are touched in one room, no clock that can be set is asked, no other program
// and no network.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Room
{
    std::string_view folder;
    bool may_use_qt;
    bool may_use_system = false;
};

// From the bottom up: a room includes itself and what stands before it.
constexpr std::array kRooms = {
    Room{"term", false},   Room{"files", false, true}, Room{"document", false},
    Room{"render", false}, Room{"render/qt", true},    Room{"ui", true},
    Room{"app", true},
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

// True for <QWidget>, <QtGui/QImage>, <qstring.h>.
bool IsQtHeader(std::string_view name)
{
    const auto letter = [&name](std::size_t i, char first, char last) {
        return i < name.size() && name[i] >= first && name[i] <= last;
    };
    if (name.starts_with("Q")) return letter(1, 'A', 'Z') || name.starts_with("Qt");
    return name.starts_with("q") && name.ends_with(".h");
}

// True for <unistd.h>, <sys/stat.h>, <windows.h>: the headers of C++ have no ending, those of the
// processor's own instructions are the same on every system.
bool IsSystemHeader(std::string_view name)
{
    return name.ends_with(".h") && !IsQtHeader(name) && !name.ends_with("intrin.h");
}

struct Include
{
    std::string name;
    bool in_quotes = false;
};

// The include of one line, if it is one.
std::optional<Include> ReadInclude(std::string line)
{
    std::erase_if(line, [](char c) { return c == ' ' || c == '\t'; });
    constexpr std::string_view kDirective = "#include";
    if (!line.starts_with(kDirective) || line.size() == kDirective.size()) return std::nullopt;
    const char open = line[kDirective.size()];
    const std::size_t begin = kDirective.size() + 1;
    const std::size_t end = line.find(open == '<' ? '>' : '"', begin);
    return Include{line.substr(begin, end - begin), open == '"'};
}

// What is wrong with the includes of one source file, "" when nothing is.
std::string IncludeFaults(std::string_view file, const std::string& source)
{
    const std::optional<std::size_t> room = RoomOf(file);
    if (!room) return std::string(file) + " stands in no known room\n";

    std::string faults;
    std::istringstream lines(source);
    for (std::string line; std::getline(lines, line);) {
        const std::optional<Include> include = ReadInclude(line);
        if (!include) continue;
        const std::optional<std::size_t> target = RoomOf(include->name);
        std::string_view fault;
        if (include->in_quotes) {
            if (!target) fault = "is not named from the root of the tree";
            if (target && *target > *room) fault = "points upwards";
        } else if (target) {
            fault = "names a room in angle brackets";
        } else if (!kRooms[*room].may_use_qt && IsQtHeader(include->name)) {
            fault = "brings the toolkit into the core";
        } else if (!kRooms[*room].may_use_system && IsSystemHeader(include->name)) {
            fault = "brings the system past the file layer";
        }
        if (fault.empty()) continue;
        faults += std::string(file) + ": " + include->name + " " + std::string(fault) + "\n";
    }
    return faults;
}

// Ways to a file past the room files/, and clocks that a user or the network can set.
constexpr std::string_view kFilesAndClocks[] = {
    "ofstream", "fstream",   "fopen",          "QFile",        "QSaveFile",       "QSettings",
    "QDir",     "QFileInfo", "QTemporaryFile", "QLockFile",    "std::filesystem", "QDateTime",
    "QDate",    "QTime",     "system_clock",   "gettimeofday", "CLOCK_REALTIME",
};
// Other programs and the network, which the collection of a stranger must not reach.
constexpr std::string_view kOutside[] = {
    "QProcess", "QDesktopServices",      "QLibrary",   "QPluginLoader", "popen",
    "dlopen",   "QNetworkAccessManager", "QTcpSocket", "QUdpSocket",    "QDBusInterface",
};
// Where one of them is meant: resources of the program are no files, and its own help is opened by
// the system.
struct Wanted
{
    std::string_view file, name;
};
constexpr Wanted kWantedNames[] = {
    {"app/examples.cpp", "QFile"},
    {"ui/help_pages.cpp", "QFile"},
    {"app/help_control.cpp", "QDesktopServices"},
};

bool IsWordSign(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool HasWord(std::string_view source, std::string_view word)
{
    for (std::size_t at = source.find(word); at != std::string_view::npos;
         at = source.find(word, at + 1)) {
        const std::size_t end = at + word.size();
        const bool begins = at == 0 || !IsWordSign(source[at - 1]);
        if (begins && (end == source.size() || !IsWordSign(source[end]))) return true;
    }
    return false;
}

// What is wrong with the calls of one source file, "" when nothing is.
std::string CallFaults(std::string_view file, std::string_view source)
{
    if (file.starts_with("files/")) return "";
    std::string faults;
    const auto judge = [&](std::string_view name) {
        const auto wanted = [&](const Wanted& row) { return row.file == file && row.name == name; };
        if (!HasWord(source, name) || std::ranges::any_of(kWantedNames, wanted)) return;
        faults += std::string(file) + " uses " + std::string(name) + "\n";
    };
    std::ranges::for_each(kFilesAndClocks, judge);
    std::ranges::for_each(kOutside, judge);
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
    {"the file layer includes the system", "files/a.cpp", "#include <sys/stat.h>\n", true},
    {"an evaluator includes instructions of the processor", "term/a.cpp",
     "#include <emmintrin.h>\n", true},
    {"windows include the toolkit with its ending", "ui/a.cpp", "#include <QtGui/qevent.h>\n",
     true},
    {"a window includes POSIX", "ui/a.cpp", "#include <unistd.h>\n", false},
    {"the program includes POSIX from a folder", "app/a.cpp", "#include <sys/wait.h>\n", false},
    {"the core includes Windows", "term/a.cpp", "#  include <windows.h>\n", false},
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

TEST(Architecture, JudgesCalls)
{
    EXPECT_NE(CallFaults("app/a.cpp", "std::ofstream(\"a\");"), "");
    EXPECT_NE(CallFaults("ui/a.cpp", "QTime::currentTime()"), "");
    EXPECT_NE(CallFaults("app/a.cpp", "QDesktopServices::openUrl(url);"), "");
    EXPECT_EQ(CallFaults("app/help_control.cpp", "QDesktopServices::openUrl(url);"), "");
    EXPECT_EQ(CallFaults("ui/a.cpp", "QTimer timer; QFileDialog dialog;"), "");
    EXPECT_EQ(CallFaults("files/a.cpp", "std::filesystem::path a;"), "");
}

TEST(Architecture, RoomsUseOnlyWhatStandsBelowThem)
{
    namespace fs = std::filesystem;
    const fs::path root = KORVINTH_SOURCE_DIR;
    std::map<std::size_t, int> files_read;
    std::string faults;
    for (const std::string_view top : {"term", "files", "document", "render", "ui", "app"}) {
        for (const auto& entry : fs::recursive_directory_iterator(root / top)) {
            const std::string extension = entry.path().extension();
            if (extension != ".h" && extension != ".cpp") continue;
            std::ostringstream source;
            source << std::ifstream(entry.path()).rdbuf();
            const std::string file = entry.path().lexically_relative(root).generic_string();
            faults += IncludeFaults(file, source.str()) + CallFaults(file, source.str());
            if (const auto room = RoomOf(file)) ++files_read[*room];
        }
    }
    EXPECT_EQ(faults, "");
    for (std::size_t i = 0; i < kRooms.size(); ++i) {
        EXPECT_GE(files_read[i], 2) << "hardly anything read in " << kRooms[i].folder;
    }
}

}  // namespace
