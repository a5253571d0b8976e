#include "operations/UI0201400.h"

#include "framework/parameters.h"
#include "framework/references.h"
#include "operations/UIO0201400.h"
#include "operations/document_form.h"
#include "operations/operation_menu.h"
#include "operations/operation_tools.h"

namespace tolvex {

namespace {

constexpr const char* kBalances = "Sąskaitų likučiai";
constexpr const char* kNewCommonGroup = "Naują bendra grupė";
constexpr const char* kNewOperationGroup = "Naują operacijų grupė";
constexpr const char* kViewing = "Peržiūros nustatymai";
constexpr const char* kLocks = "Sąskaitų blokavimas";
constexpr const char* kCoversInFuture = "Būsimų laikotarpių operacijos";
constexpr const char* kBankImport = "Banko įrašų apie pinigų gavimą importas";
constexpr const char* kHelp = "Pagalba";
constexpr const char* kLockKind = "O0201300";
constexpr const char* kMainGroup = "MainGroup";  // the kind of the one group above all others
constexpr const char* kHelpPage = "help\\saskaitulikuciai.htm";

constexpr const char* kCoversScreen = "frmCoversInFuture";
constexpr const char* kImportScreen = "frmImportFromBank";
constexpr const char* kGroupScreen = "frmBROperGroup";
constexpr const char* kReceiptKind = "O0201502";
constexpr const char* kImportTitle = "Įrašų importas";

bool isCommon(VXObjectUIO& group) { return group.Fields()["GroupFlag"].Number() != 0; }

}  // namespace

UI0201400::UI0201400(OperationTablesPtr tables)
    : ForwardingUI(kGroupKind), tables_(std::move(tables)) {}

// --- menu -------------------------------------------------------------------------------------

std::vector<MenuEntry> UI0201400::GetMenu(std::string id, std::string kind, std::string) {
  std::vector<MenuEntry> menu;
  addTreeEntries(menu);
  if (isRow(id)) {
    if (const std::shared_ptr<VXObjectUIO> group = GetVXObject(id)) addGroupEntries(*group, menu);
    const RightFlags rights = hostContext().rights().of(groupRights(id));
    if (rights.remove && kind != kMainGroup) menu.push_back(menuEntry(kDelete));
  }
  menu.push_back(menuEntry(kHelp));
  return menu;
}

void UI0201400::addTreeEntries(std::vector<MenuEntry>& menu) const {
  Rights& rights = hostContext().rights();
  const FormRegistry& forms = tables_->forms;
  menu.push_back(menuEntry(kBalances));
  if (rights.of(groupRights("")).create) {
    menu.push_back(menuEntry(kNewCommonGroup, forms.has(kGroupScreen)));
    menu.push_back(menuEntry(kNewOperationGroup, forms.has(kGroupScreen)));
  }
  menu.push_back(menuEntry("-"));
  menu.push_back(menuEntry(kViewing));
  menu.push_back(menuEntry(kFilterRows));
  menu.push_back(menuEntry(kSearch, forms.has("frmBROperPreview")));
  if (rights.of("CAllAccLock").view) {
    menu.push_back(menuEntry("-"));
    menu.push_back(menuEntry(kLocks, forms.has("frmBRLock")));
  }
}

void UI0201400::addGroupEntries(VXObjectUIO& group, std::vector<MenuEntry>& menu) const {
  Rights& host = hostContext().rights();
  const FormRegistry& forms = tables_->forms;
  const RightFlags rights = host.of(operationRights(idOf(group.OID())));
  if (rights.view) menu.push_back(menuEntry(kToDesktop, forms.has(kGroupScreen)));
  if (!isCommon(group)) {
    const std::string kind(group.Fields()["FormOID"].Text());
    if (rights.create) addDocumentEntries(forms, kind, menu);
    if (rights.create && kind == kOperationKind) {
      for (const OperationTool& tool : kOperationTools) {
        menu.push_back(menuEntry(std::string(tool.caption), forms.has(tool.form)));
      }
      menu.push_back(menuEntry(kCoversInFuture, forms.has(kCoversScreen)));
    }
    if (kind == kReceiptKind && host.of("CImportFromBank").view) {
      menu.push_back(menuEntry(kBankImport, forms.has(kImportScreen)));
    }
  }
}

MenuAction UI0201400::ClickMenu(std::string id, std::string, std::string caption,
                                std::string extra) {
  if (caption == kBalances || caption == kHelp || caption == kViewing || caption == kFilterRows ||
      caption == kSearch || caption == kLocks || caption == kNewCommonGroup ||
      caption == kNewOperationGroup) {
    return clickTree(id, caption);
  }
  return isRow(id) ? clickGroup(id, caption, extra) : MenuAction{};
}

MenuAction UI0201400::clickTree(const std::string& id, const std::string& caption) {
  HostContext& host = hostContext();
  if (caption == kBalances || caption == kHelp) {
    host.help().show(kHelpPage, kBalances);
  } else if (caption == kViewing) {
    if (host.workplace().newPeriod(kGroupKind)) host.tree().redraw(kGroupKind);
  } else if (caption == kFilterRows) {
    return clickFilter(*this, kGroupKind, [](VXObjectUI& ui, const std::string& filter) {
      return ui.GetVXObjectList("", filter, "");
    });
  } else if (caption == kSearch) {
    return clickSearch(tables_);
  } else if (caption == kLocks) {
    (void)host.objects().kind(kLockKind)->AddToDeskTopVXObject("");
  } else {
    return newGroup(id, caption == kNewCommonGroup);
  }
  return {};
}

MenuAction UI0201400::clickGroup(const std::string& id, const std::string& caption,
                                 const std::string& extra) {
  if (caption == kToDesktop) return openGroup(id);
  if (caption == kDelete) return clickDelete(*this, id);
  if (caption == kTelebankExport) return clickTelebank(tables_, "E;" + id);
  if (caption == kCoversInFuture) return openCovers(id);
  if (caption == kBankImport) return openImport();
  const OperationTool* tool = operationTool(caption);
  if (tool && !tables_->forms.has(tool->form)) {
    tellMissingScreen();
    return {};
  }
  const std::shared_ptr<VXObjectUI> operations = hostContext().objects().kind(kOperationKind);
  return clickNewDocument(tables_, operations, id, caption, extra);
}

MenuAction UI0201400::openGroup(const std::string& id) {
  std::shared_ptr<VXObjectUIO> group = toldGroup(id);
  if (!group) return {};
  return showForm(makeScreen(tables_->forms, kGroupScreen, {hostContext(), group, ""}));
}

MenuAction UI0201400::openCovers(const std::string& id) {
  std::shared_ptr<VXObjectUIO> group = toldGroup(id);
  if (!group) return {};
  return showForm(makeScreen(tables_->forms, kCoversScreen, {hostContext(), group, "P;" + id}));
}

// Over an operation that is never stored: the screen only reads by it.
MenuAction UI0201400::openImport() {
  if (!tables_->forms.has(kImportScreen)) {
    tellMissingScreen();
    return {};
  }
  HostContext& host = hostContext();
  auto operation = host.objects().create(kOperationKind);
  if (!operation) return {};
  const auto form = makeScreen(tables_->forms, kImportScreen,
                               {host, std::move(operation), std::string("A;") + kReceiptKind});
  if (form) form->setTitle(kImportTitle);
  return showForm(form);
}

// The common group in which a new one is made: the clicked one, the one that holds it, or the group
// above all. 0 when there is none; nothing when the clicked one is gone, which was told.
std::optional<int> UI0201400::placeOfNew(const std::string& id) {
  if (isRow(id)) {
    const std::shared_ptr<VXObjectUIO> clicked = toldGroup(id);
    if (!clicked) return std::nullopt;
    if (isCommon(*clicked)) return idOf(clicked->OID());
    return static_cast<int>(clicked->Fields()["ParentID"].Number());
  }
  const RowSetPtr top = GetVXObjectList("", "", "");
  if (!top) return std::nullopt;
  top->MoveFirst();
  return top->Eof() ? 0 : idOf((*top)["OIDR"].Text());
}

MenuAction UI0201400::newGroup(const std::string& id, bool common) {
  const std::optional<int> above = placeOfNew(id);
  const std::shared_ptr<VXObjectUIO> group = above ? toldGroup("") : nullptr;
  if (!group) return {};
  group->Fields()["ParentID"] = *above == 0 ? Variant(Null{}) : Variant(*above);
  group->Fields()["GroupFlag"] = common ? 1 : 0;
  return showForm(makeScreen(tables_->forms, kGroupScreen, {hostContext(), group, ""}));
}

// --- list and objects -------------------------------------------------------------------------

RowSetPtr UI0201400::GetVXObjectList(std::string parent, std::string filter1, std::string page) {
  HostContext& host = hostContext();
  const ViewPeriod period = host.workplace().oldPeriod(kGroupKind);
  const DateTime from = period.byRange ? period.from : host.clock().today().AddDays(-period.days);
  const std::string to = period.byRange ? period.to.Text() : "9999.12.31";
  const std::string below = isRef(parent) ? parent : std::string();
  Parameters asked;
  asked.date(from).text(to).text(below).text(filter1);
  if (!page.empty()) asked.text(page);
  return inner().GetVXObjectList(asked.str(), "", "");
}

bool UI0201400::AddToDeskTopVXObject(std::string id) {
  const MenuAction action = openGroup(id);
  const auto form = action.Value.As<ui::Form>();
  return form && hostContext().desktop().put(form);
}

std::shared_ptr<VXObjectUIO> UI0201400::GetVXObject(std::string id) {
  auto group = std::make_shared<UIO0201400>();
  group->UI(shared_from_this());
  group->OID(std::move(id));
  return group->Read().Code == kDone ? group : nullptr;
}

std::shared_ptr<VXObjectUIO> UI0201400::toldGroup(const std::string& id) {
  std::shared_ptr<UIO0201400> group = tolvex::toldGroup(id);
  if (group) group->UI(shared_from_this());
  return group;
}

const IconsTable& UI0201400::GetIconsTable() const {
  static const IconsTable kIcons = {
      {"O0201400", "C0201400"}, {"Group", "stdClose"},    {"Root", "stdClose"},
      {"ORoot", "stdOpen"},     {"O0201500", "C0201500"}, {"O0201501", "C0201501"},
      {"O0201502", "C0201502"}, {"O0201503", "C0201503"}, {"O0201504", "C0201504"},
      {"O0201505", "C0201505"}, {"O0201506", "C0201506"}, {"O0202000", "C0201500"}};
  return kIcons;
}

}  // namespace tolvex
