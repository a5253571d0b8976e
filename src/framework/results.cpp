#include "framework/results.h"

#include <utility>

namespace tolvex {

MethodResult done(Variant value) { return {kDone, {}, std::move(value)}; }

MethodResult refused(std::string text, Variant value) {
  return {kRefused, std::move(text), std::move(value)};
}

MethodResult passOn(const HostResult& result) { return {result.Code, result.Text, result.Data}; }

}  // namespace tolvex
