#include "host/cards/card_field.h"

#include <algorithm>
#include <cmath>

#include "framework/references.h"
#include "framework/text.h"
#include "host/objects/object_rows.h"

namespace tolvex {
namespace {

std::vector<std::string> kindsOf(const CardField& about) { return split(about.kinds, ' '); }

std::string named(const char* prefix, const CardField& about) {
  return std::string(prefix) + about.column;
}

void assign(Field field, const Variant& value) {
  const bool same = value.IsAbsent() ? field.IsAbsent() : field.Value() == value;
  if (!same) field.SetValue(value);
}

// Whatever the column holds, an id or a reference, as the reference of an object of `kind`.
std::string referenceIn(Field field, const std::string& kind) {
  if (field.Type() == FieldType::Text) return std::string(field.Text());
  const int id = static_cast<int>(field.Number());
  return id == 0 ? std::string() : refOf(kind, id);
}

class TextField final : public CardBox {
 public:
  TextField(ui::Form& form, const CardField& about, std::function<void()> changed)
      : CardBox(about), box_(&form, named("txt", about), about.caption, about.chars) {
    box_.lines = about.lines;
    box_.onChange = std::move(changed);
  }
  ui::Control& control() override { return box_; }
  void show(RowSet& record) override {
    const Field field = record[about().column];
    box_.maxLength = static_cast<std::size_t>(field.DefinedSize());
    box_.text = std::string(field.Text());
  }
  void write(RowSet& record) override {
    const std::string typed = text();
    Field field = record[about().column];
    if (typed != field.Text()) field.SetValue(typed.empty() ? Variant(Null{}) : Variant(typed));
  }
  void lock(bool readOnly) override { box_.readOnly = readOnly; }
  bool isEmpty() const override { return text().empty(); }
  std::string text() const override { return trim(box_.text()); }

 private:
  ui::TextBox box_;
};

class NumberField final : public CardBox {
 public:
  NumberField(ui::Form& form, const CardField& about, std::function<void()> changed)
      : CardBox(about),
        box_(&form, named("txt", about), about.caption, about.chars, ui::Align::Right) {
    box_.onChange = std::move(changed);
    box_.onLeave = [this] {
      if (!isEmpty() && refusal().empty()) box_.text = shown(value());
    };
  }
  ui::Control& control() override { return box_; }
  void show(RowSet& record) override {
    const Field field = record[about().column];
    box_.text = field.IsAbsent() ? std::string() : shown(field.Number());
  }
  void write(RowSet& record) override {
    assign(record[about().column], isEmpty() ? Variant(Null{}) : Variant(value()));
  }
  void lock(bool readOnly) override { box_.readOnly = readOnly; }
  bool isEmpty() const override { return text().empty(); }
  std::string text() const override { return trim(box_.text()); }
  std::string refusal() const override {
    if (isEmpty() || (isNumeric(text()) && std::isfinite(value()))) return {};
    return "Klaidingas skaičius: " + text() + "!";
  }

 private:
  double value() const { return TextToDouble(text()); }
  std::string shown(double number) const {
    return formatNumber(number, about().decimals, box_.form.host().numbers(), false);
  }
  ui::TextBox box_;
};

class CheckField final : public CardBox {
 public:
  CheckField(ui::Form& form, const CardField& about, std::function<void()> changed)
      : CardBox(about), box_(&form, named("chk", about), about.caption) {
    box_.onChange = std::move(changed);
  }
  ui::Control& control() override { return box_; }
  void show(RowSet& record) override { box_.on = record[about().column].Number() != 0; }
  void write(RowSet& record) override {
    Field field = record[about().column];
    if ((field.Number() != 0) != box_.on()) field.SetValue(box_.on() ? 1 : 0);
  }
  void lock(bool readOnly) override { box_.enabled = !readOnly; }
  bool isEmpty() const override { return !box_.on(); }
  std::string text() const override { return box_.on() ? "1" : ""; }

 private:
  ui::CheckBox box_;
};

// The list is read when the card is shown: directories of this kind are short.
class ChoiceField final : public CardBox {
 public:
  ChoiceField(ui::Form& form, const CardField& about, std::function<void()> changed)
      : CardBox(about), box_(&form, named("cmb", about), about.caption, about.chars) {
    box_.onChange = std::move(changed);
  }
  ui::Control& control() override { return box_; }
  void show(RowSet& record) override {
    const std::string wanted = referenceIn(record[about().column], about().kinds);
    readItems(wanted);
  }
  void write(RowSet& record) override { setReference(record[about().column], box_.key()); }
  void lock(bool readOnly) override { box_.enabled = !readOnly; }
  bool isEmpty() const override { return box_.key().empty(); }
  std::string text() const override { return box_.text(); }
  void refresh() override { readItems(box_.key()); }

 private:
  void readItems(const std::string& wanted) {
    std::vector<ui::ComboBox::Item> items;
    if (!*about().missing) items.push_back({"", ""});
    for (const ObjectRow& row : pickerRows(box_.form.host(), about().kinds))
      items.push_back({row.row.hint, row.row.key});
    // A value stays even when its list could not be read.
    const bool known = wanted.empty() || std::any_of(items.begin(), items.end(), [&](auto& item) {
                         return item.key == wanted;
                       });
    if (!known) items.push_back({wanted, wanted});
    box_.items = items;
    box_.index = box_.findKey(wanted);
  }
  ui::ComboBox box_;
};

class ReferenceField final : public CardBox {
 public:
  ReferenceField(ui::Form& form, const CardField& about, std::function<void()> changed)
      : CardBox(about),
        box_(&form, named("txt", about), about.caption, about.chars),
        pick_(&form, named("cmd", about), "…", ui::Role::Small),
        changed_(std::move(changed)) {
    box_.readOnly = true;
    box_.onDoubleClick = [this] { open(); };
    pick_.tip = "Pasirinkti";
    pick_.onClick = [this] { pick(); };
  }
  ui::Control& control() override { return box_; }
  void show(RowSet& record) override {
    box_.tag = referenceIn(record[about().column], about().kinds);
    refresh();
  }
  void write(RowSet& record) override { setReference(record[about().column], box_.tag); }
  void lock(bool readOnly) override { pick_.enabled = !readOnly; }
  bool isEmpty() const override { return box_.tag.empty(); }
  std::string text() const override { return box_.text(); }
  void refresh() override {
    if (!isRef(box_.tag)) {
      box_.text = "";
      return;
    }
    const auto found = box_.form.host().pickers().lookup(box_.tag);
    box_.text = found ? found->text : box_.tag;
  }

 private:
  void pick() {
    PickRequest request;
    request.kinds = kindsOf(about());
    request.prompt = about().caption;
    request.current = box_.tag;
    const auto picked = box_.form.host().pickers().pick(request);
    if (!picked || picked->reference == box_.tag) return;
    box_.tag = picked->reference;
    box_.text = picked->text;
    changed_();
  }
  void open() {
    if (isRef(box_.tag)) box_.form.host().desktop().show(box_.tag);
  }
  ui::TextBox box_;
  ui::Button pick_;
  std::function<void()> changed_;
};

}  // namespace

void setReference(Field field, const std::string& reference) {
  if (reference.empty()) {
    assign(field, Null{});
  } else if (field.Type() == FieldType::Text) {
    assign(field, reference);
  } else {
    assign(field, idOf(reference));
  }
}

std::unique_ptr<CardBox> makeCardBox(ui::Form& form, const CardField& about,
                                     std::function<void()> changed) {
  switch (about.kind) {
    case CardField::Kind::Text:
      return std::make_unique<TextField>(form, about, std::move(changed));
    case CardField::Kind::Number:
      return std::make_unique<NumberField>(form, about, std::move(changed));
    case CardField::Kind::Check:
      return std::make_unique<CheckField>(form, about, std::move(changed));
    case CardField::Kind::Choice:
      return std::make_unique<ChoiceField>(form, about, std::move(changed));
    case CardField::Kind::Reference:
      break;
  }
  return std::make_unique<ReferenceField>(form, about, std::move(changed));
}

}  // namespace tolvex
