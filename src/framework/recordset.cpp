#include "framework/recordset.h"

#include "framework/cursor.h"
#include "framework/text.h"
#include "framework/view.h"

namespace tolvex {

namespace {

[[noreturn]] void failClosed() {
  throw RowSetError(RowSetError::NotOpen, "Įrašų rinkinys neatidarytas");
}

[[noreturn]] void failBookmark() {
  throw RowSetError(RowSetError::BadBookmark, "Įrašo, į kurį grįžtama, nebėra");
}

const std::string kNoText;

}  // namespace

RowSet::RowSet(Key, std::shared_ptr<Table> table) : table_(std::move(table)), fields_(*this) {}

RowSet::~RowSet() = default;

RowSetPtr RowSet::over(std::shared_ptr<Table> table) {
  auto rows = std::make_shared<RowSet>(Key{}, std::move(table));
  if (rows->table_->isOpen() && rows->table_->live() > 0) rows->MoveFirst();
  return rows;
}

RowSetPtr RowSet::make() {
  return over(std::make_shared<Table>(std::make_shared<Schema>(), nullptr));
}

RowSetPtr RowSet::make(const ColumnSpec* columns, int count) {
  return over(std::make_shared<Table>(Schema::of(columns, count), std::make_shared<TextPool>()));
}

Table& RowSet::open() const {
  if (!table_->isOpen()) failClosed();
  return *table_;
}

void RowSet::failNoRow() const {
  open();
  throw RowSetError(RowSetError::NoCurrentRow, "Nėra einamojo įrašo");
}

bool RowSet::HasCurrent() const { return hasRow(); }

bool RowSet::IsOpen() const { return table_->isOpen(); }

void RowSet::failNoColumn(std::string_view name) const {
  open();
  throw RowSetError(RowSetError::UnknownColumn, "Nėra stulpelio \"" + std::string(name) + "\"");
}

void RowSet::Open() {
  if (table_->isOpen()) return;
  table_->schema().seal();
  table_ = std::make_shared<Table>(table_->sharedSchema(), std::make_shared<TextPool>());
  place(kAfterLast);
}

void RowSet::Close() {
  view_.reset();
  table_ = std::make_shared<Table>(open().sharedSchema(), nullptr);
  place(kAfterLast);
}

void RowSet::AddNew() { place(open().append(RowState::Added)); }

void RowSet::LoadRow() {
  place(open().append(RowState::Unchanged));
  loading_ = true;
}

void RowSet::Update() {
  current();
  loading_ = false;
}

void RowSet::Delete(int affect) {
  expect(affect == 1, "Delete removes the current row only");
  current().remove(row_);
  loading_ = false;
}

void RowSet::place(std::uint32_t row) {
  row_ = row;
  loading_ = false;
}

std::uint32_t RowSet::nextVisible(std::uint32_t row) const {
  if (view_) return row == kBeforeFirst ? view_->first() : view_->next(row);
  const std::uint32_t next = row == kBeforeFirst ? table_->firstLive() : table_->liveFrom(row + 1);
  return next < table_->size() ? next : Table::kNoRow;
}

std::uint32_t RowSet::previousVisible(std::uint32_t row) const {
  if (view_) return row == kAfterLast ? view_->last() : view_->previous(row);
  return row == kAfterLast ? table_->lastLive() : table_->liveUpTo(row - 1);
}

void RowSet::MoveFirst() {
  open();
  place(nextVisible(kBeforeFirst));  // no row is the place after the last
}

void RowSet::MoveLast() {
  open();
  place(previousVisible(kAfterLast));
}

// A set that is not open stands after its last row.
void RowSet::MoveNext() {
  if (row_ == kAfterLast) failNoRow();
  const std::uint32_t next = nextVisible(row_);
  if (next == Table::kNoRow && row_ == kBeforeFirst) failNoRow();
  place(next);
}

void RowSet::MovePrevious() {
  if (row_ == kBeforeFirst) failNoRow();
  const std::uint32_t previous = previousVisible(row_);
  if (previous == Table::kNoRow && row_ == kAfterLast) failNoRow();
  place(previous == Table::kNoRow ? kBeforeFirst : previous);
}

void RowSet::Move(std::ptrdiff_t rows) {
  open();
  if (rows > 0) {
    do MoveNext();
    while (--rows > 0 && row_ != kAfterLast);
  } else if (rows < 0) {
    do MovePrevious();
    while (++rows < 0 && row_ != kBeforeFirst);
  }
}

bool RowSet::Eof() const { return row_ == kAfterLast ? (open(), true) : noneVisible(); }

bool RowSet::Bof() const { return row_ == kBeforeFirst || (open(), noneVisible()); }

bool RowSet::noneVisible() const { return (view_ ? view_->count() : table_->live()) == 0; }

std::size_t RowSet::RecordCount() const { return view_ ? view_->count() : open().live(); }

View& RowSet::view() {
  if (!view_) view_ = std::make_unique<View>(*table_);
  return *view_;
}

void RowSet::SetFilter(std::string_view filter) {
  const Table& table = open();
  const bool isBlank = filter.find_first_not_of(' ') == std::string_view::npos;
  Predicate predicate = isBlank ? Predicate() : parseFilter(filter, table.schema());
  if (!isBlank || view_) view().setFilter(filter, std::move(predicate));
  if (view_ && view_->isPlain()) view_.reset();
  MoveFirst();
}

const std::string& RowSet::Filter() const {
  open();
  return view_ ? view_->filter() : kNoText;
}

void RowSet::SetSort(std::string_view sort) {
  const std::vector<SortKey> keys = parseSort(sort, open().schema());
  if (!keys.empty() || view_) view().setSort(sort, keys);
  if (view_ && view_->isPlain()) view_.reset();
  MoveFirst();
}

const std::string& RowSet::Sort() const {
  open();
  return view_ ? view_->sort() : kNoText;
}

Variant RowSet::Bookmark() const { return static_cast<int>(current().idOf(row_)); }

void RowSet::SetBookmark(const Variant& bookmark) {
  const Table& table = open();
  if (!bookmark.IsNumber() || bookmark.AsDouble() < 0) failBookmark();
  const std::uint32_t row = table.rowOf(static_cast<std::uint32_t>(bookmark.AsInt()));
  if (row == Table::kNoRow || !table.alive(row)) failBookmark();
  place(row);
}

RowSetPtr RowSet::Clone(int) const {
  open();
  return over(table_);
}

RowSetPtr RowSet::EmptyCopy() const {
  return over(std::make_shared<Table>(open().sharedSchema(), std::make_shared<TextPool>()));
}

void RowSet::SetMarshalOptions(int options) {
  open();
  marshal_ = static_cast<std::int16_t>(options);
}

int RowSet::MarshalOptions() const { return open(), marshal_; }

void RowSet::CancelBatch() {
  open().cancel();
  MoveFirst();
}

void RowSet::AcceptChanges() {
  open().accept();
  loading_ = false;
}

bool RowSet::HasChanges() const { return open().pending() || table_->anyNestedPending(); }

RowState RowSet::State() const { return current().state(row_); }

RowSetPtr RowSet::Changes() const { return over(open().changes()); }

RowSetPtr RowSet::child(std::uint32_t row, int column) const {
  const Column& c = table_->schema()[std::size_t(column)];
  RowSetPtr& slot = table_->nested(row, c);
  if (!slot) slot = over(std::make_shared<Table>(c.nested, table_->sharedPool()));
  return slot;
}

KeepPlace::KeepPlace(RowSet& rows) : rows_(rows), filter_(rows.Filter()), row_(rows.row_) {}

KeepPlace::~KeepPlace() {
  if (!rows_.IsOpen()) return;
  if (rows_.Filter() != filter_) rows_.SetFilter(filter_);
  rows_.place(row_);
}

}  // namespace tolvex
