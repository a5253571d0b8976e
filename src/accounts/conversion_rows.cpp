#include "accounts/conversion_rows.h"

#include <map>

#include "framework/references.h"

namespace tolvex {

namespace {

// Levels of nodes by their ids, from 0 for a class. Parents stand before their children.
class Levels {
 public:
  int of(RowSet& row) {
    const int parent = static_cast<int>(row["ParentID"].Number());
    const auto above = levels_.find(parent);
    const int level = above == levels_.end() ? 0 : above->second + 1;
    levels_[idOf(row["OIDR"].Text())] = level;
    return level;
  }

 private:
  std::map<int, int> levels_;
};

}  // namespace

ConversionList conversionList(RowSet& table) {
  ConversionList list;
  Levels levels;
  constexpr int kNoBranch = -1;
  int branch = kNoBranch;  // the level of the account with entries that the row lies below, or is
  ForEachRow(table, [&](RowSet& node) {
    const int level = levels.of(node);
    const bool group = level == 0 || node["GroupFlag"].Number() != 0;
    const int entries = static_cast<int>(node["cn"].Number());
    if (level <= branch) branch = kNoBranch;
    if (branch == kNoBranch && !group && entries > 0) branch = level;
    const bool chosen = !node["NewID"].IsAbsent();

    ui::Row row;
    row.key = node["OIDR"].Text();
    row.bold = group;
    row.cells.emplace_back(std::string(node["PreviewO"].Text()));
    row.cells.emplace_back(chosen ? std::string(node["PreviewN"].Text()) : std::string());
    if (chosen) row.tag = std::to_string(static_cast<int>(node["NewID"].Number()));
    if (entries > 0) row.hint = "Įrašų: " + std::to_string(entries);
    if (branch != kNoBranch && !group && !chosen) {
      row.mark = ui::Mark::Bad;
      list.mayConvert = false;
    }
    list.rows.push_back(std::move(row));
  });
  return list;
}

std::string conversionSummary(RowSet& preview, const NumberFormat& format) {
  const auto count = [&](const char* field) {
    return formatNumber(preview[field].Number(), 0, format);
  };
  const auto sum = [&](const char* field) {
    return formatNumber(preview[field].Number(), 2, format) + " Lt";
  };
  return "Įrašų " + count("Entries") + ", sąskaitų " + count("Accounts") + " → " +
         count("Targets") + ". Apyvarta " + sum("Turnover") + " → " + sum("Mapped") + ".";
}

std::string conversionMissing(RowSet& preview) {
  const int missing = static_cast<int>(preview["Missing"].Number());
  if (missing == 0) return {};
  return "Naudojamų sąskaitų be atitikmens: " + std::to_string(missing) + ", pirmoji " +
         std::string(preview["FirstMissing"].Text()) + ".";
}

}  // namespace tolvex
