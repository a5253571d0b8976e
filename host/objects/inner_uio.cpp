#include "host/objects/inner_uio.h"

#include <random>

#include "framework/parameters.h"
#include "framework/references.h"
#include "host/objects/kinds.h"
#include "platform/save_outcome.h"

namespace tolvex {

std::string makeGuid() {
  static std::random_device source;
  static std::mt19937_64 engine{(std::uint64_t{source()} << 32) ^ source()};
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text(36, '-');
  for (std::size_t i = 0; i < text.size(); ++i)
    if (i != 8 && i != 13 && i != 18 && i != 23) text[i] = kDigits[engine() % 16];
  return text;
}

void appendArgument(Parameters& parameters, const Variant& value) {
  if (value.IsDate())
    parameters.date(value.AsDate());
  else if (value.IsNumber() || value.IsBool())
    parameters.number(value.AsDouble());
  else
    parameters.text(value.Show());
}

InnerUIO::InnerUIO(HostContext& host, store::StorePort& store, std::string code, const Card* card)
    : host_(host), store_(store), code_(std::move(code)), card_(card), otype_(code_) {
  bo_ = store::businessObject(store_, code_);
}

std::string InnerUIO::GetGUID() { return makeGuid(); }

std::string InnerUIO::OName() const { return kindCaption(otype_); }

FieldList& InnerUIO::Fields() {
  expect(header_ != nullptr, "the object was read before its fields are asked for");
  return header_->Fields();
}

MethodResult InnerUIO::Properties(std::string key, std::string parameters) {
  HostResult result;
  bo_->CallBO("Get" + key, parameters, nullptr, result);
  return told(host_, result);
}

MethodResult InnerUIO::Methods(std::string key, std::span<const Variant> par) {
  if (key == "SetRsFields") {
    if (par.size() != 1 || !par[0].IsRows())
      return refused("SetRsFields:\r\nKlaidingi parametrai !");
    header_ = par[0].AsRows();
    return done();
  }
  if (card_)
    if (const auto own = card_->methods.find(key); own != card_->methods.end())
      return own->second(host_, *this, par);
  Parameters arguments;
  for (const Variant& value : par) appendArgument(arguments, value);
  HostResult result;
  bo_->CallBO(key, arguments.str(), nullptr, result);
  return passOn(result);
}

SaveResult InnerUIO::Read() {
  HostResult result = isNew(oid_) ? store_.create(code_, otype_) : store_.load(code_, oid_);
  if (result.Code != kDone) return {result.Code, result.Text};
  if (!result.Data.IsRows()) return {kRefused, "Objektas neperskaitytas!"};
  header_ = result.Data.AsRows();
  if (header_->HasCurrent() && !isNew(oid_)) {
    FieldList& fields = header_->Fields();
    if (fields.contains("OIDR")) oidr_ = std::string(fields["OIDR"].Text());
    if (fields.contains("OType") && !fields["OType"].Text().empty())
      otype_ = std::string(fields["OType"].Text());
  }
  return {};
}

SaveResult InnerUIO::Save(RowSetPtr second, RowSetPtr third) {
  expect(header_ != nullptr, "the object was read before it is saved");
  const store::SaveOutcome outcome =
      store_.save(code_, otype_, *header_, second.get(), third.get());
  if (outcome.Code == kDone) {
    oid_ = outcome.reference;
    oidr_ = outcome.reference;
  }
  return {outcome.Code, outcome.Text};
}

void InnerUIO::CancelUpdate() {
  if (!header_) return;
  if (!isNew(oid_)) {
    header_->CancelBatch();
  } else if (const SaveResult fresh = Read(); fresh.Code != kDone) {
    warn(host_, fresh.Text);
  }
}

}  // namespace tolvex
