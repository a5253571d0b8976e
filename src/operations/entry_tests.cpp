#include "operations/entry_tests.h"

#include "framework/conversions.h"
#include "framework/object_contract.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/told.h"
#include "operations/entries.h"

namespace tolvex {

namespace {

// Strict test of the entry at the cursor of `BR`; the same one for a single entry and for the list.
MethodResult testRow(VXObjectUIO& operation, RowSet& BR, Strict strict) {
  MethodResult refusal;
  const std::string message = testEntry(BR, [&](const std::string& account) {
    MethodResult result = TestAccount(operation, account);
    if (result.Code == kDone) return result.Value.AsBool();
    refusal = std::move(result);
    return false;
  });
  if (refusal.Code != kDone) return refusal;
  if (message.empty()) return done(true);
  const std::string sum = formatNumber(BR["SumA"].Number(), 2, hostContext().numbers());
  return {strict == Strict::Yes ? kRefused : kFailedTest, entryFailure(message, BR, sum), {}};
}

std::string currencyText(RowSet& BRCurrency, int sign, const NumberFormat& format) {
  std::string text;
  Field Sign = BRCurrency["Sign"], SumCurr = BRCurrency["SumCurr"];
  Field code = BRCurrency["FCurrencyCode"];
  ForEachRow(BRCurrency, [&](RowSet&) {
    if (Sign.Number() != sign || !text.empty()) return;
    text = formatNumber(SumCurr.Number(), 2, format) + " " + std::string(code.Text());
  });
  return text;
}

std::string pointerText(RowSet& BRProperties) {
  std::string text;
  Field FOIDR = BRProperties["FOIDR"], ShowString = BRProperties["ShowString"];
  ForEachRow(BRProperties, [&](RowSet&) {
    if (text.empty() && kindOf(FOIDR.Text()) == "O0201500") text = ShowString.Text();
  });
  return text;
}

EntryLine lineOf(RowSet& BR, const NumberFormat& format) {
  const RowSetPtr currency = BR["BRCurrency"].Rows(), properties = BR["BRProperties"].Rows();
  EntryLine line;
  line.guid = BR["GUID"].Text();
  if (const Variant date = BR["DateD"].Value(); date.IsDate()) line.date = date.AsDate().Text();
  line.accountD = BR["AccountD"].Text();
  line.accountC = BR["AccountC"].Text();
  line.sum = FormatSum(BR["SumA"].Number(), format);
  line.currencyD = currencyText(*currency, 1, format);
  line.currencyC = currencyText(*currency, -1, format);
  line.pointer = pointerText(*properties);
  line.addressees = AddresseeKeyString(*properties);
  return line;
}

}  // namespace

MethodResult TestAccount(VXObjectUIO& operation, std::string_view account) {
  if (account == "0") return done(true);
  MethodResult accounts = operation.Properties("AccountList", "");
  if (accounts.Code != kDone) return accounts;
  return done(accounts.Value.AsDictionary()->Exists(account));
}

MethodResult TestOper(VXObjectUIO& operation, std::string_view guid, Strict strict) {
  const RowSetPtr set = entriesOf(operation);
  RowSet& BR = *set;
  if (!guid.empty()) BR.SetFilter("GUID = " + quoted(guid));
  for (BR.MoveFirst(); !BR.Eof(); BR.MoveNext()) {
    MethodResult result = testRow(operation, BR, strict);
    if (result.Code != kDone) return result;
  }
  BR.MoveFirst();
  return done(true);
}

std::vector<EntryLine> TestAllEntries(VXObjectUIO& operation) {
  // Kept by the operation from here on, so that a failure is told once and not for every line.
  (void)toldDictionary(operation.Properties("AccountList", ""));
  std::vector<EntryLine> lines;
  const NumberFormat format = hostContext().numbers();
  const RowSetPtr walk = entriesOf(operation)->Clone();  // own cursor, no filter
  lines.reserve(walk->RecordCount());
  ForEachRow(*walk, [&](RowSet& BR) {
    EntryLine line = lineOf(BR, format);
    const MethodResult tested = testRow(operation, BR, Strict::Yes);
    line.code = tested.Code;
    line.hint = tested.Text;
    lines.push_back(std::move(line));
  });
  return lines;
}

}  // namespace tolvex
