// FakeHost: the whole program around the module as one table of small doubles.
//
// Every service is a public member that a test fills before and reads after. A question that no
// answer was queued for fails the test and is answered with its preset.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/host.h"
#include "tests/support/fake_objects.h"

namespace tolvex::test {

class FakeDialogs final : public Dialogs {
 public:
  explicit FakeDialogs(HostContext& host) : host_(host) {}
  Answer message(const Message& message) override;
  std::optional<std::string> input(std::string prompt, std::string title,
                                   std::string initial) override;
  std::string filter(std::string_view kind) override;
  std::optional<std::string> openFile(std::string pattern, std::string start) override;
  std::optional<std::string> saveFile(std::string pattern, std::string folder,
                                      std::string name) override;

  std::deque<Answer> answers;  // to questions; a box with OK alone needs none
  std::deque<std::optional<std::string>> inputs;
  std::deque<std::string> filters;
  std::deque<std::optional<std::string>> files;
  std::vector<Message> shown;                         // every box and question
  std::vector<std::vector<std::string>> inputsShown;  // prompt, title, initial
  std::vector<std::string> filtersShown;

  std::vector<std::string> takeTexts();  // texts of `shown`, which is emptied

 private:
  HostContext& host_;
};

class FakeScreens final : public Screens {
 public:
  void show(std::shared_ptr<ui::Form> form) override;
  // Opens the form, lets the next queued user act on it, closes it.
  void runModal(ui::Form& form) override;
  bool closeOthers(ui::Form&) override { return othersClose; }

  bool othersClose = true;
  std::vector<std::shared_ptr<ui::Form>> shown;
  std::deque<std::function<void(ui::Form&)>> users;  // one a modal form
  std::vector<std::string> modals;                   // names of the forms that ran modally
};

class FakeDesktop final : public Desktop {
 public:
  bool put(std::shared_ptr<ui::Form> form) override;
  bool putObject(std::string_view reference) override;
  void rename(std::string_view reference, std::string_view text) override;
  void show(std::string_view reference) override;

  std::vector<std::shared_ptr<ui::Form>> forms;
  std::vector<std::string> log;  // "putObject O02015005", "rename O02015005 2004.02.10 7", …
};

class FakeTree final : public ObjectTree {
 public:
  void redraw(std::string_view kind) override { log.push_back("redraw " + std::string(kind)); }
  void redrawNode(std::string_view reference) override {
    log.push_back("redrawNode " + std::string(reference));
  }
  std::vector<std::string> log;
};

class FakeRights final : public Rights {
 public:
  RightFlags of(std::string_view component) override;
  void addComponent(std::string key, std::string caption) override;

  std::map<std::string, RightFlags, std::less<>> table;
  RightFlags others{1, 1, 1, 1, 1};  // of components that the table does not name
  std::vector<std::string> asked;
  std::vector<std::pair<std::string, std::string>> added;
};

class FakeSettings final : public UserSettings {
 public:
  std::string get(std::string_view section, std::string_view key,
                  std::string_view fallback) override;
  void set(std::string_view section, std::string_view key, std::string_view value) override;
  std::map<std::pair<std::string, std::string>, std::string> values;
};

class FakeUser final : public CurrentUser {
 public:
  std::optional<UserRow> row() const override { return user; }
  std::optional<UserRow> user = UserRow{7, "JJ", "O00014017", "Jonas Jonaitis"};
};

class FakeWorkplace final : public Workplace {
 public:
  FirmRecord firm() override { return firmRecord; }
  std::string lockKey() const override { return key; }
  ViewPeriod oldPeriod(std::string_view kind) override;
  bool newPeriod(std::string_view kind) override;

  FirmRecord firmRecord;
  std::string key = "LOCK";
  ViewPeriod period;
  bool accepts = true;  // what newPeriod answers
  std::vector<std::string> log;
};

class FakeClock final : public Clock {
 public:
  DateTime now() const override { return moment; }
  DateTime moment = DateTime::Of(2003, 2, 9, 14, 30, 15);
};

class FakePump final : public MessagePump {
 public:
  void turn() override { ++turns; }
  bool stopped() const override { return stop; }
  void busy(bool on) override { busyLog.push_back(on); }
  void progress(std::string_view, double) override {}
  int turns = 0;
  bool stop = false;
  std::vector<bool> busyLog;
};

class FakePickers final : public Pickers {
 public:
  std::optional<Picked> pick(const PickRequest& request) override;
  std::optional<Picked> lookup(std::string_view reference) override;

  std::deque<std::optional<Picked>> answers;         // none queued: the test fails, cancelled
  std::map<std::string, Picked, std::less<>> known;  // for lookup
  std::vector<PickRequest> requests;
};

class FakeHelp final : public Help {
 public:
  void show(std::string_view page, std::string_view title) override;
  std::vector<std::pair<std::string, std::string>> pages;
};

class FakeReports final : public ReportViewer {
 public:
  void show(ReportDocument document, bool withExcel) override;
  bool exportAs(const ReportDocument& document, ReportFormat format,
                std::string_view stem) override;
  std::vector<ReportDocument> shown;
  std::vector<std::string> log;  // "show ActRepAccPlan excel", "export pdf Saskaita"
};

class FakeHost final : public HostContext {
 public:
  FakeHost();

  std::string title() const override { return caption; }
  NumberFormat numbers() const override { return format; }
  FakeObjects& objects() override { return objects_; }
  FakeDesktop& desktop() override { return desktop_; }
  FakeTree& tree() override { return tree_; }
  FakeScreens& screens() override { return screens_; }
  FakeRights& rights() override { return rights_; }
  FakeSettings& settings() override { return settings_; }
  FakeUser& user() override { return user_; }
  FakeWorkplace& workplace() override { return workplace_; }
  FakeClock& clock() override { return clock_; }
  FakePump& pump() override { return pump_; }
  FakeDialogs& dialogs() override { return dialogs_; }
  FakePickers& pickers() override { return pickers_; }
  FakeHelp& help() override { return help_; }
  FakeReports& reports() override { return reports_; }
  FakeBusinessObject& store() { return *store_; }
  Shelf& shelf() { return *objects_.shelf; }

  std::string caption = "Tolvex";
  NumberFormat format;

 private:
  FakeObjects objects_;
  FakeDesktop desktop_;
  FakeTree tree_;
  FakeScreens screens_;
  FakeRights rights_;
  FakeSettings settings_;
  FakeUser user_;
  FakeWorkplace workplace_;
  FakeClock clock_;
  FakePump pump_;
  FakeDialogs dialogs_{*this};
  FakePickers pickers_;
  FakeHelp help_;
  FakeReports reports_;
  std::shared_ptr<FakeBusinessObject> store_;
};

// A small plan, two currencies with the rates of any day, and the kinds of addressee, served to
// every screen: accounts 240, 2711, 443, 450, 500, 6001; USD 3.4528, EUR 3.4528; LTL base.
void serveStandingLists(FakeBusinessObject& store);

}  // namespace tolvex::test
