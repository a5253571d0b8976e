#include "host/store/session.h"

#include <chrono>
#include <thread>

#include "host/store/books.h"
#include "host/store/guid.h"
#include "host/store/moments.h"
#include "host/store/schema.h"

namespace tolvex::store {
namespace {

using Kind = DatabaseError::Kind;

constexpr int kPausesMs[] = {50, 100, 200};

HostResult answerTo(const DatabaseError& error) {
  switch (error.kind) {
    case Kind::Busy:
      return {kBusy, "Duomenų bazė užimta, bandykite dar kartą!", {}};
    case Kind::Unique:
      return {kDuplicate, "Toks įrašas jau egzistuoja!", {}};
    case Kind::Reference:
      return {kReferred, "Įraše nurodytas objektas neegzistuoja arba įrašas nurodytas kitur!", {}};
    case Kind::Full:
      return {kEngine, "Diske nebėra vietos, duomenys neįrašyti!", {}};
    case Kind::ReadOnly:
      return {kEngine, "Duomenų bazė skirta tik skaityti!", {}};
    case Kind::Damaged:
      return {kEngine, "Duomenų bazė sugadinta: " + std::string(error.what()), {}};
    case Kind::Lost:
      return {kEngine, "Ryšys su duomenų baze nutrūko: " + std::string(error.what()), {}};
    case Kind::Forbidden:
      return {kEngine,
              "Tai gali daryti tik duomenų bazės savininkas: " + std::string(error.what()),
              {}};
    case Kind::Refused:
    case Kind::NoPlace:
    case Kind::Check:
    case Kind::Other:
      break;
  }
  return {kEngine, error.what(), {}};
}

}  // namespace

Session::Session(std::unique_ptr<Database> db, User user, ClockFunction clock)
    : db_(std::move(db)),
      user_(std::move(user)),
      clock_(clock ? std::move(clock) : ClockFunction(localNow)),
      epoch_(storedEpoch(*db_)) {}

Session::~Session() = default;

HostResult Session::guarded(Transaction::For purpose, const std::function<Variant()>& work) {
  for (std::size_t attempt = 0;; ++attempt) {
    const bool last = attempt == std::size(kPausesMs);
    bool committing = false;
    int epoch = epoch_;
    Variant value;
    saveKey_.clear();
    try {
      Transaction transaction(*db_, purpose);
      if (storedEpoch(*db_) != epoch_) {
        throw Refusal(kEpochChanged, "Duomenų bazė pakeista, atidarykite iš naujo!");
      }
      value = work();
      if (purpose == Transaction::For::Exclusive) epoch = storedEpoch(*db_);
      committing = true;
      transaction.commit();
      renew(epoch);
      return {kDone, "", value};
    } catch (const Refusal& refusal) {
      return {refusal.code, refusal.what(), {}};
    } catch (const DatabaseError& error) {
      const bool reconnected = error.kind == Kind::Lost && db_->reconnect();
      if (committing && reconnected && !saveKey_.empty()) {
        if (storedDespiteLostConnection()) {
          renew(epoch);
          return {kDone, "", value};
        }
      } else if (committing && purpose != Transaction::For::Read && error.kind == Kind::Lost) {
        return {kEngine, "Ryšys su duomenų baze nutrūko: patikrinkite, ar įrašas įrašytas!", {}};
      }
      if (last || (error.kind != Kind::Busy && !reconnected)) return answerTo(error);
    } catch (const Stopped& stopped) {
      return {kStopped, stopped.what(), {}};
    } catch (const std::exception& error) {
      return {kEngine, error.what(), {}};
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(kPausesMs[attempt]));
  }
}

// Nothing that was remembered of the books as they were may be used. Of a user whom a restore took
// away nothing is left either: the id is another's, or nobody's.
void Session::renew(int epoch) {
  if (epoch == epoch_) return;
  epoch_ = epoch;
  kept_.clear();
  offer_ = {};
  auto row = db_->prepare(
      "SELECT name, user_pref FROM app_user WHERE id = $1 AND login = $2 AND active = 1");
  row->bind(1, user_.id).bind(2, user_.login);
  if (row->step()) {
    user_.name = row->text(0);
    user_.prefix = row->text(1);
  } else {
    user_.id = 0;  // gone with the restore: without any right
  }
  if (watch_.renewed) watch_.renewed();
}

bool Session::storedDespiteLostConnection() {
  auto row = db_->prepare("SELECT 1 FROM oper_log WHERE save_key = $1");
  row->bind(1, saveKey_);
  return row->step();
}

const std::string& Session::saveKey() {
  if (saveKey_.empty()) saveKey_ = newGuid();
  return saveKey_;
}

Flags Session::rights(std::string_view component) {
  std::string_view bare = component;
  for (const std::string_view family : {"CBROperRights", "CBROperGroupRights"}) {
    if (component.starts_with(family)) bare = family;
  }
  auto granted = db_->prepare(
      "SELECT g.can_view, g.can_delete, g.can_edit, g.can_create, g.can_admin FROM right_grant g"
      " JOIN app_user u ON u.role_id = g.role_id WHERE u.id = $1 AND u.login = $2"
      " AND u.active = 1 AND u.must_change = 0 AND g.component = $3");
  granted->bind(1, user_.id).bind(2, user_.login);  // restored books may give the id to another
  for (const std::string_view name : {component, bare}) {  // asked at every save
    granted->bind(3, name);
    if (granted->step()) {
      return {granted->integer(0) != 0, granted->integer(1) != 0, granted->integer(2) != 0,
              granted->integer(3) != 0, granted->integer(4) != 0};
    }
    granted->reset();
  }
  return {};
}

}  // namespace tolvex::store
