-- Lock dates of accounts: set for one and for all that are shown, refused entries, cleared.

local function save_purchase(day, sum)
  open("O0201500", { group = "Pirkimai" })
  for _ = 1, 2 do
    delete_key "lvwBRRecords"
    answer "yes"
  end
  date("dtpDate", day)
  click "cmdNewEntry"
  expect_screen "frmBROperRecord"
  enter("cmbAccountD", "2711")
  enter("cmbAccountC", "500")
  enter("txtSuma", sum)
  click "cmdWrite"
  click "cmdWrite"
end

local function lock_of(account)
  return row("lsvBRLock", find_row("lsvBRLock", { ["Sąskaita"] = account }))
end

local function open_dates(account)
  double_click("lsvBRLock", account)
  expect_screen "frmBRLockDate"
end

test("the screen opens from the groups and is one only", function()
  command("tvwLayout", "Finansinių operacijų apskaita", "Sąskaitų blokavimas")
  expect_screen "frmBRLock"
  expect(title(), "Sąskaitų blokavimas")
  expect(row("lsvBRLock", 1)["Sąskaita"], "0")
  expect(row("lsvBRLock", 1)["Pavadinimas"], "Likutis")
  check "chkOnlyLocked"
  expect(count "lsvBRLock", 0)
  expect(enabled "cmdDates", false)
  uncheck "chkOnlyLocked"
  select("tvwLayout", "Sąskaitų blokavimas")
  double_click("lvwObjects", "500")
  expect_screen "frmBRLock"
  expect(#screens(), 1)
  close()
end)

test("the two dates keep their order", function()
  open("O02013000")
  open_dates "500"
  expect(caption("lblAccounts"):sub(1, 4), "500 ")
  date("dtpAdmin", "2004.02.10")
  expect(text "dtpUser", "2004.02.10")
  date("dtpUser", "2004.02.29")
  expect(text "dtpAdmin", "2004.02.10")
  date("dtpUser", "2004.01.31")
  expect(text "dtpAdmin", "2004.01.31")
  choose "optNotLock"
  expect(enabled "dtpUser", false)
  choose "optLock"
  date("dtpAdmin", "")
  date("dtpUser", "")
  click "cmdWrite"
  expect_message("Nenurodyta blokavimo data!", "ok")
  expect(focus(), "dtpUser")
  click "cmdCancel"
  expect(lock_of("500")["Užblokuota iki"], "")
  close()
end)

test("a lock refuses the entries of its days and no others", function()
  open("O02013000")
  open_dates "500"
  date("dtpAdmin", "2004.02.29")
  click "cmdWrite"
  expect(lock_of("500")["Vadovo užblokuota iki"], "2004.02.29")
  expect(lock_of("500")["Užblokuota iki"], "2004.02.29")
  expect(status().locked, "Užblokuota iki 2004.02.29")
  check "chkOnlyLocked"
  expect(count "lsvBRLock", 1)
  close()

  save_purchase("2004.02.29", "100")
  expect_message("Sąskaita 500 užblokuota iki 2004.02.29!\r\n\r\nĮrašymas neatliktas !", "ok")
  expect(count "lvwBRRecords", 1, "what was typed stays")
  close()
  answer "yes"
  save_purchase("2004.03.01", "200")
  expect_books [[
    2711 500 200,00
  ]]
  close()
end)

test("all that is shown is locked and cleared at once", function()
  open("O02013000")
  local all = count "lsvBRLock"
  open_dates "2711"
  choose "optAllAccounts"
  expect(caption "lblAccounts", "Sąskaitų sąraše: " .. all)
  date("dtpUser", "2004.01.31")
  click "cmdWrite"
  expect(lock_of("0")["Užblokuota iki"], "2004.01.31")
  expect(lock_of("500")["Užblokuota iki"], "2004.01.31", "an older lock gives way")
  expect(lock_of("500")["Vadovo užblokuota iki"], "")
  check "chkOnlyLocked"
  expect(count "lsvBRLock", all)
  select("lsvBRLock", "500")
  delete_key "lsvBRLock"
  expect(message().preset, "no")
  expect_message("Ar tikrai norite panaikinti?", "yes")
  expect(count "lsvBRLock", all - 1)
  expect(status().locked, "Užblokuota iki 2004.01.31")

  -- Somebody else moves a date while the screen is open: nothing of the list is written.
  open_dates "2711"
  choose "optAllAccounts"
  choose "optNotLock"
  local other = object("O02013000")
  other:set("DateToLow", "2004.01.15")
  expect(other:save().code, 0)
  click "cmdWrite"
  expect_message("Klaida!\r\n\r\nĮrašą pakeitė kitas vartotojas: sąskaita 0", "ok")
  expect_screen "frmBRLockDate"
  click "cmdCancel"
  expect(count "lsvBRLock", all - 1)
  expect(lock_of("0")["Užblokuota iki"], "2004.01.15")

  open_dates "2711"
  choose "optAllAccounts"
  choose "optNotLock"
  click "cmdWrite"
  expect(count "lsvBRLock", 0)
  expect(status().locked, "")
  close()
  expect_clean()
end)
