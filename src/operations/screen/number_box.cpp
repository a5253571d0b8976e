#include "operations/screen/number_box.h"

#include <string_view>

#include "framework/conversions.h"

namespace tolvex {
namespace {

char32_t arithmeticKey(char32_t key, const std::string&) {
  constexpr std::u32string_view kept = U"0123456789,+-*/() \b";
  if (key == U'.') return U',';
  return kept.find(key) == std::u32string_view::npos ? U'\0' : key;
}

}  // namespace

NumberBox::NumberBox(ui::TextBox& ownBox, int decimals, NumberFormat format, Input input)
    : box(ownBox), decimals_(decimals), format_(std::move(format)) {
  box.align = ui::Align::Right;
  if (input == Input::Arithmetic) {
    box.keyFilter = arithmeticKey;
  } else {
    box.keyFilter = FilterNumberKey;
  }
}

void NumberBox::show(double value) {
  exact_ = value;
  shown_ = formatNumber(value, decimals_, format_, false);
  box.text = shown_;
}

void NumberBox::clear() {
  exact_ = 0;
  shown_.clear();
  box.text = shown_;
}

double NumberBox::value() const {
  if (box.text() == shown_) return exact_;
  double value = 0;
  return evaluateSum(box.text(), value) ? value : 0;
}

void NumberBox::normalise() {
  if (box.text() == shown_) return;
  // What the user typed counts as it is shown afterwards.
  show(TextToDouble(formatNumber(value(), decimals_, format_, false)));
}

}  // namespace tolvex
