#include <algorithm>

#include "framework/text.h"
#include "platform/controls.h"
#include "platform/form.h"
#include "platform/layout.h"

namespace tolvex::ui {
namespace {

std::string plainCaption(const Control& control) { return withoutAccessKey(control.caption()); }

void pad(std::string& line, std::size_t width) {
  const std::size_t have = length(line);
  if (have < width) line.append(width - have, ' ');
}

class Description {
 public:
  std::string text;

  void node(const Node& node, std::size_t depth) {
    switch (node.type) {
      case Node::Type::Frame:
        if (node.control) {
          if (!node.control->shown()) return;
          open(*node.control, depth);
          ++depth;
        }
        break;
      case Node::Type::Tabs:
        if (!node.control->shown()) return;
        open(*node.control, depth);
        for (const Node& page : node.children) {
          if (page.text == static_cast<TabStrip*>(node.control)->currentKey()) {
            nodes(page.children, depth + 1);
          }
        }
        return;
      case Node::Type::Control:
        if (node.control->shown()) open(*node.control, depth);
        return;
      case Node::Type::Text:
      case Node::Type::Space:
        return;
      default:
        break;
    }
    nodes(node.children, depth);
  }

 private:
  void nodes(const std::vector<Node>& list, std::size_t depth) {
    for (const Node& child : list) node(child, depth);
  }

  void open(const Control& control, std::size_t depth) {
    const std::string indent(depth * 2, ' ');
    text += indent + (control.usable() ? "" : "-") + control.name;
    if (const std::string caption = plainCaption(control); !caption.empty()) {
      text += " \"" + caption + '"';
    }
    value(control);
    text += '\n';
    if (control.kind == Kind::ListView) table(static_cast<const ListView&>(control), indent + "  ");
    if (control.kind == Kind::TreeView) tree(static_cast<const TreeView&>(control), indent + "  ");
  }

  void value(const Control& control) {
    switch (control.kind) {
      case Kind::TextBox: {
        const auto& box = static_cast<const TextBox&>(control);
        text += " [" + (box.password ? std::string(length(box.text()), '*') : box.text()) + ']';
        if (box.readOnly()) text += " read-only";
        break;
      }
      case Kind::ComboBox:
        text += " [" + static_cast<const ComboBox&>(control).text() + ']';
        break;
      case Kind::DatePicker: {
        const auto& date = static_cast<const DatePicker&>(control).value();
        text += " [" + (date ? date->Text() : std::string()) + ']';
        break;
      }
      case Kind::CheckBox:
        text += static_cast<const CheckBox&>(control).on() ? " [x]" : " [ ]";
        break;
      case Kind::OptionButton:
        text += static_cast<const OptionButton&>(control).on() ? " (o)" : " ( )";
        break;
      case Kind::TabStrip: {
        const auto& strip = static_cast<const TabStrip&>(control);
        for (const TabStrip::Tab& tab : strip.tabs()) {
          if (!tab.visible) continue;
          const bool current = tab.key == strip.currentKey();
          text += (current ? " [" : " ") + tab.caption + (current ? "]" : "");
        }
        break;
      }
      default:
        break;
    }
  }

  void table(const ListView& list, const std::string& indent) {
    std::vector<std::size_t> widths;
    for (const Column& column : list.columns) widths.push_back(length(column.caption));
    for (const Row& row : list.rows()) {
      for (std::size_t i = 0; i < std::min(row.cells.size(), widths.size()); ++i) {
        widths[i] = std::max(widths[i], length(row.cells[i].text));
      }
    }
    std::string head = indent + "  ";
    for (std::size_t i = 0; i < widths.size(); ++i) {
      if (i > 0) head += " | ";
      cell(head, list.columns[i].caption, widths[i], list.columns[i].align);
    }
    text += trimRight(head) + '\n';
    for (std::size_t at = 0; at < list.rows().size(); ++at) {
      const Row& row = list.rows()[at];
      std::string line = indent + (static_cast<int>(at) == list.current() ? "> " : "  ");
      if (list.checkBoxes) line += row.checked ? "[x] " : "[ ] ";
      for (std::size_t i = 0; i < widths.size(); ++i) {
        if (i > 0) line += " | ";
        const bool given = i < row.cells.size();
        cell(line, given ? row.cells[i].text : std::string(), widths[i], list.columns[i].align);
      }
      line = trimRight(line);
      if (row.bold) line += " bold";
      if (row.mark == Mark::Good) line += " good";
      if (row.mark == Mark::Bad) line += " bad";
      if (row.mark == Mark::Grey) line += " grey";
      text += line + '\n';
    }
  }

  static void cell(std::string& line, const std::string& words, std::size_t width, Align align) {
    const std::size_t end = length(line) + width;
    if (align == Align::Right) pad(line, end - length(words));
    line += words;
    pad(line, end);
  }

  void tree(const TreeView& view, const std::string& indent) {
    for (const TreeNode& item : view.nodes()) {
      std::size_t depth = 0;
      bool open = true;
      for (const TreeNode* up = view.find(item.parent); up && open; up = view.find(up->parent)) {
        open = up->expanded;
        ++depth;
      }
      if (!open) continue;
      text += indent + std::string(depth * 2, ' ') + (item.key == view.current() ? "> " : "  ") +
              item.text + '\n';
    }
  }
};

}  // namespace

std::string withoutAccessKey(std::string_view caption) {
  std::string plain;
  for (std::size_t i = 0; i < caption.size(); ++i) {
    if (caption[i] == '&' && i + 1 < caption.size()) ++i;
    plain += caption[i];
  }
  return plain;
}

std::string describe(Form& form) {
  Description description;
  description.text = form.name() + " \"" + form.title() + "\"\n";
  description.node(form.layout(), 1);
  return description.text;
}

}  // namespace tolvex::ui
