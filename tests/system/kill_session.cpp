// Kills a session of the program at random moments, again and again, and sees what the next start
// shows: no question, and a state of the session that is no older than the working collection
// promises.
//   kill_session [--kills N] [--seed S] [--large]
// The session runs in a child process, which tells on its stdout what it does:
//   seen STATE      the program has started and shows this
//   begin STATE     a step begins that leads to this
//   save STATE      ... and saves the collection
//   told TEXT       something that nobody should be told
//   done MS         the step is over, at this time
//   alive MS        the session goes on
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/toolkit.h"
#include "app/working_collection.h"
#include "document/collection_file.h"
#include "document/settings_file.h"
#include "tests/system/driven_program.h"

namespace korvinth::app {
namespace {

namespace fs = std::filesystem;
using Milliseconds = std::int64_t;
using document::Column;

constexpr document::ParameterIndex kA{26};
constexpr std::size_t kMostEntries = 40;
constexpr const char* kSaved = "gespeichert.txt";
constexpr const char* kPicture = "bild.svg";

// Of the monotonic clock that all processes share.
Milliseconds Now()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

std::string ContentOf(const fs::path& file)
{
    std::string bytes;
    return files::Disk().Read(file, bytes) ? "" : bytes;
}

// What of a session's state its steps change: the number in the plotted term, the parameter, and
// the numbers in the terms of the entries.
struct State
{
    int number = 0;
    double parameter = 0;
    std::vector<int> entries;
    bool operator==(const State&) const = default;
};

std::string Term(int number) { return "f(x)=a*x+" + std::to_string(number); }

// 0 for another term.
int NumberIn(std::string_view text)
{
    const std::size_t plus = text.find("a*x+");
    return plus == std::string_view::npos ? 0 : std::atoi(text.data() + plus + 4);
}

std::string Text(const State& state)
{
    std::ostringstream text;
    text << state.number << ' ' << state.parameter;
    for (const int entry : state.entries) text << ' ' << entry;
    return text.str();
}

State StateOf(std::istringstream& text)
{
    State state;
    text >> state.number >> state.parameter;
    for (int entry = 0; text >> entry;) state.entries.push_back(entry);
    return state;
}

// Only entries of the session: those of a large collection stand in front of them.
std::vector<int> NumbersIn(const std::vector<document::CollectionEntry>& entries)
{
    std::vector<int> numbers;
    for (const document::CollectionEntry& entry : entries) {
        const int number = NumberIn(std::string(entry[Column::Functions]));
        if (number != 0) numbers.push_back(number);
    }
    return numbers;
}

// Nothing when the file is not there or not complete.
std::optional<State> StateIn(const fs::path& file)
{
    document::Collection collection;
    const std::string bytes = ContentOf(file);
    if (bytes.empty()) return std::nullopt;
    const std::string fault = document::ReadCollection(bytes, document::ReadMode::Open, collection);
    if (!fault.empty() || !collection.buffer_loaded) return std::nullopt;
    const std::string parameters(collection.buffer[Column::Parameters]);
    State state;
    state.number = NumberIn(std::string(collection.buffer[Column::Functions]));
    state.parameter = parameters.starts_with("a=") ? std::atof(parameters.c_str() + 2) : 0;
    state.entries = NumbersIn(collection.entries);
    return state;
}

// The child.
class KilledSession
{
public:
    KilledSession(const fs::path& home, unsigned seed)
        : home_(home), random_(seed), program_(home.string())
    {
        model_ = Shown();
        std::cout << "seen " << Text(model_) << std::endl;
        for (const auto& messages : {program_.Dialogs().errors, program_.Dialogs().exclamations,
                                     program_.Dialogs().questions}) {
            for (const std::string& message : messages)
                std::cout << "told " << message << std::endl;
        }
    }

    // Until it is killed or has ended in an orderly way. False when the windows show what they
    // should not.
    bool Run()
    {
        for (;;) {
            Wait();
            const int step = Random(0, 99);
            if (step < 35 || model_.number == 0) {
                ChangeRow();
            } else if (step < 55) {
                MoveSlider();
            } else if (step < 75) {
                AddEntry();
            } else if (step < 85) {
                Save();
            } else if (step < 90) {
                Open();
            } else if (step < 99) {
                WriteOtherFiles();
            } else {
                program_.Dialogs().yes = false;  // what was changed is not saved
                program_.Window().close();
                return true;
            }
            if (Shown() != model_) {
                std::cout << "told " << Text(Shown()) << " instead of " << Text(model_)
                          << std::endl;
                return false;
            }
            std::cout << "done " << Now() << std::endl;
        }
    }

private:
    int Random(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

    // Mostly short; now and then long enough for all to be written.
    void Wait()
    {
        const int beats = Random(0, 9) == 0 ? 60 : Random(0, 6);
        for (int i = 0; i < beats; ++i) {
            QTest::qWait(50);
            std::cout << "alive " << Now() << std::endl;
        }
    }

    State Shown()
    {
        State state;
        QString row = program_.Row(0).remove(' ');
        state.number = NumberIn(row.toStdString());
        state.parameter = program_.Window().PlotSession().Document().parameters[kA].value;
        state.entries = NumbersIn(program_.Entries().entries);
        return state;
    }

    void Begin(const char* what) { std::cout << what << ' ' << Text(model_) << std::endl; }

    void ChangeRow()
    {
        ++model_.number;
        Begin("begin");
        program_.Type(0, QString::fromStdString(Term(model_.number)));
    }

    void MoveSlider()
    {
        model_.parameter = 0.25 * Random(-20, 20);
        Begin("begin");
        program_.Window().PlotSession().Parameters().setpar(kA, model_.parameter);
    }

    void AddEntry()
    {
        if (model_.entries.size() >= kMostEntries) return;
        model_.entries.push_back(model_.number);
        Begin("begin");
        program_.Trigger("mn_add");
    }

    void Save()
    {
        Begin("save");
        program_.Dialogs().yes = true;
        program_.Dialogs().files = {files::Utf8(home_ / kSaved)};
        program_.Trigger("mn_saveas");
    }

    // Without saving what was changed.
    void Open()
    {
        const std::optional<State> saved = StateIn(home_ / kSaved);
        if (!saved) return;
        model_ = *saved;
        Begin("begin");
        program_.Dialogs().yes = false;
        program_.Dialogs().files = {files::Utf8(home_ / kSaved)};
        program_.Trigger("mn_open");
    }

    void WriteOtherFiles()
    {
        Begin("begin");
        program_.Trigger("mn_viewnumb");
        program_.Trigger("mn_saveopt");
        program_.Trigger("mn_emf");
        program_.Dialogs().yes = true;
        program_.Export(files::Utf8(home_ / kPicture));
    }

    const fs::path home_;
    std::mt19937 random_;
    DrivenProgram program_;
    State model_;
};

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
    return KilledSession(options.home, options.seed).Run() ? 0 : 1;
}

// One run of the child, from its start to its end.
struct RunLog
{
    std::vector<std::string> lines;
    bool killed = false;
};

RunLog RunAndKill(const std::string& program, const fs::path& home, unsigned seed,
                  Milliseconds lifetime)
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
    for (const Milliseconds end = Now() + lifetime;;) {
        const Milliseconds left = log.killed ? -1 : std::max<Milliseconds>(end - Now(), 0);
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

// What the session has done, and so what the next start may show.
class Expectation
{
public:
    explicit Expectation(bool large) : large_(large) {}

    // Takes what a run has told; returns what was wrong with it.
    std::string Follow(const RunLog& log)
    {
        std::string faults;
        for (const std::string& line : log.lines) {
            std::istringstream text(line);
            std::string what;
            text >> what;
            if (what == "told") faults += line + "\n";
            if (what == "seen") faults += TakeSeen(StateOf(text));
            if (what == "begin" || what == "save") Begin(StateOf(text), what == "save");
            if (what == "done" || what == "alive") {
                text >> now_;
                if (what == "done") Done();
            }
        }
        ended_ = ended_ || !log.killed;
        return faults;
    }

    // Whether one of the states that the collection may have been saved with is there.
    std::string CheckSaved(const fs::path& file) const
    {
        if (saved_.empty()) return "";
        std::string fault = "the saved collection is neither the old nor the new one:\n";
        for (const char* const ending : {"", ".tmp"}) {
            const std::optional<State> found = StateIn(files::WithEnding(file, ending));
            if (found && std::ranges::count(saved_, *found) > 0) return "";
            fault += "  found " + (found ? Text(*found) : "none") + "\n";
        }
        for (const State& state : saved_) fault += "  expected " + Text(state) + "\n";
        return fault;
    }

    int Promised() const { return promised_; }

private:
    struct Step
    {
        State state;
        Milliseconds begun = 0;
        std::optional<Milliseconds> done;
    };

    void Begin(const State& state, bool save)
    {
        steps_.push_back({state, now_, std::nullopt});
        if (save) saved_.push_back(state);
        saving_ = save;
    }

    void Done()
    {
        if (steps_.empty() || steps_.back().done) return;
        steps_.back().done = now_;
        if (std::exchange(saving_, false)) saved_ = {steps_.back().state};
    }

    // Whether the working collection has promised to hold this step's change.
    bool IsPromised(std::size_t step) const
    {
        constexpr Milliseconds kSmall = 2000;
        constexpr Milliseconds kQuiet = 3000, kLargest = 30'500;
        if (!steps_[step].done) return false;
        if (ended_) return true;
        const Milliseconds waiting = now_ - *steps_[step].done;
        if (!large_) return waiting >= kSmall;
        const Milliseconds quiet_until = step + 1 < steps_.size() ? steps_[step + 1].begun : now_;
        return waiting >= kLargest || quiet_until - *steps_[step].done >= kQuiet;
    }

    std::string TakeSeen(const State& seen)
    {
        std::size_t first = 0;
        for (std::size_t i = 1; i < steps_.size(); ++i) {
            if (IsPromised(i)) first = i;
        }
        promised_ += first > 0 ? 1 : 0;
        bool expected = steps_.empty();
        for (std::size_t i = first; i < steps_.size(); ++i) {
            expected = expected || steps_[i].state == seen;
        }
        std::string fault;
        if (!expected) {
            fault = "the start shows " + Text(seen) + " instead of one of\n";
            for (std::size_t i = first; i < steps_.size(); ++i) {
                fault += "  " + Text(steps_[i].state) + "\n";
            }
        }
        steps_ = {{seen, 0, 0}};
        ended_ = false;
        return fault;
    }

    const bool large_;
    std::vector<Step> steps_;  // since the last start, which is the first of them
    std::vector<State> saved_;
    Milliseconds now_ = 0;
    bool saving_ = false;
    bool ended_ = false;  // the last run, in an orderly way
    int promised_ = 0;    // starts before which at least one step was promised
};

// The other files are there as a whole or not at all.
std::string CheckOtherFiles(const fs::path& home)
{
    std::string faults;
    const std::string settings = ContentOf(home / document::kSettingsFileName);
    const bool has_all = document::ProfileValue(settings, "Korvinth", "Attribs") != "" &&
                         document::ProfileValue(settings, "Korvinth", "LArt") != "";
    if (!settings.empty() && !(has_all && settings.ends_with("\r\n"))) faults += "half settings\n";
    const std::string picture = ContentOf(home / kPicture);
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
        entry.Set(Column::ShortText, "lang");
        entry.Set(Column::LongText, text);
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
    std::uniform_int_distribution<Milliseconds> lifetime(0, longest);
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
        faults += expectation.CheckSaved(home / kSaved) + CheckOtherFiles(home);
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
