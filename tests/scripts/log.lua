-- The log of an operation with old and new values, and the undo of its saves.

local function saved_operation()
  open("O0201500", { group = "Bendrosios operacijos" })
  click "cmdNewEntry"
  enter("cmbAccountD", "2721")
  enter("cmbAccountC", "240")
  enter("txtSuma", "10")
  click "cmdWrite"
  enter("txtComment", "Grąža")
  click "cmdWrite"
end

test("what was changed stands in the log and is taken back", function()
  saved_operation()
  click "cmdTools"
  pick "Protokolas"
  expect_message_part("Administratorius", "ok")

  enter("txtComment", "Klaida")
  double_click("lvwBRRecords", 1)
  enter("txtSuma", "12,5")
  click "cmdWrite"
  click "cmdTools"
  pick "Atšaukti paskutinį įrašymą"
  expect_message("Operacija pakeista, pirmiausia įrašykite arba atšaukite!", "ok")
  click "cmdWrite"
  click "cmdTools"
  pick "Pakeitimai"
  expect_screen "BRLog"
  expect(count "lvwLog", 2)
  expect(row("lvwLog", 1)["Veiksmas"], "Pakeista")
  expect(row("lvwChanges", 1)["Kas pakeista"], "Komentaras")
  expect(row("lvwChanges", 1)["Buvo"], "Grąža")
  expect(row("lvwChanges", 1)["Yra"], "Klaida")
  expect(row("lvwChanges", 2)["Yra"], today() .. " 2721 240 12,50")
  select("lvwLog", 2)
  expect(row("lvwChanges", 1)["Kas pakeista"], "Data")
  click "cmdClose"

  click "cmdTools"
  pick "Atšaukti paskutinį įrašymą"
  expect_message_part("Komentaras: Grąža → Klaida", "no")
  expect(text "txtComment", "Klaida")
  click "cmdTools"
  pick "Atšaukti paskutinį įrašymą"
  answer "yes"
  expect(message(), nil)
  expect(text "txtComment", "Grąža")
  expect(row("lvwBRRecords", 1)["Suma, Lt"], "10,00")
  expect_clean()

  click "cmdTools"
  pick "Atšaukti paskutinį įrašymą"
  expect_message_part("Operacija bus panaikinta!", "yes")
  expect(screen() ~= "frmBROper", true, "the screen of an operation that is gone is closed")
  expect_clean()
end)
