-- Random debts in three currencies, covered in a part at one rate and wholly at another, each time
-- in a currency of its own: nothing of them may stay open, what they changed in worth stands on the
-- accounts of gains and losses, and the books add up.

local firm = "O00001003"
local random = math.random
math.randomseed(20040331)

local function cents(limit) return random(1, limit * 100) / 100 end

local function add(operation, debit, credit, sum, sign, code, rate)
  local side = debit == "450" and 1 or -1
  local made = operation:methods("AddBR",
    { debit, credit, sum, { side, firm, "UAB Pirkėjas" }, sign or 0, code or "", rate or 0 })
  expect(made.code, 0, made.text)
end

local function document(day, fill)
  local operation = object "O0201500"
  operation:set("DateD", day)
  operation:set("BROperGroupID", 2)
  fill(operation)
  expect(operation:save().code, 0)
end

local function open_debts(day)
  return #books.call("DO0201500_GetDebts1", "'0','450','" .. day .. "','" .. firm .. "',-1").value
end

local function cover(day, part, money)
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdTools"
  pick "Skolų dengimas"
  date("dtpDate", day)
  enter("cmbAccC", "450")
  choose("optSuppliers", "Skolų tiekėjams dengimas")
  click "cmdGo"
  choose("cmbAddr", "UAB Pirkėjas")
  if money and money ~= "Lt" then
    click "cmdCurrC"
    pick(money)
  end
  if part then enter("txtSumC", tostring(part)) end
  click "optAllC"
  click "optAllD"
  click "cmdOK"
  expect(message(), nil)
  click "cmdExit"
  click "cmdWrite"
  expect(message(), nil)
  close()
  local saved = books.saved()
  for _, entry in ipairs(books.entries(saved[#saved])) do
    local kind = entry.debit .. "-" .. entry.credit
    expect(kind == "450-450" or kind == "450-536" or kind == "636-450", true, kind)
  end
end

test("covered debts leave nothing at any rates", function()
  for round = 1, 4 do
    document("2004.01.20", function(operation)
      for _ = 1, random(1, 3) do
        local code = ({ "USD", "EUR", "" })[random(3)]
        if code == "" then
          add(operation, "204", "450", cents(900))
        else
          add(operation, "204", "450", cents(900), -1, code, random(20000, 40000) / 10000)
        end
      end
    end)
    document("2004.01.25", function(operation)
      add(operation, "450", "2713", cents(2000), 1, "USD", random(20000, 40000) / 10000)
      add(operation, "450", "2711", 40000)
    end)
    cover("2004.02.01", random(50, 700), ({ "Lt", "USD", "EUR" })[random(3)])
    if open_debts "2004.03.15" > 0 then
      cover("2004.03.15", nil, ({ "Lt", "USD", "EUR" })[random(3)])
    end
    expect(open_debts "2004.03.31", 0, "round " .. round)
  end
  expect_clean()
end)

test("an operation whose save failed can be covered once it is saved", function()
  local operation = object "O0201500"
  operation:set("DateD", "2004.01.20")
  operation:set("BROperGroupID", 2)
  add(operation, "204", "450", 10)
  fault(1, 1205, "Duomenų bazė užimta, bandykite dar kartą!")
  expect(operation:save().code, 1205)
  expect(operation:save().code, 0)
  cover "2004.03.20"
  expect(open_debts "2004.03.31", 0)
end)
