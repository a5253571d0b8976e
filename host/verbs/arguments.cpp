#include "host/verbs/arguments.h"

#include <algorithm>

namespace tolvex::verbs {
namespace {

bool isCount(const std::string& word) {
  return !word.empty() && word.size() < 10 &&
         std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace

std::string Arguments::value(const std::string& option, const std::string& fallback) const {
  const auto found = options.find(option);
  return found == options.end() ? fallback : found->second;
}

Arguments parse(const std::vector<std::string>& words,
                const std::map<std::string, std::string>& known) {
  Arguments result;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!words[i].starts_with("--")) {
      result.words.push_back(words[i]);
      continue;
    }
    const auto option = known.find(words[i]);
    if (option == known.end()) throw UsageError("Nežinoma parinktis: " + words[i]);
    if (result.has(words[i])) throw UsageError("Parinktis nurodyta du kartus: " + words[i]);
    const bool follows = i + 1 < words.size() && !words[i + 1].starts_with("--");
    const bool takes =
        option->second == "yes" || (option->second == "maybe" && follows && isCount(words[i + 1]));
    if (takes && !follows) throw UsageError("Parinkčiai trūksta reikšmės: " + words[i]);
    result.options[words[i]] = takes ? words[i + 1] : "";
    if (takes) ++i;
  }
  return result;
}

void wordCount(const Arguments& arguments, std::size_t least, std::size_t most) {
  if (arguments.words.size() < least) throw UsageError("Trūksta argumentų.");
  if (arguments.words.size() > most)
    throw UsageError("Per daug argumentų: " + arguments.words[most]);
}

}  // namespace tolvex::verbs
