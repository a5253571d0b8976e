// The text of a document's number: which parts a group may join, and how they become one text.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "framework/date_time.h"

namespace tolvex {

struct NumberPart {
  std::string_view keyword, caption;
};
inline constexpr std::array<NumberPart, 4> kNumberParts = {{{"Date", "Data"},
                                                            {"UserPrefix", "Darbuotojo kodas"},
                                                            {"AutoNumber", "Auto-numeris"},
                                                            {"Prefix", "Prefiksas"}}};

inline constexpr const char* kUnknownUser = "??";  // stands for the code of no user

// With zeros in front; a counter that is wider is not cut.
std::string paddedCounter(int counter, std::size_t width);

struct NumberText {
  int counter = 0;
  std::string mask;        // keywords joined by "_"
  std::string prefix;      // of the group
  std::string digits;      // as long as the counter is wide, whatever stands in it
  std::string userPrefix;  // of who makes the document
  // The parts of the mask in its order, joined by "-". `today` is the day of the call, never that
  // of the document.
  std::string compose(DateTime today) const;
};

// All parts of numbers: first those of a mask in its order, then the others in theirs.
struct MaskPart {
  NumberPart part;
  bool used = false;
};
std::vector<MaskPart> partsOf(std::string_view mask);

}  // namespace tolvex
