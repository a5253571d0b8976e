-- An entry spread over months, given up half-way, and done; then the operation is copied.

local function invoice(sum)
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdNewEntry"
  enter("cmbAccountD", "204")
  enter("cmbAccountC", "450")
  enter("txtSuma", sum)
  enter("txtComment", "Nuoma")
  click "cmdWrite"
end

local function spread()
  command("lvwBRRecords", 1, "Išdėstyti pagal mėnesius")
  expect_screen "frmBRCopyByMonthes"
end

test("a period of three months with its remainder in the last", function()
  invoice "100"
  spread()
  expect(text "txtSum", "100,00")
  click "cmdOK"
  expect_screen "frmBRCopyByMonthes"
  enter("txtMonthCount", "12")
  click "cmdCancel"
  expect(count "lvwBRRecords", 1, "entries after a cancelled spreading")

  spread()
  enter("txtMonthCount", "3")
  leave()
  expect(caption "lblParts", "2004.03.31  33,33 Lt  …  2004.05.31  33,34 Lt")
  check "chkWithComment"
  click "cmdOK"
  expect_screen "frmBROper"
  expect(count "lvwBRRecords", 3)
  expect(row("lvwBRRecords", 2)["Data"], "2004.04.30")
  expect(row("lvwBRRecords", 3)["Suma, Lt"], "33,34")
  click "cmdWrite"
  expect_books [[
    204 450 33,33
    204 450 33,33
    204 450 33,34
  ]]
  expect_clean()
  close()
end)

test("each month the same sum on its last day", function()
  invoice "0,05"
  spread()
  enter("txtMonthCount", "10")
  click "cmdOK"
  expect_message("Sumos neužtenka visiems mėnesiams!", "ok")
  choose("optMonthSum", "Mėnesio suma")
  choose("optLastDay", "Paskutinė mėnesio diena")
  expect(enabled "txtDay", false)
  enter("txtMonthCount", "2")
  click "cmdOK"
  expect(row("lvwBRRecords", 2)["Data"], "2004.04.30")
  expect(row("lvwBRRecords", 2)["Suma, Lt"], "0,05")
  click "cmdWrite"

  click "cmdTools"
  pick "Kopijuoti operaciją"
  expect(caption "SOPanel", " Nauja finansinė operacija")
  expect(count "lvwBRRecords", 2)
  expect(row("lvwBRRecords", 2)["Data"], today())
  click "cmdWrite"
  expect(message(), nil)
  expect_clean()
  close()
end)
