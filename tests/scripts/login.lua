-- Passwords: given by an administrator, changed by the user, guessed by somebody else.

local function come_in(user, password)
  login()
  expect_screen "frmLogin"
  enter("txtUser", user)
  enter("txtPassword", password)
  click "cmdOk"
end

test("an administrator gives a password", function()
  select("tvwLayout", "Vartotojai")
  right_click "lvwObjects"
  pick "Naujas vartotojas"
  enter("txtLogin", "rasa")
  enter("txtName", "Rasa Rasaitė")
  choose("cmbRoleID", "Buhalteris")
  enter("txtPassword", "kasos raktas")
  enter("txtAgain", "kasos raktas")
  click "cmdWrite"
  expect(text "txtPassword", "")
  expect(caption "lblState", "Slaptažodis nustatytas.")
  close()
end)

test("he must change the password before he comes in", function()
  come_in("rasa", "kasos raktas")
  expect_screen "frmPassword"
  expect(caption "lblReason", "Slaptažodį reikia pasikeisti.")
  expect(visible "txtOld", false)
  click "cmdCancel"
  expect_screen "frmLogin"
  expect(caption "lblRefusal", "Prisijungti galima tik pasikeitus slaptažodį.")
  enter("txtPassword", "kasos raktas")
  click "cmdOk"
  enter("txtNew", "kasos raktas")
  enter("txtAgain", "kasos raktas")
  click "cmdOk"
  expect_message("Naujas slaptažodis turi skirtis nuo dabartinio!\r\n\r\nĮrašymas neatliktas !", "ok")
  enter("txtNew", "mano paslaptis")
  enter("txtAgain", "mano paslaptis")
  click "cmdOk"
  expect_screen "frmList"
end)

test("his own password is changed from the menu", function()
  open "O0000820"
  expect_screen "frmPassword"
  expect(text "txtLogin", "rasa")
  enter("txtOld", "spėju")
  enter("txtNew", "rytas vakaras")
  enter("txtAgain", "rytas")
  click "cmdOk"
  expect_message("Pakartotas slaptažodis nesutampa su nauju!", "ok")
  enter("txtAgain", "rytas vakaras")
  click "cmdOk"
  expect_message("Neteisingas dabartinis slaptažodis!\r\n\r\nĮrašymas neatliktas !", "ok")
  enter("txtOld", "mano paslaptis")
  fault(1, 1205, "Duomenų bazė užimta, bandykite dar kartą!")
  click "cmdOk"
  expect_message("Duomenų bazė užimta, bandykite dar kartą!\r\n\r\nĮrašymas neatliktas !", "ok")
  click "cmdOk"
  expect_screen "frmList"
  restart()
  expect_screen "frmList"
end)

test("wrong passwords lock the login until an administrator unlocks it", function()
  login()
  enter("txtUser", "rasa")
  for left = 4, 1, -1 do
    enter("txtPassword", "mano paslaptis")
    click "cmdOk"
    expect(caption "lblRefusal",
           "Neteisingas vartotojo vardas arba slaptažodis! Liko bandymų: " .. left .. ".")
  end
  enter("txtPassword", "mano paslaptis")
  click "cmdOk"
  enter("txtPassword", "rytas vakaras")
  click "cmdOk"
  expect(caption "lblRefusal", "Prisijungimas užrakintas iki 2004.03.31 09:15:00, nes slaptažodis " ..
         "įvestas neteisingai 5 kartus iš eilės. Anksčiau atrakinti gali administratorius.")
  enter("txtUser", "admin")
  enter("txtPassword", "")
  click "cmdOk"
  expect_screen "frmPassword"
  expect(caption "lblReason", "Prisijungta be slaptažodžio. Galite jį nustatyti dabar.")
  click "cmdCancel"
  expect_screen "frmList"

  select("tvwLayout", "Vartotojai")
  local rasa = find_row("lvwObjects", { ["Būsena"] = "užrakintas" })
  double_click("lvwObjects", rasa)
  expect(caption "lblState", "Prisijungimas užrakintas iki 2004.03.31 09:15:00")
  click "cmdUnlock"
  expect(enabled "cmdUnlock", false)
  close()
  come_in("rasa", "rytas vakaras")
  expect_screen "frmList"
  come_in("admin", "")
  expect_screen "frmList"  -- the offer was declined once
end)

test("failures, the lock and its end stand in the protocol", function()
  select("tvwLayout", "Administravimo protokolas")
  for _, act in ipairs { "Nepavykęs prisijungimas", "Prisijungimas užrakintas",
                         "Prisijungimas atrakintas", "Pakeistas savo slaptažodis",
                         "Nustatytas slaptažodis" } do
    find_row("lvwObjects", { ["Veiksmas"] = act, ["Kam, ką"] = "rasa" })
  end
end)
