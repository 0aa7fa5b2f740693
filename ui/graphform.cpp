#include "ui/graphform.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>
#include <cmath>
#include <utility>

#include "render/pointer_text.h"
#include "render/qt/raster_surface.h"
#include "ui/click_button.h"
#include "ui/graph_area.h"
#include "ui/told_texts.h"

namespace korvinth::ui {
namespace {

constexpr int kScrollEnd = 100;  // percent of the view
constexpr int kScrollStep = 10;
constexpr int kScrollPage = 50;
constexpr std::chrono::seconds kQuiet{1};

// Its upper end stands for the positive values, for arrows, keys and wheel as well.
class UprightScrollBar : public QScrollBar
{
public:
    explicit UprightScrollBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent)
    {
        setInvertedAppearance(true);
        // The toolkit turns the thumb alone.
        connect(this, &QScrollBar::actionTriggered, this, [this](int action) {
            const bool step = action >= SliderSingleStepAdd && action <= SliderPageStepSub;
            if (step) setSliderPosition(-sliderPosition());
        });
    }

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        setInvertedControls(false);
        QScrollBar::wheelEvent(event);
        setInvertedControls(true);
    }
};

// The bars are relative: each move is handed on, and the value rests at 0.
template <class Scroll>
void FollowScrollBar(QScrollBar& bar, Scroll scroll)
{
    bar.setRange(-kScrollEnd, kScrollEnd);
    bar.setSingleStep(kScrollStep);
    bar.setPageStep(kScrollPage);
    QObject::connect(&bar, &QScrollBar::valueChanged, &bar, [&bar, scroll](int value) {
        if (value == 0) return;
        bar.setValue(0);
        scroll(static_cast<std::int16_t>(value));
    });
}

QString Text(const std::string& utf8) { return QString::fromStdString(utf8); }

}  // namespace

GraphForm::GraphForm(const render::ViewRange& view, GraphGestures& gestures, Drawing drawing,
                     QWidget* parent)
    : QWidget(parent),
      view_(view),
      gestures_(gestures),
      drawing_(std::move(drawing)),
      area_(new GraphArea(
          [this](QImage& image, bool anew, bool whole) { return Draw(image, anew, whole); }, this)),
      pointer_(new GraphPointer(*area_, view, gestures)),
      tracer_(new GraphTracer(*area_, *pointer_, view, gestures)),
      hscroll_(new QScrollBar(Qt::Horizontal, this)),
      vscroll_(new UprightScrollBar(this)),
      readout_(new QLabel(this)),
      zoom_button_(new ZoomButton(this)),
      one_to_one_(new ClickButton(this))
{
    setObjectName("graphform");
    setWindowTitle("Funktionenplotter");
    setFocusProxy(area_);
    MakeControls();
    ArrangeControls();
    connect(area_, &GraphArea::resized, this, &GraphForm::areaResized);
    connect(area_, &GraphArea::drawn, this, &GraphForm::ShowReadout);
    connect(area_, &GraphArea::drawn, &quiet_, qOverload<>(&QTimer::start));
    quiet_.setSingleShot(true);
    quiet_.setInterval(kQuiet);
    connect(&quiet_, &QTimer::timeout, this, &GraphForm::Describe);
    connect(tracer_, &GraphTracer::moved, this, &GraphForm::FollowTracing);
    connect(tracer_, &GraphTracer::activeChanged, this, [this](bool tracing) {
        if (!tracing) FollowTracing();
        Q_EMIT tracingChanged(tracing);
    });
    connect(tracer_, &GraphTracer::refused, this,
            [this] { readout_->setText("Es gibt keinen sichtbaren Graphen."); });
    connect(pointer_, &GraphPointer::moved, this, &GraphForm::FollowPointer);
    connect(pointer_, &GraphPointer::modeChanged, this, &GraphForm::modeChanged);
    connect(pointer_, &GraphPointer::plainClicked, this, &GraphForm::plainClicked);
    connect(pointer_, &GraphPointer::menuWanted, this, &GraphForm::menuWanted);
}

void GraphForm::MakeControls()
{
    hscroll_->setObjectName("HScroll1");
    hscroll_->setAccessibleName("nach links und rechts verschieben");
    hscroll_->setAccessibleDescription("Verschiebt den dargestellten Bereich in x-Richtung");
    FollowScrollBar(*hscroll_, [this](std::int16_t percent) { gestures_.scrlr(percent); });
    vscroll_->setObjectName("VScroll1");
    vscroll_->setAccessibleName("nach oben und unten verschieben");
    vscroll_->setAccessibleDescription("Verschiebt den dargestellten Bereich in y-Richtung");
    FollowScrollBar(*vscroll_, [this](std::int16_t percent) { gestures_.scrud(percent); });

    readout_->setObjectName("Label1");
    readout_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    readout_->setTextFormat(Qt::PlainText);

    zoom_button_->setObjectName("Image1");
    zoom_button_->setToolTip("Links oder rechts klicken für Zoom");
    zoom_button_->setAccessibleName("Zoom");
    zoom_button_->setAutoRaise(true);
    connect(zoom_button_, &ClickButton::clickedWith, this, &GraphForm::ClickZoomButton);
    one_to_one_->setObjectName("Label2");
    one_to_one_->setText("1:1");
    one_to_one_->setToolTip("Links oder rechts anklicken für Skalierungsverhältnis 1:1");
    one_to_one_->setAutoRaise(true);
    connect(one_to_one_, &ClickButton::clickedWith, this,
            [this](render::ClickButton button) { gestures_.einszueins(button); });
}

void GraphForm::ArrangeControls()
{
    // The zoom button fills the corner between the bars, so they are as wide as it needs to be.
    constexpr int kAroundIcon = 4;
    const int extent = std::max(style()->pixelMetric(QStyle::PM_ScrollBarExtent),
                                fontMetrics().height() + kAroundIcon);
    hscroll_->setFixedHeight(extent);
    vscroll_->setFixedWidth(extent);
    zoom_button_->setFixedSize(extent, extent);

    auto* below = new QHBoxLayout;
    below->setContentsMargins(kAroundIcon, 0, 0, 0);
    below->addWidget(readout_, 1);
    below->addWidget(one_to_one_);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(area_, 0, 0);
    layout->addWidget(vscroll_, 0, 1);
    layout->addWidget(hscroll_, 1, 0);
    layout->addWidget(zoom_button_, 1, 1);
    layout->addLayout(below, 2, 0, 1, 2);
    layout->setRowStretch(0, 1);
    layout->setColumnStretch(0, 1);
}

void GraphForm::ClickZoomButton(render::ClickButton button, unsigned keys)
{
    if (keys == render::kShiftKey) {
        Q_EMIT rangeWindowWanted();
    } else if (keys == render::kCtrlKey) {
        Q_EMIT zoomFactorsWanted();
    } else {
        gestures_.zoom(button, render::kCtrlKey | render::kAltKey, view_.area_width / 2,
                       view_.area_height / 2);
    }
}

void GraphForm::SetProbe(Probe probe) { probe_ = std::move(probe); }

void GraphForm::SetDescription(Description description)
{
    description_ = std::move(description);
    Describe();
}

void GraphForm::SetSmooth(bool smooth)
{
    smooth_ = smooth;
    Redraw();
}

QSize GraphForm::AreaSize() const { return area_->size().expandedTo({1, 1}); }

void GraphForm::Redraw() { area_->Outdate(); }

const QImage& GraphForm::Picture() { return area_->Image(); }

bool GraphForm::Unfinished() const { return area_->Unfinished(); }

bool GraphForm::Draw(QImage& image, bool anew, bool whole)
{
    if (anew) {
        const QSize size = AreaSize();
        // The exact rules count in the toolkit's pixels, whatever the screen has.
        const double scale = smooth_ ? area_->devicePixelRatioF() : 1;
        const int steps = render::GridSteps(smooth_) * static_cast<int>(std::ceil(scale));
        surface_ =
            std::make_unique<render::RasterSurface>(size.width(), size.height(), steps, scale);
        pieces_ = drawing_(*surface_);
    }
    const auto end = std::chrono::steady_clock::now() + (anew ? slice_ : slice_ / 2);
    bool more = pieces_();
    while (more && (whole || std::chrono::steady_clock::now() < end)) more = pieces_();
    surface_->Refresh();
    image = surface_->Image();
    if (!more) {
        pieces_ = nullptr;
        surface_.reset();
    }
    return more;
}

void GraphForm::FollowPointer()
{
    const std::optional<QPointF> place = pointer_->Place();
    const bool points = place && Mode() == PointerMode::Plain && !pointer_->Busy();
    if (points) Q_EMIT pointerMoved(view_.WorldX(place->x()), view_.WorldY(place->y()));
    ShowReadout();
}

// The mark that keys move goes before that of the pointer.
void GraphForm::ShowReadout()
{
    if (const auto point = tracer_->Point()) {
        const double x = view_.AreaX(point->x);
        const double y = view_.AreaY(point->y);
        ShowPoint(*point, render::PointerText(view_, x, y));
        return;
    }
    const std::optional<QPointF> place = pointer_->Place();
    const std::string text = place ? render::PointerText(view_, place->x(), place->y()) : "";
    if (!text.empty() && Mode() == PointerMode::Plain && !pointer_->Busy() && probe_) {
        if (const auto point = probe_(place->x(), place->y())) {
            ShowPoint(*point, text);
            return;
        }
    }
    area_->SetMark({});
    readout_->setText(Text(text));
}

// `text` tells the place, and nothing when it lies outside the area.
void GraphForm::ShowPoint(const render::ProbedPoint& point, std::string text)
{
    std::optional<QPointF> mark;
    if (!text.empty()) {
        text += "   ";
        mark = QPointF(view_.AreaX(point.x) / view_.twips_per_pixel_x,
                       view_.AreaY(point.y) / view_.twips_per_pixel_y);
    }
    area_->SetMark(mark);
    readout_->setText(Text(text + render::ValueText(view_, point)));
}

void GraphForm::FollowTracing()
{
    ShowReadout();
    const auto point = tracer_->Point();
    area_->TellValues(point ? Text(render::ValueText(view_, *point)) : QString());
}

// Not for every picture of a moving one, which would be talked about without end.
void GraphForm::Describe()
{
    if (description_) TellDescription(*area_, Text(description_()));
    FollowTracing();
}

}  // namespace korvinth::ui
