#include "operations/frmBRCopyByMonthes.h"

#include <string>
#include <vector>

#include "framework/conversions.h"
#include "platform/numbers.h"

namespace tolvex {
namespace {

int wholeNumber(const ui::TextBox& box) { return static_cast<int>(TextToDouble(box.text())); }

}  // namespace

frmBRCopyByMonthes::frmBRCopyByMonthes(const SpreadRequest& request)
    : Form(request.host, kSpreadScreen),
      entry_(request.entry),
      terms_(request.terms),
      sum_(txtSum, 2, request.host.numbers(), NumberBox::Input::Arithmetic) {
  setTitle("Sumos išdėstymas pagal mėnesius");
  cmdOK.isDefault = true;
  cmdCancel.isCancel = true;
  for (ui::TextBox* box : {&txtMonthCount, &txtDay}) box->keyFilter = FilterDigitKey;
  txtMonthCount.maxLength = 3;
  txtDay.maxLength = 2;
  txtSum.onLeave = [this] {
    sum_.normalise();
    refresh();
  };
  for (ui::Control* field : std::initializer_list<ui::Control*>{
           &optMonthSum, &optPeriodSum, &txtMonthCount, &optPointedDay, &txtDay, &optLastDay}) {
    field->onChange = [this] { refresh(); };
  }
  cmdOK.onClick = [this] { accept(); };
  cmdCancel.onClick = [this] { close(); };

  sum_.show(entry_.sumLt);
  txtDay.text = std::to_string(entry_.date.Day());
  optPeriodSum.choose();
  optPointedDay.choose();
  refresh();
  setFocus(txtMonthCount);
}

const char* frmBRCopyByMonthes::picture() const {
  return R"(
txtSum | txtMonthCount | >>
optPeriodSum | optMonthSum | >>
optPointedDay | txtDay | optLastDay | >>
chkWithComment
lblParts>
>> | cmdCancel | cmdOK
)";
}

SpreadTerms frmBRCopyByMonthes::typed() const {
  SpreadTerms terms;
  terms.sum = sum_.value();
  terms.wholePeriod = optPeriodSum.on();
  terms.months = wholeNumber(txtMonthCount);
  terms.day = wholeNumber(txtDay);
  terms.lastDay = optLastDay.on();
  terms.withComment = chkWithComment.on();
  return terms;
}

void frmBRCopyByMonthes::refresh() {
  txtDay.enabled = optPointedDay.on();
  const std::vector<SpreadPart> parts = spread(entry_, typed());
  if (parts.empty()) {
    lblParts.caption = "";
    return;
  }
  const auto told = [this](const SpreadPart& part) {
    return part.date.Text() + "  " + formatNumber(part.sumLt, 2, host().numbers()) + " Lt";
  };
  std::string caption = told(parts.front());
  if (parts.size() > 2) caption += "  …  ";
  if (parts.size() == 2) caption += "  ir  ";
  if (parts.size() > 1) caption += told(parts.back());
  lblParts.caption = std::move(caption);
}

void frmBRCopyByMonthes::accept() {
  const SpreadTerms terms = typed();
  if (terms.months < 1 || terms.months > kMostMonths) return setFocus(txtMonthCount);
  if (!terms.lastDay && (terms.day < 1 || terms.day > 31)) return setFocus(txtDay);
  if (spread(entry_, terms).empty()) {
    warn(host(), "Sumos neužtenka visiems mėnesiams!");
    return setFocus(txtSum);
  }
  terms_ = terms;
  result = 1;
  close();
}

}  // namespace tolvex
