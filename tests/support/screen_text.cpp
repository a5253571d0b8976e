#include "tests/support/screen_text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "platform/layout.h"

namespace tolvex::test {

void expectScreen(ui::Form& form, const std::string& name) {
  const std::string path = std::string(TOLVEX_SCREENS) + "/" + name + ".txt";
  const std::string shown = ui::describe(form);
  if (std::getenv("TOLVEX_ACCEPT")) std::ofstream(path) << shown;
  std::ifstream file(path);
  const std::string kept{std::istreambuf_iterator<char>(file), {}};
  EXPECT_EQ(shown, kept) << path;
}

}  // namespace tolvex::test
