#include "host/store/schema_text.h"

namespace tolvex::store {
namespace {

// Kinds of the host, and what the books say of themselves.
constexpr const char* kHostKinds = R"sql(
CREATE TABLE store_meta (
  name VARCHAR(40) PRIMARY KEY, value VARCHAR(400) NOT NULL
);
CREATE TABLE firm (
  id @KEY@, parent_id INTEGER REFERENCES firm(id), group_flag SMALLINT NOT NULL DEFAULT 0,
  name VARCHAR(300) NOT NULL, code VARCHAR(30), vat_code VARCHAR(30), street VARCHAR(200),
  city VARCHAR(100), country VARCHAR(100), post_index VARCHAR(20), phone VARCHAR(60),
  fax VARCHAR(60), financier VARCHAR(200), cashier VARCHAR(200), director VARCHAR(200),
  director_title VARCHAR(100), own_firm SMALLINT NOT NULL DEFAULT 0,
  row_version INTEGER NOT NULL DEFAULT 1
);
CREATE UNIQUE INDEX firm_own ON firm(own_firm) WHERE own_firm = 1;
CREATE INDEX firm_code ON firm(code);
CREATE TABLE person (
  id @KEY@, parent_id INTEGER REFERENCES person(id), group_flag SMALLINT NOT NULL DEFAULT 0,
  name VARCHAR(100) NOT NULL, last_name VARCHAR(100), pers_code VARCHAR(30),
  vat_code VARCHAR(30), street VARCHAR(200), city VARCHAR(100), country VARCHAR(100),
  phone VARCHAR(60), row_version INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE employee (
  id @KEY@, parent_id INTEGER REFERENCES employee(id),
  group_flag SMALLINT NOT NULL DEFAULT 0, name VARCHAR(100) NOT NULL, last_name VARCHAR(100),
  title VARCHAR(100), pers_code VARCHAR(30), row_version INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE bank (
  id @KEY@, name VARCHAR(200) NOT NULL, code VARCHAR(20), swift VARCHAR(20),
  street VARCHAR(200), city VARCHAR(100), country VARCHAR(100),
  row_version INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE bank_account (
  id @KEY@, bank_id INTEGER NOT NULL REFERENCES bank(id), owner_ref VARCHAR(30) NOT NULL,
  account_number VARCHAR(40) NOT NULL, main_flag SMALLINT NOT NULL DEFAULT 0,
  im_name VARCHAR(200), im_code VARCHAR(20), im_street VARCHAR(200), im_city VARCHAR(100),
  im_country VARCHAR(100), im_swift VARCHAR(20), im_account VARCHAR(40),
  row_version INTEGER NOT NULL DEFAULT 1, UNIQUE (owner_ref, account_number)
);
CREATE INDEX bank_account_no ON bank_account(account_number);
CREATE TABLE currency (
  id @KEY@, code VARCHAR(3) NOT NULL UNIQUE, name VARCHAR(100) NOT NULL,
  base SMALLINT NOT NULL DEFAULT 0, fixed_rate DOUBLE PRECISION NOT NULL DEFAULT 0,
  one_curr VARCHAR(30), two_curr VARCHAR(30), many_curr VARCHAR(30), one_small VARCHAR(30),
  two_small VARCHAR(30), many_small VARCHAR(30), row_version INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE currency_rate (
  currency_id INTEGER NOT NULL REFERENCES currency(id), day INTEGER NOT NULL,
  rate DOUBLE PRECISION NOT NULL CHECK (rate > 0), user_id INTEGER,
  PRIMARY KEY (currency_id, day)
);
CREATE INDEX currency_rate_day ON currency_rate(day);
CREATE TABLE ref_object (
  kind VARCHAR(8) NOT NULL, id INTEGER NOT NULL, parent_id INTEGER,
  group_flag SMALLINT NOT NULL DEFAULT 0, code VARCHAR(100), name VARCHAR(300) NOT NULL,
  extra VARCHAR(500), row_version INTEGER NOT NULL DEFAULT 1, PRIMARY KEY (kind, id)
);
CREATE TABLE addressee_kind (
  foid VARCHAR(8) PRIMARY KEY, name VARCHAR(100) NOT NULL, sort_order INTEGER NOT NULL,
  enabled SMALLINT NOT NULL, role SMALLINT NOT NULL
);
CREATE TABLE vat_tariff (
  id @ID@, value INTEGER NOT NULL, sort_order INTEGER NOT NULL
);
)sql";

// Users, roles, rights, settings. Settings of user 0 are for all.
constexpr const char* kUsers = R"sql(
CREATE TABLE app_role (
  id @KEY@, name VARCHAR(100) NOT NULL UNIQUE
);
CREATE TABLE app_user (
  id @KEY@, login VARCHAR(60) NOT NULL UNIQUE, name VARCHAR(200) NOT NULL,
  user_pref VARCHAR(10) NOT NULL DEFAULT '',
  role_id INTEGER NOT NULL REFERENCES app_role(id),
  employee_id INTEGER REFERENCES employee(id), secret VARCHAR(200),
  active SMALLINT NOT NULL DEFAULT 1, row_version INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE right_component (
  component VARCHAR(60) PRIMARY KEY, parent VARCHAR(60), kind SMALLINT NOT NULL,
  caption VARCHAR(200) NOT NULL
);
CREATE TABLE right_grant (
  role_id INTEGER NOT NULL REFERENCES app_role(id) ON DELETE CASCADE,
  component VARCHAR(60) NOT NULL REFERENCES right_component(component) ON DELETE CASCADE,
  can_view SMALLINT NOT NULL, can_delete SMALLINT NOT NULL, can_edit SMALLINT NOT NULL,
  can_create SMALLINT NOT NULL, can_admin SMALLINT NOT NULL, PRIMARY KEY (role_id, component)
);
CREATE TABLE user_setting (
  user_id INTEGER NOT NULL, object_code VARCHAR(60) NOT NULL, name VARCHAR(100) NOT NULL,
  value TEXT NOT NULL, PRIMARY KEY (user_id, object_code, name)
);
)sql";

// The chart of accounts. plan: 0 working, 1 new, -1, -2 … former plans; -9 the account "0", id 0.
constexpr const char* kPlan = R"sql(
CREATE TABLE account_mark (
  id @ID@, code VARCHAR(20) NOT NULL UNIQUE, name VARCHAR(200) NOT NULL,
  sort_order INTEGER NOT NULL
);
CREATE TABLE account (
  id @KEY@, plan SMALLINT NOT NULL, parent_id INTEGER REFERENCES account(id),
  code VARCHAR(20) NOT NULL, name VARCHAR(300) NOT NULL, type VARCHAR(1) NOT NULL,
  group_flag SMALLINT NOT NULL DEFAULT 0, mark_id INTEGER REFERENCES account_mark(id),
  new_id INTEGER REFERENCES account(id), path VARCHAR(200) NOT NULL DEFAULT '',
  track_items SMALLINT NOT NULL DEFAULT 0, row_version INTEGER NOT NULL DEFAULT 1,
  UNIQUE (plan, code)
);
CREATE INDEX account_parent ON account(parent_id);
CREATE TABLE account_lock (
  id @ID@, account_id INTEGER NOT NULL UNIQUE REFERENCES account(id) ON DELETE CASCADE,
  day_high INTEGER, day_low INTEGER, user_id INTEGER NOT NULL,
  row_version INTEGER NOT NULL DEFAULT 1,
  CHECK (day_high IS NULL OR day_low IS NULL OR day_high <= day_low)
);
)sql";

// Templates (an account that is null stands for "*"), groups of operations, buckets of numbers.
constexpr const char* kTemplates = R"sql(
CREATE TABLE template (
  id @KEY@, parent_id INTEGER REFERENCES template(id),
  group_flag SMALLINT NOT NULL DEFAULT 0, name VARCHAR(200) NOT NULL, comment VARCHAR(1000),
  row_version INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE template_line (
  id @ID@, template_id INTEGER NOT NULL REFERENCES template(id) ON DELETE CASCADE,
  guid VARCHAR(40) NOT NULL, account_d INTEGER REFERENCES account(id),
  account_c INTEGER REFERENCES account(id), factor DOUBLE PRECISION NOT NULL DEFAULT 1,
  UNIQUE (template_id, guid)
);
CREATE TABLE template_addr (
  id @ID@, line_id INTEGER NOT NULL REFERENCES template_line(id) ON DELETE CASCADE,
  sign SMALLINT NOT NULL CHECK (sign IN (1,-1)), foid VARCHAR(8) NOT NULL, foidr VARCHAR(30)
);
CREATE INDEX template_addr_line ON template_addr(line_id);
CREATE TABLE oper_group (
  id @KEY@, parent_id INTEGER REFERENCES oper_group(id), name VARCHAR(200) NOT NULL,
  group_flag SMALLINT NOT NULL DEFAULT 0, form_oid VARCHAR(8) NOT NULL DEFAULT 'O0201500',
  parameters VARCHAR(2000) NOT NULL DEFAULT '', account_code VARCHAR(20) NOT NULL DEFAULT '',
  template_group_id INTEGER REFERENCES template(id),
  default_template_id INTEGER REFERENCES template(id),
  serija VARCHAR(20) NOT NULL DEFAULT '', serija_indication SMALLINT NOT NULL DEFAULT 0,
  an_mask VARCHAR(100) NOT NULL DEFAULT '', an_prefix VARCHAR(50) NOT NULL DEFAULT '',
  an_template VARCHAR(20) NOT NULL DEFAULT '', an_minimal INTEGER NOT NULL DEFAULT 0,
  an_group_by SMALLINT NOT NULL DEFAULT 1, an_cycle SMALLINT NOT NULL DEFAULT 3,
  an_day_from INTEGER, row_version INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE template_set (
  group_id INTEGER NOT NULL REFERENCES oper_group(id) ON DELETE CASCADE,
  mode VARCHAR(40) NOT NULL,
  template_id INTEGER NOT NULL REFERENCES template(id) ON DELETE CASCADE,
  PRIMARY KEY (group_id, mode, template_id)
);
CREATE TABLE an_bucket (
  id @ID@, bucket_key VARCHAR(120) NOT NULL UNIQUE
);
)sql";

// Operations: base data. A posting is one side of an entry; its columns from oper_id on are copies
// that make every sum one index away. entry_ref.role: 0 addressee, 1 operation of this store,
// 2 other document.
constexpr const char* kOperations = R"sql(
CREATE TABLE oper (
  id @KEY@, otype VARCHAR(8) NOT NULL, group_id INTEGER NOT NULL REFERENCES oper_group(id),
  doc_ref VARCHAR(30), client_ref VARCHAR(30),
  day INTEGER NOT NULL CHECK (day BETWEEN 19000101 AND 99991231),
  serija VARCHAR(20) NOT NULL DEFAULT '', number VARCHAR(500) NOT NULL DEFAULT '',
  comment VARCHAR(1000) NOT NULL DEFAULT '', parameters VARCHAR(6000) NOT NULL DEFAULT '',
  auto_number INTEGER NOT NULL DEFAULT 0, an_bucket_id INTEGER REFERENCES an_bucket(id),
  vat_register SMALLINT NOT NULL DEFAULT 0, lock_guid VARCHAR(40), created_by VARCHAR(30),
  created_by_name VARCHAR(200), created_at VARCHAR(19), changed_by VARCHAR(30),
  changed_by_name VARCHAR(200), changed_at VARCHAR(19),
  row_version INTEGER NOT NULL DEFAULT 1
);
CREATE UNIQUE INDEX oper_number_auto ON oper(an_bucket_id, auto_number) WHERE auto_number > 0;
CREATE INDEX oper_group_day ON oper(group_id, day);
CREATE INDEX oper_day ON oper(day);
CREATE INDEX oper_number ON oper(number);
CREATE INDEX oper_vat ON oper(vat_register, day) WHERE vat_register <> 0;
CREATE UNIQUE INDEX oper_doc_ref ON oper(doc_ref) WHERE doc_ref IS NOT NULL;
CREATE INDEX oper_client ON oper(client_ref, otype, day) WHERE client_ref IS NOT NULL;
CREATE TABLE entry (
  id @ID@, oper_id INTEGER NOT NULL REFERENCES oper(id) ON DELETE CASCADE,
  guid VARCHAR(40) NOT NULL, day INTEGER NOT NULL, sum_lt BIGINT NOT NULL CHECK (sum_lt > 0),
  info VARCHAR(1000), tag VARCHAR(100), trade_type SMALLINT NOT NULL DEFAULT 0,
  restoring_sign SMALLINT NOT NULL DEFAULT 1, vat_indication SMALLINT NOT NULL DEFAULT 0,
  vat_flag SMALLINT NOT NULL DEFAULT 0, vat_tariff INTEGER, fguid VARCHAR(40),
  template_line_id INTEGER REFERENCES template_line(id) ON DELETE SET NULL,
  UNIQUE (oper_id, guid)
);
CREATE INDEX entry_day ON entry(day);
CREATE INDEX entry_trade ON entry(trade_type, day) WHERE trade_type <> 0;
CREATE INDEX entry_template ON entry(template_line_id) WHERE template_line_id IS NOT NULL;
CREATE TABLE posting (
  entry_id INTEGER NOT NULL REFERENCES entry(id) ON DELETE CASCADE,
  sign SMALLINT NOT NULL CHECK (sign IN (1,-1)),
  account_id INTEGER NOT NULL REFERENCES account(id), cur VARCHAR(3) NOT NULL DEFAULT 'LTL',
  rate DOUBLE PRECISION NOT NULL DEFAULT 0, sum_cur BIGINT NOT NULL DEFAULT 0,
  oper_id INTEGER NOT NULL, day INTEGER NOT NULL, sum_lt BIGINT NOT NULL,
  corr_id INTEGER NOT NULL, dimset_id INTEGER NOT NULL DEFAULT 0, item_id INTEGER,
  PRIMARY KEY (entry_id, sign)
) @WR@;
CREATE INDEX posting_acc ON posting(account_id, day);
CREATE INDEX posting_item ON posting(item_id, account_id) WHERE item_id IS NOT NULL;
CREATE INDEX posting_dim ON posting(dimset_id, account_id, day) WHERE dimset_id <> 0;
CREATE INDEX posting_diff ON posting(account_id, corr_id, day) WHERE cur <> 'LTL' AND sum_cur = 0;
CREATE TABLE entry_ref (
  id @ID@, entry_id INTEGER NOT NULL REFERENCES entry(id) ON DELETE CASCADE,
  sign SMALLINT NOT NULL CHECK (sign IN (1,-1)), foidr VARCHAR(30) NOT NULL,
  kind VARCHAR(8) NOT NULL, role SMALLINT NOT NULL, points_to INTEGER REFERENCES oper(id),
  show_string VARCHAR(800) NOT NULL DEFAULT ''
);
CREATE INDEX entry_ref_entry ON entry_ref(entry_id);
CREATE INDEX entry_ref_points ON entry_ref(points_to) WHERE points_to IS NOT NULL;
CREATE INDEX entry_ref_other ON entry_ref(foidr) WHERE role = 2;
)sql";

// Operations: what is derived and can be made anew. turn_… keep a row for each month (200312) and
// each year (2003).
constexpr const char* kDerived = R"sql(
CREATE TABLE oper_doc (
  oper_id INTEGER PRIMARY KEY REFERENCES oper(id) ON DELETE CASCADE,
  otype VARCHAR(8) NOT NULL, day INTEGER NOT NULL, cur VARCHAR(3) NOT NULL,
  rate DOUBLE PRECISION NOT NULL, my_account_ref VARCHAR(30), my_bank_id INTEGER,
  client_ref VARCHAR(30), client_account_ref VARCHAR(30), internal_code VARCHAR(100),
  payment_code VARCHAR(100), priority SMALLINT NOT NULL DEFAULT 1, import_day INTEGER,
  import_key VARCHAR(100)
);
CREATE INDEX oper_doc_pay ON oper_doc(otype, day);
CREATE INDEX oper_doc_client ON oper_doc(client_ref, otype, day);
CREATE UNIQUE INDEX oper_doc_import
  ON oper_doc(my_account_ref, import_day, import_key) WHERE import_key IS NOT NULL;
CREATE INDEX oper_doc_import_day ON oper_doc(import_day) WHERE import_key IS NOT NULL;
CREATE TABLE dimset (
  id @ID@, ref_key VARCHAR(600) NOT NULL UNIQUE
);
CREATE TABLE dimset_ref (
  dimset_id INTEGER NOT NULL REFERENCES dimset(id) ON DELETE CASCADE,
  foidr VARCHAR(30) NOT NULL, kind VARCHAR(8) NOT NULL, PRIMARY KEY (dimset_id, foidr)
) @WR@;
CREATE INDEX dimset_ref_foidr ON dimset_ref(foidr, dimset_id);
CREATE TABLE open_item (
  account_id INTEGER NOT NULL REFERENCES account(id),
  item_id INTEGER NOT NULL REFERENCES oper(id) ON DELETE CASCADE, cur VARCHAR(3) NOT NULL,
  dimset_id INTEGER NOT NULL, rest_lt BIGINT NOT NULL, rest_cur BIGINT NOT NULL,
  full_lt BIGINT NOT NULL, full_cur BIGINT NOT NULL, first_day INTEGER NOT NULL,
  last_day INTEGER NOT NULL, head_entry_id INTEGER NOT NULL, is_open SMALLINT NOT NULL,
  PRIMARY KEY (account_id, item_id, cur, dimset_id)
) @WR@;
CREATE INDEX open_item_open ON open_item(account_id, dimset_id) WHERE is_open = 1;
CREATE INDEX open_item_dim ON open_item(dimset_id) WHERE is_open = 1;
CREATE INDEX open_item_last ON open_item(account_id, last_day);
CREATE TABLE turn_acc (
  account_id INTEGER NOT NULL REFERENCES account(id), period INTEGER NOT NULL,
  corr_id INTEGER NOT NULL, cur VARCHAR(3) NOT NULL, debit BIGINT NOT NULL,
  credit BIGINT NOT NULL, debit_cur BIGINT NOT NULL, credit_cur BIGINT NOT NULL,
  n INTEGER NOT NULL, PRIMARY KEY (account_id, period, corr_id, cur)
) @WR@;
CREATE TABLE turn_dim (
  account_id INTEGER NOT NULL REFERENCES account(id), period INTEGER NOT NULL,
  dimset_id INTEGER NOT NULL, corr_id INTEGER NOT NULL, cur VARCHAR(3) NOT NULL,
  debit BIGINT NOT NULL, credit BIGINT NOT NULL, debit_cur BIGINT NOT NULL,
  credit_cur BIGINT NOT NULL, n INTEGER NOT NULL,
  PRIMARY KEY (account_id, period, dimset_id, corr_id, cur)
) @WR@;
CREATE INDEX turn_dim_set ON turn_dim(dimset_id, account_id, period);
)sql";

// The protocol (no foreign key: it outlives the operation), comments, journals, payment templates.
// A pointer of a statement row may name a row that is gone: no foreign key.
constexpr const char* kRest = R"sql(
CREATE TABLE oper_log (
  id @ID@, oper_id INTEGER NOT NULL, oper_name VARCHAR(600) NOT NULL,
  action VARCHAR(1) NOT NULL, user_id INTEGER NOT NULL, user_name VARCHAR(200) NOT NULL,
  at VARCHAR(19) NOT NULL, save_key VARCHAR(36) NOT NULL, detail TEXT
);
CREATE INDEX oper_log_oper ON oper_log(oper_id, at);
CREATE UNIQUE INDEX oper_log_save ON oper_log(save_key);
CREATE TABLE comment_text (
  id @ID@, kind VARCHAR(8) NOT NULL, name VARCHAR(1000) NOT NULL
);
CREATE TABLE journal (
  id @KEY@, parent_id INTEGER REFERENCES journal(id), otype VARCHAR(8) NOT NULL,
  group_flag SMALLINT NOT NULL DEFAULT 0, name VARCHAR(200) NOT NULL,
  guid VARCHAR(40) NOT NULL, config_list TEXT NOT NULL, param_list TEXT NOT NULL,
  row_version INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE journal_row (
  id @ID@, journal_id INTEGER NOT NULL REFERENCES journal(id) ON DELETE CASCADE,
  guid VARCHAR(40) NOT NULL, sort_order INTEGER NOT NULL,
  current_number VARCHAR(20) NOT NULL DEFAULT '', row_caption VARCHAR(300) NOT NULL,
  parameter1 VARCHAR(500) NOT NULL DEFAULT '', parameter2 VARCHAR(500) NOT NULL DEFAULT '',
  parameter3 VARCHAR(1) NOT NULL DEFAULT '0', font_size INTEGER NOT NULL,
  font_italic SMALLINT NOT NULL DEFAULT 0, font_bold SMALLINT NOT NULL DEFAULT 0,
  alignment INTEGER NOT NULL DEFAULT 0, UNIQUE (journal_id, guid)
);
CREATE TABLE journal_row_pointer (
  id @ID@, row_id INTEGER NOT NULL REFERENCES journal_row(id) ON DELETE CASCADE,
  pointed_guid VARCHAR(40) NOT NULL, subtract SMALLINT NOT NULL DEFAULT 0
);
CREATE TABLE pay_template (
  id @KEY@, parent_id INTEGER REFERENCES pay_template(id),
  group_flag SMALLINT NOT NULL DEFAULT 0, name VARCHAR(200) NOT NULL,
  row_version INTEGER NOT NULL DEFAULT 1
);
CREATE TABLE pay_template_item (
  id @ID@, template_id INTEGER NOT NULL REFERENCES pay_template(id) ON DELETE CASCADE,
  days SMALLINT NOT NULL, percent SMALLINT NOT NULL CHECK (percent BETWEEN 1 AND 100)
);
CREATE TABLE bank_format (
  code VARCHAR(40) PRIMARY KEY, name VARCHAR(200) NOT NULL, extension VARCHAR(10) NOT NULL,
  win_dos SMALLINT NOT NULL, sort_order INTEGER NOT NULL
);
)sql";

// Rows without which the rules of the tables do not hold: the account of opening balances and the
// empty set of addressees.
constexpr const char* kFirstRows = R"sql(
INSERT INTO account (id, plan, code, name, type) VALUES (0, -9, '0', 'Pradiniai likučiai', 'D');
INSERT INTO dimset (id, ref_key) VALUES (0, '');
)sql";

// Locks of logins, versions of roles, the protocol of administration and the right to administer,
// which in books of schema 1 goes to those who administered the rest. New books hold no role yet:
// their seed brings the component.
constexpr const char* kAdministration = R"sql(
ALTER TABLE app_user ADD COLUMN failures INTEGER NOT NULL DEFAULT 0;
ALTER TABLE app_user ADD COLUMN locked_until VARCHAR(19) NOT NULL DEFAULT '';
ALTER TABLE app_user ADD COLUMN must_change SMALLINT NOT NULL DEFAULT 0;
ALTER TABLE app_role ADD COLUMN row_version INTEGER NOT NULL DEFAULT 1;
CREATE TABLE admin_log (
  id @ID@, at VARCHAR(19) NOT NULL, user_id INTEGER NOT NULL, user_name VARCHAR(200) NOT NULL,
  act VARCHAR(1) NOT NULL, subject VARCHAR(400) NOT NULL, detail TEXT NOT NULL
);
INSERT INTO right_component (component, parent, kind, caption)
  SELECT 'CUsers', '', 2, 'Vartotojai ir teisės' WHERE EXISTS (SELECT 1 FROM app_role);
INSERT INTO right_grant
  (role_id, component, can_view, can_delete, can_edit, can_create, can_admin)
  SELECT role_id, 'CUsers', 1, 1, 1, 1, 1 FROM right_grant
  WHERE component = 'CBookLayout' AND can_admin = 1;
)sql";

constexpr const char* kRecordLog = R"sql(
CREATE TABLE record_log (
  id @KEY@, kind VARCHAR(8) NOT NULL, record_id INTEGER NOT NULL, name VARCHAR(600) NOT NULL,
  act VARCHAR(1) NOT NULL, user_id INTEGER NOT NULL, user_name VARCHAR(200) NOT NULL,
  at VARCHAR(19) NOT NULL, detail TEXT NOT NULL
);
CREATE INDEX record_log_record ON record_log(kind, record_id, id);
)sql";

// Rate differences on accounts whose items are kept, apart by the way they were revalued: by totals
// a difference is an item of its own, by operations it belongs to the document's. Without this the
// search for the way that was never used would walk all differences of the other.
constexpr const char* kDifferences = R"sql(
CREATE INDEX posting_diff_total ON posting(account_id, corr_id, day, entry_id)
  WHERE cur <> 'LTL' AND sum_cur = 0 AND item_id = oper_id;
CREATE INDEX posting_diff_item ON posting(account_id, corr_id, day, entry_id)
  WHERE cur <> 'LTL' AND sum_cur = 0 AND item_id <> oper_id;
)sql";

}  // namespace

std::string administrationSchema() { return kAdministration; }
std::string recordLogSchema() { return kRecordLog; }
std::string differenceSchema() { return kDifferences; }

std::string schemaOne() {
  std::string all;
  for (const char* part :
       {kHostKinds, kUsers, kPlan, kTemplates, kOperations, kDerived, kRest, kFirstRows}) {
    all += part;
  }
  return all;
}

}  // namespace tolvex::store
