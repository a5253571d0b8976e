// Dates: a box that reads dates as accountants type them, with a calendar to point at.
#include <QCalendarWidget>
#include <QFrame>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QPainter>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVBoxLayout>

#include "framework/text.h"
#include "host/desktop/control_view.h"
#include "host/desktop/form_widget.h"
#include "host/desktop/theme.h"
#include "platform/host.h"

namespace tolvex::desktop {
namespace {

QDate shownDay(const DateTime& day) {
  return {day.Year(), static_cast<int>(day.Month()), static_cast<int>(day.Day())};
}

DateTime fromShown(const QDate& day) {
  return DateTime::Of(day.year(), static_cast<unsigned>(day.month()),
                      static_cast<unsigned>(day.day()));
}

class DateEdit final : public QLineEdit {
 public:
  explicit DateEdit(QWidget* parent) : QLineEdit(parent) { setTextMargins(0, 0, 18, 0); }
  std::function<void()> open;
  std::function<void(int days, int months)> walk;

 private:
  bool overSign(const QPointF& at) const { return at.x() > width() - 24; }
  void paintEvent(QPaintEvent* event) override {
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    paintChevron(painter, QRectF(width() - 22, 0, 16, height()),
                 isEnabled() ? colour::kMuted : colour::kFaint);
  }
  void mousePressEvent(QMouseEvent* event) override {
    QLineEdit::mousePressEvent(event);
    if (overSign(event->position()) && event->button() == Qt::LeftButton) open();
  }
  void mouseMoveEvent(QMouseEvent* event) override {
    setCursor(overSign(event->position()) ? Qt::ArrowCursor : Qt::IBeamCursor);
    QLineEdit::mouseMoveEvent(event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool alt = event->modifiers() & Qt::AltModifier;
    if (event->key() == Qt::Key_F4 || (alt && event->key() == Qt::Key_Down)) {
      open();
    } else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Up) {
      walk(1, 0);
    } else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Down) {
      walk(-1, 0);
    } else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_PageUp) {
      walk(0, 1);
    } else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_PageDown) {
      walk(0, -1);
    } else {
      QLineEdit::keyPressEvent(event);
    }
  }
};

class DateView final : public ControlView {
 public:
  DateView(FormWidget& form, ui::DatePicker& picker) : ControlView(form, picker), picker_(picker) {
    edit_ = new DateEdit(&form);
    edit_->setMaxLength(10);
    edit_->setFixedWidth(charsWidth(edit_->font(), picker.monthOnly ? 7 : 10) + 46);
    edit_->setMouseTracking(true);
    outer = field = edit_;
    edit_->open = [this] { openCalendar(); };
    edit_->walk = [this](int days, int months) { walk(days, months); };
    QObject::connect(edit_, &QLineEdit::textEdited, &form, [this] { typed_ = true; });
  }

  void sync() override {
    typed_ = false;
    const QString words = shown();
    if (edit_->text() == words) return;
    edit_->setText(words);
    if (edit_->hasFocus()) edit_->selectAll();
  }

  void commit() override {
    if (!typed_) return;
    typed_ = false;
    std::string typed = trim(text(edit_->text()));
    if (picker_.monthOnly) typed = wholeMonth(typed);
    owner.actNow([this, typed] {
      // What is no date is taken back; the view shows what the control holds.
      owner.input().enter(picker_, typed);
      picker_.touch();
    });
    owner.wake();
  }

 private:
  QString shown() const {
    const auto& value = picker_.value();
    if (!value) return {};
    return text(picker_.monthOnly ? value->Text().substr(0, 7) : value->Text());
  }

  // "3" and "2008.03" with the first day, in words that a date is read from.
  static std::string wholeMonth(const std::string& typed) {
    if (typed.empty() || typed == "t") return typed;
    if (typed.size() <= 2) return "1." + typed;
    if (typed.size() == 6 && typed.find('.') == std::string::npos) return typed + "01";
    const auto parts = split(typed, '.');
    if (parts.size() != 2) return typed;
    return parts[0] + '.' + (parts[1].size() == 1 ? "0" : "") + parts[1] + ".01";
  }

  DateTime standing() const {
    return picker_.value().value_or(owner.form().host().clock().today());
  }

  void tell(const QDate& day) {
    owner.act([this, day] { owner.input().date(picker_, fromShown(day)); });
  }

  void walk(int days, int months) {
    if (edit_->isReadOnly()) return;
    commit();
    if (picker_.monthOnly) {
      months += days;
      days = 0;
    }
    tell(shownDay(standing()).addDays(days).addMonths(months));
  }

  void openCalendar() {
    auto* popup = new QFrame(edit_, Qt::Popup);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    popup->setProperty("card", true);
    auto* layout = new QVBoxLayout(popup);
    layout->setContentsMargins(2, 2, 2, 2);
    auto* calendar = new QCalendarWidget(popup);
    calendar->setLocale(QLocale(QLocale::Lithuanian, QLocale::Lithuania));
    calendar->setFirstDayOfWeek(Qt::Monday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setHorizontalHeaderFormat(QCalendarWidget::ShortDayNames);
    calendar->setSelectedDate(shownDay(standing()));
    QTextCharFormat weekend;
    weekend.setForeground(QColor(colour::kMuted));
    calendar->setWeekdayTextFormat(Qt::Saturday, weekend);
    calendar->setWeekdayTextFormat(Qt::Sunday, weekend);
    layout->addWidget(calendar);
    const auto take = [this, popup](const QDate& day) {
      popup->close();
      tell(day);
    };
    QObject::connect(calendar, &QCalendarWidget::clicked, popup, take);
    QObject::connect(calendar, &QCalendarWidget::activated, popup, take);
    popup->move(edit_->mapToGlobal(QPoint(0, edit_->height() + 1)));
    popup->show();
    calendar->setFocus();
  }

  ui::DatePicker& picker_;
  DateEdit* edit_;
  bool typed_ = false;
};

}  // namespace

ViewPtr makeDateView(FormWidget& owner, ui::DatePicker& picker) {
  return std::make_unique<DateView>(owner, picker);
}

}  // namespace tolvex::desktop
