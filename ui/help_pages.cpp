#include "ui/help_pages.h"

#include <QFile>
#include <QRegularExpression>
#include <QTextDocument>
#include <QWidget>
#include <algorithm>

// Outside of every namespace, as the macro wants it.
static void LoadHelpResource() { Q_INIT_RESOURCE(help); }

namespace korvinth::ui {
namespace {

constexpr const char* kPageNames[] = {
    "erste-schritte", "hauptfenster",   "funktionsterme", "sprache", "graph",        "parameter",
    "bereich",        "einstellungen",  "zoom",           "geraden", "punkte",       "sammlung",
    "beschreibung",   "taschenrechner", "weitergeben",    "tasten",  "befehlszeile", "hilfe",
};

struct WindowPage
{
    const char* window;  // object name, without an index
    const char* page;
};
constexpr WindowPage kWindowPages[] = {
    {"termform", "funktionsterme"},
    {"graphform", "graph"},
    {"paracolumn", "parameter"},
    {"para", "parameter"},
    {"Parameter", "parameter"},
    {"Dialog", "parameter"},
    {"interform", "bereich"},
    {"optionsgraph", "einstellungen"},
    {"optionszoom", "zoom"},
    {"Asymptoten", "geraden"},
    {"Punkte", "punkte"},
    {"sammlung", "sammlung"},
    {"sammtext", "beschreibung"},
    {"minicalc", "taschenrechner"},
    {"hilfe", "hilfe"},
    {"mother", "hauptfenster"},
};
constexpr const char* kFirstPage = "erste-schritte";

QString ReadResource(const QString& name)
{
    LoadHelpResource();
    QFile file(":/help/" + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

HelpPage ReadPage(const QString& name, const QMap<QString, QString>& insertions)
{
    static const QRegularExpression kTitle("<h1>(.*)</h1>");
    HelpPage page;
    page.name = name;
    page.html = ReadResource(name + ".html");
    for (auto insertion = insertions.begin(); insertion != insertions.end(); ++insertion) {
        page.html.replace("{{" + insertion.key() + "}}", insertion.value());
    }
    page.title = kTitle.match(page.html).captured(1);
    QTextDocument document;
    document.setHtml(page.html);
    page.text = document.toPlainText().remove(QChar::ObjectReplacementCharacter).simplified();
    return page;
}

// The words as they are found in a text, in bold.
QString Marked(const QString& text, const QStringList& words)
{
    QStringList patterns;
    for (const QString& word : words) patterns << QRegularExpression::escape(word);
    const QRegularExpression pattern(patterns.join('|'), QRegularExpression::CaseInsensitiveOption);
    QString html;
    qsizetype done = 0;
    auto found = pattern.globalMatch(text);
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        html += text.mid(done, match.capturedStart() - done).toHtmlEscaped() + "<b>" +
                match.captured().toHtmlEscaped() + "</b>";
        done = match.capturedEnd();
    }
    return html + text.mid(done).toHtmlEscaped();
}

// What stands around the first word, from blank to blank.
QString Snippet(const QString& text, const QStringList& words)
{
    constexpr qsizetype kBefore = 30;  // characters
    constexpr qsizetype kLength = 100;
    const qsizetype found = text.indexOf(words.front(), 0, Qt::CaseInsensitive);
    qsizetype begin = std::max<qsizetype>(0, found - kBefore);
    if (begin > 0) begin = std::min(found, text.indexOf(' ', begin) + 1);
    qsizetype end = text.indexOf(' ', begin + kLength);
    if (end < 0) end = text.size();
    return (begin > 0 ? "… " : "") + Marked(text.mid(begin, end - begin), words) +
           (end < text.size() ? " …" : "");
}

}  // namespace

HelpPages::HelpPages(const QMap<QString, QString>& insertions)
{
    for (const char* name : kPageNames) pages_.push_back(ReadPage(name, insertions));
}

const HelpPage* HelpPages::Find(const QString& name) const
{
    const auto found = std::ranges::find(pages_, name, &HelpPage::name);
    return found == pages_.end() ? nullptr : &*found;
}

QStringList HelpPages::Words(const QString& text)
{
    QStringList words = text.split(' ', Qt::SkipEmptyParts);
    words.removeDuplicates();
    return words;
}

std::vector<HelpHit> HelpPages::Search(const QString& text) const
{
    const QStringList wanted = Words(text);
    std::vector<HelpHit> hits;
    for (const HelpPage& page : pages_) {
        const bool all = std::ranges::all_of(wanted, [&](const QString& word) {
            return page.text.contains(word, Qt::CaseInsensitive);
        });
        if (all) hits.push_back({&page, wanted.isEmpty() ? "" : Snippet(page.text, wanted)});
    }
    if (wanted.isEmpty()) return hits;
    std::stable_partition(hits.begin(), hits.end(), [&](const HelpHit& hit) {
        return std::ranges::any_of(wanted, [&](const QString& word) {
            return hit.page->title.contains(word, Qt::CaseInsensitive);
        });
    });
    return hits;
}

QString HelpPageFor(const QWidget* marked)
{
    for (; marked != nullptr; marked = marked->parentWidget()) {
        const QString name = marked->objectName().section('[', 0, 0);
        for (const WindowPage& entry : kWindowPages) {
            if (name == QLatin1String(entry.window)) return entry.page;
        }
    }
    return kFirstPage;
}

QString LicenceText() { return ReadResource("LICENSE"); }

}  // namespace korvinth::ui
