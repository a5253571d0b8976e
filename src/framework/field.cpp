// Field and FieldList: cells of the current row in and out, with their conversions.
#include <cmath>
#include <limits>

#include "framework/cursor.h"
#include "framework/rounding.h"
#include "framework/text.h"

namespace tolvex {

namespace {

[[noreturn]] void mismatch(const Column& column) {
  throw RowSetError(RowSetError::TypeMismatch,
                    "Reikšmė netinka stulpelio \"" + column.name + "\" tipui");
}

template <class Whole>
double wholeNumber(const Column& column, double number) {
  const double rounded = roundHalfEven(number, 0);
  using Limits = std::numeric_limits<Whole>;
  if (rounded >= Limits::min() && rounded <= Limits::max()) return rounded;
  throw RowSetError(RowSetError::OutOfRange,
                    "Skaičius per didelis stulpeliui \"" + column.name + "\"");
}

// The number as the column keeps it.
double fitted(const Column& column, double number) {
  switch (column.type) {
    case FieldType::SmallInt:
      return wholeNumber<std::int16_t>(column, number);
    case FieldType::Integer:
      return wholeNumber<std::int32_t>(column, number);
    case FieldType::Boolean:
      return number != 0 ? 1 : 0;
    case FieldType::Double:
      return number;
    default:
      mismatch(column);
  }
}

double numberOf(const Column& column, std::string_view text) {
  double number;
  if (column.type == FieldType::Date) {
    const auto moment = DateTime::Parse(text);
    if (!moment) mismatch(column);
    return static_cast<double>(moment->Seconds());
  }
  if (!parsePlainNumber(text, number)) mismatch(column);
  return fitted(column, number);
}

Cell cellOf(const Table& table, const Column& column, const Variant& value) {
  if (column.kind == CellKind::Nested) mismatch(column);
  const bool isNumber = column.kind == CellKind::Number;
  if (value.IsEmpty()) return isNumber ? bitsOf(kEmptyNumber) : kEmptyText;
  if (value.IsNull()) return isNumber ? bitsOf(kNullNumber) : kNullText;
  if (isNumber) {
    if (value.IsText()) return bitsOf(numberOf(column, value.AsText()));
    if (value.IsDate()) {
      if (column.type != FieldType::Date) mismatch(column);
      return bitsOf(static_cast<double>(value.AsDate().Seconds()));
    }
    if (value.IsNumber() || value.IsBool()) return bitsOf(fitted(column, value.AsDouble()));
  } else {
    if (value.IsText()) return table.pool().intern(value.AsText());
    if (value.IsNumber() || value.IsDate()) return table.pool().intern(value.Show());
  }
  mismatch(column);
}

Variant valueOf(const Table& table, const Column& column, Cell cell) {
  if (column.kind == CellKind::Text) {
    if (cell < kFirstText) return cell == kEmptyText ? Variant() : Variant(Null{});
    return table.pool().text(static_cast<Symbol>(cell));
  }
  if (cell == bitsOf(kEmptyNumber)) return {};
  if (cell == bitsOf(kNullNumber)) return Null{};
  const double number = std::bit_cast<double>(cell);
  switch (column.type) {
    case FieldType::SmallInt:
    case FieldType::Integer:
      return static_cast<int>(number);
    case FieldType::Boolean:
      return number != 0;
    case FieldType::Date:
      return DateTime::FromSeconds(static_cast<std::int64_t>(number));
    default:
      return number;
  }
}

const Column& columnAt(const Table& table, int column) {
  return table.schema()[std::size_t(column)];
}

}  // namespace

Variant Field::Value() const {
  const Table& table = set_->current();
  const Column& column = columnAt(table, column_);
  if (column.kind == CellKind::Nested) return Rows();
  return valueOf(table, column, table.cell(column, set_->row_));
}

void Field::SetValue(const Variant& value) {
  Table& table = set_->current();
  const Column& column = columnAt(table, column_);
  // Copies of whole rows assign what they find; nothing assigned leaves the child rows alone.
  if (column.kind == CellKind::Nested && value.IsAbsent()) return;
  table.set(column_, set_->row_, cellOf(table, column, value), set_->loading_);
}

Field& Field::operator=(const Variant& value) {
  SetValue(value);
  return *this;
}

Field& Field::operator=(double value) {
  Table& table = set_->current();
  const Column& column = columnAt(table, column_);
  if (column.kind != CellKind::Number) {
    SetValue(value);
  } else {
    table.set(column_, set_->row_, bitsOf(fitted(column, value)), set_->loading_);
  }
  return *this;
}

Field& Field::operator=(std::string_view value) {
  Table& table = set_->current();
  if (columnAt(table, column_).kind != CellKind::Text) {
    SetValue(value);
  } else {
    table.set(column_, set_->row_, table.pool().intern(value), set_->loading_);
  }
  return *this;
}

double Field::Number() const {
  const Table& table = set_->current();
  const Column& column = columnAt(table, column_);
  if (column.kind != CellKind::Number || column.type == FieldType::Date) mismatch(column);
  const double number = table.numbers(column)[set_->row_];
  return isAbsent(number) ? 0 : number;
}

std::string_view Field::Text() const {
  const Table& table = set_->current();
  const Column& column = columnAt(table, column_);
  if (column.kind != CellKind::Text) mismatch(column);
  return table.pool().text(table.symbols(column)[set_->row_]);
}

bool Field::IsEmpty() const {
  const Table& table = set_->current();
  const Column& column = columnAt(table, column_);
  if (column.kind == CellKind::Nested) return false;
  const Cell cell = table.cell(column, set_->row_);
  return column.kind == CellKind::Text ? cell == kEmptyText : cell == bitsOf(kEmptyNumber);
}

bool Field::IsNull() const {
  const Table& table = set_->current();
  const Column& column = columnAt(table, column_);
  if (column.kind == CellKind::Nested) return false;
  const Cell cell = table.cell(column, set_->row_);
  return column.kind == CellKind::Text ? cell == kNullText : cell == bitsOf(kNullNumber);
}

RowSetPtr Field::Rows() const {
  const Column& column = columnAt(set_->current(), column_);
  if (column.kind != CellKind::Nested) mismatch(column);
  return set_->child(set_->row_, column_);
}

Variant Field::OriginalValue() const {
  const Table& table = set_->current();
  const Column& column = columnAt(table, column_);
  if (column.kind == CellKind::Nested) return {};
  return valueOf(table, column, table.original(column_, set_->row_));
}

const std::string& Field::Name() const { return columnAt(*set_->table_, column_).name; }
FieldType Field::Type() const { return columnAt(*set_->table_, column_).type; }
int Field::DefinedSize() const { return columnAt(*set_->table_, column_).size; }
int Field::Attributes() const { return columnAt(*set_->table_, column_).attributes; }
int Field::NumericScale() const { return columnAt(*set_->table_, column_).scale; }

void Field::SetNumericScale(int scale) {
  set_->table_->schema()[std::size_t(column_)].scale = scale;
}

void FieldList::Append(std::string_view name, FieldType type, int size, int attributes) {
  expect(type != FieldType::Nested, "a nested set is declared with its columns");
  Schema& schema = set_->table_->schema();
  if (schema.sealed()) {
    throw RowSetError(RowSetError::NotOpen, "Rinkinys jau atidarytas, stulpelio pridėti negalima");
  }
  schema.append(name, type, size, attributes, nullptr);
}

void FieldList::AppendNested(std::string_view name, const ColumnSpec* columns, int count) {
  Schema& schema = set_->table_->schema();
  if (schema.sealed()) {
    throw RowSetError(RowSetError::NotOpen, "Rinkinys jau atidarytas, stulpelio pridėti negalima");
  }
  schema.append(name, FieldType::Nested, 0, -1, Schema::of(columns, count));
}

std::size_t FieldList::size() const { return set_->table_->schema().size(); }

Field FieldList::operator[](std::size_t index) const {
  set_->open();
  if (index >= size()) throw RowSetError(RowSetError::OutOfRange, "Tokio stulpelio nėra");
  return Field(*set_, static_cast<int>(index));
}

Field FieldList::operator[](std::string_view name) const { return (*set_)[name]; }

bool FieldList::contains(std::string_view name) const {
  return set_->table_->schema().find(name) >= 0;
}

Field RowSet::operator[](std::string_view name) {
  const int column = table_->schema().find(name);
  if (column < 0 || !table_->isOpen()) failNoColumn(name);
  return Field(*this, column);
}

}  // namespace tolvex
