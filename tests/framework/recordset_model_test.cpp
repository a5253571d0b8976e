// A record set against a plain vector of rows, through whatever a program may do with it.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <random>

#include "framework/recordset.h"
#include "framework/text.h"

namespace tolvex {
namespace {

constexpr ColumnSpec kColumns[] = {{"Name", FieldType::Text, 50}, {"Sum", FieldType::Double}};

struct ModelRow {
  std::optional<std::string> name, originalName;
  std::optional<double> sum, originalSum;
  bool stored = false, live = true, changed = false;

  bool pending() const { return stored ? changed || !live : live; }
  RowState state() const {
    if (!live) return RowState::Deleted;
    return !stored ? RowState::Added : changed ? RowState::Changed : RowState::Unchanged;
  }
};

struct Filter {
  const char* text;
  std::function<bool(const ModelRow&)> passes;
};

bool same(const ModelRow& row, const char* name) {
  return row.name && equalNoCase(*row.name, name);
}

const std::vector<Filter>& filters() {
  static const std::vector<Filter> all = {
      {"", [](const ModelRow&) { return true; }},
      {"Name = 'ąžuolas'", [](const ModelRow& r) { return same(r, "ąžuolas"); }},
      {"Name <> 'beržas'", [](const ModelRow& r) { return !same(r, "beržas"); }},
      {"Name = 'b' OR Name = 'C'", [](const ModelRow& r) { return same(r, "b") || same(r, "c"); }},
      {"Name Like 'b%'",
       [](const ModelRow& r) { return r.name && startsWithNoCase(*r.name, "b"); }},
      {"Sum >= 2 And Sum <= 4",
       [](const ModelRow& r) { return r.sum && *r.sum >= 2 && *r.sum <= 4; }},
      {"Sum <> 0", [](const ModelRow& r) { return r.sum && *r.sum != 0; }},
      {"(Name = 'b' AND Sum = 1) OR (Name Like '%s' AND Sum > 2)",
       [](const ModelRow& r) {
         const bool ends =
             r.name && !r.name->empty() && equalNoCase(r.name->substr(r.name->size() - 1), "s");
         return (same(r, "b") && r.sum && *r.sum == 1) || (ends && r.sum && *r.sum > 2);
       }},
      {"Name >= 'B'", [](const ModelRow& r) { return r.name && upper(*r.name) >= "B"; }},
      {"Name = 'never'", [](const ModelRow&) { return false; }},
  };
  return all;
}

constexpr const char* kNames[] = {"Ąžuolas", "ąžuolas", "Beržas", "BERŽAS", "b", "c", "C", ""};

using Random = std::mt19937;

// One cursor on the shared rows: the set under test beside the model's idea of it.
struct Cursor {
  RowSetPtr set;
  const Filter* filter = &filters()[0];
  std::string sort{};
  std::vector<std::size_t> order{};  // of a sort
  enum { Before, At, After } where = At;
  std::size_t row = 0;
};

class World {
 public:
  World(Random& random, int stored) : random_(random) {
    const RowSetPtr rows = RowSet::make(kColumns);
    for (int i = 0; i < stored; ++i) {
      rows->LoadRow();
      model_.push_back({});
      model_.back().stored = true;
      edit(*rows, model_.back());
      model_.back().changed = false;
      model_.back().originalName = model_.back().name;
      model_.back().originalSum = model_.back().sum;
    }
    rows->MoveFirst();
    cursors_.push_back({rows});
    first(cursors_[0]);
    cursors_.push_back({rows->Clone()});
    first(cursors_[1]);
  }

  void step() {
    Cursor& c = cursors_[pick(cursors_.size())];
    switch (pick(16)) {
      case 0:
        c.filter = &filters()[pick(filters().size())];
        c.set->SetFilter(c.filter->text);
        first(c);
        break;
      case 1:
        sort(c);
        break;
      case 2:
        c.set->AddNew();
        model_.push_back({});
        c.where = Cursor::At;
        c.row = model_.size() - 1;
        [[fallthrough]];
      case 3:
      case 4:
      case 5:
      case 6:
        if (hasRow(c)) edit(*c.set, model_[c.row]);
        break;
      case 7:
        if (hasRow(c)) {
          c.set->Delete();
          model_[c.row].live = false;
        }
        break;
      case 8:
        c.set->MoveFirst();
        first(c);
        break;
      case 9:
        c.set->MoveLast();
        move(c, -1, Cursor::After);
        if (c.where == Cursor::Before) c.where = Cursor::After;
        break;
      case 10:
        bookmark(c);
        break;
      case 11:
        if (pick(12) == 0) cancelOrAccept(c);
        break;
      case 12:
        if (pick(4) == 0) {
          cursors_[1] = {cursors_[0].set->Clone()};
          first(cursors_[1]);
        }
        break;
      case 13:
      case 14:
        step(c, 1);
        break;
      default:
        step(c, -1);
    }
  }

  void check() {
    for (Cursor& c : cursors_) {
      std::vector<std::size_t> want = visible(c);
      RC_ASSERT(c.set->RecordCount() == want.size());
      RC_ASSERT(c.set->Eof() == (want.empty() || c.where == Cursor::After));
      RC_ASSERT(c.set->Bof() == (want.empty() || c.where == Cursor::Before));
      RC_ASSERT(c.set->HasCurrent() == hasRow(c));
      if (!hasRow(c)) continue;
      const ModelRow& row = model_[c.row];
      RowSet& set = *c.set;
      RC_ASSERT(set.Bookmark() == Variant(static_cast<int>(c.row)));
      RC_ASSERT(set.State() == row.state());
      RC_ASSERT(set["Name"].IsAbsent() == !row.name);
      RC_ASSERT(set["Name"].Text() == row.name.value_or(""));
      RC_ASSERT(set["Sum"].Number() == row.sum.value_or(0));
      const Variant original = set["Sum"].OriginalValue();
      RC_ASSERT(original.IsAbsent() == !row.originalSum);
      if (row.originalSum) RC_ASSERT(original == Variant(*row.originalSum));
    }
  }

  // A second look at everything, with cursors of its own: the whole walk, and what would be saved.
  void checkWhole() {
    for (const Cursor& c : cursors_) {
      const KeepPlace keep(*c.set);
      std::vector<std::size_t> seen;
      ForEachRow(*c.set, [&](RowSet& r) {
        seen.push_back(static_cast<std::size_t>(r.Bookmark().AsInt()));
      });
      RC_ASSERT(seen == visible(c));
      seen.clear();
      for (c.set->MoveLast(); !c.set->Bof(); c.set->MovePrevious()) {
        seen.push_back(static_cast<std::size_t>(c.set->Bookmark().AsInt()));
      }
      std::reverse(seen.begin(), seen.end());
      RC_ASSERT(seen == visible(c));
    }
    const RowSetPtr changes = cursors_[0].set->Changes();
    std::size_t pending = 0;
    for (std::size_t i = 0; i < model_.size(); ++i) {
      if (!model_[i].pending()) continue;
      ++pending;
      changes->SetBookmark(static_cast<int>(i));
      RC_ASSERT(changes->State() == model_[i].state());
      RC_ASSERT((*changes)["Name"].Text() == model_[i].name.value_or(""));
      const Variant original = (*changes)["Name"].OriginalValue();
      RC_ASSERT(original.Show() == model_[i].originalName.value_or(""));
    }
    RC_ASSERT(changes->RecordCount() == pending);
    RC_ASSERT(cursors_[0].set->HasChanges() == (pending > 0));
  }

 private:
  std::size_t pick(std::size_t count) { return random_() % count; }
  bool hasRow(const Cursor& c) const { return c.where == Cursor::At && model_[c.row].live; }

  void edit(RowSet& set, ModelRow& row) {
    row.changed = true;
    if (pick(2) == 0) {
      row.name = kNames[pick(std::size(kNames))];
      set["Name"] = *row.name;
      return;
    }
    row.sum = static_cast<double>(pick(6));
    if (pick(6) == 0) row.sum.reset();
    set["Sum"] = row.sum ? Variant(*row.sum) : Variant(Null{});
  }

  std::vector<std::size_t> places(const Cursor& c) const {
    std::vector<std::size_t> all = c.order;
    for (std::size_t row = all.size(); row < model_.size(); ++row) all.push_back(row);
    return all;
  }

  std::vector<std::size_t> visible(const Cursor& c) const {
    std::vector<std::size_t> rows = places(c);
    std::erase_if(rows,
                  [&](std::size_t r) { return !model_[r].live || !c.filter->passes(model_[r]); });
    return rows;
  }

  // The next visible row from the place of the cursor, or from an end.
  void move(Cursor& c, int direction, int from) {
    const std::vector<std::size_t> all = places(c);
    auto at = static_cast<std::ptrdiff_t>(std::find(all.begin(), all.end(), c.row) - all.begin());
    if (from == Cursor::Before) at = -1;
    if (from == Cursor::After) at = static_cast<std::ptrdiff_t>(all.size());
    for (at += direction; at >= 0 && at < static_cast<std::ptrdiff_t>(all.size());
         at += direction) {
      const std::size_t row = all[static_cast<std::size_t>(at)];
      if (!model_[row].live || !c.filter->passes(model_[row])) continue;
      c.where = Cursor::At;
      c.row = row;
      return;
    }
    c.where = direction > 0 ? Cursor::After : Cursor::Before;
  }

  void first(Cursor& c) { move(c, 1, Cursor::Before); }

  void step(Cursor& c, int direction) {
    const bool atEnd = direction > 0 ? c.where == Cursor::After : c.where == Cursor::Before;
    const bool noWayBack = c.where != Cursor::At && visible(c).empty();
    const auto act = [&] { direction > 0 ? c.set->MoveNext() : c.set->MovePrevious(); };
    if (atEnd || noWayBack) {
      RC_ASSERT_THROWS_AS(act(), RowSetError);
      return;
    }
    act();
    move(c, direction, c.where);
  }

  void sort(Cursor& c) {
    const char* sorts[] = {"", "Sum", "Sum DESC,Name", "Name"};
    c.sort = sorts[pick(4)];
    c.set->SetSort(c.sort);
    c.order.clear();
    if (!c.sort.empty()) {
      for (std::size_t i = 0; i < model_.size(); ++i) c.order.push_back(i);
      const auto sum = [&](std::size_t r) { return model_[r].sum.value_or(-1); };
      const auto compareNames = [&](std::size_t a, std::size_t b) {
        const auto &x = model_[a].name, &y = model_[b].name;
        if (!x || !y) return int(x.has_value()) - int(y.has_value());
        return compareLithuanian(*x, *y);
      };
      std::stable_sort(c.order.begin(), c.order.end(), [&](std::size_t a, std::size_t b) {
        if (c.sort == "Name") return compareNames(a, b) < 0;
        if (c.sort == "Sum" || sum(a) != sum(b)) {
          return c.sort == "Sum" ? sum(a) < sum(b) : sum(a) > sum(b);
        }
        return compareNames(a, b) < 0;
      });
    }
    first(c);
  }

  void bookmark(Cursor& c) {
    if (model_.empty()) return;
    const std::size_t row = pick(model_.size());
    const auto act = [&] { c.set->SetBookmark(static_cast<int>(row)); };
    if (!model_[row].live) {
      RC_ASSERT_THROWS_AS(act(), RowSetError);
      return;
    }
    act();
    c.where = Cursor::At;
    c.row = row;
  }

  void cancelOrAccept(Cursor& c) {
    const bool accept = pick(2) == 0;
    if (accept) {
      c.set->AcceptChanges();
    } else {
      c.set->CancelBatch();
    }
    for (ModelRow& row : model_) {
      if (accept) {
        row.stored = row.live;
        row.originalName = row.live ? row.name : std::nullopt;
        row.originalSum = row.live ? row.sum : std::nullopt;
      } else {
        row.live = row.stored;
        row.name = row.originalName;
        row.sum = row.originalSum;
      }
      row.changed = false;
    }
    if (!accept) first(c);
  }

  Random& random_;
  std::vector<ModelRow> model_;
  std::vector<Cursor> cursors_;
};

void play(std::uint32_t seed, int stored, int steps) {
  Random random(seed);
  World world(random, stored);
  for (int i = 0; i < steps; ++i) {
    world.step();
    world.check();
    if (i % 16 == 0) world.checkWhole();
  }
  world.checkWhole();
}

RC_GTEST_PROP(RowSetModel, SmallSetsEqualAVector, ()) {
  play(*rc::gen::arbitrary<std::uint32_t>(), *rc::gen::inRange(0, 12), 200);
}

// Enough rows for whole words, blocks of originals and the key index.
RC_GTEST_PROP(RowSetModel, LongSetsEqualAVector, ()) {
  const auto runs = *rc::gen::inRange(0, 3);
  if (runs == 0) play(*rc::gen::arbitrary<std::uint32_t>(), *rc::gen::inRange(500, 700), 150);
}

// The index of a key builds itself after some scans and stays exact under edits.
TEST(RowSetModel, KeyFiltersStayExact) {
  const RowSetPtr rows = RowSet::make(kColumns);
  for (int i = 0; i < 2000; ++i) {
    rows->LoadRow();
    (*rows)["Name"] = "{k" + std::to_string(i % 700) + "}";
    (*rows)["Sum"] = i;
  }
  const RowSetPtr other = rows->Clone();
  Random random(20040209);
  for (int i = 0; i < 500; ++i) {
    const std::string key = "{K" + std::to_string(random() % 710) + "}";
    std::size_t want = 0;
    ForEachRow(*other, [&](RowSet& r) { want += equalNoCase(r["Name"].Text(), key); });
    rows->SetFilter("Name = '" + key + "'");
    ASSERT_EQ(rows->RecordCount(), want) << key << " in round " << i;
    ForEachRow(*rows, [&](RowSet& r) { ASSERT_TRUE(equalNoCase(r["Name"].Text(), key)); });
    other->MoveFirst();
    other->Move(static_cast<std::ptrdiff_t>(random() % other->RecordCount()));
    if (other->HasCurrent()) {
      if (i % 7 == 0) {
        other->Delete();
      } else {
        (*other)["Name"] = "{k" + std::to_string(random() % 705) + "}";
      }
    }
    if (i % 11 == 0) {
      other->AddNew();
      (*other)["Name"] = key;
    }
    if (i == 250) other->CancelBatch();
  }
}

}  // namespace
}  // namespace tolvex
