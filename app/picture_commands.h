// The menu entries that take the picture out of the program: clipboard, files and paper.
#pragma once

#include <QObject>
#include <memory>
#include <optional>

#include "app/application.h"
#include "app/main_window.h"
#include "app/print_preview.h"
#include "files/file_system.h"
#include "ui/dialogs.h"
#include "ui/export_dialog.h"

namespace korvinth::app {

class PictureCommands final : public QObject
{
    Q_OBJECT
public:
    // `metafile` is the file of what is copied as a metafile. All outlive the object.
    PictureCommands(Application& application, MainWindow& window, ui::Dialogs& dialogs,
                    files::Path metafile, files::FileSystem& disk);

private:
    void CopyAsBitmap();    // mn_copytoclip
    void CopyAsMetafile();  // mn_emf
    void Export();          // mn_export
    void MakeExportDialog();
    void SaveExport();
    std::optional<files::Path> AskForFile();
    void Print();  // mn_print

    Application& application_;
    MainWindow& window_;
    ui::Dialogs& dialogs_;
    const files::Path metafile_;
    files::FileSystem& disk_;
    ui::ExportDialog* export_ = nullptr;  // made when it is opened first; the window's child
    render::PageOptions page_;            // as printed last
    std::unique_ptr<PrintPreview> preview_;
};

}  // namespace korvinth::app
