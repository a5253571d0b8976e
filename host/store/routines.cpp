#include "host/store/routines.h"

#include <cctype>
#include <cmath>
#include <limits>
#include <map>

#include "framework/references.h"
#include "framework/text.h"

namespace tolvex::store {
namespace {

Refusal wrong(std::string_view routine, std::string_view parameters) {
  return {kWrongParameters,
          "Klaidingi parametrai: " + std::string(routine) + " (" + std::string(parameters) + ")"};
}

bool isWhole(double value) {
  return value == std::floor(value) && std::abs(value) <= std::numeric_limits<int>::max();
}

// "2004.01.10 12:30:00" and "2004-01-10" are days; an empty text is no date given.
bool isDay(const Argument& argument) {
  if (argument.kind() != Argument::Kind::Text) return false;
  return trim(argument.str()).empty() || DateTime::Parse(trim(argument.str()));
}

bool fits(char declared, const Argument& argument) {
  switch (std::tolower(static_cast<unsigned char>(declared))) {
    case 't':
      return argument.kind() == Argument::Kind::Text;
    case 'n':
      return argument.kind() == Argument::Kind::Number;
    case 'i':
      return argument.kind() == Argument::Kind::Number && isWhole(argument.real());
    case 'd':
      return isDay(argument);
    case 'r':
      return argument.kind() == Argument::Kind::Text || isWhole(argument.real());
    default:
      return false;
  }
}

Argument bareToken(std::string_view token) {
  const std::string text = trim(token);
  double number = 0;
  if (parsePlainNumber(text, number)) return Argument::number(number, text);
  return Argument::text(text);
}

}  // namespace

Argument Argument::text(std::string value) {
  Argument made;
  made.kind_ = Kind::Text;
  made.text_ = std::move(value);
  return made;
}

Argument Argument::number(double value, std::string asWritten) {
  Argument made;
  made.kind_ = Kind::Number;
  made.number_ = value;
  made.text_ = std::move(asWritten);
  return made;
}

int Argument::integer() const { return static_cast<int>(number_); }

int Argument::day() const {
  const auto day = DateTime::Parse(trim(text_));
  return day ? day->DayNumber() : 0;
}

std::optional<int> Argument::id() const {
  if (absent()) return std::nullopt;
  double number = number_;
  if (kind_ == Kind::Text && !parsePlainNumber(trim(text_), number)) {
    return isRef(text_) ? std::optional(idOf(text_)) : std::nullopt;
  }
  return isWhole(number) ? std::optional(static_cast<int>(number)) : std::nullopt;
}

std::vector<Argument> parseParameters(std::string_view text) {
  std::vector<Argument> out;
  const std::string whole = trim(text);
  if (whole.empty() || whole == "None") return out;
  std::string_view rest = whole;
  for (;;) {
    const std::size_t start = rest.find_first_not_of(' ');
    if (start != std::string_view::npos && rest[start] == '\'') {
      rest.remove_prefix(start + 1);
      // The text ends at the first quote behind which the list goes on or ends.
      std::size_t end = 0, after = 0;
      for (;; ++end) {
        end = rest.find('\'', end);
        if (end == std::string_view::npos) throw wrong("'", text);
        after = rest.find_first_not_of(' ', end + 1);
        if (after == std::string_view::npos || rest[after] == ',') break;
      }
      out.push_back(Argument::text(std::string(rest.substr(0, end))));
      if (after == std::string_view::npos) return out;
      rest.remove_prefix(after + 1);
    } else {
      const std::size_t comma = rest.find(',');
      out.push_back(bareToken(rest.substr(0, comma)));
      if (comma == std::string_view::npos) return out;
      rest.remove_prefix(comma + 1);
    }
  }
}

std::vector<Argument> argumentsFor(const Routine& routine, std::string_view kind,
                                   std::string_view parameters) {
  const std::string name = "D" + std::string(kind) + "_" + std::string(routine.name);
  std::vector<Argument> arguments;
  try {
    arguments = parseParameters(parameters);
  } catch (const Refusal&) {
    throw wrong(name, parameters);
  }
  if (routine.parameters == "*") return arguments;
  if (arguments.size() > routine.parameters.size()) throw wrong(name, parameters);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (!fits(routine.parameters[i], arguments[i])) throw wrong(name, parameters);
  }
  for (std::size_t i = arguments.size(); i < routine.parameters.size(); ++i) {
    bool optional = false;
    for (std::size_t k = 0; k <= i; ++k) {
      optional |= std::isupper(static_cast<unsigned char>(routine.parameters[k])) != 0;
    }
    if (!optional) throw wrong(name, parameters);
  }
  arguments.resize(routine.parameters.size());
  return arguments;
}

std::string_view familyOf(std::string_view kind) {
  const std::string_view code = kindOf(kind);
  const auto between = [&](std::string_view low, std::string_view high) {
    return code >= low && code <= high;
  };
  if (between("O0201501", "O0201506")) return "O0201500";
  if (between("O0200501", "O0200511")) return "O0200500";
  if (code == "O0200401") return "O0200400";
  if (code == "O0201701" || code == "O0001600") return "O0201700";
  return code;
}

const Routine* findRoutine(std::string_view kind, std::string_view method) {
  static const std::multimap<std::string, const Routine*, std::less<>> byName = [] {
    std::multimap<std::string, const Routine*, std::less<>> names;
    for (const Routine& routine : routineTable()) names.emplace(upper(routine.name), &routine);
    return names;
  }();
  const std::string code = upper(kindOf(kind));
  const std::string_view family = familyOf(code);
  const auto answers = [&](std::string_view kinds) {
    return kinds == "*" || (!code.empty() && kinds.find(code) != std::string_view::npos) ||
           (!family.empty() && kinds.find(family) != std::string_view::npos);
  };
  // Of one name those of the table's order stay in order.
  const auto [first, last] = byName.equal_range(upper(method));
  for (auto routine = first; routine != last; ++routine) {
    if (answers(routine->second->kinds)) return routine->second;
  }
  return nullptr;
}

Variant valueOf(const Statement& statement, int column, const ColumnSpec& spec) {
  if (statement.isNull(column)) return Null{};
  switch (spec.type) {
    case FieldType::SmallInt:
    case FieldType::Integer:
      return statement.whole(column);
    case FieldType::Double: {
      if (spec.size == 0) return statement.real(column);
      double unit = 1;
      for (int i = 0; i < spec.size; ++i) unit *= 10;
      return static_cast<double>(statement.integer(column)) / unit;
    }
    case FieldType::Date:
      return DateTime::FromDayNumber(statement.whole(column));
    case FieldType::Boolean:
      return statement.integer(column) != 0;
    case FieldType::Guid:
    case FieldType::Text:
    case FieldType::Nested:
      break;
  }
  return std::string(statement.text(column));
}

RowSetPtr rowsOf(Statement& statement, const ColumnSpec* columns, int count) {
  RowSetPtr rows = RowSet::make(columns, count);
  std::vector<Field> fields;
  for (int i = 0; i < count; ++i) fields.push_back(rows->Fields()[static_cast<std::size_t>(i)]);
  while (statement.step()) {
    rows->LoadRow();
    for (int i = 0; i < count; ++i) {
      fields[static_cast<std::size_t>(i)] = valueOf(statement, i, columns[i]);
    }
  }
  if (rows->RecordCount() > 0) rows->MoveFirst();
  return rows;
}

}  // namespace tolvex::store
