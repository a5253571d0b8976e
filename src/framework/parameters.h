// Parameter texts: the argument list that travels with a call to the store.
//
// Texts stand in single quotes with nothing escaped, numbers bare with "." as decimal mark, joined
// by a comma without blanks; no arguments at all is the word None.
#pragma once

#include <string>
#include <string_view>

#include "framework/date_time.h"
#include "framework/variant.h"

namespace tolvex {

inline constexpr const char* kNoParameters = "None";

// Parameters().text(firm).number(-1).date(today).str()  ->  'O000010012',-1,'2004.02.10'
class Parameters {
 public:
  Parameters& text(std::string_view value);
  Parameters& number(double value);
  Parameters& date(DateTime value);          // as text, yyyy.mm.dd
  Parameters& bare(std::string_view value);  // as it stands
  std::string str() const { return out_.empty() ? kNoParameters : out_; }

 private:
  void comma();
  std::string out_;
};

std::string quoted(std::string_view value);  // 'value'

}  // namespace tolvex
