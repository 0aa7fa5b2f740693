// The window of the help: contents with a search field, and the page that is read.
#pragma once

#include <QImage>
#include <QTextBrowser>
#include <QWidget>
#include <functional>

#include "ui/help_pages.h"

class QLineEdit;
class QListWidget;
class QSplitter;
class QToolButton;

namespace korvinth::ui {

// Draws the plot of a description, with `ratio` dots to a pixel in both directions.
using HelpPainter = std::function<QImage(const QString& description, qreal ratio)>;

// Shows the pages; what stands behind "plot:" in one is drawn. Nothing comes from outside.
class HelpBrowser final : public QTextBrowser
{
    Q_OBJECT
public:
    HelpBrowser(const HelpPages& pages, HelpPainter painter, QWidget* parent);

    // Readable in the present colours.
    void UseStyle();

protected:
    QVariant loadResource(int type, const QUrl& name) override;

private:
    const HelpPages& pages_;
    HelpPainter painter_;
};

class HelpWindow final : public QWidget
{
    Q_OBJECT
public:
    HelpWindow(const QMap<QString, QString>& insertions, HelpPainter painter, QWidget* parent);

    // Shows a page by its name and brings the window to the front.
    void ShowPage(const QString& name);
    const HelpPages& Pages() const { return pages_; }

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void MakeControls();
    void MakeKeys();
    void Place();
    void Search();
    void FollowPage();  // in list and title
    void MarkWords();   // those searched for, in the page

    const HelpPages pages_;
    const HelpPage* shown_ = nullptr;
    HelpBrowser* browser_;
    QLineEdit* search_;
    QListWidget* contents_;
    QSplitter* parts_;
};

}  // namespace korvinth::ui
