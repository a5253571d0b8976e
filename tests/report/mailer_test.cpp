// Attachments of letters: where they stand, and when they go.
#include "host/report/mailer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace tolvex::report {
namespace {

namespace fs = std::filesystem;

// The temporary folder of the system, for as long as the object lives.
class OwnTemporaryFolder {
 public:
  OwnTemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "tolvex-test-XXXXXX").string();
    path = mkdtemp(name.data());
    setenv("TMPDIR", path.c_str(), 1);
  }
  ~OwnTemporaryFolder() {
    if (before.empty())
      unsetenv("TMPDIR");
    else
      setenv("TMPDIR", before.c_str(), 1);
    fs::remove_all(path);
  }
  OwnTemporaryFolder(const OwnTemporaryFolder&) = delete;

  const std::string before = std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "";
  fs::path path;
};

fs::path attached(const char* name) {
  const fs::path file = placeForAttachment(name);
  std::ofstream(file) << "pdf";
  return file;
}

TEST(Attachment, StandsForADayInAFolderOfItsOwn) {
  const OwnTemporaryFolder temporary;
  const fs::path old = attached("senas.pdf"), young = attached("naujas.pdf");
  const fs::path foreign = temporary.path / "kita programa", aside = temporary.path / "aplankas";
  fs::create_directories(foreign);
  fs::create_directories(aside);
  fs::create_directory_symlink(aside, temporary.path / "tolvex-mail-link");
  const auto before = fs::file_time_type::clock::now() - std::chrono::hours(25);
  for (const fs::path& folder : {old.parent_path(), foreign, aside})
    fs::last_write_time(folder, before);
  EXPECT_EQ(fs::status(old.parent_path()).permissions(), fs::perms::owner_all);
  EXPECT_TRUE(fs::exists(attached("trecias.pdf")));
  EXPECT_FALSE(fs::exists(old.parent_path()));
  for (const fs::path& stays : {young, foreign, aside}) EXPECT_TRUE(fs::exists(stays)) << stays;
}

}  // namespace
}  // namespace tolvex::report
