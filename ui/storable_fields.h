// Text fields whose text comes back from a file as it was typed.
#pragma once

#include <QString>
#include <string>
#include <string_view>

class QLineEdit;
class QPlainTextEdit;

namespace korvinth::ui {

// While the user types, signs that a collection file cannot hold become those that it can; the
// caret and the field's own undoing stay. Blanks at the end, and empty lines there, are left for
// more to be typed behind them; they are none of the stored text.
void KeepStorable(QLineEdit& field);
void KeepStorable(QPlainTextEdit& field);

// What the field's text is in the collection. Lines end in CR LF.
std::string StoredText(const QLineEdit& field);
std::string StoredText(const QPlainTextEdit& field);

// A stored text as the window shows it.
QString ShownText(std::string_view stored);

}  // namespace korvinth::ui
