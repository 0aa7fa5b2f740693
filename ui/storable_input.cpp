#include "ui/storable_input.h"

#include "document/storable_text.h"

namespace korvinth::ui {

QValidator::State StorableInput::validate(QString& input, int& position) const
{
    const auto storable = [](const QString& text) {
        return QString::fromStdString(document::StorableTerm(text.toStdString()));
    };
    const QString result = storable(input);
    if (result != input) {
        // The part before the caret is rewritten as it is in the whole.
        position = static_cast<int>(storable(input.left(position)).size());
        input = result;
    }
    return Acceptable;
}

}  // namespace korvinth::ui
