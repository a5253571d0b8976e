#include "host/store/store_port.h"

namespace tolvex::store {
namespace {

class StoreBusinessObject final : public BusinessObject {
 public:
  StoreBusinessObject(StorePort& port, std::string kind) : port_(port), kind_(std::move(kind)) {}
  void CallBO(const std::string& method, const std::string& parameters, std::nullptr_t,
              HostResult& out) override {
    out = port_.call(kind_, method, parameters);
  }

 private:
  StorePort& port_;
  const std::string kind_;
};

}  // namespace

std::shared_ptr<BusinessObject> businessObject(StorePort& port, std::string kind) {
  return std::make_shared<StoreBusinessObject>(port, std::move(kind));
}

}  // namespace tolvex::store
