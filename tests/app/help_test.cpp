// The help: its pages say what the program has, and F1 finds them.
#include <QListWidget>
#include <QMessageBox>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QToolButton>
#include <memory>
#include <set>

#include "app/help_control.h"
#include "app/plot_picture.h"
#include "app/program.h"
#include "term/builtins.h"
#include "ui/child_window.h"
#include "ui/help_window.h"
#include "window_fixture.h"

namespace korvinth::app {
namespace {

std::set<QString> AllMatches(const QString& text, const char* pattern)
{
    std::set<QString> found;
    auto matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext()) found.insert(matches.next().captured(1));
    return found;
}

TEST(HelpPages, LeadOnlyToPagesThatExistAndDrawTheirPictures)
{
    const ui::HelpPages pages({});
    int pictures = 0;
    for (const ui::HelpPage& page : pages.All()) {
        SCOPED_TRACE(page.name.toStdString());
        EXPECT_FALSE(page.title.isEmpty());
        for (const QString& link : AllMatches(page.html, "href=\"([^\"]*)\"")) {
            const ui::HelpPage* target = pages.Find(link.section('#', 0, 0));
            ASSERT_NE(target, nullptr) << link.toStdString();
            const QString place = link.section('#', 1);
            if (!place.isEmpty()) {
                EXPECT_TRUE(target->html.contains("id=\"" + place + "\""));
            }
        }
        for (QString picture : AllMatches(page.html, "src=\"plot:([^\"]*)\"")) {
            std::string fault;
            picture.replace("&lt;", "<");
            EXPECT_FALSE(DrawPlotPicture(picture.toStdString(), 1, &fault).isNull())
                << picture.toStdString() << ": " << fault;
            ++pictures;
        }
    }
    EXPECT_GT(pictures, 5);
}

TEST(HelpPages, NameExactlyTheFunctionsThatThereAre)
{
    const ui::HelpPages pages({});
    const QString page = pages.Find("sprache")->html;
    const QString table = page.section("id=\"funktionen\"", 1).section("</table>", 0, 0);
    const std::set<QString> named = AllMatches(table, "<code>([a-z0-9]+)</code>");
    std::set<std::string> built_in{"min", "max"};  // iif is told of elsewhere
    for (const term::Builtin& function : term::Builtins()) built_in.emplace(function.name);
    for (const std::string& name : built_in) {
        EXPECT_TRUE(named.contains(QString::fromStdString(name))) << name;
    }
    Application application;
    for (const QString& name : named) {
        application.Parser().EvalText((name + "(1)").toStdString());
        EXPECT_NE(application.Parser().GetError(), term::Error::UndefinedFunction)
            << name.toStdString();
    }
}

// What can be chosen in the menus is explained somewhere, by its caption.
TEST(HelpPages, NameEveryMenuEntry)
{
    const ui::HelpPages pages({});
    QString all;
    for (const ui::HelpPage& page : pages.All()) all += page.text + '\n';
    for (const auto table : {MainMenu(), GraphPopUp()}) {
        for (const MenuEntry& entry : table) {
            const bool leads_on = entry.kind == EntryKind::Menu || entry.caption.empty();
            const bool one_of_many = entry.kind == EntryKind::Exclusive;
            if (leads_on || one_of_many) continue;
            const std::string caption = PlainCaption(entry.caption);
            EXPECT_TRUE(all.contains(QString::fromStdString(caption))) << caption;
        }
    }
}

TEST(HelpPages, AreSearchedForAllWords)
{
    const ui::HelpPages pages({});
    EXPECT_EQ(pages.Search("").size(), pages.All().size());
    const std::vector<ui::HelpHit> hits = pages.Search("richtungsumkehr SCHLEIFE");
    ASSERT_EQ(hits.size(), 1U);
    EXPECT_EQ(hits[0].page->name, "parameter");
    EXPECT_TRUE(hits[0].snippet.contains("<b>Richtungsumkehr</b>"));
    EXPECT_EQ(pages.Search("sammlung")[0].page->name, "sammlung");
    EXPECT_TRUE(pages.Search("(.*").empty());
}

class HelpTest : public WindowWithFiles
{
protected:
    void Make(bool can_open)
    {
        window_ = std::make_unique<MainWindow>(application_, dialogs_);
        help_ = std::make_unique<HelpControl>(*window_, Directory(), [=, this](const files::Path&) {
            ++opened_;
            return can_open;
        });
        window_->show();
    }
    MainWindow& Window() override { return *window_; }
    // The title of the page that is shown.
    std::string Shown() const
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == "hilfe" && window->isVisible()) {
                return window->windowTitle().toStdString();
            }
        }
        return "";
    }

    Application application_;
    std::unique_ptr<MainWindow> window_;
    std::unique_ptr<HelpControl> help_;
    int opened_ = 0;
};

TEST_F(HelpTest, EveryWindowHasAPageOfItsOwn)
{
    Make(true);
    for (const char* entry : {"mn_calc", "mn_groptions", "mn_zoomoptions", "mn_spal", "mn_inter",
                              "mn_asy", "mn_punkt", "mn_dtl"}) {
        window_->MenuEntry(entry).trigger();
    }
    std::vector<QWidget*> windows;
    for (auto* child : window_->findChildren<ui::ChildWindow*>())
        windows.push_back(child->Content());
    for (auto* dialog : window_->findChildren<QDialog*>()) windows.push_back(dialog);
    EXPECT_GE(windows.size(), 12U);
    const ui::HelpPages pages({});
    for (const QWidget* content : windows) {
        SCOPED_TRACE(content->objectName().toStdString());
        const auto inner = content->findChildren<QWidget*>();
        ASSERT_FALSE(inner.isEmpty());
        const QString name = ui::HelpPageFor(inner.back());
        EXPECT_NE(name, ui::HelpPageFor(window_.get()));
        EXPECT_NE(pages.Find(name), nullptr);
    }
}

TEST_F(HelpTest, TheKeyOpensThePageOfWhatHasTheFocusInDialogsToo)
{
    Make(true);
    QTest::keyClick(Row(0), Qt::Key_F1);
    EXPECT_EQ(Shown(), "Hilfe: Funktionsterme und Darstellungsintervalle");
    Trigger("mn_groptions");
    QTest::keyClick(Find<QLineEdit>("xname"), Qt::Key_F1);
    EXPECT_EQ(Shown(), "Hilfe: Allgemeine Einstellungen");
    EXPECT_EQ(opened_, 0);
}

TEST_F(HelpTest, AHelpFileGoesBeforeWhenTheSystemOpensIt)
{
    Put(kHelpFile, "x");
    for (const bool can_open : {true, false}) {
        Make(can_open);
        Trigger("mn_hlpm");
        EXPECT_EQ(opened_, 1);
        EXPECT_EQ(Shown().empty(), can_open);
        opened_ = 0;
    }
}

TEST_F(HelpTest, TheWindowSearchesAndGoesBack)
{
    Make(true);
    help_->ShowHelp();
    auto* help = Find("hilfe");
    ASSERT_NE(help, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(help));
    auto* search = help->findChild<QLineEdit*>("hilfe_suche");
    auto* contents = help->findChild<QListWidget*>("hilfe_inhalt");
    const int pages = contents->count();
    QTest::keyClicks(search, "Richtungsumkehr");
    EXPECT_EQ(contents->count(), 1);
    const QString found = search->text();
    search->setText("xyzzy");
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_NE(Shown(), "Hilfe");
    EXPECT_FALSE(help->findChild<QTextBrowser*>("hilfe_seite")->toPlainText().isEmpty());
    search->setText(found);
    QTest::keyClick(search, Qt::Key_Return);
    EXPECT_EQ(Shown(), "Hilfe: Parameter");
    EXPECT_FALSE(help->findChild<QTextBrowser*>("hilfe_seite")->extraSelections().isEmpty());
    help->findChild<QToolButton*>("hilfe_zurueck")->click();
    EXPECT_NE(Shown(), "Hilfe: Parameter");
    QTest::keyClick(search, Qt::Key_Escape);
    EXPECT_EQ(contents->count(), pages);
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_EQ(Shown(), "");
}

TEST_F(HelpTest, TheAboutBoxNamesVersionAndLicences)
{
    Make(true);
    Trigger("mn_about");
    auto* box = Find<QMessageBox>("about");
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(box->text().contains("Version " KORVINTH_VERSION));
    EXPECT_TRUE(box->text().contains("LGPL"));
    EXPECT_TRUE(box->detailedText().startsWith("MIT License"));
}

TEST_F(HelpTest, OnlyTheFirstStartWelcomes)
{
    const auto start = [this] {
        auto program = std::make_unique<Program>(Directory(), dialogs_);
        program->Start({});
        return program;
    };
    const auto welcome = [](Program& program) {
        return program.Window().findChild<QWidget*>("willkommen");
    };
    std::unique_ptr<Program> program = start();
    ASSERT_NE(welcome(*program), nullptr);
    auto* first_row = program->Window().findChild<QLineEdit*>("fnam[0]");
    program->Window().findChild<QToolButton*>("willkommen_beispiel[1]")->click();
    EXPECT_EQ(first_row->text(), "f(x) = a*sin(b*x)");
    EXPECT_TRUE(welcome(*program)->isVisible());  // the other examples are still there
    QTest::keyClicks(first_row, "x");
    EXPECT_FALSE(welcome(*program)->isVisible());
    program.reset();
    program = start();
    EXPECT_EQ(welcome(*program), nullptr);
}

}  // namespace
}  // namespace korvinth::app
