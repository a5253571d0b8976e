// The controls of which screens are made: state and handlers, no window, no font, no position.
//
// A control registers itself with its form under a fixed name, so the declarations of a form are
// its registry. Assigning to a control from the program is silent: it changes state and marks the
// control for redrawing, and calls no handler. Handlers are called for the user's acts only, all
// through platform/input.h. A handler that must run after an assignment is called by name.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/date_time.h"

namespace tolvex::ui {

class Form;
class Control;
class Button;
class ListView;
struct Menu;

using Handler = std::function<void()>;

enum class Kind {
  Label,
  TextBox,
  ComboBox,
  DatePicker,
  CheckBox,
  OptionButton,
  Button,
  ListView,
  TreeView,
  TabStrip,
  Panel,
  MenuItem,
  Timer,
};
enum class Align { Left, Right, Center };
enum class Role { Plain, Primary, Quiet, Small, Danger };  // of a button; one Primary a form

// A value that marks its control dirty when it really changes.
template <class T>
class Prop {
 public:
  explicit Prop(Control* owner, T value = {}) : owner_(owner), value_(std::move(value)) {}
  Prop(const Prop&) = delete;
  Prop& operator=(const Prop&) = delete;
  Prop& operator=(T value);
  operator const T&() const { return value_; }
  const T& operator()() const { return value_; }

 private:
  Control* owner_;
  T value_;
};

class Control {
 public:
  Control(Form* form, Kind kind, std::string name, std::string caption);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const Kind kind;
  const std::string name;
  Form& form;
  Prop<std::string> caption;  // of a field: drawn as the label before it; "&" marks the access key
  Prop<std::string> tip;
  Prop<bool> visible;
  Prop<bool> enabled;
  std::string tag;            // the caller's mark: as a rule the reference behind a shown text
  Menu* menu = nullptr;       // context menu (right click, Menu key, drop-down of a button)
  Control* parent = nullptr;  // the panel or strip around it, set when the layout is built
  std::string page;           // on a page of a tab strip: the key of its tab
  int chars = 0;              // wished width in characters; 0 leaves it to the layout

  // Check boxes and options call onChange, then onClick, after the user changed them; a timer
  // calls onChange at each tick.
  Handler onClick, onDoubleClick, onRightClick, onChange, onEnter, onLeave;
  std::function<bool()> mayLeave;  // false keeps the focus here; skipped by cancel buttons
  std::function<bool(const std::string& reference)> canDrop;
  std::function<void(const std::string& reference)> onDrop;
  // Of a list or a tree: the reference that a row or node carries away when it is dragged or
  // copied, by its key; "" for none.
  std::function<std::string(const std::string& key)> carries;

  bool shown() const;   // with all panels above, and on the current page of their strips
  bool usable() const;  // shown and enabled, with all panels above
  void touch();         // marks for redrawing
};

template <class T>
Prop<T>& Prop<T>::operator=(T value) {
  if (!(value_ == value)) {
    value_ = std::move(value);
    owner_->touch();
  }
  return *this;
}

class Label final : public Control {
 public:
  Label(Form* form, std::string name, std::string caption = {});
  bool heading = false;  // names what stands below it, in larger letters
};

// A box for one line of text, a number, or several lines.
class TextBox final : public Control {
 public:
  TextBox(Form* form, std::string name, std::string caption = {}, int chars = 0,
          Align align = Align::Left);
  Prop<std::string> text;
  Prop<bool> readOnly;
  Prop<int> caret;  // in characters; -1: leave it to the view
  Align align;
  int lines = 1;
  std::size_t maxLength = 0;  // characters that may be typed; 0 without limit
  bool password = false;
  Button* picker = nullptr;   // F4 in the box presses it
  ListView* finds = nullptr;  // Enter in the box opens that list's current row
  // What becomes of a typed character in the text typed so far; 0 drops it.
  std::function<char32_t(char32_t key, const std::string& text)> keyFilter;
};

// A choice from a list; with `editable` the user may also type, and the view completes what is
// typed from the items: by the beginning first, then by any place.
class ComboBox final : public Control {
 public:
  ComboBox(Form* form, std::string name, std::string caption = {}, int chars = 0);
  struct Item {
    std::string text;
    std::string key;  // the caller's mark; need not be unique
    bool operator==(const Item&) const = default;
  };
  Prop<std::vector<Item>> items;
  Prop<int> index;          // -1: nothing chosen
  Prop<std::string> typed;  // editable: the text in the box
  bool editable = false;

  void setTexts(const std::vector<std::string>& texts);
  std::string text() const;  // editable: what stands in the box; else the chosen item's text, or ""
  std::string key() const;   // of the chosen item, or ""
  int find(std::string_view text) const;
  int findKey(std::string_view key) const;
  void setText(std::string_view text);  // chooses the item of that text, if any; editable: types it
};

class DatePicker final : public Control {
 public:
  DatePicker(Form* form, std::string name, std::string caption = {});
  Prop<std::optional<DateTime>> value;
  bool monthOnly = false;
  bool mayBeEmpty = false;
};

class CheckBox final : public Control {
 public:
  CheckBox(Form* form, std::string name, std::string caption = {});
  Prop<bool> on;
};

// One of a set; choosing it takes the others of the same `group` on the form back.
class OptionButton final : public Control {
 public:
  OptionButton(Form* form, std::string name, std::string caption, std::string group);
  Prop<bool> on;
  const std::string group;
  void choose();  // silent, takes the others back
};

class Button final : public Control {
 public:
  Button(Form* form, std::string name, std::string caption = {}, Role role = Role::Plain);
  Role role;
  bool isCancel = false;   // Esc presses it, and it skips mayLeave
  bool isDefault = false;  // Ctrl+Enter presses it
  bool ownTest = false;    // tests the fields itself, so that mayLeave does not hold it up
  std::string shortcut;    // "Ctrl+S", "F4", … in the notation of the desktop
};

struct Column {
  std::string caption;
  int chars = 10;
  Align align = Align::Left;
  bool grow = false;
  std::string key = {};  // for columns that users place and resize
};

struct Cell {
  std::string text;
  std::string tag;
  bool bold = false;
  Cell() = default;
  Cell(std::string t) : text(std::move(t)) {}
  Cell(const char* t) : text(t) {}
  bool operator==(const Cell&) const = default;
};

enum class Mark : std::uint8_t { None, Good, Bad, Grey };  // meaning; the look follows from it

struct Row {
  std::string key;
  std::vector<Cell> cells;
  std::string tag;
  std::string hint;
  std::string icon;
  Mark mark = Mark::None;
  bool bold = false;
  bool checked = false;
  bool operator==(const Row&) const = default;
};

// What stands above a list on paper.
struct ListHeading {
  std::string title;
  std::vector<std::string> lines;
};

// A table of rows. Rows are values: keep a row's key, never a reference, over a modal call.
// No sorting by header click: rows are addressed by index and order.
class ListView final : public Control {
 public:
  ListView(Form* form, std::string name, std::vector<Column> columns, std::string caption = {});
  std::vector<Column> columns;
  Prop<int> current;  // -1: no row
  bool checkBoxes = false;
  bool filterBox = false;      // the view offers a box that narrows the shown rows as one types
  Handler onActivate;          // Enter or double click on a row
  Handler onCheck;             // after the user ticked `current`
  Handler onInsert, onDelete;  // keys Ins and Del
  // Before the whole list goes to paper or into a file: reads what is not read yet and says what
  // stands above. False when the user stopped it.
  std::function<bool(ListHeading& heading)> onPrint;

  const std::vector<Row>& rows() const { return rows_; }
  std::vector<Row>& edit();  // for changes; marks the list
  void setRows(std::vector<Row> rows);
  int find(std::string_view key) const;  // index or -1
  const Row* currentRow() const;         // null when none
  unsigned version() const { return version_; }

 private:
  std::vector<Row> rows_;
  unsigned version_ = 0;
};

struct TreeNode {
  std::string key;     // unique in the tree
  std::string parent;  // "" at the root; parents stand before their children
  std::string text;
  std::string tag;
  std::string icon;
  bool bold = false;
  bool expanded = false;
  bool operator==(const TreeNode&) const = default;
};

class TreeView final : public Control {
 public:
  TreeView(Form* form, std::string name, std::string caption = {});
  Prop<std::vector<TreeNode>> nodes;
  Prop<std::string> current;  // key, "" for none
  Handler onActivate;
  std::function<void(const std::string& key, bool expanded)> onExpand;
  const TreeNode* find(std::string_view key) const;
};

class TabStrip final : public Control {
 public:
  TabStrip(Form* form, std::string name);
  struct Tab {
    std::string key, caption;
    bool visible = true;
    bool closable = false;
    bool operator==(const Tab&) const = default;
  };
  Prop<std::vector<Tab>> tabs;
  Prop<std::string> current;       // key, "" for the first; onChange after the user chose another
  std::string currentKey() const;  // of the page in front
  std::function<void(const std::string& key)> onClose;
};

// A framed block of the layout; disabling or hiding it does so to all inside.
class Panel final : public Control {
 public:
  Panel(Form* form, std::string name, std::string caption = {});
  bool titleBand = false;  // the coloured title of a document
};

// An entry of a menu. It reports after the menu has closed. A separator is a null in Menu::items.
class MenuItem final : public Control {
 public:
  MenuItem(Form* form, std::string name, std::string caption = {});
  Prop<bool> ticked;
  std::string shortcut;
};

struct Menu {
  std::vector<MenuItem*> items;
  Handler onPopup;  // sets states just before the menu is shown
};

class Timer final : public Control {
 public:
  Timer(Form* form, std::string name, int milliseconds);
  int milliseconds;
  Prop<bool> running;
};

}  // namespace tolvex::ui
