#include "host/cards/user_cards.h"

#include "host/cards/card_form.h"
#include "host/cards/role_rights.h"
#include "host/objects/frm_password.h"

namespace tolvex {
namespace {

constexpr const char* kComponent = "CUsers";
constexpr const char* kOwnPassword = "O0000820";

// --- users

constexpr CardField kUserFields[] = {
    {.column = "Login",
     .caption = "Prisijungimo vardas",
     .chars = 24,
     .missing = "Nenurodytas prisijungimo vardas!"},
    {.column = "Name",
     .caption = "Vardas, pavardė",
     .chars = 40,
     .missing = "Nenurodytas vartotojo vardas!"},
    {.column = "UserPref", .caption = "Numerių priešdėlis", .chars = 8},
    {.column = "RoleID",
     .caption = "Rolė",
     .kind = CardField::Kind::Choice,
     .chars = 30,
     .kinds = "O0000830",
     .missing = "Nenurodyta vartotojo rolė!"},
    {.column = "EmployeeOIDR",
     .caption = "Darbuotojas",
     .kind = CardField::Kind::Reference,
     .chars = 40,
     .kinds = "O0001401"},
    {.column = "Active",
     .caption = "Gali prisijungti (neužblokuotas)",
     .kind = CardField::Kind::Check},
    {.column = "MustChange",
     .caption = "Prisijungdamas turi pasikeisti slaptažodį",
     .kind = CardField::Kind::Check},
};

// The password that an administrator gives, and the lock after wrong ones.
class UserPassword final : public CardPart {
 public:
  explicit UserPassword(CardForm& form)
      : txtPassword(&form, "txtPassword", "Naujas slaptažodis", 24),
        txtAgain(&form, "txtAgain", "Pakartoti", 24),
        lblState(&form, "lblState"),
        cmdUnlock(&form, "cmdUnlock", "Atrakinti"),
        form_(form) {
    for (ui::TextBox* box : {&txtPassword, &txtAgain}) {
      box->password = true;
      box->onChange = [this] { form_.touch(); };
    }
    cmdUnlock.onClick = [this] {
      form_.record()["Unlock"] = 1;
      form_.save();
    };
  }
  void shown() override {
    RowSet& user = form_.record();
    const std::string locked(user["LockedUntil"].Text());
    const bool has = user["HasPassword"].Number() != 0;
    for (ui::TextBox* box : {&txtPassword, &txtAgain}) {
      box->text = "";
      box->readOnly = form_.readOnly;
    }
    cmdUnlock.enabled = !form_.readOnly && !locked.empty();
    lblState.caption = !locked.empty() ? "Prisijungimas užrakintas iki " + locked
                       : has           ? "Slaptažodis nustatytas."
                                       : "Slaptažodžio nėra: prisijungiama vien vardu.";
    form_.SSCNew.enabled = form_.SSCNew.enabled() && form_.rights().admin != 0;
  }
  bool maySave() override {
    if (txtPassword.text() != txtAgain.text()) {
      warn(form_.host(), "Pakartotas slaptažodis nesutampa su nauju!");
      form_.lead(txtAgain);
      return false;
    }
    Field wish = form_.record()["Password"];
    if (wish.Text() != txtPassword.text()) wish.SetValue(txtPassword.text());
    return true;
  }

  ui::TextBox txtPassword, txtAgain;
  ui::Label lblState;
  ui::Button cmdUnlock;

 private:
  CardForm& form_;
};

const CardSpec& userCard() {
  static const CardSpec spec = {
      .kind = "O0000800",
      .form = "frmUser",
      .component = kComponent,
      .caption = "Vartotojas",
      .newCaption = "Naujas vartotojas",
      .fields = kUserFields,
      .picture = R"(
[]
  txtLogin | txtUserPref
  txtName>
  cmbRoleID
  txtEmployeeOIDR> cmdEmployeeOIDR
[]
  chkActive
  chkMustChange
  txtPassword | txtAgain
  lblState> cmdUnlock
)",
      .part = [](CardForm& form) { return std::make_unique<UserPassword>(form); }};
  return spec;
}

// --- roles

constexpr CardField kRoleFields[] = {{.column = "Name",
                                      .caption = "Pavadinimas",
                                      .chars = 40,
                                      .missing = "Nenurodytas rolės pavadinimas!"}};

const CardSpec& roleCard() {
  static const CardSpec spec = {
      .kind = "O0000830",
      .form = "frmRole",
      .component = kComponent,
      .caption = "Rolė",
      .newCaption = "Nauja rolė",
      .fields = kRoleFields,
      .picture = R"(
txtName | >> | cmdLike
lvwRights>
chkOwn | >> | chkView chkDelete chkEdit chkCreate chkAdmin
)",
      .part = [](CardForm& form) { return std::make_unique<RoleRights>(form); }};
  return spec;
}

// --- the protocol

constexpr CardField kLogFields[] = {
    {.column = "At", .caption = "Laikas", .chars = 20},
    {.column = "UserName", .caption = "Vartotojas", .chars = 40},
    {.column = "Act", .caption = "Veiksmas", .chars = 40},
    {.column = "Subject", .caption = "Kam, ką", .chars = 40},
    {.column = "Detail", .caption = "Aprašymas", .chars = 60, .lines = 12},
};

class LogEntry final : public CardPart {
 public:
  explicit LogEntry(CardForm& form) {
    for (ui::Button* button : {&form.SSCNew, &form.cmdWrite}) button->visible = false;
  }
};

const CardSpec& logCard() {
  static const CardSpec spec = {
      .kind = "O0000810",
      .form = "frmAdminLog",
      .component = kComponent,
      .caption = "Administravimo protokolo įrašas",
      .newCaption = "",
      .fields = kLogFields,
      .picture = "txtAt | txtUserName\ntxtAct | txtSubject\ntxtDetail>\n",
      .part = [](CardForm& form) { return std::make_unique<LogEntry>(form); }};
  return spec;
}

// --- the own password

std::shared_ptr<ui::Form> passwordForm(HostContext& host, std::shared_ptr<VXObjectUIO> object) {
  frmPassword::Request request;
  request.login = object->Fields()["Login"].Text();
  request.askOld = object->Fields()["HasPassword"].Number() != 0;
  request.change = [object](const std::string& old, const std::string& fresh) {
    RowSet& wish = *object->RsFields();
    wish["OldPassword"] = old;
    wish["NewPassword"] = fresh;
    return object->Save(nullptr, nullptr).Text;
  };
  return std::make_shared<frmPassword>(host, std::move(request));
}

// Administrators write, whatever else somebody may do with users; nobody writes the protocol.
Card administered(const CardSpec& spec, bool readOnly = false) {
  Card card = cardOf(spec);
  card.readOnly = readOnly;
  card.make = [&spec, readOnly](HostContext& host, std::shared_ptr<VXObjectUIO> object) {
    if (readOnly || host.rights().of(kComponent).admin == 0) object->Preview(true);
    return std::make_shared<CardForm>(host, spec, std::move(object));
  };
  return card;
}

}  // namespace

void addUserCards(CardSet& cards, std::string_view branch) {
  cards.add(branch, administered(userCard()));
  cards.add(branch, administered(roleCard()));
  cards.add(branch, administered(logCard(), true));
  Card own;
  own.kind = kOwnPassword;
  own.make = passwordForm;
  cards.add("", std::move(own));
}

}  // namespace tolvex
