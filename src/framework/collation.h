// The order of Lithuanian texts as a key: keys compare by bytes as the texts do in the alphabet.
#pragma once

#include <string>
#include <string_view>

namespace tolvex {

// Two texts that differ only in case have the same key. The marks of ą, ę, ė, į, y, ų and ū stand
// behind all base letters, so they decide last; č, š and ž are letters of their own.
std::string collationKey(std::string_view text);

}  // namespace tolvex
