#include "platform/layout.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "platform/controls.h"
#include "platform/form.h"

namespace tolvex::ui {
namespace {

struct Line {
  std::size_t indent = 0;
  std::size_t number = 0;  // in the picture, from 1
  std::string_view text;   // without blanks around it
};

std::string_view trimmed(std::string_view text) {
  const std::size_t from = text.find_first_not_of(" \t\r");
  if (from == std::string_view::npos) return {};
  return text.substr(from, text.find_last_not_of(" \t\r") - from + 1);
}

std::vector<Line> linesOf(std::string_view picture) {
  std::vector<Line> lines;
  for (std::size_t number = 1; !picture.empty(); ++number) {
    const std::size_t end = std::min(picture.find('\n'), picture.size());
    const std::string_view whole = picture.substr(0, end);
    picture.remove_prefix(std::min(end + 1, picture.size()));
    const std::string_view text = trimmed(whole);
    if (!text.empty()) lines.push_back({whole.find_first_not_of(" \t\r"), number, text});
  }
  return lines;
}

bool standsInPicture(const Control& control) {
  return control.kind != Kind::MenuItem && control.kind != Kind::Timer;
}

class Builder {
 public:
  Builder(Form& form, std::string_view picture) : form_(form), lines_(linesOf(picture)) {}

  Node build() {
    Node root;
    if (!lines_.empty()) root.children = block(lines_.front().indent, nullptr, {});
    if (at_ < lines_.size()) fail("stands left of the lines above", lines_[at_].text);
    for (const Control* control : form_.controls()) {
      if (standsInPicture(*control) && control->visible() && !placed(control)) {
        throw LayoutError(form_.name() + ": control " + control->name + " is left out");
      }
    }
    return root;
  }

 private:
  [[noreturn]] void fail(const std::string& what, std::string_view word) const {
    const std::size_t number = at_ < lines_.size() ? lines_[at_].number : 0;
    throw LayoutError(form_.name() + ", line " + std::to_string(number) + ": \"" +
                      std::string(word) + "\" " + what);
  }

  bool placed(const Control* control) const {
    return std::find(placed_.begin(), placed_.end(), control) != placed_.end();
  }

  Control& place(std::string_view name, Control* parent, const std::string& page) {
    Control* control = form_.find(name);
    if (!control) fail("is no control of the form", name);
    if (!standsInPicture(*control)) fail("has no place in a picture", name);
    if (placed(control)) fail("stands in the picture twice", name);
    placed_.push_back(control);
    control->parent = parent;
    control->page = page;
    return *control;
  }

  // The lines at `indent` and all below them, up to a line further left.
  std::vector<Node> block(std::size_t indent, Control* parent, const std::string& page) {
    std::vector<Node> nodes;
    while (at_ < lines_.size() && lines_[at_].indent >= indent) {
      if (lines_[at_].indent > indent) fail("is indented without a block above", lines_[at_].text);
      nodes.push_back(lines_[at_].text.front() == '[' ? header(indent, parent, page)
                                                      : row(parent, page));
    }
    return nodes;
  }

  std::vector<Node> inner(std::size_t indent, Control* parent, const std::string& page) {
    if (at_ >= lines_.size() || lines_[at_].indent <= indent) return {};
    return block(lines_[at_].indent, parent, page);
  }

  Node header(std::size_t indent, Control* parent, const std::string& page) {
    std::string_view text = lines_[at_].text;
    Node node;
    if (text.back() == '>') {
      node.grow = true;
      text.remove_suffix(1);
    }
    if (text.size() < 2 || text.back() != ']') fail("lacks its closing bracket", text);
    const std::string_view inside = trimmed(text.substr(1, text.size() - 2));
    constexpr std::string_view kTabs = "tabs ";
    if (inside == "columns") {
      node.type = Node::Type::Columns;
      ++at_;
      node.children = inner(indent, parent, page);
      return node;
    }
    if (inside.substr(0, kTabs.size()) == kTabs) {
      Control& strip = place(trimmed(inside.substr(kTabs.size())), parent, page);
      if (strip.kind != Kind::TabStrip) fail("is no tab strip", strip.name);
      node.type = Node::Type::Tabs;
      node.control = &strip;
      ++at_;
      if (at_ < lines_.size() && lines_[at_].indent > indent) node.children = pages(strip);
      return node;
    }
    node.type = Node::Type::Frame;
    if (!inside.empty()) {
      node.control = &place(inside, parent, page);
      if (node.control->kind != Kind::Panel) fail("is no panel", inside);
    }
    ++at_;
    node.children = node.control ? inner(indent, node.control, {}) : inner(indent, parent, page);
    return node;
  }

  std::vector<Node> pages(Control& strip) {
    std::vector<Node> nodes;
    const std::size_t indent = lines_[at_].indent;
    while (at_ < lines_.size() && lines_[at_].indent >= indent) {
      const std::string_view text = lines_[at_].text;
      if (lines_[at_].indent > indent || text.front() != '[' || text.back() != ']') {
        fail("is no page of " + strip.name, text);
      }
      Node page;
      page.type = Node::Type::Page;
      page.text = trimmed(text.substr(1, text.size() - 2));
      if (page.text.empty()) fail("names no tab of " + strip.name, text);
      ++at_;
      page.children = inner(indent, &strip, page.text);
      nodes.push_back(std::move(page));
    }
    return nodes;
  }

  Node row(Control* parent, const std::string& page) {
    Node node;
    node.type = Node::Type::Row;
    std::string_view rest = lines_[at_].text;
    for (bool more = true; more;) {
      Node cell;
      cell.type = Node::Type::Cell;
      more = readCell(cell, rest, parent, page);
      if (cell.children.empty()) fail("has an empty cell", lines_[at_].text);
      node.grow = node.grow || cell.grow;
      node.children.push_back(std::move(cell));
    }
    ++at_;
    return node;
  }

  // Reads words up to the next "|"; true when one was there.
  bool readCell(Node& cell, std::string_view& rest, Control* parent, const std::string& page) {
    for (;;) {
      rest = trimmed(rest);
      if (rest.empty()) return false;
      if (rest.front() == '|') {
        rest.remove_prefix(1);
        return true;
      }
      cell.children.push_back(rest.front() == '"' ? quoted(rest) : word(rest, parent, page));
      cell.grow = cell.grow || cell.children.back().grow;
    }
  }

  Node quoted(std::string_view& rest) {
    const std::size_t end = rest.find('"', 1);
    if (end == std::string_view::npos) fail("lacks its closing quote", rest);
    Node node;
    node.type = Node::Type::Text;
    node.text = rest.substr(1, end - 1);
    rest.remove_prefix(end + 1);
    return node;
  }

  Node word(std::string_view& rest, Control* parent, const std::string& page) {
    const std::string_view whole =
        rest.substr(0, std::min(rest.find_first_of(" \t|"), rest.size()));
    rest.remove_prefix(whole.size());
    Node node;
    if (whole == ">>") {
      node.type = Node::Type::Space;
      node.grow = true;
      return node;
    }
    std::string_view name = whole;
    if (name.back() == '>') {
      node.grow = true;
      name.remove_suffix(1);
    }
    const std::size_t colon = name.find(':');
    if (colon != std::string_view::npos) {
      const std::string_view digits = name.substr(colon + 1);
      const auto end = digits.data() + digits.size();
      const auto read = std::from_chars(digits.data(), end, node.chars);
      if (read.ec != std::errc{} || read.ptr != end || node.chars <= 0) fail("has no width", whole);
      name = name.substr(0, colon);
    }
    node.type = Node::Type::Control;
    node.control = &place(name, parent, page);
    if (node.control->kind == Kind::Panel) fail("is a panel; panels open a block", name);
    return node;
  }

  Form& form_;
  std::vector<Line> lines_;
  std::size_t at_ = 0;
  std::vector<const Control*> placed_;
};

}  // namespace

Node buildLayout(Form& form, const char* picture) { return Builder(form, picture).build(); }

}  // namespace tolvex::ui
