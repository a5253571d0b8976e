#include <gtest/gtest.h>
#include <zip.h>

#include <fstream>
#include <sstream>

#include "tests/report/file_reading.h"

namespace tolvex::test {
namespace {

struct Looks {
  std::vector<std::string> formats, aligns;
  std::vector<bool> bold;
};

Looks readLooks(const std::string& package) {
  pugi::xml_document styles;
  styles.load_string(partOf(package, "xl/styles.xml").c_str());
  const pugi::xml_node root = styles.child("styleSheet");
  std::map<int, std::string> codes = {{0, "General"}, {3, "#,##0"}, {4, "#,##0.00"}, {49, "@"}};
  for (const pugi::xml_node one : root.child("numFmts"))
    codes[one.attribute("numFmtId").as_int()] = one.attribute("formatCode").value();
  std::vector<bool> boldFonts;
  for (const pugi::xml_node font : root.child("fonts"))
    boldFonts.push_back(!font.child("b").empty());
  Looks looks;
  for (const pugi::xml_node look : root.child("cellXfs")) {
    looks.formats.push_back(codes[look.attribute("numFmtId").as_int()]);
    looks.bold.push_back(boldFonts.at(look.attribute("fontId").as_uint()));
    looks.aligns.emplace_back(look.child("alignment").attribute("horizontal").value());
  }
  return looks;
}

}  // namespace

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string partOf(const std::string& package, const std::string& name) {
  int error = 0;
  zip_t* zip = zip_open(package.c_str(), ZIP_RDONLY, &error);
  if (!zip) return {};
  zip_stat_t about;
  std::string text;
  if (zip_stat(zip, name.c_str(), 0, &about) == 0) {
    text.resize(about.size);
    zip_file_t* file = zip_fopen(zip, name.c_str(), 0);
    EXPECT_EQ(zip_fread(file, text.data(), text.size()), static_cast<zip_int64_t>(text.size()));
    zip_fclose(file);
  }
  zip_discard(zip);
  return text;
}

void readSheet(const std::string& path, Sheet& sheet) {
  constexpr auto kOptions = pugi::parse_default | pugi::parse_ws_pcdata;
  ASSERT_TRUE(sheet.xml.load_string(partOf(path, "xl/worksheets/sheet1.xml").c_str(), kOptions));
  ASSERT_TRUE(sheet.workbook.load_string(partOf(path, "xl/workbook.xml").c_str()));
  pugi::xml_document shared;
  shared.load_string(partOf(path, "xl/sharedStrings.xml").c_str(), kOptions);
  std::vector<std::string> texts;
  for (const pugi::xml_node one : shared.child("sst").children("si"))
    texts.emplace_back(one.child("t").text().get());
  const Looks looks = readLooks(path);
  const pugi::xml_node root = sheet.xml.child("worksheet");
  for (const pugi::xml_node row : root.child("sheetData").children("row")) {
    if (const auto height = row.attribute("ht"))
      sheet.heights[row.attribute("r").as_int()] = height.as_double();
    sheet.rows.emplace_back();
    for (const pugi::xml_node cell : row.children("c")) {
      const std::string type = cell.attribute("t").value();
      SheetCell read;
      read.place = cell.attribute("r").value();
      if (type == "inlineStr")
        read.text = cell.child("is").child("t").text().get();
      else if (type == "s")
        read.text = texts.at(cell.child("v").text().as_uint());
      else if (cell.child("v"))
        read.number = cell.child("v").text().as_double();
      const auto look = cell.attribute("s").as_uint();
      read.format = looks.formats.at(look);
      read.bold = looks.bold.at(look);
      read.align = looks.aligns.at(look);
      if (read.number || !read.text.empty()) sheet.rows.back().push_back(read);
      sheet.cells[read.place] = read;
    }
  }
  for (const pugi::xml_node one : root.child("mergeCells"))
    sheet.merged.emplace_back(one.attribute("ref").value());
}

}  // namespace tolvex::test
