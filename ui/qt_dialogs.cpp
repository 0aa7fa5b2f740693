#include "ui/qt_dialogs.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <algorithm>

namespace korvinth::ui {
namespace {

// A box as wide as a short text; a long one is cut to what a screen can show.
constexpr qsizetype kLongestText = 2000;

QString Shown(const std::string& text)
{
    const QString whole = QString::fromStdString(text);
    return whole.size() <= kLongestText ? whole : whole.left(kLongestText) + QStringLiteral(" …");
}

void ShowBox(QWidget* window, QMessageBox::Icon icon, const std::string& title,
             const std::string& text)
{
    QMessageBox box(icon, QString::fromStdString(title), Shown(text), QMessageBox::Ok, window);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

// The toolkit names the controls, but tells nothing of them.
void Describe(const QInputDialog& dialog)
{
    if (auto* field = dialog.findChild<QSpinBox*>()) {
        field->setAccessibleDescription(QStringLiteral("Ganze Zahl von %1 bis %2")
                                            .arg(dialog.intMinimum())
                                            .arg(dialog.intMaximum()));
    }
    const auto* buttons = dialog.findChild<QDialogButtonBox*>();
    if (buttons == nullptr) return;
    buttons->button(QDialogButtonBox::Ok)->setAccessibleDescription("Übernimmt die Zahl");
    buttons->button(QDialogButtonBox::Cancel)->setAccessibleDescription("Ändert nichts (Esc)");
}

// Asks at the window's left edge, so that the graph stays in view.
bool Accepted(QDialog& dialog, const QWidget* window)
{
    if (window != nullptr) {
        dialog.adjustSize();
        dialog.move(
            window->mapToGlobal(QPoint(0, std::max(0, (window->height() - dialog.height()) / 2))));
    }
    return dialog.exec() == QDialog::Accepted;
}

}  // namespace

QString ToolkitFilter(const std::string& filter)
{
    QString result;
    const QStringList parts = QString::fromStdString(filter).split('|');
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        if (!result.isEmpty()) result += QStringLiteral(";;");
        const QString caption = parts[i].section(" (", 0, 0);
        const QString pattern =
            parts[i + 1] == QStringLiteral("*.*") ? QStringLiteral("*") : parts[i + 1];
        result += caption + " (" + pattern + ")";
    }
    return result;
}

void QtDialogs::ShowError(const std::string& title, const std::string& text)
{
    ShowBox(window_, QMessageBox::Critical, title, text);
}

void QtDialogs::ShowExclamation(const std::string& title, const std::string& text)
{
    ShowBox(window_, QMessageBox::Warning, title, text);
}

bool QtDialogs::AskYesNo(const std::string& title, const std::string& text, Preset preset)
{
    QMessageBox box(QMessageBox::Question, QString::fromStdString(title), Shown(text),
                    QMessageBox::Yes | QMessageBox::No, window_);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(preset == Preset::Yes ? QMessageBox::Yes : QMessageBox::No);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

std::optional<std::string> QtDialogs::OpenFile(const std::string& title, const std::string& filter)
{
    return ChooseFile(title, filter, QFileDialog::AcceptOpen);
}

std::optional<std::string> QtDialogs::SaveFile(const std::string& title, const std::string& filter)
{
    return ChooseFile(title, filter, QFileDialog::AcceptSave);
}

// Whether a file is to be made or overwritten is the caller's question.
std::optional<std::string> QtDialogs::ChooseFile(const std::string& title,
                                                 const std::string& filter,
                                                 QFileDialog::AcceptMode mode)
{
    QFileDialog dialog(window_, QString::fromStdString(title), folder_, ToolkitFilter(filter));
    dialog.setAcceptMode(mode);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    if (mode == QFileDialog::AcceptSave) {
        dialog.setDefaultSuffix(
            QString::fromStdString(filter).section("*.", 1, 1).section(')', 0, 0));
    }
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    folder_ = dialog.directory().absolutePath();
    return dialog.selectedFiles().constFirst().toStdString();
}

std::optional<document::Colour> QtDialogs::ChooseColour(document::Colour initial)
{
    const QColor present(document::Red(initial), document::Green(initial), document::Blue(initial));
    QColorDialog dialog(present, window_);
    dialog.setWindowTitle(QStringLiteral("Farbe ändern"));
    if (!Accepted(dialog, window_)) return std::nullopt;
    const QColor chosen = dialog.selectedColor();
    return document::MakeColour(chosen.red(), chosen.green(), chosen.blue());
}

std::optional<int> QtDialogs::AskNumber(const std::string& title, const std::string& label,
                                        int value, int lowest, int highest)
{
    QInputDialog dialog(window_);
    dialog.setInputMode(QInputDialog::IntInput);
    dialog.setWindowTitle(QString::fromStdString(title));
    const QFontMetrics metrics = dialog.fontMetrics();
    // Wide enough for the title between the window manager's buttons.
    dialog.setMinimumWidth(metrics.horizontalAdvance(dialog.windowTitle()) + 10 * metrics.height());
    dialog.setLabelText(QString::fromStdString(label));
    dialog.setIntRange(lowest, highest);
    dialog.setIntValue(value);
    dialog.adjustSize();  // makes the controls
    Describe(dialog);
    if (!Accepted(dialog, window_)) return std::nullopt;
    return dialog.intValue();
}

}  // namespace korvinth::ui
