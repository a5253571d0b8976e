#include "host/objects/module_loader.h"

#include <dlfcn.h>

#include <filesystem>
#include <stdexcept>

namespace tolvex {

std::unique_ptr<Module> loadModule(const std::string& path) {
  if (path.find('/') == std::string::npos)
    throw std::runtime_error("Modulio byla turi būti nurodyta su aplanku: " + path);
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) {
    const char* reason = dlerror();
    throw std::runtime_error("Nepavyko įkelti modulio " + path + ": " + (reason ? reason : ""));
  }
  using Create = Module* (*)(int);
  const auto create = reinterpret_cast<Create>(dlsym(library, "tolvexModule"));
  if (!create) throw std::runtime_error("Byla nėra apskaitos modulis: " + path);
  std::unique_ptr<Module> module(create(kModuleAbi));
  if (!module) throw std::runtime_error("Modulio ir programos versijos nesutampa: " + path);
  return module;
}

std::string modulePathBeside(const std::string& program) {
  std::error_code error;
  std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) self = std::filesystem::absolute(program);
  return (self.parent_path() / "libTolvexUI.so").string();
}

}  // namespace tolvex
