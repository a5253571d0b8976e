#include "accounts/plan_rules.h"

#include "framework/text.h"

namespace tolvex {

namespace {

// How the store answers a save of a node.
constexpr std::int32_t kParentGone = 1, kNodeGone = 32, kMarkGone = 547, kNumberTaken = 3604;

}  // namespace

NodeLevel levelOf(VXObjectUIO& node, VXObjectUIO* parent) {
  if (node.Fields()["ParentID"].Number() == 0) return NodeLevel::Class;
  const bool deeper = parent && parent->Fields()["ParentID"].Number() != 0;
  return deeper ? NodeLevel::Subaccount : NodeLevel::Account;
}

const char* nodeCaption(NodeLevel level, bool isNew) {
  switch (level) {
    case NodeLevel::Class:
      return isNew ? "Nauja klasė" : "Klasė";
    case NodeLevel::Account:
      return isNew ? "Nauja sąskaita" : "Sąskaita";
    case NodeLevel::Subaccount:
      break;
  }
  return isNew ? "Nauja subsąskaita" : "Subsąskaita";
}

std::string nodeText(VXObjectUIO& node) {
  return std::string(node.Fields()["Account"].Text())
      .append(" ")
      .append(node.Fields()["Name"].Text());
}

bool isReservedClass(std::string_view number) { return number == "0" || number == "00"; }

std::string behindPrefix(std::string text, const std::string& prefix) {
  return text.starts_with(prefix) ? text : prefix;
}

std::string accountTypeOf(std::string_view typed) {
  if (typed.empty()) return {};
  const std::string type = upper(typed);
  return type == "K" ? type : "D";
}

std::optional<NodeComplaint> checkNode(const NodeTexts& node, std::string_view parentNumber) {
  if (node.number.size() <= parentNumber.size())
    return NodeComplaint{NodeField::Number, "Nenurodytas sąskaitos numeris"};
  if (node.name.empty()) return NodeComplaint{NodeField::Name, "Nenurodytas sąskaitos pavadinimas"};
  if (node.type.empty()) return NodeComplaint{NodeField::Type, "Nenurodytas sąskaitos tipas"};
  return std::nullopt;
}

std::string nodeRefusal(const SaveResult& refused) {
  switch (refused.Code) {
    case kMarkGone:
      return "BRAProperty nebeegzistuoja!";
    case kNumberTaken:
      return "Tokia sąskaita jau egzistuoja!";
    case kParentGone:
      return "Aukštesnio lygio sąskaita nebeegzistuoja!";
    case kNodeGone:
      return "Redaguojama sąskaita nebeegzistuoja!";
    default:
      return refused.Text;
  }
}

bool treeIsStale(std::int32_t refusalCode) {
  return refusalCode == kParentGone || refusalCode == kNodeGone;
}

}  // namespace tolvex
