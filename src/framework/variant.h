// Variant: the value of one field, argument or setting.
//
// Two states mean "no value" and are kept apart on purpose: empty (never assigned, so the row was
// never stored) and null (stored, without a value). Money is a double; texts are UTF-8.
// Asking for another type than the one held throws RowSetError (TypeMismatch), except that
// AsDouble and AsInt read each other's numbers and Booleans, and AsText reads only texts.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "framework/date_time.h"

namespace tolvex {

class RowSet;
class ParamDictionary;

// What a variant may carry besides values: screens, host objects, dictionaries.
class Object {
 public:
  virtual ~Object() = default;
};

using RowSetPtr = std::shared_ptr<RowSet>;
using DictionaryPtr = std::shared_ptr<ParamDictionary>;
using ObjectPtr = std::shared_ptr<Object>;

struct Null {
  bool operator==(const Null&) const = default;
};

class Variant {
 public:
  using Array = std::vector<Variant>;

  Variant() = default;  // empty
  Variant(Null) : v_(Null{}) {}
  Variant(bool value) : v_(value) {}
  Variant(int value) : v_(std::int32_t{value}) {}
  Variant(double value) : v_(value) {}
  Variant(DateTime value) : v_(value) {}
  Variant(std::string value) : v_(std::move(value)) {}
  Variant(std::string_view value) : v_(std::string(value)) {}
  Variant(const char* value) : v_(std::string(value)) {}
  Variant(RowSetPtr value) : v_(std::move(value)) {}
  Variant(DictionaryPtr value) : v_(std::move(value)) {}
  Variant(ObjectPtr value) : v_(std::move(value)) {}
  Variant(Array value) : v_(std::make_shared<const Array>(std::move(value))) {}

  bool IsEmpty() const { return std::holds_alternative<std::monostate>(v_); }
  bool IsNull() const { return std::holds_alternative<Null>(v_); }
  bool IsAbsent() const { return IsEmpty() || IsNull(); }
  bool IsBool() const { return std::holds_alternative<bool>(v_); }
  bool IsNumber() const;  // integer or double
  bool IsText() const { return std::holds_alternative<std::string>(v_); }
  bool IsDate() const { return std::holds_alternative<DateTime>(v_); }
  bool IsArray() const { return std::holds_alternative<std::shared_ptr<const Array>>(v_); }
  bool IsRows() const { return std::holds_alternative<RowSetPtr>(v_); }
  bool IsDictionary() const { return std::holds_alternative<DictionaryPtr>(v_); }
  bool IsObject() const { return std::holds_alternative<ObjectPtr>(v_); }

  bool AsBool() const;      // numbers: not 0
  int AsInt() const;        // doubles round half to even; out of range throws OutOfRange
  double AsDouble() const;  // Booleans: 1 or 0
  DateTime AsDate() const;
  const std::string& AsText() const;
  RowSetPtr AsRows() const;
  DictionaryPtr AsDictionary() const;
  ObjectPtr AsObject() const;
  const Array& AsArray() const;

  // The held object as T, or null when it is absent or of another class.
  template <class T>
  std::shared_ptr<T> As() const {
    return IsObject() ? std::dynamic_pointer_cast<T>(AsObject()) : nullptr;
  }

  // For messages and traces: absent reads as "", numbers in plain form with ".", dates as Text(),
  // with the time when there is one.
  std::string Show() const;

  // Same state and same value; 1 and 1.0 are equal, sets and objects by identity.
  bool operator==(const Variant& other) const;

 private:
  std::variant<std::monostate, Null, bool, std::int32_t, double, DateTime, std::string, RowSetPtr,
               DictionaryPtr, ObjectPtr, std::shared_ptr<const Array>>
      v_;
};

}  // namespace tolvex
