#include "accounts/UI0200400.h"

#include "accounts/UIO0200400.h"
#include "accounts/account_forms.h"
#include "accounts/account_messages.h"
#include "accounts/plan_report.h"
#include "framework/parameters.h"
#include "framework/references.h"
#include "platform/save_outcome.h"

namespace tolvex {

namespace {

constexpr const char* kMoveDownWarning =
    "Šiuo veiksmu bus sukurta nauja subsąskaita ir visi sąskaitos įrašai bus perrašyti į sukurtą "
    "sąskaitą. Atliktus pakeitimus atstatyti bus neįmanoma. \r\n"
    "Ar tikrai norite atlikti šį veiksmą?";

MenuEntry separator() { return {"-", "-"}; }

}  // namespace

UI0200400::UI0200400(std::shared_ptr<const FormRegistry> forms)
    : ForwardingUI(kPlanKind), forms_(std::move(forms)) {}

// --- menu -------------------------------------------------------------------------------------

// In the view of both plans a node may be of the other one, whose own list side serves it.
std::shared_ptr<VXObjectUI> UI0200400::otherPlan(std::string_view id) const {
  const std::string_view plan = kindOf(id);
  if (plan == OID() || (plan != kPlanKind && plan != kNewPlanKind)) return nullptr;
  return hostContext().objects().kind(plan);
}

std::vector<MenuEntry> UI0200400::GetMenu(std::string id, std::string kind, std::string parent) {
  if (const auto other = otherPlan(id)) return other->GetMenu(id, kind, parent);
  std::vector<MenuEntry> menu;
  if (isRef(id)) {
    addNodeEntries(kind, menu);
  } else {
    addRootEntries(menu);
  }
  menu.insert(menu.end(), {{"&Atrinkti", "4"}, separator(), {"Pagalba", "8"}, separator()});
  return menu;
}

void UI0200400::addRootEntries(std::vector<MenuEntry>& menu) const {
  if (!hostContext().rights().of(kPlanRights).create) return;
  menu.push_back({"&Nauja klasė", "1"});
  menu.push_back({"Spausdinti", "3"});
  if (OID() == kPlanKind) menu.push_back({"Sąskaitų planai", "5", true, mode_ == "FULL"});
  menu.push_back({"Sąskaitų &konvertavimas", "6", forms_->has(kConversionScreen)});
}

void UI0200400::addNodeEntries(std::string_view kind, std::vector<MenuEntry>& menu) const {
  const RightFlags rights = hostContext().rights().of(kPlanRights);
  if (rights.view) menu.push_back({"Padėti ant darbo stalo", "0"});
  if (rights.create && kind == "Class") menu.push_back({"&Nauja sąskaita", "1"});
  if (rights.create && kind != "Class") {
    menu.push_back({"&Nauja subsąskaita", "1"});
    menu.push_back({"&Pervesti į žemesnės subsąskaitos lygį", "2"});
  }
  if (rights.remove) {
    menu.push_back(separator());
    menu.push_back({"Panaikinti", "7"});
  }
}

MenuAction UI0200400::ClickMenu(std::string id, std::string kind, std::string entry,
                                std::string extra) {
  if (const auto other = otherPlan(id)) return other->ClickMenu(id, kind, entry, extra);
  HostContext& host = hostContext();
  if (entry == "0") {
    AddToDeskTopVXObject(id);
  } else if (entry == "6") {
    return screen(kConversionScreen, host.objects().create(kPlanKind));
  } else if (entry == "5") {
    mode_ = mode_ == "FULL" ? "" : "FULL";
    host.tree().redraw(kPlanKind);
  } else if (entry == "1") {
    return newNode(id);
  } else if (entry == "4" || entry == "70S2") {
    return filtered();
  } else if (entry == "3") {
    if (const RowSetPtr nodes = GetVXObjectList(quoted("All"), "", ""))
      host.reports().show(planReport(*nodes), true);
  } else if (entry == "7") {
    return deleted(id);
  } else if (entry == "2") {
    moveDown(id);
  } else if (entry == "8") {
    host.help().show("help\\saskaituplanas.htm", "Saskaitų planas");
  }
  return {};
}

// A node below the clicked one; from the root a class.
MenuAction UI0200400::newNode(const std::string& above) {
  std::shared_ptr<VXObjectUIO> parent;
  if (isRef(above)) {
    parent = standing(above);
    if (!parent) return {};
  }
  std::shared_ptr<VXObjectUIO> node = standing("");
  if (!node) return {};
  if (parent) {
    node->Fields()["ParentID"] = parent->Fields()["ID"].Value();
  } else {
    node->OType("Group");
    node->Fields()["GroupFlag"] = 1;
  }
  return screen(kNodeScreen, std::move(node));
}

MenuAction UI0200400::filtered() {
  const std::string filter = hostContext().dialogs().filter(OID());
  if (filter.empty()) return {};
  RowSetPtr rows = GetVXObjectList("''," + quoted(filter), "", "");
  if (!rows) return {};
  return {MenuAction::ShowRows, Variant(Variant::Array{rows, filter})};
}

MenuAction UI0200400::deleted(const std::string& id) {
  const Answer answer = hostContext().dialogs().message(
      {"Ar tikrai norite panaikinti?", Icon::Question, Buttons::YesNo, Answer::No, kPlanTitle});
  if (answer != Answer::Yes) return {};
  const bool gone = DeleteVXObject(id) == kDeleted;
  return {gone ? MenuAction::Removed : MenuAction::Nothing, {}};
}

void UI0200400::moveDown(const std::string& id) {
  const Answer answer = hostContext().dialogs().message(
      {kMoveDownWarning, Icon::Question, Buttons::OkCancel, Answer::Cancel, std::nullopt});
  if (answer != Answer::Ok) return;
  const std::shared_ptr<VXObjectUIO> node = standing(id);
  if (!node) return;
  const MethodResult moved = node->Methods("MoveAccountDown", {node->Fields()["ID"].Value()});
  if (!showFailure(hostContext(), moved)) hostContext().tree().redraw(kPlanKind);
}

MenuAction UI0200400::screen(const char* name, std::shared_ptr<VXObjectUIO> node) const {
  if (!node) return {};
  std::shared_ptr<ui::Form> form =
      forms_->make(name, ObjectFormRequest{hostContext(), std::move(node), mode_});
  if (!form) return {};
  return {MenuAction::ShowForm, Variant(ObjectPtr(std::move(form)))};
}

// --- list and objects -------------------------------------------------------------------------

RowSetPtr UI0200400::GetVXObjectList(std::string parent, std::string, std::string) {
  return inner().GetVXObjectList(parent.empty() ? mode_ : std::move(parent), "", "");
}

bool UI0200400::AddToDeskTopVXObject(std::string id) {
  std::shared_ptr<VXObjectUIO> node = standing(id);
  if (!node) return false;
  const auto form = screen(kNodeScreen, std::move(node)).Value.As<ui::Form>();
  return form && hostContext().desktop().put(form);
}

std::shared_ptr<VXObjectUIO> UI0200400::GetVXObject(std::string id) {
  auto [node, read] = readNode(id);
  return read.Code == kDone ? node : nullptr;
}

PlanNode UI0200400::readNode(const std::string& id) {
  PlanNode found = readPlanNode(isRef(id) ? kindOf(id) : std::string_view(OID()), id);
  found.node->UI(shared_from_this());
  return found;
}

// The node that a command is given for, a new one for ""; the user is told when there is none.
std::shared_ptr<VXObjectUIO> UI0200400::standing(const std::string& id) {
  auto [node, read] = readNode(id);
  if (read.Code == kDone) return node;
  if (read.Code == kGone) {
    stopWith(hostContext(), "Sąskaita panaikinta!");
  } else {
    warn(hostContext(), read.Text);
  }
  return nullptr;
}

const IconsTable& UI0200400::GetIconsTable() const {
  static const IconsTable kIcons = {{"Item", "C0200400"},  {"C", "C0200400"},
                                    {"Class", "C0200300"}, {"Group", "stdClose"},
                                    {"Root", "stdClose"},  {"ORoot", "stdOpen"}};
  return kIcons;
}

}  // namespace tolvex
