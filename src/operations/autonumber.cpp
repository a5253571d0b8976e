#include "operations/autonumber.h"

#include <limits>
#include <optional>

#include "framework/conversions.h"
#include "framework/object_contract.h"
#include "framework/parameters.h"
#include "framework/text.h"
#include "operations/number_text.h"
#include "platform/save_outcome.h"

namespace tolvex {

namespace {

// Digits only, blanks around them allowed; as wide as need be, so that a number too large is seen.
std::optional<double> counterOf(std::string_view piece) {
  const std::string digits = trim(piece);
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  return TextToDouble(digits);
}

bool fits(double counter) { return counter <= std::numeric_limits<std::int32_t>::max(); }

// The counter that the text holds in the place that the mask gives it, if it is one that can be
// kept. A number too large is told.
std::optional<int> counterIn(std::string_view mask, std::string_view text) {
  const std::vector<std::string> keywords = split(mask, '_'), pieces = split(text, '-');
  for (std::size_t i = 0; i < keywords.size() && i < pieces.size(); ++i) {
    if (keywords[i] != "AutoNumber") continue;
    const std::optional<double> counter = counterOf(pieces[i]);
    if (!counter) return std::nullopt;
    if (fits(*counter)) return static_cast<int>(*counter);
    showInfo(hostContext(), "Auto numerio reikšmė " + pieces[i] + " yra per didelė!");
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace

MethodResult GetAutoNumber(VXObjectUIO& operation, std::string_view date, int flag) {
  const std::optional<UserRow> user = hostContext().user().row();
  NumberText numbering;
  numbering.userPrefix = user ? user->prefix : kUnknownUser;
  const std::string parameters = Parameters()
                                     .number(operation.Fields()["BROperGroupID"].Number())
                                     .number(user ? user->id : 0)
                                     .text(numbering.userPrefix)
                                     .number(flag)
                                     .text(date)
                                     .str();
  MethodResult read = operation.Properties("AutoNumber", parameters);
  if (read.Code != kDone) return read;
  const RowSetPtr set = read.Value.AsRows();
  RowSet& row = *set;
  row.MoveFirst();
  if (row.Eof()) return done("");
  numbering.counter = static_cast<int>(row["AutoNumber"].Number());
  numbering.mask = row["ANMask"].Text();
  numbering.prefix = row["ANPrefix"].Text();
  numbering.digits = row["ANTemplate"].Text();
  if (numbering.mask.empty()) return done("");
  operation.Fields()["AutoNumber"] = numbering.counter;
  return done(numbering.compose(hostContext().clock().today()));
}

MethodResult SaveAutoNumber(VXObjectUIO& operation, std::string_view mask, std::string_view text) {
  if (!mask.empty() && !text.empty()) {
    operation.Fields()["AutoNumber"] = counterIn(mask, text).value_or(0);
  }
  return done(true);
}

std::string withCounter(std::string_view mask, std::string_view text, int counter) {
  const std::vector<std::string> keywords = split(mask, '_');
  std::vector<std::string> pieces = split(text, '-');
  for (std::size_t i = 0; i < keywords.size() && i < pieces.size(); ++i) {
    if (keywords[i] == "AutoNumber" && counterOf(pieces[i])) {
      pieces[i] = paddedCounter(counter, pieces[i].size());
    }
  }
  return join(pieces, "-");
}

MethodResult CheckAutoNumber(VXObjectUIO& operation) {
  Dialogs& dialogs = hostContext().dialogs();
  const int current = static_cast<int>(operation.Fields()["AutoNumber"].Number());
  const std::optional<std::string> typed = dialogs.input(
      "Operacijos eilės numeris: ", "Auto numerio nustatymas", std::to_string(current));
  const std::optional<double> counter = typed ? counterOf(*typed) : std::nullopt;
  if (!counter || !fits(*counter) || *counter == current) return done(false);
  const std::string number = std::to_string(static_cast<int>(*counter));
  const Answer answer =
      dialogs.message({"Pakeisti operacijos eilės numerį į " + number + "?", Icon::Question,
                       Buttons::YesNo, Answer::Yes, "Auto numerio pakeitimas"});
  if (answer == Answer::No) return done(false);
  operation.Fields()["AutoNumber"] = static_cast<int>(*counter);
  return done(true);
}

}  // namespace tolvex
