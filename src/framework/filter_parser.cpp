// The filter grammar:
//
//   filter     = term { OR term }
//   term       = group | "(" group ")"
//   group      = comparison { AND comparison }
//   comparison = column ( "=" | "<>" | "<" | ">" | "<=" | ">=" | LIKE ) literal
//   literal    = number | "'" characters without a quote "'"
//
// Nothing is escaped, so a value with a quote in it makes the filter unreadable, never a wider one.
#include <algorithm>

#include "framework/predicate.h"
#include "framework/text.h"

namespace tolvex {

namespace {

constexpr std::size_t kUsualConditions = 4;

struct Literal {
  std::string_view text;
  bool isQuoted;
  bool isNumber;
  double number;
};

bool isWordByte(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}

class FilterParser {
 public:
  FilterParser(std::string_view filter, const Schema& schema) : filter_(filter), schema_(schema) {}

  std::vector<Condition> parse() {
    conditions_.reserve(kUsualConditions);
    do {
      parseTerm();
    } while (takeWord("OR"));
    skipBlanks();
    if (at_ < filter_.size()) fail();
    return std::move(conditions_);
  }

 private:
  [[noreturn]] void fail() const {
    throw RowSetError(RowSetError::BadFilter, "Klaidingas filtras: " + std::string(filter_));
  }

  void skipBlanks() {
    while (at_ < filter_.size() && filter_[at_] == ' ') ++at_;
  }

  char peek() const { return at_ < filter_.size() ? filter_[at_] : '\0'; }

  bool takeSign(char sign) {
    skipBlanks();
    if (peek() != sign) return false;
    ++at_;
    return true;
  }

  std::string_view wordAhead() const {
    std::size_t end = at_;
    while (end < filter_.size() && isWordByte(filter_[end])) ++end;
    return filter_.substr(at_, end - at_);
  }

  bool takeWord(std::string_view word) {  // written in capitals
    skipBlanks();
    const std::string_view ahead = wordAhead();
    const auto same = [](char c, char capital) { return c == capital || c == capital + 0x20; };
    if (!std::equal(ahead.begin(), ahead.end(), word.begin(), word.end(), same)) return false;
    at_ += ahead.size();
    return true;
  }

  void parseTerm() {
    const bool inParentheses = takeSign('(');
    bool startsGroup = true;
    do {
      parseComparison(startsGroup);
      startsGroup = false;
    } while (takeWord("AND"));
    if (inParentheses && !takeSign(')')) fail();
  }

  void parseComparison(bool startsGroup) {
    skipBlanks();
    const std::string_view name = wordAhead();
    if (name.empty()) fail();
    at_ += name.size();
    const int column = schema_.find(name);
    if (column < 0) {
      throw RowSetError(RowSetError::UnknownColumn, "Nėra stulpelio \"" + std::string(name) +
                                                        "\" filtre: " + std::string(filter_));
    }
    const Compare compare = takeCompare();
    const Literal literal = takeLiteral();
    conditions_.push_back({column, compare, startsGroup, false});
    switch (schema_[std::size_t(column)].kind) {
      case CellKind::Text:
        bindText(conditions_.back(), literal);
        break;
      case CellKind::Number:
        bindNumber(conditions_.back(), literal);
        break;
      case CellKind::Nested:
        fail();
    }
  }

  Compare takeCompare() {
    if (takeWord("LIKE")) return Compare::Like;
    if (takeSign('=')) return Compare::Equal;
    if (takeSign('<')) {
      if (peek() == '>') return ++at_, Compare::NotEqual;
      if (peek() == '=') return ++at_, Compare::LessOrEqual;
      return Compare::Less;
    }
    if (takeSign('>')) {
      if (peek() == '=') return ++at_, Compare::GreaterOrEqual;
      return Compare::Greater;
    }
    fail();
  }

  Literal takeLiteral() {
    Literal literal{};
    if (takeSign('\'')) {
      const std::size_t end = filter_.find('\'', at_);
      if (end == std::string_view::npos) fail();
      literal.text = filter_.substr(at_, end - at_);
      literal.isQuoted = true;
      at_ = end + 1;
    } else {
      std::size_t end = at_;
      while (end < filter_.size() && filter_[end] != ' ' && filter_[end] != ')') ++end;
      literal.text = filter_.substr(at_, end - at_);
      literal.isNumber = parsePlainNumber(literal.text, literal.number);
      if (!literal.isNumber) fail();
      at_ = end;
    }
    if (at_ < filter_.size() && peek() != ' ' && peek() != ')') fail();
    return literal;
  }

  void bindText(Condition& condition, Literal literal) const {
    condition.isText = true;
    condition.text = literal.text;
    switch (condition.compare) {
      case Compare::Equal:
      case Compare::NotEqual:
        return;
      case Compare::Like:
        if (literal.text.find_first_of("%*") == std::string_view::npos) {
          condition.compare = Compare::Equal;
        } else {
          condition.pattern.emplace_back(literal.text);
        }
        return;
      default:
        condition.text = upper(literal.text);
    }
  }

  void bindNumber(Condition& condition, Literal literal) const {
    if (condition.compare == Compare::Like) fail();
    if (schema_[std::size_t(condition.column)].type == FieldType::Date) {
      const auto moment = literal.isQuoted ? DateTime::Parse(literal.text) : std::nullopt;
      if (!moment) fail();
      condition.number = static_cast<double>(moment->Seconds());
    } else if (literal.isNumber) {
      condition.number = literal.number;
    } else if (!parsePlainNumber(literal.text, condition.number)) {
      fail();
    }
  }

  std::string_view filter_;
  const Schema& schema_;
  std::size_t at_ = 0;
  std::vector<Condition> conditions_;
};

}  // namespace

Predicate parseFilter(std::string_view filter, const Schema& schema) {
  return Predicate(FilterParser(filter, schema).parse());
}

}  // namespace tolvex
