// The window of the additional points.
#pragma once

#include <QWidget>
#include <string>
#include <string_view>
#include <vector>

#include "document/additional_points.h"
#include "ui/dialogs.h"
#include "ui/item_list.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QSpinBox;
class QVBoxLayout;

namespace korvinth::ui {

// Holds the list while it is edited; the document has its text.
class Punkte : public QWidget
{
    Q_OBJECT
public:
    explicit Punkte(Dialogs& dialogs, QWidget* parent = nullptr);

    // Shows the points of a document's text. Nothing is told.
    void text2list(std::string_view points_text);
    std::string readlist() const { return document::ReadPoints(points_); }

    // What is wrong with the points, "" when nothing.
    void ShowProblems(std::string_view problems);

Q_SIGNALS:
    // Coordinates were added, changed or removed; the text is for the document, to be applied.
    void taken(const std::string& points_text);
    // Only order, names, shapes, sizes, colours or visibility changed: a redraw will do.
    void restyled(const std::string& points_text);

private:
    void MakeInput(QVBoxLayout& layout);
    void MakeLook(QVBoxLayout& layout);
    void Add();
    void remove();
    void ShowSelected();
    void TakeText(int row);
    void ChooseColour();
    // To the selected points and to the next new one.
    template <class Change>
    void ChangeLook(Change change);
    std::vector<ItemList::Item> Items() const;
    ItemList::Item ItemOf(const document::AdditionalPoint& point) const;
    void ShowItem(int row);
    document::AdditionalPoint& Point(int row) { return points_[static_cast<std::size_t>(row)]; }

    Dialogs& dialogs_;
    std::vector<document::AdditionalPoint> points_;
    document::AdditionalPoint next_;  // the look of a new point
    QLineEdit* input_;
    ItemList* list_;
    QComboBox* shape_;
    QSpinBox* radius_;
    QLineEdit* name_;
    QCheckBox* with_values_;
    MessageLine* message_;
};

}  // namespace korvinth::ui
