// Text in UTF-8: lengths and cuts in characters (code points), case, Lithuanian order.
//
// Nothing here depends on the C locale. Trimming removes blanks (U+0020) only.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tolvex {

std::size_t length(std::string_view text);                   // in characters
std::string left(std::string_view text, std::size_t count);  // first characters
std::string mid(std::string_view text, std::size_t from1,    // from1 counts from 1
                std::size_t count = std::string::npos);
std::string CutToChars(std::string_view text, std::size_t count);  // the one rule for cutting

std::string trim(std::string_view text);
std::string trimLeft(std::string_view text);
std::string trimRight(std::string_view text);

// Simple case mapping: Basic Latin, Latin-1, Latin Extended-A (all Lithuanian letters), Cyrillic.
// The byte length never changes. Accents count: "Č" is not "C".
std::string upper(std::string_view text);
bool equalNoCase(std::string_view a, std::string_view b);
bool startsWithNoCase(std::string_view text, std::string_view prefix);
bool containsNoCase(std::string_view text, std::string_view part);

// Order of Lithuanian texts without case: a ą b c č d e ę ė f g h i į y j k l m n o p q r s š t u
// ų ū v w x z ž, other letters after ž. Letters that differ only by a mark count as equal until
// the rest is equal. Below, at or above zero.
int compareLithuanian(std::string_view a, std::string_view b);

std::vector<std::string> split(std::string_view text, char mark);  // "" gives one empty piece
std::string join(const std::vector<std::string>& parts, std::string_view mark);
std::string replaceAll(std::string text, std::string_view what, std::string_view with);

// A number as parameters and filters carry it: shortest text that reads back the same (at most 15
// significant digits when they suffice), ".", no exponent below 1e15.
std::string plainNumber(double value);
bool parsePlainNumber(std::string_view text, double& value);  // whole text, "." as mark

}  // namespace tolvex
