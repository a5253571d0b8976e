// Files of reports are written beside their place and put there once they are whole; what stood
// there stays as it was until then.
#pragma once

#include <QSaveFile>
#include <string>

namespace tolvex::report {

// QSaveFile by itself takes a disk that runs full within the last piece for a whole file.
class SavedFile final : public QSaveFile {
 public:
  explicit SavedFile(std::string path);

  bool open();  // for writing; else failure() says why not
  // Puts the file in its place. "" or, for the user, why that could not be.
  std::string put();
  std::string failure() const;

 private:
  qint64 writeData(const char* data, qint64 size) override;

  std::string path_;
  bool cut_ = false;
};

// What a user is told when there is no room for a file.
std::string diskFull(const std::string& path);

}  // namespace tolvex::report
