// tolvex: the program. Usage errors end with 2, everything else that fails with 1 and a message.
#include <exception>
#include <iostream>

#include "host/objects/module_loader.h"
#include "host/verbs/verbs.h"

namespace {

constexpr const char* kUsage =
    "Naudojimas:\n"
    "  tolvex [desktop] KNYGOS [--user VARDAS] [--password SLAPTAŽODIS] [--today metai.mm.dd]\n"
    "  tolvex new KNYGOS [--demo [KIEK]]\n"
    "  tolvex run SCENARIJUS.lua [--books KNYGOS] [--today metai.mm.dd] [--user VARDAS]\n"
    "                            [--password SLAPTAŽODIS] [--window [--size 1920x1080]]\n"
    "                            [--every-fault]\n"
    "  tolvex verify KNYGOS\n"
    "  tolvex call KNYGOS FUNKCIJA \"PARAMETRAI\" [--csv]\n"
    "  tolvex backup KNYGOS BYLA\n"
    "  tolvex restore KNYGOS BYLA\n"
    "  tolvex grant postgresql://… SERVERIO_ROLĖ\n"
    "KNYGOS: byla arba postgresql://…\n";

int perform(std::vector<std::string> words, const std::string& module) {
  using namespace tolvex::verbs;
  if (words.empty()) throw UsageError("Nenurodytos knygos.");
  const std::string verb = words.front();
  if (verb == "help" || verb == "--help") {
    std::cout << kUsage;
    return EXIT_SUCCESS;
  }
  const std::vector<std::string> rest(words.begin() + 1, words.end());
  if (verb == "new") return newBooks(rest);
  if (verb == "verify") return verify(rest);
  if (verb == "backup") return backup(rest);
  if (verb == "restore") return restore(rest);
  if (verb == "grant") return grant(rest);
  if (verb == "call") return call(rest);
  if (verb == "run") return run(rest, module);
  if (verb == "desktop") return desktop(rest, module);
  return desktop(words, module);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return perform({argv + 1, argv + argc}, tolvex::modulePathBeside(argv[0]));
  } catch (const tolvex::verbs::UsageError& error) {
    std::cerr << error.what() << "\n\n" << kUsage;
    return 2;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
