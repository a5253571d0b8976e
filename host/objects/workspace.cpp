#include "host/objects/workspace.h"

#include <exception>
#include <set>

#include "framework/parameters.h"
#include "framework/references.h"
#include "host/objects/context_door.h"
#include "host/objects/dialog_services.h"
#include "host/objects/frm_list.h"
#include "host/objects/frm_period.h"
#include "host/objects/frm_tree.h"
#include "host/objects/object_factory.h"
#include "host/objects/screen_set.h"
#include "host/objects/services.h"
#include "host/objects/watched_store.h"
#include "platform/input.h"

namespace tolvex {
namespace {

constexpr std::string_view kOperationGroups = "O0201400";
constexpr std::string_view kOperations = "O0201500";
constexpr std::string_view kLocks = "O0201300";
constexpr std::string_view kUsers = "O0000800", kRoles = "O0000830", kOwnPassword = "O0000820";
constexpr std::string_view kFirms = "O0000100";

// The module's registration: what it brings is taken into the tree and the class table.
class Registration final : public ModuleRegistrar {
 public:
  Registration(std::vector<LayoutNode>& layout, Objects& objects)
      : layout_(layout), objects_(objects) {}
  void addLayout(LayoutNode root) override { layout_.push_back(std::move(root)); }
  void addClass(std::string caption, std::string code, std::string) override {
    objects_.addClass(code, caption);
  }
  void addIcon(IconSize, std::string, std::string) override {}  // glyphs are drawn by key

 private:
  std::vector<LayoutNode>& layout_;
  Objects& objects_;
};

// Boxes pass through the set of screens, which holds work back while one is open.
class WorkspaceDialogs final : public Dialogs {
 public:
  WorkspaceDialogs(HostContext& host, Stage& stage, ScreenSet& screens)
      : inner_(host, stage), screens_(screens) {}
  Answer message(const Message& message) override {
    const ScreenSet::BoxOpen open(screens_);
    return inner_.message(message);
  }
  std::optional<std::string> input(std::string prompt, std::string title,
                                   std::string initial) override {
    return inner_.input(std::move(prompt), std::move(title), std::move(initial));
  }
  std::string filter(std::string_view kind) override { return inner_.filter(kind); }
  std::optional<std::string> openFile(std::string pattern, std::string start) override {
    const ScreenSet::BoxOpen open(screens_);
    return inner_.openFile(std::move(pattern), std::move(start));
  }
  std::optional<std::string> saveFile(std::string pattern, std::string folder,
                                      std::string name) override {
    const ScreenSet::BoxOpen open(screens_);
    return inner_.saveFile(std::move(pattern), std::move(folder), std::move(name));
  }

 private:
  DialogService inner_;
  ScreenSet& screens_;
};

}  // namespace

struct Workspace::Impl final : HostContext, ObjectTree, Navigator {
  explicit Impl(Setup given)
      : setup(std::move(given)),
        watched(setup.store, {[this](auto kind, auto reference) { noteChange(kind, reference); },
                              [this] { rightsService.forget(); }, [this] { outdated = true; }}),
        objectFactory(door, setup.module, watched, setup.cards),
        screenSet(door, setup.stage),
        enquiry(door, watched),
        rightsService(enquiry),
        settingsService(door, watched, enquiry),
        userService(enquiry),
        workplaceService(enquiry, settingsService,
                         [this](std::string_view, ViewPeriod& period) { return ask(period); }),
        clockService(setup.clock),
        stagePump(setup.stage),
        dialogService(door, setup.stage, screenSet),
        pickerService(door),
        stageHelp(setup.stage),
        reportService(door, setup.stage, setup.output) {
    door.leadTo(this);
    Registration registration(layout, objectFactory);
    setup.module.header()->DllInicialize(registration);
    for (LayoutNode& root : setup.cards.layout()) layout.push_back(std::move(root));
    treeForm = std::make_unique<frmTree>(door, objectFactory, *this, layout);
    listForm = std::make_unique<frmList>(door, *this);
    screenSet.setList(*listForm);
    treeForm->markOpen(true);
    listForm->markOpen(true);
  }

  ~Impl() override { door.leave(this); }

  void open() {
    treeForm->read();
    if (!layout.empty() && !layout.front().children.empty())
      treeForm->choose(layout.front().children.front().code);
    readLocks();
    readStatus();
  }

  // --- HostContext
  std::string title() const override { return kProgramTitle; }
  NumberFormat numbers() const override { return {}; }
  ObjectFactory& objects() override { return objectFactory; }
  Desktop& desktop() override { return screenSet; }
  ObjectTree& tree() override { return *this; }
  Screens& screens() override { return screenSet; }
  Rights& rights() override { return rightsService; }
  UserSettings& settings() override { return settingsService; }
  CurrentUser& user() override { return userService; }
  Workplace& workplace() override { return workplaceService; }
  Clock& clock() override { return clockService; }
  MessagePump& pump() override { return stagePump; }
  Dialogs& dialogs() override { return dialogService; }
  Pickers& pickers() override { return pickerService; }
  Help& help() override { return stageHelp; }
  ReportViewer& reports() override { return reportService; }

  // --- ObjectTree
  void redraw(std::string_view kind) override { askedAnew(kind); }
  void redrawNode(std::string_view reference) override { askedAnew(kindOf(reference)); }

  // --- Navigator
  void showList(const ListSource& source) override {
    listForm->show(source);
    screenSet.bringToFront(nullptr);
    readStatus();
  }
  void chooseNode(const std::string& reference) override { treeForm->choose(reference); }
  void openObject(const std::string& reference) override {
    const unsigned before = door.interruptions();
    if (!screenSet.putObject(reference) && door.interruptions() == before)
      warn(door, "Šios rūšies objekto kortelės programa neturi.");
  }
  void runEntry(const std::string& kind, const std::string& id, const std::string& otype,
                const MenuEntry& entry) override {
    const MenuAction action = objectFactory.kind(kind)->ClickMenu(
        id, otype, entry.id.empty() ? entry.caption : entry.id, "");
    switch (action.Action) {
      case MenuAction::ShowForm:
        // A kind that put its screen on the desktop by itself gives none back.
        if (auto form = action.Value.As<ui::Form>(); form && !form->isOpen())
          screenSet.show(std::move(form));
        break;
      case MenuAction::Removed:
        askedAnew(kind);
        break;
      case MenuAction::ShowRows:
        showFound(action.Value);
        break;
      default:
        break;
    }
  }

  void showFound(const Variant& value) {
    if (!value.IsArray() || value.AsArray().size() != 2 || !value.AsArray()[0].IsRows()) return;
    listForm->showRows(*value.AsArray()[0].AsRows(), value.AsArray()[1].Show());
    screenSet.bringToFront(nullptr);
  }

  // --- what stands on the screen follows what is saved
  void noteChange(std::string_view kind, std::string_view reference = {}) {
    const std::string family = familyCode(kind);
    const std::string shown = familyCode(listForm ? listForm->source().kind : std::string());
    const bool document = family == kOperations && shown == kOperationGroups;
    if (document && isRef(reference)) {
      staleRows.emplace(reference);
    } else if (document || family == shown) {
      listStale = true;
    }
    if (hasGroups(family)) treeStale = true;
    if (family == kLocks) locksStale = true;
    if (kind == kFirms) status.firm.clear();  // the own firm may have another name
    if (kind == kUsers || kind == kRoles) {
      rightsService.forget();  // they may be the rights of whoever works here
      treeStale = true;
    }
    changedKinds.emplace(kind);
  }
  // Whoever saved something asks for its list; the documents that he saved are known already.
  void askedAnew(std::string_view kind) {
    if (staleRows.empty() || familyCode(kind) != kOperations) noteChange(kind);
  }
  void tellScreens() {
    const auto kinds = std::exchange(changedKinds, {});
    if (kinds.empty()) return;
    for (const auto& form : std::vector(screenSet.open()))
      for (const std::string& kind : kinds)
        if (form->isOpen()) form->recordsChanged(kind);
  }
  void idle() {
    screenSet.idle();
    if (screenSet.modal()) return;
    tellScreens();
    if (std::exchange(treeStale, false)) treeForm->read();
    if (std::exchange(locksStale, false)) {
      readLocks();
      readStatus();
    }
    // A list that nobody sees is read when it comes to the front.
    if (listStale && screenSet.front() == nullptr) {
      listStale = false;
      staleRows.clear();
      listForm->read();
      readStatus();
    } else if (!staleRows.empty() && screenSet.front() == nullptr) {
      listForm->readRows(std::exchange(staleRows, {}));
    } else {
      listForm->readOn();
    }
  }

  bool ask(ViewPeriod& period) {
    frmPeriod form(door, period);
    screenSet.runModal(form);
    if (!form.accepted()) return false;
    period = form.period();
    listStale = true;
    return true;
  }

  void readLocks() {
    const RowSetPtr row = enquiry.firstRow(kLocks, "GetLockedTo", kNoParameters);
    if (!row) return;  // the status line says what it knows
    const Variant day = (*row)["Date"].Value();
    status.locked = day.IsDate() ? "Užblokuota iki " + day.AsDate().Text() : std::string();
  }

  void readStatus() {
    Workspace::Status now = status;
    now.books = setup.booksName;
    if (now.firm.empty()) now.firm = workplaceService.firm().name;
    if (now.user.empty())
      if (const auto row = userService.row()) now.user = row->name;
    const std::string& kind = listForm->source().kind;
    now.period = kind == kOperationGroups && !listForm->source().common
                     ? periodText(workplaceService.oldPeriod(kind))
                     : std::string();
    status = now;
    setup.stage.statusChanged();
  }

  ContextDoor& door = ContextDoor::instance();
  Setup setup;
  WatchedStore watched;
  std::vector<LayoutNode> layout;
  Objects objectFactory;
  ScreenSet screenSet;
  Enquiry enquiry;
  RightsService rightsService;
  SettingsService settingsService;
  UserService userService;
  WorkplaceService workplaceService;
  ClockService clockService;
  StagePump stagePump;
  WorkspaceDialogs dialogService;
  PickerService pickerService;
  StageHelp stageHelp;
  ReportService reportService;
  std::unique_ptr<frmTree> treeForm;
  std::unique_ptr<frmList> listForm;
  Workspace::Status status;
  bool listStale = false, treeStale = false, locksStale = false;
  bool outdated = false;               // another client restored or converted the books
  bool renewed = false;                // this client did
  std::set<std::string> staleRows;     // documents of the list that were saved or deleted
  std::set<std::string> changedKinds;  // since the open screens were told
};

Workspace::Workspace(Setup setup) : impl_(std::make_unique<Impl>(std::move(setup))) {
  (void)gesture([this] { return impl_->open(), std::string(); });
}
Workspace::~Workspace() = default;

HostContext& Workspace::context() { return impl_->door; }
ui::Form& Workspace::tree() { return *impl_->treeForm; }
ui::Form& Workspace::list() { return *impl_->listForm; }

const std::vector<std::shared_ptr<ui::Form>>& Workspace::screens() const {
  return impl_->screenSet.open();
}

ui::Form* Workspace::current() const {
  ui::Form* front = impl_->screenSet.front();
  return front ? front : impl_->listForm.get();
}

void Workspace::activate(ui::Form& form) {
  impl_->screenSet.bringToFront(&form == impl_->listForm.get() ? nullptr : &form);
}

bool Workspace::close(ui::Form& form) {
  if (&form == impl_->listForm.get() || &form == impl_->treeForm.get()) return false;
  (void)gesture([&form] { return ui::Input(form).close(); });
  return !form.isOpen();
}

bool Workspace::closeAll() {
  const auto open = impl_->screenSet.open();
  for (auto form = open.rbegin(); form != open.rend(); ++form)
    if ((*form)->isOpen() && !close(**form)) return false;
  (void)idle();
  return true;
}

bool Workspace::idle() {
  (void)gesture([this] {
    impl_->idle();
    return std::string();
  });
  if (!impl_->screenSet.modal()) {
    if (std::exchange(impl_->renewed, false)) refresh();
    if (std::exchange(impl_->outdated, false)) offerReopening();
  }
  return impl_->listForm->unfinished() && !impl_->screenSet.modal();
}

void Workspace::offerReopening() {
  if (!impl_->setup.openBooksAgain) return;
  const bool agreed = ask(context(),
                          "Duomenų bazė pakeista, atidarykite iš naujo!\r\n\r\nAtidaryti dabar? "
                          "Neįrašyti pakeitimai bus prarasti.",
                          Answer::Yes);
  if (!agreed) return;
  const std::string failure = impl_->setup.openBooksAgain();
  if (!failure.empty()) return warn(context(), failure);
  reopen([] {});
}

std::string Workspace::gesture(const std::function<std::string()>& act) {
  std::string fault;
  try {
    return act();
  } catch (const std::exception& error) {
    fault = error.what();
  }
  // Shown outside of the handler: the box runs a loop of its own.
  Message box;
  box.text = "Klaida!" + std::string(kLineBreak) + fault;
  box.icon = Icon::Stop;
  show(context(), box);
  return "failed: " + fault;
}

void Workspace::noteRenewed() { impl_->renewed = true; }

void Workspace::changePassword() {
  (void)impl_->objectFactory.kind(kOwnPassword)->AddToDeskTopVXObject("");
}

void Workspace::refresh() {
  (void)gesture([this] {
    impl_->rightsService.forget();
    impl_->treeForm->read();
    impl_->listForm->read();
    impl_->readLocks();
    impl_->readStatus();
    return std::string();
  });
}

void Workspace::reopen(const std::function<void()>& between) {
  Setup setup = impl_->setup;
  setup.stage.released();
  impl_.reset();
  between();
  impl_ = std::make_unique<Impl>(setup);
  (void)gesture([this] { return impl_->open(), std::string(); });
  setup.stage.renewed(*this);
}

const Workspace::Status& Workspace::status() const { return impl_->status; }

}  // namespace tolvex
