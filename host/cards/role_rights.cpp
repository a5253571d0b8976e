#include "host/cards/role_rights.h"

#include <map>

#include "framework/parameters.h"
#include "framework/references.h"

namespace tolvex {
namespace {

constexpr const char* kRoles = "O0000830";
constexpr const char* kFlagFields[kFlagCount] = {"View", "Delete", "Edit", "Create", "Admin"};
constexpr int kView = 0;
constexpr int kModule = 10, kOneLevel = 1;
constexpr const char* kIndent = "\u2003";  // an em space, so that no view trims it

std::vector<RightLine> linesOf(RowSet& set) {
  std::vector<RightLine> lines;
  std::map<std::string, int> depths;
  ForEachRow(set, [&](RowSet& row) {
    RightLine& line = lines.emplace_back();
    line.component = row["Component"].Text();
    line.parent = row["Parent"].Text();
    line.caption = row["Caption"].Text();
    line.kind = static_cast<int>(row["Kind"].Number());
    line.granted = row["Granted"].Number() != 0;
    for (int i = 0; i < kFlagCount; ++i) line.flags[i] = row[kFlagFields[i]].Number() != 0;
    const auto above = depths.find(line.parent);
    line.depth = above == depths.end() ? 0 : above->second + 1;
    depths[line.component] = line.depth;
  });
  return lines;
}

void assign(Field field, bool on) {
  if ((field.Number() != 0) != on) field.SetValue(on ? 1 : 0);
}

std::size_t lineOf(const std::vector<RightLine>& lines, const std::string& component) {
  std::size_t at = 0;
  while (at < lines.size() && lines[at].component != component) ++at;
  return at;
}

void setOne(RightLine& line, int flag, bool on) {
  line.granted = true;
  for (int i = 0; i < kFlagCount; ++i) {
    const bool together = line.kind == kOneLevel || i == flag;
    const bool needed = on && i == kView;       // nobody changes what he may not see
    const bool useless = !on && flag == kView;  // nor keeps a right over it
    if (together || needed || useless) line.flags[i] = on;
  }
}

}  // namespace

bool inherits(const RightLine& line) {
  return line.parent == "CBROperRights" || line.parent == "CBROperGroupRights";
}

bool effective(const std::vector<RightLine>& lines, std::size_t at, int flag) {
  const RightLine& line = lines[at];
  if (line.granted || !inherits(line)) return line.granted && line.flags[flag];
  const std::size_t above = lineOf(lines, line.parent);
  return above < lines.size() && lines[above].granted && lines[above].flags[flag];
}

void setFlag(std::vector<RightLine>& lines, std::size_t at, int flag, bool on) {
  setOne(lines[at], flag, on);
  if (lines[at].kind != kModule) return;
  for (std::size_t i = at + 1; i < lines.size() && lines[i].depth > lines[at].depth; ++i) {
    if (!inherits(lines[i]) || lines[i].granted) setOne(lines[i], flag, on);
  }
}

void setOwn(std::vector<RightLine>& lines, std::size_t at, bool own) {
  bool now[kFlagCount];
  for (int i = 0; i < kFlagCount; ++i) now[i] = own && effective(lines, at, i);
  lines[at].granted = own;
  for (int i = 0; i < kFlagCount; ++i) lines[at].flags[i] = now[i];
}

RoleRights::RoleRights(CardForm& form)
    : lvwRights(&form, "lvwRights",
                {{"Teisė", 44, ui::Align::Left, true},
                 {"Peržiūra", 9, ui::Align::Center},
                 {"Naikinimas", 10, ui::Align::Center},
                 {"Keitimas", 9, ui::Align::Center},
                 {"Kūrimas", 9, ui::Align::Center},
                 {"Teisių suteikimas", 16, ui::Align::Center}}),
      chkOwn(&form, "chkOwn", "&Atskirai nuo bendros teisės"),
      chkView(&form, "chkView", "&Peržiūra"),
      chkDelete(&form, "chkDelete", "&Naikinimas"),
      chkEdit(&form, "chkEdit", "&Keitimas"),
      chkCreate(&form, "chkCreate", "Kū&rimas"),
      chkAdmin(&form, "chkAdmin", "&Teisių suteikimas"),
      cmdLike(&form, "cmdLike", "Kaip kitos rolės…"),
      form_(form),
      checks_{&chkView, &chkDelete, &chkEdit, &chkCreate, &chkAdmin} {
  lvwRights.filterBox = true;
  lvwRights.onChange = [this] { showCurrent(); };
  lvwRights.onActivate = [this] {
    if (chkView.usable()) form_.setFocus(chkView);
  };
  for (int i = 0; i < kFlagCount; ++i) checks_[i]->onChange = [this, i] { tick(i); };
  chkOwn.onChange = [this] {
    const auto at = static_cast<std::size_t>(lvwRights.current());
    setOwn(lines_, at, chkOwn.on());
    form_.touch();
    fill();
  };
  cmdLike.tip = "Paimti visas kitos rolės teises";
  cmdLike.onClick = [this] { takeFrom(); };
}

void RoleRights::shown() {
  read(form_.isStored() ? idOf(form_.object().OIDR()) : 0);
  form_.SSCNew.enabled = form_.SSCNew.enabled() && form_.rights().admin != 0;
  cmdLike.enabled = !form_.readOnly && set_ != nullptr;
  fill();
}

// The rights of a role; a failure has been shown and leaves the list empty.
void RoleRights::read(int role) {
  const MethodResult answer =
      form_.object().Properties("RoleRights", Parameters().number(role).str());
  set_ = answer.Code == kDone && answer.Value.IsRows() ? answer.Value.AsRows() : nullptr;
  lines_ = set_ ? linesOf(*set_) : std::vector<RightLine>();
}

void RoleRights::fill() {
  std::vector<ui::Row> rows;
  for (std::size_t at = 0; at < lines_.size(); ++at) {
    const RightLine& line = lines_[at];
    ui::Row& row = rows.emplace_back();
    row.key = line.component;
    row.bold = line.kind == kModule;
    std::string indent;
    for (int i = 0; i < line.depth; ++i) indent += kIndent;
    row.cells.emplace_back(indent + line.caption);
    for (int i = 0; i < kFlagCount; ++i)
      row.cells.emplace_back(effective(lines_, at, i) ? "✓" : "–");
    if (inherits(line) && !line.granted) {
      row.mark = ui::Mark::Grey;
      row.hint = "Kaip bendra teisė";
    }
  }
  const int current = lvwRights.current();
  lvwRights.setRows(std::move(rows));
  const int count = static_cast<int>(lines_.size());
  lvwRights.current = count == 0 ? -1 : std::clamp(current, 0, count - 1);
  showCurrent();
}

void RoleRights::showCurrent() {
  const int current = lvwRights.current();
  const bool some = current >= 0 && current < static_cast<int>(lines_.size());
  const bool may = some && !form_.readOnly;
  const auto at = static_cast<std::size_t>(some ? current : 0);
  const bool ofGroup = some && inherits(lines_[at]);
  const bool own = some && (!ofGroup || lines_[at].granted);
  chkOwn.enabled = may && ofGroup;
  chkOwn.on = ofGroup && own;
  for (int i = 0; i < kFlagCount; ++i) {
    checks_[i]->on = some && effective(lines_, at, i);
    checks_[i]->enabled = may && own;
  }
}

void RoleRights::tick(int flag) {
  const auto at = static_cast<std::size_t>(lvwRights.current());
  setFlag(lines_, at, flag, checks_[flag]->on());
  form_.touch();
  fill();
}

void RoleRights::takeFrom() {
  PickRequest request;
  request.kinds = {kRoles};
  request.prompt = "Pasirinkite rolę";
  const auto picked = form_.host().pickers().pick(request);
  if (!picked || !isRef(picked->reference)) return;
  const MethodResult answer =
      form_.object().Properties("RoleRights", Parameters().number(idOf(picked->reference)).str());
  if (answer.Code != kDone || !answer.Value.IsRows()) return;
  for (const RightLine& theirs : linesOf(*answer.Value.AsRows())) {
    const std::size_t at = lineOf(lines_, theirs.component);
    if (at < lines_.size()) lines_[at] = theirs;
  }
  form_.touch();
  fill();
}

bool RoleRights::maySave() {
  if (!set_) return true;
  ForEachRow(*set_, [&](RowSet& row) {
    const std::size_t at = lineOf(lines_, std::string(row["Component"].Text()));
    if (at == lines_.size()) return;
    const RightLine& line = lines_[at];
    assign(row["Granted"], line.granted);
    for (int i = 0; i < kFlagCount; ++i) assign(row[kFlagFields[i]], line.flags[i]);
  });
  return true;
}

}  // namespace tolvex
