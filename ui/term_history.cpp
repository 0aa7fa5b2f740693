#include "ui/term_history.h"

#include <algorithm>

namespace korvinth::ui {

void TermHistory::Add(const QString& term)
{
    const bool repeated = !terms_.isEmpty() && terms_.back() == term;
    if (!repeated && !term.trimmed().isEmpty()) terms_.append(term);
    lines_ = terms_;
    lines_.append(QString());
    present_ = lines_.size() - 1;
}

QString TermHistory::Go(const QString& shown, int step)
{
    lines_[present_] = shown;
    present_ = std::clamp<qsizetype>(present_ + step, 0, lines_.size() - 1);
    return lines_[present_];
}

}  // namespace korvinth::ui
