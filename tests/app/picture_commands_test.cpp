// The picture on its way out of the program: clipboard, files and paper.
#include "app/picture_commands.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QSpinBox>
#include <chrono>
#include <cstring>
#include <vector>

#include "app/clipboard.h"
#include "app/program.h"
#include "tests/files/failing_disk.h"
#include "ui/export_dialog.h"
#include "window_fixture.h"

namespace korvinth::app {
namespace {

class PictureCommandsTest : public WindowWithFiles
{
protected:
    PictureCommandsTest()
    {
        program_.Start({});
        Window().activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&Window()));
        Type(0, "f(x)=sin(x)");
        QGuiApplication::clipboard()->setText("von vorher");
    }

    MainWindow& Window() final { return program_.Window(); }
    QImage Picture() { return Graph()->Picture().convertToFormat(QImage::Format_RGB32); }
    static QImage AsPicture(const QVariant& data)
    {
        return data.value<QImage>().convertToFormat(QImage::Format_RGB32);
    }
    static const QMimeData& Clipboard() { return *QGuiApplication::clipboard()->mimeData(); }

    Program program_{Directory(), dialogs_};
};

TEST_F(PictureCommandsTest, TheBitmapIsThePictureOnTheScreen)
{
    for (const char* const entry : {"mn_copytoclip", "mng_copytoclip"}) {
        QGuiApplication::clipboard()->setText("von vorher");
        Trigger(entry);
        EXPECT_FALSE(Clipboard().hasText());
        EXPECT_EQ(AsPicture(Clipboard().imageData()), Picture());
        const QImage png = QImage::fromData(Clipboard().data("image/png"));
        EXPECT_EQ(png.convertToFormat(QImage::Format_RGB32), Picture());
        EXPECT_EQ(png.dotsPerMeterX(), 3780);
    }
}

TEST_F(PictureCommandsTest, CtrlCIsTheGraphsOnlyWhereTheGraphHasTheKeyboard)
{
    auto* row = Row(0);
    row->setFocus();
    row->selectAll();
    QTest::keyClick(row, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(Clipboard().text(), "f(x) = sin(x)");
    auto* entries = Find<QWidget>("samml_list");
    ASSERT_NE(entries, nullptr);
    entries->setFocus();
    QTest::keyClick(entries, Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(Clipboard().hasImage());
    Graph()->setFocus();
    QTest::keyClick(Graph()->focusWidget(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(Clipboard().hasImage());
}

// The frame of a metafile, in 0.01 mm, stands behind type, size and bounds.
render::GridBox Frame(const std::string& metafile)
{
    std::int32_t sides[4] = {};
    if (metafile.size() >= 40) std::memcpy(sides, metafile.data() + 24, sizeof sides);
    return {sides[0], sides[1], sides[2], sides[3]};
}

TEST_F(PictureCommandsTest, TheMetafileStaysOnTheDiskAndIsOfferedUnderAllItsNames)
{
    Put("korvinth.tmp.emf", "ein älteres Bild");
    for (const char* const entry : {"mn_emf", "mng_emf"}) {
        QGuiApplication::clipboard()->setText("von vorher");
        Trigger(entry);
        const std::string file = Content("korvinth.tmp.emf");
        for (const char* const name :
             {"image/x-emf", "image/emf", "application/x-emf", "application/emf",
              "application/x-qt-windows-mime;value=\"Enhanced Metafile\""}) {
            EXPECT_EQ(Clipboard().data(name).toStdString(), file) << name;
        }
        const QScreen& screen = *Graph()->screen();
        const render::ScreenSize size{screen.size().width(), screen.size().height(),
                                      qRound(screen.physicalSize().width()),
                                      qRound(screen.physicalSize().height())};
        const QSize area = Graph()->AreaSize();
        EXPECT_EQ(Frame(file), render::MetafileFrame(area.width(), area.height(), size));
        EXPECT_TRUE(Clipboard().data("image/svg+xml").contains("<path"));
        EXPECT_EQ(AsPicture(QImage::fromData(Clipboard().data("image/x-bmp"), "BMP")), Picture());
        EXPECT_FALSE(Clipboard().hasFormat("image/png")) << "it would be taken instead";
        EXPECT_FALSE(Clipboard().hasText());
    }
}

struct FieldCase
{
    int format;
    bool size, resolution, orientation, scale, legend;
};
constexpr FieldCase kFieldCases[] = {
    {3, true, false, false, false, false},
    {2, false, false, true, true, true},
    {1, true, false, false, true, false},
    {0, true, true, false, false, false},
};

TEST_F(PictureCommandsTest, OnlyWhatAFormatHasCanBeChosen)
{
    Trigger("mn_export");
    for (const FieldCase& row : kFieldCases) {
        SCOPED_TRACE(row.format);
        Find<QComboBox>("export_format")->setCurrentIndex(row.format);
        const auto enabled = [this](const char* name) {
            return Find<QDialog>("export")->findChild<QWidget*>(name)->isEnabled();
        };
        EXPECT_EQ(enabled("export_width"), row.size);
        EXPECT_EQ(enabled("export_height"), row.size);
        EXPECT_EQ(enabled("export_resolution"), row.resolution);
        EXPECT_EQ(enabled("export_orientation"), row.orientation);
        EXPECT_EQ(enabled("page_exact"), row.scale);
        EXPECT_EQ(enabled("page_legend"), row.legend);
        auto* preview = Find<QLabel>("export_preview");
        preview->clear();
        EXPECT_TRUE(QTest::qWaitFor([&] { return !preview->pixmap().isNull(); }));
    }
}

TEST(ExportPreview, ComesPieceByPieceUntilItIsDoneOrOutOfDate)
{
    int begun = 0;
    int slices = 0;
    int last = 3;  // slice of a preview
    ui::ExportDialog dialog([&](render::PictureFormat, const render::PictureOptions&, QSize) {
        ++begun;
        const auto draw = [&, slice = 0](std::chrono::milliseconds, QImage& image) mutable {
            image = QImage(10 * ++slice, 10, QImage::Format_RGB32);
            ++slices;
            return slice < last;
        };
        return ui::PicturePreview{QImage(), draw, ""};
    });
    const auto* shown = dialog.findChild<QLabel*>("export_preview");
    dialog.Open({400, 300});
    EXPECT_EQ(slices, 1) << "what is done is seen at once";
    EXPECT_EQ(shown->pixmap().width(), 10);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown->pixmap().width() == 30; }));
    QTest::qWait(200);
    EXPECT_EQ(slices, 3 * begun);

    last = 1'000'000'000;
    dialog.findChild<QComboBox*>("export_format")->setCurrentIndex(1);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown->pixmap().width() > 30; }));
    dialog.close();
    const int drawn = slices;
    QTest::qWait(50);
    EXPECT_EQ(slices, drawn) << "the plot may change now";
}

TEST_F(PictureCommandsTest, AnExportWritesTheChosenSizeAndKeepsItsValues)
{
    const QSize area = Graph()->AreaSize();
    Trigger("mn_export");
    auto* width = Find<QSpinBox>("export_width");
    auto* height = Find<QSpinBox>("export_height");
    EXPECT_EQ(QSize(width->value(), height->value()), area);
    width->setValue(500);
    EXPECT_EQ(height->value(), qRound(500.0 * area.height() / area.width()));
    Find<QCheckBox>("export_ratio")->setChecked(false);
    height->setValue(200);
    EXPECT_EQ(width->value(), 500);
    Find<QSpinBox>("export_resolution")->setValue(300);
    const auto* paper_size = Find<QLabel>("export_paper_size");
    EXPECT_TRUE(QTest::qWaitFor([&] { return paper_size->text().contains("4,2 × 1,7 cm"); }));
    dialogs_.files = {File("bild")};
    Find<QPushButton>("export_save")->click();
    const QImage image = QImage::fromData(QByteArray::fromStdString(Content("bild.png")));
    EXPECT_EQ(image.size(), QSize(500, 200));
    EXPECT_EQ(image.dotsPerMeterX(), 11811);
    EXPECT_FALSE(Find<QDialog>("export")->isVisible());
    EXPECT_TRUE(Find<QLabel>("outcome")->text().startsWith("Gespeichert: "));
    EXPECT_EQ(Graph()->AreaSize(), area);
    Trigger("mn_export");
    EXPECT_EQ(height->value(), 200);
}

TEST_F(PictureCommandsTest, AnExportThatFailsTellsWhyAndKeepsTheFile)
{
    Put("da.png", "vorher");
    Trigger("mn_export");
    const auto save = [this](const char* name) {
        dialogs_.files = {File(name)};
        Find<QPushButton>("export_save")->click();
        std::string told = dialogs_.exclamations.empty() ? "" : dialogs_.exclamations.back();
        dialogs_.exclamations.clear();
        return told;
    };
    const std::string told = "Graphik exportieren|Die Graphik ist nicht gespeichert: ";
    EXPECT_EQ(save("nirgends/a.png"), told + "Den Ordner gibt es nicht");
    EXPECT_EQ(save("da.png"), "");
    EXPECT_EQ(dialogs_.questions.back(),
              "Graphik exportieren|Diese Datei gibt es bereits. Soll sie überschrieben werden?");
    EXPECT_EQ(Content("da.png"), "vorher");
    dialogs_.yes = true;
    Find<QCheckBox>("export_ratio")->setChecked(false);
    Find<QSpinBox>("export_width")->setValue(30'000);
    Find<QSpinBox>("export_height")->setValue(30'000);
    EXPECT_EQ(save("da.png"), told + "Für ein Bild dieser Größe reicht der Speicher nicht");
    EXPECT_EQ(Content("da.png"), "vorher");
    EXPECT_TRUE(Find<QDialog>("export")->isVisible());
    Find<QSpinBox>("export_width")->setValue(0);
    Find<QSpinBox>("export_height")->setValue(1);
    EXPECT_EQ(save("da.png"), "");
    const QImage image = QImage::fromData(QByteArray::fromStdString(Content("da.png")));
    EXPECT_EQ(image.size(), QSize(1, 1));
}

TEST_F(PictureCommandsTest, ThePrintPreviewShowsThePageWithItsOptionsAndKeepsThem)
{
    Trigger("mn_print");
    auto* dialog = Find<QDialog>("print");
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QRadioButton*>("page_exact")->click();
    dialog->findChild<QDoubleSpinBox*>("page_cm")->setValue(30);
    auto* note = dialog->findChild<QLabel*>("print_note");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !note->text().isEmpty(); }));
    dialog->reject();
    Trigger("mn_print");
    EXPECT_EQ(Find<QDialog>("print")->findChild<QDoubleSpinBox*>("page_cm")->value(), 30);
}

TEST_F(PictureCommandsTest, PrintingIntoAFileTellsWhenItCannotBeWritten)
{
    Trigger("mn_print");
    auto* dialog = Find<QPrintPreviewDialog>("print");
    ASSERT_NE(dialog, nullptr);
    QPrinter& printer = *dialog->printer();
    const auto print = [&](const char* name) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(QString::fromStdString(File(name)));
        Q_EMIT dialog->paintRequested(&printer);
    };
    print("seite.pdf");
    EXPECT_TRUE(dialogs_.exclamations.empty());
    EXPECT_TRUE(Content("seite.pdf").starts_with("%PDF-"));
    print("nirgends/seite.pdf");
    EXPECT_EQ(dialogs_.exclamations, std::vector<std::string>{"Drucken|Den Ordner gibt es nicht"});
}

// Some desktops would take the key to the end of a field's text.
TEST_F(PictureCommandsTest, TheExportsKeyWorksInAField)
{
    auto* row = Row(0);
    row->setFocus();
    QKeyEvent key(QEvent::ShortcutOverride, Qt::Key_E, Qt::ControlModifier);
    key.accept();
    QApplication::sendEvent(row, &key);
    EXPECT_FALSE(key.isAccepted()) << "left to the menu";
    QTest::keyClick(row, Qt::Key_E, Qt::ControlModifier);
    EXPECT_TRUE(Find<QDialog>("export")->isVisible());
}

// Deliberate: no error is told, the clipboard is empty then.
TEST(CopyMetafile, LeavesTheClipboardEmptyWhenTheFileCannotBeWritten)
{
    Application application;
    files::FailingDisk disk;
    const QImage picture(4, 4, QImage::Format_RGB32);
    const auto copy = [&] {
        QGuiApplication::clipboard()->setText("von vorher");
        CopyMetafile(application, {}, picture, "k.emf", disk);
        const QMimeData* const formats = QGuiApplication::clipboard()->mimeData();
        return formats != nullptr && !formats->formats().isEmpty();
    };
    EXPECT_TRUE(copy());
    const int operations = disk.Operations();
    for (int step = 1; step <= operations; ++step) {
        SCOPED_TRACE(step);
        disk.At(step, files::FailingDisk::Trouble::Once);
        EXPECT_FALSE(copy());
    }
    disk.At(0, files::FailingDisk::Trouble::None);
    disk.SetReadOnly(true);
    EXPECT_FALSE(copy());
}

}  // namespace
}  // namespace korvinth::app
