// Layout of a form from a text picture.
//
//   [SSFrame]                      a framed block around the lines indented below it
//     dtpDate | txtNumber          a line is a row; "|" parts cells
//     "Serija, Nr." txtSerija txtNumber:8     words in one cell stand close together; :8 is a width
//     txtComment> cmdCommentList   ">" lets a control take the room that is left
//   [columns]                      its blocks stand side by side
//   []                             a frame without a control
//   [tabs tabMain]                 one indented block [key] for each tab of the strip
//   lvwBRRecords>                  a list grows both ways
//   SSCClose | >> | cmdWrite       ">>" is empty space
//
// A wrong picture is a fault of the program: LayoutError names form, line and word. Menu items and
// timers do not stand in pictures.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tolvex::ui {

class Form;
class Control;

struct Node {
  enum class Type { Column, Row, Columns, Frame, Tabs, Page, Cell, Control, Text, Space };
  Type type = Type::Column;
  ui::Control* control = nullptr;  // Frame: its panel or null; Tabs: the strip; Control: itself
  std::string text;                // Text: the words; Page: the tab's key
  int chars = 0;                   // width asked for in the picture
  bool grow = false;
  std::vector<Node> children;
};

class LayoutError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Builds the tree of a form's picture and sets Control::parent and page. Throws LayoutError for an
// unknown, doubled or left-out control; a control that is invisible from the start may be left out.
Node buildLayout(Form& form, const char* picture);

// Every shown control of the form with its state, in layout order, as text: `name "caption" value`,
// "-" before disabled ones, lists as tables.
std::string describe(Form& form);

// A caption as it is read: "&Save" is "Save", "&&" is "&".
std::string withoutAccessKey(std::string_view caption);

}  // namespace tolvex::ui
