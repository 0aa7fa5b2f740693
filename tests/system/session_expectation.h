// What a killed session has told, and so what the next start may show.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/system/session_state.h"

namespace korvinth::app {

// One run of the child, from its start to its end.
struct RunLog
{
    std::vector<std::string> lines;
    bool killed = false;
};

class Expectation
{
public:
    // Of a collection whose writing waits until nothing moves.
    explicit Expectation(bool large) : large_(large) {}

    // Takes what a run has told; returns what was wrong with it.
    std::string Follow(const RunLog& log);
    // Whether one of the states that the collection may have been saved with is there, under its
    // name or that of its copy. "" when all is well.
    std::string CheckSaved(const std::filesystem::path& file) const;
    // Starts before which at least one step was promised.
    int Promised() const { return promised_; }

private:
    struct Step
    {
        State state;
        std::int64_t begun = 0;
        std::optional<std::int64_t> done;
    };

    void Begin(const State& state, bool save);
    void Done();
    bool IsPromised(std::size_t step) const;
    std::string TakeSeen(const State& seen);

    const bool large_;
    std::vector<Step> steps_;  // since the last start, which is the first of them
    std::vector<std::optional<State>> saved_{std::nullopt};  // there is none at first
    std::int64_t now_ = 0;                                   // of the session
    bool saving_ = false;
    bool ended_ = false;  // the last run, in an orderly way
    int promised_ = 0;
};

}  // namespace korvinth::app
