#include "host/report/xlsx_check.h"

#include <zip.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace tolvex::report {
namespace {

struct Closer {
  void operator()(zip_t* zip) const { zip_discard(zip); }
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using Zip = std::unique_ptr<zip_t, Closer>;
using ZipFile = std::unique_ptr<zip_file_t, Closer>;

constexpr std::string_view kRow = "<row ";
constexpr std::size_t kPiece = 1 << 18, kEnd = 64;

int countOf(std::string_view what, std::string_view text) {
  int count = 0;
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string_view::npos; ++at) ++count;
  return count;
}

// "worksheet" of "<?xml …?>\n<worksheet xmlns=…".
std::string rootOf(std::string_view text) {
  std::size_t at = 0;
  do at = text.find('<', at);
  while (at != std::string_view::npos && text.substr(++at, 1) == "?");
  if (at == std::string_view::npos) return {};
  return std::string(text.substr(at, text.find_first_of(" />\n", at) - at));
}

// Reads a part piece by piece. False when it is damaged or ends too early.
bool readPart(zip_t* zip, zip_uint64_t index, int& rows) {
  const ZipFile file(zip_fopen_index(zip, index, 0));
  if (!file) return false;
  std::vector<char> piece(kPiece);
  std::string root, end;  // the end of what was read: a mark may lie across two pieces
  bool first = true;
  for (;;) {
    const zip_int64_t count = zip_fread(file.get(), piece.data(), piece.size());
    if (count < 0) return false;
    if (count == 0) break;
    const std::string_view read(piece.data(), static_cast<std::size_t>(count));
    if (std::exchange(first, false)) root = rootOf(read);
    const std::string seam = end.substr(end.size() - std::min(end.size(), kRow.size() - 1)) +
                             std::string(read.substr(0, kRow.size() - 1));
    rows += countOf(kRow, read) + countOf(kRow, seam);
    end += read.substr(read.size() - std::min(read.size(), kEnd));
    end.erase(0, end.size() - std::min(end.size(), kEnd));
  }
  while (!end.empty() && (end.back() == '\n' || end.back() == ' ')) end.pop_back();
  return !root.empty() && end.ends_with("</" + root + ">");
}

}  // namespace

bool isWholeXlsx(const std::string& path, int rows) {
  int error = 0;
  const Zip zip(zip_open(path.c_str(), ZIP_RDONLY, &error));
  if (!zip) return false;
  int found = 0;
  const zip_int64_t parts = zip_get_num_entries(zip.get(), 0);
  for (zip_int64_t part = 0; part < parts; ++part)
    if (!readPart(zip.get(), static_cast<zip_uint64_t>(part), found)) return false;
  return parts > 0 && found == rows;
}

}  // namespace tolvex::report
