// Text helpers of the term language: whole words, balanced brackets.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace korvinth::term {

// Bits of NeighbourKind and of the mask of ReplaceWord.
inline constexpr unsigned kContinuedOnTheLeft = 1;   // ...a letter (or a letter and digits) before
inline constexpr unsigned kContinuedOnTheRight = 2;  // ...a letter, digit, apostrophe or "(" after
inline constexpr unsigned kWholeWord = kContinuedOnTheLeft | kContinuedOnTheRight;

// The text without the blanks at both ends; other white space counts as text.
std::string_view TrimBlanks(std::string_view text);

// Replaces every occurrence of `from`, left to right, without looking at the result again.
std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to);

// Classifies what surrounds text[offset, offset + length); only a..z without regard to case count
// as letters. `offset` is a byte offset; nothing before or after the text counts as no neighbour.
unsigned NeighbourKind(std::string_view text, std::size_t offset, std::size_t length);

// Replaces the occurrences of `word` whose NeighbourKind has no bit in common with `mask`; blanks
// at both ends of the text are removed. Deliberate: not idempotent, since "_" is no letter here.
std::string ReplaceWord(std::string_view text, std::string_view word, std::string_view replacement,
                        unsigned mask);

// For every "(" the offset of its matching ")", npos where there is none and for other characters.
std::vector<std::size_t> MatchingBrackets(std::string_view text);

// The text from the first "(" at or after the byte offset `start` to its matching ")", both
// included; empty when the brackets do not balance.
std::string_view MatchingGroup(std::string_view text, std::size_t start);

}  // namespace korvinth::term
