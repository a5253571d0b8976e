#include "framework/variant.h"

#include <cmath>
#include <limits>

#include "framework/results.h"
#include "framework/rounding.h"
#include "framework/text.h"

namespace tolvex {

namespace {

[[noreturn]] void mismatch(const char* wanted) {
  throw RowSetError(RowSetError::TypeMismatch, std::string("Reikšmės tipas netinka: ") + wanted);
}

}  // namespace

bool Variant::IsNumber() const {
  return std::holds_alternative<std::int32_t>(v_) || std::holds_alternative<double>(v_);
}

bool Variant::AsBool() const { return IsBool() ? std::get<bool>(v_) : AsDouble() != 0; }

int Variant::AsInt() const {
  if (const auto* whole = std::get_if<std::int32_t>(&v_)) return *whole;
  const double rounded = roundHalfEven(AsDouble(), 0);
  using Limits = std::numeric_limits<std::int32_t>;
  if (!(rounded >= Limits::min() && rounded <= Limits::max())) {
    throw RowSetError(RowSetError::OutOfRange, "Skaičius per didelis!");
  }
  return static_cast<int>(rounded);
}

double Variant::AsDouble() const {
  if (const auto* number = std::get_if<double>(&v_)) return *number;
  if (const auto* whole = std::get_if<std::int32_t>(&v_)) return *whole;
  if (const auto* flag = std::get_if<bool>(&v_)) return *flag ? 1 : 0;
  mismatch("laukiama skaičiaus");
}

DateTime Variant::AsDate() const {
  if (const auto* date = std::get_if<DateTime>(&v_)) return *date;
  mismatch("laukiama datos");
}

const std::string& Variant::AsText() const {
  if (const auto* text = std::get_if<std::string>(&v_)) return *text;
  mismatch("laukiama teksto");
}

RowSetPtr Variant::AsRows() const {
  if (const auto* rows = std::get_if<RowSetPtr>(&v_)) return *rows;
  mismatch("laukiama įrašų rinkinio");
}

DictionaryPtr Variant::AsDictionary() const {
  if (const auto* dictionary = std::get_if<DictionaryPtr>(&v_)) return *dictionary;
  mismatch("laukiama parametrų sąrašo");
}

ObjectPtr Variant::AsObject() const {
  if (const auto* object = std::get_if<ObjectPtr>(&v_)) return *object;
  mismatch("laukiama objekto");
}

const Variant::Array& Variant::AsArray() const {
  if (const auto* array = std::get_if<std::shared_ptr<const Array>>(&v_)) return **array;
  mismatch("laukiama masyvo");
}

std::string Variant::Show() const {
  if (IsText()) return AsText();
  if (IsNumber()) return plainNumber(AsDouble());
  if (IsBool()) return AsBool() ? "True" : "False";
  if (IsDate()) return AsDate() == AsDate().Date() ? AsDate().Text() : AsDate().LongText();
  if (IsAbsent()) return "";
  if (IsRows()) return "<rows>";
  if (IsDictionary()) return "<dictionary>";
  if (IsObject()) return "<object>";
  std::string out = "[";
  for (const Variant& item : AsArray()) out += (out.size() > 1 ? ", " : "") + item.Show();
  return out + "]";
}

bool Variant::operator==(const Variant& other) const {
  if (IsNumber() && other.IsNumber()) return AsDouble() == other.AsDouble();
  if (IsArray() && other.IsArray()) return AsArray() == other.AsArray();
  return v_ == other.v_;
}

}  // namespace tolvex
