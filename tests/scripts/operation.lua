-- One financial operation the whole way: entered, refused, saved, reopened, changed, deleted.

local function add_entry(debit, credit, sum)
  click "cmdNewEntry"
  expect_screen "frmBROperRecord"
  enter("cmbAccountD", debit)
  enter("cmbAccountC", credit)
  enter("txtSuma", sum)
end

test("a purchase from the group's template", function()
  open("O0201500", { group = "Pirkimai" })
  expect_screen "frmBROper"
  expect(caption "SOPanel", " Nauja finansinė operacija")
  expect(text "txtGroup", "Pirkimai")
  expect(count "lvwBRRecords", 2, "entries of the template")
  local number = text "txtNumber"
  expect(number:sub(1, 2), "P-")

  -- The template leaves the sums at zero and requires the supplier.
  double_click("lvwBRRecords", 1)
  expect_screen "frmBROperRecord"
  expect(enabled "cmbAccountD", false, "an account that the template fixes")
  enter("txtSuma", "1000")
  click "cmdWrite"
  expect_message("Nenurodyti būtini adresatai!", "ok")
  expect(focus(), "lvwAddressC")
  double_click("lvwAddressC", 1)
  expect_screen "frmPicker"
  double_click("lvwObjects", "UAB Tiekėjas")
  expect_screen "frmBROperRecord"
  click "cmdWrite"

  click "cmdWrite"
  expect_message_part("Įrašymas neatliktas !", "ok")
  expect(count "lvwBRRecords", 2, "entries after a refused save")

  double_click("lvwBRRecords", 2)
  enter("txtSuma", "1000*0,18")
  double_click("lvwAddressC", 1)
  double_click("lvwObjects", "UAB Tiekėjas")
  choose("cmbTradeOperationTypes", "Prekių (paslaugų) pirkimas")
  choose("cmbVAT", "PVM suma")
  check "chkVATFlag"
  click "cmdWrite"
  enter("txtComment", "Prekės pagal sąskaitą SS 10482")
  click "cmdWrite"
  expect(message(), nil)
  expect(caption "SOPanel", " Finansinė operacija")
  expect(title(), today() .. " " .. number)
  expect_books [[
    204 450 1000,00
    2441 450 180,00
  ]]
  close()
end)

test("currency, addressees and refusals of the editor", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  expect(count "lvwBRRecords", 0)
  add_entry("240", "999", "50")
  click "cmdWrite"
  expect_message("Klaidinga  balansinės sąskaitos reikšmė!", "ok")
  expect(focus(), "cmbAccountC")
  enter("cmbAccountC", "500")
  choose("cmbCurrD", "EUR")
  expect_message("0,0000 -> 3,4528\r\nPakeisti valiutos kursą ?", "yes")
  enter("txtSumCurrD", "100")
  leave()
  expect(text "txtSuma", "345,28")
  enter("txtSuma", "345,29")
  click "cmdWrite"
  expect_message("Suma Lt neatitinka valiutos kurso!", "ok")
  enter("txtSumCurrD", "100")
  enter("txtSuma", "345,28")
  click "cmdAddresseeD"
  choose("cmbKind", "Įmonės")
  double_click("lvwObjects", "UAB Pirkėjas")
  expect(row("lvwAddressD", 1)["Reikšmė"], "UAB Pirkėjas")
  click "cmdWrite"
  expect(row("lvwBRRecords", 1)["Valiuta D"], "100,00 EUR")
  expect(row("lvwBRRecords", 1).mark, "good")

  -- A free entry that is not saved goes again.
  click "cmdNewEntry"
  click "cmdExit"
  expect(count "lvwBRRecords", 1)

  close()
  expect_message("Nauja finansinė operacija\r\n\r\nUždaryti be išsaugojimo?", "no")
  expect_screen "frmBROper"
  click "cmdWrite"
  expect(message(), nil)
  close()
end)

test("reopened, changed, deleted", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  add_entry("2721", "240", "10")
  click "cmdWrite"
  click "cmdWrite"
  local saved = books.saved()
  local reference = saved[#saved]
  close()

  open(reference)
  expect(caption "SOPanel", " Finansinė operacija")
  expect(row("lvwBRRecords", 1)["Suma, Lt"], "10,00")
  double_click("lvwBRRecords", 1)
  enter("txtSuma", "12,5")
  click "cmdWrite"
  enter("txtComment", "Grąža")
  click "cmdWrite"
  close()

  open(reference)
  expect(row("lvwBRRecords", 1)["Suma, Lt"], "12,50")
  expect(text "txtComment", "Grąža")
  command("lvwBRRecords", 1, "Panaikinti įrašą")
  expect_message("Ar tikrai norite panaikinti?", "no")
  expect(count "lvwBRRecords", 1)
  right_click "SSCClose"
  expect_message_part("Ar tikrai norite panaikinti?\r\n", "ok")
  expect(screen() ~= "frmBROper", true, "the screen of a deleted operation is closed")
  expect_clean()
end)
