-- Groups of operations: a common group and a group of documents in it, their numbers and
-- templates, full sums of debts, and what is refused.

local function card(name)
  command("tvwLayout", name, "Padėti ant darbo stalo")
  expect_screen "frmBROperGroup"
end

test("a common group has a name alone", function()
  select("tvwLayout", "Finansinių operacijų apskaita")
  command("tvwLayout", "Finansinių operacijų apskaita", "Naują bendra grupė")
  expect(caption "SOPanel", " Nauja bendra grupė")
  expect(text "txtParentGroup", "Finansinių operacijų apskaita")
  expect(visible "tabGroup", false)
  enter("txtName", "  ")
  click "cmdWrite"
  expect_message("Neužpildytas laukas „Pavadinimas“!\r\nĮrašymas neatliktas !", "ok")
  enter("txtName", "  Filialas ")
  click "cmdWrite"
  expect(message(), nil)
  expect(title(), "Filialas")
  expect(caption "SOPanel", " Bendra grupė")
  close()
end)

test("a group of documents with a number, a template and a series", function()
  command("tvwLayout", "Filialas", "Naują operacijų grupė")
  expect(caption "SOPanel", " Nauja finansinių operacijų grupė")
  expect(text "txtParentGroup", "Filialas")
  enter("txtName", "Filialo pirkimai")
  check "chkSerija"
  enter("txtSerija", "FIL")
  choose("tabGroup", "numbering")
  expect(text "txtExample", "")
  check("lvwAutoNumber", "Auto-numeris")
  check("lvwAutoNumber", "Prefiksas")
  click "cmdUp"
  enter("txtPrefix", "F")
  enter("txtANTemplate", "0000")
  enter("txtMinimal", "12")
  expect(text "txtExample", "F-0012")
  choose("tabGroup", "templates")
  click "cmdTemplate"
  expect_screen "frmPicker"
  enter("txtFind", "pirkimai")
  click "cmdOk"
  expect(text "txtTemplate", "Pirkimai")
  select("trwTemplates", "Prekių pirkimas su PVM   (204-450, 2441-450)")
  command("trwTemplates", "Prekių pirkimas su PVM   (204-450, 2441-450)", "Nustatyti pagrindiniu")
  expect(text "txtMainTemplate", "Prekių pirkimas su PVM")
  click "cmdWrite"
  expect(message(), nil)
  expect(title(), "Filialo pirkimai")
  close()

  open("O0201500", { group = "Filialo pirkimai" })
  expect(text "txtNumber", "F-0012")
  expect(text "txtSerija", "FIL")
  expect(count "lvwBRRecords", 2)
  close()
end)

test("a group that holds documents keeps its kind", function()
  card "Pirkimai"
  choose("cmbFormTypes", "Mokėjimo nurodymas")
  choose("tabGroup", "numbering")
  expect(visible "chkNumByAcc", true)
  click "cmdWrite"
  expect_message(
    "Grupėje yra operacijų, jos dokumentų tipo pakeisti negalima!\r\nĮrašymas neatliktas !", "ok")
  expect(text "cmbFormTypes", "Mokėjimo nurodymas", "what was chosen stays")
  close()
  expect_message("Finansinių operacijų grupė\r\n\r\nUždaryti be išsaugojimo?", "no")
  click "cmdCancel"
  expect(text "cmbFormTypes", "Finansinė operacija")
  close()
end)

test("full sums are computed and dropped", function()
  card "Mokėjimo nurodymai"
  choose("tabGroup", "sums")
  expect(enabled "cmdCreateFullSum", false)
  check("lvwAccountSettings", "Banko sąskaitos")
  click "cmdCreateFullSum"
  expect_message("Ar tikrai norite apskaičiuoti skolas?", "yes")
  expect_message("Atlikta!", "ok")
  enter("txtName", "Mokėjimai")
  click "cmdWrite"
  expect(message(), nil)
  expect_clean()
  click "cmdClearFullSum"
  expect_message("Ar tikrai norite panaikinti apskaičiuotas skolas?", "yes")
  expect_message("Atlikta!", "ok")
  expect_clean()
  close()
end)

test("groups go from below, the first one never", function()
  command("tvwLayout", "Filialas", "Panaikinti")
  expect_message("Ar tikrai norite panaikinti?", "yes")
  expect_message("Įrašas turi pavaldžių įrašų: Filialo pirkimai", "ok")
  expand("tvwLayout", "Filialas")
  card "Filialo pirkimai"
  right_click "SSCClose"
  expect(message().preset, "no")
  expect_message("Ar tikrai norite panaikinti?\r\nFilialo pirkimai", "yes")
  expect_screen "frmList"
  command("tvwLayout", "Filialas", "Panaikinti")
  answer "yes"
  expect(message(), nil)
  card "Finansinių operacijų apskaita"
  right_click "SSCClose"
  answer "yes"
  expect_message("Pagrindinės grupės panaikinti negalima!", "ok")
  close()
end)
