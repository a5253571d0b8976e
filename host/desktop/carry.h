// Carrying references: dragged from lists and trees with the mouse, or copied there and put into a
// drop target by keys.
#pragma once

#include <QPoint>
#include <string>

#include "platform/controls.h"

class QWidget;

namespace tolvex::desktop {

class ControlView;
class FormWidget;

// What a row or node carries: its words, cells parted by tabs, and a reference or "".
struct Burden {
  std::string words, reference;
};
// Of the current row or node; empty when there is none.
Burden burdenOf(const ui::Control& control);

void copy(const Burden& burden);  // to the clipboard
void drag(QWidget& from, const Burden& burden);
std::string copiedReference();  // in the clipboard, or ""

// The control that takes a reference which is put where `control` has the focus: itself or a panel
// around it. A field that takes typed text is asked for itself alone. Null when none takes it.
ui::Control* targetOf(ui::Control& control, const std::string& reference);

// Lets a widget of the form take dragged references for its control.
void takeDrops(FormWidget& form, QWidget& widget, ControlView* view, ui::Control& control);

}  // namespace tolvex::desktop
