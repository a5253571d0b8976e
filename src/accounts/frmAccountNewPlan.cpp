#include "accounts/frmAccountNewPlan.h"

#include <cstdlib>

#include "accounts/UIO0200400.h"
#include "accounts/account_forms.h"
#include "accounts/account_messages.h"
#include "accounts/conversion_rows.h"
#include "framework/conversions.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/told.h"
#include "platform/save_outcome.h"

namespace tolvex {

namespace {

constexpr const char* kCopyName = "Convert";

}  // namespace

frmAccountNewPlan::frmAccountNewPlan(const ObjectFormRequest& request)
    : Form(request.host, kConversionScreen), plan_(request.object) {
  setTitle("Sąskaitų konvertavimas");
  SOPanel.titleBand = true;
  lsvCovert.filterBox = true;
  lsvCovert.menu = &mnuMenu;
  lblLeft.visible = false;
  lsvLeft.visible = false;
  mnuChoose.shortcut = "Enter";
  mnuClean.shortcut = "Del";
  cmdRestore.enabled = false;
  cmdConvert.enabled = false;
  wire();
}

const char* frmAccountNewPlan::picture() const {
  return R"(
[SOPanel]
  lsvCovert>
  lblSummary>
  lblMissing>
  lblLeft>
  lsvLeft>
  cmdBackUp | cmdRestore | >> | cmdConvert
)";
}

void frmAccountNewPlan::wire() {
  lsvCovert.onActivate = [this] { choose(); };
  lsvCovert.onDelete = [this] { setCounterpart({}); };
  lsvCovert.canDrop = [this](const std::string& reference) {
    return isNewPlanNode(reference) && currentAccount();
  };
  lsvCovert.onDrop = [this](const std::string& reference) {
    if (const auto chosen = counterpartOf(host(), reference)) setCounterpart(*chosen);
  };
  mnuMenu.onPopup = [this] { enableMenu(); };
  mnuChoose.onClick = [this] { choose(); };
  mnuClean.onClick = [this] { setCounterpart({}); };
  mnuRefresh.onClick = [this] { fillKeepingRow(); };
  mnuSetAccountsAuto.onClick = [this] {
    const ui::Row* row = lsvCovert.currentRow();
    if (row && !showFailure(host(), plan_->Methods("SetAccountAuto", {row->key}))) fillKeepingRow();
  };
  mnuToDeskTop.onClick = [this] {
    if (const ui::Row* row = lsvCovert.currentRow()) host().desktop().putObject(row->key);
  };
  cmdBackUp.onClick = [this] { backUp(); };
  cmdRestore.onClick = [this] { restore(); };
  cmdConvert.onClick = [this] { convert(); };
}

void frmAccountNewPlan::opened() {
  Prepare();
  setFocus(lsvCovert);
}

// --- showing ----------------------------------------------------------------------------------

void frmAccountNewPlan::Prepare() {
  beginNewPlan();
  fill();
}

// The first class of the working plan, so that the new one stands in the tree and can be added to.
void frmAccountNewPlan::beginNewPlan() {
  const RowSetPtr nodes = host().objects().kind(kNewPlanKind)->GetVXObjectList("", "", "");
  if (!nodes) return;
  bool hasGroup = false;
  ForEachRow(*nodes, [&](RowSet& node) { hasGroup |= node["GroupFlag"].Number() != 0; });
  if (hasGroup) return;
  const RowSetPtr working = toldRows(plan_->Properties("AccountPlan", kNoParameters));
  const auto group = host().objects().create(kNewPlanKind);
  if (!group || !working || working->RecordCount() == 0) return;
  working->MoveFirst();
  group->OType("Group");
  group->Fields()["GroupFlag"] = 1;
  for (const char* field : {"Account", "Name", "Type"}) {
    group->Fields()[field] = (*working)[field].Value();
  }
  const SaveResult saved = group->Save(nullptr, nullptr);
  if (saved.Code != kDone) return showFailedWrite(host(), saved.Text);
  host().tree().redraw(kNewPlanKind);
}

void frmAccountNewPlan::fill() {
  lsvCovert.setRows({});
  lsvCovert.current = -1;
  allFound_ = false;
  if (const RowSetPtr table = toldRows(plan_->Properties("ConvertingTable", kNoParameters))) {
    ConversionList list = conversionList(*table);
    lsvCovert.setRows(std::move(list.rows));
    lsvCovert.current = lsvCovert.rows().empty() ? -1 : 0;
    allFound_ = list.mayConvert;
  }
  const RowSetPtr preview = toldRows(plan_->Properties("ConvertingPreview", kNoParameters));
  const bool known = preview && preview->RecordCount() > 0;
  if (known) preview->MoveFirst();
  lblSummary.caption = known ? conversionSummary(*preview, host().numbers()) : std::string();
  lblMissing.caption = known ? conversionMissing(*preview) : std::string();
  lblMissing.visible = !lblMissing.caption().empty();
  const RightFlags rights = host().rights().of(kPlanRights);
  cmdBackUp.enabled = rights.change != 0;
  cmdConvert.enabled = rights.change != 0 && allFound_;
  cmdRestore.enabled = rights.admin != 0 && hasCopy();
}

bool frmAccountNewPlan::hasCopy() {
  const RowSetPtr copies = toldRows(plan_->Properties("Backups", kNoParameters));
  bool found = false;
  if (copies) ForEachRow(*copies, [&](RowSet& copy) { found |= copy["Name"].Text() == kCopyName; });
  return found;
}

void frmAccountNewPlan::fillKeepingRow() {
  const ui::Row* row = lsvCovert.currentRow();
  const std::string key = row ? row->key : std::string();
  fill();
  if (const int index = lsvCovert.find(key); index >= 0) lsvCovert.current = index;
}

void frmAccountNewPlan::enableMenu() {
  const ui::Row* const row = lsvCovert.currentRow();
  const ui::Row* const account = currentAccount();
  mnuChoose.enabled = account != nullptr;
  mnuClean.enabled = account && !account->tag.empty();
  mnuSetAccountsAuto.enabled = row != nullptr;
  mnuToDeskTop.enabled = row != nullptr;
}

// --- counterparts -----------------------------------------------------------------------------

const ui::Row* frmAccountNewPlan::currentAccount() const {
  const ui::Row* const row = lsvCovert.currentRow();
  return row && !row->bold ? row : nullptr;
}

void frmAccountNewPlan::choose() {
  const ui::Row* const account = currentAccount();
  if (!account) return;
  const int current = std::atoi(account->tag.c_str());  // "" reads as none
  if (const auto chosen = pickCounterpart(host(), current)) setCounterpart(*chosen);
}

void frmAccountNewPlan::setCounterpart(const Counterpart& chosen) {
  const ui::Row* const account = currentAccount();
  if (!account) return;
  const std::shared_ptr<VXObjectUIO> node = ObjectOf(host(), account->key);
  if (!node) return stopWith(host(), "Sąskaita panaikinta!");
  node->Fields()["NewID"] = chosen.id != 0 ? Variant(chosen.id) : Variant(Null{});
  const SaveResult saved = node->Save(nullptr, nullptr);
  if (saved.Code != kDone) return showFailedWrite(host(), saved.Text);
  fillKeepingRow();
}

// --- the whole books --------------------------------------------------------------------------

void frmAccountNewPlan::tell(const char* text) { showInfo(host(), text); }

// A work of the store on its copies; a failure is shown.
bool frmAccountNewPlan::store(const char* routine, const std::string& copy) {
  HostResult result;
  {
    const ui::BusyScope busy(*this, SOPanel);
    plan_->BO()->CallBO(routine, quoted(copy), nullptr, result);
  }
  if (result.Code == kDone) return true;
  showStop(host(), result.Text);
  return false;
}

void frmAccountNewPlan::backUp() {
  if (!store("BackUpDB", kCopyName)) return;
  tell("Atsarginė kopija išsaugota kietajame diske.");
  cmdRestore.enabled = true;
}

// What a restore replaces is copied first, under a name of its own each time, so that nothing is
// lost by it.
void frmAccountNewPlan::restore() {
  if (!host().screens().closeOthers(*this)) return;
  std::string moment = host().clock().now().LongText();
  std::erase_if(moment, [](char c) { return c == '.' || c == ':'; });
  const std::string before = "Pries-atstatyma " + moment;
  if (!store("BackUpDB", before) || !store("RestoreDB", kCopyName)) return;
  showLeft({});  // told of the conversion that is undone
  tell("Atsarginė kopija atstatyta.");
  fill();
  redrawPlans();
}

// Open cards know accounts by their old numbers, so none may stay open.
void frmAccountNewPlan::convert() {
  if (!host().screens().closeOthers(*this)) return;
  if (!store("BackUpDB", kCopyName)) return;
  MethodResult converted;
  {
    const ui::BusyScope busy(*this, SOPanel);
    converted = plan_->Methods("Convert");
  }
  if (!showFailure(host(), converted)) {
    tell("Sąskaitų planas pakeistas į naują sąskaitų planą.");
    fill();
    showLeft(converted.Value);
    cmdRestore.enabled = true;
  }
  redrawPlans();
}

void frmAccountNewPlan::showLeft(const Variant& left) {
  std::vector<ui::Row> rows;
  if (left.IsRows()) {
    ForEachRow(*left.AsRows(), [&](RowSet& text) {
      ui::Row row;
      row.cells = {std::string(text["Where"].Text()), std::string(text["Text"].Text())};
      rows.push_back(std::move(row));
    });
  }
  lblLeft.visible = !rows.empty();
  lsvLeft.visible = !rows.empty();
  lsvLeft.setRows(std::move(rows));
}

void frmAccountNewPlan::redrawPlans() {
  host().tree().redraw(kPlanKind);
  host().tree().redraw(kNewPlanKind);
}

}  // namespace tolvex
