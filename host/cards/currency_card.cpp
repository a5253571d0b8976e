#include "host/cards/currency_card.h"

#include <algorithm>

#include "framework/text.h"
#include "host/cards/frm_rates_import.h"
#include "host/cards/missing_rates.h"
#include "host/cards/rate_table.h"
#include "host/cards/sum_words.h"
#include "host/cards/working_days.h"
#include "platform/numbers.h"

namespace tolvex {
namespace {

using Kind = CardField::Kind;

constexpr CardField kFields[] = {
    {.column = "Code", .caption = "Kodas", .chars = 6, .missing = "Nenurodytas valiutos kodas!"},
    {.column = "Name",
     .caption = "Pavadinimas",
     .chars = 40,
     .missing = "Nenurodytas valiutos pavadinimas!"},
    {.column = "FixedRate",
     .caption = "Fiksuotas kursas",
     .kind = Kind::Number,
     .chars = 12,
     .decimals = 6},
    {.column = "OneCurr", .caption = "1", .chars = 18},
    {.column = "TwoCurr", .caption = "2, 3 … 9", .chars = 18},
    {.column = "ManyCurr", .caption = "10, 11 … 20", .chars = 18},
    {.column = "OneSmall", .caption = "1", .chars = 18},
    {.column = "TwoSmall", .caption = "2, 3 … 9", .chars = 18},
    {.column = "ManySmall", .caption = "10, 11 … 20", .chars = 18},
};
constexpr const char* kUnitBoxes[] = {"txtOneCurr",  "txtTwoCurr",  "txtManyCurr",
                                      "txtOneSmall", "txtTwoSmall", "txtManySmall"};

constexpr ColumnSpec kRates[] = {{"DateD", FieldType::Date}, {"Rate", FieldType::Double}};
constexpr int kMonthsShown = 3;

UnitNames unitOf(const std::string& one, const std::string& two, const std::string& many,
                 const std::string& otherwise) {
  return one.empty() ? UnitNames{otherwise, otherwise, otherwise} : UnitNames{one, two, many};
}

// A currency without names of its units is told by its code.
MoneyNames namesIn(const FieldList& fields) {
  const auto text = [&](const char* column) { return std::string(fields[column].Text()); };
  return {unitOf(text("OneCurr"), text("TwoCurr"), text("ManyCurr"), text("Code")),
          unitOf(text("OneSmall"), text("TwoSmall"), text("ManySmall"), "")};
}

MethodResult sumInWords(HostContext&, VXObjectUIO& currency, std::span<const Variant> par) {
  if (par.empty() || par.size() > 2 || !currency.RsFields() || !currency.RsFields()->HasCurrent())
    return refused("Method SumByWords:\r\nKlaidingi parametrai !");
  const double sum = par[0].IsNumber() ? par[0].AsDouble() : TextToDouble(par[0].Show());
  const bool inWords = par.size() == 2 && par[1].IsBool() && par[1].AsBool();
  const auto words = sumByWords(sum, namesIn(currency.Fields()),
                                inWords ? SmallUnits::InWords : SmallUnits::InFigures);
  if (!words) return refused("Suma per didelė, kad būtų parašyta žodžiais!");
  return done(*words);
}

class CurrencyPart final : public CardPart {
 public:
  explicit CurrencyPart(CardForm& form);
  void shown() override;
  bool maySave() override;
  RowSetPtr secondSet() override;
  void recordsChanged(const std::string& kind) override;

 private:
  void readRates();
  void showPeriod();
  void showWords();
  void addDay();
  void import();
  std::string code() const { return std::string(form_.record()["Code"].Text()); }
  bool isBase() const { return form_.record()["BaseCurrency"].Number() != 0; }

  CardForm& form_;
  std::vector<DayRate> stored_;
  ui::Label lblBase_{&form_, "lblBase", "Bazinė valiuta: jos kursas visada 1"};
  ui::Label lblUnit_{&form_, "lblUnit", "Vienetas"};
  ui::Label lblSmall_{&form_, "lblSmall", "Smulkus vienetas"};
  ui::Label lblWords_{&form_, "lblWords"};
  ui::DatePicker dtpFrom_{&form_, "dtpFrom", "Nuo"};
  ui::DatePicker dtpTo_{&form_, "dtpTo", "iki"};
  ui::Label lblMissing_{&form_, "lblMissing"};
  RateTable table_{form_, RateTable::Rows::Days, [this] { form_.touch(); }};
  ui::Button cmdAddRate_{&form_, "cmdAddRate", "Pridėti dieną"};
  ui::DatePicker dtpRate_{&form_, "dtpRate"};
  ui::Button cmdImport_{&form_, "cmdImport", "Įterpti kursus…"};
};

CurrencyPart::CurrencyPart(CardForm& form) : form_(form) {
  auto* codeBox = form.find<ui::TextBox>("txtCode");
  codeBox->keyFilter = [](char32_t key, const std::string&) -> char32_t {
    if (key >= U'a' && key <= U'z') return key - U'a' + U'A';
    return key >= U'A' && key <= U'Z' ? key : U'\0';
  };
  const DateTime today = form.host().clock().today();
  dtpTo_.value = today;
  const int month = today.Year() * 12 + static_cast<int>(today.Month()) - kMonthsShown;
  dtpFrom_.value = DateTime::Of(month / 12, static_cast<unsigned>(month % 12 + 1), 1);
  dtpFrom_.onChange = dtpTo_.onChange = [this] { showPeriod(); };
  for (const char* name : kUnitBoxes) {
    auto* box = form.find<ui::TextBox>(name);
    box->onChange = [this, changed = box->onChange] {
      changed();
      showWords();
    };
  }
  cmdAddRate_.shortcut = "Ctrl+Ins";
  table_.lvwRates.onInsert = cmdAddRate_.onClick = [this] { addDay(); };
  cmdImport_.onClick = [this] { import(); };
}

void CurrencyPart::shown() {
  lblBase_.visible = isBase();
  auto* fixedRate = form_.find<ui::TextBox>("txtFixedRate");
  fixedRate->visible = !isBase();
  if (form_.record()["FixedRate"].Number() == 0) fixedRate->text = "";
  showWords();
  readRates();
}

void CurrencyPart::recordsChanged(const std::string& kind) {
  if (kind == kRateDayKind && table_.changes().empty()) readRates();
}

void CurrencyPart::readRates() {
  const bool readOnly = form_.readOnly || isBase();
  stored_.clear();
  std::vector<RateRow> rows;
  if (form_.isStored() && !isBase()) {
    const auto read =
        readDayRates(form_.host(), DateTime::Of(1900, 1, 1), DateTime::Of(9999, 12, 31), code());
    if (!read) return table_.show({}, true);
    stored_ = *read;
  }
  for (auto rate = stored_.rbegin(); rate != stored_.rend(); ++rate)
    rows.push_back({rate->day, rate->code, "", rate->rate, {}});
  table_.show(std::move(rows), readOnly);
  dtpRate_.enabled = !readOnly;
  cmdAddRate_.enabled = !readOnly;
  cmdImport_.enabled = !readOnly && form_.isStored();
  // The day that is typed next: the first working day without a rate behind the newest.
  DateTime next = stored_.empty() ? form_.host().clock().today() : stored_.back().day.AddDays(1);
  while (!isWorkingDay(next)) next = next.AddDays(1);
  dtpRate_.value = next;
  showPeriod();
}

void CurrencyPart::showPeriod() {
  if (!dtpFrom_.value() || !dtpTo_.value()) return;
  const DateTime from = *dtpFrom_.value(), to = *dtpTo_.value();
  table_.showPeriod(from, to);
  const bool needed = form_.isStored() && !isBase();
  const RatedCurrency currency{code(), "", form_.record()["FixedRate"].Number()};
  lblMissing_.caption = needed ? missingRatesText(stored_, {currency}, from,
                                                  std::min(to, form_.host().clock().today()))
                               : std::string();
}

// A sum that needs every name.
void CurrencyPart::showWords() {
  const auto typed = [&](std::size_t box) {
    return trim(form_.find<ui::TextBox>(kUnitBoxes[box])->text());
  };
  const MoneyNames names = {unitOf(typed(0), typed(1), typed(2), code()),
                            unitOf(typed(3), typed(4), typed(5), "")};
  std::vector<std::string> samples;
  for (const double sum : {1.01, 2.02, 10.10})
    samples.push_back(sumByWords(sum, names).value_or(""));
  lblWords_.caption = "Pvz.: " + join(samples, "; ");
}

void CurrencyPart::addDay() {
  if (!cmdAddRate_.enabled || !dtpRate_.value()) return;
  const DateTime day = *dtpRate_.value();
  if (dtpFrom_.value() && day < *dtpFrom_.value()) dtpFrom_.value = day;
  if (dtpTo_.value() && day > *dtpTo_.value()) dtpTo_.value = day;
  table_.lead({day, code(), "", {}, {}});
  showPeriod();
  DateTime next = day.AddDays(1);
  while (!isWorkingDay(next)) next = next.AddDays(1);
  dtpRate_.value = next;
}

void CurrencyPart::import() {
  if (!form_.mayClose()) return;
  frmRatesImport import(form_.host(), {{code()}, code(), std::nullopt});
  form_.host().screens().runModal(import);
  if (import.result == 1) readRates();
}

bool CurrencyPart::maySave() {
  const std::string why = table_.refusal();
  if (why.empty()) return true;
  warn(form_.host(), why);
  form_.lead(table_.txtRate);
  return false;
}

RowSetPtr CurrencyPart::secondSet() {
  const std::vector<DayRate> changes = table_.changes();
  if (changes.empty()) return nullptr;
  const RowSetPtr rows = RowSet::make(kRates);
  for (const DayRate& change : changes) {
    rows->AddNew();
    (*rows)["DateD"] = change.day;
    (*rows)["Rate"] = change.rate ? Variant(*change.rate) : Variant(Null{});
  }
  return rows;
}

const CardSpec& spec() {
  static const CardSpec spec = {
      .kind = kCurrencyKind,
      .form = "frmCurrency",
      .component = kCurrencyRights,
      .caption = "Valiuta",
      .newCaption = "Nauja valiuta",
      .fields = kFields,
      .picture = R"(
[tabs tabCard]>
  [main]
    []
      txtCode | txtName>
      txtFixedRate | lblBase
    []
      lblUnit
      txtOneCurr | txtTwoCurr | txtManyCurr
      lblSmall
      txtOneSmall | txtTwoSmall | txtManySmall
      lblWords>
  [rates]
    dtpFrom | dtpTo | >> | cmdImport
    lvwRates>
    txtRate | cmdAddRate dtpRate | >> | cmdRemoveRate
    lblMissing>
)",
      .tabs = {{"main", "Valiuta"}, {"rates", "Dienos kursai"}},
      .part = [](CardForm& form) { return std::make_unique<CurrencyPart>(form); }};
  return spec;
}

}  // namespace

Card currencyCard() {
  Card card = cardOf(spec());
  card.methods["SumByWords"] = sumInWords;
  return card;
}

}  // namespace tolvex
