// Whatever the program writes, on a disk that fails or is gone at any of its operations.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QLineEdit>
#include <QMimeData>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>
#include <QWidget>
#include <functional>
#include <string>
#include <string_view>

#include "app/clipboard.h"
#include "app/main_window.h"
#include "app/picture_file.h"
#include "app/plot_request.h"
#include "app/print_preview.h"
#include "app/program.h"
#include "app/working_collection.h"
#include "document/collection_file.h"
#include "document/save_collection.h"
#include "files/path_text.h"
#include "tests/files/failing_disk.h"
#include "tests/ui/scripted_dialogs.h"

namespace korvinth::app {
namespace {

using files::FailingDisk;
using Trouble = FailingDisk::Trouble;

struct Kind
{
    std::string_view behaviour, file, before;
    // The fault that is told; for the clipboard, which tells none, whether it is empty.
    std::function<std::string(FailingDisk&)> write;
};

// Two files of the same plot differ in the second of their making only.
std::string WithoutDate(std::string bytes)
{
    const std::size_t date = bytes.find("/CreationDate (");
    if (date != std::string::npos) bytes.erase(date, bytes.find(')', date) - date);
    return bytes;
}

class WriteFaultsTest : public testing::Test
{
protected:
    WriteFaultsTest()
    {
        CommandLine command;
        command.rows = {"f(x)=sin(x)"};
        EXPECT_EQ(ApplyRequest(application_, command).errors, "");
        application_.SetAreaSize(40, 30);
    }

    std::string Export(FailingDisk& disk, const char* file)
    {
        return WritePicture(application_, file, {}, disk).fault;
    }
    // What the preview's own button does once a name is chosen.
    std::string Print(FailingDisk& disk)
    {
        ui::ScriptedDialogs dialogs;
        QWidget window;
        const PrintPreview preview(application_, dialogs, {}, disk, &window);
        auto* dialog = window.findChild<QPrintPreviewDialog*>("print");
        dialog->printer()->setOutputFileName("druck.pdf");
        dialog->findChild<QPrintPreviewWidget*>()->print();
        return dialogs.exclamations.empty() ? "" : dialogs.exclamations.back();
    }
    std::string CopyAsMetafile(FailingDisk& disk)
    {
        CopyMetafile(application_, {}, QImage(4, 4, QImage::Format_RGB32), "k.emf", disk);
        const QMimeData* const formats = QGuiApplication::clipboard()->mimeData();
        return formats == nullptr || formats->formats().isEmpty() ? "empty" : "";
    }
    static std::string WriteSettings(FailingDisk& disk)
    {
        document::DisplayAttributes attributes;
        attributes.font_points = 20;
        return Text(document::SettingsFile(disk, "home").WriteSettings(attributes));
    }
    static std::string WriteWorkingCollection(FailingDisk& disk)
    {
        const auto content = [] {
            return WorkingContent{3, [] { return document::WriteCollection({}, "the rows"); }};
        };
        return Text(WorkingCollection(disk, "k.tmp", content, [] { return false; }).Flush());
    }
    static std::string Text(std::error_code fault) { return fault ? files::ErrorText(fault) : ""; }

    // The collection that is saved has a test of its own, since its old content may stand
    // elsewhere.
    const Kind kinds_[9] = {
        {"an image", "a.png", "old", [this](auto& disk) { return Export(disk, "a.png"); }},
        {"a vector graphic", "a.svg", "old", [this](auto& disk) { return Export(disk, "a.svg"); }},
        {"a page", "a.pdf", "old", [this](auto& disk) { return Export(disk, "a.pdf"); }},
        {"a metafile", "a.emf", "old", [this](auto& disk) { return Export(disk, "a.emf"); }},
        {"a print into a file", "druck.pdf", "old", [this](auto& disk) { return Print(disk); }},
        {"the clipboard's file", "k.emf", "old",
         [this](auto& disk) { return CopyAsMetafile(disk); }},
        {"the settings", "home/Korvinth.ini", "[Korvinth]\nLArt=3:\n", WriteSettings},
        {"the working collection", "k.tmp", "old", WriteWorkingCollection},
        {"a new collection", "a.txt", "old",
         [](auto& disk) { return document::CreateEmptyCollection(disk, "a.txt"); }},
    };

    Application application_;
};

// With no content before, the old state is that there is no file.
void ExpectOldOrNew(const Kind& kind, std::string_view before)
{
    FailingDisk calm{{kind.file, before}};
    ASSERT_EQ(kind.write(calm), "");
    const std::string after = WithoutDate(calm.Bytes(kind.file));
    ASSERT_NE(after, before);
    ASSERT_GE(calm.Operations(), 5);
    for (const Trouble trouble : {Trouble::Once, Trouble::Gone}) {
        for (int operation = 1; operation <= calm.Operations(); ++operation) {
            SCOPED_TRACE(testing::Message() << "operation " << operation);
            FailingDisk disk{{kind.file, before}};
            disk.At(operation, trouble);
            const std::string told = kind.write(disk);
            disk.PowerCut();
            const bool is_new = WithoutDate(disk.Bytes(kind.file)) == after;
            EXPECT_TRUE(is_new || disk.Bytes(kind.file) == before);
            EXPECT_EQ(disk.Has(kind.file), is_new || !before.empty());
            EXPECT_NE(told, "");
            EXPECT_TRUE(trouble == Trouble::Gone || disk.Count() <= 1) << "left beside it";
        }
    }
}

TEST_F(WriteFaultsTest, TheOldOrTheNewContentIsThereWhateverFailsOrStopsAtAnyOperation)
{
    for (const Kind& kind : kinds_) {
        SCOPED_TRACE(kind.behaviour);
        for (const std::string_view before : {kind.before, std::string_view()}) {
            ExpectOldOrNew(kind, before);
        }
    }
}

// A disk that does not answer for a while, such as one in the network: what could not be read at
// the start is still there when it answers again.
TEST(ProgramOnATroubledDisk, KeepsWhatItCouldNotRead)
{
    const QTemporaryDir folder;
    const files::Path home = files::PathOf(folder.path().toStdString());
    const std::string working = files::Utf8(home / "korvinth.tmp");
    const std::string settings = files::Utf8(home / "Korvinth.ini");
    const std::string entries = "[Funktionenplotter]\r\n{short:wichtig\r\nf(x)=x}";
    const std::string looks = "[Korvinth]\r\nLDicke=7:\r\n";
    int troubles = 0;
    for (const Trouble trouble : {Trouble::Once, Trouble::Gone}) {
        bool in_trouble = true;
        for (int operation = 1; in_trouble; ++operation) {
            SCOPED_TRACE(testing::Message() << "operation " << operation);
            FailingDisk disk{{working, entries}, {settings, looks}};
            disk.At(operation, trouble);
            ui::ScriptedDialogs dialogs;
            {
                Program program(home, dialogs, disk);
                program.Start({});
                in_trouble = disk.Operations() >= operation;
                disk.At(0, Trouble::None);
                auto* row = program.Window().findChild<QLineEdit*>("fnam[0]");
                row->setText("cos(x)");
                QTest::keyClick(row, Qt::Key_Return);
                program.Files().Flush();
                program.Window().close();
            }
            troubles += in_trouble ? 1 : 0;
            EXPECT_NE(disk.Bytes(working).find("cos(x)"), std::string::npos);
            const std::string all = disk.Bytes(working) + disk.Bytes(working + ".defekt");
            EXPECT_NE(all.find("wichtig"), std::string::npos);
            EXPECT_NE(disk.Bytes(settings).find("LDicke=7:"), std::string::npos);
            EXPECT_EQ(dialogs.questions.size(), disk.Has(working + ".defekt") ? 1U : 0U);
        }
    }
    EXPECT_GE(troubles, 8);
}

}  // namespace
}  // namespace korvinth::app
