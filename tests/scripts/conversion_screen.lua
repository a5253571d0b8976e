-- The screen of the conversion up to the conversion itself: a new account by its card, counterparts,
-- a copy and the way back to it.

local function at(text) return find_row("lsvCovert", { ["Sąskaitų planas"] = text }) end

test("an account of the new plan by its card", function()
  command("tvwLayout", "Sąskaitų planas", "Sąskaitų konvertavimas")
  command("tvwLayout", "Sąskaitų planas", "Sąskaitų planai")
  select("tvwLayout", "Sąskaitų planas")
  activate "frmList"
  local class = books.call("DO0200401_GetAccountPlan").value[1]
  command("lvwObjects", class.OIDR, "Nauja sąskaita")
  enter("txtAccount", "11")
  enter("txtName", "Programos")
  click "cmdEnter"
  expect(#books.call("DO0200401_GetAccountPlan").value, 2)
end)

test("counterparts are chosen, cleared and matched", function()
  command("tvwLayout", "Sąskaitų planas", "Sąskaitų konvertavimas")
  local account = books.call("DO0200401_GetAccountPlan").value[2]
  select("lsvCovert", at "112 Programinė įranga")
  drop("lsvCovert", account.OIDR)
  expect(row("lsvCovert")["Naujas sąskaitos"], "11 Programos")
  delete_key "lsvCovert"
  expect(row("lsvCovert")["Naujas sąskaitos"], "")
  command("lsvCovert", at "112 Programinė įranga", "Parinkti sąskaitas automatiškai")
  expect(row("lsvCovert")["Naujas sąskaitos"], "11 Programos")
  expect(row("lsvCovert", at "1127 Programinės įrangos amortizacija (-)")["Naujas sąskaitos"],
         "11 Programos", "what stands below it as well")
  expect(row("lsvCovert", at "120 Žemė")["Naujas sąskaitos"], "")
  command("lsvCovert", at "112 Programinė įranga", "Padėti ant darbo stalo")
  expect_screen "frmAccountPlan"
end)

test("a copy is made and restored", function()
  command("tvwLayout", "Sąskaitų planas", "Sąskaitų konvertavimas")
  expect(enabled "cmdConvert", false)
  click "cmdBackUp"
  expect_message("Atsarginė kopija išsaugota kietajame diske.", "ok")
  select("lsvCovert", at "112 Programinė įranga")
  delete_key "lsvCovert"
  click "cmdRestore"
  expect_message("Atsarginė kopija atstatyta.", "ok")
  expect(row("lsvCovert", at "112 Programinė įranga")["Naujas sąskaitos"], "11 Programos")
  expect_clean()
end)
