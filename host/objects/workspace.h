// Workspace: one user at work: the loaded module, the books, the open screens.
//
// It is the HostContext of the module. The tree of objects and the list of the chosen node are
// forms of the same control model as every other screen (frmTree, frmList), and so are the dialogs
// (picker, filter, input, viewing period), so that a window, a script and a test drive all of them
// alike.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/objects/card_set.h"
#include "host/objects/report_service.h"
#include "host/objects/stage.h"
#include "host/store/store_port.h"
#include "platform/host.h"
#include "platform/registration.h"

namespace tolvex {

class Workspace {
 public:
  struct Setup {
    Module& module;           // outlives the workspace
    store::StorePort& store;  // likewise
    Stage& stage;             // likewise
    std::function<DateTime()> clock;
    std::string booksName;           // shown in the status line
    const CardSet& cards;            // outlives the workspace
    ReportOutput* output = nullptr;  // writes reports into files; null: they cannot be written
    // Opens the books behind `store` anew; "" or why they stay as they were.
    std::function<std::string()> openBooksAgain = {};
  };
  explicit Workspace(Setup setup);
  ~Workspace();

  HostContext& context();
  ui::Form& tree();  // frmTree: control tvwLayout
  ui::Form& list();  // frmList: controls txtFind, lvwObjects and the filter line
  const std::vector<std::shared_ptr<ui::Form>>& screens() const;  // open, in order of opening
  ui::Form* current() const;      // the screen in front: one of screens(), or list()
  void activate(ui::Form& form);  // the user chose its tab
  // The user closes a screen; false when it refused.
  bool close(ui::Form& form);
  bool closeAll();
  // To be called once a loop is idle, also inside a modal one: runs work put off by forms; outside
  // of modal calls it also drops closed screens and reads stale lists again.
  // True when more waits for the next time, such as the rest of a long list. Books that another
  // client restored or converted are offered to be opened again.
  bool idle();
  // Every act of the user passes through here: what a handler throws becomes the box "Klaida!" with
  // the description, and the screen stays. Gives back what the act gives (see platform/input.h).
  std::string gesture(const std::function<std::string()>& act);
  void changePassword();  // the user's own, on a screen
  void refresh();         // F5: rights, tree and list are read again
  // The books were restored or converted by this client: all that is shown is stale.
  void noteRenewed();
  // As if the program were closed and started again: every form goes, `between` may close and open
  // the books, then the workspace is built anew. The stage is told before and after; not to be
  // called while a modal form or a box is open.
  void reopen(const std::function<void()>& between);

  struct Status {
    std::string firm, user, books;
    std::string period;  // viewing period of the kind in the list, "" where it has none
    std::string locked;  // "Užblokuota iki 2004.03.31", the latest day of any account; "": none
  };
  const Status& status() const;

 private:
  void offerReopening();
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tolvex
