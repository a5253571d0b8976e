-- Debts chosen for a payment: a buyer pays a part in litas, a dollar debt to a supplier is paid in
-- litas at another rate, and the choice is given up.

local function entry(debit, credit, sum, side, firm, currency)
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdNewEntry"
  enter("cmbAccountD", debit)
  enter("cmbAccountC", credit)
  if currency then currency() end
  enter("txtSuma", sum)
  click("cmdAddressee" .. side)
  choose("cmbKind", "Įmonės")
  double_click("lvwObjects", firm)
  click "cmdWrite"
  expect(count "lvwBRRecords", 1)
end

local function choose_debts(item)
  click "cmdTools"
  pick(item)
  expect_screen "frmBROperSelect"
  expect(title(), "Operacijų pasirinkimas")
end

local function open_debts(account, firm, direction)
  return books.call("GetDebts1", "'0','" .. account .. "','2004.03.31','" .. firm .. "'," .. direction).value
end

test("a buyer pays a part of what he owes", function()
  entry("2711", "240", "500", "C", "UAB Pirkėjas")
  choose_debts "Priimti skolų apmokėjimą"
  expect(text "cmbAcc", "240 Pirkėjų skolos")
  expect(enabled "cmbAcc", false)
  expect(text "txtAddr", "UAB Pirkėjas")
  expect(count "lvwBROper", 1)
  expect(row("lvwBROper", 1)["Suma, Lt"], "2\u{a0}360,00")
  expect(row("lvwBROper", 1)["Apm., Lt"], "500,00")
  uncheck("lvwBROper", 1)
  expect(enabled "cmdOK", false)
  click "cmdCancel"
  expect(count "lvwBRRecords", 1, "given up")

  choose_debts "Priimti skolų apmokėjimą"
  click "cmdOK"
  expect_screen "frmBROper"
  expect(message(), nil)
  expect(count "lvwBRRecords", 1)
  expect(row("lvwBRRecords", 1).mark, "good")
  expect(row("lvwBRRecords", 1)["Nuorodos"], "2004.01.15 S-0001 Prekės UAB Pirkėjas")
  expect(row("lvwBRRecords", 1).tag, "DO00001003#UAB Pirkėjas#CO00001003#UAB Pirkėjas")
  click "cmdWrite"
  expect(message(), nil)
  expect_books [[
    2711 240 500,00
  ]]
  close()
  local debts = open_debts("240", "O00001003", 1)
  expect(#debts, 1, "the payment is no debt of its own")
  expect(debts[1].LikutisLt, 860)
end)

test("a debt in dollars is paid in litas", function()
  entry("204", "450", "275", "C", "UAB Tiekėjas", function()
    choose("cmbCurrC", "USD")
    expect_message("0,0000 -> 2,7500\r\nPakeisti valiutos kursą ?", "yes")
    enter("txtSumCurrC", "100")
  end)
  click "cmdWrite"
  expect(message(), nil)
  close()

  entry("450", "2711", "270", "D", "UAB Tiekėjas")
  choose_debts "Apmokėti skolas"
  expect(text "txtRateDate", "2004.03.01")
  expect(row("lvwBROper", 1)["Kursas"], "2,7000")
  expect(row("lvwBROper", 1)["Kurso įtaka"], "5,00")
  expect(row("lvwBROper", 1)["Balansas, Lt"], " ")
  click "cmdOK"
  expect(message(), nil)
  expect(count "lvwBRRecords", 2)
  expect(row("lvwBRRecords", 1).tag, "DO00001002#UAB Tiekėjas", "a gain of that supplier")
  expect(row("lvwBRRecords", 2).tag, "DO00001002#UAB Tiekėjas#CO00001002#UAB Tiekėjas")
  click "cmdWrite"
  expect(message(), nil)
  expect_books [[
    204 450 275,00 100,00 USD
    450 536 5,00 0,00 USD
    450 2711 270,00 100,00 USD
  ]]
  close()
  expect(#open_debts("450", "O00001002", -1), 0, "both rests are closed")
  expect(#open_debts("450", "O00001002", 1), 0)
end)

test("rates, documents by number and what cannot be asked", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdTools"
  pick "Apmokėti skolas"
  expect_message("Pirmiausia pažymėkite įrašą!", "ok")
  close()

  entry("2711", "240", "100", "C", "UAB Pirkėjas")
  choose_debts "Priimti skolų apmokėjimą"
  click "cmdAddr"
  pick "Dokumento paieška"
  expect_screen "frmInput"
  enter("txtInput", "S-0001")
  click "cmdOk"
  expect(text "txtAddr", "UAB Pirkėjas")
  check "chkByFirmChildrens"
  click "cmdGo"
  expect(row("lvwBROper", 1)["Balansas, Lt"], "760,00")
  choose "optTradeDocOpers"
  click "cmdGo"
  expect(count "lvwBROper", 0, "no trade")
  click "cmdCancel"
  close()
  answer "yes"
  expect_clean()
end)
