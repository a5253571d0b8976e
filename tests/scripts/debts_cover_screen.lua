-- A cover of the demo company's debts, all of it through the screens.

test("debts of everybody are set off", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdTools"
  pick "Skolų dengimas"
  date("dtpDate", "2004.02.15")
  enter("cmbAccC", "450")
  enter("cmbAccD", "240")
  click "cmdGo"
  click "cmdCurrC"
  pick "USD"
  click "optAllC"
  expect(text "txtSumC", "851,85")
  click "optAllD"
  expect(caption "lblStatus", "Liks nesudengta: 60,00 Lt")
  click "cmdOK"
  expect(message(), nil)
  click "cmdExit"
  expect(count "lvwBRRecords", 2)
  click "cmdWrite"
  expect(message(), nil)
  expect_books [[
    450 240 680,00
    450 240 1620,00 600,00 USD
  ]]
  close()
  expect_clean()
end)
