// What a save took away, kept in the protocol so that it can be put back: the header and the
// touched entries as they stood before, and which entries were added.
//
// Written as lines behind the readable ones of the protocol, each beginning with "=". Fields are
// parted by tabs.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/store/oper_change.h"

namespace tolvex::store {

struct SavedImage {
  int versionBefore = 0, versionAfter = 0;  // of the row; 0: the operation did not exist
  int epoch = 0;                            // of the books; account ids are good within one
  int undone = 0;                           // the row of the protocol that this save took back
  std::optional<HeaderRow> header;
  std::vector<EntryRow> entries;
  std::vector<int> added;
};

SavedImage imageOf(const OperChange& change, bool gone, int epoch, int undone);

// One line of the protocol: fields parted by tabs, whatever they hold.
std::string protocolLine(const std::vector<std::string>& fields);
std::vector<std::string> protocolFields(std::string_view line);

std::string imageText(const SavedImage& image);  // lines, the last without a break
// Nothing for the detail of a row that keeps no image.
std::optional<SavedImage> imageFrom(std::string_view detail);

}  // namespace tolvex::store
