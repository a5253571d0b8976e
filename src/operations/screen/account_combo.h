// A box that takes an account: it shows the code, a blank and the name, completes what is typed,
// and gives back the text up to the first blank.
#pragma once

#include <string>
#include <string_view>

#include "framework/param_dictionary.h"
#include "platform/controls.h"

namespace tolvex {

// The accounts with "0" in front unless they have it: the side of an opening balance that has no
// account.
ParamDictionary withOpeningBalances(const ParamDictionary& accounts);

void fillAccounts(ui::ComboBox& box, const ParamDictionary& accounts);
// An account that is not among the choices stands there as its code.
void showAccount(ui::ComboBox& box, std::string_view account);
std::string accountIn(const ui::ComboBox& box);

// Leaving a box whose text is no account is told, and the focus goes back; an empty box may be
// left.
void checkAccountOnLeave(ui::ComboBox& box, const ParamDictionary& accounts);

}  // namespace tolvex
