#include <gtest/gtest.h>

#include "host/report/fonts.h"

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  tolvex::report::needFonts();
  return RUN_ALL_TESTS();
}
