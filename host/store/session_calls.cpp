// The seven calls of StorePort over routines and record handlers.
#include "framework/references.h"
#include "host/store/records.h"
#include "host/store/routines.h"
#include "host/store/session.h"

namespace tolvex::store {
namespace {

const RecordHandler& handlerOf(std::string_view kind) {
  const RecordHandler* const handler = recordHandler(kind);
  if (!handler) throw Refusal(kUnknownRoutine, "Nežinoma objekto rūšis: " + std::string(kind));
  return *handler;
}

// "DO0200400_GetBRASettings" is asked of the kind that it names, any other name of `kind`.
struct Addressed {
  std::string_view kind, name;
};
Addressed addressed(std::string_view kind, std::string_view method) {
  const bool qualified = method.size() > kKindLength + 2 &&
                         (method[0] == 'D' || method[0] == 'd') &&
                         (method[1] == 'O' || method[1] == 'o') && method[kKindLength + 1] == '_';
  if (!qualified) return {kindOf(kind), method};
  return {method.substr(1, kKindLength), method.substr(kKindLength + 2)};
}

std::string_view kindIn(std::string_view kind, std::string_view reference) {
  return isRef(reference) ? kindOf(reference) : kindOf(kind);
}

// What a save sends. A header of which nothing changed still travels when a further set did, since
// its version guards them all.
struct Sent {
  RowSetPtr header, second, third;
};

RowSetPtr changedRows(RowSet* rows) { return rows ? rows->Changes() : nullptr; }
bool anyRow(const RowSetPtr& rows) { return rows && rows->RecordCount() > 0; }

RowSetPtr unchangedHeader(RowSet& header) {
  RowSetPtr copy = header.EmptyCopy();
  const KeepPlace place(header);
  header.MoveFirst();
  copy->LoadRow();
  for (std::size_t i = 0; i < header.Fields().size(); ++i) {
    Field from = header.Fields()[i];
    if (from.Type() != FieldType::Nested && !from.IsEmpty()) copy->Fields()[i] = from.Value();
  }
  return copy;
}

Sent whatChanged(RowSet& header, RowSet* second, RowSet* third) {
  Sent sent{header.Changes(), changedRows(second), changedRows(third)};
  if (!anyRow(sent.header) && (anyRow(sent.second) || anyRow(sent.third))) {
    sent.header = unchangedHeader(header);
  }
  if (anyRow(sent.header)) sent.header->MoveFirst();
  return sent;
}

void copyFields(RowSet& from, RowSet& to);

void copyRows(RowSet& from, RowSet& to) {
  const KeepPlace place(to);
  ForEachRow(from, [&](RowSet& row) {
    if (row.State() == RowState::Deleted) return;
    to.SetBookmark(row.Bookmark());
    copyFields(row, to);
  });
}

void copyFields(RowSet& from, RowSet& to) {
  for (std::size_t i = 0; i < from.Fields().size(); ++i) {
    Field source = from.Fields()[i];
    Field target = to.Fields()[i];
    if (source.Type() == FieldType::Nested) {
      if (const RowSetPtr rows = source.Rows(); anyRow(rows)) copyRows(*rows, *target.Rows());
    } else if (!source.IsEmpty() && !(source.Value() == target.Value())) {
      target = source.Value();
    }
  }
}

// What the store gave the record (ids, version, number) goes into the caller's rows.
void writeBack(const Sent& sent, RowSet& header, RowSet* second, RowSet* third) {
  if (anyRow(sent.header)) {
    const KeepPlace place(header);
    header.MoveFirst();
    sent.header->MoveFirst();
    copyFields(*sent.header, header);
  }
  if (anyRow(sent.second)) copyRows(*sent.second, *second);
  if (anyRow(sent.third)) copyRows(*sent.third, *third);
  header.AcceptChanges();
  if (second) second->AcceptChanges();
  if (third) third->AcceptChanges();
}

}  // namespace

HostResult Session::call(std::string_view kind, std::string_view method,
                         std::string_view parameters) {
  const Addressed to = addressed(kind, method);
  const Routine* const routine = findRoutine(to.kind, to.name);
  if (!routine) {
    return {kUnknownRoutine,
            "Nežinoma užklausa: " + std::string(method) + " (" + std::string(parameters) + ")",
            {}};
  }
  std::vector<Argument> arguments;
  try {
    arguments = argumentsFor(*routine, to.kind, parameters);
  } catch (const Refusal& refusal) {
    return {refusal.code, refusal.what(), {}};
  }
  using For = Transaction::For;
  const For purpose = routine->alone ? For::Exclusive : routine->writes ? For::Write : For::Read;
  return guarded(purpose, [&] { return routine->answer(*this, arguments, to.kind); });
}

HostResult Session::load(std::string_view kind, std::string_view reference) {
  return guarded(Transaction::For::Read, [&]() -> Variant {
    const std::string_view asked = kindIn(kind, reference);
    if (!isRef(reference)) refuseGone();
    return readRecord(*this, asked, idOf(reference));
  });
}

HostResult Session::create(std::string_view kind, std::string_view otype) {
  return guarded(Transaction::For::Read, [&]() -> Variant {
    return handlerOf(kindOf(kind)).create(*this, kindOf(kind), otype);
  });
}

SaveOutcome Session::save(std::string_view kind, std::string_view otype, RowSet& header,
                          RowSet* second, RowSet* third) {
  Sent sent;
  const HostResult result = guarded(Transaction::For::Write, [&]() -> Variant {
    sent = whatChanged(header, second, third);
    if (!anyRow(sent.header)) return header["OIDR"].Value();
    handlerOf(kindOf(kind))
        .save(*this, kindOf(kind), otype, *sent.header, sent.second.get(), sent.third.get());
    sent.header->MoveFirst();
    return (*sent.header)["OIDR"].Value();
  });
  if (result.Code != kDone) return {result.Code, result.Text, ""};
  if (anyRow(sent.header)) writeBack(sent, header, second, third);
  return {kDone, "", result.Data.Show()};
}

HostResult Session::erase(std::string_view kind, std::string_view reference) {
  return guarded(Transaction::For::Write, [&]() -> Variant {
    if (!isRef(reference)) refuseGone();
    const std::string_view asked = kindIn(kind, reference);
    handlerOf(asked).erase(*this, asked, idOf(reference));
    return {};
  });
}

HostResult Session::list(std::string_view kind, std::string_view first, std::string_view second,
                         std::string_view third) {
  return guarded(Transaction::For::Read, [&]() -> Variant {
    return handlerOf(kindOf(kind)).list(*this, kindOf(kind), listArguments(first, second, third));
  });
}

}  // namespace tolvex::store
