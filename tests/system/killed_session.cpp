#include "tests/system/killed_session.h"

#include <iostream>
#include <random>
#include <string>

#include "tests/system/driven_program.h"
#include "tests/system/session_state.h"

namespace korvinth::app {
namespace {

namespace fs = std::filesystem;

constexpr document::ParameterIndex kA{26};
constexpr std::size_t kMostEntries = 40;

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
        program_.Dialogs().files = {files::Utf8(home_ / kSavedCollection)};
        program_.Trigger("mn_saveas");
    }

    // Without saving what was changed.
    void Open()
    {
        const std::optional<State> saved = StateIn(home_ / kSavedCollection);
        if (!saved) return;
        model_ = *saved;
        Begin("begin");
        program_.Dialogs().yes = false;
        program_.Dialogs().files = {files::Utf8(home_ / kSavedCollection)};
        program_.Trigger("mn_open");
    }

    void WriteOtherFiles()
    {
        Begin("begin");
        program_.Trigger("mn_viewnumb");
        program_.Trigger("mn_saveopt");
        program_.Trigger("mn_emf");
        program_.Dialogs().yes = true;
        program_.Export(files::Utf8(home_ / kExportedPicture));
    }

    const fs::path home_;
    std::mt19937 random_;
    DrivenProgram program_;
    State model_;
};

}  // namespace

bool RunSession(const fs::path& home, unsigned seed) { return KilledSession(home, seed).Run(); }

}  // namespace korvinth::app
