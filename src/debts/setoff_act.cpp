#include "debts/setoff_act.h"

#include "framework/rounding.h"
#include "platform/numbers.h"

namespace tolvex {
namespace {

constexpr int kRule = 100, kSignature = 48;
constexpr const char* kSeal = "                     A.V.";

const Style kPlain{};
const Style kSmall{8, false, false, ui::Align::Left};  // a rule of full length fits the line
const Style kBold{0, true, false, ui::Align::Left};

Paragraph plain(std::string text, float beforeMm = 0, float afterMm = 0) {
  return {std::move(text), kPlain, beforeMm, afterMm};
}

void addParty(ReportDocument& document, const FirmRecord& firm) {
  std::string details = "Įmonės kodas: " + firm.code;
  if (!firm.phone.empty()) details += ", tel. " + firm.phone;
  if (!firm.fax.empty()) details += ", faks. " + firm.fax;
  document.body.push_back(Paragraph{firm.name, kBold, 0, 0});
  document.body.push_back(plain(std::move(details)));
  document.body.push_back(Paragraph{std::string(kRule, '_'), kSmall, 0, 3});
}

void addSignature(ReportDocument& document, const FirmRecord& firm) {
  document.body.push_back(plain(firm.name, 8, 4));
  document.body.push_back(plain(std::string(kSignature, '_')));
  document.body.push_back(plain(kSeal));
}

struct Sums {
  double debit = 0, credit = 0;
  void add(bool onDebit, double sum) {
    double& side = onDebit ? debit : credit;
    side = roundHalfEven(side + sum, 2);
  }
};

ReportTable tableOf(const SetOffAct& act, const NumberFormat& format) {
  using ui::Align;
  const std::string debts = std::string(kLineBreak) + "skolos";
  ReportTable table;
  table.columns = {{"DocNumber", "Dokumento numeris", 5},
                   {"DocDate", "Data", 3, Align::Left, CellKind::Date},
                   {"Debit", act.client.name + debts, 4.5, Align::Right, CellKind::Number},
                   {"Credit", act.own.name + debts, 4.5, Align::Right, CellKind::Number}};
  const auto sum = [&](double value) { return formatNumber(value, 2, format); };
  Sums covered, rests;
  for (const CoverParty* party : {&act.primary, &act.secondary}) {
    const bool onDebit = party->sign == -1;
    for (const DebtRow& row : *party->rows) {
      if (!act.clientReference.empty() && row.debt.AddrOIDR != act.clientReference) continue;
      rests.add(onDebit, row.LikutisLt);
      if (!row.ticked) continue;
      covered.add(onDebit, row.PaymentLt);
      ReportRow line;
      line.cells = {row.debt.Number, row.debt.DateD.Text(),
                    onDebit ? sum(row.PaymentLt) : std::string(),
                    onDebit ? std::string() : sum(row.PaymentLt)};
      table.rows.push_back(std::move(line));
    }
  }
  const auto total = [&](std::string name, const Sums& sums) {
    ReportRow line;
    line.style.bold = true;
    line.cells = {std::move(name), {}, sum(sums.debit), sum(sums.credit)};
    table.rows.push_back(std::move(line));
  };
  total("Viso:", covered);
  total("Skolos likutis datai " + act.date.Text() + " po tarpusavio užskaitymų:", rests);
  return table;
}

}  // namespace

ReportDocument setOffAct(const SetOffAct& act, const NumberFormat& format) {
  ReportDocument document;
  document.layout = "ActRepSetOff";
  document.title = "Tarpusavio skolų užskaitymo aktas";
  document.exportStem = "Uzskaitymo_aktas";
  addParty(document, act.own);
  addParty(document, act.client);
  const Style title{13, true, false, ui::Align::Center};
  document.body.push_back(Paragraph{"TARPUSAVIO SKOLŲ UŽSKAITYMO AKTAS", title, 4, 1});
  document.body.push_back(
      Paragraph{act.date.Text(), Style{0, false, false, ui::Align::Center}, 0, 5});
  document.body.push_back(plain("Mes, žemiau pasirašiusieji " + act.own.name + " ir " +
                                    act.client.name +
                                    " atstovai, sudarėme šį tarpusavio užskaitymo aktą:",
                                0, 3));
  document.body.push_back(tableOf(act, format));
  document.body.push_back(plain("Prašome vieną pasirašytą egzempliorių grąžinti.", 5, 2));
  addSignature(document, act.own);
  addSignature(document, act.client);
  return document;
}

}  // namespace tolvex
