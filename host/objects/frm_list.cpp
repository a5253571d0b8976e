#include "host/objects/frm_list.h"

#include <algorithm>
#include <utility>

#include "framework/references.h"
#include "framework/text.h"
#include "host/objects/list_report.h"
#include "host/objects/services.h"
#include "platform/host.h"

namespace tolvex {
namespace {

constexpr std::string_view kOperationGroups = "O0201400";
constexpr const char* kDelete = "Panaikinti";
constexpr const char* kPeriod = "Peržiūros nustatymai";
constexpr const char* kPrint = "Spausdinti sąrašą";
constexpr const char* kExport = "Eksportas į EXCEL";

constexpr std::size_t kFirstPage = 200, kPage = 2500;
constexpr std::size_t kRowsAlone = 20;  // more changed documents are read with their pages

// The rows that follow a reference, as the store is asked for them.
std::string pageAfter(int id, std::size_t rows) {
  return "page:" + std::to_string(id) + ";" + std::to_string(rows);
}

bool isDocument(const ui::Row& row) { return familyCode(row.key) != kOperationGroups; }

bool makesNew(const MenuEntry& entry) {
  return entry.enabled && ui::withoutAccessKey(entry.caption).starts_with("Nauja");
}

}  // namespace

frmList::frmList(HostContext& host, Navigator& navigator)
    : Form(host, "frmList"), navigator_(navigator) {
  setTitle("Sąrašas");
  lblPlace.heading = true;
  txtFind.onChange = [this] { narrow(); };
  cmdAll.onClick = [this] { show(ListSource(source_)); };
  cmdNew.shortcut = "Ctrl+N";
  cmdNew.onClick = [this] { runNew(); };
  cmdPeriod.tip = kPeriod;
  cmdPeriod.shortcut = "Ctrl+L";
  // The list is read again once the loop is idle.
  cmdPeriod.onClick = [this] {
    setFocus(lvwObjects);
    (void)Form::host().workplace().newPeriod(source_.kind);
  };
  lvwObjects.onActivate = [this] { activate(); };
  lvwObjects.onRightClick = [this] { popupMenu(); };
  lvwObjects.carries = [this](const std::string& key) { return carried(key); };
  lvwObjects.onInsert = [this] { runNew(); };
  lvwObjects.onDelete = [this] { runDelete(); };
  lvwObjects.onPrint = [this](ui::ListHeading& heading) { return head(heading); };
  showHead();
}

const char* frmList::picture() const {
  return R"(
lblPlace | >> | txtFind | cmdPeriod | cmdNew
lblFilter cmdAll
lvwObjects>
lblCount>
)";
}

const std::vector<ListColumn>& frmList::columns() const {
  const bool documents = source_.kind == kOperationGroups && !source_.common;
  return documents || familyCode(source_.kind) == "O0201500" ? operationColumns()
                                                             : columnsOf(source_.kind);
}

void frmList::show(const ListSource& source) {
  source_ = source;
  filter_.clear();
  txtFind.text = "";
  // Should the reading fail, rows of the node before must not stand under this one's name.
  narrowed_ = false;
  all_.clear();
  groups_.clear();
  lvwObjects.current = -1;
  lvwObjects.setRows({});
  read();
}

bool frmList::pageable() const { return source_.kind == kOperationGroups && !source_.common; }

RowSetPtr frmList::ask(const std::string& page) {
  const bool byLevel = source_.kind == kOperationGroups;
  const auto ui = host().objects().kind(source_.kind);
  return ui->GetVXObjectList(byLevel ? source_.parent : "", "", page);
}

std::vector<ObjectRow> frmList::shownRows(RowSet& set, const std::vector<ListColumn>& columns) {
  const auto ui = host().objects().kind(source_.kind);
  return objectRows(set, columns, host().numbers(), ui->GetIconsTable());
}

void frmList::readPages() {
  lvwObjects.columns = viewColumns(columns());
  nextPage_ = 0;
  pageFailed_ = false;
  placed_ = 0;
  readOn();
  showHead();
}

void frmList::readOn() {
  if (!unfinished()) return;
  const int after = *nextPage_;
  const std::size_t most = after == 0 ? kFirstPage : kPage;
  const RowSetPtr set = ask(pageAfter(after, most));
  pageFailed_ = !set;
  if (!set) return;
  nextPage_.reset();
  auto rows = shownRows(*set, columns());
  const std::vector<ui::Row>& shown = lvwObjects.rows();
  std::size_t to = shown.size();  // the last page ends the list
  if (rows.size() == most) {
    const int last = idOf(rows.back().row.key);
    nextPage_ = last;
    to = placed_;
    while (to < shown.size() && isDocument(shown[to]) && idOf(shown[to].key) <= last) ++to;
  }
  const std::size_t count = rows.size();
  replaceRows(placed_, to, std::move(rows));
  placed_ += count;
  showCount();
}

// Puts rows that were read in the place of others. Rows that are the same stay untouched, so that a
// list in which nothing changed is not even drawn again.
void frmList::replaceRows(std::size_t from, std::size_t to, std::vector<ObjectRow> rows) {
  const auto at = [](std::size_t index) { return static_cast<std::ptrdiff_t>(index); };
  std::vector<ui::Row> next;
  next.reserve(rows.size());
  for (ObjectRow& row : rows) {
    if (!isDocument(row.row) || row.group) {
      std::erase_if(groups_, [&](const auto& known) { return known.first == row.row.key; });
      groups_.emplace_back(row.row.key, row.parent);
    }
    next.push_back(std::move(row.row));
  }
  const auto& shown = lvwObjects.rows();
  if (std::equal(next.begin(), next.end(), shown.begin() + at(from), shown.begin() + at(to)))
    return;
  const ui::Row* const row = lvwObjects.currentRow();
  const std::string current = row ? row->key : std::string();
  std::vector<ui::Row>& list = lvwObjects.edit();
  const std::size_t same = std::min(next.size(), to - from);
  std::move(next.begin(), next.begin() + at(same), list.begin() + at(from));
  if (next.size() > same) {
    list.insert(list.begin() + at(to), std::make_move_iterator(next.begin() + at(same)),
                std::make_move_iterator(next.end()));
  } else {
    list.erase(list.begin() + at(from + same), list.begin() + at(to));
  }
  stayOn(current);
}

// The current row by its key; when it has gone, what stands in its place.
void frmList::stayOn(const std::string& key) {
  if (key.empty()) return;
  const int row = lvwObjects.find(key), last = static_cast<int>(lvwObjects.rows().size()) - 1;
  lvwObjects.current = row >= 0 ? row : std::min(lvwObjects.current(), last);
}

void frmList::readRows(const std::set<std::string>& references) {
  if (!pageable() || !filter_.empty() || narrowed_ || references.size() > kRowsAlone) return read();
  for (const std::string& reference : references) readRow(idOf(reference));
  showCount();
}

void frmList::readRow(int id) {
  const std::vector<ui::Row>& shown = lvwObjects.rows();
  // Documents stand in the order of their ids. What was saved is among the latest as a rule.
  std::size_t end = shown.size();
  while (end > 0 && (!isDocument(shown[end - 1]) || idOf(shown[end - 1].key) > id)) --end;
  const std::size_t begin = end > 0 && idOf(shown[end - 1].key) == id ? end - 1 : end;
  if (unfinished() && begin >= placed_ && begin == end) return;  // comes with its page
  const RowSetPtr set = ask(pageAfter(id - 1, 1));
  if (!set) return;
  auto rows = shownRows(*set, columns());
  std::erase_if(
      rows, [&](const ObjectRow& row) { return !isDocument(row.row) || idOf(row.row.key) != id; });
  const std::size_t count = rows.size();
  replaceRows(begin, end, std::move(rows));
  if (begin == end && count > 0) lvwObjects.current = static_cast<int>(begin);  // made just now
  if (unfinished() && begin < placed_) placed_ += count - (end - begin);
}

// A failure or the user's stop leaves a part of the list, and nextPage_.
void frmList::finish() {
  pageFailed_ = false;
  if (!unfinished()) return;
  LongWork work(host().pump());
  while (unfinished() && work.goesOn("Skaitomas sąrašas", 0)) readOn();
}

bool frmList::head(ui::ListHeading& heading) {
  heading.title = source_.caption;
  if (!filter_.empty())
    heading.lines.push_back(lblFilter.caption);
  else if (cmdPeriod.visible())
    heading.lines.push_back(cmdPeriod.caption);
  if (narrowed_ && nextPage_)
    narrow();
  else
    finish();
  if (narrowed_) heading.lines.push_back("Ieškota: " + trim(txtFind.text()));
  return !nextPage_;
}

void frmList::showRows(RowSet& rows, const std::string& filter) {
  filter_ = filter;
  nextPage_.reset();
  txtFind.text = "";
  lvwObjects.current = -1;
  // A filter over a kind of groups brings groups, over documents documents.
  const bool operations = rows.Fields().contains("DateD");
  const auto& shown = operations ? operationColumns() : columns();
  lvwObjects.columns = viewColumns(shown);
  fill(shownRows(rows, shown));
}

void frmList::read() {
  if (source_.kind.empty() || !filter_.empty()) return;
  if (pageable() && !narrowed_) return readPages();
  nextPage_.reset();
  const RowSetPtr set = ask("");
  if (!set) return showHead();
  lvwObjects.columns = viewColumns(columns());
  auto rows = shownRows(*set, columns());
  const KindView* view = kindView(source_.kind);
  if (view && view->grouping == Grouping::Tree) {
    // What lies right below the chosen group; the group itself is not its own content.
    const bool known = std::any_of(rows.begin(), rows.end(), [&](const ObjectRow& row) {
      return row.parent == source_.parent;
    });
    std::erase_if(rows, [&](const ObjectRow& row) {
      return row.row.key == source_.parent || (known && row.parent != source_.parent);
    });
  } else if (view && view->grouping != Grouping::None) {
    rows = asTree(inViewOrder(std::move(rows), *view));
    int above = -1;
    std::erase_if(rows, [&](ObjectRow& row) {
      if (source_.parent.empty()) return false;
      if (row.row.key == source_.parent) {
        above = row.depth;
        return true;
      }
      if (above >= 0 && row.depth <= above) above = -1;
      row.depth -= above + 1;
      return above < 0;
    });
    for (ObjectRow& row : rows)
      if (!row.row.cells.empty())
        row.row.cells[0].text.insert(0, static_cast<std::size_t>(row.depth) * 3, ' ');
  }
  fill(std::move(rows));
}

void frmList::fill(std::vector<ObjectRow> rows) {
  const ui::Row* row = lvwObjects.currentRow();
  const std::string current = row ? row->key : std::string();
  groups_.clear();
  std::vector<ui::Row> shown;
  shown.reserve(rows.size());
  for (ObjectRow& next : rows) {
    if (next.group || !isDocument(next.row)) groups_.emplace_back(next.row.key, next.parent);
    shown.push_back(std::move(next.row));
  }
  narrowed_ = false;
  all_.clear();
  const int place = lvwObjects.current();
  lvwObjects.setRows(std::move(shown));
  lvwObjects.current = std::min(place, static_cast<int>(lvwObjects.rows().size()) - 1);
  stayOn(current);
  if (!txtFind.text().empty()) narrow();
  lvwObjects.touch();
  showHead();
}

void frmList::narrow() {
  if (narrowed_ && nextPage_) {  // only a part could be searched
    lvwObjects.setRows(std::move(all_));
    narrowed_ = false;
  }
  finish();
  const std::string text = trim(txtFind.text());
  if (!narrowed_) all_ = std::move(lvwObjects.edit());
  narrowed_ = !text.empty();
  if (narrowed_) {
    lvwObjects.setRows(tolvex::narrowed(all_, text));
    lvwObjects.current = lvwObjects.rows().empty() ? -1 : 0;
  } else {
    lvwObjects.setRows(std::move(all_));
    lvwObjects.current = -1;
  }
  showHead();
}

void frmList::showHead() {
  lblPlace.caption = source_.caption;
  lblFilter.caption = filter_.empty() ? std::string() : "Atrinkta: " + filterInWords();
  lblFilter.visible = !filter_.empty();
  cmdAll.visible = !filter_.empty();
  const bool dated = source_.kind == kOperationGroups && !source_.common;
  cmdPeriod.visible = dated;
  if (dated) cmdPeriod.caption = periodText(host().workplace().oldPeriod(source_.kind));
  const auto entries = sourceMenu();
  const auto fresh = std::find_if(entries.begin(), entries.end(), makesNew);
  cmdNew.visible = fresh != entries.end();
  if (fresh != entries.end()) cmdNew.caption = fresh->caption;
  showCount();
}

void frmList::showCount() {
  lblCount.caption = "Eilučių: " + std::to_string(lvwObjects.rows().size());
}

// The filter with the captions of columns and the words of the filter dialog.
std::string frmList::filterInWords() const {
  std::string text = " " + filter_;
  for (const ListColumn& column : columns())
    text = replaceAll(std::move(text), std::string(" ") + column.field + " ",
                      std::string(" ") + column.caption + " ");
  text = replaceAll(std::move(text), " LIKE ", " turi ");
  text = replaceAll(std::move(text), " AND ", " ir ");
  return trim(replaceAll(std::move(text), "%", ""));
}

std::string frmList::parentOf(const std::string& key) const {
  for (const auto& [group, parent] : groups_)
    if (group == key) return parent;
  return source_.parent;
}

std::vector<MenuEntry> frmList::sourceMenu() {
  if (source_.kind.empty()) return {};
  const std::string otype = source_.otype.empty() ? source_.kind : source_.otype;
  return host().objects().kind(source_.kind)->GetMenu(source_.id(), otype, source_.above);
}

std::vector<MenuEntry> frmList::rowMenu(const ui::Row& row) {
  return host().objects().kind(kindOf(row.key))->GetMenu(row.key, row.tag, parentOf(row.key));
}

void frmList::activate() {
  const ui::Row* row = lvwObjects.currentRow();
  if (!row) return;
  const std::string key = row->key;
  const bool group = std::any_of(groups_.begin(), groups_.end(),
                                 [&](const auto& known) { return known.first == key; });
  if (group)
    navigator_.chooseNode(key);
  else
    navigator_.openObject(key);
}

std::string frmList::carried(const std::string& key) {
  const int row = lvwObjects.find(key);
  if (!isRef(key) || row < 0) return {};
  const std::string& exact = lvwObjects.rows()[static_cast<std::size_t>(row)].tag;
  return host().objects().kind(kindOf(key))->DragOK(key, exact, "") ? key : std::string();
}

void frmList::popupMenu() {
  const ui::Row* row = lvwObjects.currentRow();
  const std::string otype = source_.otype.empty() ? source_.kind : source_.otype;
  const std::string kind = row ? std::string(kindOf(row->key)) : source_.kind;
  const std::string id = row ? row->key : source_.id();
  const std::string exact = row ? row->tag : otype;
  if (kind.empty()) return;
  auto entries = row ? rowMenu(*row) : sourceMenu();
  const bool any = !lvwObjects.rows().empty();
  entries.insert(entries.end(), {{"-", ""}, {kPrint, "", any}, {kExport, "", any}});
  menu_.show(lvwObjects, entries, [this, kind, id, exact](const MenuEntry& entry) {
    if (entry.caption == kPrint)
      printList(lvwObjects);
    else if (entry.caption == kExport)
      exportList(lvwObjects);
    else
      navigator_.runEntry(kind, id, exact, entry);
  });
}

void frmList::runNew() {
  setFocus(lvwObjects);  // that is where the user comes back to
  for (const MenuEntry& entry : sourceMenu()) {
    if (!makesNew(entry)) continue;
    const std::string otype = source_.otype.empty() ? source_.kind : source_.otype;
    navigator_.runEntry(source_.kind, source_.id(), otype, entry);
    return;
  }
}

void frmList::runDelete() {
  const ui::Row* row = lvwObjects.currentRow();
  if (!row) return;
  const ui::Row clicked = *row;
  for (const MenuEntry& entry : rowMenu(clicked)) {
    if (entry.caption != kDelete || !entry.enabled) continue;
    navigator_.runEntry(std::string(kindOf(clicked.key)), clicked.key, clicked.tag, entry);
    return;
  }
}

}  // namespace tolvex
