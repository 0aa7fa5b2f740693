#include "app/headless.h"

#include <ostream>
#include <sstream>
#include <string>

#include "app/collection_run.h"
#include "app/message_text.h"
#include "app/picture_file.h"
#include "app/plot_request.h"
#include "document/calculator.h"
#include "document/list_text.h"
#include "document/value_table.h"
#include "files/file_system.h"
#include "files/path_text.h"
#include "files/system.h"

namespace korvinth::app {
namespace {

// One message a line, without the separators that collected texts end with.
void PrintMessage(std::ostream& errors, std::string_view text)
{
    for (std::string_view line : document::SplitText(text, "\n")) {
        while (line.ends_with(' ') || line.ends_with(';')) line.remove_suffix(1);
        if (!line.empty()) errors << Printable(line) << '\n';
    }
}

struct Results
{
    std::string output;             // for stdout when all is well
    std::string calculator_errors;  // for stdout in any case
    std::string list;               // of a collection, for stdout in any case
    std::string errors;
};

void Calculate(Application& application, const CommandLine& command, Results& results)
{
    const document::PlotDocument& plot = application.Document();
    for (const std::string& term : command.calculations) {
        const std::string line = document::CalculatorLine(application.Parser(), plot, term,
                                                          plot.attributes.calculator_places);
        if (line.starts_with(document::kCalculatorError)) {
            results.calculator_errors += Printable(line) + '\n';
            results.errors +=
                Quoted(term) + ": " + line.substr(document::kCalculatorError.size()) + "; ";
        }
        results.output += line + '\n';
    }
}

void Tabulate(Application& application, const std::string& range, Results& results)
{
    const document::PlotDocument& plot = application.Document();
    document::RowGrid grid;
    std::ostringstream table;
    std::string fault = document::ReadTableRange(plot, application.Parser(), range, grid);
    if (fault.empty()) fault = document::WriteValueTable(plot, application.Parser(), grid, table);
    results.errors += fault;
    results.output += table.str();
}

std::string DrawRequest(Application& application, const CommandLine& command, Results& results)
{
    const PlotRequestReport request = ApplyRequest(application, command);
    results.errors = request.errors;
    return request.notes;
}

// A line on the terminal that is written over until all is done.
void ShowProgress(std::ostream& terminal, std::size_t done, std::size_t count)
{
    terminal << '\r' << done << " von " << count << (done == count ? "\n" : "") << std::flush;
}

std::string DrawFromCollection(Application& application, const CommandLine& command,
                               Results& results, std::ostream& errors)
{
    const ReadFileResult file = ReadCollectionFile(command.collection);
    if (!file.fault.empty()) results.errors = Quoted(command.collection) + ": " + file.fault;
    if (command.list) results.list = EntryList(file.collection);
    application.SetAreaSize(command.width, command.height);
    if (command.places) application.Document().attributes.calculator_places = *command.places;
    if (!results.errors.empty()) return "";
    if (command.all) {
        std::error_code fault;
        if (!files::Disk().Exists(files::PathOf(command.output), fault)) {
            results.errors = Quoted(command.output) + ": Den Ordner gibt es nicht";
            return "";
        }
        const bool shown = files::StderrIsTerminal();
        results.errors = DrawAll(application, file.collection, command.output, command.picture,
                                 [&](std::size_t done, std::size_t count) {
                                     if (shown) ShowProgress(errors, done, count);
                                 });
        return "";
    }
    if (command.list && command.output.empty()) return "";
    const document::CollectionEntry* const entry =
        command.entry ? FindEntry(file.collection, *command.entry) : &file.collection.buffer;
    if (entry == nullptr) {
        results.errors = "Einen Eintrag " + Quoted(*command.entry) + " gibt es nicht";
    } else if (!command.entry && !file.collection.buffer_loaded) {
        results.errors =
            "Neben den Einträgen enthält die Sammlung keinen Plot; --eintrag wählt "
            "einen Eintrag";
    } else {
        results.errors = ApplyEntry(application, *entry);
    }
    return "";
}

}  // namespace

int ReportFaults(const ParsedCommandLine& parsed, std::ostream& errors)
{
    if (!parsed.usage_error.empty()) {
        errors << parsed.usage_error << ". " << UsageLine() << '\n';
        return kWrongCall;
    }
    PrintMessage(errors, parsed.input_error);
    return parsed.input_error.empty() ? kAllWell : kInputError;
}

int RunHeadless(const CommandLine& command, std::ostream& out, std::ostream& errors)
{
    if (command.help || command.version) {
        out << (command.help ? HelpText() : "Korvinth " KORVINTH_VERSION "\n");
        return out.flush() ? kAllWell : kInputError;
    }

    Application application;
    Results results;
    const std::string notes = command.collection.empty()
                                  ? DrawRequest(application, command, results)
                                  : DrawFromCollection(application, command, results, errors);
    term::MathParser& parser = application.Parser();
    parser.SetVariableValue(application.Document().variables.sw, document::kStepWithoutView);
    Calculate(application, command, results);
    if (results.errors.empty() && command.table) Tabulate(application, *command.table, results);
    if (results.errors.empty() && !command.output.empty() && !command.all) {
        PrintMessage(errors, notes);
        const PictureReport picture = WritePicture(application, command.output, command.picture);
        PrintMessage(errors, picture.note);
        if (!picture.fault.empty()) results.errors = Quoted(command.output) + ": " + picture.fault;
    }

    PrintMessage(errors, results.errors);
    out << results.list << (results.errors.empty() ? results.output : results.calculator_errors);
    if (!out.flush()) {
        PrintMessage(errors, "Die Ausgabe konnte nicht geschrieben werden");
        return kInputError;
    }
    return results.errors.empty() ? kAllWell : kInputError;
}

}  // namespace korvinth::app
