#include "app/main_window.h"

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSlider>
#include <cmath>
#include <set>
#include <vector>

#include "tests/render/pixel_count.h"
#include "ui/menu_key.h"
#include "window_fixture.h"

namespace korvinth::app {
namespace {

class MainWindowTest : public ShownWindow
{
protected:
    template <class T>
    T* InWindow(const char* child_window, const char* name)
    {
        return Find(child_window)->template findChild<T*>(name);
    }
    QString Status() { return Find<QLabel>("status")->text(); }
    QString Outcome() { return Find<QLabel>("outcome")->text(); }
    QSize PictureSize() { return Graph()->AreaSize() * Graph()->devicePixelRatioF(); }
    double Value(const char* name)
    {
        const document::Parameter* found = application_.Document().FindParameter(name);
        return found == nullptr ? NAN : found->value;
    }
    int PixelsOfSlot(short slot)
    {
        const auto& slots = application_.Document().attributes.slots;
        return render::CountPixels(Picture(), slots[document::SlotIndex{slot}].colour);
    }
    QRect Frame(const char* name) { return Find<QMdiSubWindow>(name)->geometry(); }
    QSlider* Slider(const char* window) { return InWindow<QSlider>(window, "HScroll1"); }
};

TEST_F(MainWindowTest, EnterDrawsTheTypedTermWhoseSlidersMoveThePicture)
{
    Show();
    EXPECT_EQ(PixelsOfSlot(0), 0);
    Type(0, "f(x)=a*sin(x)+b");
    EXPECT_EQ(Status(), "o.k.");
    EXPECT_EQ(Outcome(), "Ok.");
    EXPECT_EQ(Row(0)->text(), "f(x) = a*sin(x)+b");
    EXPECT_GT(PixelsOfSlot(0), 200);
    ASSERT_TRUE(Find("para[26]") != nullptr && Find("para[26]")->isVisible());
    const QImage before = Picture();
    QTest::keyClick(Slider("para[26]"), Qt::Key_PageUp);
    EXPECT_NEAR(Value("a"), 2, 1e-9);
    EXPECT_NE(Picture(), before);
}

TEST_F(MainWindowTest, AnErrorIsShownAndTheOtherRowsAreDrawn)
{
    Show();
    Type(0, "f(x)=x");
    Type(1, "g(x)=");
    EXPECT_TRUE(Status().endsWith("Funktionsterm fehlt!"));
    EXPECT_EQ(Row(1)->text(), "g(x)=") << "what is typed stays";
    EXPECT_GT(PixelsOfSlot(0), 100);
    Type(1, "g(x)=(x");
    EXPECT_TRUE(Status().contains("g(x)"));
    EXPECT_TRUE(Outcome().contains("g(x)"));
    EXPECT_GT(PixelsOfSlot(0), 100);
    Type(1, "");
    EXPECT_EQ(Status(), "o.k.");
}

TEST_F(MainWindowTest, OneCommandStartsAndStopsAllAnimations)
{
    Show();
    Type(0, "f(x)=a*x");
    application_.Document().FindParameter("a")->step = 0.25;
    EXPECT_EQ(Find<QAction>("mn_timergo")->text(), "Alle &Timer gleichzeitig starten");
    Trigger("mn_timergo");
    EXPECT_EQ(Find<QAction>("mn_timergo")->text(), "Alle &Timer anhalten");
    const QImage before = Picture();
    ASSERT_TRUE(QTest::qWaitFor([&] { return Value("a") > 1.6; }));
    EXPECT_NE(Picture(), before);
    Trigger("mn_timergo");
    EXPECT_FALSE(window_.PlotSession().Animation().Active());
    Trigger("mn_timergo");
    Type(0, "f(x)=a*x^2");
    EXPECT_EQ(Find<QAction>("mn_timergo")->text(), "Alle &Timer gleichzeitig starten");
}

TEST_F(MainWindowTest, UndoAndRedoGoThroughTheAppliedPlots)
{
    Show();
    EXPECT_FALSE(Enabled("mn_undo"));
    Type(0, "f(x)=x");
    const QImage line = Picture();
    Type(0, "f(x)=a*x^2");
    const QImage parabola = Picture();
    Row(0)->clear();
    QTest::keyClicks(Row(0), "unfinished");
    Trigger("mn_undo");
    EXPECT_EQ(Row(0)->text(), "f(x) = x");
    EXPECT_EQ(Picture(), line);
    EXPECT_FALSE(Find("para[26]")->isVisible());
    Trigger("mn_redo");
    EXPECT_EQ(Row(0)->text(), "f(x) = a*x^2");
    EXPECT_EQ(Picture(), parabola);
    EXPECT_FALSE(Enabled("mn_redo"));
    Trigger("mn_undo");
    Trigger("mn_undo");
    EXPECT_EQ(Row(0)->text(), "");
    EXPECT_FALSE(Enabled("mn_undo"));
}

TEST_F(MainWindowTest, CtrlZBelongsToATextFieldThatHasTheFocus)
{
    Show();
    Type(0, "f(x)=x");
    Row(1)->setFocus();
    QTest::keyClicks(Row(1), "abc");
    QTest::keyClick(Row(1), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_NE(Row(1)->text(), "abc");
    EXPECT_EQ(Row(0)->text(), "f(x) = x");
    auto* colour = Find("fcol[0]");
    colour->setFocus();
    QTest::keyClick(colour, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Row(0)->text(), "");
}

TEST_F(MainWindowTest, MarksMirrorTheSwitchesAndTogglingTwiceRestoresThePicture)
{
    Show();
    Type(0, "f(x)=sin(x)");
    const QImage before = Picture();
    for (const char* entry :
         {"mn_axevis", "mn_viewnumb", "mn_viewnumby", "mn_helpline", "mn_helpdopp", "mn_axname"}) {
        SCOPED_TRACE(entry);
        const bool checked = Checked(entry);
        Trigger(entry);
        EXPECT_NE(Checked(entry), checked);
        EXPECT_NE(Picture(), before);
        Trigger(entry);
        EXPECT_EQ(Checked(entry), checked);
        EXPECT_EQ(Picture(), before);
    }
}

TEST_F(MainWindowTest, TheAngleModeIsExclusiveAndRedraws)
{
    Show();
    Type(0, "f(x)=3*sin(x)");
    const QImage radians = Picture();
    EXPECT_TRUE(Checked("mn_rad"));
    Trigger("mn_deg");
    EXPECT_TRUE(Checked("mn_deg"));
    EXPECT_FALSE(Checked("mn_rad"));
    EXPECT_NE(Picture(), radians);
    EXPECT_NEAR(application_.Parser().EvalText("sin(90)"), 1, 1e-12);
    Trigger("mn_undo");
    EXPECT_TRUE(Checked("mn_rad"));
    EXPECT_EQ(Picture(), radians);
}

TEST_F(MainWindowTest, IntegralFunctionsAreFoundUnlessSwitchedOff)
{
    Show();
    Type(0, "f(x)=x");
    Type(1, "g(x)=F(x)");
    EXPECT_TRUE(Find("para[1]") != nullptr && Find("para[1]")->isVisible());
    Trigger("mn_autoint");
    EXPECT_FALSE(Find("para[1]")->isVisible());
}

TEST_F(MainWindowTest, ClearingAsksWhenThereIsMoreThanOneRow)
{
    Show();
    Type(0, "f(x)=x");
    Trigger("mn_allclr");
    EXPECT_TRUE(dialogs_.questions.empty());
    EXPECT_EQ(Row(0)->text(), "");
    EXPECT_EQ(PixelsOfSlot(0), 0);
    Type(0, "f(x)=x");
    Type(1, "g(x)=x^2");
    Trigger("mn_allclr");
    EXPECT_EQ(dialogs_.questions.size(), 1U);
    EXPECT_EQ(Row(1)->text(), "g(x) = x^2") << "answered with no";
    dialogs_.yes = true;
    Trigger("mn_allclr");
    EXPECT_EQ(Row(1)->text(), "");
    Trigger("mn_undo");
    EXPECT_EQ(Row(1)->text(), "g(x) = x^2");
}

TEST_F(MainWindowTest, TheRowMenuChangesItsGraph)
{
    Show();
    Type(0, "f(x)=a*x");
    Type(1, "xa(t)=3*cos(t)");
    Type(2, "ya(t)=3*sin(t)");
    const auto slot = [&](int number) -> const document::FunctionSlot& {
        return application_.Document().slots[document::SlotIndex{static_cast<short>(number)}];
    };
    Row(0)->setFocus();
    QTest::keyClick(Row(0), Qt::Key_PageUp);
    auto* menu = Find<QMenu>("mn_pop1");
    ASSERT_TRUE(menu->isVisible());
    menu->close();
    EXPECT_TRUE(Checked("mng_vis"));
    EXPECT_TRUE(Checked("mng_point[0]"));
    EXPECT_FALSE(Find<QAction>("mng_back")->isVisible());
    Trigger("mng_point[4]");
    EXPECT_EQ(slot(0).point_radius, 4);
    dialogs_.number = 7;
    Trigger("mng_width");
    EXPECT_EQ(dialogs_.offered_numbers.back(), 2);
    EXPECT_EQ(application_.Document().attributes.slots[document::SlotIndex{0}].width, 7);
    Trigger("mng_point[0]");
    const int solid = PixelsOfSlot(0);
    Trigger("mng_line[1]");
    EXPECT_EQ(application_.Document().attributes.slots[document::SlotIndex{0}].type,
              document::LineType::Dash);
    EXPECT_LT(PixelsOfSlot(0), solid * 3 / 4);
    Trigger("mng_family");
    EXPECT_TRUE(slot(0).family_allowed);
    Trigger("mng_vis");
    EXPECT_FALSE(slot(0).visible);
    EXPECT_EQ(PixelsOfSlot(0), 0);

    Row(2)->setFocus();
    QTest::keyClick(Row(2), Qt::Key_PageDown, Qt::ShiftModifier);
    EXPECT_FALSE(slot(1).visible) << "a curve is switched by either of its rows";
}

TEST_F(MainWindowTest, IntervalsAreAppliedInTheirState)
{
    Show();
    Type(0, "f(x)=2");
    const int whole = PixelsOfSlot(0);
    QTest::mouseClick(Find<QPushButton>("btback"), Qt::LeftButton);
    Type(0, "f: ] a ; oo [");
    EXPECT_EQ(Row(0)->text(), "f: ] a ; +oo [");
    EXPECT_TRUE(Find("para[26]") != nullptr && Find("para[26]")->isVisible());
    EXPECT_LT(PixelsOfSlot(0), whole * 2 / 3);
    Trigger("mn_undo");
    EXPECT_EQ(PixelsOfSlot(0), whole);
}

TEST_F(MainWindowTest, ARangeMayNameAParameterAndFollowsItsSlider)
{
    Show();
    Trigger("mn_inter");
    QLineEdit* lower = Find("interform")->findChild<QLineEdit*>("xu");
    lower->clear();
    QTest::keyClicks(lower, "-4*k");
    QTest::keyClick(lower, Qt::Key_Return);
    ASSERT_TRUE(Find("para[26]") != nullptr && Find("para[26]")->isVisible());
    EXPECT_EQ(application_.View().x_min, -4);
    EXPECT_EQ(lower->text(), "-4*k");
    const QImage before = Picture();
    QTest::keyClick(Slider("para[26]"), Qt::Key_PageUp);
    EXPECT_NEAR(application_.View().x_min, -8, 1e-9);
    EXPECT_NE(Picture(), before);
    Trigger("mng_back");
    EXPECT_EQ(application_.View().x_min, -10) << "the slider left no trace in the history";

    Trigger("mn_undo");
    EXPECT_EQ(application_.View().x_min, -10);
    EXPECT_FALSE(Find("para[26]")->isVisible()) << "a range that brings a parameter is one step";
    EXPECT_FALSE(Enabled("mn_undo"));
    Trigger("mn_redo");
    EXPECT_NEAR(application_.View().x_min, -10, 1e-9) << "as the view was when it was undone";

    lower->setFocus();
    lower->selectAll();
    QTest::keyClicks(lower, "20*c");
    QTest::keyClick(lower, Qt::Key_Return);
    EXPECT_NE(Find<QLabel>("interstatus")->text(), "") << "not below the upper bound";
    EXPECT_EQ(application_.Document().FindParameter("c"), nullptr);
}

TEST_F(MainWindowTest, EscClosesAToolWindowAndTheKeysGoBackToWhereTheyCameFrom)
{
    Show();
    for (const char* entry : {"mn_inter", "mn_spal", "mn_asy", "mn_punkt", "mn_calc"}) {
        SCOPED_TRACE(entry);
        Row(2)->setFocus();
        Trigger(entry);
        QMdiSubWindow* opened = Find<QMdiArea>("area")->activeSubWindow();
        ASSERT_TRUE(opened->isAncestorOf(QApplication::focusWidget()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_FALSE(opened->isVisible());
        EXPECT_EQ(QApplication::focusWidget(), Row(2));
        Trigger(entry);
        EXPECT_TRUE(opened->isAncestorOf(QApplication::focusWidget())) << "it comes back";
        opened->close();
    }
}

// The letters after "&" of what stands in a window.
std::vector<QChar> Mnemonics(const QWidget& window)
{
    QStringList captions;
    for (const auto* label : window.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) captions << label->text();
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) captions << button->text();
    std::vector<QChar> letters;
    for (const QString& caption : captions) {
        const qsizetype place = caption.indexOf('&');
        if (place >= 0) letters.push_back(caption[place + 1].toLower());
    }
    return letters;
}

TEST_F(MainWindowTest, MnemonicsOfAWindowClashNeitherWithEachOtherNorWithTheMenus)
{
    std::set<QChar> menus;
    for (const QAction* menu : window_.menuBar()->actions()) {
        menus.insert(menu->text()[menu->text().indexOf('&') + 1].toLower());
    }
    for (const char* entry : {"mn_inter", "mn_spal", "mn_asy", "mn_punkt", "mn_calc"}) {
        Trigger(entry);
    }
    for (const char* name : {"interform", "Parameter", "Asymptoten", "Punkte", "minicalc"}) {
        SCOPED_TRACE(name);
        std::set<QChar> taken = menus;
        EXPECT_FALSE(Mnemonics(*Find(name)).empty());
        for (const QChar letter : Mnemonics(*Find(name))) {
            EXPECT_TRUE(taken.insert(letter).second) << QString(letter).toStdString();
        }
    }
}

TEST_F(MainWindowTest, TermsGoToTheClipboard)
{
    Show();
    Type(0, "f(x)=a*x");
    Type(1, "g(x)=x^2");
    Trigger("mn_copytermo");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "f(x)=a*x\r\ng(x)=x^2");
    Trigger("mn_paracopy");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "f(x)=1*x\r\ng(x)=x^2");
}

TEST_F(MainWindowTest, TheArrangementFollowsTheSizeWithoutOverlap)
{
    Show();
    for (const QSize size : {QSize(1024, 600), QSize(1920, 1080), QSize(1280, 800)}) {
        window_.resize(size);
        const QRect room(QPoint(), Find<QMdiArea>("area")->viewport()->size());
        ASSERT_TRUE(QTest::qWaitFor([&] {
            return Frame("graphform_frame").right() == room.right() &&
                   Graph()->Picture().size() == PictureSize();
        }));
        const QRect terms = Frame("termform_frame"), sliders = Frame("paracolumn_frame"),
                    graph = Frame("graphform_frame");
        EXPECT_FALSE(terms.intersects(sliders) || terms.intersects(graph) ||
                     sliders.intersects(graph));
        EXPECT_TRUE(room.contains(terms.united(sliders).united(graph)));
        for (const char* content : {"termform", "paracolumn", "graphform"}) {
            SCOPED_TRACE(content);
            const QSize least = Find(content)->minimumSizeHint();
            EXPECT_GE(Find(content)->width(), least.width());
            EXPECT_GE(Find(content)->height(), least.height());
        }
        EXPECT_GT(graph.width(), size.width() / 2);
        EXPECT_NEAR(application_.View().xmu, application_.View().ymu, 1e-9);
    }
}

TEST_F(MainWindowTest, ChildrenCloseComeBackAndFillTheRoom)
{
    Show();
    const QRect docked = Frame("graphform_frame");
    Find<QMdiSubWindow>("termform_frame")->close();
    EXPECT_FALSE(Find("termform")->isVisible());
    Find<QMdiSubWindow>("paracolumn_frame")->close();
    EXPECT_EQ(Frame("sammlung_frame").height(), docked.height()) << "it has the column alone";
    Find<QMdiSubWindow>("sammlung_frame")->close();
    EXPECT_EQ(Frame("graphform_frame").left(), 0);
    Trigger("mn_term");
    EXPECT_TRUE(Find("termform")->isVisible());
    Trigger("mn_dock");
    EXPECT_TRUE(Find("paracolumn")->isVisible());
    EXPECT_EQ(Frame("graphform_frame"), docked);

    Trigger("mn_inter");
    EXPECT_TRUE(Find("interform")->isVisible());
    EXPECT_LT(Frame("graphform_frame").height(), docked.height());
    EXPECT_FALSE(Frame("graphform_frame").intersects(Frame("interform_frame")));
    Trigger("mn_ghm");
    EXPECT_EQ(Frame("graphform_frame").height(), docked.height());
}

TEST_F(MainWindowTest, AFreeGraphStaysWhereItWasPut)
{
    Show();
    const QRect docked = Frame("graphform_frame");
    Trigger("mn_gri");
    EXPECT_TRUE(Checked("mn_gri"));
    Find<QMdiSubWindow>("graphform_frame")->setGeometry(50, 60, 500, 300);
    window_.resize(1300, 820);
    QApplication::processEvents();
    EXPECT_EQ(Frame("graphform_frame"), QRect(50, 60, 500, 300));
    Trigger("mn_ghm");
    EXPECT_EQ(Frame("graphform_frame").top(), 0);
    EXPECT_EQ(Frame("graphform_frame").width(), 500);
    EXPECT_GT(Frame("graphform_frame").height(), docked.height());
    window_.resize(1280, 800);
    QApplication::processEvents();
    Trigger("mn_dock");
    EXPECT_FALSE(Checked("mn_gri"));
    EXPECT_EQ(Frame("graphform_frame"), docked);
}

TEST_F(MainWindowTest, AnEntryOfTheCollectionDrawsItsPlotAgain)
{
    Show();
    EXPECT_TRUE(Find("sammlung")->isVisible());
    Type(0, "f(x)=a*x");
    Trigger("mn_add");
    window_.Entries().FinishEditing();
    const QImage straight = Picture();
    Type(0, "f(x)=x^2");
    Trigger("mn_add");
    window_.Entries().FinishEditing();
    EXPECT_NE(Picture(), straight);
    auto* list = Find<QListView>("samml_list");
    list->setCurrentIndex(list->model()->index(0, 0));
    Trigger("mn_einakt");
    EXPECT_EQ(Row(0)->text(), "f(x) = a*x");
    EXPECT_EQ(Picture(), straight);
    Trigger("mn_undo");
    EXPECT_EQ(Row(0)->text(), "f(x) = x^2");

    Trigger("mn_dtl");
    EXPECT_TRUE(Find("sammtext")->isVisible());
    Find<QMdiSubWindow>("sammlung_frame")->close();
    Trigger("mn_col");
    EXPECT_TRUE(Find("sammlung")->isVisible());
}

TEST_F(MainWindowTest, CtrlTabGoesRoundTheWindows)
{
    Show();
    Type(0, "f(x)=a*x");
    Row(0)->setFocus();
    std::vector<std::string> visited;
    for (int step = 0; step < 4; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        visited.push_back(Find<QMdiArea>("area")->activeSubWindow()->objectName().toStdString());
        const QMdiSubWindow* active = Find<QMdiArea>("area")->activeSubWindow();
        EXPECT_TRUE(active->isAncestorOf(QApplication::focusWidget()));
        EXPECT_NE(active, QApplication::focusWidget()) << "a control has the keys";
    }
    EXPECT_EQ(visited, (std::vector<std::string>{"paracolumn_frame", "graphform_frame",
                                                 "sammlung_frame", "termform_frame"}));
}

TEST_F(MainWindowTest, KeysMoveAndSizeFreeWindows)
{
    Show();
    Trigger("mn_asy");
    const QWidget* frame = Find("Asymptoten_frame");
    const QRect before = frame->geometry();
    constexpr auto kMove = Qt::AltModifier;
    QWidget* focused = QApplication::focusWidget();
    QTest::keyClick(focused, Qt::Key_Left, kMove);
    EXPECT_EQ(frame->geometry(), before.translated(-20, 0));
    for (int i = 0; i < 100; ++i) QTest::keyClick(focused, Qt::Key_Up, kMove);
    EXPECT_EQ(frame->y(), 0) << "it stays within reach";
    QTest::keyClick(focused, Qt::Key_Down, kMove | Qt::ShiftModifier);
    EXPECT_EQ(frame->height(), before.height() + 20);
    const QRect docked = Find("termform_frame")->geometry();
    QTest::keyClick(Row(0), Qt::Key_Right, kMove);
    EXPECT_EQ(Find("termform_frame")->geometry(), docked);
}

TEST_F(MainWindowTest, ARangeWindowWithoutRoomIsFreeAndWhole)
{
    Show(640, 360);
    Trigger("mn_inter");
    const QWidget* frame = Find("interform_frame");
    EXPECT_TRUE(frame->parentWidget()->rect().contains(frame->geometry()));
    EXPECT_GE(Find("interform")->height(), Find("interform")->minimumSizeHint().height());
    window_.resize(1280, 800);
    EXPECT_EQ(frame->x(), Find("graphform_frame")->x()) << "below the graph";
}

TEST_F(MainWindowTest, InAVeryLowWindowContentsScrollAndTheCollectionWaits)
{
    Show(900, 310);
    const auto resized = [this](QSize size, const auto& then) {
        window_.resize(size);
        return QTest::qWaitFor(then);
    };
    QWidget* const terms = Find("termform");
    QWidget* const collection = Find("sammlung");
    const auto scrolls = [&] { return terms->height() > terms->parentWidget()->height(); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return !collection->isVisible(); }));
    Row(0)->setFocus();
    ASSERT_TRUE(resized({900, 220}, scrolls));
    EXPECT_GE(terms->height(), terms->minimumSizeHint().height());
    EXPECT_EQ(window_.focusWidget(), Row(0));
    Trigger("mn_col");
    EXPECT_TRUE(collection->isVisible()) << "above the others, since it is wanted";
    Find<QMdiSubWindow>("sammlung_frame")->close();
    EXPECT_FALSE(collection->isVisible());

    ASSERT_TRUE(resized({900, 700}, [&] { return !scrolls() && terms->height() > 200; }));
    EXPECT_FALSE(collection->isVisible()) << "it was closed";
    Trigger("mn_dock");
    EXPECT_TRUE(collection->isVisible());
    EXPECT_EQ(Frame("sammlung_frame").bottom(), Frame("graphform_frame").bottom());
    ASSERT_TRUE(resized({900, 310}, [&] { return !collection->isVisible(); }));
    EXPECT_TRUE(resized({900, 700}, [&] { return collection->isVisible(); }));
}

TEST_F(MainWindowTest, AFamilyWithoutCurvesTellsWhereTheirNumberIs)
{
    Show();
    Type(0, "f(x)=a*x");
    Trigger("mng_family");
    EXPECT_EQ(Outcome(), "Ok.") << "there is no parameter yet";
    window_.PlotSession().Parameters().SetFamily(document::ParameterIndex{26}, true);
    EXPECT_TRUE(Outcome().contains("noch keine weiteren Kurven"));
    application_.Document().attributes.family_count = 3;
    Type(0, "f(x)=a*x");
    window_.PlotSession().Parameters().SetFamily(document::ParameterIndex{26}, true);
    EXPECT_EQ(Outcome(), "Ok.");
}

TEST_F(MainWindowTest, TheCalculatorFollowsThePlot)
{
    Show();
    Type(0, "f(x)=a*x");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_R, Qt::ControlModifier);
    auto* term = InWindow<QLineEdit>("minicalc", "Text1");
    auto* line = InWindow<QLabel>("minicalc", "Label1");
    EXPECT_EQ(QApplication::focusWidget(), term);
    QTest::keyClicks(term, "f(2)+sin(90)*0");
    QTest::keyClick(term, Qt::Key_Return);
    EXPECT_EQ(line->text(), "2");
    QTest::keyClick(Slider("para[26]"), Qt::Key_PageUp);
    EXPECT_EQ(line->text(), "4") << "the slider";
    Type(0, "f(x)=a*x^3");
    EXPECT_EQ(line->text(), "16") << "an applied plot";
    Trigger("mn_undo");
    EXPECT_EQ(line->text(), "4");
    term->setText("sin(90)");
    Trigger("mn_deg");
    EXPECT_EQ(line->text(), "4") << "what is being typed has no result yet";
    QTest::keyClick(term, Qt::Key_Return);
    EXPECT_EQ(line->text(), "1");
    Trigger("mn_rad");
    EXPECT_EQ(line->text(), "0.894") << "the angle mode";
    QTest::keyClick(term, Qt::Key_Escape);
    EXPECT_FALSE(term->isVisible());
    Trigger("mn_calc");
    EXPECT_EQ(term->text(), "sin(90)") << "kept between openings";
}

TEST_F(MainWindowTest, FreeWindowsStayAboveTheDockedOnes)
{
    Show();
    for (const char* entry : {"mn_spal", "mn_asy", "mn_calc", "mn_asy"}) Trigger(entry);
    const std::vector<std::string> free = {"Parameter_frame", "minicalc_frame", "Asymptoten_frame"};
    const auto top = [this](std::ptrdiff_t count) {
        std::vector<std::string> names;
        for (const QMdiSubWindow* window :
             Find<QMdiArea>("area")->subWindowList(QMdiArea::StackingOrder)) {
            if (window->isVisible()) names.push_back(window->objectName().toStdString());
        }
        return std::vector<std::string>(names.end() - count, names.end());
    };
    EXPECT_EQ(top(3), free);
    for (const char* docked : {"mn_graph", "mn_term"}) {
        SCOPED_TRACE(docked);
        Trigger(docked);
        EXPECT_EQ(top(3), free);
    }
    QTest::mouseClick(Find("graphform"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_EQ(Find<QMdiArea>("area")->activeSubWindow()->objectName(), "graphform_frame");
    EXPECT_EQ(top(3), free);
    Trigger("mn_gri");
    Trigger("mn_graph");
    EXPECT_EQ(top(1), std::vector<std::string>{"graphform_frame"}) << "it is free itself";
    Trigger("mn_dock");
    EXPECT_EQ(top(3), free);
}

TEST_F(MainWindowTest, NastyInputGetsAnAnswerAndIsKept)
{
    Show();
    const QString texts[] = {QString(10'000, '('), QString("f(x)=") + QString("x+").repeated(5000),
                             QString::fromUtf8("🙂\u202Eabc"), QString(200, 'a') + "(x)=x"};
    for (const QString& text : texts) {
        for (int row = 0; row < document::kSlotCount; ++row) Row(row)->setText(text);
        QTest::keyClick(Row(0), Qt::Key_Return);
        EXPECT_NE(Status(), "o.k.");
        EXPECT_TRUE(Row(12)->text().endsWith(text.right(10)));
    }
}

TEST_F(MainWindowTest, TellsThatItCloses)
{
    Show();
    bool told = false;
    QObject::connect(&window_, &MainWindow::closing, &window_, [&] { told = true; });
    Trigger("mn_close");
    EXPECT_FALSE(window_.isVisible());
    EXPECT_TRUE(told);
}

// The graph by keys and in words.
class GraphByKeysTest : public MainWindowTest
{
protected:
    void Show()
    {
        ShownWindow::Show();
        area_ = Find("Picture1");
        area_->setFocus();
    }
    QString Press(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier)
    {
        QTest::keyClick(area_, key, keys);
        return Readout();
    }
    QString Readout() { return Graph()->findChild<QLabel*>("Label1")->text(); }
    QString Told(QAccessible::Text kind)
    {
        return QAccessible::queryAccessibleInterface(area_)->text(kind);
    }
    // Of the value that the mark shows, in pixels from the area's left edge.
    double MarkedColumn()
    {
        const auto point = application_.Trace().Point();
        return point ? application_.View().AreaX(point->x) / 15 : NAN;
    }

    QWidget* area_ = nullptr;
};

TEST_F(GraphByKeysTest, AMarkGoesAlongTheGraphsAndItsValuesAreTold)
{
    Show();
    EXPECT_EQ(Press(Qt::Key_T), "Es gibt keinen sichtbaren Graphen.");
    EXPECT_FALSE(Checked("mng_trace"));
    Type(0, "f(x)=x^2");
    Type(1, "g(x)=3");
    area_->setFocus();
    EXPECT_EQ(Press(Qt::Key_T), "x = 0   y = 0   f(0) = 0");
    EXPECT_TRUE(Checked("mng_trace"));
    EXPECT_TRUE(Checked("mn_trace"));
    EXPECT_EQ(Told(QAccessible::Name), "f(0) = 0");
    const double middle = MarkedColumn();
    Press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_NEAR(MarkedColumn(), middle + 10, 0.5);
    Press(Qt::Key_Right);
    EXPECT_NEAR(MarkedColumn(), middle + 11, 0.5);
    Press(Qt::Key_Left);
    EXPECT_TRUE(Press(Qt::Key_Down).contains("y = 3   g(")) << Readout().toStdString();
    EXPECT_TRUE(Told(QAccessible::Value).startsWith("g(0,"));
    EXPECT_NEAR(MarkedColumn(), middle + 10, 0.5);
    QTest::mouseMove(area_, {5, 5});
    EXPECT_TRUE(Readout().contains("g(")) << "the pointer's mark gives way";
    EXPECT_TRUE(application_.Views().History().Empty()) << "the view is where it was";
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Checked("mn_trace"));
    EXPECT_EQ(Told(QAccessible::Name), "Zeichenfläche");
    Press(Qt::Key_Right);
    EXPECT_EQ(application_.View().x_min, -8) << "the arrow scrolls again";
}

TEST_F(GraphByKeysTest, TheMenuKeyAsksForTheGraphUnderTheMark)
{
    Show();
    Type(0, "f(x)=x^2");
    Type(1, "g(x)=3");
    Type(0, "f(x)=x^2");
    area_->setFocus();
    for (const Qt::Key key : {Qt::Key_T, Qt::Key_Down}) Press(key);
    ui::MenuKey menu_key;
    qApp->installEventFilter(&menu_key);
    Press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_EQ(Find<ui::TermForm>("termform")->CurrentRow(), document::SlotIndex{1});
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    QApplication::activePopupWidget()->close();
}

TEST_F(GraphByKeysTest, TheViewFollowsTheMarkInOneStepOfItsHistory)
{
    Show();
    Type(0, "f(x)=x^3");
    Trigger("mn_trace");
    EXPECT_TRUE(area_->hasFocus());
    const auto visible = [this] {
        const render::ViewRange& view = application_.View();
        const double y = application_.Trace().Point()->y;
        return y >= view.y_min && y <= view.y_max;
    };
    Press(Qt::Key_End);
    EXPECT_TRUE(visible());
    for (int i = 0; i < 5; ++i) Press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_TRUE(visible());
    EXPECT_GT(application_.View().y_min, 900);
    application_.Views().PopView();
    EXPECT_EQ(application_.View().x_min, -10);
    EXPECT_TRUE(application_.Views().History().Empty());
    Picture();
    EXPECT_TRUE(Readout().startsWith("f(")) << "out of sight it still tells its value";
    Type(0, "");
    Picture();
    EXPECT_FALSE(Checked("mn_trace")) << "the graph is gone";
}

TEST_F(GraphByKeysTest, ThePictureIsToldInWordsOnceItRests)
{
    Show();
    Type(0, "f(x)=a*x²");
    QTRY_VERIFY(Told(QAccessible::Description).contains("f(x) = a*x², blau. a = 1"));
    EXPECT_TRUE(Told(QAccessible::Description).startsWith("x von −10 bis 10, y von "));
    QTest::keyClick(Slider("para[26]"), Qt::Key_PageUp);
    EXPECT_TRUE(Told(QAccessible::Description).endsWith("a = 1")) << "not for every picture";
    QTRY_VERIFY(Told(QAccessible::Description).endsWith("a = 2"));
}

}  // namespace
}  // namespace korvinth::app
