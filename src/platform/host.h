// What the module asks of the program around it: one context that hands out small services.
//
// A test replaces the services one at a time. Everything runs on one thread; a modal call returns
// when the user has answered.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/form.h"
#include "platform/numbers.h"
#include "platform/objects.h"
#include "platform/report.h"

namespace tolvex {

// --- objects ---------------------------------------------------------------------------------

class ObjectFactory {
 public:
  virtual ~ObjectFactory() = default;
  virtual std::shared_ptr<VXObjectUIO> open(
      std::string_view reference) = 0;  // null: no such object
  virtual std::shared_ptr<VXObjectUIO> create(
      std::string_view kind) = 0;  // new, read; null after a failure that was shown
  virtual std::shared_ptr<VXObjectUI> kind(std::string_view code) = 0;  // with BO and VXS set
  // The generic halves that the module's classes wrap; no module class is involved.
  virtual std::shared_ptr<VXObjectUI> innerUI(std::string_view code) = 0;
  virtual std::shared_ptr<VXObjectUIO> innerUIO(std::string_view code) = 0;
};

// --- desktop ---------------------------------------------------------------------------------

class Desktop {
 public:
  virtual ~Desktop() = default;
  virtual bool put(std::shared_ptr<ui::Form> form) = 0;
  virtual bool putObject(std::string_view reference) = 0;
  virtual void rename(std::string_view reference, std::string_view text) = 0;
  virtual void show(std::string_view reference) = 0;  // opens, or raises the open one
};
class ObjectTree {
 public:
  virtual ~ObjectTree() = default;
  virtual void redraw(std::string_view kind) = 0;  // lists of this kind are read again
  virtual void redrawNode(std::string_view reference) = 0;
};
class Screens {
 public:
  virtual ~Screens() = default;
  virtual void show(std::shared_ptr<ui::Form> form) = 0;
  virtual void runModal(ui::Form& form) = 0;  // returns when the form is closed
  // Closes every screen but one, each as its user would; false when one of them stays.
  virtual bool closeOthers(ui::Form& stays) = 0;
};

// --- rights, settings, user ---------------------------------------------------------------------

struct RightFlags {  // in the order in which a component is asked
  std::int16_t view = 0, remove = 0, change = 0, create = 0, admin = 0;
};
class Rights {
 public:
  virtual ~Rights() = default;
  virtual RightFlags of(std::string_view component) = 0;
  virtual void addComponent(std::string key, std::string caption) = 0;
};
class UserSettings {
 public:
  virtual ~UserSettings() = default;
  virtual std::string get(std::string_view section, std::string_view key,
                          std::string_view fallback) = 0;
  virtual void set(std::string_view section, std::string_view key, std::string_view value) = 0;
};
struct UserRow {
  std::int32_t id = 0;
  std::string prefix, reference, name;
};
class CurrentUser {
 public:
  virtual ~CurrentUser() = default;
  virtual std::optional<UserRow> row() const = 0;
};
struct FirmRecord {
  std::string reference, name, code, vatCode, phone, fax, street, city, country, postIndex, address;
  std::string director, directorTitle, financier, cashier;
};
struct ViewPeriod {
  bool byRange = false;
  DateTime from, to;
  int days = 365;  // without a range: the last so many days
};
class Workplace {
 public:
  virtual ~Workplace() = default;
  virtual FirmRecord firm() = 0;
  virtual std::string lockKey() const = 0;  // marks what this program run created
  virtual ViewPeriod oldPeriod(std::string_view kind) = 0;
  virtual bool newPeriod(std::string_view kind) = 0;  // asks and stores; false when cancelled
};
class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime now() const = 0;
  DateTime today() const { return now().Date(); }
};
class MessagePump {
 public:
  virtual ~MessagePump() = default;
  virtual void turn() = 0;           // draws; lets a stop command in, no other input
  virtual bool stopped() const = 0;  // the user asked to stop the long work
  virtual void busy(bool on) = 0;
  virtual void progress(std::string_view what, double share) = 0;  // 0..1
};
// The busy sign of a long work, until the end of the scope on every way out.
class LongWork {
 public:
  explicit LongWork(MessagePump& pump) : pump_(pump) { pump_.busy(true); }
  ~LongWork() { pump_.busy(false); }
  LongWork(const LongWork&) = delete;
  LongWork& operator=(const LongWork&) = delete;

  // Draws how far it is; false when the user asked to stop.
  bool goesOn(std::string_view what, double share) {
    pump_.progress(what, share);
    return !pump_.stopped();
  }

 private:
  MessagePump& pump_;
};

// --- dialogs ------------------------------------------------------------------------------------

enum class Icon { None, Info, Question, Exclamation, Stop };
enum class Buttons { Ok, OkCancel, YesNo };
enum class Answer { Ok, Cancel, Yes, No };
struct Message {
  std::string text;
  Icon icon = Icon::Exclamation;
  Buttons buttons = Buttons::Ok;
  Answer preset = Answer::Ok;        // the default button
  std::optional<std::string> title;  // absent: the host's title
};
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  virtual Answer message(const Message& message) = 0;
  virtual std::optional<std::string> input(std::string prompt, std::string title,
                                           std::string initial) = 0;
  virtual std::string filter(std::string_view kind) = 0;  // a filter text; "" for none
  // Patterns as "(*.txt;*.acc)|*.txt;*.acc".
  virtual std::optional<std::string> openFile(std::string pattern, std::string start) = 0;
  virtual std::optional<std::string> saveFile(std::string pattern, std::string folder,
                                              std::string name) = 0;
};

struct PickRequest {
  std::vector<std::string> kinds;  // object codes offered
  std::string prompt, classes, filter, current;
  std::string typed = {};  // what the search begins with
};
struct Picked {
  std::string reference;  // "" means the user cleared the value
  std::string text;
  bool group = false;
};
class Pickers {
 public:
  virtual ~Pickers() = default;
  virtual std::optional<Picked> pick(const PickRequest& request) = 0;    // nothing: cancelled
  virtual std::optional<Picked> lookup(std::string_view reference) = 0;  // text of a reference
};

class Help {
 public:
  virtual ~Help() = default;
  virtual void show(std::string_view page, std::string_view title) = 0;
};

// --- reports -----------------------------------------------------------------------------------

enum class ReportFormat { Pdf, Excel, Rtf };
class ReportViewer {
 public:
  virtual ~ReportViewer() = default;
  // The preview, with the commands to print, save and mail; `withExcel` offers a spreadsheet.
  virtual void show(ReportDocument document, bool withExcel) = 0;
  // Asks where and writes the file; a failure is shown. False when nothing was written.
  virtual bool exportAs(const ReportDocument& document, ReportFormat format,
                        std::string_view stem) = 0;
  // The user chose the page on which this report stands; reports of its layout begin with it.
  virtual void keepPage(const ReportDocument& /*document*/) {}
};

// --- the context ------------------------------------------------------------------------------

class HostContext {
 public:
  virtual ~HostContext() = default;
  virtual std::string title() const = 0;  // caption of message boxes
  virtual NumberFormat numbers() const = 0;
  virtual ObjectFactory& objects() = 0;
  virtual Desktop& desktop() = 0;
  virtual ObjectTree& tree() = 0;
  virtual Screens& screens() = 0;
  virtual Rights& rights() = 0;
  virtual UserSettings& settings() = 0;
  virtual CurrentUser& user() = 0;
  virtual Workplace& workplace() = 0;
  virtual Clock& clock() = 0;
  virtual MessagePump& pump() = 0;
  virtual Dialogs& dialogs() = 0;
  virtual Pickers& pickers() = 0;
  virtual Help& help() = 0;
  virtual ReportViewer& reports() = 0;

  // Grows whenever the user was interrupted by a box, a dialog or a modal screen. A host notes
  // each one it shows; Input compares the count to drop an act that ran into a box on its way.
  void noteInterruption() { ++interruptions_; }
  unsigned interruptions() const { return interruptions_; }

 private:
  unsigned interruptions_ = 0;
};

// A message box.
Answer show(HostContext& host, const Message& message);

// A message box with an exclamation mark and the host's title.
void warn(HostContext& host, std::string text);
// A yes/no question with the host's title.
bool ask(HostContext& host, std::string text, Answer preset = Answer::No);

}  // namespace tolvex
