-- Lists and reports on paper and in files.

local function save_everywhere(name)
  for _, ending in ipairs { ".pdf", ".xlsx", ".rtf" } do save_report("out/reports/" .. name .. ending) end
end

test("the plan of accounts is printed and saved", function()
  command("tvwLayout", "Sąskaitų planas", "Spausdinti")
  expect_part(report(), "Sąskaitų planas")
  expect_part(report(), "| 271")
  expect_part(report(), "Kasa litais")
  save_everywhere "planas"
end)

test("any list is printed as it stands", function()
  select("tvwLayout", "Finansinių operacijų apskaita")
  double_click("lvwObjects", "Pirkimai")
  print_list "lvwObjects"
  local text = report()
  expect_part(text, "Pirkimai\n")
  expect_part(text, "| Data | Numeris | Komentaras | Suma, Lt\n")
  expect_part(text, "1\u{A0}180,00")
  save_everywhere "pirkimai"
end)

test("what was searched for stands above the list", function()
  select("tvwLayout", "Sąskaitų planas")
  enter("txtFind", "kasa")
  local found = count "lvwObjects"
  right_click "lvwObjects"
  pick "Spausdinti sąrašą"
  expect_part(report(), "Ieškota: kasa\n")
  local _, lines = report():gsub("\n|[ *]", "")
  expect(lines, found + 1, "rows with the head")
end)

test("a list of a screen is printed like any other", function()
  select("tvwLayout", "Finansinių operacijų apskaita")
  double_click("lvwObjects", "Pirkimai")
  double_click("lvwObjects", 1)
  print_list "lvwBRRecords"
  expect_part(report(), "| 204 | 450 | 1\u{A0}000,00 |")
  save_everywhere "irasai"
  close()
end)

test("the menu writes a spreadsheet where the user says", function()
  select("tvwLayout", "Įmonės")
  save_as "out/reports/įmonės"
  right_click "lvwObjects"
  pick "Eksportas į EXCEL"
  expect(message(), nil)
  right_click "lvwObjects"
  pick "Eksportas į EXCEL"
  expect(message(), nil, "given up")
  -- A folder stands where the file should go.
  export_list("lvwObjects", "out/reports/aplankas.xlsx/firmos.xlsx")
  save_as "out/reports/aplankas.xlsx"
  right_click "lvwObjects"
  pick "Eksportas į EXCEL"
  expect_part(message().text, "Nepavyko įrašyti bylos")
  answer "ok"
end)

test("a script writes below its own folder only", function()
  select("tvwLayout", "Įmonės")
  print_list "lvwObjects"
  for _, path in ipairs { "../firmos.pdf", "/firmos.pdf", "out/../../firmos.pdf", "" } do
    for _, act in ipairs { save_report, shot } do
      local done, why = pcall(act, path)
      expect(done, false, path)
      if path ~= "" then expect_part(why, "below its own folder") end
    end
  end
  local done, why = pcall(save_report, "out/firmos.doc")
  expect(done, false)
  expect_part(why, "not a kind of file")
  shot "out/reports/firmos.png"
end)

test("the preview in front is closed, the report stays at hand", function()
  select("tvwLayout", "Įmonės")
  print_list "lvwObjects"
  close_report()
  local done, why = pcall(close_report)
  expect(done, false)
  expect_part(why, "no report is open")
  expect_part(report(), "Įmonės")
end)
