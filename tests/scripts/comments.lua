-- Stock comments: kept, changed, chosen into an operation, deleted.

test("a comment is kept, changed, chosen and deleted", function()
  open("O0201500", { group = "Bendrosios operacijos" })
  enter("txtComment", "Kovo")
  click "cmdCommentList"
  expect_screen "frmCommentList"
  expect(title(), "Parinktas įrašas")
  local before = count "lvwComments"
  click "cmdNew"
  expect_screen "frmInput"
  expect(title(), "Naujas įrašas")
  enter("txtInput", "mėn. nuoma pagal 'A', sutartį")
  click "cmdOk"
  expect_screen "frmCommentList"
  expect(count "lvwComments", before + 1)
  command("lvwComments", "mėn. nuoma pagal ’A’, sutartį", "Įrašo redagavimas")
  expect(title(), "Įrašo redagavimas")
  enter("txtInput", "mėn. nuoma")
  click "cmdOk"
  command("lvwComments", "mėn. nuoma", "Įrašo redagavimas")
  click "cmdCancel"
  expect(count "lvwComments", before + 1)
  double_click("lvwComments", "mėn. nuoma")
  expect_screen "frmBROper"
  expect(text "txtComment", "Kovo mėn. nuoma")

  click "cmdCommentList"
  command("lvwComments", "mėn. nuoma", "Panaikinti įrašą")
  expect_message("Ar tikrai norite panaikinti?", "yes")
  expect(count "lvwComments", before)
  click "cmdCancel"
  expect(text "txtComment", "Kovo mėn. nuoma")
  close()
  answer "yes"
end)
