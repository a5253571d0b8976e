// HeadlessStage: no window. A driver acts in the user's place: its step is called whenever a loop
// waits for the user, inside boxes and modal forms as well.
#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "host/objects/stage.h"

namespace tolvex {

class HeadlessStage final : public Stage, public Playground, private ui::FormView {
 public:
  // `step` does one act; false when there is nothing left to do: boxes are then answered with
  // their safest button and modal forms closed, so that every call unwinds. `idle` runs between.
  void setDriver(std::function<bool()> step, std::function<void()> idle);

  void shown(ui::Form& form) override { take(form); }
  void raised(ui::Form&) override {}
  void removed(ui::Form& form) override;
  void titleChanged(ui::Form&) override {}
  void runModal(ui::Form& form) override;
  Answer message(const Message& message) override;
  std::optional<std::string> openFile(const std::string&, const std::string&) override {
    return takeFileReply();
  }
  std::optional<std::string> saveFile(const std::string&, const std::string&,
                                      const std::string&) override {
    return takeFileReply();
  }
  void help(const std::string& page, const std::string&) override { helpPage_ = page; }
  void report(std::shared_ptr<const ReportDocument> document, bool, ReportViewer&) override {
    report_ = std::move(document);
    ++previews_;
  }
  void turn() override {}
  bool stopped() const override { return false; }
  void busy(bool) override {}
  void progress(std::string_view, double) override {}
  void statusChanged() override {}
  void renewed(Workspace& workspace) override;  // to be called for a new workspace as well

  const Message* openMessage() const override;
  void answer(Answer answer) override;
  ui::Form* modalForm() const override;
  ui::Menu* openMenu() const override { return menu_; }
  void closeMenu() override { menu_ = nullptr; }
  bool shot(const std::string&) override { return true; }  // there is nothing to draw
  bool closeReport() override;
  const ReportDocument* lastReport() const override { return report_.get(); }
  void replyFile(std::optional<std::string> path) override {
    fileReplies_.push_back(std::move(path));
  }

  const std::string& helpPage() const { return helpPage_; }  // shown last

 private:
  // A panel reaches what stands in it once the picture was read.
  void take(ui::Form& form) {
    form.view = this;
    (void)form.layout();
  }
  struct Layer {
    ui::Form* form = nullptr;
    const Message* message = nullptr;
    std::optional<Answer> reply;
  };
  void wake() override {}
  void popup(ui::Menu& menu, ui::Control&) override { menu_ = &menu; }
  void pump(const std::function<bool()>& done);
  std::optional<std::string> takeFileReply();

  std::function<bool()> step_;
  std::function<void()> idle_;
  std::vector<Layer> layers_;
  ui::Menu* menu_ = nullptr;
  std::string helpPage_;
  std::deque<std::optional<std::string>> fileReplies_;
  std::shared_ptr<const ReportDocument> report_;
  int previews_ = 0;  // open
};

// Takes back what stands in front: the safest answer to a box, closing for a modal form. False
// when nothing stands there.
bool unwindOne(Playground& playground);

}  // namespace tolvex
