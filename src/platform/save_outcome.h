// How screens tell the outcome of a save and ask before something is lost.
#pragma once

#include <optional>
#include <string>

#include "platform/host.h"

namespace tolvex {

// A save that did not happen: the reason, a blank line, and that nothing was written.
void showFailedSave(HostContext& host, const std::string& reason);
// The same of a group or a journal, which tells it without the blank line.
void showRefusedSave(HostContext& host, const std::string& reason);
// The answer of a keyed read: a refusal of the store is shown and returned as told.
MethodResult told(HostContext& host, const HostResult& answer);
// A failure that an operation returned, unless it was told before or has no text. True when there
// was one.
bool showFailure(HostContext& host, const MethodResult& result);
// A box with the host's title that tells, or with a stop sign.
void showInfo(HostContext& host, std::string text);
void showStop(HostContext& host, std::string text);
// "Ar tikrai norite panaikinti?", yes or no, no by default.
bool askDelete(HostContext& host);
// Whether unsaved input may be given up; `caption` says of what. Without a title the host's.
bool askCloseUnsaved(HostContext& host, const std::string& caption,
                     std::optional<std::string> title = std::nullopt);

}  // namespace tolvex
