// Fresh keys for rows and saves.
#pragma once

#include <string>

namespace tolvex::store {

std::string newGuid();  // 36 characters: 8-4-4-4-12 hexadecimal digits, random

}  // namespace tolvex::store
