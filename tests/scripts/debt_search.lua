-- The choice of debts: a document sought by a number that several have, a rate that is missing, a
-- rest of a small currency that litas cannot cover.

-- A new operation of one entry of 2004.01.12 with a number; `money` types its sum.
local function entry(number, debit, credit, money)
  open("O0201500", { group = "Bendrosios operacijos" })
  date("dtpDate", "2004.01.12")
  enter("txtNumber", number)
  click "cmdNewEntry"
  enter("cmbAccountD", debit)
  enter("cmbAccountC", credit)
  money()
end

local function litas(sum)
  return function() enter("txtSuma", sum) end
end

local function owed(number, firm, money)
  entry(number, "204", "450", money)
  click "cmdAddresseeC"
  choose("cmbKind", "Įmonės")
  double_click("lvwObjects", firm)
  click "cmdWrite"
  click "cmdWrite"
  expect(message(), nil)
  close()
end

local function line(number)
  return find_row("lvwBROper", { Informacija = number .. ", UAB Pirkėjas" })
end

test("one of several documents, a rate by hand, the whole rest of a currency", function()
  owed("N-7", "UAB Tiekėjas", litas "50")
  owed("N-7", "UAB Pirkėjas", litas "60")
  owed("N-8", "UAB Pirkėjas", function()
    choose("cmbCurrC", "USD")
    answer "no"
    enter("txtRateCurrC", "0,03")
    enter("txtSumCurrC", "11,4")
  end)
  entry("M-1", "450", "2711", litas "60,34")
  click "cmdWrite"
  click "cmdTools"
  pick "Apmokėti skolas"
  expect_screen "frmBROperSelect"
  click "cmdAddr"
  pick "Dokumento paieška"
  enter("txtInput", "N-7")
  click "cmdOk"
  expect_screen "frmBROperSelect_Find"
  expect(title(), "Pasirinkite įmonę")
  double_click("lvwFound", "UAB Pirkėjas")
  expect_screen "frmBROperSelect"
  expect(text "txtAddr", "UAB Pirkėjas")
  expect(current "lvwBROper", line "N-7")
  expect(row("lvwBROper", line "N-7")["Apm., Lt"], "60,00")

  check("lvwBROper", line "N-8")
  expect_message("Nenurodytas USD kursas!", "ok")
  right_click("lvwBROper", line "N-8")
  pick "USD kursų žinynas"
  expect_screen "frmBROperSelect_ChangeRate"
  expect(title(), "USD kursas")
  expect(text "txtRate", "")
  enter("txtRate", "0,03")
  click "cmdOK"
  expect(row("lvwBROper", line "N-8")["Apm. valiuta"], "11,33")
  expect(caption "lblTotals", "Litais nepadengta 0,07 USD (N-8): eilutės meniu „Padengti visą valiutos likutį“")
  right_click("lvwBROper", line "N-8")
  pick "Padengti visą valiutos likutį"
  expect(row("lvwBROper", line "N-8")["Apm. valiuta"], "11,40")
  click "cmdOK"
  expect(message(), nil)
  click "cmdWrite"
  expect(message(), nil)
  expect_books [[
    204 450 50,00
    204 450 60,00
    204 450 0,34 11,40 USD
    450 2711 60,00
    450 2711 0,34 11,40 USD
  ]]
  close()
  local rows = books.call("DO0201500_GetDebts1", "'0','450','2004.01.31','O00001003',-1").value
  expect(#rows, 0)
  expect_clean()
end)
