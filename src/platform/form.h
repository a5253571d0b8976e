// Form: a screen. It owns its controls as public members with fixed names, gives its layout as a
// text picture, and reacts in handlers.
//
// Life: constructed with the host, shown through Screens (host.h) which calls opened(), closed by
// close() or by the user after mayClose() agreed. Focus lives here, not in the toolkit.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/variant.h"
#include "platform/controls.h"
#include "platform/layout.h"

namespace tolvex {
class HostContext;
}

namespace tolvex::ui {

// The renderer's end of a form; null while the form is not drawn.
class FormView {
 public:
  virtual ~FormView() = default;
  virtual void wake() = 0;  // something is dirty, or focus or title changed
  virtual void popup(Menu& menu, Control& at) = 0;
};

class Form : public Object {
 public:
  Form(HostContext& host, std::string name);
  ~Form() override;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  // The layout as a text picture, see layout.h. Every visible control stands in it once.
  virtual const char* picture() const = 0;
  virtual void opened() {}                  // the form is about to be shown
  virtual bool mayClose() { return true; }  // asked before the user's closing; may show a box
  virtual void closed() {}
  // A record of the kind was saved or deleted, here or on another screen; told once the loop is
  // idle. For what the form shows of other objects.
  virtual void recordsChanged(const std::string& /*kind*/) {}

  const std::string& name() const { return name_; }
  HostContext& host() { return host_; }
  const std::string& title() const { return title_; }
  void setTitle(std::string title);
  // What the tab of the form stands for: the reference of its object, or "".
  virtual std::string objectReference() const { return {}; }

  const std::vector<Control*>& controls() const { return controls_; }
  Control* find(std::string_view name) const;  // null when there is none; exact spelling
  template <class T>
  T* find(std::string_view name) const {
    return dynamic_cast<T*>(find(name));
  }
  const Node& layout();  // built once from the picture; throws LayoutError with form, line, name

  Control* focus() const { return focus_; }
  void setFocus(Control& control);  // by the program: silent, no onLeave or onEnter
  void popup(Menu& menu, Control& at);

  bool isOpen() const { return open_; }
  void close();              // by the program: no question
  void later(Handler work);  // runs once the loop is idle, in order
  int result = 0;            // what a modal form leaves to its caller
  bool readOnly = false;

  // For the host and the renderer.
  FormView* view = nullptr;
  std::vector<Control*> takeDirty();
  std::vector<Handler> takeLater();
  bool hasLater() const { return !later_.empty(); }
  void markOpen(bool open) { open_ = open; }

 private:
  friend class Control;
  friend class Input;
  void add(Control* control);
  void remove(Control* control);
  void markDirty(Control* control);

  HostContext& host_;
  std::string name_;
  std::string title_;
  std::vector<Control*> controls_;
  std::vector<Control*> dirty_;
  std::vector<Handler> later_;
  std::unique_ptr<Node> layout_;
  Control* focus_ = nullptr;
  unsigned focusMoves_ = 0;  // counts moves by the program, so that Input sees them
  bool open_ = false;
};

// Sets the form busy for a long work: `panel` disabled and the host's busy sign shown until the
// end of the scope, on every way out.
class BusyScope {
 public:
  BusyScope(Form& form, Control& panel);
  ~BusyScope();
  BusyScope(const BusyScope&) = delete;

 private:
  Form& form_;
  Control& panel_;
  bool was_;
};

}  // namespace tolvex::ui
