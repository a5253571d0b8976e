// TreeKindUI: the list side of a kind that is kept in a tree of groups, where one screen edits
// records and groups alike: templates of operations and of payments.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/form_registry.h"
#include "framework/object_contract.h"

namespace tolvex {

struct TreeKind {
  const char* kind;
  const char* recordType;  // exact kind of a record, and the beginning of its reference
  const char* groupType;   // likewise of a group
  const char* rights;      // the component
  const char* screen;      // over an ObjectFormRequest
  const char* newRecord;   // captions of the menu
  const char* newGroup;
};

class TreeKindUI : public ForwardingUI {
 public:
  TreeKindUI(const TreeKind& kind, std::shared_ptr<const FormRegistry> forms);

  using ForwardingUI::OID;
  std::vector<MenuEntry> GetMenu(std::string id, std::string kind, std::string parent) override;
  // A new record or group stands in the clicked group, or beside the clicked record.
  MenuAction ClickMenu(std::string id, std::string kind, std::string caption,
                       std::string extra) override;
  bool AddToDeskTopVXObject(std::string id) override;
  // Null when it cannot be read, and then silent; a new record for an id without a number.
  std::shared_ptr<VXObjectUIO> GetVXObject(std::string id) override;
  // A record that is gone is told.
  std::int16_t DeleteVXObject(std::string id) override;

 protected:
  virtual std::shared_ptr<VXObjectUIO> makeObject() = 0;

 private:
  MenuAction newBelow(const std::string& id, bool group);
  std::shared_ptr<ui::Form> screenOver(std::shared_ptr<VXObjectUIO> object) const;
  SaveResult read(VXObjectUIO& object, std::string id);
  void tellFailedRead(const std::string& id, const SaveResult& read) const;

  const TreeKind& tree_;
  std::shared_ptr<const FormRegistry> forms_;
};

}  // namespace tolvex
