// CardSet: the kinds of object that the program itself brings a screen for (firms, persons, banks,
// currencies, users): how the screen is made, which right guards it, where it stands in the tree.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/host.h"
#include "platform/registration.h"

namespace tolvex {

// A keyed action of a kind that the program answers by itself, on a read object.
using CardMethod =
    std::function<MethodResult(HostContext&, VXObjectUIO&, std::span<const Variant> par)>;

struct Card {
  std::string kind;       // "O0000100"
  std::string component;  // whose five flags guard its commands
  std::string newEntry;   // caption of the menu entry, "Nauja įmonė"; "" when none can be made
  bool readOnly = false;  // none is made, changed or deleted by a user
  // The screen over a read object, new when its OID is no reference.
  std::function<std::shared_ptr<ui::Form>(HostContext&, std::shared_ptr<VXObjectUIO>)> make;
  std::map<std::string, CardMethod, std::less<>> methods;  // the rest is asked of the store
};

class CardSet {
 public:
  // Roots of the tree: the module's own stand before them.
  void addBranch(std::string code, std::string caption);
  // A card under a branch added before, its caption there is that of the kind; "": not in the tree.
  void add(std::string_view branch, Card card);
  // A kind of the module's own, under a branch added before, for those who may view `component`.
  void addKind(std::string_view branch, std::string component, std::string kind);

  const Card* find(std::string_view kind) const;  // null: no screen
  std::vector<LayoutNode> layout() const;

 private:
  LayoutNode& branchOf(std::string_view code);
  std::vector<LayoutNode> branches_;
  std::map<std::string, Card, std::less<>> cards_;
};

}  // namespace tolvex
