// ReportWindow: the preview of a report in a window of its own, with its commands.
//
// PgUp, PgDn, Home, End: moving; Ctrl with plus, minus, wheel: size; Ctrl+0: as on paper, Ctrl+1: a
// whole page, Ctrl+2: its width; Ctrl+F, F3, Shift+F3: finding; Ctrl+P: printing; Esc: closing.
#pragma once

#include <QWidget>
#include <memory>

#include "host/desktop/report_viewer_pages.h"
#include "host/objects/stage.h"
#include "host/report/mailer.h"

class QBoxLayout;
class QLabel;
class QLineEdit;
class QPrinter;
class QPushButton;

namespace tolvex::desktop {

class ActGuard;

class ReportWindow final : public QWidget {
 public:
  using Document = std::shared_ptr<const ReportDocument>;

  // `exports` writes the files. Nothing is shown yet.
  ReportWindow(Document document, bool withExcel, ReportViewer& exports, Stage& stage,
               ActGuard& guard, QWidget* parent);

  bool load();  // lays the pages out; false when the user stopped it
  PageView& pages() { return *view_; }

  report::Mailer mailer;

  void setPage(const PageSetup& page);  // lays the pages out anew, unless the user stops it
  void askPage();
  void print();
  void mail();
  void find();  // the words of the field, from the hit at hand
  void step(int hits);

 private:
  void makeCommands(QBoxLayout& line, bool withExcel);
  void makeFinder(QBoxLayout& line);
  void makeStatus(QBoxLayout& line);
  void makeKeys();
  QPushButton* command(QBoxLayout& line, const char* name, const char* caption,
                       std::function<void()> act, const char* role = "quiet");
  void key(const QKeySequence& keys, std::function<void()> act);
  void saveAs(ReportFormat format);
  void say(const std::string& text);
  void showPlace();
  void showFound();
  // Shows how far a long work is while it runs.
  ReportProgress progress(const char* what);
  void closeEvent(QCloseEvent* event) override;

  Document document_;
  ReportViewer& exports_;
  Stage& stage_;
  ActGuard& guard_;
  PageView* view_;
  QLineEdit* words_ = nullptr;
  QLabel* found_ = nullptr;
  QLabel* place_ = nullptr;
  QLabel* zoom_ = nullptr;
};

}  // namespace tolvex::desktop
