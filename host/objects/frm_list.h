// frmList: the list of the chosen node: its groups or objects, with their menus.
//
// Typing in txtFind narrows what is shown. Rows that a filter command brought stand in place of
// the list, with the filter's text and a way back, until another node is chosen.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/objects/list_source.h"
#include "host/objects/object_menu.h"
#include "host/objects/object_rows.h"
#include "platform/form.h"

namespace tolvex {

class frmList final : public ui::Form {
 public:
  frmList(HostContext& host, Navigator& navigator);
  const char* picture() const override;

  void show(const ListSource& source);
  // Rows of a filter command in place of the list.
  void showRows(RowSet& rows, const std::string& filter);
  // Again. The current row stays current while it exists, and then gives way to its neighbour.
  void read();
  // A long list of documents stands with its first page. The rest follows page by page while the
  // user does nothing, and at once when he looks for something. Read again, every page takes the
  // place of the rows that stood there.
  bool unfinished() const { return nextPage_.has_value() && !pageFailed_; }
  void readOn();
  // The documents were saved or deleted; of a list that comes in pages only their rows are read.
  void readRows(const std::set<std::string>& references);
  const ListSource& source() const { return source_; }

  ui::Label lblPlace{this, "lblPlace", ""};
  ui::TextBox txtFind{this, "txtFind", "Ieškoti", 24};
  ui::Button cmdPeriod{this, "cmdPeriod"};
  ui::Button cmdNew{this, "cmdNew", "", ui::Role::Primary};
  ui::Label lblFilter{this, "lblFilter", ""};
  ui::Button cmdAll{this, "cmdAll", "Rodyti visus", ui::Role::Small};
  ui::ListView lvwObjects{this, "lvwObjects", {}};
  ui::Label lblCount{this, "lblCount", ""};

 private:
  const std::vector<ListColumn>& columns() const;
  bool pageable() const;
  RowSetPtr ask(const std::string& page);
  std::vector<ObjectRow> shownRows(RowSet& set, const std::vector<ListColumn>& columns);
  void readPages();
  void finish();
  bool head(ui::ListHeading& heading);
  void readRow(int id);
  void stayOn(const std::string& key);
  void replaceRows(std::size_t from, std::size_t to, std::vector<ObjectRow> rows);
  void fill(std::vector<ObjectRow> rows);
  void showCount();
  void narrow();
  std::string filterInWords() const;
  void showHead();
  void activate();
  void popupMenu();
  std::string carried(const std::string& key);
  void runNew();
  void runDelete();
  std::vector<MenuEntry> sourceMenu();
  std::vector<MenuEntry> rowMenu(const ui::Row& row);
  std::string parentOf(const std::string& key) const;

  Navigator& navigator_;
  ListSource source_;
  std::string filter_;        // text of the filter command whose rows are shown, or ""
  std::vector<ui::Row> all_;  // every row, while txtFind narrows the list
  bool narrowed_ = false;
  std::optional<int> nextPage_;  // follows the document of this id
  bool pageFailed_ = false;      // it is asked again when the whole list is wanted
  std::size_t placed_ = 0;       // so many rows at the beginning are of pages read now
  std::vector<std::pair<std::string, std::string>> groups_;  // references of groups, their parents
  ObjectMenu menu_{*this};
};

}  // namespace tolvex
