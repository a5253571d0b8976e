#include "host/cards/firm_card.h"

#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/text.h"
#include "host/cards/bank_cards.h"
#include "host/cards/card_lists.h"
#include "host/cards/code_checks.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

using Kind = CardField::Kind;

constexpr CardField kFields[] = {
    {.column = "Name",
     .caption = "Pavadinimas",
     .chars = 50,
     .missing = "Nenurodytas įmonės pavadinimas!"},
    {.column = "Code", .caption = "Kodas", .chars = 14, .remark = companyCodeRemark},
    {.column = "VATCode", .caption = "PVM kodas", .chars = 18, .remark = vatCodeRemark},
    {.column = "OwnFirm", .caption = "Sava įmonė", .kind = Kind::Check},
    {.column = "ParentID",
     .caption = "Filialas įmonės",
     .kind = Kind::Reference,
     .chars = 40,
     .kinds = "O0000100"},
    {.column = "Street", .caption = "Gatvė", .chars = 40},
    {.column = "City", .caption = "Miestas", .chars = 20},
    {.column = "Country", .caption = "Šalis", .chars = 20},
    {.column = "Index", .caption = "Pašto indeksas", .chars = 10},
    {.column = "Phone", .caption = "Telefonas", .chars = 20},
    {.column = "Fax", .caption = "Faksas", .chars = 20},
    {.column = "Director", .caption = "Vadovas", .chars = 30},
    {.column = "DirectorTitle", .caption = "Vadovo pareigos", .chars = 24},
    {.column = "Financier", .caption = "Finansininkas", .chars = 30},
    {.column = "Cashier", .caption = "Kasininkas", .chars = 30},
};

constexpr CardList kLists[] = {
    {"lvwBranches", "cmdNewBranch", "ParentOIDR", "ParentID", firmCard},
    {"lvwAccounts", "cmdNewAccount", "OwnerOIDR", "OwnerOIDR", bankAccountCard, "OwnerName"},
};

class FirmPart final : public CardLists {
 public:
  explicit FirmPart(CardForm& form) : CardLists(form, kLists), form_(form) {
    form.find<ui::Button>("cmdNewBranch")->caption = "Naujas filialas";
  }
  void shown() override {
    CardLists::shown();
    asked_ = codeOf(form_.record());
  }
  // Two firms of one code are as a rule one firm entered twice; branches are known by the code of
  // their firm.
  bool maySave() override {
    const std::string code = codeOf(form_.record());
    if (code.empty() || code == asked_) return true;
    HostResult same;
    const Parameters wanted = Parameters()
                                  .text(code)
                                  .number(idOf(form_.object().OIDR()))
                                  .number(form_.record()["ParentID"].Number());
    form_.object().BO()->CallBO("GetFirmsByCode", wanted.str(), nullptr, same);
    if (same.Code != kDone) {
      showFailedSave(form_.host(), same.Text);
      return false;
    }
    const RowSetPtr rows = same.Data.AsRows();
    if (rows->RecordCount() == 0) return true;
    rows->MoveFirst();
    const std::string name((*rows)["Name"].Text());
    if (!ask(form_.host(), "Įmonė su tokiu kodu jau yra: " + name + std::string(kLineBreak) +
                               std::string(kLineBreak) + "Ar tikrai norite įrašyti?")) {
      form_.lead(*form_.find("txtCode"));
      return false;
    }
    asked_ = code;
    return true;
  }

 private:
  static std::string codeOf(RowSet& record) { return std::string(record["Code"].Text()); }
  CardForm& form_;
  std::string asked_;  // the code that the user agreed to, or that was stored
};

}  // namespace

const CardSpec& firmCard() {
  static const CardSpec spec = {
      .kind = "O0000100",
      .form = "frmFirm",
      .component = "CFirms",
      .caption = "Įmonė",
      .newCaption = "Nauja įmonė",
      .fields = kFields,
      .picture = R"(
[tabs tabCard]>
  [main]
    []
      txtName>
      txtCode | txtVATCode | chkOwnFirm
      txtParentID> cmdParentID
    []
      txtStreet>
      txtCity | txtCountry | txtIndex
      txtPhone | txtFax
    []
      txtDirector> | txtDirectorTitle
      txtFinancier> | txtCashier>
  [branches]
    lvwBranches>
    cmdNewBranch
  [accounts]
    lvwAccounts>
    cmdNewAccount
)",
      .tabs = {{"main", "Rekvizitai"}, {"branches", "Filialai"}, {"accounts", "Banko sąskaitos"}},
      .part = [](CardForm& form) { return std::make_unique<FirmPart>(form); }};
  return spec;
}

}  // namespace tolvex
