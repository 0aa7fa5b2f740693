// Keeps what is typed into a field in the signs that a collection file takes.
#pragma once

#include <QValidator>

namespace korvinth::ui {

// Rewrites terms at once: "{" becomes "(", "\n" gets a blank between its signs. What stands behind
// the caret stays behind it.
class StorableInput : public QValidator
{
public:
    using QValidator::QValidator;
    State validate(QString& input, int& position) const override;
};

}  // namespace korvinth::ui
