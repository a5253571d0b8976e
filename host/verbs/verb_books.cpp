// Verbs on a company's books as a whole: new, verify, backup, restore.
#include <unistd.h>

#include <charconv>
#include <iostream>

#include "host/store/books.h"
#include "host/store/server_roles.h"
#include "host/verbs/verbs.h"

namespace tolvex::verbs {
namespace {

constexpr const char* kAdministrator = "admin";
constexpr int kMostOperations = 100'000'000;

// Books are opened as the administrator without a password, or with --user and --password.
const std::map<std::string, std::string> kLogin = {{"--user", "yes"}, {"--password", "yes"}};

std::unique_ptr<store::Session> open(const Arguments& arguments) {
  return store::openBooks(arguments.words[0], arguments.value("--user", kAdministrator),
                          arguments.value("--password"));
}

// On a terminal the share that is done, over and over in one line; in a log it would be noise.
store::Progress progressOnTerminal() {
  if (!isatty(STDERR_FILENO)) return {};
  return [shown = -1](std::string_view what, double share) mutable {
    const int percent = static_cast<int>(share * 100);
    if (percent != shown) std::cerr << "\r\x1b[K" << what << ' ' << percent << " %" << std::flush;
    shown = percent;
    return true;
  };
}

int operationCount(const std::string& word) {
  int count = 0;
  const char* const end = word.data() + word.size();
  const auto read = std::from_chars(word.data(), end, count);
  if (read.ec != std::errc() || read.ptr != end || count < 1 || count > kMostOperations)
    throw UsageError("Netinkamas operacijų skaičius: " + word);
  return count;
}

}  // namespace

int newBooks(const Words& words) {
  Arguments arguments = parse(words, {{"--demo", "maybe"}});
  store::NewBooks what;
  what.demoCompany = arguments.has("--demo");
  std::string count = arguments.value("--demo");
  if (what.demoCompany && count.empty() && arguments.words.size() == 2) {
    // What follows the place can only be meant as the number.
    count = arguments.words.back();
    arguments.words.pop_back();
  }
  wordCount(arguments, 1, 1);
  if (!count.empty()) {
    what.operations = operationCount(count);
    what.progress = progressOnTerminal();
  }
  const std::string& place = arguments.words[0];
  store::createBooks(place, what);
  if (what.progress) std::cerr << '\n';
  std::cout << "Sukurta: " << store::shownPlace(place) << '\n';
  return EXIT_SUCCESS;
}

int verify(const Words& words) {
  const Arguments arguments = parse(words, kLogin);
  wordCount(arguments, 1, 1);
  const auto session = open(arguments);
  const auto findings = store::verifyBooks(session->db());
  for (const store::Finding& finding : findings)
    std::cout << finding.check << ": " << finding.text << '\n';
  for (const store::Finding& gap : store::numberGaps(session->db()))
    std::cout << "pastaba: " << gap.text << '\n';
  if (!findings.empty()) {
    std::cerr << "Rasta klaidų: " << findings.size() << '\n';
    return EXIT_FAILURE;
  }
  std::cout << "Klaidų nerasta.\n";
  return EXIT_SUCCESS;
}

int backup(const Words& words) {
  const Arguments arguments = parse(words, kLogin);
  wordCount(arguments, 2, 2);
  const auto session = open(arguments);
  store::backupBooks(session->db(), arguments.words[1]);
  std::cout << "Kopija padaryta: " << arguments.words[1] << '\n';
  return EXIT_SUCCESS;
}

int restore(const Words& words) {
  const Arguments arguments = parse(words, kLogin);
  wordCount(arguments, 2, 2);
  const auto session = open(arguments);
  store::restoreBooks(session->db(), arguments.words[1]);
  std::cout << "Atkurta iš kopijos: " << arguments.words[1] << '\n';
  return EXIT_SUCCESS;
}

// A role of the server may work in the books from now on.
int grant(const Words& words) {
  const Arguments arguments = parse(words, kLogin);
  wordCount(arguments, 2, 2);
  if (!store::isPostgresUrl(arguments.words[0]))
    throw UsageError("Teisės suteikiamos tik duomenų bazei serveryje: " + arguments.words[0]);
  const auto session = open(arguments);
  store::grantWork(session->db(), arguments.words[1]);
  std::cout << "Gali dirbti: " << arguments.words[1] << '\n';
  return EXIT_SUCCESS;
}

}  // namespace tolvex::verbs
