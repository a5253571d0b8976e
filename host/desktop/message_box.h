// Message boxes with a sign of their own and Lithuanian buttons.
#pragma once

#include <QDialog>

#include "platform/host.h"

namespace tolvex::desktop {

class MessageBox final : public QDialog {
 public:
  MessageBox(const Message& message, QWidget* parent);

  Answer reply() const { return reply_; }
  void answer(Answer reply);  // closes the box; an answer it does not offer counts as its safest

 private:
  void keyPressEvent(QKeyEvent* event) override;
  void reject() override { answer(safest_); }
  void addButton(QWidget* parent, const Message& message, Answer answer);

  std::vector<std::pair<Answer, QChar>> offered_;  // with the letter that picks it
  Answer safest_ = Answer::Ok;
  Answer reply_ = Answer::Ok;
};

}  // namespace tolvex::desktop
