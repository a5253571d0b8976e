#include "platform/controls.h"

#include <algorithm>

#include "framework/text.h"
#include "platform/form.h"

namespace tolvex::ui {

Control::Control(Form* owner, Kind k, std::string n, std::string text)
    : kind(k),
      name(std::move(n)),
      form(*owner),
      caption(this, std::move(text)),
      tip(this),
      visible(this, true),
      enabled(this, true) {
  form.add(this);
}

Control::~Control() { form.remove(this); }

bool Control::shown() const {
  if (!visible()) return false;
  if (!parent) return true;
  if (!page.empty() && static_cast<const TabStrip*>(parent)->currentKey() != page) return false;
  return parent->shown();
}

bool Control::usable() const {
  if (!shown()) return false;
  for (const Control* c = this; c; c = c->parent) {
    if (!c->enabled()) return false;
  }
  return true;
}

void Control::touch() { form.markDirty(this); }

Label::Label(Form* form, std::string name, std::string caption)
    : Control(form, Kind::Label, std::move(name), std::move(caption)) {}

TextBox::TextBox(Form* form, std::string name, std::string caption, int width, Align side)
    : Control(form, Kind::TextBox, std::move(name), std::move(caption)),
      text(this),
      readOnly(this, false),
      caret(this, -1),
      align(side) {
  chars = width;
}

ComboBox::ComboBox(Form* form, std::string name, std::string caption, int width)
    : Control(form, Kind::ComboBox, std::move(name), std::move(caption)),
      items(this),
      index(this, -1),
      typed(this) {
  chars = width;
}

void ComboBox::setTexts(const std::vector<std::string>& texts) {
  std::vector<Item> list;
  list.reserve(texts.size());
  for (const std::string& text : texts) list.push_back({text, {}});
  items = std::move(list);
}

std::string ComboBox::text() const {
  if (editable) return typed();
  const int i = index();
  return i >= 0 && i < static_cast<int>(items().size()) ? items()[static_cast<std::size_t>(i)].text
                                                        : std::string();
}

std::string ComboBox::key() const {
  const int i = index();
  return i >= 0 && i < static_cast<int>(items().size()) ? items()[static_cast<std::size_t>(i)].key
                                                        : std::string();
}

int ComboBox::find(std::string_view wanted) const {
  const auto& list = items();
  const auto hit =
      std::find_if(list.begin(), list.end(), [&](const Item& item) { return item.text == wanted; });
  return hit == list.end() ? -1 : static_cast<int>(hit - list.begin());
}

int ComboBox::findKey(std::string_view wanted) const {
  const auto& list = items();
  const auto hit =
      std::find_if(list.begin(), list.end(), [&](const Item& item) { return item.key == wanted; });
  return hit == list.end() ? -1 : static_cast<int>(hit - list.begin());
}

void ComboBox::setText(std::string_view wanted) {
  index = find(wanted);
  if (editable) typed = std::string(wanted);
}

DatePicker::DatePicker(Form* form, std::string name, std::string caption)
    : Control(form, Kind::DatePicker, std::move(name), std::move(caption)), value(this) {}

CheckBox::CheckBox(Form* form, std::string name, std::string caption)
    : Control(form, Kind::CheckBox, std::move(name), std::move(caption)), on(this, false) {}

OptionButton::OptionButton(Form* form, std::string name, std::string caption, std::string set)
    : Control(form, Kind::OptionButton, std::move(name), std::move(caption)),
      on(this, false),
      group(std::move(set)) {}

void OptionButton::choose() {
  for (Control* control : form.controls()) {
    if (control == this || control->kind != Kind::OptionButton) continue;
    auto* other = static_cast<OptionButton*>(control);
    if (other->group == group) other->on = false;
  }
  on = true;
}

Button::Button(Form* form, std::string name, std::string caption, Role r)
    : Control(form, Kind::Button, std::move(name), std::move(caption)), role(r) {}

ListView::ListView(Form* form, std::string name, std::vector<Column> list, std::string caption)
    : Control(form, Kind::ListView, std::move(name), std::move(caption)),
      columns(std::move(list)),
      current(this, -1) {}

std::vector<Row>& ListView::edit() {
  ++version_;
  touch();
  return rows_;
}

void ListView::setRows(std::vector<Row> rows) {
  edit() = std::move(rows);
  if (current() >= static_cast<int>(rows_.size())) current = -1;
}

int ListView::find(std::string_view key) const {
  const auto hit =
      std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) { return row.key == key; });
  return hit == rows_.end() ? -1 : static_cast<int>(hit - rows_.begin());
}

const Row* ListView::currentRow() const {
  const int i = current();
  return i >= 0 && i < static_cast<int>(rows_.size()) ? &rows_[static_cast<std::size_t>(i)]
                                                      : nullptr;
}

TreeView::TreeView(Form* form, std::string name, std::string caption)
    : Control(form, Kind::TreeView, std::move(name), std::move(caption)),
      nodes(this),
      current(this) {}

const TreeNode* TreeView::find(std::string_view key) const {
  const auto& list = nodes();
  const auto hit =
      std::find_if(list.begin(), list.end(), [&](const TreeNode& n) { return n.key == key; });
  return hit == list.end() ? nullptr : &*hit;
}

TabStrip::TabStrip(Form* form, std::string name)
    : Control(form, Kind::TabStrip, std::move(name), {}), tabs(this), current(this) {}

std::string TabStrip::currentKey() const {
  if (!current().empty()) return current();
  for (const Tab& tab : tabs()) {
    if (tab.visible) return tab.key;
  }
  return {};
}

Panel::Panel(Form* form, std::string name, std::string caption)
    : Control(form, Kind::Panel, std::move(name), std::move(caption)) {}

MenuItem::MenuItem(Form* form, std::string name, std::string caption)
    : Control(form, Kind::MenuItem, std::move(name), std::move(caption)), ticked(this, false) {}

Timer::Timer(Form* form, std::string name, int interval)
    : Control(form, Kind::Timer, std::move(name), {}),
      milliseconds(interval),
      running(this, false) {}

}  // namespace tolvex::ui
