#include "host/objects/frm_filter.h"

#include "framework/text.h"
#include "platform/host.h"
#include "platform/input.h"

namespace tolvex {
namespace {

struct Comparison {
  const char* caption;
  const char* sign;
};
constexpr Comparison kComparisons[] = {
    {"turi", "LIKE"}, {"lygu", "="}, {"nelygu", "<>"}, {"ne mažiau", ">="}, {"ne daugiau", "<="}};

}  // namespace

frmFilter::frmFilter(HostContext& host, const std::vector<ListColumn>& columns)
    : Form(host, "frmFilter"),
      columns_(columns),
      lines_{Line{cmbField1, cmbOperator1, txtValue1}, Line{cmbField2, cmbOperator2, txtValue2},
             Line{cmbField3, cmbOperator3, txtValue3}} {
  setTitle("Atranka");
  std::vector<ui::ComboBox::Item> fields;
  for (const ListColumn& column : columns_) fields.push_back({column.caption, column.field});
  std::vector<ui::ComboBox::Item> comparisons;
  for (const Comparison& row : kComparisons) comparisons.push_back({row.caption, row.sign});
  int index = 0;
  for (const Line& line : lines_) {
    line.field.items = fields;
    line.field.index = index < static_cast<int>(fields.size()) ? index : 0;
    line.comparison.items = comparisons;
    line.comparison.index = 0;
    ++index;
  }
  cmdOk.isDefault = true;
  cmdCancel.isCancel = true;
  cmdOk.onClick = [this] { accept(); };
  cmdCancel.onClick = [this] { close(); };
}

const char* frmFilter::picture() const {
  return R"(
cmbField1 cmbOperator1 txtValue1>
cmbField2 cmbOperator2 txtValue2>
cmbField3 cmbOperator3 txtValue3>
>> | cmdCancel | cmdOk
)";
}

void frmFilter::opened() { setFocus(txtValue1); }

std::optional<std::string> frmFilter::clause(const Line& line) {
  const std::string value = trim(line.value.text());
  if (value.empty()) return "";
  const ListColumn& column = columns_[static_cast<std::size_t>(line.field.index())];
  std::string sign = line.comparison.key();
  const auto refuse = [&](const char* text) {
    warn(host(), text);
    setFocus(line.value);
    return std::nullopt;
  };
  // The grammar of filters has no way to write an apostrophe inside a text.
  if (value.find('\'') != std::string::npos) return refuse("Reikšmėje negali būti apostrofo!");
  if (column.format == CellFormat::Sum) {
    if (!isNumeric(value)) return refuse("Klaidinga suma!");
    if (sign == "LIKE") sign = "=";
    return std::string(column.field) + " " + sign + " " + plainNumber(TextToDouble(value));
  }
  if (column.format == CellFormat::Date) {
    const DateTime today = host().clock().today();
    const auto date = ui::readTypedDate(value, today, today);
    if (!date) return refuse("Klaidinga data!");
    if (sign == "LIKE") sign = "=";
    return std::string(column.field) + " " + sign + " '" + date->Text() + "'";
  }
  const std::string text = sign == "LIKE" ? "%" + value + "%" : value;
  return std::string(column.field) + " " + sign + " '" + text + "'";
}

void frmFilter::accept() {
  std::string filter;
  for (const Line& line : lines_) {
    const auto part = clause(line);
    if (!part) return;
    if (part->empty()) continue;
    filter += (filter.empty() ? "" : " AND ") + *part;
  }
  filter_ = filter;
  result = 1;
  close();
}

}  // namespace tolvex
