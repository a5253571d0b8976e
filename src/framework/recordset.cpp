#include "framework/recordset.h"

#include <algorithm>
#include <functional>
#include <map>

#include "framework/rounding.h"
#include "framework/text.h"

namespace tolvex {

struct ColumnInfo {
  std::string name;
  FieldType type;
  int size;
  int attributes;
  int scale = 0;
  const ColumnSpec* nested = nullptr;
  int nestedCount = 0;
};

class Table {
 public:
  struct Line {
    std::vector<Variant> cells, originals;
    RowState state = RowState::Added;
    bool live = true;
    bool wasStored = false;
    std::map<int, RowSetPtr> nested;
    std::size_t id = 0;
  };
  std::vector<ColumnInfo> columns;
  std::vector<Line> lines;
  bool open = false;
  bool showsDeleted = false;

  int find(std::string_view name) const {
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (equalNoCase(columns[i].name, name)) return static_cast<int>(i);
    }
    return -1;
  }
};

namespace {

using Test = std::function<bool(const Table&, const Table::Line&)>;

[[noreturn]] void badFilter(std::string_view filter) {
  throw RowSetError(RowSetError::BadFilter, "bad filter: " + std::string(filter));
}

bool like(std::string_view text, std::string_view pattern) {
  if (pattern.empty()) return text.empty();
  if (pattern[0] == '%' || pattern[0] == '*') {
    for (std::size_t i = 0; i <= text.size(); ++i) {
      if (like(text.substr(i), pattern.substr(1))) return true;
    }
    return false;
  }
  return !text.empty() && text[0] == pattern[0] && like(text.substr(1), pattern.substr(1));
}

class FilterParser {
 public:
  FilterParser(const Table& table, std::string_view text) : table_(table), text_(text) {}
  Test parse() {
    std::vector<std::vector<Test>> groups(1);
    for (;;) {
      blanks();
      const bool bracket = take('(');
      if (bracket && !groups.back().empty()) badFilter(text_);
      groups.back().push_back(comparison());
      blanks();
      while (word("AND")) {
        groups.back().push_back(comparison());
        blanks();
      }
      if (bracket && !take(')')) badFilter(text_);
      blanks();
      if (at_ == text_.size()) break;
      if (!word("OR")) badFilter(text_);
      groups.emplace_back();
    }
    return [groups](const Table& t, const Table::Line& l) {
      return std::any_of(groups.begin(), groups.end(), [&](const auto& group) {
        return std::all_of(group.begin(), group.end(), [&](const Test& test) { return test(t, l); });
      });
    };
  }

 private:
  void blanks() {
    while (at_ < text_.size() && text_[at_] == ' ') ++at_;
  }
  bool take(char c) {
    if (at_ < text_.size() && text_[at_] == c) return ++at_, true;
    return false;
  }
  bool word(std::string_view w) {
    if (!equalNoCase(text_.substr(at_, w.size()), w)) return false;
    at_ += w.size();
    return true;
  }
  Test comparison() {
    blanks();
    const std::size_t from = at_;
    while (at_ < text_.size() && (std::isalnum(static_cast<unsigned char>(text_[at_])) ||
                                  text_[at_] == '_')) {
      ++at_;
    }
    const int column = table_.find(text_.substr(from, at_ - from));
    if (column < 0) badFilter(text_);
    blanks();
    std::string op;
    if (word("LIKE")) {
      op = "LIKE";
    } else {
      while (at_ < text_.size() && std::string_view("<>=").find(text_[at_]) != std::string::npos) {
        op += text_[at_++];
      }
    }
    blanks();
    std::string literal;
    const bool isQuoted = take('\'');
    if (isQuoted) {
      const auto end = text_.find('\'', at_);
      if (end == std::string::npos) badFilter(text_);
      literal = text_.substr(at_, end - at_);
      at_ = end + 1;
      if (at_ < text_.size() && text_[at_] != ' ' && text_[at_] != ')') badFilter(text_);
    } else {
      while (at_ < text_.size() && text_[at_] != ' ' && text_[at_] != ')') literal += text_[at_++];
      if (literal.empty()) badFilter(text_);
    }
    return test(column, op, literal);
  }
  Test test(int column, const std::string& op, const std::string& literal) {
    static const std::vector<std::string> known = {"=", "<>", ">=", "<=", ">", "<", "LIKE"};
    if (std::find(known.begin(), known.end(), op) == known.end()) badFilter(text_);
    const auto type = table_.columns[static_cast<std::size_t>(column)].type;
    const auto decide = [op](auto order) {
      if (op == "=") return order == 0;
      if (op == "<>") return order != 0;
      if (op == ">=") return order >= 0;
      if (op == "<=") return order <= 0;
      return op == ">" ? order > 0 : order < 0;
    };
    const auto cell = static_cast<std::size_t>(column);
    if (type == FieldType::Text || type == FieldType::Guid) {
      const std::string want = upper(literal);
      return [=](const Table&, const Table::Line& line) {
        const Variant& v = line.cells[cell];
        if (!v.IsText()) return op == "<>";
        const std::string have = upper(v.AsText());
        return op == "LIKE" ? like(have, want) : decide(have.compare(want));
      };
    }
    double number = 0;
    if (type == FieldType::Date) {
      const auto date = DateTime::Parse(literal);
      if (!date) badFilter(text_);
      number = static_cast<double>(date->Seconds());
    } else if (!parsePlainNumber(literal, number)) {
      badFilter(text_);
    }
    return [=](const Table&, const Table::Line& line) {
      const Variant& v = line.cells[cell];
      if (v.IsAbsent()) return false;
      const double have = v.IsDate() ? static_cast<double>(v.AsDate().Seconds()) : v.AsDouble();
      return decide(have < number ? -1 : have > number ? 1 : 0);
    };
  }

  const Table& table_;
  std::string_view text_;
  std::size_t at_ = 0;
};

Variant converted(const Variant& value, const ColumnInfo& column) {
  if (value.IsAbsent()) return value;
  const auto mismatch = [&]() -> RowSetError {
    return {RowSetError::TypeMismatch, "wrong type for " + column.name};
  };
  switch (column.type) {
    case FieldType::Text:
    case FieldType::Guid:
      return value.IsText() ? value : Variant(value.Show());
    case FieldType::Date:
      if (value.IsText()) {
        const auto date = DateTime::Parse(value.AsText());
        if (!date) throw mismatch();
        return *date;
      }
      return value.AsDate();
    case FieldType::Nested:
      throw mismatch();
    default:
      break;
  }
  double number = 0;
  if (value.IsText()) {
    if (!parsePlainNumber(value.AsText(), number)) throw mismatch();
  } else {
    number = value.AsDouble();
  }
  if (column.type == FieldType::Boolean) return number != 0;
  if (column.type == FieldType::Double) return number;
  const double limit = column.type == FieldType::SmallInt ? 32767.0 : 2147483647.0;
  number = roundHalfEven(number, 0);
  if (number > limit || number < -limit - 1) {
    throw RowSetError(RowSetError::OutOfRange, "out of range for " + column.name);
  }
  return static_cast<int>(number);
}

}  // namespace

struct RowSet::Impl {
  std::shared_ptr<Table> table;
  std::string filter, sort;
  Test test;
  std::vector<std::size_t> order;  // of a sort
  std::ptrdiff_t place = 0;        // in walking order; -1 before the first
  bool loading = false;
  int marshal = 0;

  std::size_t count() const { return table->lines.size(); }
  std::size_t lineAt(std::ptrdiff_t at) const {
    const auto i = static_cast<std::size_t>(at);
    return i < order.size() ? order[i] : i;
  }
  Table::Line& line() const { return table->lines[lineAt(place)]; }
  bool inRange() const { return place >= 0 && place < static_cast<std::ptrdiff_t>(count()); }
  bool visible(std::ptrdiff_t at) const {
    const Table::Line& l = table->lines[lineAt(at)];
    return (l.live || table->showsDeleted) && (!test || test(*table, l));
  }
  void forward() {
    while (inRange() && !visible(place)) ++place;
  }
  void back() {
    while (inRange() && !visible(place)) --place;
  }
  void checkOpen() const {
    if (!table->open) throw RowSetError(RowSetError::NotOpen, "the record set is not open");
  }
  bool current() const { return inRange() && (line().live || table->showsDeleted); }
  Table::Line& need() const {
    checkOpen();
    if (!current()) throw RowSetError(RowSetError::NoCurrentRow, "no current row");
    return line();
  }
};

RowSet::RowSet(std::unique_ptr<Impl> impl) : impl_(std::move(impl)), fields_(*this) {}
RowSet::~RowSet() = default;

RowSetPtr RowSet::make() {
  auto impl = std::make_unique<Impl>();
  impl->table = std::make_shared<Table>();
  return RowSetPtr(new RowSet(std::move(impl)));
}
RowSetPtr RowSet::make(const ColumnSpec* columns, int count) {
  RowSetPtr set = make();
  for (int i = 0; i < count; ++i) {
    if (columns[i].type == FieldType::Nested) {
      set->Fields().AppendNested(columns[i].name, columns[i].nested, columns[i].nestedCount);
    } else {
      set->Fields().Append(columns[i].name, columns[i].type, columns[i].size);
    }
  }
  set->Open();
  return set;
}
Field RowSet::operator[](std::string_view name) { return fields_[name]; }
void RowSet::Open() { impl_->table->open = true; }
void RowSet::Close() { impl_->table->open = false; }
bool RowSet::IsOpen() const { return impl_->table->open; }
void RowSet::AddNew() {
  impl_->checkOpen();
  Table::Line line;
  line.cells.resize(impl_->table->columns.size());
  line.id = impl_->count();
  impl_->table->lines.push_back(std::move(line));
  impl_->place = static_cast<std::ptrdiff_t>(impl_->count()) - 1;
  impl_->loading = false;
}
void RowSet::LoadRow() {
  AddNew();
  auto& line = impl_->line();
  for (Variant& cell : line.cells) cell = Null{};
  line.state = RowState::Unchanged;
  line.wasStored = true;
  impl_->loading = true;
}
void RowSet::Update() { impl_->loading = false; }
void RowSet::Delete(int) {
  auto& line = impl_->need();
  line.live = false;
  line.state = RowState::Deleted;
}
void RowSet::MoveFirst() {
  impl_->checkOpen();
  impl_->loading = false;
  impl_->place = 0;
  impl_->forward();
}
void RowSet::MoveLast() {
  impl_->checkOpen();
  impl_->loading = false;
  impl_->place = static_cast<std::ptrdiff_t>(impl_->count()) - 1;
  impl_->back();
}
void RowSet::MoveNext() {
  impl_->checkOpen();
  impl_->loading = false;
  if (impl_->place >= static_cast<std::ptrdiff_t>(impl_->count())) {
    throw RowSetError(RowSetError::NoCurrentRow, "past the last row");
  }
  ++impl_->place;
  impl_->forward();
}
void RowSet::MovePrevious() {
  impl_->checkOpen();
  impl_->loading = false;
  if (impl_->place < 0) throw RowSetError(RowSetError::NoCurrentRow, "before the first row");
  --impl_->place;
  impl_->back();
}
void RowSet::Move(std::ptrdiff_t rows) {
  for (; rows > 0; --rows) MoveNext();
  for (; rows < 0; ++rows) MovePrevious();
}
bool RowSet::Eof() const {
  impl_->checkOpen();
  if (!impl_->inRange()) return impl_->place >= 0 || RecordCount() == 0;
  return !impl_->visible(impl_->place) && RecordCount() == 0;
}
bool RowSet::Bof() const {
  impl_->checkOpen();
  if (!impl_->inRange()) return impl_->place < 0 || RecordCount() == 0;
  return !impl_->visible(impl_->place) && RecordCount() == 0;
}
bool RowSet::HasCurrent() const { return impl_->table->open && impl_->current(); }
std::size_t RowSet::RecordCount() const {
  impl_->checkOpen();
  std::size_t n = 0;
  for (std::size_t i = 0; i < impl_->count(); ++i) n += impl_->visible(static_cast<int>(i));
  return n;
}
void RowSet::SetFilter(std::string_view filter) {
  impl_->checkOpen();
  const bool none = trim(filter).empty();
  Test test = none ? Test{} : FilterParser(*impl_->table, filter).parse();
  impl_->test = std::move(test);
  impl_->filter = none ? std::string() : std::string(filter);
  MoveFirst();
}
const std::string& RowSet::Filter() const { return impl_->filter; }
void RowSet::SetSort(std::string_view sort) {
  impl_->checkOpen();
  struct Key {
    std::size_t column;
    bool down;
  };
  std::vector<Key> keys;
  for (const std::string& part : split(sort, ',')) {
    std::string name = trim(part);
    if (name.empty()) continue;
    bool down = false;
    if (const auto blank = name.find(' '); blank != std::string::npos) {
      down = equalNoCase(trim(name.substr(blank)), "DESC");
      name = name.substr(0, blank);
    }
    const int column = impl_->table->find(name);
    if (column < 0) throw RowSetError(RowSetError::UnknownColumn, "no column " + name);
    keys.push_back({static_cast<std::size_t>(column), down});
  }
  impl_->order.clear();
  if (!keys.empty()) {
    for (std::size_t i = 0; i < impl_->count(); ++i) impl_->order.push_back(i);
    const auto& lines = impl_->table->lines;
    const auto compare = [](const Variant& a, const Variant& b) {
      if (a.IsAbsent() || b.IsAbsent()) return int(b.IsAbsent()) - int(a.IsAbsent());
      if (a.IsText()) return compareLithuanian(a.AsText(), b.AsText());
      const double x = a.IsDate() ? double(a.AsDate().Seconds()) : a.AsDouble();
      const double y = b.IsDate() ? double(b.AsDate().Seconds()) : b.AsDouble();
      return x < y ? -1 : x > y ? 1 : 0;
    };
    std::stable_sort(impl_->order.begin(), impl_->order.end(), [&](std::size_t a, std::size_t b) {
      for (const Key& key : keys) {
        const int order = compare(lines[a].cells[key.column], lines[b].cells[key.column]);
        const int signedOrder = lines[a].cells[key.column].IsAbsent() !=
                                        lines[b].cells[key.column].IsAbsent()
                                    ? -order
                                    : order;
        if (signedOrder != 0) return key.down ? signedOrder > 0 : signedOrder < 0;
      }
      return false;
    });
  }
  impl_->sort = sort;
  MoveFirst();
}
const std::string& RowSet::Sort() const { return impl_->sort; }
Variant RowSet::Bookmark() const { return static_cast<int>(impl_->need().id); }
void RowSet::SetBookmark(const Variant& bookmark) {
  impl_->checkOpen();
  for (std::size_t at = 0; at < impl_->count(); ++at) {
    const Table::Line& line = impl_->table->lines[impl_->lineAt(static_cast<std::ptrdiff_t>(at))];
    if (static_cast<int>(line.id) == bookmark.AsInt() && (line.live || impl_->table->showsDeleted)) {
      impl_->place = static_cast<std::ptrdiff_t>(at);
      return;
    }
  }
  throw RowSetError(RowSetError::BadBookmark, "no such row");
}
RowSetPtr RowSet::Clone(int) const {
  auto impl = std::make_unique<Impl>();
  impl->table = impl_->table;
  RowSetPtr set(new RowSet(std::move(impl)));
  set->MoveFirst();
  return set;
}
RowSetPtr RowSet::EmptyCopy() const {
  RowSetPtr set = make();
  set->impl_->table->columns = impl_->table->columns;
  set->Open();
  return set;
}
void RowSet::SetMarshalOptions(int options) { impl_->marshal = options; }
int RowSet::MarshalOptions() const { return impl_->marshal; }
void RowSet::CancelBatch() {
  auto& lines = impl_->table->lines;
  std::erase_if(lines, [](const Table::Line& line) { return !line.wasStored; });
  for (Table::Line& line : lines) {
    if (!line.originals.empty()) line.cells = line.originals;
    line.originals.clear();
    line.live = true;
    line.state = RowState::Unchanged;
    for (auto& [column, rows] : line.nested) rows->CancelBatch();
  }
  MoveFirst();
}
void RowSet::AcceptChanges() {
  for (Table::Line& line : impl_->table->lines) {
    line.originals.clear();
    if (line.live) line.state = RowState::Unchanged, line.wasStored = true;
    else line.wasStored = false;
    for (auto& [column, rows] : line.nested) rows->AcceptChanges();
  }
}
namespace {
bool lineChanged(const Table::Line& line) {
  if (line.live ? line.state != RowState::Unchanged : line.wasStored) return true;
  return line.live && std::any_of(line.nested.begin(), line.nested.end(),
                                  [](const auto& n) { return n.second->HasChanges(); });
}
}  // namespace
bool RowSet::HasChanges() const {
  return std::any_of(impl_->table->lines.begin(), impl_->table->lines.end(), lineChanged);
}
RowState RowSet::State() const { return impl_->need().state; }
RowSetPtr RowSet::Changes() const {
  RowSetPtr set = EmptyCopy();
  set->impl_->table->showsDeleted = true;
  for (const Table::Line& line : impl_->table->lines) {
    if (!lineChanged(line)) continue;
    Table::Line copy = line;
    for (auto& [column, rows] : copy.nested) rows = rows->Changes();
    set->impl_->table->lines.push_back(std::move(copy));
  }
  set->MoveFirst();
  return set;
}

void FieldList::Append(std::string_view name, FieldType type, int size, int attributes) {
  if (set_->IsOpen()) throw RowSetError(RowSetError::NotOpen, "the record set is open already");
  set_->impl_->table->columns.push_back({std::string(name), type, size, attributes});
}
void FieldList::AppendNested(std::string_view name, const ColumnSpec* columns, int count) {
  Append(name, FieldType::Nested);
  set_->impl_->table->columns.back().nested = columns;
  set_->impl_->table->columns.back().nestedCount = count;
}
std::size_t FieldList::size() const { return set_->impl_->table->columns.size(); }
Field FieldList::operator[](std::size_t index) const { return {*set_, static_cast<int>(index)}; }
Field FieldList::operator[](std::string_view name) const {
  const int column = set_->impl_->table->find(name);
  if (column < 0) {
    throw RowSetError(RowSetError::UnknownColumn, "no column " + std::string(name));
  }
  return {*set_, column};
}
bool FieldList::contains(std::string_view name) const {
  return set_->impl_->table->find(name) >= 0;
}

namespace {
const Variant kAbsent;
}
Variant Field::Value() const {
  if (Type() == FieldType::Nested) return Rows();
  return set_->impl_->need().cells[static_cast<std::size_t>(column_)];
}
void Field::SetValue(const Variant& value) {
  auto& line = set_->impl_->need();
  const auto i = static_cast<std::size_t>(column_);
  Variant fresh = converted(value, set_->impl_->table->columns[i]);
  if (!set_->impl_->loading && line.state == RowState::Unchanged) {
    line.originals = line.cells;
    line.state = RowState::Changed;
  }
  line.cells[i] = std::move(fresh);
}
double Field::Number() const {
  const Variant& v = set_->impl_->need().cells[static_cast<std::size_t>(column_)];
  return v.IsAbsent() ? 0 : v.AsDouble();
}
std::string_view Field::Text() const {
  const Variant& v = set_->impl_->need().cells[static_cast<std::size_t>(column_)];
  return v.IsAbsent() ? std::string_view() : std::string_view(v.AsText());
}
bool Field::IsEmpty() const {
  return set_->impl_->need().cells[static_cast<std::size_t>(column_)].IsEmpty();
}
bool Field::IsNull() const {
  return set_->impl_->need().cells[static_cast<std::size_t>(column_)].IsNull();
}
RowSetPtr Field::Rows() const {
  auto& line = set_->impl_->need();
  const ColumnInfo& column = set_->impl_->table->columns[static_cast<std::size_t>(column_)];
  if (column.type != FieldType::Nested) {
    throw RowSetError(RowSetError::TypeMismatch, column.name + " is no nested set");
  }
  RowSetPtr& rows = line.nested[column_];
  if (!rows) rows = RowSet::make(column.nested, column.nestedCount);
  return rows;
}
Variant Field::OriginalValue() const {
  const auto& line = set_->impl_->need();
  if (!line.wasStored) return {};
  const auto i = static_cast<std::size_t>(column_);
  return line.originals.empty() ? line.cells[i] : line.originals[i];
}
const std::string& Field::Name() const {
  return set_->impl_->table->columns[static_cast<std::size_t>(column_)].name;
}
FieldType Field::Type() const {
  return set_->impl_->table->columns[static_cast<std::size_t>(column_)].type;
}
int Field::DefinedSize() const {
  return set_->impl_->table->columns[static_cast<std::size_t>(column_)].size;
}
int Field::Attributes() const {
  return set_->impl_->table->columns[static_cast<std::size_t>(column_)].attributes;
}
int Field::NumericScale() const {
  return set_->impl_->table->columns[static_cast<std::size_t>(column_)].scale;
}
void Field::SetNumericScale(int scale) {
  set_->impl_->table->columns[static_cast<std::size_t>(column_)].scale = scale;
}
Field& Field::operator=(const Variant& value) { return SetValue(value), *this; }
Field& Field::operator=(double value) { return SetValue(value), *this; }
Field& Field::operator=(std::string_view value) { return SetValue(value), *this; }

KeepPlace::KeepPlace(RowSet& rows)
    : rows_(rows), filter_(rows.Filter()), bookmark_(rows.HasCurrent() ? rows.Bookmark() : Variant()) {}
KeepPlace::~KeepPlace() {
  try {
    rows_.SetFilter(filter_);
    if (!bookmark_.IsEmpty()) rows_.SetBookmark(bookmark_);
  } catch (const RowSetError&) {
    rows_.MoveFirst();  // the row has been deleted meanwhile
  }
}

std::string dump(RowSet& rows) {
  std::string out;
  for (std::size_t i = 0; i < rows.Fields().size(); ++i) {
    out += (i ? "|" : "") + rows.Fields()[i].Name();
  }
  out += "\n";
  RowSetPtr walk = rows.Clone();
  ForEachRow(*walk, [&](RowSet& row) {
    std::string nested;
    for (std::size_t i = 0; i < row.Fields().size(); ++i) {
      Field field = row.Fields()[i];
      if (i) out += "|";
      if (field.Type() == FieldType::Nested) {
        if (field.Rows()->Clone()->RecordCount() == 0) continue;
        for (const std::string& line : split(dump(*field.Rows()), '\n')) {
          if (!line.empty()) nested += "  " + line + "\n";
        }
        continue;
      }
      const Variant value = field.Value();
      out += value.IsEmpty() ? "~" : value.IsNull() ? "-" : value.Show();
    }
    out += "\n" + nested;
  });
  return out;
}

}  // namespace tolvex
