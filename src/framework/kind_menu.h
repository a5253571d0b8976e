// Menu commands that every kind of objects has in the same words.
#pragma once

#include <string>
#include <string_view>

#include "framework/object_contract.h"

namespace tolvex {

inline constexpr const char* kToDesktop = "Padėti ant darbo stalo";
inline constexpr const char* kDelete = "Panaikinti";
inline constexpr const char* kFilterRows = "Atrinkti";

// An entry whose id is its caption.
MenuEntry menuEntry(std::string caption, bool enabled = true);

// "Panaikinti": asks, then deletes by the rules of the kind.
MenuAction clickDelete(VXObjectUI& ui, std::string id);

// "Atrinkti": the rows that `list` gives for the user's filter text.
template <class List>
MenuAction clickFilter(VXObjectUI& ui, std::string_view kind, List list) {
  const std::string filter = hostContext().dialogs().filter(kind);
  if (filter.empty()) return {};
  RowSetPtr rows = list(ui, filter);
  if (!rows) return {};
  return {MenuAction::ShowRows, Variant(Variant::Array{rows, filter})};
}

}  // namespace tolvex
