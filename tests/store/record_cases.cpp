#include "tests/store/record_cases.h"

#include <set>

#include "framework/text.h"

namespace tolvex::store {
namespace {

const std::set<std::string>& leftAlone() {
  static const std::set<std::string> names = {"ID",
                                              "OIDR",
                                              "OID",
                                              "OType",
                                              "Preview",
                                              "RowVersion",
                                              "ParentID",
                                              "GroupFlag",
                                              "OwnCode",
                                              "Address",
                                              "PreviewPath",
                                              "BankName",
                                              "DocumentTypeCodes",
                                              "JournalRows",
                                              "BRTemplateAcc",
                                              "BRTemplateAddr",
                                              "UserOIDR"};
  return names;
}

std::string randomText(std::mt19937& random, int most) {
  static const std::vector<std::string> letters = {"a", "Ą",  "č", "Ž", "ė", " ", "0", "7",
                                                   "'", "\"", "„", "%", ";", "#", "x", "Q"};
  const int size = 1 + static_cast<int>(random() % static_cast<unsigned>(most > 40 ? 40 : most));
  std::string out = "x";  // no text of blanks only
  for (int i = 1; i < size; ++i) out += letters[random() % letters.size()];
  return out;
}

}  // namespace

const std::vector<RecordCase>& recordCases() {
  static const std::vector<RecordCase> cases = {
      {"O0200400",
       "",
       {{"ParentID", 1},
        {"Account", "19"},
        {"Type", "D"},
        {"BRAPropertyID", 1},
        {"NewID", Null{}}}},
      {"O0200401",
       "",
       {{"ParentID", Null{}},
        {"GroupFlag", 1},
        {"Account", "7"},
        {"Type", "K"},
        {"BRAPropertyID", Null{}},
        {"NewID", Null{}}}},
      {"O0201400",
       "",
       {{"ParentID", 1},
        {"BRTemplateID", 2},
        {"DefaultTemplateID", 0},
        {"AccountCode", "240"},
        {"ANDateFrom", DateTime::Of(2004, 1, 1)}}},
      {"O0201600", "", {{"ParentID", 2}}},
      {"O0201701", "O0201701", {{"ParentID", 1}, {"GroupFlag", 0}}},
      {"O0200502", "O0200502", {{"GroupFlag", 1}}},
      {"O0000100", "", {{"OwnFirm", 0}, {"ParentID", 1}}},
      {"O0001402", "", {}},
      {"O0001401", "", {}},
      {"O0000300", "", {}},
      {"O0000500", "", {{"BankID", 1}, {"OwnerOIDR", "O00001001"}, {"MainAccountFlag", 1}}},
      {"O0002200", "", {{"Code", "GBP"}, {"BaseCurrency", 0}, {"FixedRate", 5.123456789}}},
      {"O0001629", "", {{"Value", 21.5}}},
      {"O0001601", "", {}},
      {"O0000900", "", {{"Kind", "O0201500"}}},
      {"O0202100", "", {}},
  };
  return cases;
}

std::map<std::string, Variant> fill(RowSet& row, const RecordCase& about, std::mt19937& random) {
  std::map<std::string, Variant> given = about.fixed;
  for (std::size_t i = 0; i < row.Fields().size(); ++i) {
    const Field field = row.Fields()[i];
    if (leftAlone().contains(field.Name()) || given.contains(field.Name())) continue;
    if (field.Type() == FieldType::Text) {
      given[field.Name()] =
          randomText(random, field.DefinedSize() > 0 ? field.DefinedSize() : 2000);
    } else if (field.Type() == FieldType::Integer || field.Type() == FieldType::SmallInt) {
      given[field.Name()] = static_cast<int>(random() % 2);
    }
  }
  for (const auto& [name, value] : given) row[name] = value;
  return given;
}

}  // namespace tolvex::store
