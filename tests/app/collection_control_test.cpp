#include "app/collection_control.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMainWindow>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTest>
#include <QToolButton>
#include <functional>
#include <string>
#include <vector>

#include "app/entry_preview.h"
#include "document/storable_text.h"
#include "tests/render/pixel_count.h"
#include "tests/ui/scripted_dialogs.h"
#include "ui/sammlung.h"
#include "ui/sammtext.h"

namespace korvinth::app {
namespace {

using document::Column;

// Dropping is what the system does with a drag; a test can do it by hand only.
struct OpenList : QListView
{
    using QListView::dropEvent;
};

class CollectionControlTest : public testing::Test, public CollectionHost
{
protected:
    CollectionControlTest()
    {
        QApplication::clipboard()->clear();
        window_.resize(400, 300);
        control_.Window().setGeometry(0, 20, 400, 280);
        control_.DescriptionWindow().show();
        window_.show();
        window_.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
        QObject::connect(&control_, &CollectionControl::changed, [this] { ++changes_; });
    }

    document::CollectionEntry CurrentPlot() override
    {
        document::CollectionEntry entry;
        entry.Set(Column::Functions, "f(x)=x^2");
        return entry;
    }
    void DrawEntry(const document::CollectionEntry& entry) override
    {
        drawn_.emplace_back(entry[Column::ShortText]);
    }

    // One letter an entry; those in capital letters are protected.
    void Fill(std::string_view names)
    {
        for (const char name : names) {
            document::CollectionEntry entry;
            entry.Set(Column::ShortText, std::string(1, name));
            entry.is_protected = name >= 'A' && name <= 'Z';
            control_.Entries().entries.push_back(entry);
        }
        control_.ShowEntries();
    }
    std::string Names()
    {
        std::string names;
        for (const auto& entry : control_.Entries().entries) names += entry[Column::ShortText];
        return names;
    }
    std::string Text(std::size_t place, Column column)
    {
        return std::string(control_.Entries().entries[place][column]);
    }
    void Select(const std::vector<int>& rows)
    {
        List()->clearSelection();
        for (const int row : rows) {
            const QModelIndex index = List()->model()->index(row, 0);
            List()->selectionModel()->setCurrentIndex(index, QItemSelectionModel::Select);
        }
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        List()->setFocus();
        QTest::keyClick(List(), key, modifiers);
    }
    // Into the name that is being edited.
    void TypeName(const char* name)
    {
        auto* field = List()->viewport()->findChild<QLineEdit*>("samml_name");
        ASSERT_NE(field, nullptr);
        QTest::keyClicks(field, name);
        QTest::keyClick(field, Qt::Key_Return);
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    void TypeDescription(const char* text)
    {
        for (const char32_t c : QString::fromUtf8(text).toUcs4()) {
            const Qt::Key key = c == '\n' ? Qt::Key_Return : Qt::Key_unknown;
            QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString::fromUcs4(&c, 1));
            QApplication::sendEvent(Description(), &press);
        }
    }
    template <class T>
    T* Find(const char* name)
    {
        return window_.findChild<T*>(name);
    }
    QListView* List() { return Find<QListView>("samml_list"); }
    QPlainTextEdit* Description() { return Find<QPlainTextEdit>("samml_text"); }
    void Trigger(const char* entry) { Find<QAction>(entry)->trigger(); }
    // In both menus, which ask the clipboard as they open.
    bool CanInsert()
    {
        auto* popup = Find<QMenu>("samml_pop");
        QAction* const inside = popup->findChild<QAction*>("samml_insert");
        popup->popup({});
        popup->close();
        const bool possible = inside->isEnabled();
        Q_EMIT QApplication::clipboard()->dataChanged();
        EXPECT_TRUE(inside->isEnabled()) << "the key is to work until it is known";
        Q_EMIT menus_.Menu("mn_samml").aboutToShow();
        EXPECT_EQ(Find<QAction>("mn_insert")->isEnabled(), possible);
        return possible;
    }
    std::string Caption() { return control_.Window().windowTitle().toStdString(); }

    QMainWindow window_;
    Menus menus_{window_};
    ui::ScriptedDialogs dialogs_;
    document::DisplayAttributes attributes_;
    CollectionControl control_{*this, attributes_, menus_, dialogs_, &window_};
    std::vector<std::string> drawn_;
    int changes_ = 0;
};

TEST_F(CollectionControlTest, TheCurrentPlotBecomesAnEntryWhoseNameIsTyped)
{
    EXPECT_EQ(Caption(), "Sammlung: (noch ohne Bezeichnung)");
    EXPECT_EQ(Find<QLabel>("samml_eintrag")->text(), " (kein Eintrag angewählt)");
    EXPECT_FALSE(Find<QAction>("mn_einakt")->isEnabled());
    Trigger("mn_add");
    EXPECT_EQ(Text(0, Column::ShortText), "Eintrag 1");
    TypeName("  {Parabel} nach oben ");
    EXPECT_EQ(Text(0, Column::ShortText), "(Parabel) nach oben");
    EXPECT_EQ(Text(0, Column::Functions), "f(x)=x^2");
    EXPECT_EQ(Find<QLabel>("samml_detail[2]")->text(), "f(x)=x^2");
    EXPECT_EQ(Find<QLabel>("samml_eintrag")->text(), "(Parabel) nach oben");
    EXPECT_EQ(Caption(), "Sammlung: (noch ohne Bezeichnung) *");
    EXPECT_EQ(changes_, 2);
    Key(Qt::Key_Return);
    EXPECT_EQ(drawn_, std::vector<std::string>{"(Parabel) nach oben"});
    Trigger("mn_newentry");
    TypeName("   ");
    EXPECT_EQ(Text(1, Column::ShortText), "Eintrag 2") << "an entry always has a name";
    EXPECT_EQ(Text(1, Column::Functions), "");
    control_.Editor().SetModified(false);
    control_.SetFileName("Schule.txt");
    EXPECT_EQ(Caption(), "Sammlung: Schule.txt");
}

TEST_F(CollectionControlTest, ANameBeingTypedIsTakenBeforeSaving)
{
    Trigger("mn_add");
    auto* field = List()->viewport()->findChild<QLineEdit*>("samml_name");
    ASSERT_NE(field, nullptr);
    QTest::keyClicks(field, "Gerade");
    control_.FinishEditing();
    EXPECT_EQ(Text(0, Column::ShortText), "Gerade");
}

TEST_F(CollectionControlTest, ProtectedEntriesChangeOnlyAfterAQuestion)
{
    struct ProtectedCase
    {
        const char* question;
        std::function<void()> action;
        std::string names;  // after a yes
    };
    const ProtectedCase cases[] = {
        {"gelöscht", [this] { Key(Qt::Key_Delete); }, "ac"},
        {"ausgeschnitten", [this] { Key(Qt::Key_X, Qt::ControlModifier); }, "ac"},
        {"umbenannt",
         [this] {
             Key(Qt::Key_F2);
             if (dialogs_.yes) TypeName("x");
         },
         "axc"},
        {"geändert", [this] { Trigger("samml_take"); }, "aBc"},
        {"geändert", [this] { TypeDescription("xy"); }, "aBc"},
    };
    for (const ProtectedCase& row : cases) {
        SCOPED_TRACE(row.question);
        control_.Entries().entries.clear();
        Fill("aBc");
        Select({1});
        const document::Collection before = control_.Entries();
        dialogs_.yes = false;
        dialogs_.questions.clear();
        row.action();
        EXPECT_EQ(control_.Entries(), before);
        EXPECT_EQ(Description()->toPlainText(), "");
        EXPECT_EQ(dialogs_.questions.size(), 1U);
        dialogs_.yes = true;
        dialogs_.questions.clear();
        Select({0});
        Select({1});
        row.action();
        EXPECT_EQ(Names(), row.names);
        EXPECT_NE(control_.Entries(), before);
        EXPECT_EQ(dialogs_.questions,
                  std::vector<std::string>{"Achtung!|Der Eintrag „B“ ist geschützt. Soll er "
                                           "trotzdem " +
                                           std::string(row.question) + " werden?|Nein"});
    }
    Select({0, 2});
    dialogs_.questions.clear();
    Key(Qt::Key_Delete);
    EXPECT_TRUE(dialogs_.questions.empty());
}

TEST_F(CollectionControlTest, EntriesAreProtectedAndReleasedTogether)
{
    Fill("aBc");
    Select({0, 1});
    EXPECT_FALSE(Find<QAction>("mn_protect")->isChecked());
    Trigger("mn_protect");
    EXPECT_TRUE(control_.Entries().entries[0].is_protected);
    EXPECT_TRUE(Find<QAction>("mn_protect")->isChecked());
    Trigger("samml_protect");
    EXPECT_FALSE(control_.Entries().entries[1].is_protected);
}

TEST_F(CollectionControlTest, EntriesGoThroughTheClipboardAndChangesAreTakenBack)
{
    Fill("abCd");
    EXPECT_FALSE(CanInsert());
    int plot_undone = 0;
    QObject::connect(Find<QAction>("mn_undo"), &QAction::triggered, [&] { ++plot_undone; });
    Select({1, 2});
    Key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "b\n\nC\n");
    Select({3});
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Names(), "abCbCd");
    EXPECT_TRUE(control_.Entries().entries[4].is_protected);
    Select({5});
    Trigger("mn_insaft");
    EXPECT_EQ(Names(), "abCbCdbC");
    EXPECT_EQ(control_.Window().SelectedPlaces(), (std::vector<std::size_t>{6, 7}));
    Select({0, 3});
    Trigger("mn_cut");
    EXPECT_EQ(Names(), "bCCdbC");
    while (control_.Editor().CanUndo()) Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Names(), "abCd");
    EXPECT_EQ(Caption(), "Sammlung: (noch ohne Bezeichnung)") << "back at what was there";
    Key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Names(), "abCbCd");
    EXPECT_EQ(plot_undone, 0) << "the keys belong to the list";
    List()->selectAll();
    dialogs_.yes = true;
    Trigger("mn_clr");
    EXPECT_EQ(Names(), "");
    EXPECT_EQ(dialogs_.questions.size(), 1U);
    EXPECT_TRUE(CanInsert());
    Trigger("mn_insert");
    EXPECT_EQ(Names(), "ab");
    QApplication::clipboard()->setText("f(x)=x");
    EXPECT_FALSE(CanInsert());
    Key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(Names(), "ab");
}

TEST_F(CollectionControlTest, SelectedEntriesAreDraggedToAnotherPlace)
{
    Fill("abcdef");
    const auto drop = [this](int row, bool lower_half) {
        const QRect box = List()->visualRect(List()->model()->index(row, 0));
        const QPointF place(box.center().x(), lower_half ? box.bottom() - 1 : box.top() + 1);
        QMimeData data;
        QDropEvent event(place, Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        (List()->*(&OpenList::dropEvent))(&event);
        EXPECT_NE(event.dropAction(), Qt::MoveAction) << "the view must not remove them again";
    };
    Select({0, 2});
    drop(3, true);
    EXPECT_EQ(Names(), "bdacef");
    EXPECT_EQ(control_.Window().SelectedPlaces(), (std::vector<std::size_t>{2, 3}));
    drop(0, false);
    EXPECT_EQ(Names(), "acbdef");
    changes_ = 0;
    drop(1, false);
    EXPECT_EQ(changes_, 0) << "they stand there already";
}

TEST_F(CollectionControlTest, TheSearchFiltersAndCommandsWorkOnWhatIsFound)
{
    Fill("abcd");
    control_.Editor().SetText(1, Column::LongText, "Schwebung");
    control_.Editor().SetText(3, Column::Functions, "f(x)=sin(x)");
    auto* search = Find<QLineEdit>("samml_suche");
    Select({2});
    QTest::keyClicks(search, "SIN(");
    EXPECT_EQ(List()->model()->rowCount(), 1);
    EXPECT_FALSE(control_.SelectedEntry());
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(drawn_, std::vector<std::string>{"d"});
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_EQ(List()->model()->rowCount(), 4);
    EXPECT_EQ(control_.SelectedEntry(), 3U);
    QTest::keyClicks(search, "schw");
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_EQ(control_.SelectedEntry(), 3U) << "left out for a while only";
    QTest::keyClicks(search, "b");
    QTest::keyClick(search, Qt::Key_Down);
    Key(Qt::Key_Delete);
    EXPECT_EQ(Names(), "acd");
    Trigger("mn_newentry");
    EXPECT_EQ(search->text(), "") << "a new entry is seen";
}

TEST_F(CollectionControlTest, DescriptionsAreStorableAndShownAsTheyWereTyped)
{
    Fill("ab");
    EXPECT_TRUE(Description()->isReadOnly());
    const char* const texts[] = {
        "Erste Zeile\n\n  eingerückt mit Rand  \nSumme \\n und \\end\\ und {Klammer}\n}\nEnde",
        "[Kurvenplotter]\n[Funktionenplotter]\n*Stern\nend\n",
        "ÄÖÜ ß π ≤ € „so“ 🙂 x²",
    };
    for (const char* text : texts) {
        SCOPED_TRACE(text);
        Select({0});
        Description()->clear();
        TypeDescription(text);
        const std::string stored = Text(0, Column::LongText);
        EXPECT_EQ(document::StorableLongText(stored), stored);
        Select({1});
        EXPECT_EQ(Description()->toPlainText(), "");
        Select({0});
        // A no-break space reads as a blank here; blanks at the ends of lines are not kept.
        QString expected = QString::fromUtf8(text).replace("Rand  \n", "Rand\n").trimmed();
        QString shown = Description()->toPlainText();
        EXPECT_EQ(shown.remove(' '), expected.remove(' '));
    }
    Key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(Text(0, Column::LongText), "") << "clearing is a burst of its own";
}

TEST_F(CollectionControlTest, TheDescriptionsFontIsChosenOrFollowsTheWindow)
{
    const auto points = [this] { return Description()->font().pointSize(); };
    EXPECT_FALSE(Find<QAction>("mn_ivar")->isChecked());
    control_.DescriptionWindow().resize(300, 300);
    control_.DescriptionWindow().show();
    const int small = points();
    control_.DescriptionWindow().resize(900, 300);
    EXPECT_GT(points(), small);
    Trigger("mnfs1[7]");
    EXPECT_EQ(points(), 30);
    EXPECT_EQ(attributes_.description_points, 30);
    EXPECT_TRUE(Find<QAction>("mn_ivar")->isChecked());
    control_.DescriptionWindow().resize(300, 300);
    EXPECT_EQ(points(), 30);
    Trigger("mn_ivar");
    EXPECT_EQ(points(), small);
}

int PixelsOfGraph(const std::string& functions)
{
    document::CollectionEntry entry;
    entry.Set(Column::Functions, functions);
    const QImage picture = DrawPreview(entry, {45, 30});
    EXPECT_EQ(picture.size(), QSize(45, 30));
    return render::CountPixels(picture,
                               [](const QColor& pixel) { return pixel.saturation() > 60; });
}

TEST(EntryPreview, ShowsThePlotButNothingThatTakesLong)
{
    EXPECT_GT(PixelsOfGraph("f(x)=2*sin(x)"), 30);
    EXPECT_GT(PixelsOfGraph("f(x)=x/3\r\nF(x)=integral(f(x))\r\ng(x)=f'(x)+f(f(x))"), 30);
    EXPECT_EQ(PixelsOfGraph("f(x)="), 0);
    std::string nested = "f(x)=sin(x)";
    for (char name = 'g'; name <= 'r'; ++name) {
        const std::string former(1, static_cast<char>(name - 1));
        nested += "\r\n" + std::string(1, name) + "(x)=" + former + "(" + former + "(2" + former +
                  "'(x)))";
    }
    EXPECT_EQ(PixelsOfGraph(nested), 0) << "it would take minutes";
}

}  // namespace
}  // namespace korvinth::app
