// CardLists: lists of records that name the card's record, each with a button for a new one.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/cards/card_form.h"

namespace tolvex {

struct CardList {
  const char* list;    // the ListView's name, "lvwAccounts"
  const char* button;  // "cmdNewAccount"
  const char* shown;   // column of the kind's list that holds the card's reference
  const char* field;   // column of the record where a new one keeps it
  const CardSpec& (*card)();
  const char* same = "";  // column of the kind's list that says nothing here
};

class CardLists : public CardPart {
 public:
  CardLists(CardForm& form, std::span<const CardList> lists);
  void shown() override;
  void recordsChanged(const std::string& kind) override;

 private:
  struct Listed {
    const CardList* about;
    std::unique_ptr<ui::ListView> list;
    std::unique_ptr<ui::Button> button;
  };
  void read(Listed& listed);
  void makeNew(const CardList& about);

  CardForm& form_;
  std::vector<Listed> lists_;
};

}  // namespace tolvex
