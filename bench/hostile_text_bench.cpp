// The longest time that any text of 10,000 characters in any field of any window keeps the program
// busy at a stretch: while it is pasted, when Enter is pressed, and in the events that follow. The
// yardstick is a field of the toolkit alone that takes the same texts.
//
//   QT_QPA_PLATFORM=offscreen build/release/bench/korvinth_hostile_text_bench [MOST_LINES]
#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "app/main_window.h"
#include "app/program.h"
#include "app/toolkit.h"
#include "files/path_text.h"
#include "tests/ui/scripted_dialogs.h"

namespace {

using namespace korvinth;

constexpr qsizetype kLength = 9'999;
constexpr int kQuietRounds = 40;  // of events, in which slices of a picture may still be drawn

struct Text
{
    const char* name;
    QString text;
};

// As much of the part as there is room for, between a beginning and an end.
QString Filled(const char* begin, const char* part, const char* end = "")
{
    const QString first(begin);
    const QString piece = QString::fromUtf8(part);
    const QString last(end);
    return first + piece.repeated((kLength - first.size() - last.size()) / piece.size()) + last;
}

QString Balanced(const char* open)
{
    const QString piece(open);
    const qsizetype count = (kLength - 10) / (piece.size() + 1);
    return piece.repeated(count) + "x" + QString(count, ')');
}

std::vector<Text> HostileTexts()
{
    return {
        {"brackets", Filled("", "(")},
        {"closed brackets", Balanced("(")},
        {"a sum", Filled("f(x)=", "x+", "1")},
        {"sines of sines", Balanced("sin(")},
        {"sums of sines", Filled("", "sin(x*3.7)*cos(a*x)+", "1")},
        {"derivatives in derivatives", Balanced("f'(")},
        {"two derivatives in turn", Filled("", "f''(g'(x))+", "1")},
        {"powers", Filled("", "x^", "2")},
        {"signs", Filled("", "-", "x")},
        {"comparisons", Filled("", "x<1 und x>a oder ", "x=1")},
        {"minima", Balanced("min(1;")},
        {"a short sum thrice", Filled("f(x)=", "x*x+", "0").left(3'000) + "1"},
        {"integrals", Filled("", "F(x)+", "1")},
        {"bounds", Filled("[", "1;", "]")},
        {"brackets of bounds", Filled("", "[;]")},
        {"digits", Filled("", "1")},
        {"fractions of digits", Filled("0,", "1")},
        {"numbers with blanks", Filled("", "1 ; ")},
        {"a name", Filled("", "a")},
        {"words", Filled("", "und ")},
        {"blanks", Filled("", " ")},
        {"letters", Filled("", "e n i s r a t d h u l c g m o b w f k z p v j y x q ")},
        {"lines", Filled("", "x\n")},
        {"empty lines", Filled("", "\n")},
        {"braces and marks", Filled("", "{\\n}\\end\\ ")},
        {"faces", Filled("", "\U0001F600")},
        {"accents", Filled("a", "\u0301")},
        {"two directions", Filled("", "\u202E\u0645a")},
        {"one long word", Filled("", "W")},
        {"formatting", Filled("", "<b><i>")},
    };
}

struct Busy
{
    double ms = 0;
    std::string what;
};

class Driver
{
public:
    Driver()
    {
        program_.Start({});
        window().resize(1280, 800);
        Rest();
    }

    QWidget& window() { return program_.Window(); }

    void OpenEverything()
    {
        Trigger("mn_add");
        for (const char* entry :
             {"mn_spal", "mn_calc", "mn_inter", "mn_punkt", "mn_asy", "mn_groptions",
              "mn_zoomoptions", "mn_export", "mn_print", "mn_hlpm", "mn_dtl"}) {
            Trigger(entry);
        }
        ResetRows();
    }

    // A plot that uses what is typed: functions, a curve, an integral and parameters.
    void ResetRows()
    {
        const char* const rows[] = {"f(x)=a*x", "g(x)=f(x)+b", "F(x)", "x(t)=t", "y(t)=t*t"};
        int row = 0;
        for (const char* term : rows) {
            if (auto* field = Row(row)) field->setText(term);
            ++row;
        }
        if (auto* field = Row(0)) QTest::keyClick(field, Qt::Key_Return);
        Rest();
    }

    std::vector<QWidget*> Fields()
    {
        std::vector<QWidget*> fields;
        for (QWidget* top : QApplication::topLevelWidgets()) {
            for (auto* field : top->findChildren<QWidget*>()) {
                const bool line = qobject_cast<QLineEdit*>(field) != nullptr;
                const auto* text = qobject_cast<QPlainTextEdit*>(field);
                if (line || (text != nullptr && !text->isReadOnly())) fields.push_back(field);
            }
        }
        return fields;
    }

    void Try(QWidget& field, const Text& text)
    {
        const std::string what = NameOf(field) + ": " + text.name;
        Measure(what + ", pasted", [&] { Paste(field, text.text); });
        Measure(what + ", Enter", [&] { QTest::keyClick(&field, Qt::Key_Return); });
        Rest(&what);
        Measure(what + ", focus leaves", [&] {
            field.clearFocus();
            QApplication::processEvents();
        });
        Undo(field);
    }

    std::vector<Busy> busy;

private:
    static std::string NameOf(const QWidget& field)
    {
        std::string name = field.objectName().toStdString();
        for (const QWidget* at = field.parentWidget(); at != nullptr; at = at->parentWidget()) {
            if (!at->objectName().isEmpty() && !at->objectName().startsWith("qt_")) {
                name = at->objectName().toStdString() + "/" + name;
            }
        }
        return name;
    }
    static void Paste(QWidget& field, const QString& text)
    {
        field.setFocus();
        if (auto* line = qobject_cast<QLineEdit*>(&field)) {
            line->selectAll();
            line->insert(text);
        } else if (auto* lines = qobject_cast<QPlainTextEdit*>(&field)) {
            lines->selectAll();
            lines->insertPlainText(text);
        }
    }
    void Undo(QWidget& field)
    {
        Paste(field, "1");
        QTest::keyClick(&field, Qt::Key_Escape);
        Rest();
    }
    QLineEdit* Row(int row)
    {
        return window().findChild<QLineEdit*>(QStringLiteral("fnam[%1]").arg(row));
    }
    void Trigger(const char* entry)
    {
        if (auto* action = window().findChild<QAction*>(entry)) action->trigger();
        Rest();
    }
    template <class Step>
    void Measure(const std::string& what, Step step)
    {
        QElapsedTimer time;
        time.start();
        step();
        busy.push_back({static_cast<double>(time.nsecsElapsed()) / 1e6, what});
    }
    void Rest(const std::string* what = nullptr)
    {
        for (int i = 0; i < kQuietRounds; ++i) {
            if (what == nullptr) {
                QApplication::processEvents();
            } else {
                Measure(*what + ", events", [] { QApplication::processEvents(); });
            }
        }
    }

    QTemporaryDir folder_;
    ui::ScriptedDialogs dialogs_;
    app::Program program_{files::PathOf(folder_.path().toStdString()), dialogs_};
};

// The longest time that a field of the toolkit takes for any of the texts.
Busy LongestOfToolkit(const std::vector<Text>& texts)
{
    Busy longest;
    QWidget window;
    QLineEdit line(&window);
    line.resize(400, 30);
    window.show();
    for (const Text& text : texts) {
        QElapsedTimer time;
        time.start();
        line.setText(text.text);
        QApplication::processEvents();
        const double ms = static_cast<double>(time.nsecsElapsed()) / 1e6;
        if (ms > longest.ms) longest = {ms, text.name};
    }
    return longest;
}

}  // namespace

int main(int argc, char** argv)
{
    app::PrepareToolkit();
    QApplication toolkit(argc, argv);
    const std::vector<Text> texts = HostileTexts();
    const Busy yardstick = LongestOfToolkit(texts);
    std::printf("a field of the toolkit alone: %.1f ms (%s)\n", yardstick.ms,
                yardstick.what.c_str());

    Driver driver;
    driver.OpenEverything();
    const std::vector<QWidget*> fields = driver.Fields();
    for (QWidget* field : fields) {
        for (const Text& text : texts) driver.Try(*field, text);
        driver.ResetRows();
    }
    std::ranges::sort(driver.busy, [](const Busy& a, const Busy& b) { return a.ms > b.ms; });
    constexpr std::size_t kLines = 25;
    const std::size_t most = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : kLines;
    std::printf("%zu fields, %zu texts, %zu stretches of work\n", fields.size(), texts.size(),
                driver.busy.size());
    for (std::size_t i = 0; i < std::min(most, driver.busy.size()); ++i) {
        const Busy& busy = driver.busy[i];
        std::printf("%8.1f ms %6.2f  %s\n", busy.ms, busy.ms / yardstick.ms, busy.what.c_str());
    }
}
