-- Debts covered in a currency of the user's choice: debts in litas, in that currency and in another.

local firm = "O00001003"

-- An entry of the firm's account 450 in an operation of its own.
local function stored(day, debit, credit, sum, code, rate)
  local operation = object "O0201500"
  operation:set("DateD", day)
  operation:set("BROperGroupID", 2)
  local side = debit == "450" and 1 or -1
  local made = operation:methods("AddBR", { debit, credit, sum, { side, firm, "UAB Pirkėjas" },
                                            code and side or 0, code or "", rate or 0 })
  expect(made.code, 0, made.text)
  expect(operation:save().code, 0)
end

local function open_on(day, direction)
  local rows = books.call("DO0201500_GetDebts1",
    "'0','450','" .. day .. "','" .. firm .. "'," .. direction).value
  local text = {}
  for i = 1, #rows do
    text[i] = ("%g %g"):format(rows[i].LikutisLt, rows[i].LikutisCurr)
  end
  return table.concat(text, "; ")
end

local function cover(day)
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdTools"
  pick "Skolų dengimas"
  date("dtpDate", day)
  enter("cmbAccC", "450")
  choose("optSuppliers", "Skolų tiekėjams dengimas")
  click "cmdGo"
  choose("cmbAddr", "UAB Pirkėjas")
end

local function pay_in(side, code)
  click("cmdCurr" .. side)
  pick(code)
end

local function keep()
  click "cmdOK"
  expect(message(), nil)
  click "cmdExit"
  click "cmdWrite"
  expect(message(), nil)
  close()
end

test("a debt in litas paid in dollars gives a cent to the differences", function()
  stored("2004.02.10", "204", "450", 100)
  stored("2004.02.10", "450", "2711", 99.98)
  cover "2004.02.15"
  pay_in("C", "USD")
  expect(caption "lblCurrCodeC", "USD")
  click "optAllC"
  local paid = row("lvwBRPrimary", 1)
  expect(paid["Apm., Lt"], "99,98", "37,04 would be 100,01")
  expect(paid["Kurso įtaka"], "0,02")
  expect(paid["USD"], "37,03")
  expect(text "txtSumC", "37,03")
  click "optAllD"
  keep()
  expect_books [[
    204 450 100,00
    450 2711 99,98
    450 536 0,02
    450 450 99,98
  ]]
  expect(open_on("2004.03.31", -1) .. open_on("2004.03.31", 1), "")
  expect_clean()
end)

test("dollars are paid in dollars, then in euros", function()
  stored("2004.01.10", "204", "450", 1000, "USD", 2.8)
  stored("2004.02.01", "450", "2713", 300, "EUR", 3.4528)
  stored("2004.02.01", "450", "2711", 4000)
  cover "2004.02.10"
  pay_in("C", "USD")
  enter("txtSumC", "400")
  click "optAllC"
  expect(row("lvwBRPrimary", 1)["Apm., Lt"], "1\u{a0}080,00")
  pay_in("D", "USD")
  enter("txtSumD", "400")
  click "optAllD"
  expect(text "txtSumD", "400,00")
  expect(row("lvwBRSecondary", 1)["Apm. valiuta"], "300,00", "euros")
  expect(caption "lblStatus", "Liks nesudengta: 0,01 Lt", "euros and litas are rounded apart")
  keep()
  expect(open_on("2004.02.28", -1), "1620 600")
  expect(open_on("2004.02.28", 1), "3955.84 0")
  cover "2004.03.10"
  pay_in("C", "EUR")
  expect(text "txtSumC", "")
  click "optAllC"
  expect(text "txtSumC", "477,87")
  expect(row("lvwBRPrimary", 1)["Apm. valiuta"], "600,00")
  enter("txtSumD", "1650")
  click "optAllD"
  keep()
  expect(open_on("2004.03.31", -1), "")
  expect(open_on("2004.03.31", 1), "2305.84 0")
  expect_clean()
end)

test("a list that cannot be read again keeps its currency and ticks", function()
  stored("2004.03.20", "204", "450", 275)
  cover "2004.03.20"
  pay_in("C", "USD")
  click "optAllC"
  fault(1, 1205, "Duomenų bazė užimta, bandykite dar kartą!")
  click "cmdGo"
  expect_message("Duomenų bazė užimta, bandykite dar kartą!", "ok")
  expect(text "txtSumC", "100,00")
  click "optDropC"
  click "cmdGo"
  expect(row("lvwBRPrimary", 1)["USD"], " ")
  click "cmdExit"
  close()
end)

test("a rate that is missing is told once, and may be given", function()
  for _ = 1, 2 do stored("2004.01.05", "204", "450", 10, "USD", 2.8) end
  stored("2004.01.05", "450", "2711", 50)
  cover "2004.01.09"
  click "optAllC"
  expect_message("Nenurodytas USD kursas!", "ok")
  expect(message(), nil)
  pay_in("C", "USD")
  expect_screen "frmInput"
  click "cmdCancel"
  expect_message("Nenurodytas USD kursas !", "ok")
  expect(caption "lblCurrCodeC", "   ")
  pay_in("C", "USD")
  enter("txtInput", "2,9")
  click "cmdOk"
  click "optAllC"
  expect(text "txtSumC", "20,00")
  expect(row("lvwBRPrimary", 1)["Kurso įtaka"], "-1,00")
  click "cmdExit"
  close()
end)
