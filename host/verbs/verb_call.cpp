// The verb call: one routine of the store, its answer as a table or as CSV.
#include <algorithm>
#include <iostream>

#include "framework/parameters.h"
#include "framework/recordset.h"
#include "framework/text.h"
#include "host/store/books.h"
#include "host/verbs/verbs.h"

namespace tolvex::verbs {
namespace {

using Table = std::vector<std::vector<std::string>>;

Table tableOf(RowSet& rows) {
  FieldList& fields = rows.Fields();
  std::vector<std::size_t> plain;  // nested sets have no place in a table
  for (std::size_t i = 0; i < fields.size(); ++i)
    if (fields[i].Type() != FieldType::Nested) plain.push_back(i);
  Table table(1);
  for (const std::size_t i : plain) table[0].push_back(fields[i].Name());
  ForEachRow(rows, [&](RowSet&) {
    auto& line = table.emplace_back();
    for (const std::size_t i : plain) line.push_back(fields[i].Value().Show());
  });
  return table;
}

std::string csvCell(const std::string& text) {
  if (text.find_first_of(";\"\r\n") == std::string::npos) return text;
  return '"' + replaceAll(text, "\"", "\"\"") + '"';
}

void printCsv(const Table& table) {
  for (const auto& line : table) {
    for (std::size_t i = 0; i < line.size(); ++i) std::cout << (i ? ";" : "") << csvCell(line[i]);
    std::cout << "\r\n";
  }
}

void printColumns(const Table& table) {
  std::vector<std::size_t> widths(table[0].size());
  for (const auto& line : table)
    for (std::size_t i = 0; i < line.size(); ++i) widths[i] = std::max(widths[i], length(line[i]));
  for (const auto& line : table) {
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
      text += line[i];
      if (i + 1 < line.size()) text.append(widths[i] - length(line[i]) + 2, ' ');
    }
    std::cout << text << '\n';
  }
}

}  // namespace

int call(const Words& words) {
  const Arguments arguments =
      parse(words, {{"--csv", "no"}, {"--user", "yes"}, {"--password", "yes"}});
  wordCount(arguments, 2, 3);
  const auto session = store::openBooks(arguments.words[0], arguments.value("--user", "admin"),
                                        arguments.value("--password"));
  const std::string parameters = arguments.words.size() > 2 ? arguments.words[2] : kNoParameters;
  const HostResult result = session->call("O0201500", arguments.words[1], parameters);
  if (result.Code != kDone)
    throw std::runtime_error(std::to_string(result.Code) + ": " + result.Text);
  if (!result.Data.IsRows()) {
    std::cout << (result.Data.IsAbsent() ? "Atlikta." : result.Data.Show()) << '\n';
    return EXIT_SUCCESS;
  }
  const Table table = tableOf(*result.Data.AsRows());
  if (arguments.has("--csv"))
    printCsv(table);
  else
    printColumns(table);
  return EXIT_SUCCESS;
}

}  // namespace tolvex::verbs
