// Schema: the columns of a record set and the table that finds them by name.
#pragma once

#include <bit>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/case_fold.h"
#include "framework/recordset.h"

namespace tolvex {

// How the cells of a column are kept: doubles, symbols of the text pool, or nested sets.
enum class CellKind : std::uint8_t { Number, Text, Nested };

// A number cell is a double. The absent states are two NaN payloads that no arithmetic gives, so
// ordered comparisons with them are false for free.
inline constexpr double kEmptyNumber = std::bit_cast<double>(std::uint64_t{0x7FF8000000000E01});
inline constexpr double kNullNumber = std::bit_cast<double>(std::uint64_t{0x7FF8000000000E02});

inline std::uint64_t bitsOf(double cell) { return std::bit_cast<std::uint64_t>(cell); }
inline bool isAbsent(double cell) {
  return bitsOf(cell) == bitsOf(kEmptyNumber) || bitsOf(cell) == bitsOf(kNullNumber);
}

class Schema;

struct Column {
  std::string name;
  FieldType type;
  CellKind kind;
  int size;
  int attributes;
  int scale = 0;
  std::size_t offset = 0;  // bytes of all columns before it in one row; of a nested one its number
  std::shared_ptr<Schema> nested;
};

class Schema {
 public:
  static std::shared_ptr<Schema> of(const ColumnSpec* columns, int count);

  void append(std::string_view name, FieldType type, int size, int attributes,
              std::shared_ptr<Schema> nested);
  // Fixes the layout; no column can be added from here on.
  void seal();

  // -1 when there is none. The spelling of the declaration is found soonest.
  int find(std::string_view name) const {
    if (columns_.empty()) return -1;
    const Name wanted = nameOf(name);
    const Name& entry = names_[bucketOf(wanted)];
    const bool isWhole = entry.head == wanted.head && entry.tail == wanted.tail &&
                         entry.size == wanted.size && wanted.size <= 16;
    return isWhole && entry.column >= 0 ? entry.column : search(name, wanted);
  }
  const Column& operator[](std::size_t index) const { return columns_[index]; }
  Column& operator[](std::size_t index) { return columns_[index]; }
  std::size_t size() const { return columns_.size(); }
  std::size_t rowBytes() const { return rowBytes_; }
  std::size_t nestedCount() const { return nestedCount_; }
  bool sealed() const { return sealed_; }

 private:
  // The first and last eight bytes: the whole of a name up to sixteen.
  struct Name {
    std::uint64_t head, tail;
    std::uint32_t size;
    std::int32_t column;  // -1 free
  };
  static Name nameOf(std::string_view name) {
    const std::size_t size = name.size();
    const char* const text = name.data();
    std::uint64_t head = 0, tail = 0;
    if (size >= 8) {
      head = loadWord(text);
      tail = loadWord(text + size - 8);
    } else if (size >= 4) {
      head = loadHalfWord(text);
      tail = loadHalfWord(text + size - 4);
    } else {
      for (const char c : name) head = head << 8 | static_cast<unsigned char>(c);
    }
    return {head, tail, static_cast<std::uint32_t>(size), -1};
  }
  // The same for all spellings of a name: the bit that tells the case of a letter is left out.
  std::size_t bucketOf(const Name& name) const {
    constexpr std::uint64_t kCaseBits = 0x2020202020202020u;
    const std::uint64_t hash = (name.head | kCaseBits) * 0x9E3779B97F4A7C15u +
                               (name.tail | kCaseBits) * 0xBF58476D1CE4E5B9u + name.size;
    return static_cast<std::size_t>(hash >> 40) & mask_;
  }
  int search(std::string_view name, const Name& wanted) const;
  void enter(int column);

  std::vector<Column> columns_;
  std::vector<Name> names_;  // open addressing
  std::size_t mask_ = 0;
  std::size_t rowBytes_ = 0;
  std::size_t nestedCount_ = 0;
  bool sealed_ = false;
};

}  // namespace tolvex
