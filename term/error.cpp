#include "term/error.h"

#include <array>

namespace korvinth::term {

namespace {

struct Message
{
    std::string_view text;
    bool with_data = false;
};

constexpr std::array<Message, 32> kMessages = {{
    {"", true},
    {"Fehlerhafte Klammersetzung"},
    // Deliberate: the one English message; German texts elsewhere do not change it.
    {"Undefined variable: ", true},
    {"Ungültige Binärzahl"},
    {"Ungültige Oktalzahl"},
    {"Ungültige Hexadezimalzahl"},
    {"Faktorieller Überlauf"},
    {"Falschplatzierte Anführungsstriche"},
    {"Ungültiger Term"},
    {"Speicher für Definitionen ist voll"},
    {"Nicht definierte Funktion: ", true},
    {"Ungültige Anzahl von Argumenten in ", true},
    {"Ungültiger Argumenttyp in ", true},
    {"Division durch 0"},
    // Deliberate: ends in a blank.
    {"Ganzzahldivision durch 0 (mit \\ oder DIV) "},
    {"Ungültiger Wert im Exponenten"},
    {"Ungültiger Wert unter der Wurzel"},
    {"Ungültiger Wert für LOG2"},
    {"Ungültiger Wert für LOG10"},
    {"Ungültiger Wert für LOG oder LN"},
    {"Ungültiger Wert für ARCSIN"},
    {"Ungültiger Wert für ARCCOS"},
    {"Ungültiger Wert für SEC"},
    {"Ungültiger Wert für CSC"},
    {"Ungültiger Wert für COT"},
    {"Ungültiger Wert für COTH"},
    {"Ungültiger Wert für CSCH"},
    {"Ungültiger Wert für ACOSH"},
    {"Ungültiger Wert für ATANH"},
    {"Ungültiger Wert für ACOTH"},
    {"Ungültiger Wert für ASECH"},
    {"Ungültiger Wert für ACSCH"},
}};

}  // namespace

std::string ErrorMessage(std::int32_t number, std::string_view data)
{
    if (number < 1 || number > static_cast<std::int32_t>(kMessages.size())) return {};
    const Message& message = kMessages[static_cast<std::size_t>(number - 1)];
    std::string text(message.text);
    if (message.with_data) text += data;
    return text;
}

}  // namespace korvinth::term
