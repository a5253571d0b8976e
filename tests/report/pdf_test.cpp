#include "host/report/pdf.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QTemporaryDir>
#include <array>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "host/report/report_files.h"
#include "tests/report/sample_reports.h"

namespace tolvex::test {
namespace {

std::string outputOf(const std::string& command) {
  std::string text;
  FILE* pipe = popen(command.c_str(), "r");
  std::array<char, 4096> part{};
  while (const std::size_t got = fread(part.data(), 1, part.size(), pipe))
    text.append(part.data(), got);
  EXPECT_EQ(pclose(pipe), 0) << command;
  return text;
}

bool has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

class PdfTest : public testing::Test {
 protected:
  std::string path(const char* name) const { return folder.path().toStdString() + "/" + name; }
  std::size_t files() const {
    const std::filesystem::directory_iterator all(folder.path().toStdString());
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
  }
  QTemporaryDir folder;
};

TEST_F(PdfTest, IsReadBackWithItsPagesTextsAndFonts) {
  const std::string file = path("žurnalas.pdf");
  ASSERT_EQ(report::writePdf(journal(300), file), "");
  const std::string info = outputOf("pdfinfo '" + file + "'");
  EXPECT_TRUE(has(info, "Sąskaitos žurnalas")) << info;
  EXPECT_TRUE(has(info, "842 x 595 pts (A4)")) << info;
  const std::size_t count = report::paginate(journal(300)).pages.size();
  EXPECT_TRUE(has(info, "Pages:           " + std::to_string(count))) << info;
  const std::string first = outputOf("pdftotext -layout -l 1 '" + file + "' -");
  for (const char* words : {"„Šėžėnų žuvėdra“", "„Česlovo ąžuolai“", "Ūkinė operacija", "11,80"})
    EXPECT_TRUE(has(first, words)) << words << "\n" << first;
  const std::string last =
      outputOf("pdftotext -layout -f " + std::to_string(count) + " '" + file + "' -");
  for (const std::string& words : {std::string("Iš viso"), std::string("KPO 300"),
                                   std::to_string(count) + " psl. iš " + std::to_string(count)})
    EXPECT_TRUE(has(last, words)) << words << "\n" << last;
  const std::string fonts =
      outputOf("pdffonts '" + file + "' | tail -n +3 | awk '{print $5, $6, $7}'");
  EXPECT_EQ(fonts, "yes no yes\nyes no yes\n") << "embedded, with a map to letters";
}

TEST_F(PdfTest, TextsStandWhereTheyAreLaidOut) {
  const std::string file = path("orderis.pdf");
  ASSERT_EQ(report::writePdf(cashOrder(), file), "");
  const report::Pages pages = report::paginate(cashOrder());
  const auto& texts = pages.pages[0].texts;
  const auto mark = std::find_if(texts.begin(), texts.end(),
                                 [](const auto& one) { return one.text == u"Suma:"; });
  ASSERT_NE(mark, texts.end());
  const std::string words = outputOf("pdftotext -bbox '" + file + "' - | grep Suma");
  double x = 0;
  ASSERT_EQ(std::sscanf(words.c_str(), " <word xMin=\"%lf\"", &x), 1) << words;
  EXPECT_NEAR(x, double(mark->x) / 20, 0.5) << "points";
}

TEST_F(PdfTest, AFailureIsToldAndLeavesTheOldFile) {
  const std::string file = path("senas.pdf");
  std::ofstream(file) << "senas";
  EXPECT_TRUE(has(report::writePdf(cashOrder(), path("nera/a.pdf")), "Nėra tokio katalogo"));
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  rlimit little = before;
  little.rlim_cur = 2000;
  setrlimit(RLIMIT_FSIZE, &little);
  const std::string full = report::writePdf(cashOrder(), file);
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_TRUE(has(full, "Nepavyko įrašyti bylos")) << full;
  EXPECT_EQ(outputOf("cat " + file), "senas");
  EXPECT_EQ(report::writePdf(cashOrder(), file, [](double share) { return share < 0.05; }),
            ReportOutput::kStopped);
  EXPECT_EQ(outputOf("cat " + file), "senas");
  EXPECT_EQ(files(), 1u) << "nothing half written stays";
  EXPECT_EQ(report::writePdf(cashOrder(), file), "");
  EXPECT_TRUE(has(outputOf("head -c 5 " + file), "%PDF-"));
}

}  // namespace
}  // namespace tolvex::test
