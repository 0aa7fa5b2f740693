// The text form of the display attributes. Input: the switches and settings, then colours, widths
// and line types, each a line.
#include "document/attributes_text.h"

#include "fuzz/fuzzing.h"

namespace {

using namespace korvinth;
using namespace korvinth::document;

struct Texts
{
    std::string attributes, colours, widths, types;
    bool operator==(const Texts&) const = default;
};

Texts TextsOf(const DisplayAttributes& attributes)
{
    return {AttributesText(attributes), ColourTableText(attributes), LineWidthsText(attributes),
            LineTypesText(attributes)};
}

DisplayAttributes Taken(const Texts& texts, AttributeScope scope)
{
    DisplayAttributes attributes;
    TakeAttributesText(texts.attributes, scope, attributes);
    TakeColourTable(texts.colours, attributes);
    TakeLineWidths(texts.widths, attributes);
    TakeLineTypes(texts.types, attributes);
    return attributes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::string> lines = fuzzing::Lines(fuzzing::Input(data, size), 4);
    lines.resize(4);
    for (const AttributeScope scope : {AttributeScope::Everything, AttributeScope::Picture}) {
        const DisplayAttributes first = Taken({lines[0], lines[1], lines[2], lines[3]}, scope);
        const Texts texts = TextsOf(first);
        fuzzing::Require(texts.attributes.size() <= kLongestProfileValue,
                         "the text fits into the settings file", texts.attributes);
        fuzzing::Require(texts.attributes.find_first_of("}\r\n") == std::string::npos,
                         "the text is one line", texts.attributes);
        const DisplayAttributes second = Taken(texts, scope);
        fuzzing::Require(TextsOf(second) == texts, "the text comes back", texts.attributes,
                         AttributesText(second));
    }
    return 0;
}
