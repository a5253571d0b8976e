// The protocol of operations: who made, changed and deleted what, written inside the save and never
// changed afterwards. A row outlives its operation.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/store/oper_rows.h"
#include "host/store/session.h"

namespace tolvex::store {

enum class Action : char { Create = 'C', Update = 'U', Delete = 'D', Undo = 'A' };

// What happened, line by line: name, old and new value of a changed header field; of an entry the
// name is "+", "-" or "~" for one that is new, gone or changed. Names and values are parted by
// tabs. Lines that begin with "=" keep what an undo needs, see oper_image.h.
class ProtocolDetail {
 public:
  void header(const HeaderRow* before, const HeaderRow* after);
  void entry(const EntryRow* before, const EntryRow* after);
  void line(std::string_view text);
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

// A line of a detail that a person reads.
struct ProtocolChange {
  std::string name, before, after;  // only a name: a line of free text
};
std::vector<ProtocolChange> readableChanges(std::string_view detail);

void writeProtocol(Session& session, const HeaderRow& header, Action action,
                   const ProtocolDetail& detail);

// Who changed the operation last, "name, yyyy.mm.dd hh:mm:ss"; "" when nobody did.
std::string lastChange(Database& db, int operId);

}  // namespace tolvex::store
