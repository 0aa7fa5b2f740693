// How a plot lies on a page: as large as it fits or at an exact scale, with its terms or without.
#pragma once

#include <QWidget>

#include "render/picture_options.h"

class QCheckBox;
class QDoubleSpinBox;
class QRadioButton;

namespace korvinth::ui {

class PageOptionsBox : public QWidget
{
    Q_OBJECT
public:
    explicit PageOptionsBox(QWidget* parent = nullptr);

    // Scale and legend; what else the options hold is left alone.
    void Show(const render::PageOptions& options);
    void StoreIn(render::PageOptions& options) const;

    // Without a page there is a size that the picture has instead of a scale.
    void SetAvailable(bool scale, bool page);
    bool AtScale() const;

Q_SIGNALS:
    void changed();

private:
    void FollowChoice();

    QRadioButton* fit_;
    QRadioButton* exact_;
    QDoubleSpinBox* centimetres_;
    QCheckBox* legend_;
};

}  // namespace korvinth::ui
