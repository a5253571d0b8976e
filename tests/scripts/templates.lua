-- Templates of operations: a group and a template made in the tree, lines with factors and required
-- addressees, an operation from them, and what happens when others were faster.

local kind = "Finansinių operacijų šablonai"

local function add_line(debit, credit, factor)
  click "cmdNewRow"
  expect_screen "frmBRTemplateAcc"
  enter("cmbAccountD", debit)
  enter("cmbAccountC", credit)
  if factor then enter("txtFactor", factor) end
end

local template

test("a group in the tree, and a template in it", function()
  command("tvwLayout", kind, "Nauja šablonų grupė")
  expect(caption "SOPanel", "Šablonų grupė")
  expect(visible "lvwRows", false)
  expect(text "txtGroup", kind)
  enter("txtName", "Paslaugos")
  click "cmdWrite"
  expect(message(), nil)
  expect(title(), "Paslaugos")
  close()

  list_command(kind, "Paslaugos", "Naujas šablonas")
  expect(caption "SOPanel", "Finansinės operacijos šablonas")
  expect(text "txtGroup", "Paslaugos")
  enter("txtName", "Paslaugos per pusę")

  add_line("240", "999")
  click "cmdWrite"
  expect_message("Klaidinga  balansinės sąskaitos reikšmė !", "ok")
  enter("cmbAccountC", "500")
  enter("txtFactor", "")
  click "cmdWrite"
  expect_message("Klaidinga koeficiento reikšmė!", "ok")
  enter("txtFactor", "0,5")
  double_click("lvwAddrD", "Įmonės")
  expect_screen "frmBRTemplateAcc"  -- only a required kind can be fixed
  check("lvwAddrD", "Įmonės")
  check("lvwAddrC", "Darbuotojai")
  uncheck("lvwAddrC", "Darbuotojai")
  click "cmdWrite"
  expect_screen "frmBRTemplate"
  expect(row("lvwRows", 1)["Koeficientas"], "0,5")
  expect(row("lvwRows", 1)["Debeto b/s"], "240 Pirkėjų skolos")

  add_line("*", "4461")
  close()
  expect(count "lvwRows", 1, "a line that was left is not there")
  add_line("*", "4461")
  check("lvwAddrD", "Įmonės")
  double_click("lvwAddrD", "Įmonės")
  expect(title(), "Pasirinkite")
  double_click("lvwObjects", "UAB Pirkėjas")
  expect(row("lvwAddrD", find_row("lvwAddrD", { ["Debeto adresatas"] = "Įmonės [UAB Pirkėjas]" })).checked, true)
  click "cmdWrite"
  expect(row("lvwRows", 2)["Debeto b/s"], "* Nežinoma sąskaita")
  click "cmdWrite"
  expect(message(), nil)
  template = books.saved()[#books.saved()]
  close()

  open(template)
  expect(count "lvwRows", 2)
  double_click("lvwRows", 1)
  expect(text "txtFactor", "0,5")
  expect(row("lvwAddrD", find_row("lvwAddrD", { ["Debeto adresatas"] = "Įmonės" })).checked, true)
  click "cmdCancel"
  close()
end)

test("entries by template, added and in place of others", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  right_click("lvwBRRecords")
  pick "Pridėti įrašus pagal šabloną"
  expect_screen "frmBROperTemplateSelect"
  expect(title(), "Operacijos šablonai")
  expect(enabled "cmdOK", false)
  select("trwTemplates", "Paslaugos")
  expect(enabled "cmdOK", false, "a group makes no entries")
  for _, node in ipairs(items "trwTemplates") do
    if has(node, "per pusę") then select("trwTemplates", node) end
  end
  expect(text "txtSelect", "Paslaugos per pusę")
  enter("txtSuma", "")
  click "cmdOK"
  expect_message("Klaidinga sumos reikšmė!", "ok")
  expect_screen "frmBROperTemplateSelect"
  enter("txtSuma", "100,01")
  click "cmdOK"
  expect(count "lvwBRRecords", 2)
  expect(row("lvwBRRecords", 1)["Suma, Lt"], "50,01", "the half cent is lifted")
  expect(row("lvwBRRecords", 2)["Suma, Lt"], "100,01")
  expect(row("lvwBRRecords", 2).mark, "bad", "its account is to be chosen")

  command("lvwBRRecords", 1, "Pakeisti šabloną")
  click "cmdCancel"
  expect(count "lvwBRRecords", 2, "a choice that was left changes nothing")
  double_click("lvwBRRecords", 2)
  expect(enabled "cmbAccountD", true)
  expect(enabled "cmbAccountC", false)
  expect(row("lvwAddressD", 1)["Reikšmė"], "UAB Pirkėjas", "the fixed addressee")
  enter("cmbAccountD", "240")
  click "cmdWrite"
  double_click("lvwBRRecords", 1)
  double_click("lvwAddressD", 1)
  double_click("lvwObjects", "UAB Pirkėjas")
  click "cmdWrite"
  click "cmdWrite"
  expect(message(), nil)
  expect_books [[
    240 500 50,01
    240 4461 100,01
  ]]

  command("lvwBRRecords", 1, "Pakeisti šabloną")
  for _, node in ipairs(items "trwTemplates") do
    if has(node, "Savikainos") then select("trwTemplates", node) end
  end
  enter("txtSuma", "7")
  click "cmdOK"
  expect(count "lvwBRRecords", 1, "entries of the new template alone")
  click "cmdWrite"
  expect(message(), nil)
  expect_books [[ 600 204 7,00 ]]
  close()
end)

test("what is used stays", function()
  open "O020160021"
  right_click "SSCClose"
  answer "yes"
  expect_message_part("Šablonas nurodytas operacijų grupėje: ", "ok")
  expect_screen "frmBRTemplate"
  close()
end)

test("others were faster", function()
  list_command(kind, "Paslaugos", "Padėti ant darbo stalo")
  expect(title(), "Paslaugos")
  close()
  open(template)
  enter("txtName", " ")
  click "cmdWrite"
  expect_message_part("Įrašymas neatliktas !", "ok")
  enter("txtName", "Mano vardas")
  local other = object(template)
  other:set("Name", "Kito vardas")
  expect(other:save().code, 0)
  click "cmdWrite"
  expect_message_part("pakeitė kitas vartotojas", "ok")
  expect(text "txtName", "Mano vardas", "what was typed stays")
  close()
  expect_message("Finansinės operacijos šablonas\r\n\r\nUždaryti be išsaugojimo?", "yes")

  open(template)
  expect(text "txtName", "Kito vardas")
  delete_key("lvwRows")
  expect_message("Ar tikrai norite panaikinti?", "no")
  expect(count "lvwRows", 2)
  delete_key("lvwRows")
  answer "yes"
  expect(count "lvwRows", 1)
  close()
  answer "yes"
  open(template)
  expect(count "lvwRows", 2, "it was not saved")
  right_click "SSCClose"
  expect_message("Ar tikrai norite panaikinti?\r\nKito vardas", "yes")
  expect(screen() ~= "frmBRTemplate", true)
  expect_clean()
end)
