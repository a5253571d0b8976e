#include "platform/report.h"

#include <algorithm>

#include "framework/results.h"
#include "framework/text.h"

namespace tolvex {
namespace {

std::string oneLine(const std::string& text) { return replaceAll(text, "\n", " / "); }

struct Dump {
  std::string& out;

  void line(const std::string& text) { out += oneLine(text) + "\n"; }
  void operator()(const Paragraph& paragraph) { line(paragraph.text); }
  void operator()(const PageBreak&) { line("---"); }
  void operator()(const ReportTable& table) {
    std::vector<std::string> captions;
    for (const ReportColumn& column : table.columns) captions.push_back(column.caption);
    line("| " + join(captions, " | "));
    for (const ReportRow& row : table.rows)
      line((row.style.bold ? "|*" : "| ") + join(row.cells, " | "));
  }
  void operator()(const Panel& panel) {
    for (const Box& box : panel.boxes)
      if (!box.text.empty()) line(box.name.empty() ? box.text : box.name + " = " + box.text);
  }
};

}  // namespace

Panel panel(float widthMm, float heightMm, std::span<const BoxSpec> boxes,
            std::initializer_list<std::pair<std::string_view, std::string>> values) {
  Panel result{widthMm, heightMm, {}};
  for (const BoxSpec& spec : boxes) {
    const bool bold = (spec.flags & Bold) != 0;
    result.boxes.push_back({spec.name, spec.x, spec.y, spec.w, spec.h, spec.text,
                            Style{spec.size, bold, false, spec.align},
                            static_cast<std::uint8_t>(spec.flags), spec.comb});
  }
  for (const auto& [name, text] : values) {
    const auto box = std::find_if(result.boxes.begin(), result.boxes.end(),
                                  [&](const Box& one) { return one.name == name; });
    expect(box != result.boxes.end(), "a form has every box that it is filled by");
    box->text = text;
  }
  return result;
}

std::string dump(const ReportDocument& document) {
  std::string out = document.title + "\n";
  for (const Block& block : document.body) std::visit(Dump{out}, block);
  return out;
}

}  // namespace tolvex
