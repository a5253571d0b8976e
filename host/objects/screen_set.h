// ScreenSet: the open screens: one an object, raised instead of opened again, named after it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/objects/stage.h"
#include "platform/host.h"

namespace tolvex {

class ScreenSet final : public Desktop, public Screens {
 public:
  ScreenSet(HostContext& host, Stage& stage) : host_(host), stage_(stage) {}

  bool put(std::shared_ptr<ui::Form> form) override;
  bool putObject(std::string_view reference) override;
  void rename(std::string_view reference, std::string_view text) override;
  void show(std::string_view reference) override;
  void show(std::shared_ptr<ui::Form> form) override;
  void runModal(ui::Form& form) override;
  bool closeOthers(ui::Form& stays) override;

  const std::vector<std::shared_ptr<ui::Form>>& open() const { return open_; }
  ui::Form* front() const { return front_; }  // null: the list stands in front
  void bringToFront(ui::Form* form);
  void setList(ui::Form& list) { list_ = &list; }  // stands in front when no screen does
  bool modal() const { return !modal_.empty(); }
  // Runs put-off work and takes closed screens off the stage. Work that throws stops no other; the
  // first such failure is thrown on at the end.
  void idle();
  ui::Form* find(std::string_view reference) const;

  // A box is a modal loop like that of a form; nothing goes on behind or below it.
  class BoxOpen {
   public:
    explicit BoxOpen(ScreenSet& set) : set_(set) { set_.modal_.push_back(nullptr); }
    ~BoxOpen() { set_.modal_.pop_back(); }
    BoxOpen(const BoxOpen&) = delete;

   private:
    ScreenSet& set_;
  };

 private:
  HostContext& host_;
  Stage& stage_;
  std::vector<std::shared_ptr<ui::Form>> open_;
  std::vector<std::shared_ptr<ui::Form>> closed_;  // may be inside their own handler still
  std::vector<ui::Form*> modal_;                   // innermost last; null is a box
  ui::Form* list_ = nullptr;
  ui::Form* front_ = nullptr;
};

}  // namespace tolvex
