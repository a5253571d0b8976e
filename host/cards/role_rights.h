// RoleRights: the rights of a role on its card: every component of the books in a tree, with five
// flags that are ticked for the chosen one and travel with the save of the role.
//
// A component of a single group takes the flags of the bare one until it is granted by itself.
// Ticking a module's line ticks everything below it.
#pragma once

#include <string>
#include <vector>

#include "host/cards/card_form.h"

namespace tolvex {

inline constexpr int kFlagCount = 5;

// One component as it stands on the screen.
struct RightLine {
  std::string component, parent, caption;
  int kind = 0;   // 10 a module, 1 one level, 2 five flags
  int depth = 0;  // below its parents
  bool granted = false;
  bool flags[kFlagCount] = {};  // of the grant itself
};

// What the role may do by a line: its own grant, or that of the line above it for a group.
bool inherits(const RightLine& line);
bool effective(const std::vector<RightLine>& lines, std::size_t at, int flag);
// Gives or takes a flag of the line, and of all below the line of a module. All flags of a
// component of one level go together; whoever may do anything may also view.
void setFlag(std::vector<RightLine>& lines, std::size_t at, int flag, bool on);
// A group's line stands by itself from now on, beginning with what it inherited, or no more.
void setOwn(std::vector<RightLine>& lines, std::size_t at, bool own);

class RoleRights final : public CardPart {
 public:
  explicit RoleRights(CardForm& form);
  void shown() override;
  bool maySave() override;
  RowSetPtr secondSet() override { return set_; }

  ui::ListView lvwRights;
  ui::CheckBox chkOwn;
  ui::CheckBox chkView, chkDelete, chkEdit, chkCreate, chkAdmin;
  ui::Button cmdLike;

 private:
  void read(int role);
  void fill();
  void showCurrent();
  void tick(int flag);
  void takeFrom();

  CardForm& form_;
  ui::CheckBox* const checks_[kFlagCount];
  RowSetPtr set_;  // as the store gave it
  std::vector<RightLine> lines_;
};

}  // namespace tolvex
