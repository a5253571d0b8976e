#include "operations/group_parameters.h"

#include <array>

#include "operations/screen/parameter_text.h"

namespace tolvex {
namespace {

// Fields of a payment's settings. The flag is shared with the variant in which the payment is
// printed: any number but 0 counts as set.
constexpr std::size_t kMainAccount = 0, kPeriod = 4, kByAccount = 5;

std::string paymentParameters(std::string_view parameters, std::string_view mainAccount,
                              bool byAccount) {
  ParameterText text(parameters);
  if (parameters.empty()) {
    text.set(kMainAccount, std::string(mainAccount));
    text.set(kPeriod, "y");
    text.set(kByAccount, byAccount ? "1" : "0");
  } else if ((text.number(kByAccount) != 0) != byAccount) {
    text.set(kByAccount, byAccount ? "1" : "0");
  }
  return text.str();
}

std::string advanceParameters(std::string_view parameters) {
  constexpr std::array<const char*, 4> kAccounts = {"255", "255", "453", "450"};
  ParameterText text(parameters);
  // The settings screen leaves an account out on purpose; only a group without any gets these.
  if (!parameters.empty()) return text.str();
  for (std::size_t i = 0; i < kAccounts.size(); ++i) text.set(i, kAccounts[i]);
  return text.str();
}

}  // namespace

bool mayNumberByAccount(std::string_view kind) { return kind == "O0201501" || kind == "O0201502"; }

bool numbersByAccount(std::string_view kind, std::string_view parameters) {
  return mayNumberByAccount(kind) && ParameterText(parameters).number(kByAccount) != 0;
}

std::string groupParameters(std::string_view kind, std::string_view parameters,
                            std::string_view mainAccount, bool byAccount) {
  if (mayNumberByAccount(kind)) return paymentParameters(parameters, mainAccount, byAccount);
  if (kind == "O0201505") return advanceParameters(parameters);
  if (!parameters.empty()) return std::string(parameters);
  if (kind == "O0201503" || kind == "O0201504") return "####4###";
  return {};
}

std::string_view parametersForm(std::string_view kind) {
  if (mayNumberByAccount(kind)) return "frmTransferParameters";
  if (kind == "O0201503" || kind == "O0201504") return "frmCashParameters";
  if (kind == "O0201505") return "frmAdvanceReportParameters";
  return {};
}

}  // namespace tolvex
