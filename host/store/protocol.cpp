#include "host/store/protocol.h"

#include "framework/text.h"
#include "host/store/moments.h"
#include "host/store/oper_image.h"
#include "host/store/sql.h"

namespace tolvex::store {

namespace {

void appendSide(std::string& to, const SideRow& side) {
  to += ' ';
  to += side.account;
  if (side.cur == kBaseCode) return;
  to.append("[").append(side.cur).append(" ");
  to.append(replaceAll(plainNumber(static_cast<double>(side.sumCur) / 10000.0), ".", ","));
  to.append("]");
}

std::string entryText(const EntryRow& entry) {
  std::string text = dayText(entry.day);
  appendSide(text, entry.debit);
  appendSide(text, entry.credit);
  text.append(" ").append(centsText(entry.sumLt));
  for (const RefRow& ref : entry.refs) {
    text.append(ref.sign == 1 ? " D:" : " K:");
    text.append(ref.showString.empty() ? ref.foidr : ref.showString);
  }
  if (entry.info && !entry.info->empty()) text.append(" \"").append(*entry.info).append("\"");
  return text;
}

}  // namespace

void ProtocolDetail::line(std::string_view text) {
  if (!text_.empty()) text_ += '\n';
  text_ += text;
}

void ProtocolDetail::header(const HeaderRow* before, const HeaderRow* after) {
  static const HeaderRow kNothing;
  const HeaderRow& old = before != nullptr ? *before : kNothing;
  const HeaderRow& now = after != nullptr ? *after : kNothing;
  const auto field = [&](const char* name, const std::string& was, const std::string& is) {
    if (was != is) line(protocolLine({name, was, is}));
  };
  const auto number = [&](const char* name, int was, int is) {
    if (was != is) {
      line(protocolLine(
          {name, was == 0 ? "" : std::to_string(was), is == 0 ? "" : std::to_string(is)}));
    }
  };
  const auto day = [](const HeaderRow& row) { return row.day != 0 ? dayText(row.day) : ""; };
  field("DateD", day(old), day(now));
  field("Serija", old.serija, now.serija);
  field("Number", old.number, now.number);
  number("AutoNumber", old.autoNumber, now.autoNumber);
  number("BROperGroupID", old.groupId, now.groupId);
  field("Comment", old.comment, now.comment);
  field("Parameters", old.parameters, now.parameters);
  field("ClientOIDR", old.clientRef.value_or(""), now.clientRef.value_or(""));
  number("VATRegisterIndication", old.vatRegister, now.vatRegister);
}

void ProtocolDetail::entry(const EntryRow* before, const EntryRow* after) {
  const char* mark = before == nullptr ? "+" : after == nullptr ? "-" : "~";
  line(protocolLine({mark, before != nullptr ? entryText(*before) : "",
                     after != nullptr ? entryText(*after) : ""}));
}

std::vector<ProtocolChange> readableChanges(std::string_view detail) {
  std::vector<ProtocolChange> changes;
  if (detail.empty()) return changes;
  for (const std::string& line : split(detail, '\n')) {
    if (line.starts_with('=')) continue;
    std::vector<std::string> fields = protocolFields(line);
    fields.resize(3);
    changes.push_back({std::move(fields[0]), std::move(fields[1]), std::move(fields[2])});
  }
  return changes;
}

void writeProtocol(Session& session, const HeaderRow& header, Action action,
                   const ProtocolDetail& detail) {
  run(session.db(),
      "INSERT INTO oper_log (oper_id, oper_name, action, user_id, user_name, at, save_key, detail)"
      " VALUES ($1,$2,$3,$4,$5,$6,$7,$8)",
      header.id, operName(header), std::string(1, static_cast<char>(action)), session.user().id,
      session.user().name, storedMoment(session.now()), session.saveKey(), detail.text());
}

std::string lastChange(Database& db, int operId) {
  auto select =
      db.prepare("SELECT user_name, at FROM oper_log WHERE oper_id = $1 ORDER BY id DESC LIMIT 1");
  select->bind(1, operId);
  if (!select->step()) return "";
  return std::string(select->text(0)) + ", " + shownMoment(std::string(select->text(1)));
}

}  // namespace tolvex::store
