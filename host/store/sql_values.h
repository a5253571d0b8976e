// Values of a statement that is put together from pieces, in the order in which its text comes to
// name them. The pieces are constants of the program; values are only ever bound.
#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "host/store/database.h"

namespace tolvex::store {

class SqlValues {
 public:
  // The parameter mark under which the value will be bound.
  std::string mark(std::variant<int, std::string> value) {
    values_.push_back(std::move(value));
    return "$" + std::to_string(values_.size());
  }
  void bindTo(Statement& statement) const {
    int place = 0;
    for (const auto& value : values_)
      std::visit([&](const auto& v) { statement.bind(++place, v); }, value);
  }

 private:
  std::vector<std::variant<int, std::string>> values_;
};

}  // namespace tolvex::store
