#include "ui/qt_dialogs.h"

#include <QColorDialog>
#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>

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

std::optional<std::string> Chosen(const QString& file)
{
    if (file.isEmpty()) return std::nullopt;
    return file.toStdString();
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

bool QtDialogs::AskYesNo(const std::string& title, const std::string& text)
{
    QMessageBox box(QMessageBox::Question, QString::fromStdString(title), Shown(text),
                    QMessageBox::Yes | QMessageBox::No, window_);
    box.setTextFormat(Qt::PlainText);
    box.setEscapeButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}

std::optional<std::string> QtDialogs::OpenFile(const std::string& title, const std::string& filter)
{
    return Chosen(QFileDialog::getOpenFileName(window_, QString::fromStdString(title), QString(),
                                               ToolkitFilter(filter)));
}

std::optional<std::string> QtDialogs::SaveFile(const std::string& title, const std::string& filter)
{
    return Chosen(QFileDialog::getSaveFileName(window_, QString::fromStdString(title), QString(),
                                               ToolkitFilter(filter)));
}

std::optional<document::Colour> QtDialogs::ChooseColour(document::Colour initial)
{
    const QColor present(document::Red(initial), document::Green(initial), document::Blue(initial));
    const QColor chosen = QColorDialog::getColor(present, window_, QStringLiteral("Farbe ändern"));
    if (!chosen.isValid()) return std::nullopt;
    return document::MakeColour(chosen.red(), chosen.green(), chosen.blue());
}

std::optional<int> QtDialogs::AskNumber(const std::string& title, const std::string& label,
                                        int value, int lowest, int highest)
{
    bool taken = false;
    const int number =
        QInputDialog::getInt(window_, QString::fromStdString(title), QString::fromStdString(label),
                             value, lowest, highest, 1, &taken);
    if (!taken) return std::nullopt;
    return number;
}

}  // namespace korvinth::ui
