#include "ui/zoom_dialog.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <string>
#include <vector>

#include "scripted_dialogs.h"

namespace korvinth::ui {
namespace {

TEST(ZoomDialog, TakesEachFactorOfAtLeastOneByItself)
{
    constexpr const char* kNotX = "Fehlerhafte Eingabe|ungültiger Zoomfaktor in x-Richtung!";
    constexpr const char* kNotY = "Fehlerhafte Eingabe|ungültiger Zoomfaktor in y-Richtung!";
    struct Case
    {
        const char *x, *y;
        double x_factor, y_factor;
        std::vector<std::string> messages;
    };
    const Case cases[] = {
        {"1,5", "2*2", 1.5, 4, {}},       {"0,9", "1", 3, 1, {kNotX}},
        {"2", "0,9", 2, 5, {kNotY}},      {"", "1+", 3, 5, {kNotX, kNotY}},
        {"-4", "1.25", 3, 1.25, {kNotX}},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.x);
        term::MathParser parser;
        ScriptedDialogs dialogs;
        ZoomDialog dialog(parser, dialogs);
        dialog.setval({3, 5});
        EXPECT_EQ(dialog.findChild<QLineEdit*>("Text2")->text(), "5");
        render::ZoomFactors taken;
        QObject::connect(&dialog, &ZoomDialog::applied,
                         [&taken](const render::ZoomFactors& factors) { taken = factors; });
        dialog.findChild<QLineEdit*>("Text1")->setText(row.x);
        dialog.findChild<QLineEdit*>("Text2")->setText(row.y);
        dialog.findChild<QPushButton*>("Command1")->click();
        EXPECT_EQ(taken.x, row.x_factor);
        EXPECT_EQ(taken.y, row.y_factor);
        EXPECT_EQ(dialogs.errors, row.messages);
        EXPECT_EQ(parser.GetError(), term::Error::None);
    }
}

}  // namespace
}  // namespace korvinth::ui
