// What is wrong with a paper form, for the test of every form.
#pragma once

#include <string>
#include <vector>

#include "platform/report.h"

namespace tolvex::test {

// Boxes that leave the form, overlap, or share a name; one line a fault.
std::vector<std::string> formFaults(const Panel& panel);

}  // namespace tolvex::test
