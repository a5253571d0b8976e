-- Payment templates: instalments that share 100 percent, groups, and what others did meanwhile.

local kind = "Apmokėjimo šablonai"

local function instalment(days, percent)
  expect_screen "frmTemplateItem"
  enter("txtDays", days)
  if percent then enter("txtPercent", percent) end
  click "cmdWrite"
end

local function shown()
  local lines = {}
  for i = 1, count "lvwPaymentTemplate" do
    local line = row("lvwPaymentTemplate", i)
    lines[i] = line[1] .. ":" .. line[2]
  end
  return table.concat(lines, " ")
end

local template

test("instalments take what is left", function()
  list_command(kind, "Per 30 dienų", "Naujas apmokėjimo šablonas")
  expect(caption "SOPanel", "Įmokų šablonas")
  enter("txtName", "Trimis dalimis")
  click "cmdNewItem"
  expect(title(), "Įmoka")
  expect(text "txtPercent", "100", "all that is left")
  instalment("60", "30")
  expect(text "txtPercent", "70", "goes on with the rest")
  instalment("10 d.", "20")
  expect(text "txtPercent", "50")
  close()
  expect(shown(), "10:20% 60:30%")
  expect(caption "lblRest", "Liko paskirstyti: 50%")
  insert_key "lvwPaymentTemplate"
  instalment("90", "80")
  expect(shown(), "10:20% 60:30% 90:50%", "no more than is left")
  expect(enabled "cmdNewItem", false)
  insert_key "lvwPaymentTemplate"
  expect_screen "frmPaymentTemplate"  -- nothing is left to give out

  double_click("lvwPaymentTemplate", 1)
  enter("txtPercent", "5")
  enter("txtDays", "61")
  click "cmdWrite"
  expect(shown(), "60:30% 61:5% 90:50%")
  delete_key "lvwPaymentTemplate"
  expect(shown(), "61:5% 90:50%")
  click "cmdWrite"
  expect(message(), nil)
  expect(title(), "Trimis dalimis")
  template = books.saved()[#books.saved()]
  close()
  open(template)
  expect(shown(), "61:5% 90:50%")
  double_click("lvwPaymentTemplate", 1)
  enter("txtDays", "1")
  click "cmdWrite"
  close()
  expect_message("Uždaryti be pakeitimų išsaugojimo?", "no")
  click "cmdWrite"
  expect(message(), nil)
  expect(shown(), "1:5% 90:50%")
  close()
end)

test("a group, and a template in it", function()
  list_command(kind, "Per 30 dienų", "Nauja apmokėjimo šablonų grupė")
  expect(caption "SOPanel", "Apmokėjimo šablonų grupė")
  expect(visible "lvwPaymentTemplate", false)
  enter("txtName", "Nuomos")
  click "cmdWrite"
  expect(message(), nil)
  close()
  list_command(kind, "Nuomos", "Naujas apmokėjimo šablonas")
  enter("txtName", "Iš karto")
  click "cmdWrite"
  click "SSCNew"
  expect(text "txtName", "")
  enter("txtName", "Vėliau")
  click "cmdWrite"
  close()
  expand("tvwLayout", kind)
  select("tvwLayout", "Nuomos")
  expect(count "lvwObjects", 2)
  list_command(kind, "Nuomos", "Panaikinti")
  answer "yes"
  expect(message() ~= nil, true, "templates stand in it")
  answer "ok"
end)

test("others were faster", function()
  open(template)
  enter("txtName", " ")
  click "cmdWrite"
  expect(message().icon, "stop")
  expect_message_part("\r\nKlaida!", "ok")
  enter("txtName", "Mano")
  local other = object(template)
  other:set("Name", "Kito")
  expect(other:save().code, 0)
  click "cmdWrite"
  expect_message_part("pakeitė kitas vartotojas", "ok")
  expect(text "txtName", "Mano")
  close()
  answer "yes"

  open(template)
  right_click "SSCClose"
  expect_message("Ar tikrai norite panaikinti?\r\nKito", "no")
  activate "frmList"
  list_command(kind, "Kito", "Panaikinti")
  answer "yes"
  activate "frmPaymentTemplate"
  right_click "SSCClose"
  answer "yes"
  expect_message("Objektas panaikintas!", "ok")
  expect(screen() ~= "frmPaymentTemplate", true)
  expect_clean()
end)
