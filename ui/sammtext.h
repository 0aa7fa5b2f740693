// The window of the selected entry's long description, large enough for a projector.
#pragma once

#include <QTimer>
#include <QWidget>
#include <optional>
#include <string>
#include <string_view>

#include "document/collection_editor.h"

class QPlainTextEdit;

namespace korvinth::ui {

class SammText : public QWidget
{
    Q_OBJECT
public:
    explicit SammText(QWidget* parent = nullptr);

    // A stored description; nothing is told.
    void ShowText(std::string_view stored, bool writable);
    void ShowNothing();  // no entry is selected: nothing can be typed

    // In points; nothing lets the font follow the window's width.
    void SetFontPoints(std::optional<int> points);

    QSize sizeHint() const override;

Q_SIGNALS:
    // What was typed, to be stored. A pause ends a burst of typing, and so does another entry.
    void edited(const std::string& stored, document::Typing typing);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void Show(std::string_view stored);
    void TakeText();
    void FitFont();

    QPlainTextEdit* text_;
    QTimer pause_;
    std::optional<int> points_;
    bool showing_ = false;
};

}  // namespace korvinth::ui
