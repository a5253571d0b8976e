#include "host/cards/rate_text.h"

#include <algorithm>
#include <map>

#include "framework/rounding.h"
#include "framework/text.h"
#include "platform/numbers.h"

namespace tolvex {
namespace {

constexpr int kRateDecimals = 9;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::vector<std::string> parted(const std::string& line, std::string_view marks) {
  std::vector<std::string> cells(1);
  for (const char c : line) {
    if (marks.find(c) == std::string_view::npos)
      cells.back() += c;
    else
      cells.emplace_back();
  }
  for (std::string& cell : cells) cell = trim(cell);
  std::erase(cells, std::string());
  return cells;
}

// A comma parts cells only where nothing else does; then the rest behind the code is the rate.
std::vector<std::string> cellsOf(const std::string& line) {
  for (const std::string_view marks : {"\t", ";", " "})
    if (line.find_first_of(marks) != std::string::npos) return parted(line, marks);
  std::vector<std::string> cells;
  std::string rest = line;
  for (int i = 0; i < 2; ++i) {
    const auto comma = rest.find(',');
    if (comma == std::string::npos) break;
    cells.push_back(rest.substr(0, comma));
    rest.erase(0, comma + 1);
  }
  cells.push_back(rest);
  return cells;
}

std::optional<DateTime> dateIn(const std::string& cell) {
  if (const auto date = DateTime::Parse(cell)) return date->Date();
  double number = 0;
  if (cell.size() != 8 || !std::all_of(cell.begin(), cell.end(), isDigit) ||
      !parsePlainNumber(cell, number)) {
    return std::nullopt;
  }
  return DateTime::Parse(cell.substr(0, 4) + "." + cell.substr(4, 2) + "." + cell.substr(6));
}

bool looksLikeDate(const std::string& cell) {
  const auto marks =
      std::count_if(cell.begin(), cell.end(), [](char c) { return c == '.' || c == '-'; });
  return marks == 2 && isDigit(cell.front());
}

bool isLetters(const std::string& cell) {
  return std::all_of(cell.begin(), cell.end(),
                     [](char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); });
}

struct Cells {
  std::optional<DateTime> day;
  std::string code;
  std::vector<double> numbers;
  std::string fault;
};

Cells sorted(const std::string& line) {
  Cells found;
  for (const std::string& cell : cellsOf(line)) {
    if (const auto date = dateIn(cell); date && !found.day) {
      found.day = date;
    } else if (looksLikeDate(cell)) {
      found.fault = "Klaidinga data: " + cell;
    } else if (isNumeric(cell)) {
      found.numbers.push_back(TextToDouble(cell));
    } else if (cell.size() == 3 && isLetters(cell) && found.code.empty()) {
      found.code = upper(cell);
    } else if (found.fault.empty()) {
      found.fault = "Nesuprantama: " + cell;
    }
  }
  return found;
}

std::string faultOf(const Cells& cells, const RateLine& line, const RateTextRules& rules) {
  if (!cells.fault.empty()) return cells.fault;
  if (!cells.day && !rules.day) return "Nenurodyta data";
  if (line.code.empty()) return "Nenurodyta valiuta";
  if (std::ranges::find(rules.codes, line.code) == rules.codes.end())
    return "Nežinoma valiuta: " + line.code;
  if (cells.numbers.empty()) return "Nenurodytas kursas";
  if (cells.numbers.size() > 2) return "Per daug skaičių";
  return line.rate > 0 ? std::string() : "Kursas turi būti didesnis už nulį";
}

}  // namespace

std::vector<RateLine> readRateText(std::string_view text, const RateTextRules& rules) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::vector<RateLine> lines;
  std::map<std::pair<DateTime, std::string>, int> seen;
  int number = 0;
  for (std::string raw : split(text, '\n')) {
    ++number;
    raw = trim(replaceAll(std::move(raw), "\r", ""));
    if (raw.find_first_not_of(" \t;") == std::string::npos) continue;
    const bool heading = lines.empty() && std::none_of(raw.begin(), raw.end(), isDigit);
    if (heading) continue;
    const Cells cells = sorted(raw);
    RateLine& line = lines.emplace_back();
    line.number = number;
    line.text = raw;
    line.day = cells.day.value_or(rules.day.value_or(DateTime()));
    line.code = cells.code.empty() ? rules.code : cells.code;
    if (cells.numbers.size() == 1) line.rate = cells.numbers[0];
    if (cells.numbers.size() == 2 && cells.numbers[0] > 0)
      line.rate = roundHalfEven(cells.numbers[1] / cells.numbers[0], kRateDecimals);
    line.fault = faultOf(cells, line, rules);
    if (!line.fault.empty()) continue;
    const auto [first, fresh] = seen.try_emplace({line.day, line.code}, number);
    if (!fresh) line.fault = "Jau yra " + std::to_string(first->second) + " eilutėje";
  }
  return lines;
}

}  // namespace tolvex
