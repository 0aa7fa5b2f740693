// The window of the additional straight lines.
#pragma once

#include <QWidget>
#include <string>
#include <string_view>
#include <vector>

#include "document/additional_lines.h"
#include "ui/dialogs.h"
#include "ui/item_list.h"

class QLineEdit;
class QVBoxLayout;

namespace korvinth::ui {

// Holds the list while it is edited; the document has its text.
class Asymptoten : public QWidget
{
    Q_OBJECT
public:
    explicit Asymptoten(Dialogs& dialogs, QWidget* parent = nullptr);

    // Shows the lines of a document's text. Nothing is told.
    void text2list(std::string_view lines_text);
    // The text of the list, x as typed; and as the document keeps it.
    std::string readlist() const { return document::ReadList(lines_); }
    std::string takeit() const { return document::TakeLines(lines_); }

    // The colour of lines without a colour of their own.
    void SetCommonColour(document::Colour colour);
    // What is wrong with the lines, "" when nothing; the window itself adds the first line that is
    // none.
    void ShowProblems(std::string_view problems);

Q_SIGNALS:
    // Equations were added, changed or removed; the text is for the document, to be applied.
    void taken(const std::string& lines_text);
    // Only order, line types, colours or visibility changed: a redraw will do.
    void restyled(const std::string& lines_text);

private:
    void MakeInput(QVBoxLayout& layout);
    void nimms();
    void Restyle();
    void asytaste();                              // Enter in the input field
    void chdicke();                               // the field of the line type changed
    void chli(int row, document::LineType type);  // an item's line type
    void remove();
    void activate(int row);
    void ShowSelected();
    void TakeText(int row);
    void ChooseColour();
    void TakeCommonColour();
    template <class Change>
    void ChangeSelected(Change change);
    ItemList::Item ItemOf(const document::AdditionalLine& line) const;
    void ShowItem(int row);
    document::AdditionalLine& Line(int row) { return lines_[static_cast<std::size_t>(row)]; }

    Dialogs& dialogs_;
    std::vector<document::AdditionalLine> lines_;
    document::Colour common_colour_;
    document::LineType type_ = document::LineType::Solid;
    QLineEdit* input_;
    QLineEdit* type_field_;
    ItemList* list_;
    MessageLine* message_;
};

}  // namespace korvinth::ui
