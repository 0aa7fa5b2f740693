#include "ui/help_window.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QStyledItemDelegate>
#include <QTextDocument>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace korvinth::ui {
namespace {

constexpr int kNameRole = Qt::UserRole;
constexpr int kSnippetRole = Qt::UserRole + 1;
constexpr int kLongestSearch = 100;  // characters

QUrl PageUrl(const QString& name) { return {"help:/" + name}; }
QString NameOf(const QUrl& url) { return url.path().mid(1); }

// A hit: the page's title, below it the place with the words in bold.
class HitDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        if (index.data(kSnippetRole).toString().isEmpty()) {
            QStyledItemDelegate::paint(painter, option, index);
            return;
        }
        QStyleOptionViewItem bare = option;
        const bool selected = (option.state & QStyle::State_Selected) != 0;
        const QColor ink =
            option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
        if (selected) painter->fillRect(option.rect, option.palette.brush(QPalette::Highlight));
        QTextDocument text;
        SetUp(text, bare, index, ink);
        painter->save();
        painter->translate(option.rect.topLeft());
        text.drawContents(painter);
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (index.data(kSnippetRole).toString().isEmpty()) {
            return QStyledItemDelegate::sizeHint(option, index);
        }
        QTextDocument text;
        SetUp(text, option, index, option.palette.color(QPalette::Text));
        return {option.rect.width(), static_cast<int>(text.size().height())};
    }

private:
    static void SetUp(QTextDocument& text, const QStyleOptionViewItem& option,
                      const QModelIndex& index, const QColor& ink)
    {
        const auto* list = qobject_cast<const QAbstractScrollArea*>(option.widget);
        text.setDefaultFont(option.font);
        text.setDefaultStyleSheet("p { margin: 0; color: " + ink.name() + "; }");
        text.setDocumentMargin(4);
        text.setTextWidth(list != nullptr ? list->viewport()->width() : option.rect.width());
        text.setHtml("<p><u>" + index.data(Qt::DisplayRole).toString().toHtmlEscaped() +
                     "</u></p><p>" + index.data(kSnippetRole).toString() + "</p>");
    }
};

QToolButton* MakeButton(const char* name, const char* sign, const char* tip, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(name);
    button->setText(QString::fromUtf8(sign));
    button->setToolTip(QString::fromUtf8(tip));
    button->setAccessibleName(QString::fromUtf8(tip).section(" (", 0, 0));
    button->setAutoRaise(true);
    return button;
}

}  // namespace

HelpBrowser::HelpBrowser(const HelpPages& pages, HelpPainter painter, QWidget* parent)
    : QTextBrowser(parent), pages_(pages), painter_(std::move(painter))
{
    setObjectName("hilfe_seite");
    setAccessibleName("Seite der Hilfe");
    setAccessibleDescription("Die Tabulatortaste geht zum nächsten Verweis, Esc schließt");
    setOpenExternalLinks(false);
    UseStyle();
}

void HelpBrowser::UseStyle()
{
    const QPalette colours = palette();
    const auto mixed = [&colours](double part) {
        const QColor base = colours.color(QPalette::Base);
        const QColor text = colours.color(QPalette::Text);
        const auto mix = [part](int a, int b) { return static_cast<int>(a + part * (b - a)); };
        return QColor(mix(base.red(), text.red()), mix(base.green(), text.green()),
                      mix(base.blue(), text.blue()))
            .name();
    };
    // Desktops name one colour for links, which may be that of light ones.
    const bool dark = colours.color(QPalette::Base).lightness() < 128;
    document()->setDefaultStyleSheet(
        QStringLiteral("a { color: %1; } pre { white-space: pre-wrap; } code, pre { "
                       "background-color: %2; font-family: monospace; "
                       "} th { background-color: %3; } h1 { font-size: x-large; } "
                       "h1, h2 { margin-bottom: 4px; } "
                       "td, th { padding: 3px 8px; text-align: left; }")
            .arg(dark ? "#8AB8FF" : "#1A4FA3", mixed(0.07), mixed(0.15)));
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name)
{
    if (name.scheme() == "plot" && type == QTextDocument::ImageResource) {
        return painter_(name.path(QUrl::FullyDecoded), devicePixelRatioF());
    }
    const HelpPage* page = name.scheme() == "help" ? pages_.Find(NameOf(name)) : nullptr;
    return page != nullptr ? QVariant(page->html) : QVariant();
}

HelpWindow::HelpWindow(const QMap<QString, QString>& insertions, HelpPainter painter,
                       QWidget* parent)
    : QWidget(parent, Qt::Window),
      pages_(insertions),
      browser_(new HelpBrowser(pages_, std::move(painter), this)),
      search_(new QLineEdit(this)),
      contents_(new QListWidget(this)),
      parts_(new QSplitter(this))
{
    setObjectName("hilfe");
    setWindowTitle("Hilfe");
    MakeControls();
    MakeKeys();
    connect(browser_, &QTextBrowser::sourceChanged, this, [this](const QUrl& url) {
        shown_ = pages_.Find(NameOf(url));
        FollowPage();
    });
    connect(search_, &QLineEdit::textChanged, this, &HelpWindow::Search);
    search_->installEventFilter(this);
    const auto open = [this](const QListWidgetItem* item) {
        const bool page = item != nullptr && (item->flags() & Qt::ItemIsEnabled) != 0;
        if (page) browser_->setSource(PageUrl(item->data(kNameRole).toString()));
    };
    connect(contents_, &QListWidget::currentItemChanged, this, open);
    Search();
}

// At the right of the main window, so that the terms stay in view.
void HelpWindow::Place()
{
    constexpr int kColumns = 110;
    constexpr int kRows = 36;
    constexpr double kPartOfScreen = 0.9;
    const QSize wanted(kColumns * fontMetrics().averageCharWidth(), kRows * fontMetrics().height());
    const QRect room = screen()->availableGeometry();
    if (!testAttribute(Qt::WA_Resized)) {
        resize(wanted.boundedTo(room.size() * kPartOfScreen));
        parts_->setSizes({width() / 3, width() - width() / 3});
    }
    if (testAttribute(Qt::WA_Moved)) return;
    const QWidget* main = parentWidget()->window();
    while (main->parentWidget() != nullptr) main = main->parentWidget()->window();
    constexpr int kMargin = 12;
    const int left = main->geometry().right() - width() - kMargin;
    const QSize frame = main->frameGeometry().size() - main->size();
    const QPoint last =
        room.bottomRight() - QPoint(width() + frame.width(), height() + frame.height());
    move(std::clamp(left, room.left(), std::max(room.left(), last.x())),
         std::clamp(main->y(), room.top(), std::max(room.top(), last.y())));
}

void HelpWindow::MakeControls()
{
    search_->setObjectName("hilfe_suche");
    search_->setAccessibleName("Hilfe durchsuchen");
    search_->setPlaceholderText("Suchen");
    search_->setMaxLength(kLongestSearch);
    search_->setToolTip("Sucht auf allen Seiten (Strg+F)");
    search_->setClearButtonEnabled(true);
    for (auto* clear : search_->findChildren<QToolButton*>()) {
        clear->setAccessibleName("Leeren");
        clear->setToolTip("Zeigt wieder alle Seiten (Esc)");
    }
    contents_->setObjectName("hilfe_inhalt");
    contents_->setAccessibleName("Inhalt der Hilfe");
    contents_->setAccessibleDescription("Die Pfeiltasten wählen die Seite, die daneben steht");
    contents_->setItemDelegate(new HitDelegate(contents_));
    contents_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    contents_->setResizeMode(QListView::Adjust);

    QToolButton* back = MakeButton("hilfe_zurueck", "←", "Zurück (Alt+Links)", this);
    QToolButton* forward = MakeButton("hilfe_vor", "→", "Vorwärts (Alt+Rechts)", this);
    QToolButton* home = MakeButton("hilfe_anfang", "⌂", "Erste Schritte (Alt+Pos1)", this);
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(back, &QToolButton::clicked, browser_, &QTextBrowser::backward);
    connect(forward, &QToolButton::clicked, browser_, &QTextBrowser::forward);
    connect(home, &QToolButton::clicked, this,
            [this] { browser_->setSource(PageUrl(HelpPageFor(nullptr))); });
    connect(browser_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    connect(browser_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);

    auto* keys = new QHBoxLayout;
    keys->setSpacing(6);
    for (QWidget* control : {static_cast<QWidget*>(back), static_cast<QWidget*>(forward),
                             static_cast<QWidget*>(home)}) {
        keys->addWidget(control);
    }
    keys->addWidget(search_, 1);
    auto* left = new QWidget(this);
    auto* column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addLayout(keys);
    column->addWidget(contents_);
    parts_->addWidget(left);
    parts_->addWidget(browser_);
    parts_->setStretchFactor(1, 1);
    parts_->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(parts_);
}

void HelpWindow::MakeKeys()
{
    const auto on = [this](const QKeySequence& keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    on(QKeySequence("Esc"), [this] { close(); });
    on(QKeySequence("F1"), [this] { ShowPage(HelpPageFor(this)); });
    on(QKeySequence("Alt+Left"), [this] { browser_->backward(); });
    on(QKeySequence("Alt+Right"), [this] { browser_->forward(); });
    on(QKeySequence("Alt+Home"), [this] { ShowPage(HelpPageFor(nullptr)); });
    on(QKeySequence("Ctrl+F"), [this] {
        search_->setFocus();
        search_->selectAll();
    });
}

void HelpWindow::ShowPage(const QString& name)
{
    search_->clear();
    browser_->setSource(PageUrl(name));
    if (!isVisible()) Place();
    show();
    raise();
    activateWindow();
    browser_->setFocus();
}

void HelpWindow::Search()
{
    const QSignalBlocker blocker(contents_);
    contents_->clear();
    for (const HelpHit& hit : pages_.Search(search_->text())) {
        auto* item = new QListWidgetItem(hit.page->title, contents_);
        item->setData(kNameRole, hit.page->name);
        item->setData(kSnippetRole, hit.snippet);
    }
    if (contents_->count() == 0) {
        auto* nothing = new QListWidgetItem("Nichts gefunden", contents_);
        nothing->setFlags(Qt::NoItemFlags);
    }
    FollowPage();
}

void HelpWindow::FollowPage()
{
    if (shown_ == nullptr) return;
    setWindowTitle("Hilfe: " + shown_->title);
    const QSignalBlocker blocker(contents_);
    contents_->setCurrentItem(nullptr);
    for (int row = 0; row < contents_->count(); ++row) {
        if (contents_->item(row)->data(kNameRole) == shown_->name) contents_->setCurrentRow(row);
    }
    MarkWords();
}

void HelpWindow::MarkWords()
{
    QList<QTextEdit::ExtraSelection> marks;
    for (const QString& word : HelpPages::Words(search_->text())) {
        QTextCursor found = browser_->document()->find(word);
        for (; !found.isNull(); found = browser_->document()->find(word, found)) {
            QTextEdit::ExtraSelection mark;
            mark.cursor = found;
            mark.format.setBackground(palette().brush(QPalette::Highlight));
            mark.format.setForeground(palette().brush(QPalette::HighlightedText));
            marks.append(mark);
        }
    }
    browser_->setExtraSelections(marks);
    if (marks.isEmpty()) return;
    QTextCursor first = marks.front().cursor;
    first.setPosition(first.selectionStart());
    browser_->setTextCursor(first);
    // In the upper part of the page, with some of what follows.
    QScrollBar& bar = *browser_->verticalScrollBar();
    bar.setValue(bar.value() + browser_->cursorRect(first).top() - browser_->height() / 4);
}

void HelpWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
    browser_->UseStyle();
    browser_->reload();
}

// From the search field into the hits; Esc empties it first.
bool HelpWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != search_) return QWidget::eventFilter(watched, event);
    const bool press = event->type() == QEvent::KeyPress;
    if (!press && event->type() != QEvent::ShortcutOverride) return false;
    const int key = static_cast<const QKeyEvent*>(event)->key();
    if (key == Qt::Key_Escape && !search_->text().isEmpty()) {
        event->accept();
        if (press) search_->clear();
        return true;
    }
    const bool enters = key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter;
    if (!press || !enters) return false;
    contents_->setFocus();
    contents_->setCurrentRow(0);
    return true;
}

}  // namespace korvinth::ui
