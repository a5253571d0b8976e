-- The cards of the directories: entering, refusing, correcting, deleting, and what others see of it.

local function show(kind)
  activate "frmList"
  select("tvwLayout", kind)
end

test("a firm is entered; odd codes are remarked on, a missing name is refused", function()
  show "Įmonės"
  expect(caption "cmdNew", "Nauja įmonė")
  local before = count "lvwObjects"
  click "cmdNew"
  expect_screen "frmFirm"
  expect(caption "SOPanel", "Nauja įmonė")
  click "cmdWrite"
  expect_message("Nenurodytas įmonės pavadinimas!", "ok")
  expect(focus(), "txtName")
  enter("txtName", "  UAB Ąžuolo žaisdas ir „Kiti“  ")
  enter("txtCode", "30005")
  leave()
  expect(caption "lblRemarks", "Dėmesio: įmonės kodas paprastai yra iš 7 arba 9 skaitmenų.")
  enter("txtCode", "111111118")
  enter("txtVATCode", "LT111111119")
  leave()
  expect(caption "lblRemarks",
    "Dėmesio: neteisingas įmonės kodo kontrolinis skaitmuo; neteisingas PVM kodo kontrolinis skaitmuo.")
  enter("txtCode", "111111113")
  enter("txtVATCode", "LT111111113")
  enter("txtCity", "Alytus")
  leave()
  expect(visible "lblRemarks", false)
  click "cmdWrite"
  expect(title(), "UAB Ąžuolo žaisdas ir „Kiti“")
  expect(caption "SOPanel", "Įmonė")
  click "cmdCancel"
  expect_screen "frmList"
  expect(count "lvwObjects", before + 1)
  local row = row("lvwObjects", find_row("lvwObjects", { ["Miestas"] = "Alytus" }))
  expect(row["Pavadinimas"], "UAB Ąžuolo žaisdas ir „Kiti“")
end)

test("unsaved input is asked about; a save without changes is none", function()
  open "O00001002"
  local name = text "txtName"
  click "cmdWrite"
  enter("txtName", "UAB Tiekėjas ir partneriai")
  click "SSCClose"
  expect(message().preset, "no")
  expect_message("Įmonė\r\n\r\nUždaryti be išsaugojimo?", "no")
  expect(text "txtName", "UAB Tiekėjas ir partneriai")
  close()
  answer "yes"
  open "O00001002"
  expect(text "txtName", name)
  close()
end)

test("a code that another firm has is asked about, but not in its own branches", function()
  show "Įmonės"
  click "cmdNew"
  enter("txtName", "UAB Pirkėjas (dar kartą)")
  enter("txtCode", "130000007")
  click "cmdWrite"
  expect_message_part("Įmonė su tokiu kodu jau yra: UAB Pirkėjas", "no")
  expect(focus(), "txtCode")
  click "cmdWrite"
  answer "yes"
  expect(title(), "UAB Pirkėjas (dar kartą)")
  enter("txtFax", "8 5 222")
  click "cmdWrite" -- agreed to already
  click "cmdCancel"
  open "O00001003"
  choose("tabCard", "Filialai")
  click "cmdNewBranch"
  expect(text "txtParentID", "UAB Pirkėjas")
  enter("txtName", "UAB Pirkėjo skyrius")
  enter("txtCode", "130000007")
  click "cmdWrite"
  if message() then answer "yes" end -- the double one of above
  expect(title(), "UAB Pirkėjo skyrius")
  activate "UAB Pirkėjas"
  expect(count "lvwBranches", 2)
  expect(row("lvwBranches", 2)["Pavadinimas"], "UAB Pirkėjo skyrius")
  double_click("lvwBranches", 1)
  expect(text "txtName", "UAB Pirkėjo filialas")
end)

test("a firm is never a branch of its own branch", function()
  open "O00001003"
  click "cmdParentID"
  expect_screen "frmPicker"
  enter("txtFind", "filial")
  click "cmdOk"
  expect(text "txtParentID", "UAB Pirkėjo filialas")
  click "cmdWrite"
  expect_message("Įrašas negali būti savo paties viduje!\r\n\r\nĮrašymas neatliktas !", "ok")
  expect(text "txtParentID", "UAB Pirkėjo filialas", "what was chosen stays")
  click "cmdParentID"
  click "cmdClear"
  expect(text "txtParentID", "")
  click "cmdWrite"
  click "cmdCancel"
end)

test("exactly one firm is the own one; a card opened before follows", function()
  open "O00001001"
  expect(checked "chkOwnFirm", true)
  open "O00001005"
  check "chkOwnFirm"
  click "cmdWrite"
  activate "UAB Demo"
  expect(checked "chkOwnFirm", false, "read again")
  check "chkOwnFirm"
  click "cmdWrite"
  uncheck "chkOwnFirm"
  click "cmdWrite"
  expect_message("Viena įmonė turi būti pažymėta kaip sava!\r\n\r\nĮrašymas neatliktas !", "ok")
  close()
  answer "yes"
end)

test("a person, an employee and their bank accounts", function()
  show "Fiziniai asmenys"
  click "cmdNew"
  enter("txtName", "Ona")
  enter("txtLastName", "Žąsytė")
  enter("txtPersCode", "33309240064")
  leave()
  expect(visible "lblRemarks", false)
  enter("txtPersCode", "33309240065")
  leave()
  expect(caption "lblRemarks", "Dėmesio: neteisingas asmens kodo kontrolinis skaitmuo.")
  expect(enabled "cmdNewAccount", false, "nobody to own it yet")
  click "cmdWrite"
  expect(title(), "Ona Žąsytė")
  click "cmdNewAccount"
  expect_screen "frmBankAccount"
  expect(text "txtOwnerOIDR", "Ona Žąsytė")
  enter("txtAccountNumber", "LT601010012345678910")
  leave()
  expect(caption "lblRemarks", "Dėmesio: neteisingi IBAN kontroliniai skaitmenys.")
  enter("txtAccountNumber", "LT601010012345678901")
  leave()
  expect(visible "lblRemarks", false)
  click "cmdWrite"
  expect_message("Nenurodytas bankas!", "ok")
  click "cmdBankID"
  enter("txtFind", "bankas b")
  click "cmdOk"
  expect(text "txtBankID", "Bankas B")
  check "chkMainAccountFlag"
  choose("tabCard", "Bankas tarpininkas")
  enter("txtIntermediaryBankName", "Vidutinis bankas")
  enter("txtIntermediaryBankSWIFT", "VIDULT21")
  click "cmdWrite"
  expect(title(), "Bankas B, LT601010012345678901")
  click "SSCNew"
  expect(text "txtOwnerOIDR", "")
  click "cmdWrite"
  expect_message("Nenurodytas sąskaitos savininkas!", "ok")
  expect(text("tabCard") == "intermediary", false)
  click "cmdCancel"
  activate "Ona Žąsytė"
  expect(count "lvwAccounts", 1)
  expect(row("lvwAccounts", 1)["Pagrindinė"], "✓")

  show "Darbuotojai"
  click "cmdNew"
  enter("txtName", "Aldona")
  enter("txtUsrTitle", "sandėlininkė")
  click "cmdWrite"
  click "cmdCancel"
  activate "frmList"
  expect(row("lvwObjects", 1)["Vardas, pavardė"], "Aldona", "by name")
end)

test("a card tells who changed what", function()
  open "O00001003"
  local name = title()
  enter("txtPhone", "8 5 777")
  enter("txtFax", "8 5 778")
  click "cmdWrite"
  expect(message(), nil)
  right_click "SOPanel"
  pick "Pakeitimų protokolas"
  expect_screen "frmRecordLog"
  local newest = row("lvwLog", 1)
  expect(newest["Veiksmas"], "Pakeista")
  expect(#newest["Laikas"], 19)
  local phone = row("lvwLog", find_row("lvwLog", { ["Laukas"] = "Telefonas" }))
  expect(phone["Tapo"], "8 5 777")
  expect(row("lvwLog", 2)["Veiksmas"], "", "one line a field")
  click "cmdClose"
  expect(title(), name)
  click "SSCNew"
  right_click "SOPanel"
  expect(enabled "mnuLog", false)
end)

test("an object is typed by its name or code, or picked", function()
  open "O00001001"
  choose("tabCard", "Banko sąskaitos")
  click "cmdNewAccount"
  enter("txtBankID", "bankas b")
  leave()
  expect(text "txtBankID", "Bankas B")
  enter("txtBankID", "bank")
  leave()
  expect(text "txtBankID", "bank", "several fit")
  expect(caption "lblRemarks", "Dėmesio: „bank“ tinka keliems, pasirinkite (F4).")
  enter("txtAccountNumber", "LT991000000000000077")
  click "cmdWrite"
  expect_message("„bank“ tinka keliems, pasirinkite (F4)!", "ok")
  expect(focus(), "txtBankID")
  click "cmdBankID"
  expect(text "txtFind", "bank", "the search goes on from what was typed")
  click "cmdCancel"
  expect(text "txtBankID", "bank")
  enter("txtBankID", "tokio nėra")
  click "cmdWrite"
  expect_message("„tokio nėra“ nerasta!", "ok")
  enter("txtBankID", "")
  click "cmdWrite"
  expect_message("Nenurodytas bankas!", "ok")
  enter("txtBankID", "Bankas A")
  leave()
  expect(text "txtBankID", "Bankas A")
  click "cmdWrite"
  expect(message(), nil)
  expect(title(), "Bankas A, LT991000000000000077")
end)

test("the same account number of one owner is refused, the main account is one", function()
  open "O00001001"
  choose("tabCard", "Banko sąskaitos")
  local main = row("lvwAccounts", 1)
  expect(main["Pagrindinė"], "✓")
  click "cmdNewAccount"
  click "cmdBankID"
  click "cmdOk"
  enter("txtAccountNumber", "LT037010000000000001")
  check "chkMainAccountFlag"
  click "cmdWrite"
  expect_message("Toks įrašas jau egzistuoja!\r\n\r\nĮrašymas neatliktas !", "ok")
  expect(text "txtAccountNumber", "LT037010000000000001")
  enter("txtAccountNumber", "LT991000000000000009")
  click "cmdWrite"
  click "cmdCancel"
  activate "UAB Demo"
  local marked = 0
  for i = 1, count "lvwAccounts" do
    if row("lvwAccounts", i)["Pagrindinė"] == "✓" then marked = marked + 1 end
  end
  expect(marked, 1)
end)

test("a bank is renamed, and an open card of its account shows it", function()
  open "O00005001"
  local before = text "txtBankID"
  open "O00003001"
  expect(count "lvwAccounts" > 0, true)
  enter("txtName", "Bankas A ir Co")
  click "cmdWrite"
  expect(title(), "Bankas A ir Co")
  open "O00005001"
  expect(text "txtBankID", "Bankas A ir Co")
  open "O00003001"
  enter("txtName", before)
  click "cmdWrite"
end)

test("what others refer to is not deleted, and they are named", function()
  local function delete(kind, row)
    show(kind)
    command("lvwObjects", row, "Panaikinti")
    expect(message().preset, "no")
    answer "yes"
    local told = message() and message().text
    if told then answer "ok" end
    return told
  end
  expect_part(delete("Įmonės", "UAB Tiekėjas"), "Objektas nurodytas operacijoje: 2004.")
  expect_part(delete("Bankai", "Bankas B"), "Bankas nurodytas banko sąskaitoje: LT")
  expect(delete("Fiziniai asmenys", "Ona Žąsytė"), "Objektas turi banko sąskaitą: LT601010012345678901")
  expect(delete("Banko sąskaitos", "Bankas B, LT601010012345678901"), nil)
  expect(delete("Fiziniai asmenys", "Ona Žąsytė"), nil)
  expect(delete("Įmonės", "UAB Pirkėjas"), "Įrašas turi pavaldžių įrašų: UAB Pirkėjo filialas")
end)

test("VAT tariffs are kept in their order and saved all or none", function()
  show "PVM tarifai"
  expect(row("lvwObjects", 1)["Tarifas"], "18%")
  double_click("lvwObjects", 2)
  expect_screen "frmVATTariffs"
  insert_key "lvwTariffs"
  expect(focus(), "txtValue")
  click "cmdWrite"
  expect_message("PVM tarifas turi būti nuo 0 iki 100, ne daugiau kaip du ženklai po kablelio!", "ok")
  enter("txtValue", "5")
  click "cmdWrite"
  expect_message("PVM tarifas nurodytas du kartus: 5!", "ok")
  for _, wrong in ipairs { "100,01", "-1", "5,125", "penki" } do
    enter("txtValue", wrong)
    click "cmdWrite"
    expect_message_part("PVM tarifas turi būti", "ok")
  end
  enter("txtValue", "9,5")
  expect(enabled "cmdDown", false)
  for _ = 1, 3 do click "cmdUp" end
  expect(current "lvwTariffs", 1)
  select("lvwTariffs", 3)
  delete_key "lvwTariffs"
  click "cmdWrite"
  click "SSCClose"
  expect(count "lvwObjects", 3)
  expect(row("lvwObjects", 1)["Tarifas"], "9.50%")
  expect(row("lvwObjects", 3)["Tarifas"], "0%")
  click "cmdNew"
  expect(focus(), "txtValue")
  close()
  expect_message("PVM tarifai\r\n\r\nUždaryti be išsaugojimo?", "yes")
end)

test("purposes and comments", function()
  show "Paskirtys"
  click "cmdNew"
  enter("txtName", "Sandėlis")
  click "cmdParentID"
  enter("txtFind", "preky")
  click "cmdOk"
  click "cmdWrite"
  click "cmdCancel"
  expect(row("lvwObjects", 3)["Pavadinimas"], "   Sandėlis", "below the one it belongs to")

  show "Operacijų komentarai"
  local before = count "lvwObjects"
  click "cmdNew"
  enter("txtName", "Už nuomą")
  click "cmdWrite"
  click "SSCNew"
  expect(text "txtName", "")
  enter("txtName", "Už ryšius")
  click "cmdWrite"
  click "cmdCancel"
  expect(count "lvwObjects", before + 2)
  local offered = books.call("GetCommentList", "'už n',1,'O0201500'")
  expect(offered.value[1].Name, "Už nuomą")
end)

test("type-ahead finds a firm in its list and in the picker", function()
  show "Įmonės"
  enter("txtFind", "ąžuol")
  expect(count "lvwObjects", 1)
  expect(row("lvwObjects", 1)["Kodas"], "111111113")
  enter("txtFind", "")
end)
