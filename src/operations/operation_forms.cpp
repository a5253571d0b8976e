#include "operations/operation_forms.h"

#include "operations/BRLog.h"
#include "operations/entry_editor.h"
#include "operations/frmBRCopyByMonthes.h"
#include "operations/frmBROper.h"
#include "operations/frmBROperGroup.h"
#include "operations/frmBROperRecord.h"
#include "operations/frmCommentList.h"

namespace tolvex {

void registerOperationForms(FormRegistry& forms) {
  forms.add<ObjectFormRequest>("frmBROper", [&forms](const ObjectFormRequest& request) {
    return std::make_shared<frmBROper>(request, forms);
  });
  forms.add<ObjectFormRequest>("frmBROperGroup", [&forms](const ObjectFormRequest& request) {
    return std::make_shared<frmBROperGroup>(request, forms);
  });
  forms.add<EntryEditorRequest>(kEntryEditor, [](const EntryEditorRequest& request) {
    return std::make_shared<frmBROperRecord>(request);
  });
  forms.add<CommentListRequest>(kCommentScreen, [](const CommentListRequest& request) {
    return std::make_shared<frmCommentList>(request);
  });
  forms.add<LogRequest>(kLogScreen,
                        [](const LogRequest& request) { return std::make_shared<BRLog>(request); });
  forms.add<SpreadRequest>(kSpreadScreen, [](const SpreadRequest& request) {
    return std::make_shared<frmBRCopyByMonthes>(request);
  });
}

}  // namespace tolvex
