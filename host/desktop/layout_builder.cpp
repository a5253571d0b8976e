#include "host/desktop/layout_builder.h"

#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTabBar>
#include <algorithm>

#include "host/desktop/carry.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

using Type = ui::Node::Type;
using ui::Kind;

constexpr int kCellGap = 16;
constexpr int kWordGap = 6;
constexpr int kRowGap = 8;
constexpr int kBlockGap = 10;
constexpr int kFieldPadding = 22;
constexpr int kDefaultChars = 12;
constexpr int kShortestGrowing = 60;

bool isTall(const ui::Control& control) {
  return control.kind == Kind::ListView || control.kind == Kind::TreeView ||
         (control.kind == Kind::TextBox && static_cast<const ui::TextBox&>(control).lines > 1);
}

bool isField(const ui::Control& control) {
  return control.kind == Kind::TextBox || control.kind == Kind::ComboBox ||
         control.kind == Kind::DatePicker;
}

// The only control of a cell, when it is of that kind.
template <class T>
const T* lone(const ui::Node& cell, Kind kind) {
  if (cell.children.size() != 1) return nullptr;
  const ui::Control* control = cell.children.front().control;
  return control && control->kind == kind ? static_cast<const T*>(control) : nullptr;
}

const ui::Node* firstWord(const ui::Node& row) {
  if (row.type != Type::Row || row.children.empty()) return nullptr;
  const auto& words = row.children.front().children;
  return words.empty() ? nullptr : &words.front();
}

// A row that begins with words before a field.
bool beginsWithLabel(const ui::Node& row) {
  const ui::Node* first = firstWord(row);
  if (!first) return false;
  if (first->type == Type::Text) return row.children.front().children.size() > 1;
  return first->type == Type::Control && isField(*first->control) && !isTall(*first->control) &&
         !first->control->caption().empty();
}

QVBoxLayout* column(QWidget* widget, int gap) {
  auto* layout = new QVBoxLayout(widget);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(gap);
  return layout;
}

// What is left in a column stays empty, before its item `at`. Where something grows it takes all,
// but it may be hidden at the moment.
void leaveRest(QVBoxLayout* layout, int at, bool grows) {
  if (!grows) return layout->insertStretch(at, 1);
  layout->insertItem(at, new QSpacerItem(0, 0, QSizePolicy::Minimum, QSizePolicy::Expanding));
}

void endColumn(QVBoxLayout* layout, bool grows) { leaveRest(layout, layout->count(), grows); }

// A row of nothing but buttons.
bool isButtonRow(const ui::Node& row) {
  bool any = false;
  for (const ui::Node& cell : row.children) {
    for (const ui::Node& word : cell.children) {
      if (word.type == Type::Space) continue;
      if (!word.control || word.control->kind != Kind::Button) return false;
      any = true;
    }
  }
  return any && row.type == Type::Row;
}

QLabel* captionLabel(QWidget* parent, const char* role) {
  auto* label = new QLabel(parent);
  label->setProperty("role", QString::fromLatin1(role));
  return label;
}

}  // namespace

bool growsDown(const ui::Node& node) {
  if (node.type == Type::Control) return node.grow && isTall(*node.control);
  if (node.type == Type::Tabs && node.grow) return true;
  return std::any_of(node.children.begin(), node.children.end(), growsDown);
}

void LayoutBuilder::build() {
  auto* layout = column(&owner_, kBlockGap);
  const ui::Node& root = owner_.form().layout();
  const bool bare =
      root.children.size() == 1 && growsDown(root) && root.children.front().type != Type::Frame;
  if (!bare) layout->setContentsMargins(14, 12, 14, 12);
  stack(root, &owner_, layout, 0, owner_.stacks_++);
  // The buttons of a form stand at its bottom, however little is above them.
  const bool buttons = !root.children.empty() && isButtonRow(root.children.back());
  leaveRest(layout, layout->count() - (buttons ? 1 : 0), growsDown(root));
}

void LayoutBuilder::stack(const ui::Node& node, QWidget* parent, QVBoxLayout* into, int depth,
                          int number) {
  const bool labelled = std::any_of(node.children.begin(), node.children.end(), beginsWithLabel);
  const Stack own{number, labelled};
  const int frames = owner_.stacks_++;
  for (const ui::Node& child : node.children) block(child, parent, into, own, frames, depth);
}

void LayoutBuilder::block(const ui::Node& node, QWidget* parent, QVBoxLayout* into,
                          const Stack& own, int frames, int depth) {
  const int stretch = growsDown(node) ? 1 : 0;
  switch (node.type) {
    case Type::Columns:
      columns(node, parent, into, depth);
      return;
    case Type::Frame: {
      QWidget* box = frame(node, parent, depth, frames);
      // It is as high as what is in it, also when nothing below takes the rest.
      if (stretch == 0) box->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
      into->addWidget(box, stretch);
      return;
    }
    case Type::Tabs:
      into->addWidget(tabs(node, parent, depth), stretch);
      return;
    default:
      into->addWidget(row(node, parent, own), stretch);
      return;
  }
}

void LayoutBuilder::columns(const ui::Node& node, QWidget* parent, QVBoxLayout* into, int depth) {
  auto* holder = new QWidget(parent);
  auto* line = new QHBoxLayout(holder);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(kBlockGap);
  bool anyGrows = false;
  for (const ui::Node& child : node.children) {
    auto* side = new QWidget(holder);
    auto* layout = column(side, kRowGap);
    stack(ui::Node{Type::Column, nullptr, {}, 0, false, {child}}, side, layout, depth,
          owner_.stacks_++);
    if (child.type == Type::Frame) {
      // Frames side by side are of one height.
      layout->itemAt(0)->widget()->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    } else if (!growsDown(child)) {
      layout->addStretch(1);
    }
    const bool grows = child.grow || growsDown(child);
    anyGrows = anyGrows || grows;
    line->addWidget(side, grows ? 1 : 0);
  }
  if (!anyGrows) line->addStretch(1);
  into->addWidget(holder, growsDown(node) ? 1 : 0);
}

QWidget* LayoutBuilder::frame(const ui::Node& node, QWidget* parent, int depth, int number) {
  auto* box = new QFrame(parent);
  const auto* panel = static_cast<const ui::Panel*>(node.control);
  const bool band = panel && panel->titleBand;
  auto* layout = column(box, kRowGap);
  if (band) {
    auto* head = new QFrame(box);
    head->setProperty("band", true);
    auto* line = new QHBoxLayout(head);
    line->setContentsMargins(12, 6, 12, 6);
    QLabel* title = captionLabel(head, "band");
    line->addWidget(title, 1);
    layout->setSpacing(kBlockGap);
    layout->addWidget(head);
    owner_.labels_[panel] = {title, -1};
  } else {
    box->setProperty("card", true);
    box->setProperty("inner", depth > 0);
    layout->setContentsMargins(12, 9, 12, 9);
    if (panel) {
      QLabel* title = captionLabel(box, "frame");
      layout->addWidget(title);
      owner_.labels_[panel] = {title, -1};
    }
  }
  if (panel) {
    box->setObjectName(text(panel->name));
    owner_.frames_[panel] = box;
    owner_.watch(*box, *node.control);
    takeDrops(owner_, *box, nullptr, *node.control);
  }
  stack(node, box, layout, band ? depth : depth + 1, number);
  endColumn(layout, growsDown(node));
  return box;
}

QWidget* LayoutBuilder::tabs(const ui::Node& node, QWidget* parent, int depth) {
  auto* box = new QWidget(parent);
  auto* layout = column(box, kRowGap);
  layout->addWidget(
      row(ui::Node{Type::Row,
                   nullptr,
                   {},
                   0,
                   false,
                   {ui::Node{Type::Cell,
                             nullptr,
                             {},
                             0,
                             true,
                             {ui::Node{Type::Control, node.control, {}, 0, true, {}}}}}},
          box, {-1, false}));
  auto* stackWidget = new QStackedWidget(box);
  for (const ui::Node& child : node.children) {
    auto* page = new QWidget(stackWidget);
    auto* inside = column(page, kRowGap);
    stack(child, page, inside, depth, owner_.stacks_++);
    if (!growsDown(child)) inside->addStretch(1);
    stackWidget->addWidget(page);
    owner_.pages_[node.control].push_back({page, child.text});
  }
  layout->addWidget(stackWidget, 1);
  return box;
}

QWidget* LayoutBuilder::row(const ui::Node& node, QWidget* parent, const Stack& own) {
  auto* holder = new QWidget(parent);
  auto* line = new QHBoxLayout(holder);
  line->setContentsMargins(0, 0, 0, 0);
  line->setSpacing(kCellGap);
  // Cells and rows whose controls are all hidden take no room.
  FormWidget::Holder whole{holder, {}, false};
  const ui::OptionButton* joined = nullptr;
  QHBoxLayout* inside = nullptr;
  bool first = true;
  for (const ui::Node& cell : node.children) {
    const auto* option = lone<ui::OptionButton>(cell, Kind::OptionButton);
    if (option && joined && option->group == joined->group) {
      inside->addSpacing(-1);  // one border between two options
    } else {
      owner_.holders_.push_back({new QWidget(holder), {}, false});
      inside = new QHBoxLayout(owner_.holders_.back().widget);
      inside->setContentsMargins(0, 0, 0, 0);
      inside->setSpacing(option ? 0 : kWordGap);
      const bool space = cell.children.front().type == Type::Space && cell.children.size() == 1;
      line->addWidget(owner_.holders_.back().widget, cell.grow ? (space ? 1 : 2) : 0);
    }
    joined = option;
    FormWidget::Holder& held = owner_.holders_.back();
    for (const ui::Node& item : cell.children) {
      word(item, held.widget, inside, own, first);
      // A label that stands close before something names it.
      if (item.control && item.control->kind == Kind::Label && &item != &cell.children.back()) {
        owner_.views_.at(item.control)->field->setProperty("role", QStringLiteral("caption"));
      }
      first = false;
      if (item.control) {
        held.controls.push_back(item.control);
        whole.controls.push_back(item.control);
      }
    }
    held.always = held.controls.empty();
    const bool words = std::any_of(cell.children.begin(), cell.children.end(),
                                   [](const ui::Node& item) { return item.type == Type::Text; });
    whole.always = whole.always || (held.always && words);
  }
  owner_.holders_.push_back(std::move(whole));
  if (!node.grow) line->addStretch(1);
  return holder;
}

void LayoutBuilder::word(const ui::Node& node, QWidget* parent, QHBoxLayout* line, const Stack& own,
                         bool firstOfRow) {
  if (node.type == Type::Space) {
    line->addStretch(1);
    return;
  }
  if (node.type == Type::Text) {
    QLabel* label = captionLabel(parent, "caption");
    label->setText(text(node.text));
    line->addWidget(label);
    // A text of its own at the head of a row is measured with the captions of its stack.
    if (firstOfRow && own.labelled) label->setProperty("stack", own.number);
    return;
  }
  control(node, parent, line, own, firstOfRow);
}

void LayoutBuilder::control(const ui::Node& node, QWidget* parent, QHBoxLayout* line,
                            const Stack& own, bool firstOfRow) {
  ui::Control& made = *node.control;
  ViewPtr view = makeView(made);
  QWidget* outer = view->outer;
  outer->setParent(parent);
  if (view->field->objectName().isEmpty()) view->field->setObjectName(text(made.name));
  const bool captioned =
      isField(made) || made.kind == Kind::ListView || made.kind == Kind::TreeView;
  if (captioned && isTall(made)) {
    // The caption of a list stands above it.
    auto* holder = new QWidget(parent);
    auto* layout = column(holder, 3);
    QLabel* label = captionLabel(holder, "caption");
    layout->addWidget(label);
    layout->addWidget(outer, 1);
    owner_.labels_[&made] = {label, -1};
    line->addWidget(holder, node.grow ? 1 : 0);
  } else {
    if (captioned && (!made.caption().empty() || (firstOfRow && own.labelled))) {
      QLabel* label = captionLabel(parent, "caption");
      label->setBuddy(view->field);
      line->addWidget(label);
      owner_.labels_[&made] = {label, firstOfRow ? own.number : -1};
    }
    line->addWidget(outer, node.grow ? 1 : 0);
  }
  setWidth(node, *view);
  owner_.order_.push_back(&made);
  owner_.watch(*view->field, made);
  takeDrops(owner_, *view->field, view.get(), made);
  owner_.views_[&made] = std::move(view);
}

void LayoutBuilder::setWidth(const ui::Node& node, ControlView& view) {
  const ui::Control& made = view.base;
  const int chars = node.chars > 0 ? node.chars : made.chars;
  QWidget* outer = view.outer;
  if (isTall(made)) {
    if (!node.grow && made.kind != Kind::TextBox) outer->setMaximumHeight(kRowHeight * 9);
    return;
  }
  if (!isField(made)) {
    if (chars > 0) outer->setMinimumWidth(charsWidth(outer->font(), chars) + kFieldPadding);
    return;
  }
  if (made.kind == Kind::DatePicker && chars == 0 && !node.grow) return;  // as wide as a date
  const int padding = made.kind == Kind::ComboBox ? kFieldPadding + 18 : kFieldPadding;
  const int wide = charsWidth(outer->font(), chars > 0 ? chars : kDefaultChars) + padding;
  if (node.grow) {
    outer->setMinimumWidth(std::min(wide, charsWidth(outer->font(), 6) + kShortestGrowing));
    outer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  } else {
    outer->setFixedWidth(wide);
  }
}

ViewPtr LayoutBuilder::makeView(ui::Control& made) {
  switch (made.kind) {
    case Kind::Label:
      return makeLabelView(owner_, static_cast<ui::Label&>(made));
    case Kind::TextBox:
      return makeTextView(owner_, static_cast<ui::TextBox&>(made));
    case Kind::ComboBox:
      return makeComboView(owner_, static_cast<ui::ComboBox&>(made));
    case Kind::DatePicker:
      return makeDateView(owner_, static_cast<ui::DatePicker&>(made));
    case Kind::CheckBox:
      return makeCheckView(owner_, static_cast<ui::CheckBox&>(made));
    case Kind::OptionButton:
      return makeOptionView(owner_, static_cast<ui::OptionButton&>(made));
    case Kind::Button:
      return makeButtonView(owner_, static_cast<ui::Button&>(made));
    case Kind::ListView:
      return makeListView(owner_, static_cast<ui::ListView&>(made));
    case Kind::TreeView:
      return makeTreeView(owner_, static_cast<ui::TreeView&>(made));
    case Kind::TabStrip:
      return makeTabView(owner_, static_cast<ui::TabStrip&>(made));
    default:
      throw ui::LayoutError(owner_.form().name() + ": " + made.name + " has no widget");
  }
}

}  // namespace tolvex::desktop
