-- An invoice of 1000 dollars at 2,80, paid by 400 at 2,70 and by 600 at 2,75: what stands open at
-- each date, and where the differences go.

local firm = "O00001003"

-- A new operation of one entry with dollars on its credit, with the firm on the side of the debt.
local function entry(day, debit, credit, side, dollars, rate)
  open("O0201500", { group = "Bendrosios operacijos" })
  date("dtpDate", day)
  click "cmdNewEntry"
  enter("cmbAccountD", debit)
  enter("cmbAccountC", credit)
  choose("cmbCurrC", "USD")
  expect_message("0,0000 -> " .. rate .. "\r\nPakeisti valiutos kursą ?", "yes")
  enter("txtSumCurrC", dollars)
  click("cmdAddressee" .. side)
  choose("cmbKind", "Įmonės")
  double_click("lvwObjects", "UAB Pirkėjas")
  click "cmdWrite"
end

local function pay(day, dollars, rate)
  entry(day, "450", "2713", "D", dollars, rate)
  click "cmdTools"
  pick "Apmokėti skolas"
  expect_screen "frmBROperSelect"
  expect(text "txtCurrCode", "USD")
  expect(text "txtPaymentCurr", dollars .. ",00")
end

local function keep()
  click "cmdWrite"
  expect(message(), nil)
  close()
end

-- "1620 600": rests in litas and dollars on a side of 450, "" for nothing.
local function open_on(day, direction)
  local rows = books.call("DO0201500_GetDebts1", "'0','450','" .. day .. "','" .. firm .. "'," .. direction).value
  local rests = {}
  for i = 1, #rows do rests[i] = ("%g %g"):format(rows[i].LikutisLt, rows[i].LikutisCurr) end
  return table.concat(rests, "; ")
end

test("dollars are paid at two rates, each difference with its payment", function()
  entry("2004.01.10", "204", "450", "C", "1000", "2,8000")
  keep()
  pay("2004.02.10", "400", "2,7000")
  expect(row("lvwBROper", 1)["Balansas, Lt"], "1\u{a0}620,00")
  expect(row("lvwBROper", 1)["Balansas val."], "600,00")
  expect(row("lvwBROper", 1)["Kurso įtaka"], "100,00")
  click "cmdOK"
  keep()
  pay("2004.03.10", "600", "2,7500")
  expect(row("lvwBROper", 1)["Balansas, Lt"], " ")
  expect(row("lvwBROper", 1)["Kurso įtaka"], "-30,00")
  click "cmdOK"
  keep()
  expect_books [[
    204 450 2800,00 1000,00 USD
    450 536 100,00 0,00 USD
    450 2713 1080,00 400,00 USD 400,00 USD
    636 450 30,00 0,00 USD
    450 2713 1650,00 600,00 USD 600,00 USD
  ]]
  expect(open_on("2004.01.31", -1), "2800 1000")
  expect(open_on("2004.02.28", -1), "1620 600", "asked for a day gone by")
  expect(open_on("2004.03.31", -1) .. open_on("2004.03.31", 1), "")
  expect_clean()
end)
