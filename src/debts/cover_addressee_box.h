// The addressees that a cover offers in turn: those of one kind with open debts on both sides.
//
// Who is covered is marked until the screen closes and is not offered as the next one any more.
#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "debts/cover_side_box.h"
#include "platform/form.h"

namespace tolvex {

// Firms, persons, personnel.
inline constexpr const char* kDebtorKinds[] = {"O0000100", "O0001402", "O0001401"};

class CoverAddresseeBox {
 public:
  struct Addressee {
    std::string reference, name;
  };

  explicit CoverAddresseeBox(ui::Form* form);

  // The store is asked when the question has changed; a refusal was shown and offers nobody.
  void read(VXObjectUIO& operation, const CoverSideBox& primary, const CoverSideBox& secondary,
            DateTime day);
  const Addressee* chosen() const;  // null when none
  void markCovered(const std::string& reference);
  // Chooses the one after the chosen one that is not covered yet, else the first such.
  Addressee chooseNext();  // empty when all are covered

  std::function<void(const std::string& kind, const std::string& name)> onKind;
  std::function<void()> onChoose;

  ui::Label lblFirms;
  ui::ComboBox cmbAddr;
  ui::Button cmdFirms;
  ui::MenuItem mnuFirm, mnuPerson, mnuPersonal;
  ui::Menu menuFirms{{&mnuFirm, &mnuPerson, &mnuPersonal}, {}};

 private:
  void chooseKind(std::size_t which, const ui::MenuItem& item);
  void show();

  std::string kind_ = kDebtorKinds[0];
  std::vector<Addressee> offered_;
  std::string askedBy_;  // what they were read by
  std::set<std::string> covered_;
};

}  // namespace tolvex
