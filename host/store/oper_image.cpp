#include "host/store/oper_image.h"

#include <array>
#include <charconv>

#include "framework/text.h"

namespace tolvex::store {
namespace {

constexpr std::string_view kVersions = "=V", kHeader = "=H", kEntry = "=E", kRef = "=R",
                           kAdded = "=N";

std::string escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '\\':
        out += "\\\\";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string unescaped(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      out += text[i];
      continue;
    }
    const char c = text[++i];
    out += c == 't' ? '\t' : c == 'n' ? '\n' : c == 'r' ? '\r' : c;
  }
  return out;
}

template <class Number>
std::string numberText(Number value) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  return {digits.data(), end};
}

// Each row of the store is listed once, field by field; writing and reading visit the same list.
class Writer {
 public:
  explicit Writer(std::string_view mark) : fields_{std::string(mark)} {}
  void operator()(const std::string& value) { fields_.push_back(value); }
  void operator()(int value) { fields_.push_back(numberText(value)); }
  void operator()(std::int64_t value) { fields_.push_back(numberText(value)); }
  void operator()(double value) { fields_.push_back(numberText(value)); }
  template <class Value>
  void operator()(const std::optional<Value>& value) {
    (*this)(value ? 1 : 0);
    (*this)(value.value_or(Value{}));
  }
  std::string line() const { return protocolLine(fields_); }

 private:
  std::vector<std::string> fields_;
};

class Reader {
 public:
  explicit Reader(std::vector<std::string> fields) : fields_(std::move(fields)) {}
  void operator()(std::string& value) { value = next(); }
  void operator()(int& value) { number(value); }
  void operator()(std::int64_t& value) { number(value); }
  void operator()(double& value) { number(value); }
  template <class Value>
  void operator()(std::optional<Value>& value) {
    int there = 0;
    Value given{};
    (*this)(there);
    (*this)(given);
    if (there != 0) value = std::move(given);
  }

 private:
  const std::string& next() {
    if (place_ >= fields_.size()) {
      refuseRule("Protokolo įrašas sugadintas, įrašymo atšaukti negalima!");
    }
    return fields_[place_++];
  }
  template <class Number>
  void number(Number& value) {
    const std::string& text = next();
    std::from_chars(text.data(), text.data() + text.size(), value);
  }

  std::vector<std::string> fields_;
  std::size_t place_ = 1;  // behind the mark
};

template <class Row, class Visit>
void visitVersions(Row& image, Visit& visit) {
  visit(image.versionBefore);
  visit(image.versionAfter);
  visit(image.epoch);
  visit(image.undone);
}

template <class Row, class Visit>
void visitHeader(Row& row, Visit& visit) {
  visit(row.id);
  visit(row.otype);
  visit(row.groupId);
  visit(row.docRef);
  visit(row.clientRef);
  visit(row.day);
  visit(row.serija);
  visit(row.number);
  visit(row.comment);
  visit(row.parameters);
  visit(row.autoNumber);
  visit(row.vatRegister);
  visit(row.lockGuid);
  visit(row.createdBy);
  visit(row.createdByName);
  visit(row.createdAt);
  visit(row.changedBy);
  visit(row.changedByName);
  visit(row.changedAt);
}

template <class Row, class Visit>
void visitEntry(Row& row, Visit& visit) {
  visit(row.id);
  visit(row.guid);
  visit(row.day);
  visit(row.sumLt);
  visit(row.info);
  visit(row.tag);
  visit(row.fguid);
  visit(row.tradeType);
  visit(row.restoringSign);
  visit(row.vatIndication);
  visit(row.vatFlag);
  visit(row.vatTariff);
  visit(row.templateLineId);
  for (auto* side : {&row.debit, &row.credit}) {
    visit(side->accountId);
    visit(side->account);
    visit(side->cur);
    visit(side->rate);
    visit(side->sumCur);
  }
}

template <class Row, class Visit>
void visitRef(Row& row, Visit& visit) {
  visit(row.id);
  visit(row.sign);
  visit(row.foidr);
  visit(row.role);
  visit(row.pointsTo);
  visit(row.showString);
}

}  // namespace

SavedImage imageOf(const OperChange& change, bool gone, int epoch, int undone) {
  SavedImage image;
  image.versionBefore = change.before ? change.before->rowVersion : 0;
  image.versionAfter = gone ? 0 : change.after.rowVersion;
  image.epoch = epoch;
  image.undone = undone;
  image.header = change.before;
  for (const EntryChange& entry : change.entries) {
    if (entry.before) {
      image.entries.push_back(*entry.before);
    } else if (change.before) {  // of a new operation all go
      image.added.push_back(entry.after->id);
    }
  }
  return image;
}

std::string protocolLine(const std::vector<std::string>& fields) {
  std::string line;
  for (const std::string& field : fields) {
    if (&field != &fields.front()) line += '\t';
    line += escaped(field);
  }
  return line;
}

std::vector<std::string> protocolFields(std::string_view line) {
  std::vector<std::string> fields = split(std::string(line), '\t');
  for (std::string& field : fields) field = unescaped(field);
  return fields;
}

std::string imageText(const SavedImage& image) {
  std::vector<std::string> lines;
  const auto add = [&lines](const Writer& writer) { lines.push_back(writer.line()); };
  Writer versions(kVersions);
  visitVersions(image, versions);
  add(versions);
  if (image.header) {
    Writer header(kHeader);
    visitHeader(*image.header, header);
    add(header);
  }
  for (const EntryRow& row : image.entries) {
    Writer entry(kEntry);
    visitEntry(row, entry);
    add(entry);
    for (const RefRow& its : row.refs) {
      Writer ref(kRef);
      visitRef(its, ref);
      add(ref);
    }
  }
  for (const int id : image.added) {
    Writer added(kAdded);
    added(id);
    add(added);
  }
  return join(lines, "\n");
}

std::optional<SavedImage> imageFrom(std::string_view detail) {
  std::optional<SavedImage> image;
  for (const std::string& line : split(std::string(detail), '\n')) {
    if (!line.starts_with('=')) continue;
    const std::string_view mark = std::string_view(line).substr(0, 2);
    Reader reader(protocolFields(line));
    if (mark == kVersions) {
      visitVersions(image.emplace(), reader);
    } else if (!image) {
      continue;
    } else if (mark == kHeader) {
      visitHeader(image->header.emplace(), reader);
    } else if (mark == kEntry) {
      visitEntry(image->entries.emplace_back(), reader);
    } else if (mark == kRef && !image->entries.empty()) {
      visitRef(image->entries.back().refs.emplace_back(), reader);
    } else if (mark == kAdded) {
      reader(image->added.emplace_back());
    }
  }
  return image;
}

}  // namespace tolvex::store
