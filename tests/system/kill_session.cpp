// Kills a session of the program at random moments, again and again, and sees what the next start
// shows: no question, and a state of the session that is no older than the working collection
// promises.
//   kill_session [--kills N] [--seed S] [--large]
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QApplication>
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>

#include "app/toolkit.h"
#include "app/working_collection.h"
#include "document/collection_file.h"
#include "document/settings_file.h"
#include "tests/system/killed_session.h"
#include "tests/system/session_expectation.h"
#include "tests/system/session_state.h"

namespace korvinth::app {
namespace {

namespace fs = std::filesystem;

struct Options
{
    int kills = 20;
    unsigned seed = std::random_device()();
    bool large = false;  // a collection whose writing waits until nothing moves
    std::string home;    // of the child
};

int RunChild(const Options& options, int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication toolkit(argc, argv);
    UseGerman(toolkit);
    return RunSession(options.home, options.seed) ? 0 : 1;
}

RunLog RunAndKill(const std::string& program, const fs::path& home, unsigned seed,
                  std::int64_t lifetime)
{
    int channel[2];
    if (::pipe(channel) != 0) std::abort();
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(channel[1], STDOUT_FILENO);
        ::close(channel[0]);
        ::close(channel[1]);
        const std::string number = std::to_string(seed);
        ::execl(program.c_str(), program.c_str(), "--child", home.c_str(), "--seed", number.c_str(),
                nullptr);
        ::_exit(127);
    }
    ::close(channel[1]);
    RunLog log;
    std::string told;
    for (const std::int64_t end = Now() + lifetime;;) {
        const std::int64_t left = log.killed ? -1 : std::max<std::int64_t>(end - Now(), 0);
        struct pollfd ready = {channel[0], POLLIN, 0};
        if (::poll(&ready, 1, static_cast<int>(left)) == 0) {
            log.killed = ::kill(child, SIGKILL) == 0;
            continue;
        }
        char portion[4096];
        const ssize_t count = ::read(channel[0], portion, sizeof portion);
        if (count <= 0) break;
        told.append(portion, static_cast<std::size_t>(count));
    }
    ::close(channel[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (!WIFSIGNALED(status) && WEXITSTATUS(status) != 0) told += "told exit status\n";
    if (WIFSIGNALED(status) && WTERMSIG(status) != SIGKILL) told += "told crash\n";
    std::istringstream lines(told);
    // A last line without its break was cut by the kill.
    for (std::string line; std::getline(lines, line) && !lines.eof();) log.lines.push_back(line);
    return log;
}

// The other files are there as a whole or not at all.
std::string CheckOtherFiles(const fs::path& home)
{
    std::string faults;
    const std::string settings = ContentOf(home / document::kSettingsFileName);
    const bool has_all = document::ProfileValue(settings, "Korvinth", "Attribs") != "" &&
                         document::ProfileValue(settings, "Korvinth", "LArt") != "";
    if (!settings.empty() && !(has_all && settings.ends_with("\r\n"))) faults += "half settings\n";
    const std::string picture = ContentOf(home / kExportedPicture);
    if (!picture.empty() && !picture.ends_with("</svg>\n")) faults += "half a picture\n";
    // The last record of a metafile names its own length.
    const std::string metafile = ContentOf(home / "korvinth.tmp.emf");
    const std::string end("\x14\0\0\0", 4);
    if (!metafile.empty() && !metafile.ends_with(end)) faults += "half a metafile\n";
    return faults;
}

// More than a working collection that is written at once may have.
void PutLargeCollection(const fs::path& home)
{
    document::Collection collection;
    const std::string text(2000, 'x');
    for (std::size_t bytes = 0; bytes < kLargeCollection * 6 / 5; bytes += text.size()) {
        document::CollectionEntry& entry = collection.entries.emplace_back();
        entry.Set(document::Column::ShortText, "lang");
        entry.Set(document::Column::LongText, text);
    }
    const std::string bytes = document::WriteCollection(collection);
    (void)files::Disk().Write(home / kWorkingCollectionName, bytes);
}

// What writings that were killed have left beside their files; a start removes what is beside the
// working collection.
int CountLeftovers(const fs::path& home)
{
    return static_cast<int>(files::Disk().FilesBeginningWith(home / "korvinth.tmp.neu").size());
}

int RunParent(const Options& options)
{
    std::cout << "seed " << options.seed << std::endl;
    std::string name = (fs::temp_directory_path() / "korvinth-kill-XXXXXX").string();
    const fs::path home = ::mkdtemp(name.data());
    if (options.large) PutLargeCollection(home);
    const std::string program = fs::read_symlink("/proc/self/exe").string();
    std::mt19937 random(options.seed);
    const int longest = options.large ? 15'000 : 5000;  // ms
    std::uniform_int_distribution<std::int64_t> lifetime(0, longest);
    Expectation expectation(options.large);
    int killed = 0, starts = 0, left_over = 0;
    std::string faults;
    while (killed <= options.kills && faults.empty()) {
        // The last run only shows what the last kill has left.
        const RunLog log = RunAndKill(program, home, static_cast<unsigned>(random()),
                                      killed == options.kills ? longest : lifetime(random));
        starts += log.lines.empty() ? 0 : 1;
        killed += log.killed ? 1 : 0;
        faults = expectation.Follow(log);  // before the files are judged by it
        faults += expectation.CheckSaved(home / kSavedCollection) + CheckOtherFiles(home);
        // One from before is gone when a run has come so far.
        const int new_leftovers = log.lines.empty() ? 0 : CountLeftovers(home);
        if (new_leftovers > 1) faults += "leftovers pile up\n";
        left_over += new_leftovers;
        if (faults.empty()) continue;
        faults += "the last run told:\n";
        for (const std::string& line : log.lines) faults += "  " + line + "\n";
    }
    std::cout << killed << " kills, " << starts << " runs came as far as to show something, before "
              << expectation.Promised() << " starts something was promised, " << left_over
              << " times the working collection was being written\n";
    if (!faults.empty()) {
        std::cout << "after kill " << killed << ":\n" << faults << "see " << home << '\n';
        return 1;
    }
    fs::remove_all(home);
    return 0;
}

}  // namespace
}  // namespace korvinth::app

int main(int argc, char** argv)
{
    using namespace korvinth::app;
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        const bool has_value = i + 1 < argc;
        if (option == "--large") {
            options.large = true;
        } else if (option == "--kills" && has_value) {
            options.kills = std::atoi(argv[++i]);
        } else if (option == "--seed" && has_value) {
            options.seed = static_cast<unsigned>(std::strtoul(argv[++i], nullptr, 10));
        } else if (option == "--child" && has_value) {
            options.home = argv[++i];
        } else {
            std::cerr << "kill_session [--kills N] [--seed S] [--large]\n";
            return 2;
        }
    }
    return options.home.empty() ? RunParent(options) : RunChild(options, argc, argv);
}
