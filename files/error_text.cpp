#include <cerrno>

#include "files/file_system.h"

namespace korvinth::files {
namespace {

struct FaultText
{
    std::errc fault;
    std::string_view text;
};

constexpr FaultText kFaultTexts[] = {
    {std::errc::no_such_file_or_directory, "Die Datei oder den Ordner gibt es nicht"},
    {std::errc::not_a_directory, "Ein Teil des Pfades ist kein Ordner"},
    {std::errc::is_a_directory, "Das ist ein Ordner, keine Datei"},
    {kNoOrdinaryFile, "Das ist keine gewöhnliche Datei"},
    {std::errc::file_exists, "Die Datei gibt es bereits"},
    {std::errc::permission_denied, "Der Zugriff ist nicht erlaubt"},
    {std::errc::operation_not_permitted, "Der Vorgang ist nicht erlaubt"},
    {std::errc::read_only_file_system, "Der Datenträger ist schreibgeschützt"},
    {std::errc::no_space_on_device, "Auf dem Datenträger ist kein Platz mehr"},
    {std::errc::file_too_large, "Die Datei ist zu groß"},
    {std::errc::not_enough_memory, "Der Speicher reicht nicht"},
    {std::errc::io_error, "Beim Lesen oder Schreiben hat der Datenträger versagt"},
    {std::errc::device_or_resource_busy, "Die Datei wird gerade benutzt"},
    {std::errc::text_file_busy, "Die Datei wird gerade benutzt"},
    {std::errc::no_such_device, "Der Datenträger ist nicht da"},
    {std::errc::no_such_device_or_address, "Der Datenträger ist nicht da"},
    {std::errc::timed_out, "Der Datenträger antwortet nicht"},
    {std::errc::filename_too_long, "Der Dateiname ist zu lang"},
    {std::errc::invalid_argument, "Dieser Dateiname ist hier nicht möglich"},
    {std::errc::illegal_byte_sequence, "Dieser Dateiname ist hier nicht möglich"},
    {std::errc::too_many_symbolic_link_levels, "Die Verknüpfungen führen im Kreis"},
    {std::errc::too_many_files_open, "Es sind zu viele Dateien geöffnet"},
    {std::errc::too_many_files_open_in_system, "Es sind zu viele Dateien geöffnet"},
    {std::errc::cross_device_link, "Auf einen anderen Datenträger lässt sich nicht verschieben"},
#ifdef EDQUOT
    {std::errc{EDQUOT}, "Der zugeteilte Speicherplatz ist aufgebraucht"},
#endif
#ifdef ESTALE
    {std::errc{ESTALE}, "Der Datenträger ist nicht da"},
#endif
};

}  // namespace

std::string ErrorText(std::error_code fault)
{
    for (const FaultText& row : kFaultTexts) {
        if (fault == row.fault) return std::string(row.text);
    }
    return fault.message();
}

}  // namespace korvinth::files
