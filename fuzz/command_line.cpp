// The argument list of the program. Input: the arguments, each a line.
#include "app/command_line.h"
#include "render/picture_options.h"

#include "document/slots.h"
#include "fuzz/fuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace korvinth;
    const std::vector<std::string> arguments = fuzzing::Lines(fuzzing::Input(data, size), 40);
    const app::ParsedCommandLine parsed = app::ParseCommandLine(arguments);
    const app::CommandLine& command = parsed.command;
    fuzzing::Require(parsed.usage_error.find('\n') == std::string::npos &&
                         parsed.input_error.find('\n') == std::string::npos,
                     "messages are one line", parsed.usage_error, parsed.input_error);
    fuzzing::Require(command.rows.size() <= document::kSlotCount, "rows have places");
    fuzzing::Require(command.width > 0 && command.width <= render::kLongestSide &&
                         command.height > 0 && command.height <= render::kLongestSide,
                     "a picture has a size");
    fuzzing::Require(std::int64_t{command.width} * command.height <= render::kLargestPicture,
                     "a picture has a possible size");
    fuzzing::Require(
        !command.places || (*command.places >= 0 && *command.places <= app::kMostPlaces),
        "places are in their bounds");
    return 0;
}
