// What the module tells the program that loads it: its tree, its classes, icons and rights.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/objects.h"

namespace tolvex {

struct LayoutNode {
  std::string right;  // component that must grant view; "" needs none
  std::string caption;
  std::string code;
  std::vector<std::string> registered;  // object codes served by the node
  std::vector<LayoutNode> children;
};
struct SecurityEntry {
  std::string parent;
  int kind = 0;  // 10 the module, 1 one level, 2 five flags
  std::string key, caption;
};
enum class IconSize { Small, Large };

class ModuleRegistrar {
 public:
  virtual ~ModuleRegistrar() = default;
  virtual void addLayout(LayoutNode root) = 0;
  virtual void addClass(std::string caption, std::string code, std::string library) = 0;
  virtual void addIcon(IconSize size, std::string key, std::string imageKey) = 0;
};

class VXHeader {
 public:
  virtual ~VXHeader() = default;
  virtual void DllInicialize(ModuleRegistrar& registrar) = 0;
};
class VXHeaderSecurity {
 public:
  virtual ~VXHeaderSecurity() = default;
  virtual std::vector<SecurityEntry> GetComponentList() const = 0;
};

class Module {
 public:
  virtual ~Module() = default;
  virtual std::unique_ptr<VXHeader> header() = 0;
  virtual std::unique_ptr<VXHeaderSecurity> security() = 0;
  // By class name, "UI0201500" and "UIO0201500"; null for a class that the module does not have.
  virtual std::shared_ptr<VXObjectUI> createUI(std::string_view className) = 0;
  virtual std::shared_ptr<VXObjectUIO> createUIO(std::string_view className) = 0;
  virtual std::vector<std::string> formNames() const = 0;  // every screen, for tests of all screens
};

// Grows with every change of a class in src/framework or src/platform that crosses the border.
inline constexpr int kModuleAbi = 2;

}  // namespace tolvex

// The one exported function of the module library. Null for another abi. The caller owns it.
extern "C" tolvex::Module* tolvexModule(int abi);
