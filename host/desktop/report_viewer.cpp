#include "host/desktop/report_viewer.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "framework/text.h"
#include "host/desktop/form_widget.h"
#include "host/desktop/report_viewer_setup.h"
#include "host/desktop/theme.h"
#include "host/report/fonts.h"
#include "host/report/pdf.h"
#include "host/report/print.h"

namespace tolvex::desktop {
namespace {

// While it lives the program is at a long work.
class Busy {
 public:
  explicit Busy(Stage& stage) : stage_(stage) { stage_.busy(true); }
  ~Busy() { stage_.busy(false); }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  Stage& stage_;
};

QWidget* band(QWidget* parent, QBoxLayout*& line) {
  auto* widget = new QWidget(parent);
  line = new QHBoxLayout(widget);
  line->setContentsMargins(12, 8, 12, 8);
  line->setSpacing(6);
  return widget;
}

}  // namespace

ReportWindow::ReportWindow(Document document, bool withExcel, ReportViewer& exports, Stage& stage,
                           ActGuard& guard, QWidget* parent)
    : QWidget(parent, Qt::Window),
      document_(std::move(document)),
      exports_(exports),
      stage_(stage),
      guard_(guard) {
  setObjectName(QStringLiteral("reportWindow"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(text(document_->title));
  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  QBoxLayout* line = nullptr;
  all->addWidget(band(this, line));
  makeCommands(*line, withExcel);
  makeFinder(*line);
  if (const std::string fault = report::fontFault(document_->page.font); !fault.empty()) {
    auto* note = new QLabel(text(fault), this);
    note->setObjectName(QStringLiteral("lblFont"));
    note->setWordWrap(true);
    note->setStyleSheet(QStringLiteral("background: #fdf3e4; color: #8a5200; padding: 6px 14px;"));
    all->addWidget(note);
  }
  view_ = new PageView(this);
  view_->onMoved = [this] { showPlace(); };
  all->addWidget(view_, 1);
  all->addWidget(band(this, line));
  makeStatus(*line);
  makeKeys();
  view_->setFocus();
}

// --- commands ------------------------------------------------------------------------------------

QPushButton* ReportWindow::command(QBoxLayout& line, const char* name, const char* caption,
                                   std::function<void()> act, const char* role) {
  auto* button = new QPushButton(QString::fromUtf8(caption), this);
  button->setObjectName(QString::fromUtf8(name));
  button->setProperty("role", QString::fromUtf8(role));
  button->setFocusPolicy(Qt::TabFocus);
  button->setAutoDefault(true);
  line.addWidget(button);
  connect(button, &QPushButton::clicked, this, [this, act = std::move(act)] { guard_.run(act); });
  return button;
}

void ReportWindow::makeCommands(QBoxLayout& line, bool withExcel) {
  command(
      line, "cmdPrint", "&Spausdinti", [this] { print(); }, "primary")
      ->setToolTip(QStringLiteral("Ctrl+P"));
  command(line, "cmdPage", "P&uslapis…", [this] { askPage(); });
  if (withExcel)
    command(line, "cmdExcel", "Eksportas į EXCEL", [this] { saveAs(ReportFormat::Excel); });
  command(line, "cmdRtf", "Eksportas į RTF", [this] { saveAs(ReportFormat::Rtf); });
  command(line, "cmdPdf", "Eksportas į PDF", [this] { saveAs(ReportFormat::Pdf); });
  command(line, "cmdMail", "Siųsti kaip PDF", [this] { mail(); });
  line.addStretch(1);
}

void ReportWindow::makeFinder(QBoxLayout& line) {
  found_ = new QLabel(this);
  found_->setObjectName(QStringLiteral("lblFound"));
  found_->setProperty("role", QStringLiteral("caption"));
  words_ = new QLineEdit(this);
  words_->setObjectName(QStringLiteral("txtFind"));
  words_->setPlaceholderText(QStringLiteral("Ieškoti (Ctrl+F)"));
  words_->setClearButtonEnabled(true);
  words_->setFixedWidth(200);
  line.addWidget(found_);
  line.addWidget(words_);
  connect(words_, &QLineEdit::textChanged, this, [this] { find(); });
  connect(words_, &QLineEdit::returnPressed, this, [this] { step(1); });
}

void ReportWindow::makeStatus(QBoxLayout& line) {
  line.setContentsMargins(12, 4, 12, 4);
  place_ = new QLabel(this);
  place_->setObjectName(QStringLiteral("lblPage"));
  zoom_ = new QLabel(this);
  zoom_->setObjectName(QStringLiteral("lblZoom"));
  zoom_->setAlignment(Qt::AlignCenter);
  zoom_->setFixedWidth(52);
  line.addWidget(place_);
  line.addStretch(1);
  command(line, "cmdWhole", "Visas lapas", [this] { view_->setFit(PageView::Fit::Page); });
  command(line, "cmdWidth", "Pagal plotį", [this] { view_->setFit(PageView::Fit::Width); });
  command(
      line, "cmdSmaller", "–", [this] { view_->zoomBy(-1); }, "small");
  line.addWidget(zoom_);
  command(
      line, "cmdLarger", "+", [this] { view_->zoomBy(1); }, "small");
}

void ReportWindow::key(const QKeySequence& keys, std::function<void()> act) {
  auto* shortcut = new QShortcut(keys, this);
  connect(shortcut, &QShortcut::activated, this, [this, act = std::move(act)] { guard_.run(act); });
}

void ReportWindow::makeKeys() {
  key(Qt::CTRL | Qt::Key_P, [this] { print(); });
  key(Qt::CTRL | Qt::Key_F, [this] {
    words_->setFocus(Qt::ShortcutFocusReason);
    words_->selectAll();
  });
  key(Qt::Key_F3, [this] { step(1); });
  key(Qt::SHIFT | Qt::Key_F3, [this] { step(-1); });
  for (const Qt::Key plus : {Qt::Key_Plus, Qt::Key_Equal})
    key(Qt::CTRL | plus, [this] { view_->zoomBy(1); });
  key(Qt::CTRL | Qt::Key_Minus, [this] { view_->zoomBy(-1); });
  key(Qt::CTRL | Qt::Key_0, [this] { view_->setZoom(1); });
  key(Qt::CTRL | Qt::Key_1, [this] { view_->setFit(PageView::Fit::Page); });
  key(Qt::CTRL | Qt::Key_2, [this] { view_->setFit(PageView::Fit::Width); });
  for (const Qt::Key close : {Qt::Key_W, Qt::Key_F4})
    key(Qt::CTRL | close, [this] { this->close(); });
  // While words are sought the pages still turn by the keyboard.
  key(Qt::Key_PageDown, [this] { view_->step(1); });
  key(Qt::Key_PageUp, [this] { view_->step(-1); });
  key(Qt::Key_Escape, [this] {
    if (!words_->hasFocus()) return void(close());
    words_->clear();
    view_->setFocus();
  });
}

void ReportWindow::closeEvent(QCloseEvent* event) {
  // Inside a long work its own window stays.
  guard_.holding() ? event->ignore() : event->accept();
}

void ReportWindow::say(const std::string& words) {
  Message note;
  note.title = "Tolvex";
  note.text = words;
  stage_.message(note);
}

ReportProgress ReportWindow::progress(const char* what) {
  return [this, what](double share) {
    stage_.progress(what, share);
    return !stage_.stopped();
  };
}

// --- pages ---------------------------------------------------------------------------------------

bool ReportWindow::load() {
  const Busy busy(stage_);
  report::Pages pages = report::paginate(*document_, progress("Ruošiama ataskaita"));
  if (pages.pages.empty()) return false;
  view_->setPages(std::move(pages));
  find();
  return true;
}

void ReportWindow::setPage(const PageSetup& page) {
  auto changed = std::make_shared<ReportDocument>(*document_);
  changed->page = page;
  const Document before = std::exchange(document_, std::move(changed));
  if (!load()) document_ = before;
}

void ReportWindow::askPage() {
  PageDialog dialog(document_->page, this);
  if (dialog.exec() != QDialog::Accepted) return;
  setPage(dialog.page());
  exports_.keepPage(*document_);
}

void ReportWindow::showPlace() {
  if (!place_) return;
  place_->setText(
      QStringLiteral("%1 psl. iš %2").arg(view_->page() + 1).arg(view_->pages().pages.size()));
  zoom_->setText(QStringLiteral("%1 %").arg(qRound(view_->zoom() * 100)));
}

// --- finding -------------------------------------------------------------------------------------

void ReportWindow::find() {
  std::vector<report::Hit> hits = report::find(view_->pages(), words_->text());
  const std::size_t page = view_->page();
  const auto first = std::find_if(hits.begin(), hits.end(),
                                  [page](const report::Hit& hit) { return hit.page >= page; });
  const auto at = first == hits.end() ? 0 : static_cast<std::size_t>(first - hits.begin());
  view_->setHits(std::move(hits));
  view_->showHit(at);
  showFound();
}

void ReportWindow::step(int hits) {
  const auto count = static_cast<std::ptrdiff_t>(view_->hits().size());
  if (count == 0) return;
  const auto next = (static_cast<std::ptrdiff_t>(view_->currentHit()) + hits + count) % count;
  view_->showHit(static_cast<std::size_t>(next));
  showFound();
}

void ReportWindow::showFound() {
  const std::size_t count = view_->hits().size();
  QString words;
  if (count > 0)
    words = QStringLiteral("%1 iš %2").arg(view_->currentHit() + 1).arg(count);
  else if (!words_->text().trimmed().isEmpty())
    words = QStringLiteral("Nerasta");
  found_->setText(words);
}

// --- what leaves the window ----------------------------------------------------------------------

void ReportWindow::saveAs(ReportFormat format) {
  exports_.exportAs(*document_, format, document_->exportStem);
}

void ReportWindow::mail() {
  const std::string stem = document_->exportStem.empty() ? "Ataskaita" : document_->exportStem;
  const std::string path = report::placeForAttachment(stem + ".pdf");
  if (path.empty()) return say("Nepavyko sukurti laikino katalogo laiško priedui.");
  std::string why;
  {
    const Busy busy(stage_);
    why = report::writePdf(view_->pages(), document_->title, path, progress("Rašoma byla"));
  }
  if (why.empty()) why = mailer.send(path, document_->title);
  if (!why.empty()) say(why);
}

void ReportWindow::print() {
  QPrinter printer(QPrinter::HighResolution);
  report::preparePrinter(printer, *document_);
  QPrintDialog dialog(&printer, this);
  dialog.setMinMax(1, static_cast<int>(view_->pages().pages.size()));
  dialog.setOption(QAbstractPrintDialog::PrintCurrentPage, false);
  if (dialog.exec() != QDialog::Accepted) return;
  QPageLayout paper = printer.pageLayout();
  paper.setUnits(QPageLayout::Millimeter);
  const std::string lost = report::lostEdges(document_->page, paper.minimumMargins());
  if (!lost.empty()) {
    Message question;
    question.icon = Icon::Question;
    question.buttons = Buttons::YesNo;
    question.preset = Answer::Yes;
    question.title = "Tolvex";
    question.text = lost + "\r\n\r\nSpausdinti?";
    if (stage_.message(question) != Answer::Yes) return;
  }
  const Busy busy(stage_);
  if (!report::print(printer, view_->pages(), progress("Spausdinama")) && !stage_.stopped())
    say("Spausdintuvas nepriėmė ataskaitos.");
}

}  // namespace tolvex::desktop
