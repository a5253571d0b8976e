#include "host/desktop/message_box.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "host/desktop/glyphs.h"
#include "host/desktop/theme.h"

namespace tolvex::desktop {
namespace {

constexpr int kSignSize = 36;
constexpr int kNarrowest = 320;
constexpr int kWidest = 560;

const char* buttonName(Answer answer) {
  switch (answer) {
    case Answer::Ok:
      return "Gerai";
    case Answer::Cancel:
      return "Atšaukti";
    case Answer::Yes:
      return "Taip";
    default:
      return "Ne";
  }
}

QPixmap sign(Icon icon) {
  constexpr int kScale = 2;
  QPixmap pixmap(kSignSize * kScale, kSignSize * kScale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.scale(kScale, kScale);
  paintSign(painter, QRectF(1, 1, kSignSize - 2, kSignSize - 2), icon);
  painter.end();
  pixmap.setDevicePixelRatio(kScale);
  return pixmap;
}

}  // namespace

MessageBox::MessageBox(const Message& message, QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("messageBox"));
  setWindowTitle(text(message.title.value_or(std::string())));
  setWindowFlag(Qt::WindowContextHelpButtonHint, false);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);

  auto* top = new QWidget(this);
  top->setAutoFillBackground(true);
  QPalette white = top->palette();
  white.setColor(QPalette::Window, QColor(colour::kCard));
  top->setPalette(white);
  auto* line = new QHBoxLayout(top);
  line->setContentsMargins(20, 20, 24, 20);
  line->setSpacing(16);
  if (message.icon != Icon::None) {
    auto* picture = new QLabel(top);
    picture->setPixmap(sign(message.icon));
    line->addWidget(picture, 0, Qt::AlignTop);
  }
  auto* words = new QLabel(top);
  words->setObjectName(QStringLiteral("messageText"));
  words->setTextFormat(Qt::PlainText);
  words->setText(text(message.text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
  words->setTextInteractionFlags(Qt::TextSelectableByMouse);
  const int natural = words->sizeHint().width() + 4;
  words->setWordWrap(true);
  words->setMinimumWidth(std::clamp(natural, kNarrowest - 110, kWidest - 110));
  line->addWidget(words, 1, Qt::AlignVCenter);
  layout->addWidget(top, 1);

  auto* bottom = new QWidget(this);
  auto* buttons = new QHBoxLayout(bottom);
  buttons->setContentsMargins(20, 12, 20, 12);
  buttons->setSpacing(8);
  buttons->addStretch(1);
  layout->addWidget(bottom);
  switch (message.buttons) {
    case Buttons::Ok:
      safest_ = Answer::Ok;
      addButton(bottom, message, Answer::Ok);
      break;
    case Buttons::OkCancel:
      safest_ = Answer::Cancel;
      addButton(bottom, message, Answer::Ok);
      addButton(bottom, message, Answer::Cancel);
      break;
    case Buttons::YesNo:
      safest_ = Answer::No;
      addButton(bottom, message, Answer::Yes);
      addButton(bottom, message, Answer::No);
      break;
  }
  reply_ = safest_;
  setMinimumWidth(kNarrowest);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

void MessageBox::addButton(QWidget* parent, const Message& message, Answer value) {
  auto* button = new QPushButton(QString::fromUtf8(buttonName(value)), parent);
  button->setObjectName(button->text());
  button->setMinimumWidth(76);
  const bool preset = message.buttons == Buttons::Ok || message.preset == value;
  button->setProperty("role", preset ? QStringLiteral("primary") : QStringLiteral("plain"));
  button->setDefault(preset);
  if (preset) button->setFocus();
  parent->layout()->addWidget(button);
  offered_.emplace_back(value, button->text().front());
  QObject::connect(button, &QPushButton::clicked, this, [this, value] { answer(value); });
}

void MessageBox::answer(Answer value) {
  const bool has = std::any_of(offered_.begin(), offered_.end(),
                               [&](const auto& offer) { return offer.first == value; });
  reply_ = has ? value : safest_;
  done(0);
}

void MessageBox::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    QGuiApplication::clipboard()->setText(
        findChild<QLabel*>(QStringLiteral("messageText"))->text());
    return;
  }
  // The first letter of a button presses it.
  const QString typed = event->text().toUpper();
  for (const auto& [value, letter] : offered_) {
    if (typed == letter && event->modifiers() == Qt::NoModifier) {
      answer(value);
      return;
    }
  }
  QDialog::keyPressEvent(event);
}

}  // namespace tolvex::desktop
