#include "app/help_control.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QUrl>
#include <system_error>
#include <utility>

#include "app/main_window.h"
#include "app/plot_picture.h"
#include "files/path_text.h"
#include "ui/graphform.h"
#include "ui/help_window.h"
#include "ui/welcome.h"

namespace korvinth::app {
namespace {

struct Example
{
    const char* caption;
    const char* description;
};
constexpr Example kExamples[] = {
    {"Parabel", "--zeichne=f(x)=a*x^2|--parameter=a=1"},
    {"Sinus", "--zeichne=f(x)=a*sin(b*x)|--parameter=a=2|--parameter=b=1"},
    {"Lissajous",
     "--zeichne=x(t)=4*sin(a*t)|--zeichne=y(t)=3*sin(b*t)|--parameter=a=3|--parameter=b=2"},
};
constexpr const char* kSmall = "|--groesse=96x60";

QString Text(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// The keys of the menus that work, as rows of a table.
QString MenuKeys()
{
    QString rows;
    for (const MenuEntry& entry : MainMenu()) {
        if (entry.shortcut.empty()) continue;
        const auto keys = QKeySequence::fromString(Text(entry.shortcut));
        rows += "<tr><td><code>" + keys.toString(QKeySequence::NativeText).toHtmlEscaped() +
                "</code></td><td>„" + Text(PlainCaption(entry.caption)).toHtmlEscaped() +
                "“</td></tr>";
    }
    return rows;
}

QMap<QString, QString> Insertions()
{
    return {{"tasten-der-menüs", MenuKeys()},
            {"optionen", "<pre>" + Text(HelpText()).toHtmlEscaped() + "</pre>"}};
}

}  // namespace

bool OpenWithSystem(const files::Path& file)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(Text(files::Utf8(file))));
}

HelpControl::HelpControl(MainWindow& window, const files::Path& directory, FileOpener open)
    : window_(window), help_file_(directory / kHelpFile), open_(std::move(open))
{
    connect(&window_.MenuEntry("mn_hlpm"), &QAction::triggered, this, &HelpControl::ShowHelp);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { FollowFocus(now); });
    qApp->installEventFilter(this);
}

void HelpControl::FollowFocus(QWidget* focused)
{
    const bool passes = focused == nullptr || qobject_cast<QMenu*>(focused) != nullptr ||
                        qobject_cast<QMenuBar*>(focused) != nullptr ||
                        (help_ != nullptr && focused->window() == help_);
    if (!passes) marked_ = focused;
}

void HelpControl::ShowHelp()
{
    std::error_code fault;
    if (files::Disk().Exists(help_file_, fault) && !fault && open_(help_file_)) return;
    ShowPage(ui::HelpPageFor(marked_));
}

// A modal dialog lets the keys through to none but windows of its own.
void HelpControl::ShowPage(const QString& name)
{
    QWidget* modal = QApplication::activeModalWidget();
    QWidget* owner = modal != nullptr ? modal : &window_;
    if (help_ == nullptr) {
        help_ = new ui::HelpWindow(
            Insertions(),
            [](const QString& description, qreal ratio) {
                return DrawPlotPicture(description.toStdString(), ratio);
            },
            owner);
    } else if (help_->parentWidget() != owner) {
        help_->setParent(owner, Qt::Window);
    }
    help_->ShowPage(name);
}

// The menu's key works in the main window; this is for the dialogs.
bool HelpControl::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    auto* widget = qobject_cast<QWidget*>(watched);
    if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier || widget == nullptr ||
        widget->window() == help_ || qobject_cast<QMenu*>(widget) != nullptr) {
        return false;
    }
    marked_ = widget;
    ShowHelp();
    return true;
}

void HelpControl::ShowWelcome()
{
    std::vector<ui::WelcomeExample> examples;
    for (const Example& example : kExamples) {
        examples.push_back(
            {example.caption, DrawPlotPicture(std::string(example.description) + kSmall,
                                              window_.devicePixelRatioF())});
    }
    auto* welcome = new ui::Welcome(examples, window_.Graph());
    connect(welcome, &ui::Welcome::exampleChosen, this, &HelpControl::DrawExample);
    connect(welcome, &ui::Welcome::helpWanted, this,
            [this] { ShowPage(ui::HelpPageFor(nullptr)); });
}

void HelpControl::DrawExample(int number)
{
    ParsedCommandLine parsed =
        ReadPlotDescription(kExamples[static_cast<std::size_t>(number)].description);
    const QSize area = window_.Graph().AreaSize();
    parsed.command.width = area.width();
    parsed.command.height = area.height();
    window_.PlotSession().DrawRequest(parsed.command);
}

}  // namespace korvinth::app
