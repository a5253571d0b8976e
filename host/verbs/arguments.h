// The words of the command line, and the failures of a verb.
#pragma once

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "framework/date_time.h"

namespace tolvex::verbs {

// Wrong usage: exit status 2. Every other failure of a verb is a std::runtime_error: status 1.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Arguments {
  std::vector<std::string> words;              // without options
  std::map<std::string, std::string> options;  // "--books" -> its value, "" for a switch

  bool has(const std::string& option) const { return options.contains(option); }
  std::string value(const std::string& option, const std::string& fallback = {}) const;
};

// `known` maps an option to whether it takes a value: "yes", "no" or "maybe" (a number).
Arguments parse(const std::vector<std::string>& words,
                const std::map<std::string, std::string>& known);
// Exactly that many words, else UsageError.
void wordCount(const Arguments& arguments, std::size_t least, std::size_t most);

}  // namespace tolvex::verbs
