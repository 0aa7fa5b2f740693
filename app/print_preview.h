// mn_print: the toolkit's preview of the printed page, with the options of the page above it.
#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "app/application.h"
#include "files/file_system.h"
#include "render/picture_options.h"
#include "ui/dialogs.h"

class QLabel;
class QLayout;
class QPrintPreviewDialog;
class QPrinter;

namespace korvinth::ui {
class PageOptionsBox;
}

namespace korvinth::app {

// Shown while it is there. Without a printer it begins with one that writes a PDF file.
class PrintPreview final : public QObject
{
    Q_OBJECT
public:
    // Application, dialogs and disk outlive the object.
    PrintPreview(Application& application, ui::Dialogs& dialogs, const render::PageOptions& options,
                 files::FileSystem& disk, QWidget* window);
    ~PrintPreview() override;
    Q_DISABLE_COPY_MOVE(PrintPreview)

    // As they were left.
    render::PageOptions Options() const;

Q_SIGNALS:
    void finished();

private:
    QLayout* MakeButtons();
    void DrawOn(QPrinter& printer);
    // German; "" when the page is drawn.
    std::string DrawPaper(QPrinter& printer);
    std::string WriteFile(const QPrinter& printer);

    Application& application_;
    ui::Dialogs& dialogs_;
    render::PageOptions options_;
    files::FileSystem& disk_;
    std::unique_ptr<QPrinter> printer_;
    std::unique_ptr<QPrintPreviewDialog> dialog_;  // goes before its printer
    ui::PageOptionsBox* box_;
    QLabel* note_;
};

}  // namespace korvinth::app
