#include "ui/termlist.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace korvinth::ui {
namespace {

QLineEdit* Field(TermList& list, int row)
{
    return list.findChild<QLineEdit*>(QStringLiteral("fnam[%1]").arg(row));
}

TEST(TermList, HasThirteenRowsThatEnterApplies)
{
    TermList list;
    QSignalSpy applied(&list, &TermList::applied);
    for (int row = 0; row < document::kSlotCount; ++row) {
        SCOPED_TRACE(row);
        ASSERT_NE(Field(list, row), nullptr);
        QTest::keyClicks(Field(list, row), "x+" + QString::number(row));
        EXPECT_EQ(applied.count(), row) << "typing alone applies nothing";
        QTest::keyClick(Field(list, row), Qt::Key_Return);
        EXPECT_EQ(applied.count(), row + 1);
        EXPECT_EQ(list.Row(document::SlotIndex{static_cast<std::int16_t>(row)}),
                  "x+" + std::to_string(row));
    }
    EXPECT_EQ(Field(list, document::kSlotCount), nullptr);
}

TEST(TermList, KeepsTheCaretInRowsThatDoNotChange)
{
    TermList list;
    document::SlotTable<std::string> rows;
    rows[document::SlotIndex{0}] = "f(x) = x²";
    list.SetRows(rows);
    EXPECT_EQ(Field(list, 0)->text(), QStringLiteral("f(x) = x²"));
    Field(list, 0)->setCursorPosition(3);
    list.SetRows(rows);
    EXPECT_EQ(Field(list, 0)->cursorPosition(), 3);
}

TEST(TermList, ShowsErrorsAsPlainTextAndTakesThemBack)
{
    TermList list;
    auto* status = list.findChild<QLabel*>("status");
    EXPECT_EQ(status->text(), "o.k.");
    const QPalette quiet = status->palette();
    list.ShowStatus("f(x): <b>Fehler</b>");
    EXPECT_TRUE(status->text().endsWith("f(x): <b>Fehler</b>"));
    EXPECT_EQ(status->textFormat(), Qt::PlainText);
    EXPECT_GT(status->palette().color(QPalette::Window).red(),
              status->palette().color(QPalette::Window).green());
    EXPECT_TRUE(status->autoFillBackground());
    list.ShowStatus("");
    EXPECT_EQ(status->text(), "o.k.");
    EXPECT_EQ(status->palette().color(QPalette::Window), quiet.color(QPalette::Window));
    EXPECT_FALSE(status->autoFillBackground());
}

TEST(TermList, ColourSquaresShowTheirRowsColour)
{
    TermList list;
    document::SlotTable<document::SlotAttributes> slots;
    slots[document::SlotIndex{2}].colour = document::MakeColour(10, 200, 30);
    list.SetColours(slots);
    auto* square = list.findChild<ColourSquare*>("fcol[2]");
    ASSERT_NE(square, nullptr);
    square->resize(square->sizeHint());
    const QImage shown = square->grab().toImage();
    EXPECT_EQ(shown.pixelColor(shown.rect().center()), QColor(10, 200, 30));
}

}  // namespace
}  // namespace korvinth::ui
