-- Administration: users, roles and their rights. Passwords and locked logins: login.lua.

local function new(kind, entry)
  select("tvwLayout", kind)
  right_click "lvwObjects"
  pick(entry)
end

test("an administrator makes a role and ticks its rights", function()
  new("Rolės ir teisės", "Nauja rolė")
  expect_screen "frmRole"
  click "cmdWrite"
  expect_message("Nenurodytas rolės pavadinimas!", "ok")
  enter("txtName", "Kasininkas")
  select("lvwRights", "CBookLayout")
  expect(enabled "chkOwn", false, "no group: nothing to inherit")
  check "chkView"
  select("lvwRights", "CBROperRights")
  check "chkCreate"
  expect(checked "chkView", true, "who may create may see")
  expect(checked "chkEdit", false)
  local purchases = row("lvwRights", find_row("lvwRights", { ["Kūrimas"] = "✓", ["Peržiūra"] = "✓" }))
  expect(purchases["Naikinimas"], "–")
  select("lvwRights", "CBROperRights2")
  expect(enabled "chkView", false, "a group follows the bare right")
  expect(checked "chkCreate", true)
  check "chkOwn"
  uncheck "chkCreate"
  select("lvwRights", "CBROperRights")
  uncheck "chkView"
  expect(checked "chkCreate", false, "nothing can be done with what is not seen")
  check "chkCreate"
  select("lvwRights", "CAccountPlanRights")
  check "chkView"
  expect(checked "chkDelete", true, "one level: all or nothing")
  uncheck "chkAdmin"
  expect(checked "chkView", false)
  click "cmdWrite"
  expect(title(), "Kasininkas")
  expect(checked "chkView", false)
  select("lvwRights", "CBROperRights2")
  expect(checked "chkOwn", true)
  expect(checked "chkCreate", false)
  expect(checked "chkView", true)
  close()
  select("tvwLayout", "Rolės ir teisės")
  expect(row("lvwObjects", find_row("lvwObjects", { ["Pavadinimas"] = "Kasininkas" }))["Vartotojų"],
         "0")
end)

test("the module's line ticks all below; another role's rights are taken over", function()
  new("Rolės ir teisės", "Nauja rolė")
  enter("txtName", "Tikrintojas")
  select("lvwRights", "L02020011")
  check "chkView"
  select("lvwRights", "O0200502")
  expect(checked "chkView", true)
  select("lvwRights", "CBROperRights4")
  expect(checked "chkView", true, "inherited")
  expect(checked "chkOwn", false)
  click "cmdLike"
  expect_screen "frmPicker"
  double_click("lvwObjects", "Kasininkas")
  select("lvwRights", "O0200502")
  expect(checked "chkView", false)
  select("lvwRights", "CBROperRights")
  expect(checked "chkCreate", true)
  click "cmdWrite"
  close()
end)

test("a user is made, and refused what would confuse", function()
  new("Vartotojai", "Naujas vartotojas")
  expect_screen "frmUser"
  click "cmdWrite"
  expect_message("Nenurodytas prisijungimo vardas!", "ok")
  enter("txtLogin", "rasa")
  enter("txtName", "Rasa Rasaitė")
  enter("txtUserPref", "RR")
  click "cmdWrite"
  expect_message("Nenurodyta vartotojo rolė!", "ok")
  choose("cmbRoleID", "Kasininkas")
  uncheck "chkMustChange"
  enter("txtPassword", "trumpas")
  enter("txtAgain", "trumpa")
  click "cmdWrite"
  expect_message("Pakartotas slaptažodis nesutampa su nauju!", "ok")
  enter("txtAgain", "trumpas")
  click "cmdWrite"
  expect_message("Slaptažodis per trumpas: reikia bent 8 ženklų!\r\n\r\nĮrašymas neatliktas !", "ok")
  expect(text "txtPassword", "trumpas", "what was typed stays")
  enter("txtPassword", "")
  enter("txtAgain", "")
  click "cmdWrite"
  expect(title(), "Rasa Rasaitė")
  expect(caption "lblState", "Slaptažodžio nėra: prisijungiama vien vardu.")
  close()

  new("Vartotojai", "Naujas vartotojas")
  enter("txtLogin", "RASA")
  enter("txtName", "Kita Rasa")
  choose("cmbRoleID", "Buhalteris")
  click "cmdWrite"
  expect_message("Toks prisijungimo vardas jau yra: RASA\r\n\r\nĮrašymas neatliktas !", "ok")
  close()
  answer "yes"
end)

test("the last administrator stays", function()
  select("tvwLayout", "Vartotojai")
  double_click("lvwObjects", "admin")
  uncheck "chkActive"
  click "cmdWrite"
  expect_message("Turi likti bent vienas neužblokuotas vartotojas, galintis administruoti!" ..
                 "\r\n\r\nĮrašymas neatliktas !", "ok")
  close()
  answer "yes"
  select("tvwLayout", "Rolės ir teisės")
  select("lvwObjects", "Administratorius")
  delete_key "lvwObjects"
  answer "yes"
  expect_message("Rolė priskirta vartotojui: admin", "ok")
end)

test("the restricted user sees and does what his role lets him", function()
  login()
  enter("txtUser", "rasa")
  click "cmdOk"
  expect_screen "frmPassword"
  click "cmdCancel"
  expect(has(items "tvwLayout", "Administravimas"), false)
  expect(has(items "tvwLayout", "Finansinių operacijų apskaita"), true)
  expect(has(items "tvwLayout", "Įmonės"), false)

  open "O02015001"
  expect_screen "frmBROper"
  expect(enabled "cmdWrite", false, "he may not change")
  close()
  local operation = object "O02015001"
  operation:set("Comment", "perrašyta")
  expect(operation:save().code, 1203)
  local closed = object "O0201500"
  closed:set("DateD", "2004.03.31")
  closed:set("Number", "R-1")
  closed:set("BROperGroupID", 2)
  expect(closed:save().code, 1203, "a group that was closed to him")
  expect(object "O00001001", nil, "nor may he read a firm")
  expect(books.call("GetRights", "'CUsers'").value[1].View, 0)
  expect(books.call("DO0002200_SaveDayRate", "'USD','2004.03.31',2.9").code, 1203)
end)

test("the protocol of administration tells it all", function()
  login()
  enter("txtUser", "admin")
  click "cmdOk"
  click "cmdCancel"
  select("tvwLayout", "Administravimo protokolas")
  find_row("lvwObjects", { ["Veiksmas"] = "Sukurta", ["Kam, ką"] = "rasa" })
  local made = find_row("lvwObjects", { ["Veiksmas"] = "Pakeistos teisės", ["Kam, ką"] = "Kasininkas" })
  double_click("lvwObjects", made)
  expect_screen "frmAdminLog"
  expect_part(text "txtDetail", "(CBROperRights2): paveldima -> P----")
  expect(visible "cmdWrite", false)
  close()
  right_click "lvwObjects"
  expect(has(menu(), "Panaikinti"), false)
  expect_clean()
end)
