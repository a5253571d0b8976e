// FormRegistry: which screens the module has and how each is made.
//
// Filled once when the module is loaded, by every subject for its own screens; whoever opens a
// screen names it and gives what it is opened over, and never includes it. A screen that is not
// there is answered with null, so the caller can say so.
#pragma once

#include <any>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/results.h"
#include "platform/form.h"
#include "platform/objects.h"

namespace tolvex {

// What the screen of an object is opened over.
struct ObjectFormRequest {
  HostContext& host;
  std::shared_ptr<VXObjectUIO> object;
  std::string ClickedParameters;  // what the menu passed on
  bool boolModalForm = false;     // shown over another screen: to look at, without new and close
};

class FormRegistry {
 public:
  template <class Request>
  using Factory = std::function<std::shared_ptr<ui::Form>(const Request&)>;

  // A name that is there already is replaced.
  template <class Request>
  void add(std::string name, Factory<Request> make) {
    makers_[std::move(name)] = std::move(make);
  }

  // The screen over `request`, or null when the module has no screen of that name. A request of
  // another type than the screen was added with is a fault of the program.
  template <class Request>
  std::shared_ptr<ui::Form> make(std::string_view name, const Request& request) const {
    const auto found = makers_.find(name);
    if (found == makers_.end()) return nullptr;
    const auto* factory = std::any_cast<Factory<Request>>(&found->second);
    expect(factory != nullptr, "a screen is opened over what it was made for");
    return (*factory)(request);
  }

  bool has(std::string_view name) const { return makers_.contains(name); }
  std::vector<std::string> names() const;

 private:
  std::map<std::string, std::any, std::less<>> makers_;
};

}  // namespace tolvex
