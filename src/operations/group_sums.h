// The debts of a group on its card: by which marked accounts they are kept, and the commands that
// compute their open items in full or drop them.
#pragma once

#include <memory>
#include <string>

#include "platform/form.h"
#include "platform/objects.h"

namespace tolvex {

class GroupSums {
 public:
  explicit GroupSums(ui::Form* form);

  ui::ListView lvwAccountSettings;
  ui::Button cmdCreateFullSum, cmdClearFullSum;

  ui::Handler onChange;  // after the user ticked another setting

  // A failure to read the settings is shown and leaves the list empty.
  void show(std::shared_ptr<VXObjectUIO> group);
  void write(RowSet& group) const;
  void enable(bool enabled);
  std::string code() const { return code_; }

 private:
  void fill();
  void tick(const std::string& code);
  void turn(bool on);
  void compute(const char* question, const std::string& code);
  void refresh();

  ui::Form& form_;
  std::shared_ptr<VXObjectUIO> group_;
  std::string code_;  // of the ticked setting; kept when the list could not be read
  bool enabled_ = true;
};

}  // namespace tolvex
