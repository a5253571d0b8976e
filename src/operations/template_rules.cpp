#include "operations/template_rules.h"

#include <algorithm>

#include "framework/parameters.h"
#include "framework/variant.h"

namespace tolvex {
namespace {

RowSetPtr linesOf(RowSet& record) { return record["BRTemplateAcc"].Rows(); }
RowSetPtr addresseesOf(RowSet& record) { return record["BRTemplateAddr"].Rows(); }

// Stands on the line; false when there is none.
bool moveToLine(RowSet& lines, std::string_view guid) {
  lines.SetFilter("GUID = " + quoted(guid));
  const bool found = lines.RecordCount() > 0;
  const Variant place = found ? lines.Bookmark() : Variant();
  lines.SetFilter("");
  if (found) lines.SetBookmark(place);
  return found;
}

bool requires_(const TemplateLine& line, std::string_view kind, int sign) {
  return std::any_of(line.required.begin(), line.required.end(), [&](const auto& required) {
    return required.kind == kind && required.sign == sign;
  });
}

void writeRequired(RowSet& addressees, const std::string& guid, const RequiredAddressee& wanted) {
  addressees.SetFilter("BRTemplateAccGUID = " + quoted(guid) + " AND FOID = " +
                       quoted(wanted.kind) + " AND Sign = " + std::to_string(wanted.sign));
  if (addressees.RecordCount() == 0) {
    addressees.AddNew();
    addressees["BRTemplateAccGUID"] = guid;
    addressees["FOID"] = wanted.kind;
    addressees["Sign"] = wanted.sign;
  }
  Field FOIDR = addressees["FOIDR"];
  if (wanted.reference.empty()) {
    if (!FOIDR.IsAbsent()) FOIDR = Null{};
  } else if (FOIDR.Text() != wanted.reference) {
    FOIDR = wanted.reference;
  }
  addressees.Update();
  addressees.SetFilter("");
}

}  // namespace

ParamDictionary templateAccounts(const ParamDictionary& plan) {
  ParamDictionary all;
  all.Add(kOpeningAccount, "Pradiniai likučiai");
  all.Add(kAnyAccount, "Nežinoma sąskaita");
  const std::vector<std::string> codes = plan.Keys();
  const std::vector<Variant> names = plan.Items();
  for (std::size_t i = 0; i < codes.size(); ++i) {
    if (!all.Exists(codes[i])) all.Add(codes[i], names[i]);
  }
  return all;
}

TemplateLine templateLine(RowSet& record, std::string_view guid) {
  TemplateLine line;
  const RowSetPtr lines = linesOf(record);
  if (guid.empty() || !moveToLine(*lines, guid)) return line;
  line.guid = guid;
  line.accountD = (*lines)["AccountD"].Text();
  line.accountC = (*lines)["AccountC"].Text();
  line.factor = (*lines)["Factor"].Number();
  const RowSetPtr addressees = addresseesOf(record)->Clone();
  addressees->SetFilter("BRTemplateAccGUID = " + quoted(guid));
  ForEachRow(*addressees, [&](RowSet& row) {
    line.required.push_back({std::string(row["FOID"].Text()),
                             static_cast<int>(row["Sign"].Number()),
                             std::string(row["FOIDR"].Text())});
  });
  return line;
}

void writeTemplateLine(RowSet& record, const TemplateLine& line) {
  const RowSetPtr lines = linesOf(record);
  if (!moveToLine(*lines, line.guid)) {
    lines->AddNew();
    (*lines)["BRTemplateGUID"] = record["OIDR"].Text();
    (*lines)["GUID"] = line.guid;
  }
  (*lines)["AccountD"] = line.accountD;
  (*lines)["AccountC"] = line.accountC;
  (*lines)["Factor"] = line.factor;
  lines->Update();

  const RowSetPtr addressees = addresseesOf(record);
  addressees->SetFilter("BRTemplateAccGUID = " + quoted(line.guid));
  ForEachRow(*addressees, [&](RowSet& row) {
    if (!requires_(line, row["FOID"].Text(), static_cast<int>(row["Sign"].Number()))) row.Delete(1);
  });
  for (const RequiredAddressee& wanted : line.required)
    writeRequired(*addressees, line.guid, wanted);
  addressees->SetFilter("");
}

bool removeTemplateLine(RowSet& record, std::string_view guid) {
  const RowSetPtr lines = linesOf(record);
  if (!moveToLine(*lines, guid)) return false;
  lines->Delete(1);
  const RowSetPtr addressees = addresseesOf(record);
  addressees->SetFilter("BRTemplateAccGUID = " + quoted(guid));
  ForEachRow(*addressees, [](RowSet& row) { row.Delete(1); });
  addressees->SetFilter("");
  return true;
}

}  // namespace tolvex
