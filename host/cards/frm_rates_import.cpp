#include "host/cards/frm_rates_import.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "host/cards/day_rates.h"
#include "platform/numbers.h"

namespace tolvex {

frmRatesImport::frmRatesImport(HostContext& host, RateTextRules rules)
    : Form(host, "frmRatesImport"), rules_(std::move(rules)) {
  setTitle("Valiutų kursų įterpimas");
  txtRates.lines = 8;
  txtRates.tip = "Pvz.: 2004.03.31;USD;2,7654";
  txtRates.onChange = [this] { read(); };
  cmdFile.shortcut = "Ctrl+O";
  cmdFile.onClick = [this] { readFile(); };
  cmdCancel.isCancel = true;
  cmdCancel.onClick = [this] { close(); };
  cmdOK.isDefault = true;
  cmdOK.shortcut = "Ctrl+S";
  cmdOK.onClick = [this] { store(); };
}

const char* frmRatesImport::picture() const {
  return R"(
txtRates>
lvwRates>
lblFound>
cmdFile | >> | cmdCancel | cmdOK
)";
}

void frmRatesImport::opened() {
  read();
  setFocus(txtRates);
}

void frmRatesImport::read() {
  lines_ = readRateText(txtRates.text(), rules_);
  std::vector<ui::Row> rows;
  std::size_t bad = 0;
  for (const RateLine& line : lines_) {
    ui::Row& row = rows.emplace_back();
    row.key = std::to_string(line.number);
    const bool good = line.fault.empty();
    if (good)
      row.cells = {row.key, line.day.Text(), line.code, shortNumber(line.rate), ""};
    else
      row.cells = {row.key, "", "", "", line.fault};
    row.hint = line.text;
    row.mark = good ? ui::Mark::Good : ui::Mark::Bad;
    if (!good) ++bad;
  }
  lvwRates.setRows(std::move(rows));
  lvwRates.current = -1;
  lblFound.caption = "Kursų: " + std::to_string(lines_.size() - bad) +
                     (bad > 0 ? "     Blogų eilučių: " + std::to_string(bad) : std::string());
  cmdOK.enabled = lines_.size() > bad;
}

void frmRatesImport::readFile() {
  const auto path = host().dialogs().openFile("(*.txt;*.csv)|*.txt;*.csv", "");
  if (!path) return;
  std::ifstream file(*path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file) return warn(host(), "Byla neperskaityta: " + *path);
  txtRates.text = text;
  read();
}

void frmRatesImport::store() {
  std::vector<DayRate> good;
  for (const RateLine& line : lines_)
    if (line.fault.empty()) good.push_back({line.day, line.code, line.rate});
  const std::size_t bad = lines_.size() - good.size();
  if (bad > 0) {
    const auto first =
        std::ranges::find_if(lines_, [](const RateLine& line) { return !line.fault.empty(); });
    if (!ask(host(), std::to_string(first->number) + " eilutė: " + first->fault +
                         std::string(kLineBreak) + "Blogų eilučių: " + std::to_string(bad) +
                         std::string(kLineBreak) + std::string(kLineBreak) +
                         "Įrašyti tik geras eilutes?")) {
      return;
    }
  }
  if (!writeDayRates(host(), good)) return;
  result = 1;
  close();
}

}  // namespace tolvex
