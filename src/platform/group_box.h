// GroupBox: a box that shows a group of some kind, with commands that pick another and clear it.
#pragma once

#include <string>
#include <string_view>

#include "platform/host.h"

namespace tolvex {

class GroupBox {
 public:
  // `kind` is the object code of what is picked; `groups`: only its groups are offered. Without a
  // clear button the value cannot be taken out. The controls outlive the box.
  GroupBox(ui::TextBox& box, ui::Button& pick, ui::Button* clear, std::string_view kind,
           bool groups);

  bool groupsOnly;
  ui::Handler onChange;  // after the user picked another group or cleared the box

  const std::string& reference() const { return reference_; }  // "" for none
  int id() const;
  // Shows a group by its name; 0 shows none. A group that is gone shows none, but keeps its id.
  void show(int id);
  void enable(bool enabled);

 private:
  void choose();
  void set(std::string reference, std::string text);

  ui::TextBox& box_;
  ui::Button& pick_;
  ui::Button* clear_;
  std::string kind_, reference_;
};

}  // namespace tolvex
