#include "host/report/find.h"

namespace tolvex::report {
namespace {

constexpr char16_t kFixedBlank = 0x00A0;

}  // namespace

std::vector<Hit> find(const Pages& pages, const QString& words, std::size_t most) {
  std::vector<Hit> hits;
  const QString wanted = QString(words).replace(QChar(kFixedBlank), u' ');
  if (wanted.trimmed().isEmpty()) return hits;
  for (std::size_t page = 0; page < pages.pages.size(); ++page) {
    const auto& texts = pages.pages[page].texts;
    for (std::size_t text = 0; text < texts.size(); ++text) {
      QString shown = texts[text].text;
      if (shown.size() < wanted.size()) continue;
      if (shown.contains(QChar(kFixedBlank))) shown.replace(QChar(kFixedBlank), u' ');
      for (qsizetype at = 0; (at = shown.indexOf(wanted, at, Qt::CaseInsensitive)) >= 0;
           at += wanted.size()) {
        hits.push_back({page, text, at, wanted.size()});
        if (hits.size() == most) return hits;
      }
    }
  }
  return hits;
}

}  // namespace tolvex::report
