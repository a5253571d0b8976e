#include "host/store/answer.h"

namespace tolvex::store {

std::string_view blankForBase(std::string_view currency) {
  return currency == "LTL" ? std::string_view("   ") : currency;
}

Answer::Answer(const ColumnSpec* columns, int count) : Answer(RowSet::make(columns, count)) {}

Answer::Answer(RowSetPtr set) : set_(std::move(set)) {
  for (std::size_t i = 0; i < set_->Fields().size(); ++i)
    fields_.emplace_back(*set_, static_cast<int>(i));
  column_ = fields_.size();
}

Answer& Answer::row() {
  expect(column_ == fields_.size(), "the row before is complete");
  set_->LoadRow();
  column_ = 0;
  return *this;
}

Field& Answer::next() {
  expect(column_ < fields_.size(), "the row has room for this value");
  return fields_[column_++];
}

Answer& Answer::text(std::string_view value) {
  next() = value;
  return *this;
}

Answer& Answer::textOrNull(std::string_view value) { return value.empty() ? null() : text(value); }

Answer& Answer::number(double value) {
  next() = value;
  return *this;
}

Answer& Answer::integer(std::int64_t value) {
  next().SetValue(static_cast<int>(value));
  return *this;
}

Answer& Answer::day(std::int64_t yyyymmdd) {
  if (yyyymmdd == 0) return null();
  next().SetValue(DateTime::FromDayNumber(static_cast<int>(yyyymmdd)));
  return *this;
}

Answer& Answer::moment(std::string_view written) {
  const auto value = DateTime::Parse(written);
  if (!value) return null();
  next().SetValue(*value);
  return *this;
}

Answer& Answer::null() {
  next().SetValue(Null{});
  return *this;
}

Variant Answer::done() {
  if (set_->RecordCount() > 0) set_->MoveFirst();
  return set_;
}

RowSetPtr Answer::nested() { return next().Rows(); }

}  // namespace tolvex::store
