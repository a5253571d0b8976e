// frmPicker: the choice of one object of one or several kinds.
//
// Typing narrows the list, first by the beginning of a word, then by any place; Enter in the box
// takes the current row. "Išvalyti" answers with an empty reference. Groups are offered like other
// rows; the caller says what it does with one.
#pragma once

#include "host/objects/object_rows.h"
#include "platform/form.h"
#include "platform/host.h"

namespace tolvex {

class frmPicker final : public ui::Form {
 public:
  frmPicker(HostContext& host, const PickRequest& request);
  const char* picture() const override;
  void opened() override;
  const std::optional<Picked>& picked() const { return picked_; }

  ui::ComboBox cmbKind{this, "cmbKind", "Rūšis", 30};
  ui::TextBox txtFind{this, "txtFind", "Ieškoti", 30};
  ui::ListView lvwObjects{this, "lvwObjects", {}};
  ui::Button cmdClear{this, "cmdClear", "Išvalyti", ui::Role::Quiet};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOk{this, "cmdOk", "Pasirinkti", ui::Role::Primary};

 private:
  void readKind();
  void narrow();
  void choose();
  std::string textOf(const ui::Row& row) const;

  PickRequest request_;
  std::vector<ui::Row> all_;
  std::optional<Picked> picked_;
};

}  // namespace tolvex
