// References: the text identity of an object, eight characters of kind and the decimal id behind
// them ("O02015005"). A text of at most eight characters names a kind or nothing, never an object.
#pragma once

#include <cstdlib>
#include <string>
#include <string_view>

namespace tolvex {

inline constexpr std::size_t kKindLength = 8;

inline bool isRef(std::string_view text) { return text.size() > kKindLength; }
inline bool isNew(std::string_view oid) { return oid.size() < kKindLength + 1; }
inline std::string_view kindOf(std::string_view ref) { return ref.substr(0, kKindLength); }
inline std::string_view idTextOf(std::string_view ref) {
  return isRef(ref) ? ref.substr(kKindLength) : std::string_view{};
}
// The id behind the kind; 0 when there is none.
inline int idOf(std::string_view ref) {
  return isRef(ref) ? std::atoi(std::string(idTextOf(ref)).c_str()) : 0;
}
inline std::string refOf(std::string_view kind, int id) {
  return std::string(kind.substr(0, kKindLength)) + std::to_string(id);
}

}  // namespace tolvex
