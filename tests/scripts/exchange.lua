-- Currency bought and sold inside one operation: by the day's rate, above and below it, and on a
-- day whose rate nobody has stored yet.

local function tool()
  click "cmdTools"
  pick "Valiutos pirkimas/pardavimas"
  expect_screen "frmCurrencyExchange"
  expect(title(), "Valiutos pirkimas / pardavimas")
  expect(enabled "cmdOK", false)
end

test("currency bought dearer than its rate", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  tool()
  expect(text "cmbAcc536", "536 Teigiama valiutos kursų pasikeitimo įtaka")
  expect(text "cmbAcc636", "636 Neigiama valiutos kursų pasikeitimo įtaka")
  expect(enabled "txtRateD", false, "the rate of litas")
  date("dtpDate", "2004.03.10")
  enter("cmbAccD", "2713")
  choose("cmbBankAccD", "Bankas B, LT297020000000000003")
  choose("cmbCurrD", "USD")
  expect(text "txtRateD", "2,7500")
  enter("txtSumD", "100")
  enter("cmbAccC", "999")
  leave()
  expect_message("Klaidinga  balansinės sąskaitos reikšmė !", "ok")
  expect(focus(), "cmbAccC")
  enter("cmbAccC", "2711")
  choose("cmbBankAccC", "Bankas A, LT037010000000000001")
  enter("txtSumC", "280")
  leave()
  expect(caption "lblDifference",
         "Debetas 275,00 Lt     Kreditas 280,00 Lt     Neigiama įtaka 5,00 Lt")
  click "cmdOK"
  expect_screen "frmBROper"
  expect(message(), nil)
  expect(count "lvwBRRecords", 2)
  expect(text "txtComment", "Valiutos pirkimas")
  expect(row("lvwBRRecords", 1)["Valiuta D"], "100,00 USD")
  expect(row("lvwBRRecords", 1)["Data"], "2004.03.10")
  expect(row("lvwBRRecords", 1).mark, "good")
  expect(row("lvwBRRecords", 2).mark, "good")
  click "cmdWrite"
  expect(message(), nil)
  expect_books [[
    2713 2711 275,00 100,00 USD
    636 2711 5,00
  ]]
  close()
end)

test("sold below the rate, and one currency for another", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  enter("txtComment", "Valiutos reikalai")
  tool()
  enter("cmbAccD", "2711")
  enter("txtSumD", "270")
  enter("cmbAccC", "2713")
  choose("cmbCurrC", "USD")
  enter("txtSumC", "100")
  click "cmdOK"
  expect(text "txtComment", "Valiutos reikalai", "a comment of one's own stays")

  tool()
  enter("cmbAccD", "2712")
  choose("cmbCurrD", "EUR")
  enter("txtSumD", "100")
  enter("cmbAccC", "2713")
  choose("cmbCurrC", "USD")
  enter("txtSumC", "125")
  click "cmdOK"
  click "cmdWrite"
  expect(message(), nil)
  expect_books [[
    2711 2713 270,00 100,00 USD
    636 2713 5,00 0,00 USD
    2712 2713 343,75 100,00 EUR 125,00 USD
    2712 536 1,53 0,00 EUR
  ]]
  close()
end)

test("a day without a rate, given up and then stored", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  tool()
  date("dtpDate", "2004.04.02")
  enter("cmbAccD", "2711")
  enter("txtSumD", "281,50")
  enter("cmbAccC", "2713")
  choose("cmbCurrC", "USD")
  expect(text "txtRateC", "")
  enter("txtSumC", "100")
  click "cmdOK"
  expect_message("Nenurodytas valiutos kursas!", "ok")
  expect(focus(), "txtRateC")
  click "cmdCancel"
  expect_screen "frmBROper"
  expect(count "lvwBRRecords", 0)

  tool()
  date("dtpDate", "2004.04.02")
  enter("cmbAccD", "2711")
  enter("txtSumD", "281,50")
  enter("cmbAccC", "2713")
  choose("cmbCurrC", "USD")
  enter("txtRateC", "2,815")
  enter("txtSumC", "100")
  click "cmdOK"
  click "cmdWrite"
  expect_books [[
    2711 2713 281,50 100,00 USD
  ]]
  close()

  -- The next exchange of that day finds the rate.
  open("O0201500", { group = "Bendrosios operacijos" })
  tool()
  date("dtpDate", "2004.04.02")
  choose("cmbCurrC", "USD")
  expect(text "txtRateC", "2,8150")
  click "cmdCancel"
  local stored = books.call("DO0200500_GetCurrencyRates", "'2004.04.01','2004.04.30','USD'").value
  expect(#stored, 1)
  close()
  if message() then answer "yes" end
  expect_clean()
end)
