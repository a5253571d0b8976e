// Answers of the store for those who cannot go on without them: whatever went wrong, the user has
// seen it once.
//
// Three things may go wrong: the store refuses, the call throws, or it succeeds without data. Of a
// keyed read the first has been shown by Properties, the others by nobody.
#pragma once

#include "framework/object_contract.h"
#include "framework/param_dictionary.h"

namespace tolvex {

inline constexpr const char* kNothingRead = "Duomenys neperskaityti!";

// The rows or the dictionary of an answer; null after the user was told why there is none.
// `nothing` is said of a success without data.
RowSetPtr toldRows(const MethodResult& answer, const char* nothing = kNothingRead);
DictionaryPtr toldDictionary(const MethodResult& answer, const char* nothing = kNothingRead);
// The rows of a routine that has no key.
RowSetPtr toldRows(BusinessObject& bo, const std::string& routine, const std::string& parameters);

}  // namespace tolvex
