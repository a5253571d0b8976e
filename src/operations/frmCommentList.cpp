#include "operations/frmCommentList.h"

#include <utility>
#include <vector>

#include "framework/parameters.h"
#include "framework/text.h"
#include "framework/told.h"
#include "platform/save_outcome.h"

namespace tolvex {

frmCommentList::frmCommentList(const CommentListRequest& request)
    : Form(request.host, kCommentScreen), request_(request) {
  setTitle("Parinktas įrašas");
  mnuNew.tag = "100";
  mnuEdit.tag = "101";
  mnuDelete.tag = "102";
  mnuNew.shortcut = "Ins";
  mnuEdit.shortcut = "F2";
  mnuDelete.shortcut = "Del";
  lvwComments.menu = &menuComments;
  lvwComments.filterBox = true;
  cmdOK.isDefault = true;
  cmdCancel.isCancel = true;
  menuComments.onPopup = lvwComments.onChange = [this] { enableMenu(); };
  lvwComments.onActivate = cmdOK.onClick = [this] { choose(); };
  lvwComments.onInsert = mnuNew.onClick =
      cmdNew.onClick = [this] { write("0", "Naujas įrašas", trim(request_.typed)); };
  mnuEdit.onClick = [this] {
    if (const ui::Row* row = lvwComments.currentRow()) {
      const std::string id = row->key, text = row->cells[0].text;
      write(id, "Įrašo redagavimas", text);
    }
  };
  lvwComments.onDelete = mnuDelete.onClick = [this] { remove(); };
  cmdCancel.onClick = [this] { close(); };
}

const char* frmCommentList::picture() const {
  return R"(
lvwComments>
cmdNew | >> | cmdCancel | cmdOK
)";
}

void frmCommentList::opened() {
  fill("");
  setFocus(lvwComments);
}

void frmCommentList::fill(std::string_view wanted) {
  const RowSetPtr comments = toldRows(request_.operation->Properties(
      "CommentList", commentListParameters(request_.typed, request_.operation->OType())));
  std::vector<ui::Row> rows;
  if (comments) {
    ForEachRow(*comments, [&](RowSet& comment) {
      ui::Row row;
      row.key = std::to_string(static_cast<int>(comment["ID"].Number()));
      row.cells = {std::string(comment["Name"].Text())};
      rows.push_back(std::move(row));
    });
  }
  lvwComments.setRows(std::move(rows));
  const int place = lvwComments.find(wanted);
  lvwComments.current = lvwComments.rows().empty() ? -1 : place < 0 ? 0 : place;
  enableMenu();
}

void frmCommentList::enableMenu() {
  const bool any = lvwComments.currentRow() != nullptr;
  for (ui::Control* control : std::initializer_list<ui::Control*>{&mnuEdit, &mnuDelete, &cmdOK}) {
    control->enabled = any;
  }
}

void frmCommentList::choose() {
  const ui::Row* row = lvwComments.currentRow();
  if (!row) return;
  request_.chosen = row->cells[0].text;
  result = 1;
  close();
}

// A quote would end the text on its way to the store, so an apostrophe of print takes its place.
void frmCommentList::write(const std::string& id, const std::string& title,
                           const std::string& text) {
  const auto typed = host().dialogs().input("Komentaras", title, text);
  if (!typed || trim(*typed).empty()) return;
  const MethodResult saved = request_.operation->Properties(
      "SaveComment", id + "," + quoted(replaceAll(trim(*typed), "'", "’")) + "," +
                         quoted(request_.operation->OType()));
  if (showFailure(host(), saved)) return;
  const RowSetPtr rows = saved.Value.IsRows() ? saved.Value.AsRows() : nullptr;
  const bool known = rows && rows->RecordCount() > 0;
  fill(known ? std::to_string(static_cast<int>((*rows)["ID"].Number())) : id);
}

void frmCommentList::remove() {
  const ui::Row* row = lvwComments.currentRow();
  if (!row) return;
  const std::string id = row->key;
  if (!askDelete(host())) return;
  if (!showFailure(host(), request_.operation->Properties("DeleteComment", id))) fill("");
}

}  // namespace tolvex
