#include "operations/frmBROperTemplateSelect.h"

#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/told.h"
#include "operations/UIO0201600.h"

namespace tolvex {
namespace {

constexpr const char* kGroups = "O0201400";
constexpr const char* kNodeLetter = "K";
constexpr const char* kUnread = "Operacijų šablonai neperskaityti!";

}  // namespace

frmBROperTemplateSelect::frmBROperTemplateSelect(const TemplateChoiceRequest& request)
    : Form(request.host, kTemplateChoice), request_(request) {
  setTitle("Operacijos šablonai");
  txtSelect.readOnly = true;
  cmdOK.isDefault = true;
  cmdCancel.isCancel = true;
  trwTemplates.onChange = [this] { nodeChanged(); };
  trwTemplates.onActivate = [this] {
    if (tree_.current()) setFocus(txtSuma);
  };
  txtSuma.onLeave = [this] {
    double sum = 0;
    if (evaluateSum(txtSuma.text(), sum)) sum_.normalise();
  };
  cmdOK.onClick = [this] { accept(); };
  cmdCancel.onClick = [this] { close(); };
}

const char* frmBROperTemplateSelect::picture() const {
  return R"(
trwTemplates>
txtSelect>
txtSuma | >> | cmdCancel | cmdOK
)";
}

void frmBROperTemplateSelect::opened() {
  request_.chosen = {};
  sum_.show(request_.sumLt);
  fill();
  chooseDefault();
  setFocus(trwTemplates);
}

void frmBROperTemplateSelect::fill() {
  tree_.clear();
  const std::shared_ptr<VXObjectUIO> groups = host().objects().create(kGroups);
  if (!groups) return;
  const std::string asked = Parameters().number(request_.templateGroupId).text(kNodeLetter).str();
  const RowSetPtr templates = toldRows(groups->Properties("TemplateList", asked), kUnread);
  if (templates) tree_.show(*templates);
}

void frmBROperTemplateSelect::chooseDefault() {
  const std::string wanted = refOf(kTemplateKind, request_.defaultTemplateId);
  tree_.emphasize(request_.defaultTemplateId > 0 ? wanted : "");
  for (const ui::TreeNode& node : trwTemplates.nodes()) {
    if (node.tag == wanted) trwTemplates.current = node.key;
  }
  const auto choice = tree_.current();
  txtSelect.text = choice ? choice->name : std::string();
  cmdOK.enabled = choice.has_value();
}

// A template may have been deleted since the tree was read: it is asked for before it is taken.
void frmBROperTemplateSelect::nodeChanged() {
  const auto choice = tree_.current();
  const bool stands = choice && host().objects().open(choice->reference) != nullptr;
  txtSelect.text = stands ? choice->name : std::string();
  cmdOK.enabled = stands;
  if (choice && !stands) warn(host(), "Objektas panaikintas!");
}

void frmBROperTemplateSelect::accept() {
  double sum = 0;
  if (!evaluateSum(txtSuma.text(), sum)) {
    warn(host(), "Klaidinga sumos reikšmė!");
    return setFocus(txtSuma);
  }
  const auto choice = tree_.current();
  if (!choice) return;
  request_.chosen = {choice->reference, sum_.value()};
  close();
}

}  // namespace tolvex
