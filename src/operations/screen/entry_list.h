// The list of an operation's entries: their lines with the state of their test, and what the row
// menu does with them.
//
// The list is the screen's; this fills it and knows which entry stands under the cursor. Failures
// of entry operations are shown here.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "operations/entry_tests.h"
#include "operations/screen/vat_marks.h"
#include "platform/host.h"

namespace tolvex {

// The entries of the row menu, with the names that scripts and users know them by.
struct EntryMenu {
  explicit EntryMenu(ui::Form* form);

  ui::MenuItem mnuBR, mnuMainBR, mnuReferenceD, mnuReferenceC;
  ui::MenuItem mnuFreeTemplate, mnuAddTemplate, mnuOperTemplate, mnuBRCopy;
  ui::MenuItem mnuBRDelete, mnuDeleteAll;
  ui::Menu menu;
};

class EntryList {
 public:
  enum class Columns { WithDate, WithoutDate };
  EntryList(ui::ListView& list, Columns columns);

  // Shows the entries of the object, tests each strictly, and keeps the cursor on its entry, or on
  // the first one.
  void show(VXObjectUIO& object);

  std::string current() const;  // GUID of the entry under the cursor, or ""
  void select(std::string_view guid);
  std::size_t count() const { return list_.rows().size(); }
  std::size_t failed() const { return failed_; }
  double sumLt() const { return sumLt_; }

  // What a row menu may offer for the entry under the cursor.
  void enableMenu(EntryMenu& menu, VXObjectUIO& object, bool mayChange) const;
  // Moves the cursor to the entry that the current one follows.
  void selectMain(VXObjectUIO& object);
  // Opens the operation that the current entry points at on that side.
  void showReference(VXObjectUIO& object, int sign);

  // Runs the entry editor; its code tells what was done. `walk` lets the user go on to the
  // neighbouring entries. Remembers the entry's marks, so that the next entry starts with them.
  int showCard(VXObjectUIO& object, const std::string& guid, bool mayChange, bool walk);
  // Adds an entry with nothing in it but those marks; its accounts are "?", which pass no test.
  // Gives its GUID, or nothing when that failed.
  std::optional<std::string> addFree(VXObjectUIO& object);
  // Adds the entries of a template, which begin with those marks too. False when that failed.
  bool addTemplate(VXObjectUIO& object, int templateId, double sumLt);
  // Deletes an entry, or with "" all of them. No question.
  void remove(VXObjectUIO& object, const std::string& guid);

 private:
  ui::Row rowOf(const EntryLine& line) const;
  HostContext& host() const;

  ui::ListView& list_;
  Columns columns_;
  std::size_t failed_ = 0;
  double sumLt_ = 0;
  TradeMarks marks_;
  double vatTariff_ = -1;  // below 0: none
};

// The operation that the entry at the cursor points at, "" when none: the first of that side, or
// with sign 0 the first at all.
struct OperationPointer {
  std::string reference, text;
};
OperationPointer operationPointer(RowSet& entry, int sign);

}  // namespace tolvex
