// LayoutBuilder: the widgets of a form from its layout tree.
//
// The first labels of all rows of one stack get one width, and so do those of the frames in it; a
// row without anything growing is left-aligned; options in one row become a joined bar; a list
// grows.
#pragma once

#include "host/desktop/form_widget.h"
#include "platform/layout.h"

class QBoxLayout;
class QHBoxLayout;
class QVBoxLayout;

namespace tolvex::desktop {

class LayoutBuilder {
 public:
  explicit LayoutBuilder(FormWidget& owner) : owner_(owner) {}
  void build();

 private:
  struct Stack {
    int number;
    bool labelled;  // some row begins with a label, so the others keep its place free
  };
  void stack(const ui::Node& node, QWidget* parent, QVBoxLayout* into, int depth, int number);
  void block(const ui::Node& node, QWidget* parent, QVBoxLayout* into, const Stack& stack,
             int frames, int depth);
  void columns(const ui::Node& node, QWidget* parent, QVBoxLayout* into, int depth);
  QWidget* frame(const ui::Node& node, QWidget* parent, int depth, int number);
  QWidget* tabs(const ui::Node& node, QWidget* parent, int depth);
  QWidget* row(const ui::Node& node, QWidget* parent, const Stack& stack);
  void word(const ui::Node& node, QWidget* parent, QHBoxLayout* line, const Stack& stack,
            bool firstOfRow);
  void control(const ui::Node& node, QWidget* parent, QHBoxLayout* line, const Stack& stack,
               bool firstOfRow);
  ViewPtr makeView(ui::Control& control);
  void setWidth(const ui::Node& node, ControlView& view);

  FormWidget& owner_;
};

// Whether a node takes the height that is left.
bool growsDown(const ui::Node& node);

}  // namespace tolvex::desktop
