// The pages of the help: texts that are part of the program, their search, and which page tells of
// which window.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>
#include <vector>

class QWidget;

namespace korvinth::ui {

struct HelpPage
{
    QString name;   // in links: "parameter"
    QString title;  // its first heading
    QString html;
    QString text;  // what a reader sees, for the search
};

struct HelpHit
{
    const HelpPage* page = nullptr;
    QString snippet;  // HTML of one line, the words found in <b>; "" without words
};

class HelpPages
{
public:
    // `insertions` replace "{{key}}" in the pages: what is told from the program's own tables.
    explicit HelpPages(const QMap<QString, QString>& insertions);

    const std::vector<HelpPage>& All() const { return pages_; }  // in the order of the contents
    const HelpPage* Find(const QString& name) const;             // nullptr when there is none

    // The pages that hold every word, without regard to case; those with one in the title first.
    std::vector<HelpHit> Search(const QString& text) const;
    // The words that are searched for, each once.
    static QStringList Words(const QString& text);

private:
    std::vector<HelpPage> pages_;
};

// The name of the page for the object with the focus: that of the nearest window around it. Never
// empty.
QString HelpPageFor(const QWidget* marked);

// The licence of the program.
QString LicenceText();

}  // namespace korvinth::ui
