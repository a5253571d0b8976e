-- The tree, its lists, their menus, filters and periods, and the login screen.

test("groups of operations stand below their node, their documents in the list", function()
  expect(has(items "tvwLayout", "Pirkimai"), true, "a group in the tree")
  local firms = 0
  for _, node in ipairs(items "tvwLayout") do
    if node == "Įmonės" then firms = firms + 1 end
  end
  expect(firms, 1, "a directory that two branches name stands once")
  select("tvwLayout", "Finansinių operacijų apskaita")
  expect(row("lvwObjects", 2)["Pavadinimas"], "Pirkimai")
  double_click("lvwObjects", "Pirkimai")
  expect(caption "lblPlace", "Pirkimai")
  expect(count "lvwObjects", 2)
  expect(row("lvwObjects", 1)["Suma, Lt"], "1\u{A0}180,00")
  expect(visible "cmdNew", true)
  expect(caption "cmdNew", "Nauja operacija")
end)

test("the plan shows everything below a class, indented", function()
  select("tvwLayout", "Sąskaitų planas")
  local all = count "lvwObjects"
  expect(row("lvwObjects", 2)["Sąskaita"], "   11")
  select("tvwLayout", "27 Pinigai")
  expect(row("lvwObjects", find_row("lvwObjects", { ["Pavadinimas"] = "Kasa litais" })).mark, "none")
  expect(count "lvwObjects" < all, true, "a part of the plan")
  expect(count "lvwObjects", 9)
end)

test("typing finds by the beginning first, then by any place", function()
  select("tvwLayout", "Sąskaitų planas")
  enter("txtFind", "27")
  expect(row("lvwObjects", 1)["Sąskaita"]:match("%S+"), "27")
  local found = count "lvwObjects"
  enter("txtFind", "kasa")
  expect(row("lvwObjects", 1)["Pavadinimas"], "Kasa")
  expect(count "lvwObjects" ~= found, true)
  enter("txtFind", "")
  expect(count "lvwObjects" > 100, true, "the whole plan again")
end)

test("a filter shows its rows and a way back", function()
  select("tvwLayout", "Įmonės")
  local all = count "lvwObjects"
  right_click "lvwObjects"
  pick "Atrinkti"
  expect_screen "frmFilter"
  enter("txtValue1", "o'x")
  click "cmdOk"
  expect_message("Reikšmėje negali būti apostrofo!", "ok")
  expect(focus(), "txtValue1")
  enter("txtValue1", "UAB P")
  click "cmdOk"
  expect(count "lvwObjects", 2)
  expect(caption "lblFilter", "Atrinkta: Pavadinimas turi 'UAB P'")
  click "cmdAll"
  expect(count "lvwObjects", all)
  expect(visible "cmdAll", false)
end)

test("menus follow the clicked row, and deleting asks", function()
  select("tvwLayout", "Pirkimai")
  right_click("lvwObjects", 1)
  local entries = menu()
  expect(has(entries, "Panaikinti"), true)
  expect(has(entries, "Nauja operacija"), true)
  pick "Panaikinti"
  expect(message().preset, "no")
  expect_message("Ar tikrai norite panaikinti?", "yes")
  -- Its payments point at it.
  expect_message_part("Operacija nurodyta kitose operacijose", "ok")
  expect(count "lvwObjects", 2)
  right_click("tvwLayout", "Pirkimai")
  expect(has(menu(), "Peržiūros nustatymai"), true)
end)

test("the viewing period narrows the documents and is remembered", function()
  select("tvwLayout", "Pirkimai")
  click "cmdPeriod"
  expect_screen "frmPeriod"
  enter("txtDays", "0")
  click "cmdOk"
  expect_message("Neteisingas dienų skaičius!", "ok")
  choose "optRange"
  date("dtpFrom", "2004.02.01")
  date("dtpTo", "2004.02.29")
  click "cmdOk"
  expect(caption "cmdPeriod", "2004.02.01 - 2004.02.29")
  expect(count "lvwObjects", 0)
  restart()
  select("tvwLayout", "Pirkimai")
  expect(caption "cmdPeriod", "2004.02.01 - 2004.02.29")
  click "cmdPeriod"
  choose "optDays"
  enter("txtDays", "365")
  click "cmdOk"
  expect(count "lvwObjects", 2)
end)

test("the login screen keeps out whoever is not known", function()
  login()
  expect_screen "frmLogin"
  enter("txtUser", "nobody")
  click "cmdOk"
  expect_screen "frmLogin"
  expect(caption "lblRefusal" ~= " ", true, "a reason")
  enter("txtUser", "admin")
  click "cmdOk"
  expect_screen "frmPassword"
  click "cmdCancel"
  expect_screen "frmList"
end)
