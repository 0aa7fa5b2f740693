// What typed texts become so that they come back from a collection file as they are.
#pragma once

#include <string>
#include <string_view>

namespace korvinth::document {

// The nearest text that reads the same and comes back from a file character by character. Both
// leave their own results as they are. The texts are for fields while someone types, but for the
// blanks at the ends of lines, which they drop: those are for when the field is left.
std::string StorableShortText(std::string_view typed);
// Lines may end in LF, CR or CR LF; in the result they end in CR LF.
std::string StorableLongText(std::string_view typed);

// A term, a bound or a whole row of the term editor in signs that a collection file takes: no
// control characters, round brackets for curly ones, a blank after each "\" that a letter follows.
// It means the same. Blanks at the ends stay.
std::string StorableTerm(std::string_view term);

// What the fields for terms take at most, in UTF-16 units, which are no fewer than characters.
inline constexpr int kLongestTerm = 100'000;

}  // namespace korvinth::document
