#include "host/objects/frm_picker.h"

#include "framework/references.h"
#include "framework/text.h"

namespace tolvex {
namespace {
constexpr const char* kGroupsOnly = "groups";
}

frmPicker::frmPicker(HostContext& host, const PickRequest& request)
    : Form(host, "frmPicker"), request_(request) {
  setTitle(request.prompt.empty() ? "Pasirinkite" : request.prompt);
  std::vector<ui::ComboBox::Item> kinds;
  for (const std::string& kind : request_.kinds) kinds.push_back({kindCaption(kind), kind});
  cmbKind.items = kinds;
  cmbKind.index = kinds.empty() ? -1 : 0;
  for (std::size_t i = 0; i < request_.kinds.size(); ++i)
    if (isRef(request_.current) && kindOf(request_.current) == request_.kinds[i])
      cmbKind.index = static_cast<int>(i);
  cmbKind.visible = kinds.size() > 1;
  cmdOk.isDefault = true;
  cmdCancel.isCancel = true;
  cmbKind.onChange = [this] { readKind(); };
  txtFind.onChange = [this] { narrow(); };
  txtFind.finds = &lvwObjects;
  lvwObjects.onActivate = [this] { choose(); };
  lvwObjects.onChange = [this] { cmdOk.enabled = lvwObjects.currentRow() != nullptr; };
  cmdOk.onClick = [this] { choose(); };
  cmdClear.onClick = [this] {
    picked_ = Picked{};
    close();
  };
  cmdCancel.onClick = [this] { close(); };
}

const char* frmPicker::picture() const {
  return R"(
cmbKind | txtFind>
lvwObjects>
cmdClear | >> | cmdCancel | cmdOk
)";
}

void frmPicker::opened() {
  txtFind.text = request_.typed;
  txtFind.caret = static_cast<int>(length(request_.typed));
  readKind();
  if (const int row = lvwObjects.find(request_.current); row >= 0) lvwObjects.current = row;
  setFocus(txtFind);
}

void frmPicker::readKind() {
  const std::string kind = cmbKind.key();
  lvwObjects.columns = viewColumns(columnsOf(kind));
  all_.clear();
  const bool groupsOnly = request_.classes == kGroupsOnly;
  auto rows = groupsOnly ? groupRows(host(), kind).value_or(std::vector<ObjectRow>())
                         : pickerRows(host(), kind);
  for (ObjectRow& row : rows) {
    const std::size_t deep = static_cast<std::size_t>(row.depth) * 3;
    if (!row.row.cells.empty()) row.row.cells[0].text.insert(0, deep, ' ');
    row.row.checked = row.group;  // for the answer; the list shows no boxes
    all_.push_back(std::move(row.row));
  }
  narrow();
}

void frmPicker::narrow() {
  const std::string text = trim(txtFind.text());
  lvwObjects.setRows(text.empty() ? all_ : narrowed(all_, text));
  lvwObjects.current = lvwObjects.rows().empty() ? -1 : 0;
  cmdOk.enabled = lvwObjects.currentRow() != nullptr;
}

std::string frmPicker::textOf(const ui::Row& row) const {
  if (!row.hint.empty()) return row.hint;
  return row.cells.empty() ? std::string() : trim(row.cells[0].text);
}

void frmPicker::choose() {
  const ui::Row* row = lvwObjects.currentRow();
  if (!row) return;
  picked_ = Picked{row->key, textOf(*row), row->checked};
  result = 1;
  close();
}

}  // namespace tolvex
