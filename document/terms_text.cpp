#include "document/terms_text.h"

#include "document/substitute_parameters.h"

namespace korvinth::document {

std::string TermsText(const PlotDocument& document, TermsTextMode mode)
{
    std::string text;
    for (const SlotIndex index : AllSlots()) {
        const FunctionSlot& slot = document.slots[index];
        // A slot without a name can still hold the text of a function that it had before.
        if (slot.name.empty() || slot.raw_term.empty()) continue;
        if (Number(index) > document.last_slot_in_use) break;
        text += slot.name + "(" + slot.argument + ")=";
        text += mode == TermsTextMode::AsTyped
                    ? slot.raw_term
                    : SubstituteParameters(document, slot.raw_term, slot.argument);
        if (Number(index) < document.last_slot_in_use) text += "\r\n";
    }
    return text;
}

}  // namespace korvinth::document
