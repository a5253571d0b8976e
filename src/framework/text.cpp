#include "framework/text.h"

#include <charconv>
#include <cmath>

#include "framework/case_fold.h"

namespace tolvex {

namespace {

bool isLead(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

// Where character number `count` (from 0) begins, or the size of the text.
std::size_t offsetOf(std::string_view text, std::size_t count) {
  std::size_t at = 0;
  for (; at < text.size(); ++at) {
    if (isLead(text[at]) && count-- == 0) break;
  }
  return at;
}

}  // namespace

std::size_t length(std::string_view text) {
  std::size_t count = 0;
  for (const char byte : text) count += isLead(byte);
  return count;
}

std::string left(std::string_view text, std::size_t count) {
  return std::string(text.substr(0, offsetOf(text, count)));
}

std::string mid(std::string_view text, std::size_t from1, std::size_t count) {
  const std::string_view rest = text.substr(offsetOf(text, from1 > 0 ? from1 - 1 : 0));
  return count == std::string::npos ? std::string(rest) : left(rest, count);
}

std::string CutToChars(std::string_view text, std::size_t count) { return left(text, count); }

std::string trimLeft(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string() : std::string(text.substr(first));
}

std::string trimRight(std::string_view text) {
  return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

std::string trim(std::string_view text) { return trimLeft(trimRight(text)); }

std::string upper(std::string_view text) {
  std::string out(text.size(), '\0');
  foldCase(text, out.data());
  return out;
}

bool equalNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && Folded(a).view() == Folded(b).view();
}

bool startsWithNoCase(std::string_view text, std::string_view prefix) {
  return text.size() >= prefix.size() && equalNoCase(text.substr(0, prefix.size()), prefix);
}

bool containsNoCase(std::string_view text, std::string_view part) {
  return Folded(text).view().find(Folded(part).view()) != std::string_view::npos;
}

std::vector<std::string> split(std::string_view text, char mark) {
  std::vector<std::string> parts;
  for (;;) {
    const std::size_t end = text.find(mark);
    parts.emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::string join(const std::vector<std::string>& parts, std::string_view mark) {
  std::string out;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) out += mark;
    out += parts[i];
  }
  return out;
}

std::string replaceAll(std::string text, std::string_view what, std::string_view with) {
  if (what.empty()) return text;
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size()) {
    text.replace(at, what.size(), with);
  }
  return text;
}

std::string plainNumber(double value) {
  if (value == 0) return "0";
  constexpr double kFirstWithExponent = 1e15;
  const auto form = std::fabs(value) < kFirstWithExponent ? std::chars_format::fixed
                                                          : std::chars_format::scientific;
  char buffer[400];  // the smallest double has 343 characters in fixed form
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, form).ptr;
  return std::string(buffer, end);
}

bool parsePlainNumber(std::string_view text, double& value) {
  const std::size_t sign = !text.empty() && text[0] == '-' ? 1 : 0;
  const char first = text.size() > sign ? text[sign] : '\0';
  if (first != '.' && (first < '0' || first > '9')) return false;  // also bars "inf" and "nan"
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace tolvex
