// ColumnMemory: how a user has laid out the columns of a list, kept among his settings by the form,
// the list and the columns it has.
#pragma once

#include <string>
#include <vector>

#include "platform/controls.h"

namespace tolvex::desktop {

class ColumnMemory {
 public:
  // One column as it is shown, from left to right.
  struct Place {
    int column = 0;  // its number in the list
    int width = 0;   // in pixels; 0: not his own
    bool operator==(const Place&) const = default;
  };

  ColumnMemory(ui::ListView& list, const std::vector<ui::Column>& columns);
  const std::string& name() const { return key_; }  // other columns, another name
  // Every column once, or nothing when there is no memory of just these columns.
  std::vector<Place> read() const;
  void write(const std::vector<Place>& places) const;
  void forget() const;

 private:
  ui::ListView& list_;
  std::string key_;
  std::size_t count_;
};

}  // namespace tolvex::desktop
