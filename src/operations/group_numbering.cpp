#include "operations/group_numbering.h"

#include <utility>

#include "framework/conversions.h"
#include "framework/text.h"
#include "operations/number_text.h"

namespace tolvex {
namespace {

constexpr std::size_t kPrefixLength = 50, kCounterLength = 9, kWidestCounter = 10;

// The parts of a number are told apart by this sign, so none may hold it.
char32_t withoutJoint(char32_t key, const std::string&) { return key == U'-' ? U'\0' : key; }

DateTime firstOfYear(DateTime date) { return DateTime::Of(date.Year(), 1, 1); }

}  // namespace

GroupNumbering::GroupNumbering(ui::Form* form)
    : lvwAutoNumber(form, "lvwAutoNumber", {{"Numerio dalys", 24, ui::Align::Left, true}}),
      cmdUp(form, "cmdUp", "Aukštyn"),
      cmdDown(form, "cmdDown", "Žemyn"),
      txtPrefix(form, "txtPrefix", "Prefiksas", 12),
      txtANTemplate(form, "txtANTemplate", "Numerio šablonas", 12),
      txtMinimal(form, "txtMinimal", "Mažiausias numeris", 12),
      cmbGroupBy(form, "cmbGroupBy", "Numeruojama", 34),
      cmbCycle(form, "cmbCycle", "Iš naujo kas"),
      chkANDateFrom(form, "chkANDateFrom", "Galioja nuo"),
      dtpANDateFrom(form, "dtpANDateFrom"),
      txtExample(form, "txtExample", "Pavyzdys"),
      form_(*form) {
  lvwAutoNumber.checkBoxes = true;
  txtPrefix.maxLength = kPrefixLength;
  txtPrefix.keyFilter = withoutJoint;
  txtANTemplate.maxLength = kWidestCounter;
  txtANTemplate.keyFilter = FilterDigitKey;
  txtANTemplate.tip = "Tiek skaitmenų, kiek jų turi turėti numeris: 0000";
  txtMinimal.maxLength = kCounterLength;
  txtMinimal.keyFilter = FilterDigitKey;
  txtExample.readOnly = true;
  cmbGroupBy.setTexts({"Pagal bendrą skaitliuką", "Pagal dokumentų grupę", "Pagal vartotoją",
                       "Pagal grupę ir vartotoją", "Pagal dokumentų tipą",
                       "Pagal dokumentų tipą ir vartotoją"});
  cmbCycle.setTexts({"Diena", "Mėnuo", "Ketvirtis", "Metai"});
  wire();
}

void GroupNumbering::wire() {
  for (ui::Control* control :
       std::initializer_list<ui::Control*>{&txtPrefix, &txtANTemplate, &txtMinimal, &cmbGroupBy,
                                           &cmbCycle, &chkANDateFrom, &dtpANDateFrom}) {
    control->onChange = [this] { changed(); };
  }
  lvwAutoNumber.onCheck = [this] { changed(); };
  lvwAutoNumber.onActivate = [this] { turnPart(); };
  lvwAutoNumber.onChange = [this] { refresh(); };
  cmdUp.onClick = [this] { move(-1); };
  cmdDown.onClick = [this] { move(1); };
}

void GroupNumbering::show(RowSet& group) {
  std::vector<ui::Row> rows;
  for (const MaskPart& part : partsOf(group["ANMask"].Text())) {
    ui::Row row;
    row.key = part.part.keyword;
    row.cells = {{std::string(part.part.caption)}};
    row.checked = part.used;
    rows.push_back(std::move(row));
  }
  lvwAutoNumber.setRows(std::move(rows));
  lvwAutoNumber.current = 0;
  txtPrefix.text = std::string(group["ANPrefix"].Text());
  txtANTemplate.text = std::string(group["ANTemplate"].Text());
  txtMinimal.text = plainNumber(group["ANMinimal"].Number());
  cmbGroupBy.index = static_cast<int>(group["ANGroupBy"].Number());
  cmbCycle.index = static_cast<int>(group["ANCycle"].Number());
  const Variant from = group["ANDateFrom"].Value();
  chkANDateFrom.on = from.IsDate();
  dtpANDateFrom.value = from.IsDate() ? from.AsDate() : firstOfYear(form_.host().clock().today());
  refresh();
}

void GroupNumbering::write(RowSet& group) const {
  group["ANMask"] = mask();
  group["ANPrefix"] = txtPrefix.text();
  group["ANTemplate"] = txtANTemplate.text();
  group["ANMinimal"] = static_cast<int>(TextToDouble(txtMinimal.text()));
  group["ANGroupBy"] = cmbGroupBy.index();
  group["ANCycle"] = cmbCycle.index();
  const auto& from = dtpANDateFrom.value();
  group["ANDateFrom"] = chkANDateFrom.on() && from ? Variant(*from) : Variant(Null{});
}

std::string GroupNumbering::mask() const {
  std::vector<std::string> keywords;
  for (const ui::Row& row : lvwAutoNumber.rows())
    if (row.checked) keywords.push_back(row.key);
  return join(keywords, "_");
}

void GroupNumbering::enable(bool enabled) {
  enabled_ = enabled;
  for (ui::Control* control : std::initializer_list<ui::Control*>{&lvwAutoNumber, &cmbGroupBy,
                                                                  &cmbCycle, &chkANDateFrom}) {
    control->enabled = enabled;
  }
  for (ui::TextBox* box : {&txtPrefix, &txtANTemplate, &txtMinimal}) box->readOnly = !enabled;
  refresh();
}

void GroupNumbering::changed() {
  refresh();
  if (onChange) onChange();
}

void GroupNumbering::move(int by) {
  const int from = lvwAutoNumber.current(), to = from + by;
  std::vector<ui::Row>& rows = lvwAutoNumber.edit();
  if (from < 0 || to < 0 || to >= static_cast<int>(rows.size())) return;
  std::swap(rows[static_cast<std::size_t>(from)], rows[static_cast<std::size_t>(to)]);
  lvwAutoNumber.current = to;
  changed();
}

// Enter and a double click on a part tick it as the box in it does.
void GroupNumbering::turnPart() {
  ui::Row& row = lvwAutoNumber.edit()[static_cast<std::size_t>(lvwAutoNumber.current())];
  row.checked = !row.checked;
  changed();
}

void GroupNumbering::refresh() {
  const int current = lvwAutoNumber.current();
  cmdUp.enabled = enabled_ && current > 0;
  cmdDown.enabled = enabled_ && current + 1 < static_cast<int>(lvwAutoNumber.rows().size());
  dtpANDateFrom.enabled = enabled_ && chkANDateFrom.on();
  const NumberText sample{static_cast<int>(TextToDouble(txtMinimal.text())), mask(),
                          txtPrefix.text(), txtANTemplate.text(), kUnknownUser};
  txtExample.text = sample.compose(form_.host().clock().today());
}

}  // namespace tolvex
