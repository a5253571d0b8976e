// A folder for the files of one test, and what holds for the writing of any of them.
#pragma once

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QTemporaryDir>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

#include "host/objects/report_service.h"
#include "host/report/file_notes.h"
#include "tests/report/file_reading.h"
#include "tests/report/sample_reports.h"

namespace tolvex::test {

// No file of this process can grow beyond so many bytes: a disk that runs full.
class SmallDisk {
 public:
  explicit SmallDisk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &before_);
    const rlimit small{bytes, before_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallDisk() { setrlimit(RLIMIT_FSIZE, &before_); }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

 private:
  rlimit before_{};
};

class FileTest : public testing::Test {
 protected:
  using Write = std::string (*)(const ReportDocument&, const std::string&,
                                const report::FileNotes&);

  std::string path(const std::string& name) const {
    return folder.path().toStdString() + "/" + name;
  }
  std::ptrdiff_t files() const {
    return std::distance(std::filesystem::directory_iterator(folder.path().toStdString()), {});
  }

  // Full disks of all sizes, a folder that is not there, and a stop by the user.
  void expectSafeWriting(const std::string& ending, Write write) {
    const ReportDocument document = journal(2000);
    const std::string file = path("ataskaita." + ending);
    ASSERT_EQ(write(document, file, {}), "");
    const auto size = static_cast<rlim_t>(std::filesystem::file_size(file));
    std::ofstream(file) << "kas buvo";
    for (const rlim_t bytes : {rlim_t{0}, rlim_t{1000}, size / 2, size - 1, size + 1, size * 2}) {
      SCOPED_TRACE(bytes);
      std::string why;
      {
        const SmallDisk disk(bytes);
        why = write(document, file, {});
      }
      EXPECT_TRUE(bytes >= size || !why.empty());
      const bool whole = std::filesystem::file_size(file) == size;
      EXPECT_TRUE(why.empty() ? whole : readFile(file) == "kas buvo") << why;
      std::ofstream(file) << "kas buvo";
      EXPECT_EQ(files(), 1);
    }
    EXPECT_NE(write(document, path("nera/ataskaita." + ending), {}), "");
    const report::FileNotes stopped{{}, [](double share) { return share < 0.5; }};
    EXPECT_EQ(write(document, file, stopped), ReportOutput::kStopped);
    EXPECT_EQ(readFile(file), "kas buvo");
    EXPECT_EQ(files(), 1);
  }

  QTemporaryDir folder;
};

}  // namespace tolvex::test
