// The program with its files: what survives its end, however it ends.
#include "app/program.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QUrl>
#include <filesystem>
#include <functional>
#include <memory>

#include "window_fixture.h"

namespace korvinth::app {
namespace {

using Texts = std::vector<std::string>;

class ProgramTest : public WindowWithFiles
{
protected:
    static constexpr document::ParameterIndex kA{26};
    static constexpr const char* kAskToSave =
        "Achtung!|Die Sammlung ist geändert worden. Soll sie gespeichert werden?";

    void Start(const CommandLine& command = {})
    {
        program_.reset();
        program_ = std::make_unique<Program>(Directory(), dialogs_);
        program_->Start(command);
        QApplication::processEvents();
    }
    // What a crash leaves behind: nothing is closed.
    void Kill() { program_.reset(); }
    void Close()
    {
        Window().close();
        program_.reset();
    }

    bool Exists(const char* name) const { return std::filesystem::exists(Directory() / name); }
    // Waits for what is written within two seconds.
    bool WaitFor(const std::function<bool()>& condition)
    {
        return QTest::qWaitFor(condition, 10'000);
    }
    bool WaitForWorking(std::string_view text)
    {
        return WaitFor(
            [this, text] { return Content("korvinth.tmp").find(text) != std::string::npos; });
    }

    MainWindow& Window() override { return program_->Window(); }
    QString Shown(int row) { return Row(row)->text(); }
    std::size_t Entries() { return Window().Entries().Entries().entries.size(); }
    QString Caption() { return Find<QWidget>("sammlung")->windowTitle(); }

    std::unique_ptr<Program> program_;
};

TEST_F(ProgramTest, EntriesCopiedBeforeTheStartCanBeInserted)
{
    Start();
    Trigger("mn_add");
    Trigger("mn_copy");
    Kill();
    Start();
    Trigger("mn_insert");
    EXPECT_EQ(Entries(), 1U);
}

TEST_F(ProgramTest, ACrashLosesNeitherPlotNorEntries)
{
    Start();
    EXPECT_EQ(Content("korvinth.tmp"), "[Korvinth]\r\n\r\n[Funktionenplotter]\r\n");
    Type(0, "f(x)=a*x^2");
    Type(1, "g(x)=(x");  // a faulty row as well
    Trigger("mn_add");
    Type(2, "h(x)=7");
    Window().PlotSession().Parameters().setpar(kA, 4.5);
    dialogs_.number = 777;
    Window().PlotSession().AskSampleCount(document::SlotIndex{0});
    ASSERT_TRUE(WaitForWorking("a=4.5"));
    ASSERT_TRUE(WaitForWorking("Sf[0;0;777]"));
    ASSERT_TRUE(WaitForWorking("h(x)=7"));
    Kill();

    Start();
    EXPECT_EQ(Shown(0), "f(x) = a*x^2");
    EXPECT_EQ(Shown(1), "g(x) = (x");
    EXPECT_EQ(Shown(2), "h(x) = 7");
    EXPECT_EQ(Window().PlotSession().Document().parameters[kA].value, 4.5);
    EXPECT_EQ(Window().PlotSession().SampleCount(document::SlotIndex{0}), 776);
    EXPECT_EQ(Entries(), 1U);
    EXPECT_TRUE(Caption().startsWith("Sammlung: (noch ohne Bezeichnung)"));
    EXPECT_FALSE(Enabled("mn_undo"));
    Close();
    EXPECT_EQ(dialogs_.questions, Texts{kAskToSave}) << "nothing was saved before the crash";
    EXPECT_EQ(dialogs_.errors, Texts());
}

TEST_F(ProgramTest, WhatAStoppedWritingLeftBesideTheWorkingCollectionGoes)
{
    const char* const kKept[] = {"korvinth.tmp.neu", "korvinth.tmp.neu3.txt",
                                 "korvinth.tmp.defekt2", "korvinth-2.tmp.neu4"};
    for (const char* const name : kKept) Put(name, "x");
    Put("korvinth.tmp.neu4711", "half of i");
    Start();
    EXPECT_FALSE(Exists("korvinth.tmp.neu4711"));
    for (const char* const name : kKept) EXPECT_TRUE(Exists(name)) << name;
}

TEST_F(ProgramTest, ClosingAsksOnlyForChangesAndNoSavesNothing)
{
    Start();
    Type(0, "x");
    Close();
    EXPECT_EQ(dialogs_.questions, Texts());
    Start();
    EXPECT_EQ(Shown(0), "f(x) = x");
    Trigger("mn_add");
    Close();
    EXPECT_EQ(dialogs_.questions, Texts{kAskToSave});
    EXPECT_EQ(dialogs_.file_dialogs, Texts());
    Start();
    EXPECT_EQ(Entries(), 1U) << "the working collection has it all the same";
}

TEST_F(ProgramTest, SavesOpensAndAppends)
{
    Start();
    Type(0, "x^3");
    Trigger("mn_add");
    dialogs_.files = {File("a.txt")};
    Trigger("mn_save");
    EXPECT_EQ(dialogs_.file_dialogs, Texts{"Sammlungsdatei speichern"});
    EXPECT_NE(Content("a.txt").find("f(x)=x^3"), std::string::npos);
    EXPECT_FALSE(Exists("a.txt.tmp"));
    EXPECT_EQ(Caption(), "Sammlung: a.txt");

    Trigger("mn_newentry");
    Trigger("mn_save");
    EXPECT_EQ(dialogs_.file_dialogs.size(), 1U) << "it has a name";

    dialogs_.files = {File("a.txt"), File("b.txt")};  // "No, do not overwrite": asked again
    Trigger("mn_saveas");
    EXPECT_EQ(dialogs_.questions,
              Texts{"Meldung:|Diese Datei gibt es bereits. Soll sie überschrieben werden?|Nein"});
    EXPECT_EQ(Content("b.txt"), Content("a.txt"));
    EXPECT_EQ(Caption(), "Sammlung: b.txt");

    Put("b.txt", "von einem anderen Programm");
    dialogs_.questions.clear();
    dialogs_.files = {File("c.txt")};  // "No, do not overwrite": under another name
    Trigger("mn_save");
    EXPECT_EQ(dialogs_.questions,
              Texts{"Meldung:|Diese Datei ist inzwischen von einem anderen Programm geändert "
                    "worden. Soll sie überschrieben werden?|Nein"});
    EXPECT_EQ(Content("b.txt"), "von einem anderen Programm");
    EXPECT_EQ(Content("c.txt"), Content("a.txt"));

    Type(0, "f(x)=-x");
    dialogs_.files = {File("none.txt"), File("a.txt")};  // the dialog comes again for a missing one
    Trigger("mn_mrg");
    EXPECT_EQ(Entries(), 4U);
    EXPECT_EQ(Shown(0), "f(x) = -x") << "appending leaves the plot alone";

    dialogs_.questions.clear();
    dialogs_.files = {File("a.txt")};
    Trigger("mn_open");
    EXPECT_EQ(dialogs_.questions, Texts{kAskToSave});
    EXPECT_EQ(Entries(), 2U);
    EXPECT_EQ(Shown(0), "f(x) = x^3") << "the plot that was saved with the entries";
    Trigger("mn_undo");
    EXPECT_EQ(Shown(0), "f(x) = -x");
}

TEST_F(ProgramTest, WhatCouldNotBeSavedAtTheEndIsOfferedAgain)
{
    Start();
    Trigger("mn_add");
    dialogs_.files = {File("a.txt")};
    Trigger("mn_save");
    std::filesystem::remove(Directory() / "a.txt");
    std::filesystem::create_directory(Directory() / "a.txt");  // nothing can be saved there now
    Trigger("mn_add");
    dialogs_.yes = true;
    dialogs_.files = {File("none/b.txt"), File("b.txt")};
    Close();
    EXPECT_EQ(dialogs_.questions, Texts(3, kAskToSave));
    EXPECT_EQ(dialogs_.exclamations.size(), 2U);
    EXPECT_NE(Content("b.txt").find("Eintrag 2"), std::string::npos);
}

TEST_F(ProgramTest, TheExamplesOpenWithoutAName)
{
    Start();
    Trigger("mn_examples");
    EXPECT_GE(Entries(), 40U);
    EXPECT_NE(Shown(0), "");
    EXPECT_TRUE(Caption().startsWith("Sammlung: (noch ohne Bezeichnung)"));
    Close();
    EXPECT_EQ(dialogs_.questions, Texts()) << "nothing of the user's is in it";
}

TEST_F(ProgramTest, AMissingFileIsCreatedOnRequestOrNamed)
{
    Start();
    Trigger("mn_newentry");
    dialogs_.yes = false;
    dialogs_.files = {File("new.txt")};
    Trigger("mn_open");
    EXPECT_FALSE(Exists("new.txt"));
    EXPECT_EQ(Entries(), 1U) << "the entries stay";
    EXPECT_TRUE(Caption().startsWith("Sammlung: new.txt"));
    dialogs_.yes = true;
    dialogs_.files = {File("other.txt")};
    Trigger("mn_open");
    EXPECT_TRUE(Exists("new.txt")) << "the changed entries were saved before";
    EXPECT_TRUE(Exists("other.txt"));
    EXPECT_EQ(Entries(), 0U);
    EXPECT_EQ(dialogs_.exclamations, Texts());
}

TEST_F(ProgramTest, OpensTheFileOfTheCommandLine)
{
    Put("a.txt", "[Funktionenplotter]\r\n{short:__tmp__\r\nf(x)=x^5}\r\n{short:one}");
    CommandLine command;
    command.collection = File("a.txt");
    Start(command);
    EXPECT_EQ(Entries(), 1U);
    EXPECT_EQ(Shown(0), "f(x) = x^5");
    EXPECT_EQ(Caption(), "Sammlung: a.txt");
}

TEST_F(ProgramTest, OpensAFileThatIsDroppedOnTheWindow)
{
    Put("a.txt", "[Funktionenplotter]\r\n{short:one\r\nf(x)=x}");
    Start();
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(File("a.txt")))});
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window(), &drop);
    EXPECT_TRUE(WaitFor([this] { return Entries() == 1; }));
    EXPECT_EQ(Shown(0), "") << "no plot beside the entries: the present one stays";
}

TEST_F(ProgramTest, ADamagedWorkingCollectionIsSetAside)
{
    const std::string damaged = "\xFF\xD8\xFF\xE0 no collection";
    for (const char* const name : {"korvinth.tmp.defekt", "korvinth.tmp.defekt2"}) {
        Put("korvinth.tmp", damaged);
        Start();
        EXPECT_EQ(dialogs_.errors.size(), 1U);
        dialogs_.errors.clear();
        EXPECT_EQ(Content(name), damaged);
        Type(0, "x");
        EXPECT_TRUE(WaitForWorking("f(x)=x"));
        Kill();
    }
}

TEST_F(ProgramTest, AWorkingCollectionThatCannotBeReadIsSetAside)
{
    std::filesystem::create_directory(Directory() / "korvinth.tmp");
    Start();
    EXPECT_EQ(dialogs_.errors.size(), 1U);
    EXPECT_TRUE(std::filesystem::is_directory(Directory() / "korvinth.tmp.defekt"));
    Type(0, "x");
    EXPECT_TRUE(WaitForWorking("f(x)=x"));
}

TEST_F(ProgramTest, ADamagedFileSurvivesBeingSavedOver)
{
    const std::string damaged = "[Funktionenplotter]\r\n{short:one\r\nlong:\\end\\}\r\n{short:two";
    Put("a.txt", damaged);
    Start();
    dialogs_.files = {File("a.txt")};
    Trigger("mn_open");
    EXPECT_EQ(dialogs_.errors, Texts{"Fehler|Die Sammlungsdatei bricht unerwartet ab!"});
    EXPECT_EQ(Entries(), 2U) << "all that could be read";
    Trigger("mn_save");
    EXPECT_NE(Content("a.txt"), damaged);
    EXPECT_EQ(Content("a.txt.defekt"), damaged);
}

TEST_F(ProgramTest, TwoProgramsKeepApart)
{
    Start();
    Type(0, "x");
    ASSERT_TRUE(WaitForWorking("f(x)=x"));
    Trigger("mn_viewnumb");
    Trigger("mn_saveopt");
    {
        Program second(Directory(), dialogs_);
        second.Start({});
        EXPECT_FALSE(second.Window().findChild<QAction*>("mn_viewnumb")->isChecked())
            << "the settings are those of all programs";
        auto* row = second.Window().findChild<QLineEdit*>("fnam[0]");
        EXPECT_EQ(row->text(), "");
        QTest::keyClicks(row, "x^7");
        QTest::keyClick(row, Qt::Key_Return);
        EXPECT_TRUE(WaitFor(
            [this] { return Content("korvinth-2.tmp").find("f(x)=x^7") != std::string::npos; }));
    }
    EXPECT_EQ(Content("korvinth.tmp").find("x^7"), std::string::npos);
    EXPECT_EQ(dialogs_.exclamations, Texts());
}

TEST_F(ProgramTest, SettingsComeBackAndDefaultsAreWrittenAtOnce)
{
    Start();
    Trigger("mn_viewnumb");
    Close();
    Start();
    EXPECT_FALSE(Checked("mn_viewnumb"));
    Window().PlotSession().TakeZoomFactors({3, 5});
    EXPECT_EQ(Window().PlotSession().View().Factors().y, 5);
    Kill();
    Start();
    EXPECT_EQ(Window().PlotSession().View().Factors().y, 5);
    const std::string before = Content("Korvinth.ini");
    Trigger("mn_optdef");
    EXPECT_NE(Content("Korvinth.ini"), before);
}

TEST_F(ProgramTest, TheCalculatorsPlacesAreWrittenAtOnce)
{
    Start();
    Trigger("mn_calc");
    const auto field = [this] { return Find<QWidget>("minicalc")->findChild<QLineEdit*>("Text2"); };
    field()->setText("7");
    QTest::keyClick(field(), Qt::Key_Return);
    Kill();
    Start();
    Trigger("mn_calc");
    EXPECT_EQ(field()->text(), "7");
}

TEST_F(ProgramTest, WorksWithoutAFolderForItsFiles)
{
    Put("file", "");
    Program program(Directory() / "file" / "below", dialogs_);
    program.Start({});
    auto* row = program.Window().findChild<QLineEdit*>("fnam[0]");
    QTest::keyClicks(row, "x^2");
    QTest::keyClick(row, Qt::Key_Return);
    EXPECT_TRUE(WaitFor([this] { return dialogs_.exclamations.size() == 2; }));
    EXPECT_EQ(row->text(), "f(x) = x^2");
    program.Window().close();
    EXPECT_EQ(Content("file"), "");
}

TEST_F(ProgramTest, TheCommandLineDrawsAndUndoBringsThePlotOfBeforeBack)
{
    Start();
    Type(0, "x^2");
    Close();
    CommandLine command;
    command.rows = {"sin(x)"};
    Start(command);
    EXPECT_EQ(Shown(0), "f(x) = sin(x)");
    Trigger("mn_undo");
    EXPECT_EQ(Shown(0), "f(x) = x^2");
}

}  // namespace
}  // namespace korvinth::app
