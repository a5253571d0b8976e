-- Currencies: names of their units, rates by day typed, pasted and removed, sums in words.

local function card(code)
  open(code == "USD" and "O00022003" or code == "EUR" and "O00022002" or "O00022001")
  expect_screen "frmCurrency"
end

test("a sum in words, by the units of its currency", function()
  local litas = object "O00022001"
  expect(litas:methods("SumByWords", { 1200.05 }).value,
         "Vienas tūkstantis du šimtai litų 05 centai")
  expect(litas:methods("SumByWords", { 22.21, true }).value,
         "Dvidešimt du litai dvidešimt vienas centas")
  local found = object("O0002200"):properties("CurrencyByCode", "'USD'").value
  expect(object(found[1].OIDR):methods("SumByWords", { 1 }).value, "Vienas doleris 00 centų")
  expect(litas:methods("SumByWords", { 1e12 }).text, "Suma per didelė, kad būtų parašyta žodžiais!")
  expect(litas:methods("SumByWords", {}).code ~= 0, true)
end)

test("a new currency, its words and its refusals", function()
  activate "frmList"
  open "O00022001"
  expect(enabled "cmdImport", false, "the base currency has no rates")
  expect(caption "lblWords", "Pvz.: Vienas litas 01 centas; Du litai 02 centai; Dešimt litų 10 centų")
  click "SSCNew"
  expect(caption "SOPanel", "Nauja valiuta")
  enter("txtCode", "czk1")
  expect(text "txtCode", "CZK", "capital letters alone")
  click "cmdWrite"
  expect_message("Nenurodytas valiutos pavadinimas!", "ok")
  enter("txtName", "Čekijos krona")
  enter("txtOneCurr", "krona")
  enter("txtTwoCurr", "kronos")
  enter("txtManyCurr", "kronų")
  enter("txtOneSmall", "haleris")
  enter("txtTwoSmall", "haleriai")
  enter("txtManySmall", "halerių")
  expect(caption "lblWords", "Pvz.: Viena krona 01 haleris; Dvi kronos 02 haleriai; Dešimt kronų 10 halerių")
  -- Rates go into the books with the card itself.
  choose("tabCard", "Dienos kursai")
  date("dtpRate", "2004.03.30")
  click "cmdAddRate"
  expect(focus(), "txtRate")
  enter("txtRate", "0.1")
  date("dtpRate", "2004.03.31")
  click "cmdAddRate"
  enter("txtRate", ",")
  click "cmdWrite"
  expect_message("Klaidingas kursas: 2004.03.31 ,!", "ok")
  enter("txtRate", "0,105")
  expect(row("lvwRates", 1)["Pokytis, %"], "5,00")
  click "cmdWrite"
  expect(message(), nil)
  expect(title(), "CZK")
  expect(count "lvwRates", 2)
  close()
  open "O00022001"
  click "SSCNew"
  enter("txtCode", "CZK")
  enter("txtName", "Kita krona")
  click "cmdWrite"
  expect_message_part("Įrašymas neatliktas !", "ok")
  expect(text "txtName", "Kita krona")
  close()
  answer "yes"
end)

test("rates of a currency: changed, removed, missing", function()
  card "USD"
  choose("tabCard", "Dienos kursai")
  date("dtpFrom", "2004.03.01")
  date("dtpTo", "2004.03.31")
  expect(caption "lblMissing", "")
  local days = count "lvwRates"
  select("lvwRates", 1)
  expect(row("lvwRates", 1)["Data"], "2004.03.31")
  enter("txtRate", "3,5")
  expect(row("lvwRates", 1).mark, "bad", "a leap is marked")
  enter("txtRate", "2,76")
  select("lvwRates", 2)
  delete_key "lvwRates"
  close()
  expect_message("Valiuta\r\n\r\nUždaryti be išsaugojimo?", "no")
  click "cmdWrite"
  expect(message(), nil)
  expect(count "lvwRates", days - 1)
  expect(row("lvwRates", 1)["Kursas"], "2,76")
  expect(caption "lblMissing", "Trūksta kursų: USD 2004.03.30")

  click "cmdImport"
  expect_screen "frmRatesImport"
  expect(enabled "cmdOK", false)
  enter("txtRates", "Data;Kursas\r\n2004.03.30;2,74\r\n2004.03.32;2,75\r\nGBP 2004.03.29 4,9\r\n2004.04.01;2,77")
  expect(caption "lblFound", "Kursų: 2     Blogų eilučių: 2")
  expect(row("lvwRates", 2)["Pastaba"], "Klaidinga data: 2004.03.32")
  expect(row("lvwRates", 3)["Eilutė"], "4")
  click "cmdOK"
  expect_message("3 eilutė: Klaidinga data: 2004.03.32\r\nBlogų eilučių: 2\r\n\r\nĮrašyti tik geras eilutes?", "no")
  expect_screen "frmRatesImport"
  click "cmdOK"
  answer "yes"
  expect_screen "frmCurrency"
  expect(caption "lblMissing", "")
  expect(row("lvwRates", 2)["Kursas"], "2,74")
  close()
end)

test("the rates of one day", function()
  open "O000220120040331"
  expect_screen "frmRateDay"
  expect(title(), "Valiutų kursai 2004.03.31")
  expect(count "lvwRates", 3)
  select("lvwRates", find_row("lvwRates", { Valiuta = "USD" }))
  expect(row("lvwRates", find_row("lvwRates", { Valiuta = "USD" }))["Ankstesnis"], "2,74")
  date("dtpDate", "2004.04.05")
  expect(title(), "Valiutų kursai 2004.04.05")
  select("lvwRates", find_row("lvwRates", { Valiuta = "USD" }))
  enter("txtRate", "2,78")
  click "cmdNext"
  expect_message("Valiutų kursai\r\n\r\nUždaryti be išsaugojimo?", "no")
  expect(title(), "Valiutų kursai 2004.04.05")
  click "cmdNextRate"
  expect(current "lvwRates", find_row("lvwRates", { Valiuta = "CZK" }))
  expect(focus(), "txtRate")
  click "cmdWrite"
  expect(message(), nil)
  click "cmdPrevious"
  expect(title(), "Valiutų kursai 2004.04.02")
  click "cmdImport"
  enter("txtRates", "2004.04.02 CZK 100 10,6\r\n2004.04.02 usd 2.775")
  click "cmdOK"
  expect_screen "frmRateDay"
  expect(row("lvwRates", find_row("lvwRates", { Valiuta = "CZK" }))["Kursas"], "0,106")
  close()
  expect_clean()
end)
