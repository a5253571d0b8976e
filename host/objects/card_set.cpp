#include "host/objects/card_set.h"

#include <algorithm>

#include "framework/results.h"
#include "host/objects/kinds.h"

namespace tolvex {

void CardSet::addBranch(std::string code, std::string caption) {
  branches_.push_back({"", std::move(caption), std::move(code), {}, {}});
}

LayoutNode& CardSet::branchOf(std::string_view code) {
  const auto branch = std::find_if(branches_.begin(), branches_.end(),
                                   [&](const LayoutNode& node) { return node.code == code; });
  expect(branch != branches_.end(), "a card stands under a branch");
  return *branch;
}

void CardSet::add(std::string_view branch, Card card) {
  if (!branch.empty()) addKind(branch, card.component, card.kind);
  cards_[card.kind] = std::move(card);
}

void CardSet::addKind(std::string_view branch, std::string component, std::string kind) {
  branchOf(branch).children.push_back(
      {std::move(component), kindCaption(kind), std::move(kind), {}, {}});
}

const Card* CardSet::find(std::string_view kind) const {
  const auto found = cards_.find(kind);
  return found == cards_.end() ? nullptr : &found->second;
}

std::vector<LayoutNode> CardSet::layout() const {
  std::vector<LayoutNode> shown;
  for (const LayoutNode& branch : branches_)
    if (!branch.children.empty()) shown.push_back(branch);
  return shown;
}

}  // namespace tolvex
