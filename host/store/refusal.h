// Refusals: why the store did not do what it was asked. Thrown inside a transaction, which is
// rolled back, and answered with code and text at the session's border.
#pragma once

#include <stdexcept>
#include <string>

namespace tolvex::store {

// Meaning and texts: docs/internals/store.md.
enum StoreCode : int {
  kParentGone = 1,
  kObjectGone = 16,
  kEditedGone = 32,  // save of a deleted record; delete without the right
  kReferred = 547,
  kDuplicate = 3604,
  kChangedByOther = 1201,
  kLocked = 1202,
  kNoSaveRight = 1203,
  kRuleBroken = 1204,
  kBusy = 1205,
  kUnknownRoutine = 1206,
  kWrongParameters = 1207,
  kEpochChanged = 1208,
  kStopped = 1209,
  kEngine = 1299,
};

class Refusal : public std::runtime_error {
 public:
  Refusal(int code, const std::string& text) : std::runtime_error(text), code(code) {}
  const int code;
};

// Those that many subjects share.
[[noreturn]] void refuseView();
[[noreturn]] void refuseSave();
[[noreturn]] void refuseErase();
[[noreturn]] void refuseGone();        // what is read or deleted does not exist
[[noreturn]] void refuseEditedGone();  // nor what is saved
[[noreturn]] void refuseDouble();
[[noreturn]] void refuseRule(const std::string& text);

}  // namespace tolvex::store
