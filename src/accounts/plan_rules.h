// Rules of one node of the chart of accounts: which level it is, what may be typed, what must be
// there before it is saved.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/objects.h"

namespace tolvex {

// Levels follow from what stands above alone; numbers of a level have no fixed length.
enum class NodeLevel { Class, Account, Subaccount };
// `parent` is null for a class, and for a node whose parent is gone.
NodeLevel levelOf(VXObjectUIO& node, VXObjectUIO* parent);
const char* nodeCaption(NodeLevel level, bool isNew);
// Number and name, as trees and tabs show a node.
std::string nodeText(VXObjectUIO& node);

// --- while typing -----------------------------------------------------------------------------

// No class has the number 0 or 00.
bool isReservedClass(std::string_view number);
// The number as it may stand: a prefix that was typed away is put back.
std::string behindPrefix(std::string text, const std::string& prefix);
// "D" (debit) or "K" (credit) for anything typed; "" stays.
std::string accountTypeOf(std::string_view typed);

// --- saving -----------------------------------------------------------------------------------

struct NodeTexts {
  std::string number, name, type;  // trimmed
};
enum class NodeField { Number, Name, Type };
struct NodeComplaint {
  NodeField where;
  const char* text;
};
// The first thing that is missing. A number must be longer than that of the parent, which is "" for
// a class.
std::optional<NodeComplaint> checkNode(const NodeTexts& node, std::string_view parentNumber);
// What the user is told of a refused save.
std::string nodeRefusal(const SaveResult& refused);
// Whether the refusal means that the tree shows what is there no more.
bool treeIsStale(std::int32_t refusalCode);

}  // namespace tolvex
