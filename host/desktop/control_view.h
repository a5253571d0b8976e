// ControlView: the widget of one control. It shows the control's state when told to, and hands
// the user's acts to the form widget. Factories for all kinds stand below.
#pragma once

#include <QPointer>
#include <QWidget>
#include <memory>

#include "platform/controls.h"

namespace tolvex::desktop {

class FormWidget;

class ControlView {
 public:
  ControlView(FormWidget& owner, ui::Control& control) : owner(owner), base(control) {}
  virtual ~ControlView() = default;
  ControlView(const ControlView&) = delete;

  virtual void sync() = 0;  // the widget from the control
  virtual void commit() {}  // what is typed but not told yet
  virtual void left() {}    // the focus has gone elsewhere
  // The list's row that stands at a shown place; they differ while a list is narrowed.
  virtual int listRow(int shown) const { return shown; }
  // Where a menu opened by key or program belongs, in global coordinates.
  virtual QPoint menuPlace() const { return field->mapToGlobal(QPoint(0, field->height())); }

  FormWidget& owner;
  ui::Control& base;
  QWidget* outer = nullptr;  // what stands in the layout; owned by its parent widget
  QWidget* field = nullptr;  // what takes the focus; as a rule outer itself
};

using ViewPtr = std::unique_ptr<ControlView>;

ViewPtr makeLabelView(FormWidget& owner, ui::Label& label);
ViewPtr makeTextView(FormWidget& owner, ui::TextBox& box);
ViewPtr makeComboView(FormWidget& owner, ui::ComboBox& combo);
ViewPtr makeDateView(FormWidget& owner, ui::DatePicker& picker);
ViewPtr makeCheckView(FormWidget& owner, ui::CheckBox& box);
ViewPtr makeOptionView(FormWidget& owner, ui::OptionButton& option);
ViewPtr makeButtonView(FormWidget& owner, ui::Button& button);
ViewPtr makeListView(FormWidget& owner, ui::ListView& list);
ViewPtr makeTreeView(FormWidget& owner, ui::TreeView& tree);
ViewPtr makeTabView(FormWidget& owner, ui::TabStrip& strip);

}  // namespace tolvex::desktop
