-- A walk through the program: login, tree, a new operation with an entry in litas and one in a
-- currency, saved, closed and opened again, and a save that is refused. Pictures go to out/.

local function picture(name) shot("out/tour-" .. name .. ".png") end

test("the tour", function()
  login()
  picture "1-login"
  enter("txtUser", "admin")
  click "cmdOk"

  select("tvwLayout", "Sąskaitų planas")
  picture "2-plan"
  double_click("tvwLayout", "Finansinių operacijų apskaita")
  double_click("lvwObjects", "Pirkimai")
  picture "3-group"

  select("tvwLayout", "Bendrosios operacijos")
  click "cmdNew"
  expect_screen "frmBROper"
  enter("txtComment", "Prekės UAB Pirkėjas")
  picture "4-new-operation"

  click "cmdNewEntry"
  enter("cmbAccountD", "240")
  enter("cmbAccountC", "500")
  enter("txtSuma", "1000")
  click "cmdAddresseeD"
  choose("cmbKind", "Įmonės")
  enter("txtFind", "pirk")
  picture "5-picker"
  double_click("lvwObjects", "UAB Pirkėjas")
  picture "6-entry"
  click "cmdWrite"

  click "cmdNewEntry"
  enter("cmbAccountD", "240")
  enter("cmbAccountC", "501")
  choose("cmbCurrD", "EUR")
  if message() then answer "yes" end
  enter("txtSumCurrD", "100")
  leave()
  expect(text "txtSuma", "345,28")
  click "cmdAddresseeD"
  choose("cmbKind", "Įmonės")
  double_click("lvwObjects", "UAB Pirkėjas")
  picture "7-currency"
  click "cmdWrite"
  expect(count "lvwBRRecords", 2)
  picture "8-entries"

  click "cmdWrite"
  expect(message(), nil)
  picture "9-saved"
  local reference = books.saved()[1]
  expect_books [[
    240 500 1000,00
    240 501 345,28 100,00 EUR
  ]]
  close()

  restart()
  open(reference)
  expect(count "lvwBRRecords", 2)
  expect(text "txtComment", "Prekės UAB Pirkėjas")
  picture "10-reopened"

  double_click("lvwBRRecords", 2)
  enter("txtSuma", "345,29")
  picture "11-wrong-sum"
  click "cmdWrite"
  picture "12-refused"
  expect_message("Suma Lt neatitinka valiutos kurso!", "ok")
  click "cmdExit"
  if message() then answer "yes" end
  close()
  if message() then answer "yes" end
  expect_clean()
end)
