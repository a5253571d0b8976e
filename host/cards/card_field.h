// Fields of a card: what a column of a record looks like on the screen, and the boxes made of it.
//
// The control of a column is named after it: txtName, chkOwnFirm, cmbRoleID; the button that picks
// for a reference is cmd and the name. How many characters fit is taken from the record's column.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/form.h"
#include "platform/host.h"

namespace tolvex {

struct CardField {
  enum class Kind {
    Text,
    Number,     // empty is stored as absent
    Check,      // 0 or 1
    Choice,     // one of the objects of `kinds`, from a list
    Reference,  // an object of one of `kinds`, typed or through a picker (F4)
  };
  // What is odd about a value that may be saved all the same; "" when nothing is.
  using Remark = std::string (*)(std::string_view text);

  const char* column;
  const char* caption;
  Kind kind = Kind::Text;
  int chars = 0;             // width in characters
  int lines = 1;             // Text
  int decimals = 0;          // Number
  const char* kinds = "";    // object codes joined by blanks
  const char* missing = "";  // the refusal when nothing is given; "" lets the field be empty
  Remark remark = nullptr;
};

// A reference into a column that holds references or ids; null for "".
void setReference(Field field, const std::string& reference);

// A field on a form, between the record's column and its control.
class CardBox {
 public:
  explicit CardBox(const CardField& about) : about_(about) {}
  virtual ~CardBox() = default;

  const CardField& about() const { return about_; }
  virtual ui::Control& control() = 0;
  virtual void show(RowSet& record) = 0;
  // The value as it would be stored; nothing is assigned while it is what the record holds.
  virtual void write(RowSet& record) = 0;
  virtual void lock(bool readOnly) = 0;
  virtual bool isEmpty() const = 0;
  virtual std::string text() const = 0;               // as shown
  virtual std::string refusal() const { return {}; }  // why this is no value of the field
  // What is odd about the value, shown while the card is filled in.
  virtual std::string remark() const {
    return about_.remark && !isEmpty() ? about_.remark(text()) : std::string();
  }
  virtual void refresh() {}  // what the box shows of other objects is read again

 private:
  const CardField& about_;
};

// Registers the controls with the form; `changed` is called after the user changed the value.
// `about` outlives the box.
std::unique_ptr<CardBox> makeCardBox(ui::Form& form, const CardField& about,
                                     std::function<void()> changed);

}  // namespace tolvex
