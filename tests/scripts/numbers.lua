-- Running numbers of documents: offered, drawn at the save, changed by hand, by two users in turn.

local group = "Bendrosios operacijos"

local function new()
  open("O0201500", { group = group })
  expect_screen "frmBROper"
  return tonumber(text "txtNumber")
end

local function write()
  click "cmdWrite"
  expect(message(), nil)
  return tonumber(text "txtNumber")
end

local function numbered(number) return string.format("%04d", number) end

test("two screens are offered the same number; each gets one of its own", function()
  local first = new()
  enter("txtComment", "pirma")
  expect(new(), first)
  expect(write(), first)
  close()
  expect(text "txtComment", "pirma")
  expect(write(), first + 1, "the other one was faster")
  expect(title(), today() .. " " .. numbered(first + 1))
  close()
  expect(new(), first + 2)
  enter("txtComment", "apsigalvota")
  close()
  answer "yes"
  expect(new(), first + 2, "a document that was given up leaves no gap")
  write()
  close()
end)

test("a typed number is kept, or told to be taken", function()
  local next = new()
  enter("txtNumber", numbered(next - 1))
  click "cmdWrite"
  expect_message("Toks įrašas jau egzistuoja!\r\n\r\nĮrašymas neatliktas !", "ok")
  expect(text "txtNumber", numbered(next - 1), "what was typed stays")
  double_click "lblNumber"
  expect(tonumber(text "txtNumber"), next)
  enter("txtNumber", numbered(next + 5))
  expect(write(), next + 5)
  close()
  expect(new(), next + 6)
  enter("txtNumber", "be eilės")
  click "cmdWrite"
  expect(message(), nil)
  close()
  expect(new(), next + 6, "a text without a number is outside the counter")
  close()
end)

local function ask(number)
  click "cmdTools"
  pick "Auto numerio nustatymas"
  expect_screen "frmInput"
  expect(caption "txtInput", "Operacijos eilės numeris: ")
  if number then
    enter("txtInput", number)
    click "cmdOk"
  else
    click "cmdCancel"
  end
end

test("the number in the counter is changed by hand", function()
  local next = new()
  ask(nil)
  ask("x")
  ask(tostring(next))
  expect(message(), nil)
  ask("40")
  expect(message().title, "Auto numerio pakeitimas")
  expect_message("Pakeisti operacijos eilės numerį į 40?", "no")
  expect(text "txtNumber", numbered(next))
  ask("40")
  answer "yes"
  expect(text "txtNumber", "0040", "the text shows what will be kept")
  expect(write(), 40)
  close()
  expect(new(), 41)
  close()
end)

local function come_in(user)
  login()
  enter("txtUser", user)
  click "cmdOk"
  expect_screen "frmPassword"
  click "cmdCancel"
end

test("another user goes on where the first one stopped", function()
  select("tvwLayout", "Vartotojai")
  right_click "lvwObjects"
  pick "Naujas vartotojas"
  enter("txtLogin", "rasa")
  enter("txtName", "Rasa Rasaitė")
  enter("txtUserPref", "RR")
  choose("cmbRoleID", "Vyr. buhalteris")
  uncheck "chkMustChange"
  click "cmdWrite"
  close()

  local next = new()
  write()
  close()
  come_in "rasa"
  expect(new(), next + 1)
  expect(write(), next + 1)
  close()
  come_in "admin"
  expect(new(), next + 2)
  write()
  close()
  expect_clean()
end)
