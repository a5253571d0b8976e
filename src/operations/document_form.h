// Which screen a document opens with, and how new and stored documents get theirs.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "operations/UIO0201500.h"
#include "platform/form.h"
#include "platform/objects.h"

namespace tolvex {

// The screen of a document kind: one of its own for money documents and the closing of accounts,
// "frmBROper" for every other kind.
std::string_view editorOf(std::string_view kind);

// A screen as the value of a result; empty when there is none.
Variant formValue(std::shared_ptr<ui::Form> form);

// Tells the user that a screen is not part of the program yet.
void tellMissingScreen();

// The screen `name` over `request`, or null after the user was told that there is none.
std::shared_ptr<ui::Form> makeScreen(const FormRegistry& forms, std::string_view name,
                                     const ObjectFormRequest& request);
// The editor of `kind`, likewise; never the editor of another kind.
std::shared_ptr<ui::Form> makeEditor(const FormRegistry& forms, std::string_view kind,
                                     const ObjectFormRequest& request);

// A read object for a stored operation, or a new one for ""; null when it cannot be read.
std::shared_ptr<UIO0201500> readOperation(const OperationTablesPtr& tables, std::string_view id);

// A stored operation; null after the user was told that it is gone or cannot be read.
std::shared_ptr<UIO0201500> toldOperation(const OperationTablesPtr& tables,
                                          std::string_view reference);

// Whether a read record has gone from the store: it then has neither reference.
bool isGone(VXObjectUIO& operation);

// The rights component of the operations of a group.
std::string operationRights(int groupID);

struct OpenedDocument {
  std::shared_ptr<ui::Form> form;
  bool byHost = false;  // a document of another module, which the host has shown itself
};
// The screen of a stored document. A document that is gone, cannot be read or may not be seen is
// told. Operations of other modules open as the document behind them.
OpenedDocument openDocument(const OperationTablesPtr& tables, std::string_view reference);

// The screen of a new document of `kind` in a group that has been read. `extra` goes to the screen.
// Null after the user was told that the screen is missing or the store refused.
std::shared_ptr<ui::Form> newDocument(const OperationTablesPtr& tables,
                                      std::shared_ptr<VXObjectUI> ui, VXObjectUIO& group,
                                      std::string_view kind, std::string_view extra);

}  // namespace tolvex
