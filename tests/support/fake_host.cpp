#include "tests/support/fake_host.h"

#include <gtest/gtest.h>

namespace tolvex::test {

namespace {

template <class T>
T takeFront(std::deque<T>& queue) {
  T front = std::move(queue.front());
  queue.pop_front();
  return front;
}

void runPutOff(ui::Form& form) {
  while (form.hasLater()) {
    for (ui::Handler& work : form.takeLater()) work();
  }
}

}  // namespace

Answer FakeDialogs::message(const Message& message) {
  host_.noteInterruption();
  shown.push_back(message);
  if (message.buttons == Buttons::Ok) return Answer::Ok;
  if (answers.empty()) {
    ADD_FAILURE() << "nobody answers: " << message.text;
    return message.preset;
  }
  return takeFront(answers);
}

std::optional<std::string> FakeDialogs::input(std::string prompt, std::string title,
                                              std::string initial) {
  inputsShown.push_back({prompt, title, initial});
  if (inputs.empty()) {
    ADD_FAILURE() << "nobody answers: " << prompt;
    return std::nullopt;
  }
  return takeFront(inputs);
}

std::string FakeDialogs::filter(std::string_view kind) {
  filtersShown.emplace_back(kind);
  if (filters.empty()) {
    ADD_FAILURE() << "no filter for " << kind;
    return {};
  }
  return takeFront(filters);
}

std::optional<std::string> FakeDialogs::openFile(std::string pattern, std::string) {
  if (files.empty()) {
    ADD_FAILURE() << "no file for " << pattern;
    return std::nullopt;
  }
  return takeFront(files);
}

std::optional<std::string> FakeDialogs::saveFile(std::string pattern, std::string, std::string) {
  return openFile(std::move(pattern), {});
}

std::vector<std::string> FakeDialogs::takeTexts() {
  std::vector<std::string> texts;
  for (const Message& message : shown) texts.push_back(message.text);
  shown.clear();
  return texts;
}

void FakeScreens::show(std::shared_ptr<ui::Form> form) {
  shown.push_back(form);
  form->markOpen(true);
  form->opened();
  runPutOff(*form);
}

void FakeScreens::runModal(ui::Form& form) {
  modals.push_back(form.name());
  form.markOpen(true);
  form.opened();
  runPutOff(form);
  if (users.empty()) {
    ADD_FAILURE() << "nobody sits at " << form.name();
  } else {
    takeFront(users)(form);
    runPutOff(form);
  }
  form.markOpen(false);
  form.closed();
}

bool FakeDesktop::put(std::shared_ptr<ui::Form> form) {
  log.push_back("put " + form->name());
  forms.push_back(std::move(form));
  return true;
}
bool FakeDesktop::putObject(std::string_view reference) {
  log.push_back("putObject " + std::string(reference));
  return true;
}
void FakeDesktop::rename(std::string_view reference, std::string_view text) {
  log.push_back("rename " + std::string(reference) + " " + std::string(text));
}
void FakeDesktop::show(std::string_view reference) {
  log.push_back("show " + std::string(reference));
}

RightFlags FakeRights::of(std::string_view component) {
  asked.emplace_back(component);
  const auto found = table.find(component);
  return found == table.end() ? others : found->second;
}
void FakeRights::addComponent(std::string key, std::string caption) {
  added.emplace_back(std::move(key), std::move(caption));
}

std::string FakeSettings::get(std::string_view section, std::string_view key,
                              std::string_view fallback) {
  const auto found = values.find({std::string(section), std::string(key)});
  return found == values.end() ? std::string(fallback) : found->second;
}
void FakeSettings::set(std::string_view section, std::string_view key, std::string_view value) {
  values[{std::string(section), std::string(key)}] = value;
}

ViewPeriod FakeWorkplace::oldPeriod(std::string_view kind) {
  log.push_back("oldPeriod " + std::string(kind));
  return period;
}
bool FakeWorkplace::newPeriod(std::string_view kind) {
  log.push_back("newPeriod " + std::string(kind));
  return accepts;
}

std::optional<Picked> FakePickers::pick(const PickRequest& request) {
  requests.push_back(request);
  if (answers.empty()) {
    ADD_FAILURE() << "nobody picks: " << request.prompt;
    return std::nullopt;
  }
  return takeFront(answers);
}
std::optional<Picked> FakePickers::lookup(std::string_view reference) {
  const auto found = known.find(reference);
  if (found == known.end()) return std::nullopt;
  return found->second;
}

void FakeHelp::show(std::string_view page, std::string_view title) {
  pages.emplace_back(page, title);
}

void FakeReports::show(ReportDocument document, bool withExcel) {
  log.push_back("show " + document.layout + (withExcel ? " excel" : ""));
  shown.push_back(std::move(document));
}

bool FakeReports::exportAs(const ReportDocument&, ReportFormat format, std::string_view stem) {
  const char* const names[] = {"pdf", "excel", "rtf"};
  log.push_back("export " + std::string(names[static_cast<int>(format)]) + " " + std::string(stem));
  return true;
}

FakeHost::FakeHost() : store_(std::make_shared<FakeBusinessObject>()) {
  objects_.shelf->bo = store_;
}

void serveStandingLists(FakeBusinessObject& store) {
  store.serve("GetAccountList", table({{"Account", FieldType::Text}, {"Name", FieldType::Text}},
                                      {{"240", "Pirkėjų įsiskolinimas"},
                                       {"2711", "Atsiskaitomoji sąskaita"},
                                       {"443", "Skolos tiekėjams"},
                                       {"450", "Skolos atskaitingiems asmenims"},
                                       {"500", "Pardavimo pajamos"},
                                       {"6001", "Parduotų prekių savikaina"}}));
  store.serve("GetCurrencyList", table({{"Code", FieldType::Text},
                                        {"Rate", FieldType::Double},
                                        {"BaseCurrency", FieldType::Integer},
                                        {"Name", FieldType::Text},
                                        {"OIDR", FieldType::Text},
                                        {"FixedRate", FieldType::Double}},
                                       {{"LTL", 1.0, 1, "Litas", "O00022001", 1.0},
                                        {"EUR", 3.4528, 0, "Euras", "O00022002", 3.4528},
                                        {"USD", 2.75, 0, "JAV doleris", "O00022003", 0.0}}));
  store.serve("GetAddresseeList", table({{"FOID", FieldType::Text}, {"Name", FieldType::Text}},
                                        {{"O0000100", "Įmonės"},
                                         {"O0001402", "Fiziniai asmenys"},
                                         {"O0001401", "Darbuotojai"},
                                         {"O0000300", "Bankai"},
                                         {"O0000500", "Banko sąskaitos"},
                                         {"O0201500", "Finansinės operacijos"}}));
}

}  // namespace tolvex::test
