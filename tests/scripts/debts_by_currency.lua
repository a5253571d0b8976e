-- Debts of one currency paid in another: litas for dollars, euros for dollars, dollars for litas.

local firm = "O00001003"

local function keep()
  expect(message(), nil)
  click "cmdWrite"
  expect(message(), nil)
  close()
end

-- A new operation of one entry, its credit side as `money` types it.
local function entry(debit, credit, side, money)
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdNewEntry"
  enter("cmbAccountD", debit)
  enter("cmbAccountC", credit)
  money()
  click("cmdAddressee" .. side)
  choose("cmbKind", "Įmonės")
  double_click("lvwObjects", "UAB Pirkėjas")
  click "cmdWrite"
end

local function litas(sum)
  return function() enter("txtSuma", sum) end
end

local function currency(code, rate, sum)
  return function()
    choose("cmbCurrC", code)
    expect_message("0,0000 -> " .. rate .. "\r\nPakeisti valiutos kursą ?", "yes")
    enter("txtSumCurrC", sum)
  end
end

local function owed(money)
  entry("204", "450", "C", money)
  keep()
end

local function pay(account, money)
  entry("450", account, "D", money)
  click "cmdTools"
  pick "Apmokėti skolas"
end

local function expect_paid()
  click "cmdOK"
  keep()
  for _, direction in ipairs { "1", "-1" } do
    local rows = books.call("DO0201500_GetDebts1", "'0','450','2004.03.31','" .. firm .. "'," .. direction).value
    expect(#rows, 0, "open on side " .. direction)
  end
end

test("euros pay dollars: the rate of the euros gives way to the cent", function()
  owed(currency("USD", "2,7500", "100"))
  pay("2712", currency("EUR", "3,4528", "78,20"))
  expect(row("lvwBROper", 1)["Apm. valiuta"], "100,00")
  expect(row("lvwBROper", 1)["Kurso įtaka"], "5,00", "the dollar stood at 2,70 on the first")
  expect_paid()
  expect_books [[
    204 450 275,00 100,00 USD
    450 536 5,00 0,00 USD
    450 2712 270,00 100,00 USD 78,20 EUR
    2712 536 0,01 0,00 EUR
  ]]
  expect_clean()
end)

test("dollars pay litas: a cent that no dollars come to is a difference", function()
  owed(litas "100")
  pay("2713", currency("USD", "2,7500", "36,37"))
  expect(row("lvwBROper", 1)["Apm., Lt"], "99,99")
  expect(row("lvwBROper", 1)["Kurso įtaka"], "0,01")
  expect(caption "lblTotals", "Pažymėta: 1     Apmokama: 99,99 Lt (36,36 USD)     Lieka: 0,01 USD")
  expect_paid()
  expect_books [[
    204 450 100,00
    450 536 0,01
    450 2713 99,99 36,36 USD
  ]]
  expect_clean()
end)
