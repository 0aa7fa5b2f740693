#include "app/picture_commands.h"

#include <QAction>
#include <QGuiApplication>
#include <QScreen>
#include <chrono>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "app/clipboard.h"
#include "app/picture_file.h"
#include "app/picture_image.h"
#include "files/path_text.h"
#include "ui/graphform.h"

namespace korvinth::app {
namespace {

constexpr const char* kExportTitle = "Graphik exportieren";

// Its pixels as the toolkit counts them, like those of the graph's area. A screen that does not
// know its size is one of the usual resolution.
render::ScreenSize SizeOf(const QScreen& screen)
{
    const auto whole = [](double mm) { return static_cast<int>(std::lround(mm)); };
    const render::ScreenSize size{screen.size().width(), screen.size().height(),
                                  whole(screen.physicalSize().width()),
                                  whole(screen.physicalSize().height())};
    return size.width_mm > 0 && size.height_mm > 0 ? size : render::PictureOptions().screen;
}

// The pointer tells that the program is busy, as long as this lives.
class BusyPointer
{
public:
    BusyPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { QGuiApplication::restoreOverrideCursor(); }
    Q_DISABLE_COPY_MOVE(BusyPointer)
};

// Functions are copied, what they draw is one thing.
std::function<bool(std::chrono::milliseconds, QImage&)> InSlices(
    const std::shared_ptr<ImageDrawing>& drawing)
{
    if (drawing == nullptr) return {};
    return [drawing](std::chrono::milliseconds time, QImage& image) {
        const auto end = std::chrono::steady_clock::now() + time;
        bool more = drawing->Continue();
        while (more && std::chrono::steady_clock::now() < end) more = drawing->Continue();
        image = drawing->Image();
        return more;
    };
}

std::string Ending(render::PictureFormat format)
{
    switch (format) {
        case render::PictureFormat::Png: return ".png";
        case render::PictureFormat::Svg: return ".svg";
        case render::PictureFormat::Pdf: return ".pdf";
        case render::PictureFormat::Emf: break;
    }
    return ".emf";
}

}  // namespace

PictureCommands::PictureCommands(Application& application, MainWindow& window, ui::Dialogs& dialogs,
                                 files::Path metafile, files::FileSystem& disk)
    : application_(application),
      window_(window),
      dialogs_(dialogs),
      metafile_(std::move(metafile)),
      disk_(disk)
{
    const auto on = [this](std::string_view entry, auto action) {
        connect(&window_.MenuEntry(entry), &QAction::triggered, this, action);
    };
    for (const char* const entry : {"mn_copytoclip", "mng_copytoclip"}) {
        on(entry, [this] { CopyAsBitmap(); });
    }
    for (const char* const entry : {"mn_emf", "mng_emf"}) {
        on(entry, [this] { CopyAsMetafile(); });
    }
    on("mn_export", [this] { Export(); });
    on("mn_print", [this] { Print(); });
    // Lists and fields have a Ctrl+C of their own.
    QAction& copy = window_.MenuEntry("mn_copytoclip");
    copy.setShortcutContext(Qt::WidgetWithChildrenShortcut);
    window_.Graph().addAction(&copy);
}

void PictureCommands::CopyAsBitmap() { CopyBitmap(window_.Graph().Picture()); }

void PictureCommands::CopyAsMetafile()
{
    ui::GraphForm& graph = window_.Graph();
    CopyMetafile(application_, SizeOf(*graph.screen()), graph.Picture(), metafile_, disk_);
    graph.Redraw();
}

void PictureCommands::Export()
{
    if (export_ == nullptr) MakeExportDialog();
    export_->Open(window_.Graph().AreaSize());
}

void PictureCommands::MakeExportDialog()
{
    export_ = new ui::ExportDialog(
        [this](render::PictureFormat format, const render::PictureOptions& options, QSize room) {
            ImagePreview preview = PreviewImage(application_, format, options, room);
            return ui::PicturePreview{preview.image, InSlices(std::move(preview.drawing)),
                                      QString::fromStdString(preview.fault)};
        },
        &window_);
    connect(export_, &ui::ExportDialog::saveWanted, this, &PictureCommands::SaveExport);
}

// The window stays open until a file is written, so that nothing chosen is lost.
void PictureCommands::SaveExport()
{
    const std::optional<files::Path> file = AskForFile();
    if (!file) return;
    const std::string name = files::Utf8(*file);
    render::PictureOptions options = export_->Options();
    options.screen = SizeOf(*window_.Graph().screen());
    const PictureReport report = [&] {
        const BusyPointer busy;
        return WritePicture(application_, name, options, disk_);
    }();
    if (!report.fault.empty()) {
        dialogs_.ShowExclamation(kExportTitle,
                                 "Die Graphik ist nicht gespeichert: " + report.fault);
        return;
    }
    export_->accept();
    const std::string note = report.note.empty() ? "" : "; " + report.note;
    window_.ShowOutcome(QString::fromStdString("Gespeichert: " + name + note));
}

std::optional<files::Path> PictureCommands::AskForFile()
{
    const render::PictureFormat format = export_->Format();
    const std::string ending = Ending(format);
    const std::string filter = "Graphik (*" + ending + ")|*" + ending;
    for (;;) {
        const std::optional<std::string> chosen = dialogs_.SaveFile(kExportTitle, filter);
        if (!chosen) return std::nullopt;
        files::Path file = files::PathOf(*chosen);
        // The format is the chosen one, whatever the name looks like.
        if (render::FormatOf(*chosen) != format) file = files::WithEnding(file, ending);
        std::error_code fault;
        const bool exists = disk_.Exists(file, fault);  // writing tells the fault
        if (!exists || dialogs_.AskYesNo(kExportTitle,
                                         "Diese Datei gibt es bereits. Soll sie "
                                         "überschrieben werden?")) {
            return file;
        }
    }
}

void PictureCommands::Print()
{
    preview_ = std::make_unique<PrintPreview>(application_, dialogs_, page_, disk_, &window_);
    connect(preview_.get(), &PrintPreview::finished, this, [this] { page_ = preview_->Options(); });
}

}  // namespace korvinth::app
