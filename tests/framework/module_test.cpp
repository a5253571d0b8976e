// What the library tells its host, asked through the one exported function.
#include <gtest/gtest.h>

#include <memory>

#include "framework/text.h"
#include "platform/registration.h"

namespace tolvex {
namespace {

class Recorder final : public ModuleRegistrar {
 public:
  void addLayout(LayoutNode node) override { root = std::move(node); }
  void addClass(std::string, std::string code, std::string library) override {
    classes.push_back(code + " " + library);
  }
  void addIcon(IconSize size, std::string key, std::string image) override {
    (size == IconSize::Small ? small : large).push_back(key == image ? key : key + "=" + image);
  }
  LayoutNode root;
  std::vector<std::string> classes, small, large;
};

std::unique_ptr<Module> load() { return std::unique_ptr<Module>(tolvexModule(kModuleAbi)); }

TEST(ModuleLibrary, RefusesAnotherBorder) { EXPECT_EQ(tolvexModule(kModuleAbi + 1), nullptr); }

TEST(ModuleLibrary, DeclaresItsTreeInOrder) {
  Recorder recorder;
  load()->header()->DllInicialize(recorder);
  std::vector<std::string> rows = {recorder.root.right + "/" + recorder.root.code};
  for (const LayoutNode& node : recorder.root.children) {
    rows.push_back(node.right + "/" + node.registered.at(0));
  }
  EXPECT_EQ(join(rows, " "),
            "CBookLayout/L02020011 CBROperRights/O0201400 CBusinessTrips/O0202100 "
            "O0200500/O0200500 CVXReportLockO0200500/O0001900<%>O0200500<%> "
            "CTemplatesLock/O0201600 /O0200400 CFirms/O0000100 CPerson/O0001402 CBanks/O0000300 "
            "CCurrency/O0002200 CPaymentPlan/O0201700");
  EXPECT_EQ(recorder.classes.size(), 7u);
  EXPECT_EQ(recorder.classes[1], "O0200500 TolvexUI");
  EXPECT_EQ(recorder.small.size(), 16u);
  EXPECT_EQ(recorder.small[3], "C0200500=C0200500J") << "journals share one small picture";
  EXPECT_EQ(recorder.small.back(), "L02020011=LAYOUT");
  EXPECT_EQ(recorder.large.size(), 17u);
  EXPECT_EQ(recorder.large[1], "C0200500G");
  EXPECT_EQ(recorder.large.back(), "DOCUMENT_ERROR");
}

TEST(ModuleLibrary, DeclaresRightsInOrder) {
  const std::vector<SecurityEntry> entries = load()->security()->GetComponentList();
  ASSERT_EQ(entries.size(), 16u);
  EXPECT_EQ(entries[0].parent, "DLL|L02020011");
  EXPECT_EQ(entries[0].kind, 10);
  std::vector<std::string> journals;
  for (const SecurityEntry& entry : entries) {
    if (entry.parent == "O0200500") journals.push_back(entry.key.substr(5));
  }
  EXPECT_EQ(join(journals, " "), "502 503 501 504 505 506 508 509");
}

TEST(ModuleLibrary, MakesTheClassesThatAreBuilt) {
  const std::unique_ptr<Module> module = load();
  for (const char* digits : {"0200400", "0201300", "0201400", "0201500", "0201600", "0201700"}) {
    EXPECT_NE(module->createUI(std::string("UI") + digits), nullptr) << digits;
  }
  for (const char* name : {"UI0200401", "UIO0201500", "ui0201500", ""}) {
    EXPECT_EQ(module->createUI(name), nullptr) << name;
  }
  EXPECT_EQ(module->createUIO("UI0201500"), nullptr);
}

}  // namespace
}  // namespace tolvex
