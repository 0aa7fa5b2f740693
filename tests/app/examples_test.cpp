#include "app/examples.h"

#include <gtest/gtest.h>

#include <QImage>
#include <set>
#include <string>

#include "app/application.h"
#include "document/collection_file.h"
#include "document/plot_entry.h"
#include "render/qt/raster_surface.h"
#include "tests/render/pixel_count.h"

namespace korvinth::app {
namespace {

using document::Column;

constexpr int kWidth = 480;
constexpr int kHeight = 360;
constexpr int kLeastInk = 60;  // pixels

// Of the slots that are drawn.
std::set<QRgb> SlotColours(const document::PlotDocument& plot)
{
    std::set<QRgb> colours;
    for (const document::SlotIndex index : document::AllSlots()) {
        const document::FunctionSlot& slot = plot.slots[index];
        if (slot.name.empty() || !slot.visible) continue;
        const document::Colour colour =
            plot.attributes.slots[document::SlotIndex{slot.colour_index}].colour;
        colours.insert(
            qRgb(document::Red(colour), document::Green(colour), document::Blue(colour)));
    }
    return colours;
}

QImage Draw(Application& application)
{
    // Without smooth edges every pixel of a stroke has its colour.
    application.Document().attributes.smooth_drawing = false;
    render::RasterSurface surface(kWidth, kHeight, render::GridSteps(false));
    application.Draw(surface);
    surface.Refresh();
    return surface.Image();
}

TEST(Examples, AreWrittenAsTheProgramWritesThem)
{
    const std::string bytes = ExampleCollection();
    document::Collection collection;
    EXPECT_EQ(document::ReadCollection(bytes, document::ReadMode::Open, collection), "");
    EXPECT_GE(collection.entries.size(), 40U);
    EXPECT_TRUE(collection.buffer_loaded);
    EXPECT_TRUE(document::WriteCollection(collection) == bytes);
    std::set<std::string> names;
    for (const document::CollectionEntry& entry : collection.entries) {
        const std::string name(entry[Column::ShortText]);
        SCOPED_TRACE(name);
        EXPECT_TRUE(names.insert(name).second) << "the name is there twice";
        EXPECT_FALSE(entry[Column::LongText].empty());
        EXPECT_TRUE(entry.is_protected);
    }
}

// One after the other in one program, as a user clicks through them.
TEST(Examples, AreDrawnWithoutFaults)
{
    document::Collection collection;
    document::ReadCollection(ExampleCollection(), document::ReadMode::Open, collection);
    Application application;
    application.SetAreaSize(kWidth, kHeight);
    for (const document::CollectionEntry& entry : collection.entries) {
        SCOPED_TRACE(std::string(entry[Column::ShortText]));
        EXPECT_EQ(document::FillPlot(entry, application.Document()), "");
        const document::PlotReport report = application.Apply();
        EXPECT_EQ(report.errors, "");
        EXPECT_EQ(report.notes, "");
        const QImage picture = Draw(application);
        EXPECT_TRUE(application.Problems().empty());
        const std::set<QRgb> colours = SlotColours(application.Document());
        const auto drawn = [&](const QColor& pixel) { return colours.contains(pixel.rgb()); };
        EXPECT_GE(render::CountPixels(picture, drawn), kLeastInk);
    }
}

}  // namespace
}  // namespace korvinth::app
