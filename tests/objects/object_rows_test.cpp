// Rows of objects as trees and lists: order, depth, search.
#include "host/objects/object_rows.h"

#include <gtest/gtest.h>

#include "host/objects/module_loader.h"

namespace tolvex {
namespace {

ObjectRow made(const char* key, const char* parent) {
  ObjectRow row;
  row.row.key = key;
  row.row.cells = {ui::Cell(key)};
  row.parent = parent;
  return row;
}

std::string shape(const std::vector<ObjectRow>& rows) {
  std::string text;
  for (const ObjectRow& row : rows)
    text += std::string(static_cast<std::size_t>(row.depth), '.') + row.row.key + " ";
  return text;
}

TEST(AsTree, ParentsStandBeforeChildrenWhateverTheOrder) {
  EXPECT_EQ(shape(asTree({made("c", "b"), made("b", "a"), made("a", ""), made("d", "a")})),
            "a .b ..c .d ");
}

TEST(AsTree, StrangersAndOwnParentsStandAtTheTop) {
  EXPECT_EQ(shape(asTree({made("a", "gone"), made("b", "b")})), "a b ");
}

TEST(AsTree, ARingOfParentsEnds) {
  EXPECT_EQ(shape(asTree({made("a", "b"), made("b", "a"), made("c", "")})), "c ");
}

TEST(Narrowed, BeginningsComeFirstWithoutRegardToCase) {
  std::vector<ui::Row> rows(3);
  rows[0].cells = {"UAB Šaltinis"};
  rows[1].cells = {"   šaltinis"};  // indented in a tree
  rows[2].cells = {"Kita"};
  const auto found = narrowed(rows, "ŠALT");
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0].cells[0].text, "   šaltinis");
}

TEST(LoadModule, SaysWhatIsWrongWithTheFile) {
  EXPECT_THROW(loadModule("libTolvexUI.so"), std::runtime_error);  // no folder: not looked up
  EXPECT_THROW(loadModule("./none.so"), std::runtime_error);
  EXPECT_NE(loadModule(TOLVEX_MODULE), nullptr);
}

}  // namespace
}  // namespace tolvex
