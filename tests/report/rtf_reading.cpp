#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "tests/report/file_reading.h"

namespace tolvex::test {
namespace {

void appendUtf8(std::string& out, char32_t point) {
  if (point < 0x80) {
    out += static_cast<char>(point);
    return;
  }
  const int more = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
  constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
  out += static_cast<char>(kLead[more] | point >> (6 * more));
  for (int i = more - 1; i >= 0; --i) out += static_cast<char>(0x80 | (point >> (6 * i) & 0x3F));
}

bool isLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

// Takes a file apart as a word processor does: groups, words, text.
class RtfReader {
 public:
  explicit RtfReader(const std::string& text) : text_(text) {}

  RtfContents read() {
    found_.balanced = true;
    while (at_ < text_.size()) step();
    if (!groups_.empty()) found_.balanced = false;
    return std::move(found_);
  }

 private:
  enum class Into { Body, Footer, Nothing };

  void step() {
    const char c = text_[at_++];
    if (c == '{') {
      groups_.push_back(into_);
    } else if (c == '}') {
      if (groups_.empty()) {
        found_.balanced = false;
        return;
      }
      into_ = groups_.back();
      groups_.pop_back();
    } else if (c == '\\') {
      word();
    } else if (c != '\n' && c != '\r') {
      put(std::string(1, c));
    }
  }

  void word() {
    if (!isLetter(text_[at_])) {
      const char mark = text_[at_++];
      if (mark == '*')
        into_ = Into::Nothing;
      else
        put(std::string(1, mark));
      return;
    }
    const std::size_t start = at_;
    while (isLetter(text_[at_])) ++at_;
    const std::string name = text_.substr(start, at_ - start);
    char* end = nullptr;
    const long value = std::strtol(text_.c_str() + at_, &end, 10);
    if (text_[at_] == '-' || !std::isspace(static_cast<unsigned char>(text_[at_])))
      at_ = static_cast<std::size_t>(end - text_.c_str());
    if (text_[at_] == ' ') ++at_;
    apply(name, value);
  }

  void apply(const std::string& name, long value) {
    if (name == "fonttbl" || name == "colortbl" || name == "info" || name == "footerf") {
      into_ = Into::Nothing;
    } else if (name == "footer") {
      into_ = Into::Footer;
    } else if (name == "u") {
      unit(static_cast<std::uint16_t>(value));
      ++at_;  // the letter for readers that know no numbers
    } else if (name == "line") {
      put("\n");
    } else if (name == "tab") {
      put("\t");
    } else if (name == "trowd") {
      edges_ = 0;
      cells_.clear();
    } else if (name == "cellx") {
      ++edges_;
    } else if (name == "cell") {
      cells_.push_back(std::exchange(run_, {}));
    } else if (name == "row") {
      if (edges_ != cells_.size()) found_.balanced = false;
      found_.rows.push_back(cells_);
    } else if (name == "par" && into_ == Into::Body) {
      if (!run_.empty()) found_.paragraphs.push_back(std::exchange(run_, {}));
    }
  }

  void unit(std::uint16_t unit) {
    char32_t point = unit;
    if (unit >= 0xD800 && unit < 0xDC00) {
      high_ = unit;
      return;
    }
    if (unit >= 0xDC00 && unit < 0xE000)
      point = 0x10000 + ((high_ - 0xD800U) << 10) + (unit - 0xDC00U);
    std::string letter;
    appendUtf8(letter, point);
    put(letter);
  }

  void put(const std::string& letters) {
    if (into_ == Into::Body) run_ += letters;
    if (into_ == Into::Footer) found_.footer += letters;
  }

  const std::string& text_;
  std::size_t at_ = 0;
  std::vector<Into> groups_;
  Into into_ = Into::Body;
  std::size_t edges_ = 0;
  std::uint16_t high_ = 0;
  std::string run_;
  std::vector<std::string> cells_;
  RtfContents found_;
};

}  // namespace

RtfContents readRtf(const std::string& path) {
  const std::string text = readFile(path);
  return RtfReader(text).read();
}

}  // namespace tolvex::test
