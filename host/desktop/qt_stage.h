// QtStage: the stage of the program on Qt: main window, dialogs, boxes, long works, scripts.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QSize>
#include <functional>
#include <string>
#include <vector>

#include "host/desktop/desktop.h"
#include "host/desktop/form_widget.h"

class QDialog;
class QTimer;

namespace tolvex::desktop {

class HelpWindow;
class MainWindow;
class ProgressStrip;
class ReportWindow;

class QtStage final : public QObject, public DesktopStage, public ActGuard {
 public:
  QtStage();
  ~QtStage() override;
  void bind(Workspace& workspace);  // makes and shows the main window
  void unbind();
  MainWindow* window() { return window_.get(); }

  // Stage
  void shown(ui::Form& form) override;
  void raised(ui::Form& form) override;
  void removed(ui::Form& form) override;
  void titleChanged(ui::Form& form) override;
  void runModal(ui::Form& form) override;
  Answer message(const Message& message) override;
  std::optional<std::string> openFile(const std::string& pattern,
                                      const std::string& start) override;
  std::optional<std::string> saveFile(const std::string& pattern, const std::string& folder,
                                      const std::string& name) override;
  void help(const std::string& page, const std::string& title) override;
  void report(std::shared_ptr<const ReportDocument> document, bool withExcel,
              ReportViewer& viewer) override;
  void turn() override;
  bool stopped() const override { return stopped_; }
  void busy(bool on) override;
  void progress(std::string_view what, double share) override;
  void statusChanged() override;
  void released() override { unbind(); }
  void renewed(Workspace& workspace) override { bind(workspace); }

  // DesktopStage
  void startTicking() override;
  void flush() override;
  void resize(int width, int height) override;
  void quit(int status) override;

  // Playground
  const Message* openMessage() const override;
  void answer(Answer reply) override;
  ui::Form* modalForm() const override;
  ui::Menu* openMenu() const override { return menu_; }
  void closeMenu() override;
  bool shot(const std::string& path) override;
  const ReportDocument* lastReport() const override { return report_.get(); }
  bool closeReport() override;
  void replyFile(std::optional<std::string> path) override {
    fileReplies.push_back(std::move(path));
  }

  // ActGuard
  void run(const std::function<void()>& act) override;
  bool holding() const override { return turning_; }
  bool showing() const override { return idleTick && !finished_; }
  void menuOpened(ui::Menu* menu, QMenu* widget) override;
  void settled() override;

 private:
  struct Level {  // a loop inside the program: a modal form or a message box
    ui::Form* form = nullptr;
    const Message* message = nullptr;
    QPointer<QDialog> dialog;
  };
  struct Preview {
    QPointer<ReportWindow> window;
    std::size_t depth = 0;  // how many levels lay below when it was opened
  };
  QWidget* parentForDialog() const;
  QWidget* ground() const;  // the innermost dialog, else the main window
  void idle();
  void tick();
  void keepTicking();
  bool unwinding() const;
  void fail(const char* what);
  template <class Dialog>
  std::optional<std::string> file(Dialog dialog);
  bool eventFilter(QObject* watched, QEvent* event) override;
  void adopt(FormWidget& widget);

  Workspace* workspace_ = nullptr;
  std::unique_ptr<MainWindow> window_;
  QSize size_;  // asked for; also for a window that is made anew
  std::vector<Level> levels_;
  std::vector<Preview> previews_;
  std::vector<QPointer<FormWidget>> widgets_;
  ui::Menu* menu_ = nullptr;
  std::shared_ptr<const ReportDocument> report_;
  QPointer<QMenu> menuWidget_;
  QPointer<HelpWindow> help_;
  QTimer* ticker_ = nullptr;
  QPointer<ProgressStrip> strip_;
  QElapsedTimer sinceTurn_, sinceBusy_;
  int busy_ = 0;
  bool turning_ = false;
  bool stopped_ = false;
  bool finished_ = false;  // the script wants no more ticks
  bool idleAsked_ = false;
};

}  // namespace tolvex::desktop
