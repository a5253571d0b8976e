// The services that ask the user something: boxes and files of the stage, forms of the program.
#pragma once

#include "host/objects/stage.h"
#include "platform/host.h"

namespace tolvex {

inline constexpr const char* kProgramTitle = "Tolvex";

class StagePump final : public MessagePump {
 public:
  explicit StagePump(Stage& stage) : stage_(stage) {}
  void turn() override { stage_.turn(); }
  bool stopped() const override { return stage_.stopped(); }
  void busy(bool on) override { stage_.busy(on); }
  void progress(std::string_view what, double share) override { stage_.progress(what, share); }

 private:
  Stage& stage_;
};

class StageHelp final : public Help {
 public:
  explicit StageHelp(Stage& stage) : stage_(stage) {}
  void show(std::string_view page, std::string_view title) override {
    stage_.help(std::string(page), std::string(title));
  }

 private:
  Stage& stage_;
};

class DialogService final : public Dialogs {
 public:
  DialogService(HostContext& host, Stage& stage) : host_(host), stage_(stage) {}
  Answer message(const Message& message) override;
  std::optional<std::string> input(std::string prompt, std::string title,
                                   std::string initial) override;
  std::string filter(std::string_view kind) override;
  std::optional<std::string> openFile(std::string pattern, std::string start) override;
  std::optional<std::string> saveFile(std::string pattern, std::string folder,
                                      std::string name) override;

 private:
  HostContext& host_;
  Stage& stage_;
};

class PickerService final : public Pickers {
 public:
  explicit PickerService(HostContext& host) : host_(host) {}
  std::optional<Picked> pick(const PickRequest& request) override;
  std::optional<Picked> lookup(std::string_view reference) override;

 private:
  HostContext& host_;
};

}  // namespace tolvex
