// Saving, deleting and starting documents: the steps that every document screen takes.
#pragma once

#include <memory>
#include <string>

#include "platform/host.h"

namespace tolvex {

// What the user may do with a document, from the rights of its group. Whoever may create documents
// may also fill in a new one.
struct DocumentRights {
  bool change = false;
  bool create = false;
  bool remove = false;
};
DocumentRights documentRights(HostContext& host, VXObjectUIO& object);

// The steps from a filled header to the store: the mark of this program run on a new document, the
// running number taken from the text, the protocol, the save. On success the object is read anew,
// since the store may have given another number, and the desktop gets the new name. A failure is
// shown and leaves everything as typed; false then.
bool saveDocument(HostContext& host, VXObjectUIO& object, const std::string& numberMask,
                  const std::string& numberText);

// Date and number, the name of a stored document on the desktop.
std::string documentName(VXObjectUIO& object);

// Asks and deletes the stored document; true when it is gone.
bool deleteDocument(HostContext& host, VXObjectUIO& object);

// Takes the last save of the stored document back and reads what stands then; a document that was
// only created is gone after it. False after a message, with nothing changed.
bool undoDocument(HostContext& host, VXObjectUIO& object);

// A new document of the same kind in the same group; null after a message.
std::shared_ptr<VXObjectUIO> newDocument(HostContext& host, VXObjectUIO& like);

}  // namespace tolvex
