#include "tests/support/form_faults.h"

#include <algorithm>
#include <set>

namespace tolvex::test {
namespace {

constexpr float kSlackMm = 0.01F;

std::string nameOf(const Box& box) { return box.name.empty() ? "„" + box.text + "“" : box.name; }

bool overlap(float a, float aLength, float b, float bLength) {
  return std::min(a + aLength, b + bLength) - std::max(a, b) > kSlackMm;
}

}  // namespace

std::vector<std::string> formFaults(const Panel& panel) {
  std::vector<std::string> faults;
  std::set<std::string> names;
  for (std::size_t i = 0; i < panel.boxes.size(); ++i) {
    const Box& box = panel.boxes[i];
    const bool inside = box.x >= -kSlackMm && box.y >= -kSlackMm && box.w > 0 && box.h > 0 &&
                        box.x + box.w <= panel.widthMm + kSlackMm &&
                        box.y + box.h <= panel.heightMm + kSlackMm;
    if (!inside) faults.push_back(nameOf(box) + " leaves the form");
    if (!box.name.empty() && !names.insert(box.name).second)
      faults.push_back(box.name + " stands twice");
    for (std::size_t j = 0; j < i; ++j) {
      const Box& other = panel.boxes[j];
      if (overlap(box.x, box.w, other.x, other.w) && overlap(box.y, box.h, other.y, other.h))
        faults.push_back(nameOf(box) + " overlaps " + nameOf(other));
    }
  }
  return faults;
}

}  // namespace tolvex::test
