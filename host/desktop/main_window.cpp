#include "host/desktop/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

#include "framework/text.h"
#include "host/desktop/glyphs.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

constexpr int kTreeWidth = 285;
constexpr int kTabChars = 30;
constexpr QSize kUsualSize(1366, 768);

class CloseButton final : public QWidget {
 public:
  CloseButton(QWidget* parent, std::function<void()> close)
      : QWidget(parent), close_(std::move(close)) {
    setFixedSize(18, 18);
    setToolTip(QStringLiteral("Uždaryti (Ctrl+W)"));
  }

 private:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (underMouse()) {
      painter.setPen(Qt::NoPen);
      painter.setBrush(QColor(colour::kLine));
      painter.drawRoundedRect(rect(), 4, 4);
    }
    painter.setPen(QPen(QColor(colour::kMuted), 1.3, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(6, 6), QPointF(12, 12));
    painter.drawLine(QPointF(12, 6), QPointF(6, 12));
  }
  void enterEvent(QEnterEvent*) override { update(); }
  void leaveEvent(QEvent*) override { update(); }
  void mouseReleaseEvent(QMouseEvent*) override { close_(); }
  std::function<void()> close_;
};

}  // namespace

MainWindow::MainWindow(Workspace& workspace, ActGuard& guard)
    : workspace_(workspace), guard_(guard) {
  setObjectName(QStringLiteral("mainWindow"));
  splitter_ = new QSplitter(this);
  splitter_->setHandleWidth(1);
  splitter_->setChildrenCollapsible(false);
  tree_ = new FormWidget(workspace.tree(), guard, splitter_);
  tree_->setMinimumWidth(170);
  for (QWidget* view : tree_->findChildren<QWidget*>(QStringLiteral("tvwLayout"))) {
    view->setProperty("sidebar", true);
    view->style()->polish(view);  // the sheet reads the property anew
  }
  splitter_->addWidget(tree_);

  tabs_ = new QTabWidget(splitter_);
  tabs_->setDocumentMode(true);
  tabs_->setMovable(false);
  tabs_->setElideMode(Qt::ElideRight);
  tabs_->setUsesScrollButtons(true);
  tabs_->tabBar()->setExpanding(false);
  tabs_->tabBar()->setDrawBase(false);
  splitter_->addWidget(tabs_);
  splitter_->setStretchFactor(0, 0);
  splitter_->setStretchFactor(1, 1);
  setCentralWidget(splitter_);

  list_ = new FormWidget(workspace.list(), guard, tabs_);
  tabs_->addTab(page(*list_), QStringLiteral("Sąrašas"));
  list_->serveShortcutsIn(*tree_);  // Ctrl+N makes a new object of the chosen node
  connect(tabs_, &QTabWidget::currentChanged, this, [this](int tab) {
    FormWidget* widget = widgetAt(tab);
    if (!widget) return;
    if (workspace_.current() != &widget->form()) {
      guard_.run([this, widget] { workspace_.activate(widget->form()); });
    }
    QTimer::singleShot(0, widget, [widget] { widget->takeFocus(); });
  });

  firm_ = new QLabel(this);
  place_ = new QLabel(this);
  firm_->setContentsMargins(8, 3, 8, 3);
  place_->setContentsMargins(8, 3, 8, 3);
  statusBar()->addWidget(firm_, 1);
  statusBar()->addPermanentWidget(place_);
  statusBar()->setSizeGripEnabled(false);
  makeMenu();
  resize(kUsualSize.boundedTo(screen()->availableSize().expandedTo(QSize(1024, 700))));
}

bool MainWindow::fitsItsScreen() const {
  const QSize room = screen()->availableSize();
  return room.width() > width() && room.height() > height();
}

MainWindow::~MainWindow() { tabs_->disconnect(this); }

void MainWindow::makeMenu() {
  QMenu* program = menuBar()->addMenu(QStringLiteral("&Programa"));
  program->addAction(QStringLiteral("&Atnaujinti"), QKeySequence(Qt::Key_F5), this,
                     [this] { guard_.run([this] { workspace_.refresh(); }); });
  program->addAction(QStringLiteral("Pakeisti &slaptažodį…"), this,
                     [this] { guard_.run([this] { workspace_.changePassword(); }); });
  program->addAction(QStringLiteral("&Uždaryti langą"), QKeySequence(QStringLiteral("Ctrl+W")),
                     this, [this] { closeTab(tabs_->currentIndex()); });
  program->addSeparator();
  program->addAction(QStringLiteral("&Baigti darbą"), QKeySequence(QStringLiteral("Ctrl+Q")), this,
                     [this] { close(); });
  QMenu* go = menuBar()->addMenu(QStringLiteral("&Eiti"));
  go->addAction(QStringLiteral("Į &medį"), QKeySequence(QStringLiteral("Ctrl+1")), this,
                [this] { tree_->takeFocus(); });
  go->addAction(QStringLiteral("Į &sąrašą"), QKeySequence(QStringLiteral("Ctrl+2")), this, [this] {
    tabs_->setCurrentIndex(0);
    list_->takeFocus();
  });
  go->addAction(
      QStringLiteral("&Ieškoti sąraše"), QKeySequence(QStringLiteral("Ctrl+F")), this, [this] {
        tabs_->setCurrentIndex(0);
        list_->findChild<QWidget*>(QStringLiteral("txtFind"))->setFocus(Qt::TabFocusReason);
      });
  go->addAction(QStringLiteral("&Kitas langas"), QKeySequence(QStringLiteral("Ctrl+PgDown")), this,
                [this] {
                  if (tabs_->count() > 0)
                    tabs_->setCurrentIndex((tabs_->currentIndex() + 1) % tabs_->count());
                });
  go->addAction(QStringLiteral("&Ankstesnis langas"), QKeySequence(QStringLiteral("Ctrl+PgUp")),
                this, [this] {
                  const int count = tabs_->count();
                  if (count > 0)
                    tabs_->setCurrentIndex((tabs_->currentIndex() + count - 1) % count);
                });
  // The key itself belongs to the screen that has the focus.
  menuBar()
      ->addMenu(QStringLiteral("Pa&galba"))
      ->addAction(QStringLiteral("&Apie šį langą\tF1"), this, [this] { showHelp(); });
}

void MainWindow::showHelp() {
  guard_.run([this] {
    if (ui::Form* form = workspace_.current())
      workspace_.context().help().show(form->name(), form->title());
  });
}

QScrollArea* MainWindow::page(FormWidget& widget) {
  auto* area = new QScrollArea(tabs_);
  area->setWidgetResizable(true);
  area->setFocusPolicy(Qt::NoFocus);
  area->setWidget(&widget);
  widget.setAutoFillBackground(true);
  return area;
}

FormWidget* MainWindow::widgetAt(int tab) const {
  auto* area = static_cast<QScrollArea*>(tabs_->widget(tab));
  return area ? static_cast<FormWidget*>(area->widget()) : nullptr;
}

int MainWindow::tabOf(const ui::Form& form) const {
  for (int i = 0; i < tabs_->count(); ++i) {
    if (&widgetAt(i)->form() == &form) return i;
  }
  return -1;
}

void MainWindow::setTab(int tab, const ui::Form& form) {
  const std::string title = trim(form.title());
  const bool isLong = length(title) > kTabChars;
  tabs_->setTabText(tab, text(isLong ? left(title, kTabChars - 1) + "…" : title)
                             .replace(QLatin1Char('&'), QStringLiteral("&&")));
  tabs_->setTabToolTip(tab, text(title));
}

FormWidget& MainWindow::add(ui::Form& form) {
  if (const int known = tabOf(form); known >= 0) {
    tabs_->setCurrentIndex(known);
    return *widgetAt(known);
  }
  auto* widget = new FormWidget(form, guard_, tabs_);
  widget->onTitle = [this, &form] { rename(form); };
  widget->onEscape = [this, &form] { closeTab(tabOf(form)); };
  const int tab = tabs_->addTab(page(*widget), QString());
  setTab(tab, form);
  tabs_->tabBar()->setTabButton(
      tab, QTabBar::RightSide,
      new CloseButton(tabs_->tabBar(), [this, &form] { closeTab(tabOf(form)); }));
  tabs_->setCurrentIndex(tab);
  return *widget;
}

void MainWindow::bringToFront(ui::Form& form) {
  if (const int tab = tabOf(form); tab >= 0) tabs_->setCurrentIndex(tab);
}

void MainWindow::remove(ui::Form& form) {
  const int tab = tabOf(form);
  if (tab < 0) return;
  QWidget* area = tabs_->widget(tab);
  {
    // The workspace says which screen comes to front next.
    const QSignalBlocker quiet(tabs_);
    tabs_->removeTab(tab);
  }
  delete area;
}

void MainWindow::rename(ui::Form& form) {
  if (const int tab = tabOf(form); tab > 0) setTab(tab, form);
}

void MainWindow::closeTab(int tab) {
  if (tab <= 0) return;
  FormWidget* widget = widgetAt(tab);
  widget->act([this, widget] {
    widget->commit();
    workspace_.close(widget->form());
  });
}

void MainWindow::showStatus(const Workspace::Status& status) {
  const auto joined = [](std::initializer_list<std::string> parts) {
    QStringList words;
    for (const std::string& part : parts) {
      if (!part.empty()) words << text(part);
    }
    return words.join(QStringLiteral("   ·   "));
  };
  firm_->setText(joined({status.firm, status.user, status.books}));
  place_->setText(joined({status.locked, status.period}));
  setWindowTitle(
      joined({status.firm, "Tolvex"}).replace(QStringLiteral("   ·   "), QStringLiteral(" – ")));
}

void MainWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (event->spontaneous()) return;
  const int tree = std::min(kTreeWidth, width() / 4);
  splitter_->setSizes({tree, width() - tree});
}

void MainWindow::closeEvent(QCloseEvent* event) {
  if (guard_.holding() || guard_.showing()) {
    event->ignore();
    return;
  }
  bool agreed = false;
  guard_.run([this, &agreed] {
    if (FormWidget* widget = widgetAt(tabs_->currentIndex())) widget->commit();
    agreed = workspace_.closeAll();
  });
  agreed ? event->accept() : event->ignore();
}

void paintWindow(QPainter& painter, QWidget& dialog, QSize within) {
  constexpr int kTitle = 32;
  const QSize size = dialog.size();
  const QPoint at((within.width() - size.width()) / 2,
                  std::max(4, (within.height() - size.height() - kTitle) / 2));
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  for (int i = 9; i > 0; --i) {
    painter.setBrush(QColor(27, 40, 48, 5));
    painter.drawRoundedRect(QRect(at, size + QSize(0, kTitle)).adjusted(-i, -i + 3, i, i + 3), 8,
                            8);
  }
  const QRect title(at, QSize(size.width(), kTitle));
  painter.setBrush(QColor(0xFFE6EBEF));
  painter.drawRect(title);
  painter.setPen(QColor(colour::kText));
  painter.drawText(title.adjusted(14, 0, -14, 0), Qt::AlignVCenter | Qt::AlignLeft,
                   dialog.windowTitle());
  painter.drawPixmap(at + QPoint(0, kTitle), dialog.grab());
  painter.setPen(QColor(colour::kEdge));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(QRect(at, size + QSize(0, kTitle)));
}

}  // namespace tolvex::desktop
