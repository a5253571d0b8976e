// The log of an operation as lines for people, and the undo of its last save.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"

namespace tolvex {

struct LogLine {
  std::string id, date, user;
  std::string action;  // in words
};
struct LogChange {
  std::string what, before, after;
};

// Newest first. A failure of the store has been shown.
std::vector<LogLine> readLog(VXObjectUIO& operation);
std::vector<LogChange> readLogChanges(VXObjectUIO& operation, const std::string& id);

// The question before an undo: whose save of when is taken back, and what will change by that.
// Nothing when there is nothing to undo; that has been told.
std::optional<std::string> undoQuestion(VXObjectUIO& operation);

// Takes the last save of the stored operation back. Code and text of the store.
MethodResult UndoLastSave(VXObjectUIO& operation);

}  // namespace tolvex
