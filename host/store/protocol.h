// The protocol of operations: who made, changed and deleted what, written inside the save and never
// changed afterwards. A row outlives its operation.
#pragma once

#include <string>
#include <string_view>

#include "host/store/oper_rows.h"
#include "host/store/session.h"

namespace tolvex::store {

enum class Action : char { Create = 'C', Update = 'U', Delete = 'D' };

// What happened, line by line: changed header fields as "field: old -> new", entries that are new,
// gone or changed marked "+", "-" or "~".
class ProtocolDetail {
 public:
  void header(const HeaderRow* before, const HeaderRow& after);
  void entry(const EntryRow* before, const EntryRow* after);
  void line(std::string_view text);
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

void writeProtocol(Session& session, const HeaderRow& header, Action action,
                   const ProtocolDetail& detail);
// Of a change of the books as a whole; it belongs to no operation.
void writeProtocol(Session& session, std::string_view what, const ProtocolDetail& detail);

// Who changed the operation last, "name, yyyy.mm.dd hh:mm:ss"; "" when nobody did.
std::string lastChange(Database& db, int operId);

}  // namespace tolvex::store
