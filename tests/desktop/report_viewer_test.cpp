#include "host/desktop/report_viewer.h"

#include <QDialog>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <array>
#include <cstdio>

#include "host/report/fonts.h"
#include "host/report/pdf.h"
#include "host/report/print.h"
#include "tests/desktop/desktop_test.h"
#include "tests/report/sample_reports.h"

namespace tolvex::test {
namespace {

using desktop::PageView;
using desktop::ReportWindow;

std::string outputOf(const std::string& command) {
  std::string words;
  FILE* pipe = popen(command.c_str(), "r");
  std::array<char, 4096> part{};
  while (const std::size_t got = fread(part.data(), 1, part.size(), pipe))
    words.append(part.data(), got);
  pclose(pipe);
  return words;
}

class Exports final : public ReportViewer {
 public:
  void show(ReportDocument, bool) override {}
  bool exportAs(const ReportDocument& document, ReportFormat format,
                std::string_view stem) override {
    asked += std::string(stem) + std::to_string(static_cast<int>(format)) +
             (document.page.landscape ? "L " : "P ");
    return true;
  }
  void keepPage(const ReportDocument& document) override { kept.push_back(document.page.leftMm); }
  std::string asked;
  std::vector<float> kept;
};

class ReportViewerTest : public testing::Test {
 protected:
  ReportWindow& open(ReportDocument document, bool withExcel = true) {
    window = new ReportWindow(std::make_shared<const ReportDocument>(std::move(document)),
                              withExcel, exports, stage, stage, nullptr);
    window->resize(1000, 700);
    EXPECT_TRUE(window->load());
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return *window;
  }
  ~ReportViewerTest() override { delete window.data(); }
  void key(int code, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : window.data(),
                    static_cast<Qt::Key>(code), with);
    settle();
  }
  PageView& view() { return window->pages(); }
  std::string label(const char* name) {
    return window->findChild<QLabel*>(QString::fromUtf8(name))->text().toStdString();
  }
  void press(const char* name) {
    window->findChild<QPushButton*>(QString::fromUtf8(name))->click();
    settle();
  }

  desktop::QtStage stage;
  Exports exports;
  QPointer<ReportWindow> window;
};

TEST_F(ReportViewerTest, PagesTurnByTheKeyboard) {
  open(journal(300));
  EXPECT_EQ(label("lblPage"), "1 psl. iš 9");
  for (int i = 0; i < 4; ++i) key(Qt::Key_PageDown);
  const std::size_t below = view().page();
  EXPECT_GT(below, 1u);
  key(Qt::Key_PageUp);
  EXPECT_LE(view().page(), below);
  key(Qt::Key_End);
  EXPECT_EQ(label("lblPage"), "9 psl. iš 9");
  key(Qt::Key_Home);
  EXPECT_EQ(view().verticalScrollBar()->value(), 0);
}

TEST_F(ReportViewerTest, ZoomKeepsThePageAndFitsTheWindow) {
  open(journal(300));
  EXPECT_EQ(view().horizontalScrollBar()->maximum(), 0);
  key(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(label("lblZoom"), "100 %");
  view().showPage(5);
  const std::size_t page = view().page();
  for (int i = 0; i < 5; ++i) key(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_EQ(view().page(), page);
  EXPECT_GT(view().horizontalScrollBar()->maximum(), 0);
  for (int i = 0; i < 40; ++i) key(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_EQ(label("lblZoom"), "20 %") << "not smaller";
  key(Qt::Key_1, Qt::ControlModifier);
  window->resize(500, 900);
  settle();
  EXPECT_EQ(view().horizontalScrollBar()->maximum(), 0) << "it follows the window";
}

TEST_F(ReportViewerTest, FoundWordsAreCountedAndWalkedThrough) {
  open(journal(300));
  key(Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("KPO 12"));
  settle();
  EXPECT_EQ(label("lblFound"), "1 iš 11") << "12 and 120 to 129";
  const auto& hits = view().hits();
  EXPECT_TRUE(std::is_sorted(hits.begin(), hits.end(),
                             [](const auto& a, const auto& b) { return a.page < b.page; }));
  for (int i = 0; i < 3; ++i) key(Qt::Key_F3);
  EXPECT_EQ(label("lblFound"), "4 iš 11");
  EXPECT_EQ(view().page(), hits[3].page);
  key(Qt::Key_F3, Qt::ShiftModifier);
  key(Qt::Key_Return);
  EXPECT_EQ(label("lblFound"), "4 iš 11");
  window->findChild<QLineEdit*>()->setText(QStringLiteral("šėŽėnų ŽUVĖDRA"));
  EXPECT_EQ(label("lblFound"), "1 iš 1") << "letter case aside";
  window->findChild<QLineEdit*>()->setText(QStringLiteral("10 047,99"));
  EXPECT_EQ(label("lblFound"), "1 iš 1") << "a typed blank is the blank of thousands";
  window->findChild<QLineEdit*>()->setText(QStringLiteral("nėra tokio"));
  EXPECT_EQ(label("lblFound"), "Nerasta");
  key(Qt::Key_Escape);
  EXPECT_EQ(label("lblFound"), "");
  EXPECT_TRUE(window->isVisible()) << "the first Esc leaves the field";
  key(Qt::Key_Escape);
  settle();
  EXPECT_TRUE(window.isNull() || !window->isVisible());
}

TEST_F(ReportViewerTest, ALettersCombIsFoundAsOneWord) {
  open(paymentOrder());
  window->findChild<QLineEdit*>()->setText(QStringLiteral("7044060007"));
  EXPECT_EQ(label("lblFound"), "1 iš 2");
}

TEST_F(ReportViewerTest, CommandsWriteTheReportAsItIsShown) {
  open(journal(5), true);
  for (const char* name : {"cmdExcel", "cmdRtf", "cmdPdf"}) press(name);
  EXPECT_EQ(std::exchange(exports.asked, {}), "Zurnalas1L Zurnalas2L Zurnalas0L ");
  PageSetup page;
  page.leftMm = 40;
  window->setPage(page);
  EXPECT_LT(view().pages().width, view().pages().height);
  press("cmdPdf");
  EXPECT_EQ(exports.asked, "Zurnalas0P ");
  delete window.data();
  open(journal(5), false);
  EXPECT_EQ(window->findChild<QPushButton*>(QStringLiteral("cmdExcel")), nullptr);
}

TEST_F(ReportViewerTest, ALetterTakesThePdfAlong) {
  const QTemporaryDir folder;
  const std::string got = folder.filePath(QStringLiteral("laiškas")).toStdString();
  open(cashOrder());
  window->mailer = report::Mailer({"/bin/sh", "-c",
                                   "printf '%s\\n%s\\n' \"$0\" \"$1\" > '" + got + ".part'; mv '" +
                                       got + ".part' '" + got + "'",
                                   "{subject}", "{file}"});
  press("cmdMail");
  for (int i = 0; i < 200 && !QFile::exists(QString::fromStdString(got)); ++i) QTest::qWait(10);
  const QStringList told =
      QString::fromStdString(outputOf("cat '" + got + "'")).split(QLatin1Char('\n'));
  ASSERT_GE(told.size(), 2);
  EXPECT_EQ(told[0].toStdString(), "Kasos išlaidų orderis");
  EXPECT_TRUE(told[1].endsWith(QStringLiteral("/IslaiduOrderis.pdf")));
  EXPECT_NE(outputOf("pdftotext '" + told[1].toStdString() + "' -").find("Jurgaičiui"),
            std::string::npos);
  QDir(QFileInfo(told[1]).path()).removeRecursively();
  EXPECT_NE(report::Mailer({"no-such-program"}).send("/a.pdf", "b").find("/a.pdf"),
            std::string::npos);
}

TEST_F(ReportViewerTest, APrinterGetsThePagesOfThePdf) {
  const QTemporaryDir folder;
  const std::string printed = folder.filePath(QStringLiteral("a.pdf")).toStdString();
  const std::string written = folder.filePath(QStringLiteral("b.pdf")).toStdString();
  const ReportDocument document = journal(100);
  QPrinter printer(QPrinter::HighResolution);
  report::preparePrinter(printer, document);
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(QString::fromStdString(printed));
  const report::Pages pages = report::paginate(document);
  EXPECT_TRUE(report::print(printer, pages));
  EXPECT_EQ(report::writePdf(pages, "", written), "");
  const auto words = [](const std::string& path) {
    return outputOf("pdftotext -layout '" + path + "' -");
  };
  EXPECT_EQ(words(printed), words(written));
  printer.setFromTo(2, 2);
  EXPECT_TRUE(report::print(printer, pages));
  EXPECT_NE(outputOf("pdfinfo '" + printed + "'").find("Pages:           1"), std::string::npos);
  EXPECT_NE(words(printed).find("2 psl. iš 3"), std::string::npos);
}

TEST_F(ReportViewerTest, LostEdgesAreNamed) {
  PageSetup page;
  page.leftMm = 5;
  page.bottomMm = 10;
  EXPECT_EQ(report::lostEdges(page, {4.2, 4.2, 4.2, 4.2}), "");
  const std::string lost = report::lostEdges(page, {6.35, 4.2, 4.2, 12.7});
  EXPECT_NE(lost.find("kairiojo – 6,4 mm, apatinio – 12,7 mm"), std::string::npos) << lost;
}

TEST_F(ReportViewerTest, TheStageKeepsItsPreviewsInOrder) {
  stage.report(std::make_shared<const ReportDocument>(journal(5)), true, exports);
  stage.report(std::make_shared<const ReportDocument>(cashOrder()), true, exports);
  settle();
  ASSERT_NE(stage.lastReport(), nullptr);
  EXPECT_EQ(stage.lastReport()->title, "Kasos išlaidų orderis");
  EXPECT_TRUE(stage.closeReport());
  settle();
  EXPECT_TRUE(stage.closeReport());
  settle();
  EXPECT_FALSE(stage.closeReport());
  EXPECT_EQ(QApplication::topLevelWidgets().size(), 0) << "closed previews are gone";
}

TEST_F(ReportViewerTest, APreviewOutlivesTheModalFormThatAskedForIt) {
  FakeHost host;
  SampleForm form(host);
  form.markOpen(true);
  QTimer::singleShot(0, &stage, [&] {
    stage.report(std::make_shared<const ReportDocument>(cashOrder()), true, exports);
    QTimer::singleShot(0, &stage, [&] { stage.run([&] { form.close(); }); });
  });
  stage.runModal(form);
  settle();
  EXPECT_TRUE(stage.closeReport());
}

TEST_F(ReportViewerTest, EscStopsALongLayoutAndNothingOpens) {
  QWidget ground;
  ground.show();
  const auto document = std::make_shared<const ReportDocument>(journal(300000));
  QApplication::postEvent(&ground, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier));
  stage.report(document, true, exports);
  EXPECT_FALSE(stage.closeReport());
  EXPECT_EQ(stage.lastReport(), document.get()) << "it can be asked for again";
}

TEST_F(ReportViewerTest, ThePageIsAskedAndKeptWhenCancelled) {
  open(journal(100));
  const auto answer = [&](const char* button, double left) {
    QTimer::singleShot(0, window.data(), [=, this] {
      auto* dialog = window->findChild<QDialog*>();
      dialog->findChild<QDoubleSpinBox*>(QStringLiteral("numLeft"))->setValue(left);
      dialog->findChild<QPushButton*>(QStringLiteral("optPortrait"))->click();
      dialog->findChild<QPushButton*>(QString::fromUtf8(button))->click();
    });
    press("cmdPage");
  };
  answer("cmdCancel", 30);
  EXPECT_TRUE(exports.kept.empty());
  EXPECT_GT(view().pages().width, view().pages().height);
  answer("cmdOK", 30);
  EXPECT_EQ(exports.kept, std::vector<float>{30});
  EXPECT_LT(view().pages().width, view().pages().height);
  EXPECT_EQ(view().pages().pages[0].texts[0].x, 30 * static_cast<float>(report::kTwipsPerMm));
}

TEST_F(ReportViewerTest, ManyPagesScrollFluently) {
  open(journal(20000));
  QElapsedTimer clock;
  clock.start();
  constexpr int kSteps = 40;
  QScrollBar& bar = *view().verticalScrollBar();
  for (int i = 0; i < kSteps; ++i) {
    bar.setValue(i * (bar.maximum() / kSteps));
    view().viewport()->repaint();
  }
  EXPECT_LT(clock.elapsed() / kSteps, 40) << "milliseconds a screen";
}

}  // namespace
}  // namespace tolvex::test
