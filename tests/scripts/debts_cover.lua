-- Debts set off against each other: in litas in parts, in dollars at other rates, a buyer's debt
-- against a supplier's with its act.

local firm = "O00001003"

local function addressees(list)
  local triples = {}
  for _, one in ipairs(list or {}) do
    for _, value in ipairs { one[1], one[2], "UAB Pirkėjas" } do triples[#triples + 1] = value end
  end
  return triples
end

-- An operation of entries { debit, credit, sum, addressees, sign, code, rate }; its reference.
local function stored(day, number, entries)
  local operation = object "O0201500"
  operation:set("DateD", day)
  operation:set("Number", number)
  operation:set("Comment", "UAB")
  operation:set("BROperGroupID", 2)
  for _, e in ipairs(entries) do
    local made = operation:methods("AddBR",
      { e[1], e[2], e[3], addressees(e[4]), e[5] or 0, e[6] or "", e[7] or 0 })
    expect(made.code, 0, made.text)
  end
  expect(operation:save().code, 0)
  return operation:reference()
end

-- "680 0": rests in litas and in currency of what is open on 450 with the firm, "" for nothing.
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
  expect_screen "frmDebtsCover"
  date("dtpDate", day)
end

-- The debts of a supplier against what was paid to it ahead.
local function cover_supplier(day)
  cover(day)
  enter("cmbAccC", "450")
  choose("optSuppliers", "Skolų tiekėjams dengimas")
  expect(text "cmbAccD", "450 Skolos tiekėjams už prekes ir paslaugas")
  click "cmdGo"
  choose("cmbAddr", "UAB Pirkėjas")
end

local function keep()
  click "cmdOK"
  expect(message(), nil)
  expect(caption "cmdExit", "Užbaigti")
  expect(enabled "dtpDate", false)
  click "cmdExit"
  expect_screen "frmBROper"
  click "cmdWrite"
  expect(message(), nil)
end

test("a debt in litas is covered in two parts", function()
  stored("2004.01.10", "T-1", { { "204", "450", 1000, { { -1, firm } } },
                                { "2441", "450", 180, { { -1, firm } } } })
  stored("2004.02.05", "T-2", { { "450", "2711", 500, { { 1, firm } } } })
  stored("2004.03.01", "T-3", { { "450", "2711", 680, { { 1, firm } } } })
  cover_supplier "2004.02.05"
  expect(row("lvwBRPrimary", 1)["Likutis, Lt"], "1\u{a0}180,00")
  enter("txtSumC", "500")
  check("lvwBRPrimary", 1)
  check("lvwBRSecondary", 1)
  expect(row("lvwBRPrimary", 1)["Likutis, Lt"], "680,00")
  expect(row("lvwBRPrimary", 1)["Apm., Lt"], "500,00")
  expect(text "txtSumD", "500,00")
  keep()
  expect(text "txtComment", "Skolų dengimas - UAB Pirkėjas")
  expect(text "dtpDate", "2004.02.05")
  expect(open_on("2004.01.31", -1), "1180 0")
  expect(open_on("2004.02.28", -1), "680 0")
  close()
  cover_supplier "2004.03.01"
  click "optAllC"
  click "optAllD"
  keep()
  expect(open_on("2004.02.28", -1), "680 0", "asked for a day gone by")
  expect(open_on("2004.03.31", -1) .. open_on("2004.03.31", 1), "")
  close()
end)

test("dollars are covered at two other rates", function()
  stored("2004.01.10", "T-4", { { "204", "450", 1000, { { -1, firm } }, -1, "USD", 2.8 } })
  stored("2004.02.10", "T-5", { { "450", "2713", 400, { { 1, firm } }, 1, "USD", 2.7 } })
  stored("2004.03.10", "T-6", { { "450", "2713", 600, { { 1, firm } }, 1, "USD", 2.75 } })
  expect(open_on("2004.01.31", -1), "1180 0; 2800 1000", "of then")
  cover_supplier "2004.02.10"
  enter("txtSumC", "1080")
  check("lvwBRPrimary", "T-4 UAB")
  local owed = row("lvwBRPrimary", find_row("lvwBRPrimary", { Nr = "T-4 UAB" }))
  expect(owed["Apm. valiuta"], "400,00")
  expect(owed["Kurso įtaka"], "100,00")
  check("lvwBRSecondary", 1)
  click "optDateByCoveredOperations"
  click "cmdOK"
  expect_message("Parinkite dengimo datos nustatymą pagal operacijos datą.\r\n" ..
                 "Valiutos kurso keitimo įtaka nustatoma operacijos datai!", "ok")
  click "optDateByBROper"
  keep()
  expect_books [[
    204 450 2800,00 1000,00 USD
    450 2713 1080,00 400,00 USD
    450 2713 1650,00 600,00 USD
    450 536 100,00 0,00 USD
    450 450 1080,00 400,00 USD 400,00 USD
  ]]
  expect(open_on("2004.02.28", -1), "680 0; 1620 600")
  close()
  cover_supplier "2004.03.10"
  click "optAllC"
  click "optAllD"
  expect(row("lvwBRPrimary", 1)["Kurso įtaka"], "-30,00")
  keep()
  expect(open_on("2004.03.31", -1) .. open_on("2004.03.31", 1), "")
  close()
end)

test("a buyer's debt is set off against a supplier's, with its act", function()
  stored("2004.03.20", "T-9", { { "204", "450", 500, { { -1, firm } } } })
  cover "2004.03.31"
  click "cmdGo"
  expect_message("Neužduota sąskaita !", "ok")
  enter("cmbAccC", "450")
  enter("cmbAccD", "240")
  click "cmdGo"
  expect(table.concat(items "cmbAddr", ";"), "UAB Pirkėjas")
  click "cmdVariants"
  pick "Įsiminti variantą"
  expect(text "cmbVariants", "450 K - 240 D")
  choose("cmbAddr", "UAB Pirkėjas")
  click "optAllC"
  click "optAllD"
  expect(caption "lblStatus", "Liks nesudengta: 860,00 Lt")
  for _, side in ipairs { "C", "D" } do
    click("optDrop" .. side)
    enter("txtSum" .. side, "400")
    click("optAll" .. side)
  end
  expect(row("lvwBRSecondary", 1)["Likutis, Lt"], "960,00")
  click "cmdPrint"
  local act = report()
  for _, part in ipairs { "TARPUSAVIO SKOLŲ UŽSKAITYMO AKTAS", "Viso:", "400,00", "960,00" } do
    expect_part(act, part)
  end
  click "cmdOK"
  expect(message(), nil)
  expect(text "txtAddrC", "", "nobody is left")
  expect(table.concat(items "cmbAddr", ";"), "*** UAB Pirkėjas")
  choose("cmbAddr", "*** UAB Pirkėjas")
  click "optAllC"
  click "optAllD"
  click "cmdOK"
  expect_message("Toks variantas jau išsaugotas !", "ok")
  click "cmdExit"
  click "cmdWrite"
  expect(message(), nil)
  expect_books [[
    204 450 500,00
    450 240 400,00
  ]]
  expect(open_on("2004.03.31", -1), "100 0")
  close()
  expect_clean()
end)

test("a list that cannot be read is told and clears nothing", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdTools"
  pick "Skolų dengimas"
  enter("cmbAccC", "450")
  enter("cmbAccD", "240")
  click "cmdGo"
  expect(count "lvwBRSecondary", 1)
  fault(1, 1205, "Duomenų bazė užimta, bandykite dar kartą!")
  click "cmdGo"
  expect_message("Duomenų bazė užimta, bandykite dar kartą!", "ok")
  expect(count "lvwBRSecondary", 1)
  click "cmdExit"
  close()
end)
