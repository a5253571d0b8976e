#include "framework/sorting.h"

#include <algorithm>
#include <array>
#include <utility>

#include "framework/collation.h"
#include "framework/text.h"

namespace tolvex {

namespace {

struct Item {
  std::uint64_t key;
  std::uint32_t row;
};

constexpr std::size_t kFewRows = 64;  // below, comparing beats counting

// A whole number that orders as the double does; absent is 0, below all numbers.
std::uint64_t orderedBits(double x) {
  if (isAbsent(x)) return 0;
  const std::uint64_t bits = bitsOf(x + 0.0);  // one zero
  constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

// The place of each text of the column in the alphabet, from 1, by symbol; 0 for absent.
std::vector<std::uint32_t> textRanks(const Table& table, const Symbol* cells) {
  std::vector<std::uint32_t> ranks(table.pool().end(), 0);
  std::vector<std::pair<std::string, Symbol>> texts;
  for (std::uint32_t row = 0; row < table.size(); ++row) {
    if (cells[row] < kFirstText || ranks[cells[row]] != 0) continue;
    ranks[cells[row]] = 1;
    texts.emplace_back(collationKey(table.pool().text(cells[row])), cells[row]);
  }
  std::sort(texts.begin(), texts.end());
  std::uint32_t rank = 0;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i == 0 || texts[i].first != texts[i - 1].first) ++rank;
    ranks[texts[i].second] = rank;
  }
  return ranks;
}

// Counting sort digit by digit; digits of more bits pay once they are fewer than the rows.
template <int kBits>
void radixSort(std::vector<Item>& items) {
  constexpr int kDigits = (64 + kBits - 1) / kBits;
  constexpr std::size_t kValues = std::size_t{1} << kBits;
  const auto digitOf = [](std::uint64_t key, int digit) {
    return static_cast<std::size_t>(key >> (digit * kBits)) & (kValues - 1);
  };
  std::vector<std::array<std::uint32_t, kValues>> counts(kDigits);
  for (const Item& item : items) {
    for (int d = 0; d < kDigits; ++d) ++counts[std::size_t(d)][digitOf(item.key, d)];
  }
  std::vector<Item> other(items.size());
  for (int d = 0; d < kDigits; ++d) {
    auto& count = counts[std::size_t(d)];
    if (count[digitOf(items.front().key, d)] == items.size()) continue;  // the same in all
    std::uint32_t before = 0;
    for (std::uint32_t& n : count) before += std::exchange(n, before);
    for (const Item& item : items) other[count[digitOf(item.key, d)]++] = item;
    items.swap(other);
  }
}

void sortItems(std::vector<Item>& items) {
  if (items.size() < kFewRows) {
    std::stable_sort(items.begin(), items.end(),
                     [](const Item& a, const Item& b) { return a.key < b.key; });
  } else if (items.size() < 8192) {
    radixSort<8>(items);
  } else {
    radixSort<11>(items);
  }
}

}  // namespace

std::vector<SortKey> parseSort(std::string_view sort, const Schema& schema) {
  std::vector<SortKey> keys;
  if (trim(sort).empty()) return keys;
  for (const std::string& part : split(sort, ',')) {
    std::string name = trim(part);
    bool descending = false;
    if (const std::size_t blank = name.find(' '); blank != std::string::npos) {
      const std::string direction = upper(trim(name.substr(blank)));
      if (direction != "DESC" && direction != "ASC") {
        throw RowSetError(RowSetError::BadFilter, "Klaidinga rikiavimo tvarka: " + part);
      }
      descending = direction == "DESC";
      name.resize(blank);
    }
    const int column = schema.find(name);
    if (column < 0 || schema[std::size_t(column)].kind == CellKind::Nested) {
      throw RowSetError(RowSetError::UnknownColumn, "Negalima rikiuoti pagal \"" + name + "\"");
    }
    keys.push_back({column, descending});
  }
  return keys;
}

std::vector<std::uint32_t> sortedPlaces(const Table& table, const std::vector<SortKey>& keys) {
  std::vector<Item> items(table.size());
  for (std::uint32_t row = 0; row < table.size(); ++row) items[row] = {0, row};
  // The last key first: every pass keeps the order of the ones before among its equals.
  for (auto key = keys.rbegin(); key != keys.rend() && items.size() > 1; ++key) {
    const Column& column = table.schema()[std::size_t(key->column)];
    const std::uint64_t flip = key->descending ? ~std::uint64_t{0} : 0;
    if (column.kind == CellKind::Number) {
      const double* cells = table.numbers(column);
      for (Item& item : items) item.key = orderedBits(cells[item.row]) ^ flip;
    } else {
      const Symbol* cells = table.symbols(column);
      const auto ranks = textRanks(table, cells);
      for (Item& item : items) item.key = ranks[cells[item.row]] ^ flip;
    }
    sortItems(items);
  }
  std::vector<std::uint32_t> places(items.size());
  std::transform(items.begin(), items.end(), places.begin(), [](const Item& i) { return i.row; });
  return places;
}

}  // namespace tolvex
