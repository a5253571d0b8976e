#include "host/cards/card_field.h"

#include <algorithm>
#include <cmath>
#include <iterator>

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

// An object by its name or code: what is typed is sought when the box is left. As long as it fits
// none or several objects the text stays, is remarked on, and cannot be saved.
class ReferenceField final : public CardBox {
 public:
  ReferenceField(ui::Form& form, const CardField& about, std::function<void()> changed)
      : CardBox(about),
        box_(&form, named("txt", about), about.caption, about.chars),
        pick_(&form, named("cmd", about), "…", ui::Role::Small),
        changed_(std::move(changed)) {
    box_.picker = &pick_;
    box_.onChange = [this] {
      state_ = State::Typed;
      changed_();
    };
    box_.onLeave = [this] { seek(); };
    box_.onDoubleClick = [this] { open(); };
    pick_.tip = "Pasirinkti (F4)";
    pick_.onClick = [this] { pick(); };
  }
  ui::Control& control() override { return box_; }
  void show(RowSet& record) override {
    box_.tag = referenceIn(record[about().column], about().kinds);
    state_ = State::Known;
    refresh();
  }
  void write(RowSet& record) override { setReference(record[about().column], box_.tag); }
  void lock(bool readOnly) override {
    box_.readOnly = readOnly;
    pick_.enabled = !readOnly;
  }
  bool isEmpty() const override { return text().empty(); }
  std::string text() const override { return trim(box_.text()); }
  std::string refusal() const override {
    const std::string why = remark();
    return why.empty() ? why : why + "!";
  }
  std::string remark() const override {
    if (state_ == State::None) return "„" + text() + "“ nerasta";
    return state_ == State::Several ? "„" + text() + "“ tinka keliems, pasirinkite (F4)" : "";
  }
  void refresh() override {
    if (state_ != State::Known) return;  // what is being typed stays
    const bool some = isRef(box_.tag);
    const auto found = some ? box_.form.host().pickers().lookup(box_.tag) : std::nullopt;
    box_.text = found ? found->text : box_.tag;
  }

 private:
  enum class State { Known, Typed, None, Several };

  void set(const std::string& reference, const std::string& shown) {
    box_.tag = reference;
    box_.text = shown;
    state_ = State::Known;
  }
  void seek() {
    if (state_ != State::Typed) return;
    const std::string typed = text();
    if (typed.empty()) return set("", "");
    std::vector<ui::Row> fitting;
    for (const std::string& kind : kindsOf(about()))
      for (ui::Row& row : narrowed(rowsOf(kind), typed)) fitting.push_back(std::move(row));
    std::vector<ui::Row> exact;
    std::copy_if(fitting.begin(), fitting.end(), std::back_inserter(exact), [&](const auto& row) {
      return std::any_of(row.cells.begin(), row.cells.end(),
                         [&](const auto& cell) { return equalNoCase(trim(cell.text), typed); });
    });
    const std::vector<ui::Row>& best = exact.empty() ? fitting : exact;
    if (best.size() == 1) {
      state_ = State::Known;
      box_.tag = best[0].key;
      return refresh();
    }
    box_.tag = "";
    state_ = best.empty() ? State::None : State::Several;
  }
  std::vector<ui::Row> rowsOf(const std::string& kind) const {
    std::vector<ui::Row> rows;
    for (ObjectRow& row : pickerRows(box_.form.host(), kind)) rows.push_back(std::move(row.row));
    return rows;
  }
  void pick() {
    PickRequest request;
    request.kinds = kindsOf(about());
    request.prompt = about().caption;
    request.current = box_.tag;
    if (state_ != State::Known) request.typed = text();
    const auto picked = box_.form.host().pickers().pick(request);
    if (!picked || (state_ == State::Known && picked->reference == box_.tag)) return;
    set(picked->reference, picked->text);
    changed_();
  }
  void open() {
    if (isRef(box_.tag)) box_.form.host().desktop().show(box_.tag);
  }
  ui::TextBox box_;
  ui::Button pick_;
  std::function<void()> changed_;
  State state_ = State::Known;
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
