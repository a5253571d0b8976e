// Answers of routines as text for table tests.
#pragma once

#include <string>

#include "host/store/session.h"

namespace tolvex::store {

// The given columns ("Account,SumA") of each row joined by "|", a row a line; empty cells are "".
// A refused call gives its code and text.
std::string answerText(Session& session, const std::string& kind, const std::string& method,
                       const std::string& parameters, const std::string& columns);

}  // namespace tolvex::store
