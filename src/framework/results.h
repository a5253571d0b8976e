// The result records in which every operation tells how it ended. Code 0 is success.
//
// Code 777 is a refusal by the module's own checks, 999 a failed entry test that was not asked to
// be strict; 1001 and up are run-time errors of this library; all other codes come from the store.
// Text is for the user, in Lithuanian; a line break inside it is always CR LF.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "framework/variant.h"

namespace tolvex {

inline constexpr std::string_view kLineBreak = "\r\n";

inline constexpr std::int32_t kDone = 0;
inline constexpr std::int32_t kRefused = 777;
inline constexpr std::int32_t kFailedTest = 999;

// Answer of the store: Data is, as a rule, a record set; empty when the call returns none.
struct [[nodiscard]] HostResult {
  std::int32_t Code = kDone;
  std::string Text;
  Variant Data;
};

// Answer of Properties and Methods.
struct [[nodiscard]] MethodResult {
  std::int32_t Code = kDone;
  std::string Text;
  Variant Value;
  bool Told = false;  // the user has seen Text, so whoever gets the failure passes it on in silence
};

// Answer of Read and Save of an object.
struct [[nodiscard]] SaveResult {
  std::int32_t Code = kDone;
  std::string Text;
};

MethodResult done(Variant value = {});
MethodResult refused(std::string text, Variant value = {});  // code 777
MethodResult passOn(const HostResult& result);               // code, text, data as they came

// A mistake in the use of a record set, dictionary or variant. The numbers are stable; Methods and
// Properties pass them on as their Code.
class RowSetError : public std::runtime_error {
 public:
  enum Kind : std::int32_t {
    NotOpen = 1001,
    UnknownColumn,
    NoCurrentRow,
    BadFilter,
    BadBookmark,
    TypeMismatch,
    OutOfRange,
    DuplicateKey,
    UnknownKey,
    Unexpected,  // a broken expectation, see expect()
  };
  RowSetError(Kind kind, const std::string& text) : std::runtime_error(text), Number(kind) {}
  const std::int32_t Number;
};

// States what must hold at this point; throws RowSetError (Unexpected) in release builds as well,
// so that the user keeps the screen and nothing is saved.
inline void expect(bool condition, const char* whatHeld) {
  if (!condition) throw RowSetError(RowSetError::Unexpected, whatHeld);
}

}  // namespace tolvex
