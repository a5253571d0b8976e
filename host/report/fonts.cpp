#include "host/report/fonts.h"

#include <QFontInfo>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <algorithm>
#include <cmath>
#include <memory>

namespace tolvex::report {
namespace {

constexpr float kUnknown = -1;
constexpr int kTwipsPerPoint = 20;

bool isBlank(QChar letter) { return letter == u' ' || letter == u'\t'; }

// The line ends and widths of one text: breaks at blanks, and inside a word that has no other way.
class Wrapper {
 public:
  Wrapper(double width, const Typeface& face) : width_(width), face_(face) {}

  void add(QStringView paragraph) {
    const qsizetype before = lines.size();
    while (!paragraph.isEmpty()) paragraph = paragraph.sliced(takeLine(paragraph));
    if (lines.size() == before) lines.append(QString());
  }
  QStringList lines;

 private:
  // Appends the first line of the text; how many letters it used, with the blanks at its end.
  qsizetype takeLine(QStringView text) {
    double used = 0;
    qsizetype end = 0, lastBlank = -1;
    for (; end < text.size(); ++end) {
      const qsizetype letters = text[end].isHighSurrogate() && end + 1 < text.size() ? 2 : 1;
      const bool blank = isBlank(text[end]);
      used += face_.width(text.sliced(end, letters));
      if (used > width_ + kSlack && !blank && end > 0) break;
      if (blank) lastBlank = end;
      end += letters - 1;
    }
    if (end < text.size() && lastBlank > 0) end = lastBlank;
    qsizetype shown = end;
    while (shown > 0 && isBlank(text[shown - 1])) --shown;
    if (shown > 0 || end == text.size()) lines.append(text.first(shown).toString());
    while (end < text.size() && isBlank(text[end])) ++end;
    return end;
  }

  static constexpr double kSlack = 0.01;  // sums of advances are not exact
  double width_;
  const Typeface& face_;
};

}  // namespace

Typeface::Typeface(const std::string& family, float points, bool bold, bool italic)
    : font_(QString::fromStdString(family)) {
  font_.setPixelSize(qRound(points * kTwipsPerPoint));
  font_.setBold(bold);
  font_.setItalic(italic);
  font_.setKerning(false);
  font_.setHintingPreference(QFont::PreferNoHinting);
  const QFontMetricsF metrics(font_);
  ascent_ = metrics.ascent();
  descent_ = metrics.descent();
  lineHeight_ = metrics.lineSpacing();
  common_.fill(kUnknown);
}

double Typeface::letter(char32_t code) const {
  float& known = code < kCommon ? common_[code] : others_.try_emplace(code, kUnknown).first->second;
  if (known == kUnknown)
    known = static_cast<float>(QFontMetricsF(font_).horizontalAdvance(QString::fromUcs4(&code, 1)));
  return static_cast<double>(known);
}

double Typeface::width(QStringView words) const {
  double sum = 0;
  for (qsizetype i = 0; i < words.size(); ++i) {
    char32_t code = words[i].unicode();
    if (words[i].isHighSurrogate() && i + 1 < words.size()) {
      code = QChar::surrogateToUcs4(words[i], words[i + 1]);
      ++i;
    }
    sum += letter(code);
  }
  return sum;
}

std::uint16_t FontSet::find(float points, bool bold, bool italic) {
  const int half = std::max(1, qRound(points * 2));
  const int key = half * 4 + (bold ? 2 : 0) + (italic ? 1 : 0);
  const auto [known, isNew] = known_.try_emplace(key, static_cast<std::uint16_t>(faces_.size()));
  if (isNew) faces_.emplace_back(family_, static_cast<float>(half) / 2, bold, italic);
  return known->second;
}

QStringList wrap(const QString& words, double width, const Typeface& face) {
  const bool oneLine = !words.contains(u'\n');
  if (oneLine && face.width(words) <= width) return {words};
  Wrapper wrapper(width, face);
  QStringView rest(words);
  for (;;) {
    const qsizetype end = rest.indexOf(u'\n');
    QStringView paragraph = end < 0 ? rest : rest.first(end);
    if (paragraph.endsWith(u'\r')) paragraph.chop(1);
    wrapper.add(paragraph);
    if (end < 0) return wrapper.lines;
    rest = rest.sliced(end + 1);
  }
}

QString cutToWidth(const QString& line, double width, const Typeface& face) {
  if (face.width(line) <= width) return line;
  const double room = width - face.width(u"…");
  double used = 0;
  qsizetype end = 0;
  while (end < line.size()) {
    const qsizetype letters = line[end].isHighSurrogate() && end + 1 < line.size() ? 2 : 1;
    used += face.width(QStringView(line).sliced(end, letters));
    if (used > room) break;
    end += letters;
  }
  return line.first(end) + u'…';
}

std::string fontFault(const std::string& family) {
  static const QList<QStringList> kSameWidths = {
      {QStringLiteral("Arial"), QStringLiteral("Liberation Sans"), QStringLiteral("Arimo")},
      {QStringLiteral("Courier New"), QStringLiteral("Liberation Mono"), QStringLiteral("Cousine")},
      {QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif"),
       QStringLiteral("Tinos")}};
  const QString wanted = QString::fromStdString(family);
  const QString found = QFontInfo(QFont(wanted)).family();
  if (found.compare(wanted, Qt::CaseInsensitive) == 0) return {};
  for (const QStringList& group : kSameWidths)
    if (group.contains(wanted) && group.contains(found)) return {};
  return "Kompiuteryje nėra šrifto „" + family + "“ (vietoj jo imamas „" + found.toStdString() +
         "“), todėl blankų tekstai gali netilpti. Įdiekite šriftus „Liberation“.";
}

void needFonts() {
  if (QCoreApplication::instance()) return;
  static std::string name = "tolvex";
  static int count = 1;
  static char* words[] = {name.data(), nullptr};
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  // Never destroyed: what Qt itself keeps in statics may need it to the very end.
  static QGuiApplication* const app = std::make_unique<QGuiApplication>(count, words).release();
  Q_UNUSED(app);
}

}  // namespace tolvex::report
