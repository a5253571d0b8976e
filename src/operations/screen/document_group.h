// The group of a document: what its record gives the document, and its choice.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/host.h"

namespace tolvex {

struct DocumentGroup {
  std::string reference;   // "" while no fitting group is known
  std::string name, path;  // path: names from the root
  std::string series;
  bool showsSeries = false;
  std::string numberMask;  // "": the group does not number
  int templateId = 0, defaultTemplateId = 0;
  std::string parameters;

  int id() const;
};

// Which groups take a document: those of its own kind only, or generic ones too.
enum class GroupFit { OwnKind, OwnKindOrGeneric };

// Reads a group. One of another kind is told, and the answer is empty, as it is when the read
// failed.
DocumentGroup readDocumentGroup(HostContext& host, VXObjectUIO& object, std::string_view reference,
                                GroupFit fit);

// The group that the user picks instead of `current`; nothing when cancelled or cleared.
std::optional<std::string> pickDocumentGroup(HostContext& host, std::string_view current);

// The next number of the group's counter for a document that has none yet; nothing when the group
// does not number. A failure has been shown.
std::optional<std::string> nextNumber(VXObjectUIO& object, const DocumentGroup& group);

}  // namespace tolvex
