// frmCommentList: the stock comments of a kind of documents: choice, new, change, deletion.
// `result` is 1 when one was chosen.
#pragma once

#include "operations/comment_list.h"
#include "platform/form.h"

namespace tolvex {

class frmCommentList final : public ui::Form {
 public:
  explicit frmCommentList(const CommentListRequest& request);
  const char* picture() const override;
  void opened() override;

  ui::ListView lvwComments{this, "lvwComments", {{"Komentaras", 60, ui::Align::Left, true}}};
  ui::Button cmdNew{this, "cmdNew", "Naujas įrašas"};
  ui::Button cmdCancel{this, "cmdCancel", "Atšaukti"};
  ui::Button cmdOK{this, "cmdOK", "Gerai", ui::Role::Primary};
  // Commands 100, 101 and 102.
  ui::MenuItem mnuNew{this, "mnuNew", "Naujas įrašas"};
  ui::MenuItem mnuEdit{this, "mnuEdit", "Įrašo redagavimas"};
  ui::MenuItem mnuDelete{this, "mnuDelete", "Panaikinti įrašą"};
  ui::Menu menuComments{{&mnuNew, &mnuEdit, nullptr, &mnuDelete}, {}};

 private:
  void fill(std::string_view wanted);
  void enableMenu();
  void choose();
  // Asks for the text and stores it under `id`, "0" for a new one.
  void write(const std::string& id, const std::string& title, const std::string& text);
  void remove();

  CommentListRequest request_;
};

}  // namespace tolvex
