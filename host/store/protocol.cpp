#include "host/store/protocol.h"

#include "framework/text.h"
#include "host/store/moments.h"

namespace tolvex::store {

namespace {

void appendSide(std::string& to, const SideRow& side) {
  to += ' ';
  to += side.account;
  if (side.cur == kBaseCode) return;
  to.append("[").append(side.cur).append(" ");
  to.append(plainNumber(static_cast<double>(side.sumCur) / 10000.0)).append("]");
}

std::string entryText(const EntryRow& entry) {
  std::string text = dayText(entry.day);
  appendSide(text, entry.debit);
  appendSide(text, entry.credit);
  text.append(" ").append(centsText(entry.sumLt));
  for (const RefRow& ref : entry.refs) {
    text.append(ref.sign == 1 ? " D:" : " C:").append(ref.foidr);
  }
  if (entry.info && !entry.info->empty()) text.append(" \"").append(*entry.info).append("\"");
  return text;
}

}  // namespace

void ProtocolDetail::line(std::string_view text) {
  if (!text_.empty()) text_ += '\n';
  text_ += text;
}

void ProtocolDetail::header(const HeaderRow* before, const HeaderRow& after) {
  const auto field = [&](std::string_view name, const std::string& old, const std::string& now) {
    if (old == now) return;
    line(std::string(name) + ": " + (before != nullptr ? old + " -> " : "") + now);
  };
  static const HeaderRow kNothing;
  const HeaderRow& old = before != nullptr ? *before : kNothing;
  field("DateD", old.day != 0 ? dayText(old.day) : "", dayText(after.day));
  field("Serija", old.serija, after.serija);
  field("Number", old.number, after.number);
  field("AutoNumber", std::to_string(old.autoNumber), std::to_string(after.autoNumber));
  field("BROperGroupID", std::to_string(old.groupId), std::to_string(after.groupId));
  field("Comment", old.comment, after.comment);
  field("Parameters", old.parameters, after.parameters);
  field("ClientOIDR", old.clientRef.value_or(""), after.clientRef.value_or(""));
  field("VATRegisterIndication", std::to_string(old.vatRegister),
        std::to_string(after.vatRegister));
}

void ProtocolDetail::entry(const EntryRow* before, const EntryRow* after) {
  if (before == nullptr) return line("+ " + entryText(*after));
  if (after == nullptr) return line("- " + entryText(*before));
  line("~ " + entryText(*before) + " -> " + entryText(*after));
}

namespace {

void writeRow(Session& session, int operId, std::string_view name, Action action,
              const ProtocolDetail& detail) {
  auto insert = session.db().prepare(
      "INSERT INTO oper_log (oper_id, oper_name, action, user_id, user_name, at, save_key, detail)"
      " VALUES ($1,$2,$3,$4,$5,$6,$7,$8)");
  const std::string at = storedMoment(session.now());
  const std::string letter(1, static_cast<char>(action));
  insert->bind(1, operId).bind(2, name).bind(3, letter).bind(4, session.user().id);
  insert->bind(5, session.user().name)
      .bind(6, at)
      .bind(7, session.saveKey())
      .bind(8, detail.text());
  insert->run();
}

}  // namespace

void writeProtocol(Session& session, const HeaderRow& header, Action action,
                   const ProtocolDetail& detail) {
  writeRow(session, header.id, operName(header), action, detail);
}

void writeProtocol(Session& session, std::string_view what, const ProtocolDetail& detail) {
  writeRow(session, 0, what, Action::Update, detail);
}

std::string lastChange(Database& db, int operId) {
  auto select =
      db.prepare("SELECT user_name, at FROM oper_log WHERE oper_id = $1 ORDER BY id DESC LIMIT 1");
  select->bind(1, operId);
  if (!select->step()) return "";
  return std::string(select->text(0)) + ", " + shownMoment(std::string(select->text(1)));
}

}  // namespace tolvex::store
