// The header of an operation on its screen: date, series and number, register, group, comment.
//
// Date and group go into the record at once, since entries and numbers depend on them; all else by
// write().
#pragma once

#include <memory>

#include "operations/screen/document_group.h"
#include "platform/form.h"

namespace tolvex {

class OperationHeader {
 public:
  // `object` is the screen's, which takes another one when it goes on to the next operation.
  OperationHeader(ui::Form* form, const std::shared_ptr<VXObjectUIO>& object);

  ui::Panel fraHeader;
  ui::DatePicker dtpDate;
  ui::Label lblNumber;
  ui::TextBox txtSerija, txtNumber;
  ui::ComboBox cmbVAT;
  ui::TextBox txtGroup;
  ui::Button cmdOperGroup;
  ui::TextBox txtComment;
  ui::Button cmdCommentList;

  ui::Handler onChange;  // after the user changed anything here
  ui::Handler onRedate;  // after the date changed, with that of the entries where he wanted it

  // For another operation: reads its group. One that begins takes today, series and number.
  void open(bool begins);
  void show();
  void enable(bool enabled);
  void write();

  const DocumentGroup& group() const { return group_; }
  void setDate(DateTime date);  // the box alone
  // The date of a new operation follows its first entry, once.
  void followFirstEntry();
  void askNumber();  // the counter by hand

 private:
  void wire();
  void showGroup();
  void takeNumber();
  void pickGroup();
  void changeDate();
  void pickComment();
  void changed();
  RowSet& record() const { return *object_->RsFields(); }
  HostContext& host() const { return form_.host(); }

  ui::Form& form_;
  const std::shared_ptr<VXObjectUIO>& object_;
  DocumentGroup group_;
  bool dateOpen_ = false;  // the date waits for the first entry's
};

}  // namespace tolvex
