// One pass over entries, postings and references that works out what every derived table must hold:
// verify compares it with what is stored, rebuild writes it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/store/books.h"
#include "host/store/items.h"
#include "host/store/rollup.h"

namespace tolvex::store {

// Numbers that order and compare fast in place of a TurnKey; millions are held at once.
struct PackedTurn {
  std::uint64_t place = 0;  // account, period
  std::uint64_t rest = 0;   // set, other account, currency
  bool operator==(const PackedTurn&) const = default;
  auto operator<=>(const PackedTurn&) const = default;
};
struct PackedTurnHash {
  std::size_t operator()(const PackedTurn& key) const {
    const std::uint64_t mixed =
        (key.place ^ (key.rest * 0x9E3779B97F4A7C15u)) * 0xD6E8FEB86659FD93u;
    return static_cast<std::size_t>(mixed ^ (mixed >> 32));
  }
};
using PackedTurns = std::unordered_map<PackedTurn, Turn, PackedTurnHash>;

// Currency codes as small numbers.
class CurrencyCodes {
 public:
  std::uint8_t numberOf(std::string_view code);
  const std::string& codeOf(std::uint8_t number) const { return codes_[number]; }

 private:
  std::vector<std::string> codes_{std::string(kBaseCode)};
};

struct TrackedPosting {
  int account = 0, item = 0, entry = 0, oper = 0, day = 0, dimset = 0;
  std::int8_t sign = 0;
  std::uint8_t cur = 0;
  std::int64_t sumLt = 0, sumCur = 0;
};

// The derived part of a posting, as stored or as it must be.
struct PostingCopies {
  int operId = 0, day = 0, corrId = 0, dimsetId = 0, itemId = 0;
  std::int64_t sumLt = 0;
  bool operator==(const PostingCopies&) const = default;
};

struct ScanHooks {
  // A posting whose copies are not what they must be. `dimsetKey` names the right set when there is
  // none yet; the hook gives its id.
  std::function<void(int entryId, int sign, const PostingCopies& must)> wrongCopies;
  std::function<int(const std::string& dimsetKey)> unknownSet;
  std::function<void(const char* check, const std::string& text)> fault;
};

class DerivedScan {
 public:
  DerivedScan(Database& db, ScanHooks hooks, Progress progress);
  void run();  // throws Stopped

  CurrencyCodes& currencies() { return currencies_; }
  // Turnovers by day and, per set of addressees, by month.
  const PackedTurns& days() const { return days_; }
  const PackedTurns& months() const { return months_; }
  PackedTurn pack(const TurnKey& key);
  TurnKey unpack(const PackedTurn& key) const;

  // Calls `body` for each item on each account, ascending, with the rows that open_item must hold.
  void forEachItem(const std::function<void(int account, int item, std::vector<ItemRow>)>& body);

 private:
  struct Refs;
  struct StoredPosting;
  struct Cursors;
  void readAccounts();
  void readDimsets();
  void readOperations();
  void scanEntries();
  void reportStrays(Cursors& at, std::int64_t before);
  void readRefs(Cursors& at, int entryId, Refs& sides);
  int readPostings(Cursors& at, int entryId, StoredPosting (&pair)[2]);
  void scanEntry(Cursors& at, Refs& sides);
  void goOn(int entryId, int last) const;
  int dimsetOf(const std::string& key);
  bool exists(int operId) const;
  void count(const StoredPosting& posting, const PostingCopies& must);

  Database& db_;
  ScanHooks hooks_;
  Progress progress_;
  CurrencyCodes currencies_;
  std::vector<bool> tracked_, operations_;
  std::unordered_map<std::string, int> dimsets_;
  PackedTurns days_, months_;
  std::vector<TrackedPosting> items_;
};

// Turnovers by day summed up to days, months and years; by month to months and years.
PackedTurns withLongerPeriods(const PackedTurns& turns);

}  // namespace tolvex::store
