#include "operations/screen/addressee_lines.h"

#include <algorithm>

#include "framework/references.h"
#include "framework/text.h"
#include "operations/entries.h"

namespace tolvex {
namespace {

// Any sign but 1 is the credit side.
bool onSide(RowSet& rows, int sign) { return (rows["Sign"].Number() == 1) == (sign == 1); }

AddresseeLine* openLine(std::vector<AddresseeLine>& lines, std::string_view kind) {
  const auto found = std::find_if(lines.begin(), lines.end(), [&](const AddresseeLine& line) {
    return line.kind == kind && !line.filled();
  });
  return found == lines.end() ? nullptr : &*found;
}

void writeRow(RowSet& rows, const AddresseeLine& line) {
  const std::string shown = CutToChars(line.showString, kShowStringLength);
  if (rows["FOIDR"].Text() == line.reference && rows["ShowString"].Text() == shown) return;
  rows["FOIDR"] = line.reference;
  rows["ShowString"] = shown;
  rows.Update();
}

}  // namespace

bool AddresseeLine::filled() const { return isRef(reference); }

bool AddresseeLine::operator==(const AddresseeLine& other) const {
  return kind == other.kind && required == other.required && reference == other.reference &&
         showString == other.showString;
}

std::vector<AddresseeLine> readAddresseeLines(RowSet& BR, int sign) {
  std::vector<AddresseeLine> lines;
  ForEachRow(*BR["RequiredAddr"].Rows(), [&](RowSet& rows) {
    const std::string_view kind = rows["FOID"].Text();
    if (!onSide(rows, sign) || openLine(lines, kind)) return;
    AddresseeLine line;
    line.kind = kind;
    line.required = true;
    lines.push_back(std::move(line));
  });
  ForEachRow(*BR["BRProperties"].Rows(), [&](RowSet& rows) {
    if (!onSide(rows, sign) || !isRef(rows["FOIDR"].Text())) return;
    const std::string_view kind = kindOf(rows["FOIDR"].Text());
    AddresseeLine* line = openLine(lines, kind);
    if (!line) {
      line = &lines.emplace_back();
      line->kind = kind;
    }
    line->reference = rows["FOIDR"].Text();
    line->showString = rows["ShowString"].Text();
    line->place = rows.Bookmark();
  });
  return lines;
}

void writeAddresseeLines(RowSet& BR, int sign, const std::vector<AddresseeLine>& lines) {
  RowSet& rows = *BR["BRProperties"].Rows();
  for (const AddresseeLine& line : lines) {
    if (!line.place.IsEmpty()) {
      rows.SetBookmark(line.place);
      if (line.filled()) {
        writeRow(rows, line);
      } else {
        rows.Delete();
      }
    } else if (line.filled()) {
      rows.AddNew();
      rows["BRGUID"] = BR["GUID"].Text();
      rows["Sign"] = sign;
      writeRow(rows, line);
    }
  }
}

AddresseeLine& lineFor(std::vector<AddresseeLine>& lines, std::string_view kind) {
  const auto found = std::find_if(lines.begin(), lines.end(),
                                  [&](const AddresseeLine& line) { return line.kind == kind; });
  if (found != lines.end()) return *found;
  AddresseeLine& line = lines.emplace_back();
  line.kind = kind;
  return line;
}

bool kindAllowed(std::string_view list, std::string_view kind) {
  if (list.empty()) return true;
  for (std::size_t at = 0; at + kKindLength <= list.size(); at += kKindLength) {
    if (list.substr(at, kKindLength) == kind) return true;
  }
  return false;
}

}  // namespace tolvex
