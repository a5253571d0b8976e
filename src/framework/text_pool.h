// TextPool: every distinct text of a record set and its nested sets is kept once.
//
// A text is a 32-bit symbol. All spellings that are equal without case form a ring, so one look-up
// finds them all. Texts never move and never go: a view of one is valid as long as the pool.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tolvex {

using Symbol = std::uint32_t;

// The two absent states stand below all texts.
inline constexpr Symbol kEmptyText = 0;
inline constexpr Symbol kNullText = 1;
inline constexpr Symbol kFirstText = 2;

class TextPool {
 public:
  TextPool() = default;
  TextPool(const TextPool&) = delete;
  TextPool& operator=(const TextPool&) = delete;

  Symbol intern(std::string_view text);
  // Some spelling equal to `text` without case, or kEmptyText when there is none.
  Symbol findNoCase(std::string_view text) const;
  // The next spelling of the same text; a text with one spelling is its own next.
  Symbol nextSpelling(Symbol symbol) const {
    if (spellings_.empty()) return symbol;
    const auto found = spellings_.find(symbol);
    return found == spellings_.end() ? symbol : found->second;
  }
  // "" for the absent states.
  std::string_view text(Symbol symbol) const {
    if (symbol < kFirstText) return {};
    const Entry& entry = entries_[symbol - kFirstText];
    return {entry.data, entry.size};
  }
  // One above the greatest symbol; grows with every new text.
  Symbol end() const { return static_cast<Symbol>(entries_.size()) + kFirstText; }
  std::size_t bytes() const;

 private:
  struct Entry {
    const char* data;
    std::uint32_t size;
    std::uint32_t hash;  // of the folded text
  };
  Symbol findFolded(std::string_view text, std::uint32_t hash) const;
  const char* keep(std::string_view text);
  void grow();

  std::vector<Entry> entries_;
  std::unordered_map<Symbol, Symbol> spellings_;  // the next one, where there are several
  std::vector<Symbol> slots_;  // open addressing: one spelling of each folded text, 0 free
  std::vector<std::unique_ptr<char[]>> chunks_;
  char* free_ = nullptr;
  std::size_t room_ = 0;
  std::size_t chunkSize_ = 256;
  std::size_t distinct_ = 0;
  std::size_t kept_ = 0;
};

}  // namespace tolvex
