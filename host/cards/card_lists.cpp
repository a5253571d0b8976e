#include "host/cards/card_lists.h"

#include "framework/parameters.h"
#include "framework/references.h"
#include "host/objects/object_rows.h"

namespace tolvex {
namespace {

std::vector<ListColumn> columnsIn(const CardList& about) {
  std::vector<ListColumn> columns = columnsOf(about.card().kind);
  std::erase_if(columns, [&](const ListColumn& column) {
    return std::string_view(column.field) == about.same;
  });
  columns.front().grow = true;
  return columns;
}

}  // namespace

CardLists::CardLists(CardForm& form, std::span<const CardList> lists) : form_(form) {
  for (const CardList& about : lists) {
    const CardSpec& card = about.card();
    Listed& made = lists_.emplace_back();
    made.about = &about;
    made.list = std::make_unique<ui::ListView>(&form, about.list, viewColumns(columnsIn(about)));
    made.button = std::make_unique<ui::Button>(&form, about.button, card.newCaption);
    ui::ListView& list = *made.list;
    list.onActivate = [this, &list] {
      if (const ui::Row* row = list.currentRow())
        form_.host().desktop().show(std::string(row->key));
    };
    list.onInsert = made.button->onClick = [this, &about] { makeNew(about); };
  }
}

void CardLists::shown() {
  for (Listed& listed : lists_) read(listed);
}

void CardLists::recordsChanged(const std::string& kind) {
  for (Listed& listed : lists_)
    if (kind == listed.about->card().kind) read(listed);
}

void CardLists::read(Listed& listed) {
  const std::string kind = listed.about->card().kind;
  listed.button->enabled =
      form_.isStored() && form_.host().rights().of(listed.about->card().component).create != 0;
  std::vector<ui::Row> rows;
  if (form_.isStored()) {
    const std::string filter =
        std::string(listed.about->shown) + " = '" + form_.object().OIDR() + "'";
    for (ObjectRow& row : listedRows(form_.host(), kind, filter, columnsIn(*listed.about)))
      rows.push_back(std::move(row.row));
  }
  const ui::Row* current = listed.list->currentRow();
  const std::string key = current ? current->key : std::string();
  listed.list->setRows(std::move(rows));
  listed.list->current = listed.list->find(key);
}

void CardLists::makeNew(const CardList& about) {
  if (!form_.isStored()) return;
  const CardSpec& card = about.card();
  const auto object = form_.host().objects().create(card.kind);
  if (!object) return;
  setReference((*object->RsFields())[about.field], form_.object().OIDR());
  form_.host().screens().show(std::make_shared<CardForm>(form_.host(), card, object));
}

}  // namespace tolvex
