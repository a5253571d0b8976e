// What F1 tells about each screen. Texts for users stand here together, so that one eye can keep
// them alike: what the screen is for, what to mind, which keys help.
#pragma once

#include <span>
#include <string_view>

namespace tolvex {

struct HelpKey {
  const char* keys;
  const char* meaning;
};
struct HelpPage {
  const char* name;   // of the screen, or of a page that a menu asks for
  const char* title;  // "": that of the screen
  const char* text;   // paragraphs parted by line breaks
  std::span<const HelpKey> keys = {};
};

// Null when there is no page of that name.
const HelpPage* helpPage(std::string_view name);
std::span<const HelpPage> helpPages();
// Keys that work everywhere.
std::span<const HelpKey> generalKeys();

}  // namespace tolvex
