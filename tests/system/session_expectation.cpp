#include "tests/system/session_expectation.h"

#include <algorithm>
#include <sstream>
#include <string_view>
#include <utility>

#include "files/file_system.h"

namespace korvinth::app {

std::string Expectation::Follow(const RunLog& log)
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

std::string Expectation::CheckSaved(const std::filesystem::path& file) const
{
    std::string fault = "the saved collection is neither the old nor the new one:\n";
    for (const char* const ending : {"", ".tmp"}) {
        const std::optional<State> found = StateIn(files::WithEnding(file, ending));
        if (std::ranges::count(saved_, found) > 0) return "";
        fault += "  found " + (found ? Text(*found) : "none") + "\n";
    }
    for (const auto& state : saved_)
        fault += "  expected " + (state ? Text(*state) : "none") + "\n";
    return fault;
}

void Expectation::Begin(const State& state, bool save)
{
    steps_.push_back({state, now_, std::nullopt});
    if (save) saved_.push_back(state);
    saving_ = save;
}

void Expectation::Done()
{
    if (steps_.empty() || steps_.back().done) return;
    steps_.back().done = now_;
    if (std::exchange(saving_, false)) saved_ = {steps_.back().state};
}

// Whether the working collection has promised to hold this step's change.
bool Expectation::IsPromised(std::size_t step) const
{
    constexpr std::int64_t kSmall = 2000;
    constexpr std::int64_t kQuiet = 3000, kLargest = 30'500;
    if (!steps_[step].done) return false;
    if (ended_) return true;
    const std::int64_t waiting = now_ - *steps_[step].done;
    if (!large_) return waiting >= kSmall;
    const std::int64_t quiet_until = step + 1 < steps_.size() ? steps_[step + 1].begun : now_;
    return waiting >= kLargest || quiet_until - *steps_[step].done >= kQuiet;
}

std::string Expectation::TakeSeen(const State& seen)
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

}  // namespace korvinth::app
