#include "host/store/seed_statements.h"

#include <cstdlib>
#include <string>
#include <vector>

#include "host/store/sql.h"

namespace tolvex::store {
namespace {

// With these formulas every account of the plan that can be posted to is on exactly one side of the
// balance with the right sign, before and after closing, and every account of income and expense
// once in the profit. A sum row names the rows (from 1) that it adds; minus subtracts. It may stand
// above its parts when those are plain rows; totals stand below the sums that they read.
struct Row {
  const char *number, *caption;
  const char *ownSide = "", *otherSide = "";  // first and second parameter
  std::vector<int> sumOf = {};
};

const std::vector<Row>& balanceRows() {
  static const std::vector<Row> rows = {
      {"A.", "ILGALAIKIS TURTAS", "", "", {2, 3, 4}},
      {"I.", "Nematerialusis turtas", "11"},
      {"II.", "Materialusis turtas", "12"},
      {"III.", "Finansinis turtas", "16"},
      {"B.", "TRUMPALAIKIS TURTAS", "", "", {6, 7, 8, 9}},
      {"I.", "Atsargos", "20"},
      {"II.", "Per vienerius metus gautinos sumos", "24-25"},
      {"III.", "Kitas trumpalaikis turtas", "29"},
      {"IV.", "Pinigai", "27"},
      {"", "TURTO IŠ VISO", "", "", {1, 5}},
      {"C.", "NUOSAVAS KAPITALAS", "", "", {12, 13, 14}},
      {"I.", "Kapitalas", "30"},
      {"II.", "Rezervai", "33"},
      {"III.", "Nepaskirstytasis pelnas (nuostoliai)", "34,39,5", "6"},
      {"D.", "DOTACIJOS IR SUBSIDIJOS", "40"},
      {"E.", "MOKĖTINOS SUMOS IR ĮSIPAREIGOJIMAI", "", "", {17, 18}},
      {"I.", "Po vienerių metų mokėtinos sumos", "42"},
      {"II.", "Per vienerius metus mokėtinos sumos", "43-46,49"},
      {"", "NUOSAVO KAPITALO IR ĮSIPAREIGOJIMŲ IŠ VISO", "", "", {11, 15, 16}},
  };
  return rows;
}

const std::vector<Row>& profitRows() {
  static const std::vector<Row> rows = {
      {"I.", "PARDAVIMO PAJAMOS", "50"},
      {"II.", "PARDAVIMO SAVIKAINA", "60"},
      {"III.", "BENDRASIS PELNAS (NUOSTOLIAI)", "", "", {1, -2}},
      {"IV.", "VEIKLOS SĄNAUDOS", "61"},
      {"V.", "TIPINĖS VEIKLOS PELNAS (NUOSTOLIAI)", "", "", {3, -4}},
      {"VI.", "KITA VEIKLA", "52", "62"},
      {"VII.", "FINANSINĖ IR INVESTICINĖ VEIKLA", "53", "63"},
      {"VIII.", "ĮPRASTINĖS VEIKLOS PELNAS (NUOSTOLIAI)", "", "", {5, 6, 7}},
      {"IX.", "PAGAUTĖ", "54"},
      {"X.", "NETEKIMAI", "64"},
      {"XI.", "PELNAS (NUOSTOLIAI) PRIEŠ APMOKESTINIMĄ", "", "", {8, 9, -10}},
      {"XII.", "PELNO MOKESTIS", "69"},
      {"XIII.", "GRYNASIS PELNAS (NUOSTOLIAI)", "", "", {11, -12}},
  };
  return rows;
}

constexpr int kFontSize = 9;  // that of the journal's print section

std::string keyOf(int journalId, int row) {
  return "J" + std::to_string(journalId) + "-" + std::to_string(row);
}

}  // namespace

void seedStatementRows(Database& db, int journalId, std::string_view kind,
                       std::string_view paramList) {
  if (kind != "O0200504") return;
  int number = 0;
  for (const Row& row : paramList == "0" ? balanceRows() : profitRows()) {
    ++number;
    const int id = insertedId(
        db,
        "INSERT INTO journal_row (journal_id, guid, sort_order, current_number, row_caption,"
        " parameter1, parameter2, parameter3, font_size, font_bold)"
        " VALUES ($1, $2, $3, $4, $5, $6, $7, '0', $8, $9) RETURNING id",
        journalId, keyOf(journalId, number), number, row.number, row.caption, row.ownSide,
        row.otherSide, kFontSize, int{!row.sumOf.empty()});
    for (const int part : row.sumOf) {
      run(db,
          "INSERT INTO journal_row_pointer (row_id, pointed_guid, subtract) VALUES ($1, $2, $3)",
          id, keyOf(journalId, std::abs(part)), int{part < 0});
    }
  }
}

}  // namespace tolvex::store
