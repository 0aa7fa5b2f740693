#include "ui/storable_fields.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QValidator>
#include <algorithm>
#include <optional>

#include "document/storable_text.h"

namespace korvinth::ui {
namespace {

// The part of a text that another one has in its place.
struct Replacement
{
    qsizetype start = 0;
    qsizetype length = 0;
    QString text;
};

std::optional<Replacement> Difference(const QString& present, const QString& wanted)
{
    if (present == wanted) return std::nullopt;
    const auto shorter = std::min(present.size(), wanted.size());
    qsizetype start = 0;
    while (start < shorter && present[start] == wanted[start]) ++start;
    qsizetype end = 0;
    while (end < shorter - start && *(present.end() - 1 - end) == *(wanted.end() - 1 - end)) ++end;
    return Replacement{start, present.size() - start - end,
                       wanted.mid(start, wanted.size() - start - end)};
}

bool IsBlank(QChar c) { return c == ' ' || c == '\t'; }

qsizetype LengthWithoutBlanks(const QString& text)
{
    qsizetype length = text.size();
    while (length > 0 && IsBlank(text[length - 1])) --length;
    return length;
}

bool IsMark(char32_t sign)
{
    const QChar::Category category = QChar::category(sign);
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_SpacingCombining ||
           category == QChar::Mark_Enclosing;
}

// The time that drawing a letter takes grows with the square of the marks on it. No text has more
// than 30 in a row (stream-safe text format, UAX #15); what comes behind them goes.
QString WithoutHeapedMarks(const QString& typed)
{
    constexpr int kMostMarks = 30;
    QString kept;
    int marks = 0;
    for (qsizetype i = 0; i < typed.size();) {
        const bool pair = typed[i].isHighSurrogate() && i + 1 < typed.size();
        const qsizetype length = pair ? 2 : 1;
        const char32_t sign =
            pair ? QChar::surrogateToUcs4(typed[i], typed[i + 1]) : typed[i].unicode();
        marks = IsMark(sign) ? marks + 1 : 0;
        if (marks <= kMostMarks) kept += QStringView(typed).mid(i, length);
        i += length;
    }
    return kept;
}

QString Storable(const QString& typed, std::string (*storable)(std::string_view))
{
    return ShownText(storable(WithoutHeapedMarks(typed).toStdString()));
}

QString StorableTerm(const QString& typed) { return Storable(typed, document::StorableTerm); }

QString StorableName(const QString& typed)
{
    const qsizetype length = LengthWithoutBlanks(typed);
    if (length == 0) return {};
    return Storable(typed.left(length), document::StorableShortText) + typed.mid(length);
}

// Rewrites before anybody hears of the text.
class RewrittenInput : public QValidator
{
public:
    using Rewrite = QString (*)(const QString&);
    RewrittenInput(Rewrite rewrite, QObject* parent) : QValidator(parent), rewrite_(rewrite) {}

    State validate(QString& input, int& position) const override
    {
        const QString result = rewrite_(input);
        if (result != input) {
            // The part before the caret is rewritten as it is in the whole.
            position = static_cast<int>(rewrite_(input.left(position)).size());
            input = result;
        }
        return Acceptable;
    }

private:
    Rewrite rewrite_;
};

QString StorableLines(const QString& typed)
{
    qsizetype length = typed.size();
    while (length > 0 && (IsBlank(typed[length - 1]) || typed[length - 1] == '\n')) --length;
    const QStringList before = typed.left(length).split('\n');
    const QString stored = Storable(typed.left(length), document::StorableLongText);
    QStringList after = stored.split('\n');
    if (after.size() != before.size()) return stored + typed.mid(length);
    for (qsizetype line = 0; line < after.size(); ++line) {
        const QString blanks = before[line].mid(LengthWithoutBlanks(before[line]));
        if (!after[line].endsWith(blanks)) after[line] += blanks;
    }
    return after.join('\n') + typed.mid(length);
}

// toPlainText would make every no-break space a blank.
QString TextOf(const QPlainTextEdit& field)
{
    QString text = field.document()->toRawText();
    text.replace(QChar::ParagraphSeparator, '\n').replace(QChar::LineSeparator, '\n');
    return text;
}

void Replace(QPlainTextEdit& field, const Replacement& part)
{
    QTextCursor cursor(field.document());
    cursor.joinPreviousEditBlock();  // undone together with what was typed
    cursor.setPosition(static_cast<int>(part.start));
    cursor.setPosition(static_cast<int>(part.start + part.length), QTextCursor::KeepAnchor);
    cursor.insertText(part.text);
    cursor.endEditBlock();
}

}  // namespace

void KeepReadable(QLineEdit& field)
{
    field.setValidator(new RewrittenInput(WithoutHeapedMarks, &field));
}

void KeepStorableTerm(QLineEdit& field)
{
    field.setValidator(new RewrittenInput(StorableTerm, &field));
}

void KeepStorableName(QLineEdit& field)
{
    field.setValidator(new RewrittenInput(StorableName, &field));
}

// The replacement's own signal finds nothing more to do.
void KeepStorable(QPlainTextEdit& field)
{
    QObject::connect(&field, &QPlainTextEdit::textChanged, &field, [&field] {
        const QString typed = TextOf(field);
        if (const auto part = Difference(typed, StorableLines(typed))) Replace(field, *part);
    });
}

std::string StoredText(const QLineEdit& field)
{
    const QString typed = field.text();
    return document::StorableShortText(typed.left(LengthWithoutBlanks(typed)).toStdString());
}

std::string StoredText(const QPlainTextEdit& field)
{
    QString typed = TextOf(field);
    while (!typed.isEmpty() && (IsBlank(typed.back()) || typed.back() == '\n')) typed.chop(1);
    return document::StorableLongText(typed.toStdString());
}

QString ShownText(std::string_view stored)
{
    QString text = QString::fromUtf8(stored.data(), static_cast<qsizetype>(stored.size()));
    return text.replace("\r\n", "\n").replace('\r', '\n');
}

}  // namespace korvinth::ui
