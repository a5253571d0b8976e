-- A prepayment against an invoice, a currency debt against several payments, and a cover of many
-- pairs of addressees in one operation.

local function stored(day, debit, credit, sum, firm, code, rate)
  local operation = object "O0201500"
  operation:set("DateD", day)
  operation:set("BROperGroupID", 2)
  local side = debit == "450" and 1 or -1
  local made = operation:methods("AddBR", { debit, credit, sum, { side, firm, "UAB" },
                                            code and side or 0, code or "", rate or 0 })
  expect(made.code, 0, made.text)
  expect(operation:save().code, 0)
  return operation:reference()
end

local function open_on(day, firm, direction)
  local rows = books.call("DO0201500_GetDebts1",
    "'0','450','" .. day .. "','" .. firm .. "'," .. direction).value
  local text = {}
  for i = 1, #rows do
    text[i] = ("%s %g %g"):format(rows[i].OIDR, rows[i].LikutisLt, rows[i].LikutisCurr)
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
end

local function keep()
  click "cmdExit"
  click "cmdWrite"
  expect(message(), nil)
  close()
end

test("a prepayment covers a part of an invoice", function()
  local firm = "O00001003"
  local prepaid = stored("2004.01.15", "450", "2711", 300, firm)
  local invoice = stored("2004.01.20", "204", "450", 500, firm)
  expect(open_on("2004.02.01", firm, 1), prepaid .. " 300 0")
  expect(open_on("2004.02.01", firm, -1), invoice .. " 500 0")
  cover "2004.02.01"
  click "cmdGo"
  choose("cmbAddr", "UAB Pirkėjas")
  click "optAllC"
  click "optAllD"
  expect(caption "lblStatus", "Liks nesudengta: 200,00 Lt")
  click "cmdOK"
  expect(message(), nil)
  -- The entry is not stored yet, and nothing offers again what it closes.
  choose("cmbAddr", "*** UAB Pirkėjas")
  expect(row("lvwBRPrimary", 1)["Likutis, Lt"], "200,00")
  expect(count "lvwBRSecondary", 0)
  local saved = #books.saved()
  keep()
  expect_books [[
    450 2711 300,00
    204 450 500,00
    450 450 300,00
  ]]
  expect(#books.saved(), saved + 1)
  local entry = books.entries(books.saved()[saved + 1])[1]
  local sides = table.concat(entry.addressees, ", ")
  expect(sides:find("D " .. invoice, 1, true) ~= nil, true, sides)
  expect(sides:find("C " .. prepaid, 1, true) ~= nil, true, sides)
  expect(open_on("2004.02.01", firm, -1), invoice .. " 200 0")
  expect(open_on("2004.02.01", firm, 1), "")
  expect_clean()
end)

test("parts of a currency debt take rates of nine decimals", function()
  local firm = "O00001002"
  stored("2004.03.01", "204", "450", 100, firm, "EUR", 3.4528)
  for _, sum in ipairs { 100, 100, 145.28 } do stored("2004.03.02", "450", "2711", sum, firm) end
  cover "2004.03.03"
  click "cmdGo"
  choose("cmbAddr", "UAB Tiekėjas")
  check("lvwBRPrimary", find_row("lvwBRPrimary", { ["Likutis valiuta"] = "100,00" }))
  click "optAllD"
  click "cmdOK"
  keep()
  local saved = books.saved()
  local rates = {}
  local entries = object(saved[#saved]):rows "BR"
  for i = 1, #entries do
    local side = entries[i].BRCurrency[1]
    rates[i] = ("%.9f %.2f"):format(side.RateCurr, side.SumCurr)
  end
  expect(table.concat(rates, "; "), "3.453038674 28.96; 3.453038674 28.96; 3.452471483 42.08")
  expect_clean()
end)

test("a cover that stopped in the middle goes on", function()
  local firm = "O00001003"
  cover "2004.03.10"
  click "cmdGo"
  expect(count "lvwBRSecondary", 0)
  click "cmdExit"
  close()
  stored("2004.03.01", "450", "2711", 120, firm)
  stored("2004.03.02", "450", "2711", 80, firm)
  cover "2004.03.10"
  click "cmdGo"
  choose("cmbAddr", "UAB Pirkėjas")
  click "optAllC"
  click "optAllD"
  fault(3, 1205, "Duomenų bazė užimta, bandykite dar kartą!")
  click "cmdOK"
  expect_message("Duomenų bazė užimta, bandykite dar kartą!", "ok")
  expect_message("Nepavyko perskaityti skolos adresatų !\r\n\r\n" ..
                 "Iki tol padaryti įrašai liko operacijoje.", "ok")
  expect(text "txtSumC", "80,00")
  expect(row("lvwBRSecondary", 1).checked, false, "it is posted")
  click "cmdOK"
  expect(message(), nil)
  click "cmdExit"
  expect(text "txtComment", "Skolų dengimas - UAB Pirkėjas")
  expect(count "lvwBRRecords", 2)
  click "cmdWrite"
  expect(message(), nil)
  close()
  expect(open_on("2004.03.31", firm, -1) .. open_on("2004.03.31", firm, 1), "")
  expect_clean()
end)

-- The addressee of one side, by its whole name.
local function addressee(side, name)
  click("cmdAddr" .. side)
  choose("cmbKind", "Įmonės")
  double_click("lvwObjects", name)
  expect(text("txtAddr" .. side), name)
end

test("pairs are covered once in either order and named while the comment has room", function()
  local name, firm = {}, {}
  for i, letter in ipairs { "A", "B" } do
    name[i] = letter .. ("ąčę"):rep(99) .. letter
    local made = object "O0000100"
    made:set("Name", name[i])
    expect(made:save().code, 0)
    firm[i] = made:reference()
  end
  stored("2004.03.01", "204", "450", 20, firm[1])
  stored("2004.03.01", "204", "450", 20, firm[2])
  stored("2004.03.01", "450", "2711", 20, firm[1])
  stored("2004.03.01", "450", "2711", 20, firm[2])
  cover "2004.03.05"
  local function save(one, other, answer)
    addressee("C", name[one])
    addressee("D", name[other])
    click "cmdGo"
    for _, side in ipairs { "C", "D" } do
      enter("txtSum" .. side, "10")
      click("optAll" .. side)
    end
    click "cmdOK"
    if answer then expect_message(answer, "ok") else expect(message(), nil) end
  end
  save(1, 2)
  save(2, 1, "Toks variantas jau išsaugotas !")
  save(1, 2, "Toks variantas jau išsaugotas !")
  save(1, 1)
  save(2, 2)
  click "cmdExit"
  expect(text "txtComment",
         "Skolų dengimas - " .. name[1] .. " - " .. name[2] .. ", " .. name[1],
         "a third pair would make it longer than 1000")
  expect(count "lvwBRRecords", 3)
  click "cmdWrite"
  expect(message(), nil)
  close()
  expect_clean()
end)
