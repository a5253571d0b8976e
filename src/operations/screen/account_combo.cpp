#include "operations/screen/account_combo.h"

#include "framework/conversions.h"
#include "framework/text.h"

namespace tolvex {

ParamDictionary withOpeningBalances(const ParamDictionary& accounts) {
  ParamDictionary all;
  if (!accounts.Exists("0")) all.Add("0", "Pradiniai likučiai");
  const std::vector<std::string> codes = accounts.Keys();
  const std::vector<Variant> names = accounts.Items();
  for (std::size_t i = 0; i < codes.size(); ++i) all.Add(codes[i], names[i]);
  return all;
}

void fillAccounts(ui::ComboBox& box, const ParamDictionary& accounts) {
  const std::vector<std::string> codes = accounts.Keys();
  const std::vector<Variant> names = accounts.Items();
  std::vector<ui::ComboBox::Item> items;
  items.reserve(codes.size());
  for (std::size_t i = 0; i < codes.size(); ++i) {
    items.push_back({codes[i] + " " + names[i].Show(), codes[i]});
  }
  box.editable = true;
  box.items = std::move(items);
}

void showAccount(ui::ComboBox& box, std::string_view account) {
  const int index = box.findKey(account);
  if (index < 0) {
    box.setText(account);
  } else {
    box.setText(box.items()[static_cast<std::size_t>(index)].text);
  }
}

std::string accountIn(const ui::ComboBox& box) { return AccountCodeOf(trim(box.text())); }

void checkAccountOnLeave(ui::ComboBox& box, const ParamDictionary& accounts) {
  if (!box.text().empty()) CheckAccountBox(box, accounts, true, false);
}

}  // namespace tolvex
