// Text fields whose text comes back from a file as it was typed.
#pragma once

#include <QString>
#include <string>
#include <string_view>

class QLineEdit;
class QPlainTextEdit;

namespace korvinth::ui {

// From now on signs that a collection file cannot hold become at once those that it can; what
// stands behind the caret stays behind it. Of a name and a description, blanks at the end, and
// empty lines there, are left for more to be typed behind them; they are none of the stored text.
// Marks on one letter beyond those that any language has go in each case.
void KeepStorableTerm(QLineEdit& field);  // also what the program puts in
void KeepStorableName(QLineEdit& field);
void KeepStorable(QPlainTextEdit& field);  // the field's own undoing stays
void KeepReadable(QLineEdit& field);       // the marks alone; for what needs nothing else

// What the field's text is in the collection. Lines end in CR LF.
std::string StoredText(const QLineEdit& field);
std::string StoredText(const QPlainTextEdit& field);

// A stored text as the window shows it.
QString ShownText(std::string_view stored);

}  // namespace korvinth::ui
