#include "payments/UI0201700.h"

#include "payments/UIO0201700.h"
#include "payments/payment_forms.h"

namespace tolvex {
namespace {

constexpr TreeKind kTree = {kPaymentTemplates,
                            kPaymentTemplate,
                            kPaymentTemplateGroup,
                            kPaymentRights,
                            kPaymentScreen,
                            "Naujas apmokėjimo šablonas",
                            "Nauja apmokėjimo šablonų grupė"};

}  // namespace

UI0201700::UI0201700(std::shared_ptr<const FormRegistry> forms)
    : TreeKindUI(kTree, std::move(forms)) {}

std::shared_ptr<VXObjectUIO> UI0201700::makeObject() { return std::make_shared<UIO0201700>(); }

const IconsTable& UI0201700::GetIconsTable() const {
  static const IconsTable kIcons = {{"OT", "C0001601"},
                                    {"CT", "C0001601"},
                                    {kPaymentTemplate, "C0001601"},
                                    {kPaymentTemplateGroup, "C0001600"},
                                    {"CGroup", "stdClose"},
                                    {"OGroup", "stdOpen"}};
  return kIcons;
}

}  // namespace tolvex
