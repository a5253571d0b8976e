// frmDebtsCover: debts set off against each other inside one operation, shown over its screen.
//
// Two lists: debts of one account and addressee, and open items that lie on the other side. What is
// ticked on both becomes entries of the operation; then the next addressee follows. A pair of
// addressees is covered once while the screen is open. Nothing is stored until the operation is.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "debts/cover_addressee_box.h"
#include "debts/cover_side_box.h"
#include "operations/operation_tools.h"
#include "operations/screen/rate_book.h"
#include "operations/screen/saved_variants.h"
#include "platform/form.h"

namespace tolvex {

class frmDebtsCover final : public ui::Form {
 public:
  explicit frmDebtsCover(const OperationToolRequest& request);

  const char* picture() const override;
  void opened() override;

  ui::ComboBox cmbVariants{this, "cmbVariants", "Variantas", 28};
  ui::Button cmdVariants{this, "cmdVariants", "▾", ui::Role::Small};
  ui::OptionButton optMutual{this, "optMutual", "Tarpusavio atsiskaitymas!", "use"};
  ui::OptionButton optSuppliers{this, "optSuppliers", "Skolų tiekėjams dengimas", "use"};
  ui::OptionButton optBuyers{this, "optBuyers", "Pirkėjų skolų dengimas", "use"};
  ui::DatePicker dtpDate{this, "dtpDate", "Data"};
  ui::OptionButton optDateByBROper{this, "optDateByBROper", "Operacijos data", "date"};
  ui::OptionButton optDateByCoveredOperations{this, "optDateByCoveredOperations",
                                              "Vėliausia sudengiamųjų operacijų data", "date"};
  CoverAddresseeBox addressees{this};
  ui::Button cmdGo{this, "cmdGo", "Užpildyti"};
  CoverSideBox primary{this, 'C', "lvwBRPrimary", "Dengiamos skolos"};
  CoverSideBox secondary{this, 'D', "lvwBRSecondary", "Kuo dengiama"};
  ui::Label lblStatus{this, "lblStatus"};
  ui::Button cmdPrint{this, "cmdPrint", "Spausdinti"};
  ui::Button cmdExit{this, "cmdExit", "Uždaryti", ui::Role::Quiet};
  ui::Button cmdOK{this, "cmdOK", "Išsaugoti", ui::Role::Primary};

  ui::MenuItem mnuAddVariant{this, "mnuAddVariant", "Įsiminti variantą"};
  ui::MenuItem mnuDeleteVariant{this, "mnuDeleteVariant", "Pašalinti variantą"};
  ui::Menu menuVariants{{&mnuAddVariant, &mnuDeleteVariant}, {}};
  ui::MenuItem mnuSum{this, "mnuSum", "Sumos įvedimas"};
  ui::MenuItem mnuExact{this, "mnuExact", "Padengti visą valiutos likutį"};
  ui::MenuItem mnuRates{this, "mnuRates", "Kurso įvedimas"};
  ui::Menu mnuInput{{&mnuSum, &mnuExact, &mnuRates}, {}};

 private:
  void wire();
  void wireSide(CoverSideBox& side, CoverSideBox& other);
  void loadRates();
  double rateOf(std::string_view code) const;
  void useChosen();
  // variants
  void showVariants();
  void chooseVariant();
  void addVariant();
  void deleteVariant();
  // addressees
  void kindChosen(const std::string& kind, const std::string& name);
  void readAddressees();
  void addresseeChosen();
  void pickAddressees(CoverSideBox& side);
  void nextAddressee();
  // lists
  bool accountsGiven();
  void go();
  void refill();
  void refill(CoverSideBox& side);
  void clearLists();
  void dateChanged();
  void refresh();
  CoverSideBox& clickedSide();
  void prepareMenu();
  void enterSum();
  void enterRate();
  bool askRate(const std::string& code);
  void chooseCurrency(CoverSideBox& side, const std::string& code);
  // result
  bool mayPost();
  void save();
  bool post();
  std::optional<Picked> partner() const;
  void printAct();
  void namePair();
  RowSet& header() const { return *operation_->RsFields(); }

  std::shared_ptr<VXObjectUIO> operation_;
  OperationLink& link_;
  SavedVariants variants_;
  ParamDictionary plan_;
  InfluenceAccounts accounts_;
  RateBook rates_;
  std::set<std::string> pairs_;  // pairs of addressees, in both orders
  std::set<std::string> named_;  // those that the comment names
  bool filled_ = false;          // the lists show what was asked for
};

}  // namespace tolvex
