-- The chart of accounts: a class, an account with a mark, subaccounts, refusals, an account moved
-- one level down with its entries, the new plan and a counterpart in it.

local plan = "Sąskaitų planas"

local function card(name)
  select("tvwLayout", plan)
  double_click("lvwObjects", name)
  expect_screen "frmAccountPlan"
end

local function ticked()
  local names = {}
  for i = 1, count "LVProperties" do
    if row("LVProperties", i).checked then names[#names + 1] = row("LVProperties", i)[1] end
  end
  return table.concat(names, ",")
end

test("a class begins with its number", function()
  right_click("tvwLayout", plan)
  fault(1, 1205, "Duomenų bazė užimta, bandykite dar kartą!")
  pick "Nauja klasė"
  expect_message("Duomenų bazė užimta, bandykite dar kartą!", "ok")
  command("tvwLayout", plan, "Nauja klasė")
  expect(caption "SOPanel", "Nauja klasė")
  expect(focus(), "txtAccountClass")
  expect(visible "SSPSubAcc", false)
  expect(enabled "cmdEnter", false)
  enter("txtAccountClass", "0")
  expect(enabled "cmdEnter", true)
  enter("txtAccountClass", "7")
  enter("txtTypeClass", "x")
  expect(text "txtTypeClass", "D")
  click "cmdEnter"
  expect(message().title, "Norvanta")
  expect_message("Nenurodytas sąskaitos pavadinimas", "ok")
  expect(focus(), "txtNameClass")
  enter("txtNameClass", "  Valdymo apskaita ")
  click "cmdEnter"
  expect(message(), nil)
  expect(title(), "7 Valdymo apskaita")
  expect(caption "SOPanel", "Klasė")
  click "SSCNew"
  expect(title(), "Nauja klasė")
  enter("txtAccountClass", "1")
  enter("txtNameClass", "Jau yra")
  enter("txtTypeClass", "k")
  click "cmdEnter"
  expect_message("Klaida!\r\n\r\nTokia sąskaita jau egzistuoja!", "ok")
  expect(text "txtAccountClass", "1", "what was typed stays")
  enter("txtAccountClass", "8")
  click "cmdEnter"
  expect(title(), "8 Jau yra")
  close()
end)

test("an account and its brothers below the class", function()
  list_command(plan, "Valdymo apskaita", "Nauja sąskaita")
  expect(caption "SOPanel", "Nauja sąskaita")
  expect(text "txtNameClass", "Valdymo apskaita")
  expect(text "txtAccount", "7")
  expect(text "txtType", "D", "that of the class")
  enter("txtName", "Projektai")
  click "cmdEnter"
  expect_message("Nenurodytas sąskaitos numeris", "ok")
  expect(focus(), "txtAccount")
  enter("txtAccount", "81")
  expect(text "txtAccount", "7", "the number of the class cannot be typed away")
  enter("txtAccount", "71")
  check("LVProperties", "Banko sąskaitos")
  check("LVProperties", "Kasos sąskaitos")
  expect(ticked(), "Kasos sąskaitos", "one mark at most")
  click "cmdEnter"
  expect(message(), nil)
  expect(title(), "71 Projektai")
  local cash = row("LVProperties", find_row("LVProperties", { Atitikimas = "Kasos sąskaitos" }))
  expect(cash["Sąskaita"], "2721;2722;2723;71;")
  click "SSCNew"
  expect(ticked(), "")
  expect(text "txtAccount", "7")
  enter("txtName", "Kita")
  close()
  expect_message("Nauja sąskaita\r\n\r\nUždaryti be išsaugojimo?", "no")
  click "cmdCancel"
  expect(text "txtName", "")
  close()

  card "Projektai"
  uncheck("LVProperties", "Kasos sąskaitos")
  click "cmdEnter"
  expect(ticked(), "")
  close()
end)

test("a subaccount shows what stands above it", function()
  list_command(plan, "Projektai", "Nauja subsąskaita")
  expect(caption "SOPanel", "Nauja subsąskaita")
  expect(caption "LbAccount", "71 Projektai")
  enter("txtAccount", "711")
  enter("txtName", "Projektas A")
  click "cmdEnter"
  expect(title(), "711 Projektas A")
  expect(books.call("GetAccount", "'711'").value[1].Name, "Projektas A")
  close()

  -- Its account is renumbered: the subaccount follows.
  card "Projektai"
  enter("txtAccount", "75")
  click "cmdEnter"
  close()
  expect(#books.call("GetAccount", "'711'").value, 0)
  expect(books.call("GetAccount", "'751'").value[1].Name, "Projektas A")
end)

test("an account that is gone meanwhile", function()
  list_command(plan, "Projektas A", "Padėti ant darbo stalo")
  enter("txtName", "Pavėluota")
  activate "frmList"
  list_command(plan, "Projektas A", "Panaikinti")
  expect(message().title, "Norvanta")
  expect(message().preset, "no")
  expect_message("Ar tikrai norite panaikinti?", "yes")
  activate "frmAccountPlan"
  click "cmdEnter"
  expect_message("Klaida!\r\n\r\nRedaguojama sąskaita nebeegzistuoja!", "ok")
  expect(text "txtName", "Pavėluota")
  close()
  answer "yes"

  list_command(plan, "Projektai", "Nauja subsąskaita")
  enter("txtAccount", "752")
  enter("txtName", "Be tėvo")
  activate "frmList"
  list_command(plan, "Projektai", "Panaikinti")
  answer "yes"
  activate "frmAccountPlan"
  click "cmdEnter"
  expect_message("Klaida!\r\n\r\nAukštesnio lygio sąskaita nebeegzistuoja!", "ok")
  close()
  answer "yes"
end)

test("what is used is not deleted", function()
  for _, name in ipairs { "Pirkėjų skolos", "Pinigai" } do
    list_command(plan, name, "Panaikinti")
    answer "yes"
    expect(message() ~= nil, true, "the store says who uses it")
    answer "ok"
  end
  expect(books.balances(today())["240"], 1360)
end)

test("an account moves one level down with its entries", function()
  local before = books.balances(today())["240"]
  list_command(plan, "Pirkėjų skolos", "Pervesti į žemesnės subsąskaitos lygį")
  expect(message().buttons, "ok cancel")
  answer "cancel"
  expect(books.balances(today())["240"], before)
  list_command(plan, "Pirkėjų skolos", "Pervesti į žemesnės subsąskaitos lygį")
  answer "ok"
  expect(message(), nil)
  expect(books.balances(today())["2401"], before)
  expect(books.balances(today())["240"], nil)
  select("tvwLayout", plan)
  enter("txtFind", "2401")
  double_click("lvwObjects", 1)
  expect(title(), "2401 Pirkėjų skolos")
  expect(ticked(), "Pirkėjų skolos")
  close()
  expect_clean()
end)

test("the new plan, and a counterpart in it", function()
  command("tvwLayout", plan, "Sąskaitų planai")
  expand("tvwLayout", plan)
  command("tvwLayout", "Naujas sąskaitų planas", "Nauja klasė")
  enter("txtAccountClass", "2")
  enter("txtNameClass", "Naujas turtas")
  enter("txtTypeClass", "D")
  click "cmdEnter"
  close()
  select("tvwLayout", "Naujas sąskaitų planas")
  command("lvwObjects", "Naujas turtas", "Nauja sąskaita")
  enter("txtAccount", "27")
  enter("txtName", "Pinigai nauji")
  click "cmdEnter"
  expect(visible "txtNewAcc", false)
  close()

  card "Pinigai kelyje"
  click "cmdNewAcc"
  expect(title(), "Pasirinkite atitinkamą sąskaitą")
  double_click("lvwObjects", "Naujas turtas")
  expect(text "txtNewAcc", "", "a group has no entries")
  click "cmdNewAcc"
  double_click("lvwObjects", "Pinigai nauji")
  expect(text "txtNewAcc", "27 Pinigai nauji")
  click "cmdCleanAcc"
  expect(text "txtNewAcc", "")
  drop("SOPanel", "O02004011")
  expect_message("Objektas panaikintas!", "ok")
  click "cmdNewAcc"
  double_click("lvwObjects", "Pinigai nauji")
  click "cmdEnter"
  expect(message(), nil)
  close()

  select("tvwLayout", "Naujas sąskaitų planas")
  command("lvwObjects", "Pinigai nauji", "Panaikinti")
  answer "yes"
  expect_message_part("atitikmuo", "ok")
  command("tvwLayout", plan, "Sąskaitų planai")
  expect(count "lvwObjects" > 100, true)
end)

test("the plan is printed", function()
  command("tvwLayout", plan, "Spausdinti")
  expect(message(), nil)
  expect(count "lvwObjects" > 100, true)
end)
