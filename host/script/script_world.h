// ScriptWorld: the program that a script drives: the books, the workspace over them, the surface
// on which screens appear.
#pragma once

#include <string>
#include <vector>

#include "host/objects/stage.h"
#include "host/objects/workspace.h"
#include "host/script/trace_store.h"

namespace tolvex {

class ScriptWorld {
 public:
  virtual ~ScriptWorld() = default;
  virtual bool isOpen() const = 0;  // false while the user is asked to log in
  virtual Workspace& workspace() = 0;
  virtual Playground& playground() = 0;
  virtual TraceStore& trace() = 0;
  virtual FaultStore& faults() = 0;
  virtual store::StorePort& books() = 0;          // neither traced nor failing
  virtual std::vector<std::string> verify() = 0;  // findings, one line each
  virtual ReportOutput* output() = 0;  // writes reports into files; null: they cannot be written
  // The program is closed and opened again, for the same user or through the login screen.
  virtual void restart(bool login) = 0;
  virtual DateTime today() const = 0;
};

}  // namespace tolvex
