// The numbering of a group's documents on its card: the parts of a number in their order, the
// counter and its cycle, and a sample of what comes out.
#pragma once

#include <string>

#include "framework/recordset.h"
#include "platform/form.h"

namespace tolvex {

class GroupNumbering {
 public:
  explicit GroupNumbering(ui::Form* form);

  ui::ListView lvwAutoNumber;
  ui::Button cmdUp, cmdDown;
  ui::TextBox txtPrefix, txtANTemplate, txtMinimal;
  ui::ComboBox cmbGroupBy, cmbCycle;
  ui::CheckBox chkANDateFrom;
  ui::DatePicker dtpANDateFrom;
  ui::TextBox txtExample;

  ui::Handler onChange;  // after the user changed anything here

  // `group` is the record of a group. A new group offers the first day of this year as the day
  // from which it numbers.
  void show(RowSet& group);
  void write(RowSet& group) const;
  void enable(bool enabled);
  std::string mask() const;  // keywords of the ticked parts, joined by "_"

 private:
  void wire();
  void changed();
  void move(int by);
  void turnPart();
  void refresh();

  ui::Form& form_;
  bool enabled_ = true;
};

}  // namespace tolvex
