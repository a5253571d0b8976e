#include "framework/text_pool.h"

#include <algorithm>
#include <cstring>

#include "framework/case_fold.h"

namespace tolvex {

namespace {

constexpr std::size_t kGreatestChunk = 64 * 1024;
constexpr std::size_t kFirstSlots = 16;

std::uint64_t mix(std::uint64_t hash, std::uint64_t word) {
  hash = (hash ^ word) * 0x9E3779B97F4A7C15u;
  return hash ^ (hash >> 29);
}

std::uint64_t loadTail(const char* bytes, std::size_t size) {
  std::uint64_t word = 0;
  if (size != 0) std::memcpy(&word, bytes, size);  // an empty text may point nowhere
  return word;
}

std::uint32_t finish(std::uint64_t hash) {
  hash *= 0xBF58476D1CE4E5B9u;
  return static_cast<std::uint32_t>(hash >> 32);
}

std::uint32_t hashFolded(std::string_view folded) {
  std::uint64_t hash = folded.size();
  std::size_t i = 0;
  for (; i + 8 <= folded.size(); i += 8) hash = mix(hash, loadWord(folded.data() + i));
  return finish(mix(hash, loadTail(folded.data() + i, folded.size() - i)));
}

// The hash of the folded text; plain ASCII is folded on the way.
std::uint32_t hashNoCase(std::string_view text) {
  std::uint64_t hash = text.size();
  std::uint64_t seen = 0;
  std::size_t i = 0;
  for (; i + 8 <= text.size(); i += 8) {
    const std::uint64_t word = loadWord(text.data() + i);
    seen |= word;
    hash = mix(hash, upperWord(word));
  }
  const std::uint64_t tail = loadTail(text.data() + i, text.size() - i);
  if (isAsciiWord(seen | tail)) return finish(mix(hash, upperWord(tail)));
  return hashFolded(Folded(text).view());
}

bool sameNoCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  return a == b || Folded(a).view() == Folded(b).view();
}

}  // namespace

Symbol TextPool::findFolded(std::string_view text, std::uint32_t hash) const {
  if (slots_.empty()) return kEmptyText;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = hash & mask; slots_[at] != kEmptyText; at = (at + 1) & mask) {
    const Entry& entry = entries_[slots_[at] - kFirstText];
    if (entry.hash == hash && sameNoCase({entry.data, entry.size}, text)) return slots_[at];
  }
  return kEmptyText;
}

Symbol TextPool::findNoCase(std::string_view text) const {
  return findFolded(text, hashNoCase(text));
}

Symbol TextPool::intern(std::string_view text) {
  const std::uint32_t hash = hashNoCase(text);
  const Symbol known = findFolded(text, hash);
  if (known != kEmptyText) {
    Symbol spelling = known;
    do {
      if (this->text(spelling) == text) return spelling;
      spelling = nextSpelling(spelling);
    } while (spelling != known);
  }
  const Symbol added = end();
  entries_.push_back({keep(text), static_cast<std::uint32_t>(text.size()), hash});
  if (known != kEmptyText) {
    spellings_[added] = nextSpelling(known);
    spellings_[known] = added;
    return added;
  }
  if ((distinct_ + 1) * 3 > slots_.size() * 2) grow();
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  while (slots_[at] != kEmptyText) at = (at + 1) & mask;
  slots_[at] = added;
  ++distinct_;
  return added;
}

const char* TextPool::keep(std::string_view text) {
  if (text.empty()) return "";
  if (text.size() > room_) {
    room_ = std::max(chunkSize_, text.size());
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(room_));
    free_ = chunks_.back().get();
    kept_ += room_;
    chunkSize_ = std::min(chunkSize_ * 2, kGreatestChunk);
  }
  char* const place = free_;
  std::memcpy(place, text.data(), text.size());
  free_ += text.size();
  room_ -= text.size();
  return place;
}

void TextPool::grow() {
  std::vector<Symbol> old(slots_.empty() ? kFirstSlots : slots_.size() * 2, kEmptyText);
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const Symbol symbol : old) {
    if (symbol == kEmptyText) continue;
    std::size_t at = entries_[symbol - kFirstText].hash & mask;
    while (slots_[at] != kEmptyText) at = (at + 1) & mask;
    slots_[at] = symbol;
  }
}

std::size_t TextPool::bytes() const {
  return sizeof *this + kept_ + entries_.capacity() * sizeof(Entry) +
         slots_.capacity() * sizeof(Symbol) + spellings_.size() * 4 * sizeof(void*);
}

}  // namespace tolvex
