// The screens of account locks, for the registry.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "framework/form_registry.h"

namespace tolvex {

inline constexpr const char* kLockKind = "O0201300";
inline constexpr const char* kLockRights = "CAllAccLock";
inline constexpr const char* kLockScreen = "frmBRLock";
inline constexpr const char* kLockDateScreen = "frmBRLockDate";

// The list of locks, opened on the account of a lock's reference, or on the first for "".
struct LockListRequest {
  HostContext& host;
  std::string lock;
};

// The dates of one account or of all: `locks` are rows of the list, its cursor on the account.
struct LockDateRequest {
  HostContext& host;
  RowSetPtr locks;
};

void registerLockForms(FormRegistry& forms);

// The screen of locks, or null without the right to look at them.
std::shared_ptr<ui::Form> makeLockScreen(const FormRegistry& forms, HostContext& host,
                                         std::string_view lock);

}  // namespace tolvex
