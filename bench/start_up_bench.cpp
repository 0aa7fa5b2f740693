// How long the program takes until its window is drawn, and how much memory it then has, beside
// windows of the toolkit that hold nothing or next to nothing; and what drawing a picture from the
// command line costs, beside writing an empty one. The contenders take turns, medians are compared.
// Needs a screen of its own, larger than the windows and without a window manager:
//
//   dbus-run-session xvfb-run -s "-screen 0 1400x900x24"
//       build/release/bench/korvinth_start_up_bench [PROGRAM]
//
// A window counts as drawn when the pixel in the middle of the screen, which a covering window has
// painted before, changes. Processor times are of all threads up to then; on a busy machine their
// ratio says more than that of the times.

#include <sys/resource.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QThread>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include "document/collection_file.h"
#include "document/plot_entry.h"

namespace {

using namespace korvinth;

constexpr int kRounds = 15;
constexpr qint64 kPatience = 60'000;  // ms
constexpr qint64 kQuiet = 300;        // ms without work of a process that has come to rest
constexpr qint64 kWritten = 3'000;    // ms until the working collection is on the disk

[[noreturn]] void Stop(const char* fault)
{
    std::fprintf(stderr, "%s\n", fault);
    std::exit(1);
}

void WaitFor(const std::function<bool()>& condition, const char* fault)
{
    QElapsedTimer waiting;
    waiting.start();
    while (!condition()) {
        if (waiting.elapsed() > kPatience) Stop(fault);
        QThread::usleep(2000);  // asking more often would slow down what is measured
        QApplication::processEvents();
    }
}

QByteArray SystemText(qint64 process, const QString& name)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(process).arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Milliseconds of all threads that live.
double ProcessorTime(qint64 process)
{
    double nanoseconds = 0;
    const QDir tasks(QStringLiteral("/proc/%1/task").arg(process));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QByteArray times = SystemText(process, "task/" + task + "/schedstat");
        nanoseconds += times.left(times.indexOf(' ')).toDouble();
    }
    return nanoseconds / 1e6;
}

// Megabytes: the number behind a name such as "Pss:".
double Memory(qint64 process, const QByteArray& name)
{
    const QByteArray text = SystemText(process, "smaps_rollup");
    const qsizetype place = text.indexOf("\n" + name);
    if (place < 0) Stop("The memory of a process cannot be read.");
    constexpr double kKilobytes = 1024;
    return text.mid(place + 1 + name.size(), 20).trimmed().split(' ').front().toDouble() /
           kKilobytes;
}

double Median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

struct Measured
{
    std::vector<double> time;       // ms
    std::vector<double> processor;  // ms
    std::vector<double> resident;   // MB
    std::vector<double> share;      // MB, a page of several processes divided among them
};

// Covers the screen, so that the first pixels of another window are noticed.
class Cover
{
public:
    Cover()
    {
        QPalette palette;
        palette.setColor(QPalette::Window, Qt::magenta);
        widget_.setPalette(palette);
        widget_.setGeometry(QApplication::primaryScreen()->geometry());
        widget_.show();
    }
    bool Seen() const
    {
        QScreen* screen = QApplication::primaryScreen();
        const QPoint middle = screen->geometry().center();
        const QImage pixel = screen->grabWindow(0, middle.x(), middle.y(), 1, 1).toImage();
        return pixel.pixel(0, 0) == QColor(Qt::magenta).rgb();
    }

private:
    QWidget widget_;
};

void WaitForRest(qint64 process)
{
    double before = -1;
    QElapsedTimer quiet;
    quiet.start();
    WaitFor(
        [&] {
            const double now = ProcessorTime(process);
            if (now != before) quiet.restart();
            before = now;
            return quiet.elapsed() >= kQuiet;
        },
        "A program does not come to rest.");
}

void StartWindow(const QString& program, const QStringList& arguments, const Cover& cover,
                 Measured& measured)
{
    WaitFor([&] { return cover.Seen(); }, "The screen is not covered.");
    QProcess process;
    QElapsedTimer time;
    time.start();
    process.start(program, arguments);
    if (!process.waitForStarted()) Stop("A program does not start.");
    WaitFor([&] { return !cover.Seen(); }, "A program draws no window.");
    measured.time.push_back(static_cast<double>(time.nsecsElapsed()) / 1e6);
    measured.processor.push_back(ProcessorTime(process.processId()));
    WaitForRest(process.processId());
    measured.resident.push_back(Memory(process.processId(), "Rss:"));
    measured.share.push_back(Memory(process.processId(), "Pss:"));
    process.kill();
    process.waitForFinished();
}

// What an earlier start has left: a plot in the working collection.
void FillHome(const QString& program)
{
    QProcess process;
    process.start(program, {"--zeichne", "f(x)=a*sin(b*x)", "--zeichne", "g(x)=x^2/4-2",
                            "--parameter", "a=2", "--parameter", "b=1"});
    if (!process.waitForStarted()) Stop("The program does not start.");
    QThread::msleep(kWritten);
    WaitForRest(process.processId());
    process.kill();
    process.waitForFinished();
}

// Ten functions with 2000 samples each.
void WriteTenFunctions(const QString& file)
{
    document::PlotDocument plot;
    plot.attributes.constant_sample_count = true;
    plot.attributes.sample_count = 2000;
    document::CollectionEntry entry = document::EntryOfPlot(plot, {});
    entry.Set(document::Column::Functions,
              "f(x)=a*sin(x)\r\ng(x)=1/x\r\nh(x)=tan(x)\r\ni(x)=sqrt(x)\r\nj(x)=x^2\r\n"
              "k(x)=exp(x)\r\nl(x)=3*sin(5*x)\r\nm(x)=exp(-x^2/2)*cos(5*x)\r\nn(x)=0.5*x-2\r\n"
              "o(x)=abs(x)-3");
    entry.Set(document::Column::Parameters, "a=2");
    document::Collection collection;
    collection.buffer = entry;
    collection.entries.push_back(entry);
    const std::string bytes = document::WriteCollection(collection);
    QFile collection_file(file);
    const bool written =
        collection_file.open(QIODevice::WriteOnly) &&
        collection_file.write(bytes.data(), qint64(bytes.size())) == qint64(bytes.size());
    if (!written) Stop("The collection cannot be written.");
}

double ProcessorTimeOfChildren()
{
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

void RunToEnd(const QString& program, const QStringList& arguments, Measured& measured)
{
    const double before = ProcessorTimeOfChildren();
    QElapsedTimer time;
    time.start();
    if (QProcess::execute(program, arguments) != 0) Stop("A program draws no picture.");
    measured.time.push_back(static_cast<double>(time.nsecsElapsed()) / 1e6);
    measured.processor.push_back(ProcessorTimeOfChildren() - before);
}

void Report(const char* what, const char* unit, const std::vector<double>& own,
            const std::vector<double>& yardstick)
{
    const double mine = Median(own);
    const double other = Median(yardstick);
    std::printf("%-28s %8.1f %s %8.1f %s %6.2f\n", what, mine, unit, other, unit, mine / other);
}

void ReportWindows(const std::string& beside, const Measured& own, const Measured& yardstick)
{
    std::printf("\nWindow, beside %s\n", beside.c_str());
    Report("time until it is drawn", "ms", own.time, yardstick.time);
    Report("processor time until then", "ms", own.processor, yardstick.processor);
    Report("resident memory", "MB", own.resident, yardstick.resident);
    Report("its share of that", "MB", own.share, yardstick.share);
}

void CompareWindows(const QString& program)
{
    const Cover cover;
    FillHome(program);
    Measured own;
    Measured empty;
    Measured text;
    for (int round = 0; round < kRounds; ++round) {
        StartWindow(KORVINTH_EMPTY_WINDOW, {}, cover, empty);
        StartWindow(KORVINTH_EMPTY_WINDOW, {"text"}, cover, text);
        StartWindow(program, {}, cover, own);
    }
    ReportWindows("an empty one", own, empty);
    ReportWindows("one with a menu and a line of text", own, text);
}

void ComparePictures(const QString& program, const QDir& folder)
{
    const QString collection = folder.filePath("ten.txt");
    const QString picture = folder.filePath("picture.png");
    WriteTenFunctions(collection);
    const QStringList arguments = {"--sammlung", collection,  "--eintrag", "1",
                                   "--groesse",  "1920x1080", "--ausgabe", picture};
    Measured own;
    Measured empty;
    for (int round = 0; round < kRounds; ++round) {
        RunToEnd(KORVINTH_EMPTY_PICTURE, {picture}, empty);
        RunToEnd(program, arguments, own);
    }
    std::printf("\nPicture of ten functions, beside an empty one\n");
    Report("time", "ms", own.time, empty.time);
    Report("processor time", "ms", own.processor, empty.processor);
}

}  // namespace

int main(int argc, char** argv)
{
    const QApplication toolkit(argc, argv);
    const QString program = argc > 1 ? QFile::decodeName(argv[1]) : QString(KORVINTH_PROGRAM);
    const QTemporaryDir home;
    if (!home.isValid()) Stop("There is no temporary folder.");
    qputenv("KORVINTH_HOME", QFile::encodeName(home.path()));
    std::printf("%-28s %11s %11s %6s\n", "", "program", "yardstick", "ratio");
    CompareWindows(program);
    ComparePictures(program, QDir(home.path()));
    return 0;
}
