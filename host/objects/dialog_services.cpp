#include "host/objects/dialog_services.h"

#include "framework/references.h"
#include "host/objects/frm_filter.h"
#include "host/objects/frm_input.h"
#include "host/objects/frm_picker.h"
#include "host/objects/kinds.h"

namespace tolvex {

Answer DialogService::message(const Message& message) {
  host_.noteInterruption();
  Message shown = message;
  if (!shown.title) shown.title = host_.title();
  // A box must offer its own default.
  if (shown.buttons == Buttons::YesNo && shown.preset == Answer::Ok) shown.preset = Answer::Yes;
  return stage_.message(shown);
}

std::optional<std::string> DialogService::input(std::string prompt, std::string title,
                                                std::string initial) {
  frmInput form(host_, std::move(prompt), std::move(title), std::move(initial));
  host_.screens().runModal(form);
  if (!form.accepted()) return std::nullopt;
  return form.txtInput.text();
}

std::string DialogService::filter(std::string_view kind) {
  const KindView* view = kindView(kind);
  if (!view) return {};
  frmFilter form(host_, view->columns);
  host_.screens().runModal(form);
  return form.filter();
}

std::optional<std::string> DialogService::openFile(std::string pattern, std::string start) {
  host_.noteInterruption();
  return stage_.openFile(pattern, start);
}

std::optional<std::string> DialogService::saveFile(std::string pattern, std::string folder,
                                                   std::string name) {
  host_.noteInterruption();
  return stage_.saveFile(pattern, folder, name);
}

std::optional<Picked> PickerService::pick(const PickRequest& request) {
  frmPicker form(host_, request);
  host_.screens().runModal(form);
  return form.picked();
}

std::optional<Picked> PickerService::lookup(std::string_view reference) {
  const auto object = host_.objects().open(reference);
  if (!object) return std::nullopt;
  FieldList& fields = object->Fields();
  Picked found{std::string(reference), "", false};
  if (fields.contains("Preview")) found.text = fields["Preview"].Text();
  if (found.text.empty() && fields.contains("Name")) found.text = fields["Name"].Text();
  if (fields.contains("GroupFlag")) found.group = fields["GroupFlag"].Number() != 0;
  return found;
}

}  // namespace tolvex
