-- What the cards do when the store refuses, when somebody else was there first, and without rights.

test("a failed save keeps what was typed, the next one works", function()
  open "O00003001"
  enter("txtSWIFT", "NEWBLT2X")
  fault(1, 1205, "Duomenų bazė užimta, bandykite dar kartą!")
  click "cmdWrite"
  expect_message("Duomenų bazė užimta, bandykite dar kartą!\r\n\r\nĮrašymas neatliktas !", "ok")
  expect(text "txtSWIFT", "NEWBLT2X")
  expect(title(), "Bankas A")
  click "cmdWrite"
  expect(object("O00003001"):get "SWIFT", "NEWBLT2X")
  close()

  select("tvwLayout", "Bankai")
  click "cmdNew"
  enter("txtName", "Bankas C")
  fault(1, 1299, "Diske nebėra vietos, duomenys neįrašyti!")
  click "cmdWrite"
  expect_message("Diske nebėra vietos, duomenys neįrašyti!\r\n\r\nĮrašymas neatliktas !", "ok")
  expect(caption "SOPanel", "Naujas bankas")
  expect(text "txtName", "Bankas C")
  click "cmdWrite"
  expect(title(), "Bankas C")
  close()
  expect(find_row("lvwObjects", { ["Pavadinimas"] = "Bankas C" }) ~= nil, true)
end)

test("whoever comes second is told who was first, and when", function()
  open "O00001002"
  enter("txtPhone", "8 5 111")
  local other = object "O00001002"
  other:set("Phone", "8 5 999")
  expect(other:save().code, 0)
  click "cmdWrite"
  local told = message().text
  expect(told:find("^Įrašą pakeitė kitas vartotojas: Administratorius, 2004%.03%.31 ") ~= nil, true, told)
  answer "ok"
  expect(text "txtPhone", "8 5 111", "what was typed stays")
  close()
  answer "yes"
  open "O00001002"
  expect(text "txtPhone", "8 5 999")
  -- Nothing was typed here: the card follows by itself.
  other = object "O00001002"
  other:set("Phone", "8 5 777")
  expect(other:save().code, 0)
  leave()
  expect(text "txtPhone", "8 5 777")
  close()
end)

test("a record that is gone is told on opening and on saving", function()
  select("tvwLayout", "Paskirtys")
  click "cmdNew"
  enter("txtName", "Laikina")
  click "cmdWrite"
  enter("txtCode", "L")
  activate "frmList"
  command("lvwObjects", "Laikina", "Panaikinti")
  answer "yes"
  activate "Laikina"
  click "cmdWrite"
  expect_message("Redaguojamas įrašas nebeegzistuoja!\r\n\r\nĮrašymas neatliktas !", "ok")
  close()
  answer "yes"
  open "O0001601999"
  expect_message("Objektas panaikintas!", "ok")
end)

test("a tariff list that somebody else changed is not overwritten", function()
  open "O00016291"
  expect(books.call("DO0001629_SaveVATtariffs", "'18;5;0','18;9;5;0'").code, 0)
  select("lvwTariffs", 1)
  enter("txtValue", "21")
  click "cmdWrite"
  expect_message_part("PVM tarifus tuo metu pakeitė kitas vartotojas!", "ok")
  expect(text "txtValue", "21")
  close()
  answer "yes"
  expect(books.call("DO0001629_SaveVATtariffs", "'18;9;5;0','18;5;0'").code, 0)
end)

test("without the right to change a card is shown and the store refuses", function()
  local user = object "O0000800"
  user:set("Login", "rasa")
  user:set("Name", "Rasa Rasaitė")
  user:set("RoleID", 3)
  user:set("MustChange", 0)
  expect(user:save().text, "")
  login()
  enter("txtUser", "rasa")
  click "cmdOk"
  expect_screen "frmPassword"
  click "cmdCancel"
  expect_screen "frmList"
  select("tvwLayout", "Įmonės")
  expect(visible "cmdNew", false)
  right_click("lvwObjects", 1)
  expect(table.concat(menu(), ","), "Padėti ant darbo stalo,-,Atrinkti,-,Spausdinti sąrašą,Eksportas į EXCEL")
  for _, reference in ipairs { "O00001002", "O00014021", "O00003001", "O00005001", "O00016011" } do
    open(reference)
    expect(enabled "cmdWrite", false, reference)
    expect(enabled "SSCNew", false, reference)
    close()
  end
  open "O00001002"
  expect(pcall(enter, "txtName", "Kitas"), false, "a read-only box")
  expect(enabled "cmdParentID", false)
  choose("tabCard", "Banko sąskaitos")
  expect(enabled "cmdNewAccount", false)
  close()
  select("tvwLayout", "PVM tarifai")
  double_click("lvwObjects", 1)
  expect(enabled "cmdWrite", false)
  expect(enabled "cmdAdd", false)
  close()

  local firm = object "O00001002"
  firm:set("Name", "Kitas")
  expect(firm:save().code, 1203)
  expect(object("O0000100"):save().code, 1203)
  expect(books.call("DO0001629_SaveVATtariffs", "'18;5;0','18'").code, 1203)
  login()
  enter("txtUser", "admin")
  click "cmdOk"
end)
