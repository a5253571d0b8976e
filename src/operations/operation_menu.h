// Menu commands that the list of operations and the tree of groups share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/kind_menu.h"
#include "operations/UIO0201500.h"
#include "platform/host.h"
#include "platform/objects.h"

namespace tolvex {

inline constexpr const char* kSearch = "Paieška";
inline constexpr const char* kTelebankExport = "Eksportas į banką";

// The entries that make documents of a kind; disabled while their screen is missing.
void addDocumentEntries(const FormRegistry& forms, std::string_view kind,
                        std::vector<MenuEntry>& menu);

// The document kind that a caption makes in a group of kind `groupKind`, or "" for a caption that
// makes none. A tool such as "Skolų dengimas" makes a plain operation.
std::string kindOfCaption(std::string_view caption, std::string_view groupKind);

// The reference of the group that a clicked row is or stands in; "" when it is gone.
std::string groupOf(const OperationTablesPtr& tables, std::string_view id);

// Makes the new document that `caption` names. Nothing when it names none or was told impossible.
MenuAction clickNewDocument(const OperationTablesPtr& tables, std::shared_ptr<VXObjectUI> ui,
                            std::string_view group, std::string_view caption,
                            std::string_view extra);

MenuAction showForm(std::shared_ptr<ui::Form> form);
// "Eksportas į banką": the bank screen over a new operation.
MenuAction clickTelebank(const OperationTablesPtr& tables, std::string_view clicked);
// "Paieška": the operation journal over the first journal that is set up for it.
MenuAction clickSearch(const OperationTablesPtr& tables);

}  // namespace tolvex
