// ParameterText: settings kept as one text, its fields joined by a mark.
//
// A field that the text does not reach reads as "". Fields behind those that a reader knows are
// kept, whoever wrote them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tolvex {

class ParameterText {
 public:
  explicit ParameterText(std::string_view text, char mark = '#');

  std::size_t size() const { return fields_.size(); }  // an empty text has none
  const std::string& operator[](std::size_t index) const;
  int number(std::size_t index) const;             // 0 for what is no whole number
  void set(std::size_t index, std::string value);  // the text grows to reach it
  void reach(std::size_t count);                   // at least so many fields
  std::string str() const;

 private:
  char mark_;
  std::vector<std::string> fields_;
};

}  // namespace tolvex
