// One short sentence below a window's contents: "o.k.", a note, or an error on red.
#pragma once

#include <QLabel>
#include <string_view>

namespace korvinth::ui {

class StatusLine : public QLabel
{
    Q_OBJECT
public:
    explicit StatusLine(QWidget* parent);

    // "" reads "o.k.". What is long is cut off, the tool tip shows more of it; the line never
    // widens its window and takes a few lines of text at most.
    void ShowStatus(std::string_view text, bool error);

    int HeightOfOneLine() const;  // pixels

protected:
    void changeEvent(QEvent* event) override;

private:
    void LimitHeight();
};

}  // namespace korvinth::ui
