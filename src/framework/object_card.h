// Steps that the cards of objects take alike. A card is a screen of one object; its panel is
// disabled while the object is saved.
#pragma once

#include <memory>
#include <string>

#include "platform/host.h"

namespace tolvex {

// Whether the object has been stored before.
bool isStored(const VXObjectUIO& object);
// What the tab of a card stands for; "" while the object is new.
std::string storedReference(const VXObjectUIO& object);
// Whether the user may change what the card shows.
bool mayWrite(const VXObjectUIO& object, const RightFlags& rights);

// Saves with the card busy. `second` is stored with the record.
SaveResult saveBusy(ui::Form& card, ui::Control& panel, VXObjectUIO& object,
                    RowSetPtr second = nullptr);
// Gives the saved object the card's title on the desktop and draws it anew in the tree.
void showSaved(ui::Form& card, const VXObjectUIO& object);

// Asks with the record's name and deletes it through its kind; true when it is gone.
bool deleteAsked(HostContext& host, VXObjectUIO& object);
// A new record of `type` in the same group as `like`; null after a message.
std::shared_ptr<VXObjectUIO> newBeside(HostContext& host, VXObjectUIO& like, const char* type);

}  // namespace tolvex
