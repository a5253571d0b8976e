#include "operations/screen/pointers.h"

#include <string>

#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/recordset.h"
#include "framework/references.h"

namespace tolvex {
namespace {

constexpr std::size_t kTriple = 3;

bool namesKind(const Variant::Array& triples, std::string_view reference) {
  for (std::size_t i = 0; i + 2 < triples.size(); i += kTriple) {
    if (kindOf(triples[i + 1].AsText()) == kindOf(reference)) return true;
  }
  return false;
}

}  // namespace

Variant::Array negated(const Variant::Array& triples) {
  Variant::Array other = triples;
  for (std::size_t i = 0; i + 2 < other.size(); i += kTriple) {
    other[i] = -static_cast<int>(NullToDouble(other[i]));
  }
  return other;
}

Variant::Array onBothSides(const Variant::Array& triples) {
  Variant::Array both = triples;
  const Variant::Array other = negated(triples);
  both.insert(both.end(), other.begin(), other.end());
  return both;
}

bool AddDebtAddressees(VXObjectUIO& object, Variant::Array& triples, std::string_view OIDR,
                       std::string_view account, std::string_view addressee, int sign) {
  const MethodResult read =
      object.Properties("BRPropertiesByAcc",
                        Parameters().text(OIDR).text(account).text(addressee).number(-sign).str());
  if (read.Code != kDone || !read.Value.IsRows()) return false;
  ForEachRow(*read.Value.AsRows(), [&](RowSet& row) {
    const std::string_view reference = row["FOIDR"].Text();
    if (!namesKind(triples, reference))
      addAddressee(triples, sign, reference, row["ShowString"].Text());
  });
  return true;
}

}  // namespace tolvex
