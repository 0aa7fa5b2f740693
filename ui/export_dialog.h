// The window of "Graphik exportieren...": format, size and page of a picture file.
#pragma once

#include <QDialog>
#include <QImage>
#include <QTimer>
#include <chrono>
#include <functional>

#include "render/picture_options.h"

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLabel;
class QSpinBox;

namespace korvinth::ui {

class PageOptionsBox;

struct PicturePreview
{
    QImage image;
    // Where that is null: draws for about as long and hands over what there is then; false when
    // that is all.
    std::function<bool(std::chrono::milliseconds, QImage&)> draw;
    QString fault;  // why there is neither
};

// Keeps its values from one opening to the next.
class ExportDialog : public QDialog
{
    Q_OBJECT
public:
    // A picture as the options have it, at most as many dots large as `room`.
    using Preview = std::function<PicturePreview(render::PictureFormat,
                                                 const render::PictureOptions&, QSize room)>;
    explicit ExportDialog(Preview preview, QWidget* parent = nullptr);

    // `area` is the size of the graph's area in pixels, the picture's at first.
    void Open(QSize area);

    render::PictureFormat Format() const;
    // Of what the format has not there are the usual values.
    render::PictureOptions Options() const;

Q_SIGNALS:
    void saveWanted();

private:
    QFormLayout* MakeFields();
    QSpinBox* MakeSide(const char* name);
    void Connect();
    void KeepRatio(const QSpinBox& edited, QSpinBox& other, double factor);
    void FollowChoice();
    void DrawPreview();
    void ContinuePreview();
    void ShowPreview(QImage image);
    void ShowPaperSize();

    Preview preview_;
    double ratio_ = 4.0 / 3;  // width to height of the graph's area
    bool opened_ = false;
    QTimer redraw_;  // many changes are one preview
    QTimer slice_;   // runs while the preview is being drawn
    PicturePreview shown_;
    QComboBox* format_;
    QSpinBox* width_;
    QSpinBox* height_;
    QCheckBox* keep_ratio_;
    QSpinBox* resolution_;
    QLabel* paper_size_;
    QComboBox* orientation_;
    PageOptionsBox* page_;
    QLabel* picture_;
};

}  // namespace korvinth::ui
