#include "host/script/run_files.h"

#include <algorithm>
#include <filesystem>

#include "host/script/script_engine.h"

namespace tolvex::script {
namespace {

namespace fs = std::filesystem;

fs::path pathOf(const std::string& text) { return std::u8string(text.begin(), text.end()); }

std::string textOf(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

bool isBelow(const fs::path& path, const fs::path& folder) {
  const auto [rest, other] = std::mismatch(folder.begin(), folder.end(), path.begin(), path.end());
  return rest == folder.end() && other != path.end();
}

}  // namespace

std::string placeInRun(const std::string& path) {
  std::error_code error;
  const fs::path folder = fs::canonical(fs::current_path(error), error);
  const fs::path place = error ? fs::path() : fs::weakly_canonical(folder / pathOf(path), error);
  if (path.empty() || error || !isBelow(place, folder))
    throw ScriptError("a script writes below its own folder only: " + path);
  fs::create_directories(place.parent_path(), error);
  if (error) throw ScriptError("no such folder: " + textOf(place.parent_path()));
  return textOf(place);
}

std::optional<ReportFormat> formatOf(const std::string& path) {
  static const std::pair<const char*, ReportFormat> kEndings[] = {
      {".pdf", ReportFormat::Pdf}, {".xlsx", ReportFormat::Excel}, {".rtf", ReportFormat::Rtf}};
  const std::string ending = textOf(pathOf(path).extension());
  for (const auto& [known, format] : kEndings)
    if (ending == known) return format;
  return std::nullopt;
}

}  // namespace tolvex::script
