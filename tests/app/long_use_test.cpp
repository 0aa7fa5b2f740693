// What a program that stays open for weeks may not do: grow. As many ticks of an animation and as
// many applied plots as the two arguments say; without them as many as a school year may bring:
//
//   QT_QPA_PLATFORM=offscreen build/release/tests/app/long_use_test [TICKS PLOTS]

#include <gtest/gtest.h>
#include <malloc.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "app/application.h"
#include "app/main_window.h"
#include "app/picture_file.h"
#include "tests/ui/scripted_dialogs.h"

namespace korvinth::app {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool kKeepsFreedMemory = true;  // the sanitizer does, to find late uses of it
#else
constexpr bool kKeepsFreedMemory = false;
#endif

constexpr int kFirstRounds = 1000;      // until every cache is filled
constexpr double kMegabytesMore = 2;    // afterwards, at most
constexpr int kRoundsToAPicture = 50;   // that is written as a file
constexpr int kRoundsToALine = 10'000;  // that tells how far it is

int ticks = 1'000'000;
int plots = 100'000;

// What the process holds.
struct Held
{
    double resident = 0;   // megabytes
    double allocated = 0;  // megabytes that were asked for and not given back
    int files = 0;
    int programs = 0;  // of compiled terms
    int objects = 0;   // windows, controls, timers
    int timers = 0;    // that run
};

double ResidentMegabytes()
{
    QFile status("/proc/self/status");
    if (!status.open(QIODevice::ReadOnly)) return 0;
    const QByteArray text = status.readAll();
    const qsizetype place = text.indexOf("VmRSS:") + 6;
    return text.mid(place, 20).trimmed().split(' ').front().toDouble() / 1024;
}

class LongUse : public testing::Test
{
protected:
    void SetUp() override
    {
        window_.resize(420, 300);
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));
    }

    Held Measure()
    {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const struct mallinfo2 heap = mallinfo2();
        const auto objects = window_.findChildren<QObject*>();
        int running = 0;
        for (const auto* timer : window_.findChildren<QTimer*>()) running += timer->isActive();
        return {ResidentMegabytes(),
                double(heap.uordblks + heap.hblkhd) / (1 << 20),
                static_cast<int>(QDir("/proc/self/fd").count()),
                static_cast<int>(application_.Parser().LivePrograms()),
                static_cast<int>(objects.size()),
                running};
    }

    // Runs the rounds and compares what is held after the first ones and after all.
    template <class Round>
    void KeepsWhatItHoldsDuring(const char* what, int rounds, Round round)
    {
        ASSERT_GT(rounds, kFirstRounds);
        for (int i = 0; i < kFirstRounds; ++i) round(i);
        const Held before = Measure();
        for (int i = kFirstRounds; i < rounds; ++i) {
            round(i);
            if (i % kRoundsToALine == 0) std::printf("%d: %.1f MB\n", i, ResidentMegabytes());
        }
        const Held after = Measure();
        std::printf("%d %s: %.1f MB, then %.1f MB resident; %.2f MB, then %.2f MB allocated\n",
                    rounds, what, before.resident, after.resident, before.allocated,
                    after.allocated);
        EXPECT_LE(after.files, before.files);  // threads that have waited in vain close theirs
        EXPECT_EQ(after.programs, before.programs);
        EXPECT_EQ(after.objects, before.objects);
        EXPECT_EQ(after.timers, before.timers);
        EXPECT_GT(before.resident, 0);
        if (!kKeepsFreedMemory) {
            EXPECT_LE(after.resident, before.resident + kMegabytesMore);
        }
    }

    void Apply(const std::vector<const char*>& rows, int number)
    {
        for (int row = 0; row < 4; ++row) {
            const bool used = row < static_cast<int>(rows.size());
            auto* field = window_.findChild<QLineEdit*>(QStringLiteral("fnam[%1]").arg(row));
            field->setText(used ? QString(rows[row]).replace("#", QString::number(number)) : "");
        }
        window_.PlotSession().ApplyRows();
    }
    void Redraw() { picture_->repaint(); }

    Application application_;
    ui::ScriptedDialogs dialogs_;
    MainWindow window_{application_, dialogs_};
    QWidget* picture_ = window_.findChild<QWidget*>("Picture1");
};

TEST_F(LongUse, AnimationsKeepWhatTheyHold)
{
    Apply({"f(x)=a*sin(x)+#", "x(t)=a*cos(t)", "y(t)=sin(3*t+a)"}, 1);
    document::Parameter* a = application_.Document().FindParameter("a");
    ASSERT_NE(a, nullptr);
    a->step = 0.01;
    AnimationControl& animation = window_.PlotSession().Animation();
    animation.StartOrStopAll();
    animation.SetInterval(kLongestTickInterval);  // the ticks come from here
    int moved = 0;
    KeepsWhatItHoldsDuring("ticks", ticks, [&](int round) {
        const double value = a->value;
        animation.Tick();
        moved += a->value != value;
        Redraw();
        if (round % kRoundsToAPicture == 0) QApplication::processEvents();
    });
    EXPECT_TRUE(animation.Active());
    EXPECT_GT(moved, ticks * 0.9);
    EXPECT_FALSE(window_.Graph().Unfinished());
}

TEST_F(LongUse, AppliedPlotsKeepWhatTheyHold)
{
    const std::vector<std::vector<const char*>> kPlots = {
        {"f(x)=a*sin(x)+#/1000", "g(x)=f'(x)", "F(x)"},
        {"x(t)=#*cos(t)", "y(t)=b*sin(2*t)"},
        {"fill*f(x)=x^2-#", "h(x)=f(x)+c*x"},
        {"f(x)=k*x+#", "g(x)=", "h(x)=(x", "u#(x)=x"},
        {"f#(x)=iif(x>#,ln(x),tan(x))", "1/x", "wurzel(x)"},
    };
    const QTemporaryDir folder;
    const std::string picture = folder.filePath("bild").toStdString();
    KeepsWhatItHoldsDuring("plots", plots - plots % 5, [&](int round) {
        Apply(kPlots[round % kPlots.size()], round);
        Redraw();
        if (round % kRoundsToAPicture != 0) return;
        QApplication::processEvents();
        for (const char* ending : {".png", ".svg", ".pdf", ".emf"}) {
            EXPECT_EQ(WritePicture(application_, picture + ending, {}).fault, "");
        }
    });
}

}  // namespace
}  // namespace korvinth::app

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (argc == 3) {
        korvinth::app::ticks = std::atoi(argv[1]);
        korvinth::app::plots = std::atoi(argv[2]);
    }
    const QApplication toolkit(argc, argv);
    return RUN_ALL_TESTS();
}
