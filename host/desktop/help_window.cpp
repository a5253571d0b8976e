#include "host/desktop/help_window.h"

#include <QTextBrowser>
#include <QVBoxLayout>

#include "framework/text.h"
#include "host/desktop/theme.h"
#include "host/objects/help_pages.h"

namespace tolvex::desktop {
namespace {

constexpr QSize kSize(460, 560);

QString escaped(const std::string& words) { return text(words).toHtmlEscaped(); }

QString keyTable(const QString& heading, std::span<const HelpKey> keys) {
  if (keys.empty()) return {};
  QString html = QStringLiteral("<h3>%1</h3><table cellspacing='0' cellpadding='3'>").arg(heading);
  for (const HelpKey& key : keys) {
    html += QStringLiteral("<tr><td width='150'><b>%1</b></td><td>%2</td></tr>")
                .arg(escaped(key.keys), escaped(key.meaning));
  }
  return html + QStringLiteral("</table>");
}

QString html(const HelpPage* page, const std::string& title) {
  QString words = QStringLiteral("<h2>%1</h2>").arg(escaped(title));
  if (page) {
    for (const std::string& paragraph : split(page->text, '\n'))
      words += QStringLiteral("<p>%1</p>").arg(escaped(paragraph));
    words += keyTable(QStringLiteral("Klavišai"), page->keys);
  }
  return words + keyTable(QStringLiteral("Visur"), generalKeys());
}

}  // namespace

HelpWindow::HelpWindow(const std::string& name, const std::string& title, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("helpWindow"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(QStringLiteral("Pagalba"));
  const HelpPage* page = helpPage(name);
  const bool named = page && *page->title;
  auto* words = new QTextBrowser(this);
  words->setFrameShape(QFrame::NoFrame);
  words->setHtml(html(page, named ? page->title : trim(title)));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(12, 8, 4, 8);
  layout->addWidget(words);
  resize(kSize);
}

}  // namespace tolvex::desktop
