// Entries of a collection as texts, for comparisons and messages of tests.
#pragma once

#include <ostream>
#include <string>

#include "document/collection.h"
#include "term/words.h"

namespace korvinth::document {

// The columns that have a text: "0 Parabel|2 f(x)=x^2", line breaks as "/".
inline std::string Shown(const CollectionEntry& entry)
{
    std::string text = entry.is_protected ? "*" : "";
    for (int number = 0; number < kColumnCount; ++number) {
        const std::string_view column = entry[Column{number}];
        if (column.empty()) continue;
        if (text.size() > 1) text += "|";
        text += std::to_string(number) + " " + term::ReplaceAll(column, kLineBreak, "/");
    }
    return text;
}

inline std::string Shown(const Collection& collection)
{
    std::string text;
    for (const CollectionEntry& entry : collection.entries) {
        if (!text.empty()) text += " & ";
        text += Shown(entry);
    }
    return text;
}

inline void PrintTo(const CollectionEntry& entry, std::ostream* out) { *out << Shown(entry); }
inline void PrintTo(const Collection& collection, std::ostream* out) { *out << Shown(collection); }

}  // namespace korvinth::document
