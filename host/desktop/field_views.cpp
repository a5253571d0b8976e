// Views of labels, text boxes, checks, options, buttons and tab strips.
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabBar>

#include "host/desktop/control_view.h"
#include "host/desktop/form_widget.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

// Lines are parted by CR LF in the program and by one character in the toolkit.
QString shownLines(const std::string& words) {
  return text(words).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

std::string typedLines(QString words) {
  return text(words.replace(QLatin1Char('\n'), QStringLiteral("\r\n")));
}

class LabelView final : public ControlView {
 public:
  LabelView(FormWidget& form, ui::Label& label) : ControlView(form, label) {
    label_ = new QLabel(&form);
    label_->setTextInteractionFlags(Qt::NoTextInteraction);
    if (label.heading) label_->setProperty("role", "band");
    outer = field = label_;
  }
  void sync() override {
    const QString words = shownLines(base.caption());
    if (label_->text() != words) label_->setText(words);
  }

 private:
  QLabel* label_;
};

class LineView final : public ControlView {
 public:
  LineView(FormWidget& form, ui::TextBox& box) : ControlView(form, box), box_(box) {
    edit_ = new QLineEdit(&form);
    if (box.align == ui::Align::Right) edit_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (box.align == ui::Align::Center) edit_->setAlignment(Qt::AlignCenter);
    if (box.password) edit_->setEchoMode(QLineEdit::Password);
    outer = field = edit_;
    QObject::connect(edit_, &QLineEdit::textEdited, &form, [this](const QString& typed) {
      owner.actNow([this, typed] {
        owner.input().typeText(box_, text(typed), charactersBefore(typed, edit_->cursorPosition()));
      });
      owner.wake();
    });
  }
  void sync() override {
    const QString words = text(box_.text());
    if (edit_->text() != words) {
      const int caret = edit_->cursorPosition();
      edit_->setText(words);
      edit_->setCursorPosition(edit_->hasFocus() ? caret : 0);
    }
    if (edit_->isReadOnly() != box_.readOnly()) edit_->setReadOnly(box_.readOnly());
    if (box_.caret() < 0) return;
    edit_->setCursorPosition(unitsBefore(words, box_.caret()));
    box_.caret = -1;
  }
  void left() override { edit_->setCursorPosition(0); }  // a long text shows how it begins

 private:
  static int charactersBefore(const QString& words, int units) {
    return static_cast<int>(words.left(units).toUcs4().size());
  }
  static int unitsBefore(const QString& words, int characters) {
    const auto all = words.toUcs4();
    const auto count = std::min<qsizetype>(characters, all.size());
    return static_cast<int>(
        QString::fromUcs4(reinterpret_cast<const char32_t*>(all.constData()), count).size());
  }

  ui::TextBox& box_;
  QLineEdit* edit_;
};

class LinesView final : public ControlView {
 public:
  LinesView(FormWidget& form, ui::TextBox& box) : ControlView(form, box), box_(box) {
    edit_ = new QPlainTextEdit(&form);
    edit_->setTabChangesFocus(true);
    edit_->setMinimumHeight(edit_->fontMetrics().lineSpacing() * box.lines + 16);
    outer = field = edit_;
    QObject::connect(edit_, &QPlainTextEdit::textChanged, &form, [this] {
      const QString typed = edit_->toPlainText();
      if (typed == shownLines(box_.text())) return;
      owner.actNow([this, typed] { owner.input().typeText(box_, typedLines(typed), -1); });
      owner.wake();
    });
  }
  void sync() override {
    const QString words = shownLines(box_.text());
    if (edit_->toPlainText() != words) {
      const QSignalBlocker quiet(edit_);
      QTextCursor cursor = edit_->textCursor();
      const int caret = cursor.position();
      edit_->setPlainText(words);
      cursor = edit_->textCursor();
      cursor.setPosition(std::min(caret, static_cast<int>(words.size())));
      edit_->setTextCursor(cursor);
    }
    if (edit_->isReadOnly() != box_.readOnly()) edit_->setReadOnly(box_.readOnly());
  }

 private:
  ui::TextBox& box_;
  QPlainTextEdit* edit_;
};

class CheckView final : public ControlView {
 public:
  CheckView(FormWidget& form, ui::CheckBox& box) : ControlView(form, box), box_(box) {
    check_ = new QCheckBox(&form);
    outer = field = check_;
    QObject::connect(check_, &QCheckBox::clicked, &form,
                     [this](bool on) { owner.act([this, on] { owner.input().check(box_, on); }); });
  }
  void sync() override {
    const QString caption = text(box_.caption());
    if (check_->text() != caption) check_->setText(caption);
    check_->setChecked(box_.on());
  }

 private:
  ui::CheckBox& box_;
  QCheckBox* check_;
};

class OptionView final : public ControlView {
 public:
  OptionView(FormWidget& form, ui::OptionButton& option)
      : ControlView(form, option), option_(option) {
    button_ = new QPushButton(&form);
    button_->setCheckable(true);
    button_->setAutoDefault(false);
    button_->setProperty("role", QStringLiteral("segment"));
    outer = field = button_;
    QObject::connect(button_, &QPushButton::clicked, &form, [this] {
      button_->setChecked(option_.on());  // the form decides what is on
      owner.act([this] { owner.input().choose(option_); });
    });
  }
  void sync() override {
    const QString caption = text(option_.caption());
    if (button_->text() != caption) button_->setText(caption);
    button_->setChecked(option_.on());
    if (option_.on()) button_->raise();  // its border lies over the neighbours'
  }

 private:
  ui::OptionButton& option_;
  QPushButton* button_;
};

const char* roleName(ui::Role role) {
  switch (role) {
    case ui::Role::Primary:
      return "primary";
    case ui::Role::Quiet:
      return "quiet";
    case ui::Role::Small:
      return "small";
    case ui::Role::Danger:
      return "danger";
    default:
      return "plain";
  }
}

class MenuButton final : public QPushButton {
 public:
  using QPushButton::QPushButton;
  bool chevron = false;
  QSize sizeHint() const override {
    QSize size = QPushButton::sizeHint();
    if (text().isEmpty()) size.setWidth(kFieldHeight);
    if (chevron && !text().isEmpty()) size.rwidth() += 14;
    return size;
  }

 private:
  void paintEvent(QPaintEvent* event) override {
    QPushButton::paintEvent(event);
    if (!chevron) return;
    QPainter painter(this);
    const QRectF box = text().isEmpty() ? QRectF(rect()) : QRectF(width() - 20, 0, 14, height());
    paintChevron(painter, box, isEnabled() ? colour::kMuted : colour::kFaint);
  }
};

class ButtonView final : public ControlView {
 public:
  ButtonView(FormWidget& form, ui::Button& button) : ControlView(form, button), button_(button) {
    push_ = new MenuButton(&form);
    push_->setAutoDefault(false);
    push_->setProperty("role", QString::fromLatin1(roleName(button.role)));
    outer = field = push_;
    QObject::connect(push_, &QPushButton::clicked, &form, [this] {
      owner.setMenuPoint({});
      owner.act([this] { owner.input().click(button_); });
    });
  }
  void sync() override {
    const QString caption = text(button_.caption());
    if (push_->text() != caption) push_->setText(caption);
    // A small button without words opens the menu or the choice of its field.
    push_->chevron = button_.menu && !button_.onClick;
    if (button_.role == ui::Role::Small && caption.isEmpty() && !push_->chevron) {
      push_->setText(QStringLiteral("…"));
    }
    push_->updateGeometry();
  }

 private:
  ui::Button& button_;
  MenuButton* push_;
};

class TabView final : public ControlView {
 public:
  TabView(FormWidget& form, ui::TabStrip& strip) : ControlView(form, strip), strip_(strip) {
    bar_ = new QTabBar(&form);
    bar_->setExpanding(false);
    bar_->setDrawBase(false);
    outer = field = bar_;
    QObject::connect(bar_, &QTabBar::currentChanged, &form, [this](int index) {
      if (index < 0 || key(index) == strip_.currentKey()) return;
      owner.act([this, wanted = key(index)] {
        owner.input().choose(strip_, wanted);
        strip_.touch();  // a refused choice is taken back
      });
    });
    QObject::connect(bar_, &QTabBar::tabCloseRequested, &form, [this](int index) {
      owner.act([this, wanted = key(index)] { owner.input().closeTab(strip_, wanted); });
    });
  }
  void sync() override {
    const QSignalBlocker quiet(bar_);
    const auto& tabs = strip_.tabs();
    while (bar_->count() > static_cast<int>(tabs.size())) bar_->removeTab(bar_->count() - 1);
    bool closable = false;
    for (int i = 0; i < static_cast<int>(tabs.size()); ++i) {
      const auto& tab = tabs[static_cast<std::size_t>(i)];
      if (i == bar_->count()) bar_->addTab(QString());
      bar_->setTabText(i, text(tab.caption));
      bar_->setTabData(i, text(tab.key));
      bar_->setTabVisible(i, tab.visible);
      closable = closable || tab.closable;
    }
    bar_->setTabsClosable(closable);
    for (int i = 0; i < bar_->count(); ++i) {
      if (closable && !tabs[static_cast<std::size_t>(i)].closable) {
        bar_->setTabButton(i, QTabBar::RightSide, nullptr);
      }
      if (key(i) == strip_.currentKey()) bar_->setCurrentIndex(i);
    }
    bar_->updateGeometry();
  }

 private:
  std::string key(int index) const { return text(bar_->tabData(index).toString()); }
  ui::TabStrip& strip_;
  QTabBar* bar_;
};

}  // namespace

ViewPtr makeLabelView(FormWidget& owner, ui::Label& label) {
  return std::make_unique<LabelView>(owner, label);
}
ViewPtr makeTextView(FormWidget& owner, ui::TextBox& box) {
  if (box.lines > 1) return std::make_unique<LinesView>(owner, box);
  return std::make_unique<LineView>(owner, box);
}
ViewPtr makeCheckView(FormWidget& owner, ui::CheckBox& box) {
  return std::make_unique<CheckView>(owner, box);
}
ViewPtr makeOptionView(FormWidget& owner, ui::OptionButton& option) {
  return std::make_unique<OptionView>(owner, option);
}
ViewPtr makeButtonView(FormWidget& owner, ui::Button& button) {
  return std::make_unique<ButtonView>(owner, button);
}
ViewPtr makeTabView(FormWidget& owner, ui::TabStrip& strip) {
  return std::make_unique<TabView>(owner, strip);
}

}  // namespace tolvex::desktop
