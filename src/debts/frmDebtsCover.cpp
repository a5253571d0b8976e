#include "debts/frmDebtsCover.h"

#include <algorithm>

#include "debts/cover_variant.h"
#include "debts/frmCoverSum.h"
#include "debts/setoff_act.h"
#include "framework/conversions.h"
#include "framework/references.h"
#include "framework/text.h"
#include "framework/told.h"
#include "operations/UIO0201500.h"
#include "operations/entries.h"
#include "operations/screen/account_combo.h"
#include "operations/screen/addressee_pick.h"
#include "platform/save_outcome.h"

namespace tolvex {
namespace {

constexpr const char* kVariantsKey = "DebtsCoverParameters";
constexpr const char* kNoAccount = "Neužduota sąskaita !";
constexpr const char* kSavedAlready = "Toks variantas jau išsaugotas !";

FirmRecord clientOf(HostContext& host, const std::string& reference, const std::string& name) {
  FirmRecord client;
  client.name = name;
  if (!isRef(reference)) return client;
  const auto object = host.objects().open(reference);
  if (!object) return client;
  FieldList& fields = object->Fields();
  const auto text = [&](const char* column) {
    return fields.contains(column) ? std::string(fields[column].Text()) : std::string();
  };
  client.code = text("Code");
  client.phone = text("Phone");
  client.fax = text("Fax");
  return client;
}

}  // namespace

frmDebtsCover::frmDebtsCover(const OperationToolRequest& request)
    : Form(request.host, "frmDebtsCover"),
      operation_(request.operation),
      link_(request.link),
      variants_(request.host, kOperationKind, kVariantsKey) {
  setTitle("Skolų dengimas");
  cmdExit.isCancel = true;
  cmdOK.isDefault = true;
  cmdGo.shortcut = "F5";
  cmdPrint.shortcut = "Ctrl+P";
  cmdVariants.menu = &menuVariants;
  wire();
}

const char* frmDebtsCover::picture() const {
  return "cmbVariants cmdVariants | optMutual | optSuppliers | optBuyers | >>\n"
         "dtpDate | optDateByBROper | optDateByCoveredOperations | lblFirms"
         " | cmbAddr> cmdFirms | cmdGo\n"
         "[fraSideC]\n"
         "  cmbAccC | optDebC | optCredC | txtAddrC> cmdAddrC cmdCleanAddrC"
         " | txtSumC lblCurrCodeC cmdCurrC | optAllC optDropC\n"
         "  lvwBRPrimary>\n"
         "[fraSideD]\n"
         "  cmbAccD | optDebD | optCredD | txtAddrD> cmdAddrD cmdCleanAddrD"
         " | txtSumD lblCurrCodeD cmdCurrD | optAllD optDropD\n"
         "  lvwBRSecondary>\n"
         "lblStatus> | cmdPrint | cmdExit | cmdOK\n";
}

void frmDebtsCover::wire() {
  wireSide(primary, secondary);
  wireSide(secondary, primary);
  dtpDate.onChange = [this] { dateChanged(); };
  cmbVariants.onChange = [this] { chooseVariant(); };
  for (ui::OptionButton* use : {&optMutual, &optSuppliers, &optBuyers})
    use->onChange = [this] { useChosen(); };
  cmdVariants.onClick = [this] { popup(menuVariants, cmdVariants); };
  menuVariants.onPopup = [this] { mnuDeleteVariant.enabled = cmbVariants.index >= 0; };
  mnuAddVariant.onClick = [this] { addVariant(); };
  mnuDeleteVariant.onClick = [this] { deleteVariant(); };
  addressees.onKind = [this](const std::string& kind, const std::string& name) {
    kindChosen(kind, name);
  };
  addressees.onChoose = [this] { addresseeChosen(); };
  cmdGo.onClick = [this] { go(); };
  mnuInput.onPopup = [this] { prepareMenu(); };
  mnuSum.onClick = [this] { enterSum(); };
  mnuExact.onClick = [this] {
    clickedSide().list.coverCurrentExactly();
    clickedSide().showSum();
    refresh();
  };
  mnuRates.onClick = [this] { enterRate(); };
  cmdPrint.onClick = [this] { printAct(); };
  cmdOK.onClick = [this] { save(); };
  cmdExit.onClick = [this] { close(); };
}

void frmDebtsCover::wireSide(CoverSideBox& side, CoverSideBox& other) {
  side.onChange = [this] { clearLists(); };
  // The lists always oppose each other.
  side.onSide = [this, &side, &other] {
    other.chooseSide(!side.onCredit());
    clearLists();
  };
  side.onCurrency = [this, &side](const std::string& code) { chooseCurrency(side, code); };
  side.onPick = [this, &side] { pickAddressees(side); };
  side.onTicks = [this] { refresh(); };
  side.onComplain = [this](const std::string& message) { showInfo(host(), message); };
  side.lvw.menu = &mnuInput;
  side.lvw.onActivate = [this] { enterSum(); };
}

// --- opening ----------------------------------------------------------------------------------

void frmDebtsCover::opened() {
  dtpDate.value = host().clock().today();
  optDateByBROper.choose();
  optMutual.choose();
  primary.chooseSide(true);
  secondary.chooseSide(false);
  if (const DictionaryPtr plan = toldDictionary(operation_->Properties("AccountList", "")))
    plan_ = *plan;
  for (CoverSideBox* side : {&primary, &secondary}) {
    side->offerAccounts(plan_);
    side->showAddressee({}, {});
  }
  accounts_ = markedInfluenceAccounts(host());
  showVariants();
  loadRates();
  refresh();
  setFocus(cmbVariants.items().empty() ? static_cast<ui::Control&>(primary.cmbAcc) : cmbVariants);
}

void frmDebtsCover::loadRates() {
  if (dtpDate.value()) rates_.load(*operation_, *dtpDate.value());
  for (CoverSideBox* side : {&primary, &secondary}) side->offerCurrencies(rates_.codes());
}

double frmDebtsCover::rateOf(std::string_view code) const { return rates_.rate(code).value_or(0); }

// Debts to suppliers and of buyers are covered by what was paid ahead on the same account.
void frmDebtsCover::useChosen() {
  const bool onCredit = !optBuyers.on();
  primary.chooseSide(onCredit);
  secondary.chooseSide(!onCredit);
  if (!optMutual.on()) showAccount(secondary.cmbAcc, primary.account());
  clearLists();
}

// --- variants ---------------------------------------------------------------------------------

void frmDebtsCover::showVariants() {
  const std::string chosen = cmbVariants.text();
  cmbVariants.setTexts(variants_.texts());
  cmbVariants.index = cmbVariants.find(chosen);
}

void frmDebtsCover::chooseVariant() {
  const auto variant = readCoverVariant(cmbVariants.text());
  if (!variant) return;
  primary.chooseSide(variant->primaryOnCredit);
  secondary.chooseSide(!variant->primaryOnCredit);
  showAccount(primary.cmbAcc, variant->primary);
  showAccount(secondary.cmbAcc, variant->secondary);
  clearLists();
  readAddressees();
}

void frmDebtsCover::addVariant() {
  if (!accountsGiven()) return;
  const std::string text =
      CoverVariant{primary.account(), secondary.account(), primary.onCredit()}.text();
  if (!variants_.add(text)) return warn(host(), kSavedAlready);
  showVariants();
  cmbVariants.index = cmbVariants.find(text);
}

void frmDebtsCover::deleteVariant() {
  variants_.remove(cmbVariants.text());
  showVariants();
}

// --- addressees -------------------------------------------------------------------------------

void frmDebtsCover::kindChosen(const std::string& kind, const std::string& name) {
  for (CoverSideBox* side : {&primary, &secondary})
    if (!isRef(side->addressee())) side->showAddressee(kind, name);
  clearLists();
  readAddressees();
}

void frmDebtsCover::readAddressees() {
  if (dtpDate.value()) addressees.read(*operation_, primary, secondary, *dtpDate.value());
}

void frmDebtsCover::addresseeChosen() {
  const auto [reference, name] = *addressees.chosen();
  for (CoverSideBox* side : {&primary, &secondary}) side->showAddressee(reference, name);
  clearLists();  // another addressee's debts must not stay when these cannot be read
  go();
}

void frmDebtsCover::pickAddressees(CoverSideBox& side) {
  const auto picked = pickAddressee(
      host(), *operation_, {std::begin(kDebtorKinds), std::end(kDebtorKinds)}, side.addressee());
  if (!picked) return;
  side.showAddressee(picked->reference, picked->showString);
  clearLists();
}

void frmDebtsCover::nextAddressee() {
  for (const CoverSideBox* side : {&primary, &secondary})
    if (isRef(side->addressee())) addressees.markCovered(side->addressee());
  const auto [reference, name] = addressees.chooseNext();
  for (CoverSideBox* side : {&primary, &secondary}) side->showAddressee(reference, name);
}

// --- lists ------------------------------------------------------------------------------------

bool frmDebtsCover::accountsGiven() {
  for (CoverSideBox* side : {&primary, &secondary}) {
    if (!side->account().empty()) continue;
    warn(host(), kNoAccount);
    setFocus(side->cmbAcc);
    return false;
  }
  return true;
}

void frmDebtsCover::go() {
  if (!dtpDate.value() || !accountsGiven()) return;
  {
    const ui::BusyScope busy(*this, primary.fraSide);
    host().pump().progress("Vyksta duomenų paruošimas ...", 0);
    for (CoverSideBox* side : {&primary, &secondary})
      if (!side->read(*operation_, *dtpDate.value())) return;
    host().pump().progress("Vyksta lentelės užpildymas ...", 0.5);
    filled_ = true;
    refill();
  }
  readAddressees();
  setFocus(primary.lvw);
}

void frmDebtsCover::refill() {
  for (CoverSideBox* side : {&primary, &secondary}) refill(*side);
}

void frmDebtsCover::refill(CoverSideBox& side) {
  side.fill([this](std::string_view code) { return rateOf(code); }, accounts_);
  refresh();
}

void frmDebtsCover::clearLists() {
  filled_ = false;
  for (CoverSideBox* side : {&primary, &secondary}) side->clear();
  refresh();
}

void frmDebtsCover::dateChanged() {
  loadRates();
  if (filled_) return go();
  readAddressees();
}

// What both sides come to, or the rest that litas cannot cover.
void frmDebtsCover::refresh() {
  const double first = primary.list.tickedLt(), second = secondary.list.tickedLt();
  cmdOK.enabled = first > 0 && second > 0;
  cmdPrint.enabled = first > 0 || second > 0;
  for (const CoverSideBox* side : {&primary, &secondary}) {
    const DebtRow* row = side->list.leftOver();
    if (!row) continue;
    lblStatus.caption = leftOverText(*row, mnuExact.caption(), host().numbers());
    return;
  }
  if (first == second) {
    lblStatus.caption = std::string();
  } else {
    lblStatus.caption =
        "Liks nesudengta: " + formatNumber(std::abs(first - second), 2, host().numbers()) + " Lt";
  }
}

// --- one row ----------------------------------------------------------------------------------

CoverSideBox& frmDebtsCover::clickedSide() {
  return focus() == &secondary.lvw ? secondary : primary;
}

void frmDebtsCover::prepareMenu() {
  const DebtRow* row = clickedSide().list.current();
  mnuSum.enabled = row && (row->LikutisLt > 0 || row->ticked);
  mnuExact.enabled = row && leavesCurrency(*row);
  const bool inCurrency = row && isCurrency(row->LikutisCurrCode);
  mnuRates.enabled = inCurrency;
  mnuSum.caption = inCurrency ? row->LikutisCurrCode + "   sumos įvedimas" : "Sumos įvedimas";
  mnuRates.caption = inCurrency ? row->LikutisCurrCode + "   kurso įvedimas" : "Kurso įvedimas";
  if (row && !mnuSum.enabled) lblStatus.caption = "Nėra skolos !";
}

void frmDebtsCover::enterSum() {
  CoverSideBox& side = clickedSide();
  const DebtRow* row = side.list.current();
  if (!row) return;
  if (row->LikutisLt <= 0 && !row->ticked) {
    lblStatus.caption = "Nėra skolos !";
    return;
  }
  if (const std::string why = side.list.currentRefused(); !why.empty())
    return showInfo(host(), why);
  frmCoverSum dialog(host(), *row, side.list.money());
  host().screens().runModal(dialog);
  if (!dialog.accepted) return;
  const std::string message = side.list.coverCurrent(dialog.lt(), dialog.curr());
  side.showSum();
  refresh();
  if (!message.empty()) showInfo(host(), message);
}

void frmDebtsCover::enterRate() {
  const DebtRow* row = clickedSide().list.current();
  if (row && isCurrency(row->LikutisCurrCode)) (void)askRate(row->LikutisCurrCode);
}

// A rate by hand serves this sitting only; the rates of the day stay as they are stored. Gives
// whether there is a rate now.
bool frmDebtsCover::askRate(const std::string& code) {
  const double before = rateOf(code);
  const auto typed =
      host().dialogs().input(code + " kursas, Lt:", "Kurso įvedimas",
                             before > 0 ? shortNumber(before, host().numbers()) : "");
  if (!typed) return before > 0;
  const double rate = TextToDouble(*typed);
  if (rate <= 0) {
    warn(host(), "Klaidingas valiutos kursas !");
    return before > 0;
  }
  if (rate == before) return true;
  rates_.setByHand(code, rate);
  refill();
  return true;
}

// A currency without a rate may be given one; without it no sum could be covered in it.
void frmDebtsCover::chooseCurrency(CoverSideBox& side, const std::string& code) {
  if (code == side.list.money().code) return;
  if (isCurrency(code) && rateOf(code) <= 0 && !askRate(code))
    return showInfo(host(), noRate(code));
  side.payIn({code, rateOf(code)});
  refill(side);
  setFocus(side.txtSum);
}

// --- result -----------------------------------------------------------------------------------

bool frmDebtsCover::mayPost() {
  if (!dtpDate.value() || !accountsGiven()) return false;
  if (pairs_.contains(primary.addressee() + "|" + secondary.addressee())) {
    warn(host(), kSavedAlready);
    return false;
  }
  if (!optDateByCoveredOperations.on()) return true;
  for (const CoverSideBox* side : {&primary, &secondary}) {
    for (const DebtRow& row : side->list.rows()) {
      if (!row.ticked || row.influence() == 0) continue;
      showStop(host(), "Parinkite dengimo datos nustatymą pagal operacijos datą." +
                           std::string(kLineBreak) +
                           "Valiutos kurso keitimo įtaka nustatoma operacijos datai!");
      return false;
    }
  }
  return true;
}

void frmDebtsCover::save() {
  if (!mayPost() || !post()) return;
  pairs_.insert(primary.addressee() + "|" + secondary.addressee());
  pairs_.insert(secondary.addressee() + "|" + primary.addressee());
  clearLists();
  nextAddressee();
  setFocus(cmdGo);
}

bool frmDebtsCover::post() {
  const RowSetPtr entries = entriesOf(*operation_)->Clone();
  const std::size_t before = entries->RecordCount();
  MethodResult result;
  {
    const ui::BusyScope busy(*this, primary.fraSide);
    result = PostCover(*operation_, {primary.party(), secondary.party(), accounts_,
                                     *dtpDate.value(), optDateByCoveredOperations.on()});
  }
  const bool posted = entries->RecordCount() > before;
  if (posted) namePair();
  link_.refreshEntries();
  for (CoverSideBox* side : {&primary, &secondary}) side->posted();
  if (result.Code == kDone) return true;
  refresh();
  if (posted) {
    result.Text += std::string(kLineBreak) + std::string(kLineBreak) +
                   "Iki tol padaryti įrašai liko operacijoje.";
  }
  showFailure(host(), result);
  return false;
}

// Something is in the operation; a pair whose cover is saved in two tries is named once.
void frmDebtsCover::namePair() {
  cmdExit.caption = "Užbaigti";
  dtpDate.enabled = false;
  const bool first = named_.empty();
  if (!named_.insert(primary.addressee() + "|" + secondary.addressee()).second) return;
  const std::string comment = coverComment(header()["Comment"].Text(), first,
                                           primary.txtAddr.text(), secondary.txtAddr.text());
  header()["Comment"] = comment;
  link_.setComment(comment);
  if (!first) return;
  header()["DateD"] = *dtpDate.value();
  link_.setDate(*dtpDate.value());
}

// With whom the debts are set off: the chosen addressee, else the one that all ticked debts share.
std::optional<Picked> frmDebtsCover::partner() const {
  for (const CoverSideBox* side : {&primary, &secondary})
    if (isRef(side->addressee())) return Picked{side->addressee(), side->txtAddr.text(), false};
  std::optional<Picked> shared;
  for (const CoverSideBox* side : {&primary, &secondary}) {
    for (const DebtRow& row : side->list.rows()) {
      if (!row.ticked) continue;
      if (!shared) shared = Picked{row.debt.AddrOIDR, row.debt.AddrName, false};
      if (shared->reference != row.debt.AddrOIDR) return std::nullopt;
    }
  }
  return shared;
}

void frmDebtsCover::printAct() {
  const auto client = partner();
  if (!client) return warn(host(), "Aktui pasirinkite vieną adresatą !");
  const bool chosen = isRef(primary.addressee()) || isRef(secondary.addressee());
  const SetOffAct act{host().workplace().firm(),
                      clientOf(host(), client->reference, client->text),
                      chosen ? std::string() : client->reference,
                      dtpDate.value().value_or(host().clock().today()),
                      primary.party(),
                      secondary.party()};
  host().reports().show(setOffAct(act, host().numbers()), true);
}

}  // namespace tolvex
