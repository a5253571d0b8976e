#include "host/desktop/qt_stage.h"

#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QFileInfo>
#include <QImage>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QTimer>
#include <algorithm>

#include "framework/text.h"
#include "host/desktop/form_dialog.h"
#include "host/desktop/help_window.h"
#include "host/desktop/main_window.h"
#include "host/desktop/message_box.h"
#include "host/desktop/progress_strip.h"
#include "host/desktop/report_viewer.h"
#include "host/desktop/theme.h"
#include "host/objects/workspace.h"

namespace tolvex::desktop {
namespace {

constexpr int kTurnEvery = 60;  // milliseconds between two drawings of a long work
constexpr int kPatience = 400;  // a work shorter than this shows no progress
constexpr int kWhileUnwinding = 15;
constexpr int kPreviewMargin = 40;  // of the main window seen above and below a preview

// "(*.txt;*.acc)|*.txt;*.acc" as the toolkit writes it: "(*.txt *.acc)".
QString filterOf(const std::string& pattern) {
  QStringList filters;
  const auto parts = split(pattern, '|');
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
    const QString words = text(parts[i]).section(QLatin1Char('('), 0, 0).trimmed();
    filters << words + QStringLiteral(" (") + text(replaceAll(parts[i + 1], ";", " ")) +
                   QLatin1Char(')');
  }
  return filters.join(QStringLiteral(";;"));
}

bool isUserInput(QEvent::Type type) {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::Close:
      return true;
    default:
      return false;
  }
}

}  // namespace

QtStage::QtStage() {
  ticker_ = new QTimer(this);
  ticker_->setSingleShot(true);
  QObject::connect(ticker_, &QTimer::timeout, this, [this] { tick(); });
  qApp->installEventFilter(this);
}

QtStage::~QtStage() { qApp->removeEventFilter(this); }

void QtStage::bind(Workspace& workspace) {
  workspace_ = &workspace;
  window_ = std::make_unique<MainWindow>(workspace, *this);
  adopt(window_->tree());
  adopt(window_->list());
  for (const auto& form : workspace.screens()) shown(*form);
  window_->showStatus(workspace.status());
  if (size_.isValid()) window_->resize(size_);
  if (size_.isValid() || window_->fitsItsScreen()) {
    window_->show();
  } else {
    window_->showMaximized();  // a frame of the desktop would push the status line out of sight
  }
  settled();
}

void QtStage::unbind() {
  for (const Preview& preview : std::exchange(previews_, {})) delete preview.window.data();
  window_.reset();
  workspace_ = nullptr;
}

void QtStage::adopt(FormWidget& widget) {
  std::erase_if(widgets_, [](const auto& known) { return known.isNull(); });
  widgets_.emplace_back(&widget);
}

// --- screens ------------------------------------------------------------------------------------

void QtStage::shown(ui::Form& form) {
  if (window_) adopt(window_->add(form));
}

void QtStage::raised(ui::Form& form) {
  if (window_) window_->bringToFront(form);
}

void QtStage::removed(ui::Form& form) {
  if (window_) window_->remove(form);
}

void QtStage::titleChanged(ui::Form& form) {
  if (window_) window_->rename(form);
}

void QtStage::statusChanged() {
  if (window_ && workspace_) window_->showStatus(workspace_->status());
}

QWidget* QtStage::parentForDialog() const {
  for (const Preview& preview : previews_)
    if (preview.window && preview.window->isActiveWindow()) return preview.window;
  return ground();
}

QWidget* QtStage::ground() const {
  for (auto level = levels_.rbegin(); level != levels_.rend(); ++level) {
    if (level->dialog) return level->dialog;
  }
  return window_ ? window_.get() : QApplication::activeWindow();
}

void QtStage::runModal(ui::Form& form) {
  flush();
  FormDialog dialog(form, *this, parentForDialog());
  adopt(dialog.widget());
  levels_.push_back({&form, nullptr, &dialog});
  keepTicking();
  if (form.isOpen()) dialog.exec();
  levels_.pop_back();
  keepTicking();
}

Answer QtStage::message(const Message& message) {
  flush();
  MessageBox box(message, parentForDialog());
  levels_.push_back({nullptr, &message, &box});
  const bool wasTurning = std::exchange(turning_, false);
  keepTicking();
  box.exec();
  turning_ = wasTurning;
  levels_.pop_back();
  keepTicking();
  return box.reply();
}

template <class Dialog>
std::optional<std::string> QtStage::file(Dialog dialog) {
  flush();
  if (!fileReplies.empty()) {
    const auto reply = fileReplies.front();
    fileReplies.pop_front();
    return reply;
  }
  if (idleTick) return std::nullopt;  // nobody is there to choose
  const QString chosen = dialog();
  if (chosen.isEmpty()) return std::nullopt;
  return text(chosen);
}

std::optional<std::string> QtStage::openFile(const std::string& pattern, const std::string& start) {
  return file([&] {
    return QFileDialog::getOpenFileName(parentForDialog(), QStringLiteral("Atverti"), text(start),
                                        filterOf(pattern));
  });
}

std::optional<std::string> QtStage::saveFile(const std::string& pattern, const std::string& folder,
                                             const std::string& name) {
  return file([&] {
    const QString path = text(folder.empty() ? name : folder + "/" + name);
    return QFileDialog::getSaveFileName(parentForDialog(), QStringLiteral("Įrašyti kaip"), path,
                                        filterOf(pattern));
  });
}

void QtStage::help(const std::string& page, const std::string& title) {
  flush();
  delete help_.data();
  // Below the dialog that is open, if one is: only there it can be read beside it.
  help_ = new HelpWindow(page, title, parentForDialog());
  help_->show();
}

void QtStage::report(std::shared_ptr<const ReportDocument> document, bool withExcel,
                     ReportViewer& viewer) {
  report_ = std::move(document);
  QWidget* const parent = ground();
  const QPointer<ReportWindow> preview =
      new ReportWindow(report_, withExcel, viewer, *this, *this, parent);
  if (!preview->load()) {
    delete preview.data();
    return;
  }
  std::erase_if(previews_, [](const Preview& known) { return known.window.isNull(); });
  previews_.push_back({preview, levels_.size()});
  if (auto* dialog = qobject_cast<QDialog*>(parent)) {
    // The preview outlives the modal form from which it was asked.
    connect(dialog, &QDialog::finished, preview, [this, preview] {
      const QSize size = preview->size();
      preview->setParent(window_.get(), Qt::Window);
      preview->resize(size);
      preview->show();
    });
  }
  const QSize room = (window_ ? window_->size() : preview->screen()->availableSize());
  preview->resize(room.width() * 9 / 10, room.height() - kPreviewMargin);
  preview->show();
  preview->activateWindow();
}

bool QtStage::closeReport() {
  for (auto preview = previews_.rbegin(); preview != previews_.rend(); ++preview)
    if (preview->window && preview->window->isVisible()) return preview->window->close();
  return false;
}

// --- acts
// -----------------------------------------------------------------------------------------

void QtStage::run(const std::function<void()>& act) {
  // A handler may throw; nothing may fly through the toolkit.
  try {
    act();
  } catch (const std::exception& error) {
    fail(error.what());
  }
  settled();
}

void QtStage::fail(const char* what) {
  Message note;
  note.icon = Icon::Stop;
  note.title = "Tolvex";
  note.text = std::string("Klaida!\r\n") + what;
  message(note);
}

void QtStage::settled() {
  if (std::exchange(idleAsked_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { idle(); }, Qt::QueuedConnection);
}

void QtStage::idle() {
  idleAsked_ = false;
  if (turning_) {
    QTimer::singleShot(kTurnEvery, this, [this] { settled(); });
    return;
  }
  try {
    if (workspace_) {
      if (workspace_->idle()) settled();
    } else if (ui::Form* form = modalForm()) {
      for (const ui::Handler& work : form->takeLater()) work();
    }
  } catch (const std::exception& error) {
    fail(error.what());
  }
}

void QtStage::flush() {
  for (const auto& widget : std::vector<QPointer<FormWidget>>(widgets_)) {
    if (widget) widget->flush();
  }
}

// --- long works ---------------------------------------------------------------------------------

void QtStage::busy(bool on) {
  busy_ += on ? 1 : -1;
  if (on && busy_ == 1) {
    stopped_ = false;
    sinceBusy_.start();
    QApplication::setOverrideCursor(Qt::WaitCursor);
  }
  if (!on && busy_ == 0) {
    QApplication::restoreOverrideCursor();
    delete strip_.data();
  }
}

void QtStage::progress(std::string_view what, double share) {
  if (busy_ > 0 && sinceBusy_.elapsed() > kPatience) {
    QWidget* window = parentForDialog();
    if (window && !strip_) strip_ = new ProgressStrip(window, [this] { stopped_ = true; });
    if (strip_) strip_->show(text(std::string(what)), share);
  }
  turn();
}

void QtStage::turn() {
  if (turning_ || (sinceTurn_.isValid() && sinceTurn_.elapsed() < kTurnEvery)) return;
  sinceTurn_.start();
  flush();
  turning_ = true;
  QApplication::processEvents(QEventLoop::AllEvents, kTurnEvery);
  turning_ = false;
  sinceTurn_.start();
}

bool QtStage::eventFilter(QObject* watched, QEvent* event) {
  if ((!turning_ && !showing()) || !isUserInput(event->type())) return false;
  if (strip_ && strip_->isStop(watched)) return false;
  if (event->type() == QEvent::KeyPress &&
      static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    stopped_ = true;
  }
  return watched->isWidgetType();  // what the user does meanwhile is dropped
}

// --- scripts
// --------------------------------------------------------------------------------------

const Message* QtStage::openMessage() const {
  return levels_.empty() ? nullptr : levels_.back().message;
}

ui::Form* QtStage::modalForm() const {
  for (auto level = levels_.rbegin(); level != levels_.rend(); ++level) {
    if (level->form) return level->form;
  }
  return nullptr;
}

void QtStage::answer(Answer reply) {
  if (openMessage()) static_cast<MessageBox*>(levels_.back().dialog.data())->answer(reply);
}

void QtStage::menuOpened(ui::Menu* menu, QMenu* widget) {
  menu_ = menu;
  menuWidget_ = widget;
  QObject::connect(widget, &QMenu::aboutToHide, this, [this, widget] {
    if (menuWidget_ == widget) menu_ = nullptr;
  });
}

void QtStage::closeMenu() {
  menu_ = nullptr;
  if (menuWidget_) menuWidget_->close();
}

void QtStage::startTicking() {
  finished_ = false;
  keepTicking();
}

void QtStage::keepTicking() {
  if (showing() && !ticker_->isActive()) ticker_->start(0);
}

// The innermost box or form was answered, but its loop has not returned yet.
bool QtStage::unwinding() const {
  if (levels_.empty()) return false;
  const Level& top = levels_.back();
  if (top.form && !top.form->isOpen()) return true;
  return top.dialog && !top.dialog->isVisible();
}

void QtStage::tick() {
  if (!showing()) return;
  if (turning_ || unwinding() || idleAsked_) {
    ticker_->start(kWhileUnwinding);
    return;
  }
  flush();
  const std::size_t depth = levels_.size();
  // While a nested loop runs inside, keepTicking() lets the script go on there.
  const int wait = idleTick();
  settled();
  if (wait < 0) {
    finished_ = true;
    ticker_->stop();
    return;
  }
  if (levels_.size() == depth) ticker_->start(wait);
}

bool QtStage::shot(const std::string& path) {
  flush();
  QApplication::sendPostedEvents();
  QWidget* base = window_ ? static_cast<QWidget*>(window_.get()) : parentForDialog();
  if (!base) return false;
  QImage picture = base->grab().toImage();
  QPainter painter(&picture);
  const auto paintPreviews = [&](std::size_t depth) {
    for (const Preview& preview : previews_)
      if (preview.window && preview.window->isVisible() &&
          std::min(preview.depth, levels_.size()) == depth)
        paintWindow(painter, *preview.window, base->size());
  };
  paintPreviews(0);
  for (std::size_t depth = 0; depth < levels_.size(); ++depth) {
    QDialog* dialog = levels_[depth].dialog;
    // Before there is a window, the dialog in front is all there is.
    if (window_ && dialog && dialog != base && dialog->isVisible())
      paintWindow(painter, *dialog, base->size());
    paintPreviews(depth + 1);
  }
  if (menuWidget_ && menuWidget_->isVisible()) {
    painter.drawPixmap(base->mapFromGlobal(menuWidget_->pos()), menuWidget_->grab());
  }
  painter.end();
  return picture.save(text(path));
}

void QtStage::resize(int width, int height) {
  size_ = QSize(width, height);
  if (!window_) return;
  if (window_->isMaximized()) window_->showNormal();
  window_->resize(size_);
  QApplication::sendPostedEvents();
}

void QtStage::quit(int status) {
  finished_ = true;  // the tick itself may be asking
  QCoreApplication::exit(status);
}

}  // namespace tolvex::desktop
