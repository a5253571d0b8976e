// Counts how often SQLite makes data durable, by a layer over the system's files that forwards
// everything and notes each flush.
#pragma once

#include <cstdint>

namespace tolvex::store {

// The name under which the counting layer over the current default files is registered.
const char* flushCountingFiles();
// Flushes by the current thread since it began.
std::int64_t flushesOfThisThread();

}  // namespace tolvex::store
