#include "framework/schema.h"

namespace tolvex {

namespace {

CellKind kindOf(FieldType type) {
  switch (type) {
    case FieldType::Nested:
      return CellKind::Nested;
    case FieldType::Guid:
    case FieldType::Text:
      return CellKind::Text;
    default:
      return CellKind::Number;
  }
}

bool sameAscii(std::string_view a, std::string_view b) {
  const auto up = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c; };
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (up(a[i]) != up(b[i])) return false;
  }
  return true;
}

}  // namespace

int Schema::search(std::string_view name, const Name& wanted) const {
  for (std::size_t at = bucketOf(wanted); names_[at].column >= 0; at = (at + 1) & mask_) {
    if (sameAscii(columns_[std::size_t(names_[at].column)].name, name)) return names_[at].column;
  }
  return -1;
}

void Schema::enter(int column) {
  Name name = nameOf(columns_[std::size_t(column)].name);
  name.column = column;
  std::size_t at = bucketOf(name);
  while (names_[at].column >= 0) at = (at + 1) & mask_;
  names_[at] = name;
}

void Schema::append(std::string_view name, FieldType type, int size, int attributes,
                    std::shared_ptr<Schema> nested) {
  if (find(name) >= 0) {
    throw RowSetError(RowSetError::DuplicateKey, "Stulpelis \"" + std::string(name) + "\" jau yra");
  }
  columns_.push_back(
      {std::string(name), type, kindOf(type), size, attributes, 0, 0, std::move(nested)});
  if (columns_.size() * 4 > names_.size()) {
    names_.assign(std::bit_ceil(columns_.size() * 4), Name{0, 0, 0, -1});
    mask_ = names_.size() - 1;
    for (std::size_t i = 0; i < columns_.size(); ++i) enter(static_cast<int>(i));
  } else {
    enter(static_cast<int>(columns_.size()) - 1);
  }
}

void Schema::seal() {
  if (sealed_) return;
  sealed_ = true;
  // Wide cells first, so that every column of the common slab is aligned.
  for (Column& column : columns_) {
    if (column.kind != CellKind::Number) continue;
    column.offset = rowBytes_;
    rowBytes_ += sizeof(double);
  }
  for (Column& column : columns_) {
    if (column.kind == CellKind::Nested) column.offset = nestedCount_++;
    if (column.kind != CellKind::Text) continue;
    column.offset = rowBytes_;
    rowBytes_ += sizeof(std::uint32_t);
  }
}

std::shared_ptr<Schema> Schema::of(const ColumnSpec* columns, int count) {
  auto schema = std::make_shared<Schema>();
  schema->columns_.reserve(std::size_t(count));
  for (const ColumnSpec* spec = columns; spec != columns + count; ++spec) {
    const bool isNested = spec->type == FieldType::Nested;
    schema->append(spec->name, spec->type, spec->size, -1,
                   isNested ? of(spec->nested, spec->nestedCount) : nullptr);
  }
  schema->seal();
  return schema;
}

}  // namespace tolvex
