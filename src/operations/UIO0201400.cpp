#include "operations/UIO0201400.h"

#include "framework/parameters.h"
#include "framework/references.h"
#include "framework/text.h"
#include "platform/save_outcome.h"

namespace tolvex {

namespace {

constexpr const char* kTradeKind = "O1000100";
constexpr const char* kTemplateTypeKind = "O0001612";

}  // namespace

std::string groupRights(std::string_view reference) {
  return "CBROperGroupRights" + std::string(idTextOf(reference));
}

std::shared_ptr<UIO0201400> toldGroup(std::string reference) {
  auto group = std::make_shared<UIO0201400>();
  group->OID(std::move(reference));
  const SaveResult read = group->Read();
  if (read.Code == kDone) return group;
  if (read.Code == kGone) {
    showStop(hostContext(), "Grupė panaikinta!");
  } else {
    warn(hostContext(), read.Text);
  }
  return nullptr;
}

MethodResult UIO0201400::Properties(std::string key, std::string parameters) {
  return guarded([&] {
    if (key == "FormTypes" || key == "MyFirmAccounts") {
      parameters = kNoParameters;
    } else if (key == "Parent") {
      parameters = parentParameters();
    }
    return read("Get" + key, parameters);
  });
}

MethodResult UIO0201400::Methods(std::string key, std::span<const Variant> par) {
  if (key == "FillTemplatesTrw") return guarded([&] { return templates(par); });
  return done();
}

// A group of documents of other modules may name in its settings where its own templates begin.
MethodResult UIO0201400::templates(std::span<const Variant> par) {
  if (par.size() != 1 || !par[0].IsNumber()) {
    return refused("VXObjectUIO_Methods FillTemplatesTrw:" + std::string(kLineBreak) +
                   "Klaida parametruose!");
  }
  int top = par[0].AsInt();
  if (Fields()["FormOID"].Text() != kTradeKind) {
    const std::string first = split(Fields()["Parameters"].Text(), '#').front();
    if (isRef(first) && kindOf(first) == kTemplateTypeKind) top = idOf(first);
  }
  return Properties("TemplateList", Parameters().number(top).text("K").str());
}

}  // namespace tolvex
