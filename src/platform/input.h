// Input: the user's acts on a form, whatever they come from: mouse, keyboard or script.
//
// Every act on a control first asks whether the control can be used, then moves the focus to it
// (leaving the old field with its veto and its handler), then changes the state and calls the
// handler. When leaving a field showed a message (HostContext::interruptions grew) or moved the
// focus elsewhere, the act that caused it is dropped: a click on "save" does not save behind a
// warning. A message alone lets the focus go, so that the user is not caught in the field. Cancel
// buttons skip the veto and are never dropped. Handlers run only when something really changed.
// Each function returns "" when the act was done, otherwise why not ("disabled: …", "hidden: …",
// "kept in txtSum", "dropped: …"), in English, for scripts and logs.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "framework/date_time.h"
#include "platform/controls.h"
#include "platform/form.h"

namespace tolvex::ui {

class Input {
 public:
  explicit Input(Form& form) : form_(form) {}

  std::string focus(Control& control);
  std::string leave();                                     // no field has the focus
  std::string enter(Control& box, std::string_view text);  // replaces the text of a box as typed
  std::string typeText(TextBox& box, std::string text, int caret);  // as it now stands in the box
  std::string choose(ComboBox& combo, int index);
  std::string typeCombo(ComboBox& combo, std::string_view text);
  std::string choose(TabStrip& tabs, std::string_view key);
  std::string date(DatePicker& picker, std::optional<DateTime> value);
  std::string check(CheckBox& box, bool on);
  std::string choose(OptionButton& option);
  std::string click(Control& control);  // buttons, labels, panels
  std::string rightClick(Control& control);
  std::string doubleClick(Control& control);
  std::string select(ListView& list, int row);
  std::string activate(ListView& list, int row);
  std::string check(ListView& list, int row, bool on);
  std::string insertKey(ListView& list);
  std::string deleteKey(ListView& list);
  std::string select(TreeView& tree, std::string_view key);
  std::string activate(TreeView& tree, std::string_view key);
  std::string expand(TreeView& tree, std::string_view key, bool expanded);
  std::string closeTab(TabStrip& tabs, std::string_view key);
  std::string pick(MenuItem& item);
  std::string drop(Control& control, const std::string& reference);
  std::string tick(Timer& timer);
  std::string close();  // as the close box: asks mayClose

 private:
  // Asks, focuses, and says whether the act may go on.
  std::string begin(Control& control, bool isCancel = false);
  std::string moveFocus(Control& control, bool isCancel);
  std::string keptIn(Control& control);
  std::string setText(TextBox& box, std::string text, int caret);
  Form& form_;
};

// Reads a date as accountants type it: "2004.02.10", "20040210", "5" (day of `base`'s month),
// "5.3" or "5 3" (day and month of its year), "t" (today). Nothing when it is none.
std::optional<DateTime> readTypedDate(std::string_view text, DateTime base, DateTime today);

}  // namespace tolvex::ui
