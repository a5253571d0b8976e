-- The books move to a new chart of accounts, and back again from the copy made before.

local ids = {}

-- A node of the new plan through the object contract, below the node of `parent`.
local function newNode(number, name, kind, parent)
  local node = object "O0200401"
  node:set("ParentID", parent and ids[parent] or null)
  node:set("Account", number)
  node:set("Name", name)
  node:set("Type", kind)
  node:set("GroupFlag", parent and 0 or 1)
  expect(node:save().code, 0, number)
  ids[number] = object(node:reference()):get "ID"
  return node:reference()
end

-- What each account becomes; every other one keeps its number.
local joined = { ["2711"] = "271", ["2712"] = "271", ["2713"] = "271", ["443"] = "450" }
local function becomes(account)
  return account == "0" and "0" or joined[account] or account
end

local before, references = {}, {}

test("the new plan is made of the accounts in use", function()
  command("tvwLayout", "Sąskaitų planas", "Sąskaitų konvertavimas")
  expect(row("lsvCovert", 1)[1], "1 Ilgalaikis turtas")
  expect(row("lsvCovert", 1).bold, true)
  expect(enabled "cmdConvert", false, "no account has a counterpart")
  expect(enabled "cmdRestore", false, "there is no copy")
  expect(visible "lblMissing", true)
  local begun = books.call("DO0200401_GetAccountPlan").value
  expect(#begun, 1, "begun with the first class")
  ids["1"] = begun[1].ID
  for number = 2, 6 do newNode(tostring(number), "Klasė " .. number, "D") end
  local plan = books.call("DO0200400_GetAccountPlan").value
  for i = 1, #plan do
    local node = plan[i]
    local number = becomes(node.Account)
    if node.GroupFlag == 0 and not ids[number] then
      references[number] = newNode(number, node.Name, node.Type, number:sub(1, 1))
    end
  end
end)

test("counterparts by drop, by the keyboard and all at once", function()
  command("tvwLayout", "Sąskaitų planas", "Sąskaitų konvertavimas")
  select("lsvCovert", find_row("lsvCovert", { ["Sąskaitų planas"] = "2711 Atsiskaitomoji sąskaita litais" }))
  drop("lsvCovert", references["271"])
  expect(row("lsvCovert")["Naujas sąskaitos"], "271 Atsiskaitomoji sąskaita litais")

  double_click("lsvCovert", find_row("lsvCovert", { ["Sąskaitų planas"] = "2713 Valiutinė sąskaita USD" }))
  expect_screen "frmPicker"
  expect(title(), "Pasirinkite atitinkamą sąskaitą")
  enter("txtFind", "271")
  click "cmdOk"
  expect(row("lsvCovert")["Naujas sąskaitos"], "271 Atsiskaitomoji sąskaita litais")

  local first = find_row("lsvCovert", { ["Sąskaitų planas"] = "2 Trumpalaikis turtas" })
  select("lsvCovert", first)
  command("lsvCovert", first, "Parinkti sąskaitas automatiškai")
  expect(current "lsvCovert", first, "the row stays")
  expect(enabled "cmdConvert", false, "the other classes lack theirs")
  for _, class in ipairs { "1 Ilgalaikis turtas", "3 Nuosavas kapitalas",
                           "4 Mokėtinos sumos ir įsipareigojimai", "5 Pajamos", "6 Sąnaudos" } do
    local at = find_row("lsvCovert", { ["Sąskaitų planas"] = class })
    select("lsvCovert", at)
    command("lsvCovert", at, "Parinkti sąskaitas automatiškai")
  end
  expect(enabled "cmdConvert", true)
  expect(visible "lblMissing", false)

  local at = find_row("lsvCovert", { ["Sąskaitų planas"] = "204 Prekės, skirtos perparduoti" })
  select("lsvCovert", at)
  delete_key "lsvCovert"
  expect(row("lsvCovert").mark, "bad")
  expect(enabled "cmdConvert", false, "an account with entries lost its counterpart")
  drop("lsvCovert", references["204"])
  expect(enabled "cmdConvert", true)
end)

test("without a copy nothing is converted", function()
  command("tvwLayout", "Sąskaitų planas", "Sąskaitų konvertavimas")
  fault(1, 1299, "Diske nebėra vietos!")
  click "cmdConvert"
  expect_message("Diske nebėra vietos!", "ok")
  expect(enabled "cmdConvert", true, "the panel is free again")
  expect(enabled "cmdRestore", false)
  expect(#books.call("DO0200401_GetAccountPlan").value > 20, true, "the new plan is the new one still")
end)

test("the books are converted, every balance at the counterpart", function()
  before = books.balances "2004.03.31"
  command("tvwLayout", "Sąskaitų planas", "Sąskaitų konvertavimas")
  click "cmdConvert"
  expect_message("Sąskaitų planas pakeistas į naują sąskaitų planą.", "ok")
  expect(enabled "cmdConvert", false, "the new plan is empty again")
  expect(enabled "cmdRestore", true)
  expect(visible "lsvLeft", true, "formulas of statements are left to a person")
  expect(row("lsvLeft", 1)[1], "Balansas: Pinigai")
  expect(row("lsvLeft", 1)[2], "27")
  local want = {}
  for account, sum in pairs(before) do
    local number = becomes(account)
    want[number] = (want[number] or 0) + sum
  end
  local after = books.balances "2004.03.31"
  for account, sum in pairs(want) do expect(books.text(after[account]), books.text(sum), account) end
  for account in pairs(after) do expect(want[account] ~= nil, true, account) end
  expect_clean()
end)

test("work goes on by the new numbers", function()
  local operation = object "O0201500"
  operation:set("DateD", "2004.03.31")
  operation:set("Number", "K-1")
  operation:set("BROperGroupID", 2)
  expect(operation:methods("AddBR", { "271", "500", 100.5, {} }).code, 0)
  expect(operation:save().code, 0)
  expect_books [[ 271 500 100,50 ]]
  select("tvwLayout", "Sąskaitų planas")
  expect(find_row("lvwObjects", { ["Pavadinimas"] = "Klasė 2" }) ~= nil, true)
end)

test("back again from the copy", function()
  command("tvwLayout", "Sąskaitų planas", "Sąskaitų konvertavimas")
  click "cmdRestore"
  expect_message("Atsarginė kopija atstatyta.", "ok")
  local after = books.balances "2004.03.31"
  for account, sum in pairs(before) do expect(after[account], sum, account) end
  expect(enabled "cmdConvert", true, "with the counterparts as they were")
  expect_clean()
end)
