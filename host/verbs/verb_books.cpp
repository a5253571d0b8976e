// Verbs on a company's books as a whole: new, verify, backup, restore.
#include <filesystem>
#include <iostream>

#include "host/store/books.h"
#include "host/store/demo.h"
#include "host/verbs/verbs.h"

namespace tolvex::verbs {
namespace {

constexpr const char* kAdministrator = "admin";

// Books are opened as the administrator without a password, or with --user and --password.
const std::map<std::string, std::string> kLogin = {{"--user", "yes"}, {"--password", "yes"}};

std::unique_ptr<store::Session> open(const Arguments& arguments) {
  return store::openBooks(arguments.words[0], arguments.value("--user", kAdministrator),
                          arguments.value("--password"));
}

bool showProgress(std::string_view what, double share) {
  static int shown = -1;
  const int percent = static_cast<int>(share * 100);
  if (percent != shown) std::cerr << '\r' << what << ' ' << percent << " %  " << std::flush;
  shown = percent;
  return true;
}

}  // namespace

int newBooks(const Words& words) {
  const Arguments arguments = parse(words, {{"--demo", "maybe"}});
  wordCount(arguments, 1, 1);
  const std::string& place = arguments.words[0];
  store::NewBooks what;
  what.demoCompany = arguments.has("--demo");
  store::createBooks(place, what);
  const std::string count = arguments.value("--demo");
  if (!count.empty()) {
    const auto session = store::openBooks(place, kAdministrator, "");
    store::generateDemo(session->db(), std::atoi(count.c_str()), showProgress);
    std::cerr << '\n';
  }
  std::cout << "Sukurta: " << place << '\n';
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

}  // namespace tolvex::verbs
