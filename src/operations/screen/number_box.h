// A number in a text box: shown rounded, remembered exactly.
//
// A rate of nine decimals is shown with four; as long as the user leaves the text alone, reading
// the box gives back the rate of nine decimals. Sum boxes take arithmetic ("100*1,21").
#pragma once

#include <string>

#include "platform/controls.h"
#include "platform/numbers.h"

namespace tolvex {

class NumberBox {
 public:
  enum class Input { Number, Arithmetic };
  NumberBox(ui::TextBox& box, int decimals, NumberFormat format, Input input);

  void show(double value);
  void clear();          // an empty box reads as 0
  double value() const;  // of what stands in the box now; 0 when that is no number
  void normalise();      // on leaving: what stands there, computed and written with its decimals
  ui::TextBox& box;

 private:
  int decimals_;
  NumberFormat format_;
  std::string shown_;  // the text that stands for exact_
  double exact_ = 0;
};

}  // namespace tolvex
