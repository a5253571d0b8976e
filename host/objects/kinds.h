// What the program knows of each kind of object by itself: its name, and how its list looks.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/recordset.h"
#include "platform/controls.h"
#include "platform/numbers.h"

namespace tolvex {

enum class CellFormat { Text, Date, Sum, Flag };  // a flag shows a tick

struct ListColumn {
  const char* field;
  const char* caption;
  int chars;
  CellFormat format = CellFormat::Text;
  bool grow = false;
};

enum class Grouping {
  None,    // a plain list, in the order of the store
  Nested,  // a plain list by name, what belongs to another stands indented below it
  Tree,    // groups are nodes of the tree, the list shows what lies right below the chosen one
  Whole,   // as Tree, but the list shows everything below, indented by depth
};

struct KindView {
  const char* code;
  const char* caption;
  Grouping grouping;
  std::vector<ListColumn> columns;
};

// Whether the very kind has a view, and not only its family.
bool hasOwnView(std::string_view code);
// Whether groups of the kind are nodes of the tree.
bool hasGroups(std::string_view code);
// Of the kind itself or of its family; null for a kind that the program does not know.
const KindView* kindView(std::string_view code);
// The code whose class and list a kind shares: "O0201504" -> "O0201500".
std::string familyCode(std::string_view code);
// The code whose list a kind shares: its own where it has one ("O0200401"), else its family's.
std::string listCode(std::string_view code);
std::string kindCaption(std::string_view code);
// Columns of the kind's list; the preview alone for an unknown kind.
const std::vector<ListColumn>& columnsOf(std::string_view code);

// Columns for the documents of an operation group, as against the list of groups.
const std::vector<ListColumn>& operationColumns();

// One cell of a list as text. A column that the set lacks, or an absent value, reads as "".
std::string cellText(RowSet& rows, const ListColumn& column, const NumberFormat& format);
std::vector<ui::Column> viewColumns(const std::vector<ListColumn>& columns);

}  // namespace tolvex
