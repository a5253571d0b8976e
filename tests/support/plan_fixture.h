// Books with a new chart of accounts beside the working one, for tests of the conversion.
#pragma once

#include <initializer_list>
#include <string>

#include "host/store/session.h"

namespace tolvex::store {

// Saves a node of the new plan as a screen would and gives its id. A parent is the longest number
// that is there already.
int addNewAccount(Session& session, const std::string& code, bool group = false);
// Ties an account of the working plan to one of the new plan; "" unties it.
void setCounterpart(Session& session, const std::string& code, const std::string& newCode);
int accountId(Session& session, int plan, const std::string& code);  // 0: none

// A new plan of a few accounts and counterparts for all of the seed's that the demo company, the
// templates and the marks use: "240" becomes "2410"; "2711", "2712", "2713" all become "2720";
// "450" and "443" become "4430"; every other one keeps its number behind a 9.
void makeSmallPlan(Session& session);
std::string counterpartOf(const std::string& code);  // by that rule; "0" stays

}  // namespace tolvex::store
