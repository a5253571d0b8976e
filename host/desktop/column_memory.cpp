#include "host/desktop/column_memory.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "framework/text.h"
#include "platform/host.h"

namespace tolvex::desktop {
namespace {

constexpr const char* kSection = "Columns";
constexpr int kWidest = 4000;

// A list may show other columns at other times; each set of them has a memory of its own.
std::string keyOf(const ui::ListView& list, const std::vector<ui::Column>& columns) {
  std::uint32_t hash = 2166136261u;
  for (const ui::Column& column : columns) {
    for (const char byte : (column.key.empty() ? column.caption : column.key) + ";") {
      hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619u;
    }
  }
  char text[16];
  std::snprintf(text, sizeof text, "#%08x", static_cast<unsigned>(hash));
  return list.form.name() + "." + list.name + text;
}

bool readWhole(const std::string& text, int least, int most, int& value) {
  double number = 0;
  if (!parsePlainNumber(text, number) || number < least || number > most) return false;
  value = static_cast<int>(number);
  return value == number;
}

}  // namespace

ColumnMemory::ColumnMemory(ui::ListView& list, const std::vector<ui::Column>& columns)
    : list_(list), key_(keyOf(list, columns)), count_(columns.size()) {}

// Kept as "column:width;column:width".
std::vector<ColumnMemory::Place> ColumnMemory::read() const {
  const std::string kept = list_.form.host().settings().get(kSection, key_, "");
  if (kept.empty()) return {};
  std::vector<Place> places;
  std::vector<bool> seen(count_);
  for (const std::string& part : split(kept, ';')) {
    const auto words = split(part, ':');
    Place place;
    if (words.size() != 2 || !readWhole(words[0], 0, static_cast<int>(count_) - 1, place.column) ||
        !readWhole(words[1], 0, kWidest, place.width)) {
      return {};
    }
    seen[static_cast<std::size_t>(place.column)] = true;
    places.push_back(place);
  }
  const bool whole =
      places.size() == count_ && std::find(seen.begin(), seen.end(), false) == seen.end();
  return whole ? places : std::vector<Place>();
}

void ColumnMemory::write(const std::vector<Place>& places) const {
  std::string kept;
  for (const Place& place : places) {
    if (!kept.empty()) kept += ";";
    kept += std::to_string(place.column) + ":" + std::to_string(place.width);
  }
  list_.form.host().settings().set(kSection, key_, kept);
}

void ColumnMemory::forget() const { list_.form.host().settings().set(kSection, key_, ""); }

}  // namespace tolvex::desktop
