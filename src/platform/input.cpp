#include "platform/input.h"

#include <algorithm>

#include "framework/text.h"
#include "platform/host.h"

namespace tolvex::ui {
namespace {

const std::string kDone;

// Handlers may replace themselves or their control's handlers; a copy outlives that.
void run(Handler handler) {
  if (handler) handler();
}

bool takesFocus(const Control& control) {
  switch (control.kind) {
    case Kind::Label:
    case Kind::Panel:
    case Kind::MenuItem:
    case Kind::Timer:
      return false;
    default:
      return true;
  }
}

std::string whyUnusable(const Control& control) {
  return control.shown() ? "disabled: " + control.name : "hidden: " + control.name;
}

// Sees whether a handler interrupted the user's act: showed a box, moved the focus elsewhere or
// closed the form.
class Watch {
 public:
  Watch(Form& form, const unsigned& focusMoves)
      : form_(form),
        focusMoves_(focusMoves),
        movesBefore_(focusMoves),
        boxesBefore_(form.host().interruptions()),
        wasOpen_(form.isOpen()) {}
  bool moved() const { return focusMoves_ != movesBefore_; }
  bool closed() const { return wasOpen_ && !form_.isOpen(); }
  bool interrupted() const {
    return moved() || closed() || form_.host().interruptions() != boxesBefore_;
  }
  std::string why() const {
    if (closed()) return "dropped: the form was closed";
    if (moved()) return "dropped: the focus was moved";
    return "dropped: a message was shown";
  }

 private:
  Form& form_;
  const unsigned& focusMoves_;
  unsigned movesBefore_;
  unsigned boxesBefore_;
  bool wasOpen_;
};

// The first byte of a character of UTF-8.
bool starts(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

std::vector<std::string> characters(std::string_view text) {
  std::vector<std::string> result;
  for (const char byte : text) {
    if (starts(byte) || result.empty()) result.emplace_back();
    result.back() += byte;
  }
  return result;
}

char32_t codeOf(const std::string& character) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(character[i]); };
  switch (character.size()) {
    case 1:
      return byte(0);
    case 2:
      return char32_t(byte(0) & 0x1Fu) << 6 | (byte(1) & 0x3Fu);
    case 3:
      return char32_t(byte(0) & 0x0Fu) << 12 | char32_t(byte(1) & 0x3Fu) << 6 | (byte(2) & 0x3Fu);
    default:
      return char32_t(byte(0) & 0x07u) << 18 | char32_t(byte(1) & 0x3Fu) << 12 |
             char32_t(byte(2) & 0x3Fu) << 6 | (byte(3) & 0x3Fu);
  }
}

std::string utf8(char32_t code) {
  const auto byte = [](char32_t bits) { return static_cast<char>(bits); };
  if (code < 0x80) return {byte(code)};
  if (code < 0x800) return {byte(0xC0 | code >> 6), byte(0x80 | (code & 0x3F))};
  if (code < 0x10000) {
    return {byte(0xE0 | code >> 12), byte(0x80 | (code >> 6 & 0x3F)), byte(0x80 | (code & 0x3F))};
  }
  return {byte(0xF0 | code >> 18), byte(0x80 | (code >> 12 & 0x3F)),
          byte(0x80 | (code >> 6 & 0x3F)), byte(0x80 | (code & 0x3F))};
}

// What became of `now` after `before`: the characters between their common ends were typed.
struct Typing {
  std::vector<std::string> head, typed, tail;
};

Typing typing(const std::string& before, const std::string& now, int caret) {
  const auto old = characters(before);
  const auto fresh = characters(now);
  // Behind the caret nothing was typed, so of equal letters the ones before it are the new ones.
  const std::size_t shortest = std::min(old.size(), fresh.size());
  const std::size_t behind =
      caret < 0 ? shortest : fresh.size() - std::min(fresh.size(), static_cast<std::size_t>(caret));
  std::size_t tail = 0;
  while (tail < std::min(shortest, behind) &&
         old[old.size() - 1 - tail] == fresh[fresh.size() - 1 - tail]) {
    ++tail;
  }
  std::size_t head = 0;
  while (head < shortest - tail && old[head] == fresh[head]) ++head;
  const auto at = [&](std::size_t i) { return fresh.begin() + static_cast<std::ptrdiff_t>(i); };
  return {{at(0), at(head)},
          {at(head), at(fresh.size() - tail)},
          {at(fresh.size() - tail), fresh.end()}};
}

std::string joined(const std::vector<std::string>& characters) { return join(characters, ""); }

// The typed characters through the box's filter and limit.
std::string accepted(const TextBox& box, const Typing& change) {
  std::string text = joined(change.head);
  const std::string tail = joined(change.tail);
  std::size_t count = change.head.size() + change.tail.size();
  for (const std::string& character : change.typed) {
    if (box.maxLength > 0 && count >= box.maxLength) break;
    if (!box.keyFilter) {
      text += character;
    } else if (const char32_t code = box.keyFilter(codeOf(character), text + tail); code != 0) {
      text += utf8(code);
    } else {
      continue;
    }
    ++count;
  }
  return text;
}

}  // namespace

std::string Input::focus(Control& control) {
  if (!control.usable()) return whyUnusable(control);
  return moveFocus(control, false);
}

std::string Input::moveFocus(Control& control, bool isCancel) {
  Control* old = form_.focus_;
  if (old == &control || !takesFocus(control)) return kDone;
  const bool mayHold =
      !isCancel && !(control.kind == Kind::Button && static_cast<Button&>(control).ownTest);
  Watch watch(form_, form_.focusMoves_);
  if (old) {
    if (mayHold && old->usable() && old->mayLeave && !old->mayLeave()) return keptIn(*old);
    if (!watch.moved()) run(old->onLeave);
    if (watch.closed()) return watch.why();
    if (watch.moved() && !isCancel) return watch.why();
  }
  form_.focus_ = &control;
  run(control.onEnter);
  if (form_.view) form_.view->wake();
  return watch.interrupted() && !isCancel ? watch.why() : kDone;
}

std::string Input::keptIn(Control& control) {
  if (form_.view) form_.view->wake();
  return "kept in " + control.name;
}

std::string Input::begin(Control& control, bool isCancel) {
  std::string why;
  if (!control.usable()) {
    why = whyUnusable(control);
  } else {
    why = moveFocus(control, isCancel);
    // Leaving the old field may have disabled what the user was about to use.
    if (why.empty() && !control.usable()) why = whyUnusable(control);
  }
  if (!why.empty()) control.touch();  // what the view shows of the act is taken back
  return why;
}

std::string Input::leave() {
  Control* old = form_.focus_;
  if (!old) return kDone;
  Watch watch(form_, form_.focusMoves_);
  if (old->usable() && old->mayLeave && !old->mayLeave()) return keptIn(*old);
  run(old->onLeave);
  if (!watch.moved()) form_.focus_ = nullptr;
  return kDone;
}

std::string Input::enter(Control& control, std::string_view text) {
  switch (control.kind) {
    case Kind::TextBox: {
      auto& box = static_cast<TextBox&>(control);
      if (std::string why = begin(box); !why.empty()) return why;
      if (box.readOnly()) return "read-only: " + box.name;
      Typing change;
      change.typed = characters(text);
      return setText(box, accepted(box, change), -1);
    }
    case Kind::ComboBox: {
      auto& combo = static_cast<ComboBox&>(control);
      if (combo.editable) return typeCombo(combo, text);
      const int index = combo.find(text);
      if (index < 0) return "no item \"" + std::string(text) + "\" in " + combo.name;
      return choose(combo, index);
    }
    case Kind::DatePicker: {
      auto& picker = static_cast<DatePicker&>(control);
      if (trim(text).empty()) return date(picker, std::nullopt);
      const DateTime today = form_.host().clock().today();
      const auto value = readTypedDate(text, picker.value().value_or(today), today);
      if (!value) return "no date: \"" + std::string(text) + '"';
      return date(picker, value);
    }
    default:
      return "no box: " + control.name;
  }
}

std::string Input::setText(TextBox& box, std::string text, int caret) {
  box.touch();  // the view may show what the filter dropped
  if (text == box.text()) return kDone;
  box.caret = caret;
  box.text = std::move(text);
  run(box.onChange);
  return kDone;
}

std::string Input::typeText(TextBox& box, std::string text, int caret) {
  if (std::string why = begin(box); !why.empty()) return why;
  if (box.readOnly()) {
    box.touch();
    return "read-only: " + box.name;
  }
  const Typing change = typing(box.text(), text, caret);
  const std::string kept = accepted(box, change);
  const int after = static_cast<int>(length(kept));
  std::string now = kept + joined(change.tail);
  const bool untouched = now == text;
  return setText(box, std::move(now), untouched ? caret : after);
}

std::string Input::choose(ComboBox& combo, int index) {
  if (std::string why = begin(combo); !why.empty()) return why;
  if (index < 0 || index >= static_cast<int>(combo.items().size())) {
    return "no such item in " + combo.name;
  }
  const std::string& text = combo.items()[static_cast<std::size_t>(index)].text;
  if (combo.index() == index && combo.text() == text) return kDone;
  if (combo.editable) combo.typed = text;
  combo.index = index;
  run(combo.onChange);
  return kDone;
}

std::string Input::typeCombo(ComboBox& combo, std::string_view text) {
  if (!combo.editable) return "not for typing: " + combo.name;
  if (std::string why = begin(combo); !why.empty()) return why;
  if (combo.typed() == text) return kDone;
  combo.typed = std::string(text);
  combo.index = combo.find(text);
  run(combo.onChange);
  return kDone;
}

std::string Input::choose(TabStrip& strip, std::string_view key) {
  if (std::string why = begin(strip); !why.empty()) return why;
  const auto& tabs = strip.tabs();
  const auto tab = std::find_if(tabs.begin(), tabs.end(),
                                [&](const auto& t) { return t.key == key && t.visible; });
  if (tab == tabs.end()) return "no tab \"" + std::string(key) + "\" in " + strip.name;
  if (strip.currentKey() == key) return kDone;
  strip.current = std::string(key);
  run(strip.onChange);
  return kDone;
}

std::string Input::date(DatePicker& picker, std::optional<DateTime> value) {
  if (std::string why = begin(picker); !why.empty()) return why;
  picker.touch();  // the view may show a text that was none
  if (!value && !picker.mayBeEmpty) return "may not be empty: " + picker.name;
  if (value) value = value->Date();
  if (value && picker.monthOnly) value = DateTime::Of(value->Year(), value->Month(), 1);
  if (picker.value() == value) return kDone;
  picker.value = value;
  run(picker.onChange);
  return kDone;
}

std::string Input::check(CheckBox& box, bool on) {
  if (std::string why = begin(box); !why.empty()) return why;
  if (box.on() == on) return kDone;
  box.on = on;
  run(box.onChange);
  run(box.onClick);
  return kDone;
}

std::string Input::choose(OptionButton& option) {
  if (std::string why = begin(option); !why.empty()) return why;
  if (option.on()) return kDone;
  option.choose();
  run(option.onChange);
  run(option.onClick);
  return kDone;
}

std::string Input::click(Control& control) {
  if (control.kind == Kind::OptionButton) return choose(static_cast<OptionButton&>(control));
  if (control.kind == Kind::CheckBox) {
    auto& box = static_cast<CheckBox&>(control);
    return check(box, !box.on());
  }
  const bool cancel = control.kind == Kind::Button && static_cast<Button&>(control).isCancel;
  if (std::string why = begin(control, cancel); !why.empty()) return why;
  if (control.onClick) {
    run(control.onClick);
  } else if (control.menu) {
    form_.popup(*control.menu, control);
  }
  return kDone;
}

std::string Input::rightClick(Control& control) {
  if (std::string why = begin(control); !why.empty()) return why;
  if (control.onRightClick) {
    run(control.onRightClick);
  } else if (control.menu) {
    form_.popup(*control.menu, control);
  }
  return kDone;
}

std::string Input::doubleClick(Control& control) {
  if (control.kind == Kind::ListView) {
    auto& list = static_cast<ListView&>(control);
    return activate(list, list.current());
  }
  if (control.kind == Kind::TreeView) {
    auto& tree = static_cast<TreeView&>(control);
    return activate(tree, tree.current());
  }
  if (std::string why = begin(control); !why.empty()) return why;
  run(control.onDoubleClick);
  return kDone;
}

std::string Input::select(ListView& list, int row) {
  if (std::string why = begin(list); !why.empty()) return why;
  if (row < -1 || row >= static_cast<int>(list.rows().size())) return "no such row in " + list.name;
  if (list.current() == row) return kDone;
  list.current = row;
  run(list.onChange);
  return kDone;
}

std::string Input::activate(ListView& list, int row) {
  if (row < 0) return "no row in " + list.name;
  Watch watch(form_, form_.focusMoves_);
  if (std::string why = select(list, row); !why.empty()) return why;
  if (watch.interrupted()) return watch.why();
  run(list.onActivate ? list.onActivate : list.onDoubleClick);
  return kDone;
}

std::string Input::check(ListView& list, int row, bool on) {
  if (!list.checkBoxes || row < 0) return "no row to tick in " + list.name;
  Watch watch(form_, form_.focusMoves_);
  if (std::string why = select(list, row); !why.empty()) return why;
  if (watch.interrupted()) return watch.why();
  if (list.current() != row || list.rows()[static_cast<std::size_t>(row)].checked == on)
    return kDone;
  list.edit()[static_cast<std::size_t>(row)].checked = on;
  run(list.onCheck);
  return kDone;
}

std::string Input::insertKey(ListView& list) {
  if (std::string why = begin(list); !why.empty()) return why;
  run(list.onInsert);
  return kDone;
}

std::string Input::deleteKey(ListView& list) {
  if (std::string why = begin(list); !why.empty()) return why;
  run(list.onDelete);
  return kDone;
}

std::string Input::select(TreeView& tree, std::string_view key) {
  if (std::string why = begin(tree); !why.empty()) return why;
  if (!key.empty() && !tree.find(key))
    return "no node \"" + std::string(key) + "\" in " + tree.name;
  if (tree.current() == key) return kDone;
  tree.current = std::string(key);
  run(tree.onChange);
  return kDone;
}

std::string Input::activate(TreeView& tree, std::string_view key) {
  if (key.empty()) return "no node in " + tree.name;
  const std::string wanted(key);  // the caller's may be the tree's own
  Watch watch(form_, form_.focusMoves_);
  if (std::string why = select(tree, wanted); !why.empty()) return why;
  if (watch.interrupted()) return watch.why();
  run(tree.onActivate ? tree.onActivate : tree.onDoubleClick);
  return kDone;
}

std::string Input::expand(TreeView& tree, std::string_view key, bool expanded) {
  if (!tree.usable()) return whyUnusable(tree);
  std::vector<TreeNode> nodes = tree.nodes();
  const auto node =
      std::find_if(nodes.begin(), nodes.end(), [&](const TreeNode& n) { return n.key == key; });
  if (node == nodes.end()) return "no node \"" + std::string(key) + "\" in " + tree.name;
  if (node->expanded == expanded) return kDone;
  node->expanded = expanded;
  tree.nodes = std::move(nodes);
  if (const auto handler = tree.onExpand) handler(std::string(key), expanded);
  return kDone;
}

std::string Input::closeTab(TabStrip& strip, std::string_view key) {
  if (std::string why = begin(strip); !why.empty()) return why;
  if (const auto handler = strip.onClose) handler(std::string(key));
  return kDone;
}

std::string Input::pick(MenuItem& item) {
  if (!item.usable()) return whyUnusable(item);
  run(item.onClick);
  return kDone;
}

std::string Input::drop(Control& control, const std::string& reference) {
  if (!control.usable()) return whyUnusable(control);
  if (!control.canDrop || !control.canDrop(reference)) return "refused by " + control.name;
  if (const auto handler = control.onDrop) handler(reference);
  return kDone;
}

std::string Input::tick(Timer& timer) {
  if (!timer.running()) return "stopped: " + timer.name;
  run(timer.onChange);
  return kDone;
}

std::string Input::close() {
  if (!form_.mayClose()) return "refused to close: " + form_.name();
  form_.close();
  return kDone;
}

}  // namespace tolvex::ui
