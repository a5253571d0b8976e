#include "host/desktop/letter_menu.h"

#include <QKeyEvent>
#include <algorithm>

#include "framework/text.h"
#include "host/desktop/theme.h"
#include "platform/layout.h"

namespace tolvex::desktop {
namespace {

constexpr int kPatience = 1000;  // milliseconds between the letters of one word

bool hasLetter(const QAction& action, const QString& letter) {
  return action.text().contains(QLatin1Char('&') + letter, Qt::CaseInsensitive);
}

}  // namespace

// The first entry that begins so; for a single letter the next one below the marked entry.
QAction* LetterMenu::found(const std::string& beginning) const {
  QList<QAction*> rows = actions();
  const auto marked = std::find(rows.begin(), rows.end(), activeAction());
  if (length(beginning) == 1 && marked != rows.end())
    std::rotate(rows.begin(), marked + 1, rows.end());
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const QAction* action) {
    return action->isEnabled() &&
           startsWithNoCase(ui::withoutAccessKey(text(action->text())), beginning);
  });
  return row == rows.end() ? nullptr : *row;
}

void LetterMenu::keyPressEvent(QKeyEvent* event) {
  const QString letter = event->text();
  const auto rows = actions();
  const bool taken = std::any_of(rows.begin(), rows.end(),
                                 [&](const QAction* action) { return hasLetter(*action, letter); });
  if (letter.isEmpty() || !letter.front().isLetterOrNumber() || taken) {
    return QMenu::keyPressEvent(event);
  }
  if (sinceTyped_.isValid() && sinceTyped_.elapsed() > kPatience) typed_.clear();
  sinceTyped_.start();
  typed_ += text(letter);
  QAction* row = found(typed_);
  if (!row) row = found(typed_ = text(letter));
  if (row) setActiveAction(row);
}

}  // namespace tolvex::desktop
