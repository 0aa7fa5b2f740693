// The terms typed so far, leafed through like those of a command line.
#pragma once

#include <QString>
#include <QStringList>

namespace korvinth::ui {

class TermHistory
{
public:
    // Makes a term the newest one, behind which an empty line waits. A blank term and one that is
    // the newest already are not repeated.
    void Add(const QString& term);
    // The line before or behind the present one, which is kept as `shown`, half-typed or edited,
    // until the next term is added. At either end it is the present one itself.
    QString Older(const QString& shown) { return Go(shown, -1); }
    QString Newer(const QString& shown) { return Go(shown, 1); }

private:
    QString Go(const QString& shown, int step);

    QStringList terms_;
    QStringList lines_{QString()};  // the terms as edited, and the line in hand
    qsizetype present_ = 0;         // in `lines_`
};

}  // namespace korvinth::ui
