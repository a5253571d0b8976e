// Mailer: a new letter of the system's mail program, with a file attached.
#pragma once

#include <string>
#include <vector>

namespace tolvex::report {

class Mailer {
 public:
  // The program and its words; "{file}" and "{subject}" in them are replaced.
  explicit Mailer(std::vector<std::string> command = {"xdg-email", "--utf8", "--subject",
                                                      "{subject}", "--attach", "{file}"})
      : command_(std::move(command)) {}

  // "" or why there is no letter, for the user. Does not wait for the letter to be sent.
  std::string send(const std::string& file, const std::string& subject) const;

 private:
  std::vector<std::string> command_;
};

// A place for a file that another program will read later: a folder of its own that only this user
// may enter, among the temporary ones of the system. "" when there is none. Such folders of this
// user that are older than a day go: their letters are written.
std::string placeForAttachment(const std::string& name);

}  // namespace tolvex::report
