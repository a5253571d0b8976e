// The contract between the operation object and the screen that edits one entry.
//
// The screen is registered as kEntryEditor over an EntryEditorRequest, runs modally, and leaves in
// Form::result one of the codes below. It changes the row of `set` only when it saves.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "framework/recordset.h"
#include "platform/host.h"
#include "platform/objects.h"

namespace tolvex {

inline constexpr const char* kEntryEditor = "frmBROperRecord";

inline constexpr int kEntryUnchanged = 0;
inline constexpr int kEntrySaved = 1;
inline constexpr int kSaveOperation = 2;        // the entry was saved; save the operation too
inline constexpr int kSaveOperationAndNew = 3;  // likewise, and start a new operation

struct EntryEditorRequest {
  HostContext& host;
  std::shared_ptr<VXObjectUIO> object;
  RowSetPtr set;     // the BR set of the object, without a filter
  std::string guid;  // of the entry to show
  bool readOnly = false;
  bool mayChange = true;
  std::int16_t mode = 0;
  std::string allowed;  // kinds of addressee that may be changed, eight characters each; "": all
};

}  // namespace tolvex
