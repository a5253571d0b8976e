#include "operations/show_entry.h"

#include "framework/conversions.h"
#include "framework/references.h"
#include "operations/document_form.h"
#include "operations/entries.h"
#include "operations/entry_editor.h"

namespace tolvex {

namespace {

// In a money document only these addressees of an entry are free; its own kinds come from the
// document. Eight characters each, not separated.
constexpr const char* kFreeInDocuments = "O0201500O0000500O0000300O0000100O0001402O0001401";

bool isMoneyDocument(std::string_view kind) { return kind >= "O0201501" && kind <= "O0201505"; }

void readRestriction(const Variant& restriction, FieldList& header, EntryEditorRequest& request) {
  if (restriction.IsText()) {
    request.allowed = restriction.AsText();
    request.readOnly = header["OIDR"].Text() != header["FOIDR"].Text();
  } else if (NullToBool(restriction)) {
    request.readOnly = true;
    if (isMoneyDocument(kindOf(header["FOIDR"].Text()))) request.allowed = kFreeInDocuments;
  }
}

}  // namespace

MethodResult ShowBR(UIO0201500& operation, Arguments par) {
  if (par.empty()) return refused("ShowBR: nėra parametrų !");
  EntryEditorRequest request{.host = hostContext(),
                             .object = operation.shared_from_this(),
                             .set = entriesOf(operation),
                             .guid = NullToText(par[0]),
                             .allowed = {}};
  readRestriction(argument(par, 1), operation.Fields(), request);
  request.readOnly = request.readOnly || operation.Preview();
  if (par.size() > 2) request.mayChange = NullToBool(par[2]);
  request.mode = static_cast<std::int16_t>(NullToDouble(argument(par, 3)));

  if (!entryOf(operation, request.guid)) return refused("ShowBR: nėra įrašo !");
  request.set->SetFilter("");
  const std::shared_ptr<ui::Form> editor = operation.tables().forms.make(kEntryEditor, request);
  if (!editor) {
    tellMissingScreen();
    return done(kEntryUnchanged);
  }
  hostContext().screens().runModal(*editor);
  return done(editor->result);
}

}  // namespace tolvex
