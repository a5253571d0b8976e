// frmTemplateItem: one instalment. Runs modally over the instalments of a template.
#pragma once

#include <optional>

#include "payments/instalments.h"
#include "platform/form.h"
#include "platform/host.h"

namespace tolvex {

struct InstalmentRequest {
  HostContext& host;
  int limit = 0;                      // the most that it may take
  std::optional<Instalment> present;  // nothing: a new one, which takes all that is left
};

class frmTemplateItem final : public ui::Form {
 public:
  explicit frmTemplateItem(const InstalmentRequest& request);

  const char* picture() const override;

  // Nothing until it was accepted.
  const std::optional<Instalment>& accepted() const { return accepted_; }

  ui::TextBox txtDays{this, "txtDays", "Mokėti po", 6, ui::Align::Right};
  ui::TextBox txtPercent{this, "txtPercent", "Įmokos dydis", 6, ui::Align::Right};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdWrite{this, "cmdWrite", "Įrašyti", ui::Role::Primary};

 private:
  void normalise();
  int limit_;
  std::optional<Instalment> accepted_;
};

}  // namespace tolvex
