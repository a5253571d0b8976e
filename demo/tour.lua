-- A walk through the program: login, tree, a new operation with an entry in litas and one in a
-- currency, saved, closed and opened again, and a save that is refused; a new account with a mark,
-- the plan on paper, a lock that refuses yesterday's entry, a firm, rates, rights; the books moved
-- to a small new plan and back again from the copy; a group with numbers and templates of its own,
-- an entry spread over a year, the log; dollars paid in two parts at two rates, a buyer's debt set
-- off against a supplier's, its act. Pictures and reports go to out/.

local function picture(name) shot("out/tour-" .. name .. ".png") end

test("the tour", function()
  login()
  picture "1-login"
  enter("txtUser", "admin")
  click "cmdOk"
  expect_screen "frmPassword"  -- offered once to a user without one
  click "cmdCancel"

  select("tvwLayout", "Sąskaitų planas")
  picture "2-plan"
  double_click("tvwLayout", "Finansinių operacijų apskaita")
  double_click("lvwObjects", "Pirkimai")
  picture "3-group"

  select("tvwLayout", "Bendrosios operacijos")
  click "cmdNew"
  expect_screen "frmBROper"
  enter("txtComment", "Prekės UAB Pirkėjas")
  picture "4-new-operation"

  click "cmdNewEntry"
  enter("cmbAccountD", "240")
  enter("cmbAccountC", "500")
  enter("txtSuma", "1000")
  click "cmdAddresseeD"
  choose("cmbKind", "Įmonės")
  enter("txtFind", "pirk")
  picture "5-picker"
  double_click("lvwObjects", "UAB Pirkėjas")
  picture "6-entry"
  click "cmdWrite"

  click "cmdNewEntry"
  enter("cmbAccountD", "240")
  enter("cmbAccountC", "501")
  choose("cmbCurrD", "EUR")
  if message() then answer "yes" end
  enter("txtSumCurrD", "100")
  leave()
  expect(text "txtSuma", "345,28")
  click "cmdAddresseeD"
  choose("cmbKind", "Įmonės")
  double_click("lvwObjects", "UAB Pirkėjas")
  picture "7-currency"
  click "cmdWrite"
  expect(count "lvwBRRecords", 2)
  picture "8-entries"

  click "cmdWrite"
  expect(message(), nil)
  picture "9-saved"
  local reference = books.saved()[1]
  expect_books [[
    240 500 1000,00
    240 501 345,28 100,00 EUR
  ]]
  close()

  restart()
  open(reference)
  expect(count "lvwBRRecords", 2)
  expect(text "txtComment", "Prekės UAB Pirkėjas")
  picture "10-reopened"

  double_click("lvwBRRecords", 2)
  enter("txtSuma", "345,29")
  picture "11-wrong-sum"
  click "cmdWrite"
  picture "12-refused"
  expect_message("Suma Lt neatitinka valiutos kurso!", "ok")
  click "cmdExit"
  if message() then answer "yes" end
  close()
  if message() then answer "yes" end
  expect_clean()
end)

test("the chart of accounts", function()
  select("tvwLayout", "Sąskaitų planas")
  right_click("lvwObjects", "Pinigai")
  pick "Nauja subsąskaita"
  enter("txtAccount", "279")
  enter("txtName", "Kortelių sąskaita")
  check("LVProperties", "Banko sąskaitos")
  picture "13-new-account"
  click "cmdEnter"
  expect(message(), nil)
  close()

  right_click("tvwLayout", "Sąskaitų planas")
  pick "Spausdinti"
  picture "14-plan-preview"
  save_report "out/tour-plan.pdf"
  save_report "out/tour-plan.xlsx"
end)

test("a lock", function()
  open "O02013000"
  double_click("lsvBRLock", "240")
  date("dtpAdmin", today())
  date("dtpUser", today())
  picture "15-lock-dates"
  click "cmdWrite"
  picture "16-locks"
  close()
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdNewEntry"
  enter("cmbAccountD", "240")
  enter("cmbAccountC", "500")
  enter("txtSuma", "50")
  click "cmdWrite"
  click "cmdWrite"
  picture "17-locked"
  answer "ok"
  expect(count "lvwBRRecords", 1, "what was typed stays")
  close()
  answer "yes"
end)

test("directories and rights", function()
  open "O00001003"
  picture "18-firm"
  close()
  select("tvwLayout", "Valiuta")
  double_click("lvwObjects", "USD")
  picture "19-currency"
  close()
  select("tvwLayout", "Rolės ir teisės")
  double_click("lvwObjects", "Buhalteris")
  picture "20-rights"
  close()
end)

-- A new plan of accounts of two digits, made below its classes by the object contract.
local function make_small_plan()
  local plan = books.call("DO0200400_GetAccountPlan").value
  local ids, made = {}, books.call("DO0200401_GetAccountPlan").value
  ids[made[1].Account] = made[1].ID
  local function node(number, name, kind, parent)
    if ids[number] then return end
    local new = object "O0200401"
    new:set("ParentID", parent or null)
    new:set("Account", number)
    new:set("Name", name)
    new:set("Type", kind)
    new:set("GroupFlag", parent and 0 or 1)
    expect(new:save().code, 0, number)
    ids[number] = object(new:reference()):get "ID"
  end
  for i = 1, #plan do
    local number = plan[i].Account
    if #number == 1 then node(number, plan[i].Name, plan[i].Type) end
  end
  for i = 1, #plan do
    local number = plan[i].Account
    if #number == 2 then node(number, plan[i].Name, plan[i].Type, ids[number:sub(1, 1)]) end
  end
end

test("the books move to a new plan and back again", function()
  select("tvwLayout", "Sąskaitų planas")
  right_click "tvwLayout"
  pick "Sąskaitų konvertavimas"
  expect_screen "frmAccountNewPlan"
  make_small_plan()
  for i = 1, count "lsvCovert" do
    if #row("lsvCovert", i)[1]:match("^%d+") == 1 then
      right_click("lsvCovert", i)
      pick "Parinkti sąskaitas automatiškai"
    end
  end
  expect(enabled "cmdConvert", true)
  picture "21-conversion"
  click "cmdConvert"
  while message() do answer(message().buttons == "ok" and "ok" or "yes") end
  expect_clean()
  picture "22-converted"
  expect(books.balances(today())["27"] ~= nil, true)
  click "cmdRestore"
  while message() do answer(message().buttons == "ok" and "ok" or "yes") end
  expect_clean()
  expect(books.balances(today())["2711"] ~= nil, true)
  picture "23-restored"
  close()
end)

test("a group, its documents, an entry spread over a year", function()
  right_click("tvwLayout", "Finansinių operacijų apskaita")
  pick "Naują operacijų grupė"
  enter("txtName", "Nuoma")
  choose("tabGroup", "numbering")
  check("lvwAutoNumber", "Auto-numeris")
  check("lvwAutoNumber", "Prefiksas")
  click "cmdUp"
  enter("txtPrefix", "N")
  enter("txtANTemplate", "0000")
  picture "24-group-numbers"
  choose("tabGroup", "templates")
  click "cmdTemplate"
  enter("txtFind", "pirkimai")
  click "cmdOk"
  right_click("trwTemplates", "Paslaugų pirkimas be PVM   (6123-450)")
  pick "Nustatyti pagrindiniu"
  picture "25-group-templates"
  click "cmdWrite"
  expect(message(), nil)
  close()

  for number = 1, 3 do
    open("O0201500", { group = "Nuoma" })
    expect(text "txtNumber", "N-000" .. number)
    double_click("lvwBRRecords", 1)
    enter("txtSuma", "1000")
    double_click("lvwAddressC", 1)
    double_click("lvwObjects", "UAB Tiekėjas")
    click "cmdWrite"
    enter("txtComment", "Patalpų nuoma")
    click "cmdWrite"
    expect(message(), nil)
    if number < 3 then close() end
  end
  right_click("lvwBRRecords", 1)
  pick "Išdėstyti pagal mėnesius"
  enter("txtMonthCount", "12")
  leave()
  picture "26-spreading"
  click "cmdOK"
  expect(count "lvwBRRecords", 12)
  click "cmdWrite"
  picture "27-spread"
  click "cmdTools"
  pick "Pakeitimai"
  picture "28-log"
  close()
  close()
  expect_clean()
end)

-- An operation of entries { debit, credit, sum, side of the buyer, sign, code, rate }, stored.
local function stored(day, number, entries)
  local operation = object "O0201500"
  operation:set("DateD", day)
  operation:set("Number", number)
  operation:set("BROperGroupID", 2)
  for _, e in ipairs(entries) do
    local made = operation:methods("AddBR",
      { e[1], e[2], e[3], { e[4], "O00001003", "UAB Pirkėjas" }, e[5] or 0, e[6] or "", e[7] or 0 })
    expect(made.code, 0, made.text)
  end
  expect(operation:save().code, 0)
end

local function cover(day, debts, counter)
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdTools"
  pick "Skolų dengimas"
  date("dtpDate", day)
  enter("cmbAccC", debts)
  enter("cmbAccD", counter)
  click "cmdGo"
  choose("cmbAddr", "UAB Pirkėjas")
end

local function keep()
  click "cmdOK"
  expect(message(), nil)
  click "cmdExit"
  click "cmdWrite"
  expect(message(), nil)
end

test("debts are covered", function()
  -- The lock on 240 of this walk would refuse its entries.
  open "O02013000"
  double_click("lsvBRLock", "240")
  choose "optNotLock"
  click "cmdWrite"
  close()

  stored("2004.01.10", "D-1", { { "204", "450", 1000, -1, -1, "USD", 2.8 } })
  stored("2004.02.10", "D-2", { { "450", "2713", 400, 1, 1, "USD", 2.7 } })
  stored("2004.03.10", "D-3", { { "450", "2713", 600, 1, 1, "USD", 2.75 } })
  cover("2004.02.10", "450", "450")
  enter("txtSumC", "1080")
  check("lvwBRPrimary", find_row("lvwBRPrimary", { ["Data"] = "2004.01.10" }))
  check("lvwBRSecondary", 1)
  picture "29-dollars-in-part"
  keep()
  picture "30-difference"
  close()
  cover("2004.03.10", "450", "450")
  click "optAllC"
  click "optAllD"
  picture "31-dollars-at-another-rate"
  keep()
  close()

  stored("2004.03.20", "D-4", { { "204", "450", 500, -1 } })
  cover(today(), "450", "240")
  enter("txtSumC", "500")
  enter("txtSumD", "500")
  click "optAllC"
  click "optAllD"
  picture "32-set-off"
  click "cmdPrint"
  picture "33-act"
  save_report "out/tour-act.pdf"
  close_report()
  keep()
  close()
  expect_clean()
end)
