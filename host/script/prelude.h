// The part of the script language that is written in itself.
#pragma once

namespace tolvex::script {

inline constexpr const char* kPrelude = R"lua(
local function show(value)
  if type(value) == "string" then return '"' .. value .. '"' end
  return tostring(value)
end

function expect(got, want, what)
  if got ~= want then
    local head = what and what .. ": " or ""
    error(head .. "expected " .. show(want) .. ", got " .. show(got), 2)
  end
end

function expect_message(text, reply)
  local box = message()
  if not box then error("no message is open, expected " .. show(text), 2) end
  if box.text ~= text then
    error("expected message " .. show(text) .. ", got " .. show(box.text), 2)
  end
  if reply then answer(reply) end
end

function expect_screen(name)
  if screen() ~= name then
    error("expected screen " .. name .. ", got " .. tostring(screen()), 2)
  end
end

function find_row(list, cells)
  for i = 1, count(list) do
    local candidate, fits = row(list, i), true
    for name, text in pairs(cells) do fits = fits and candidate[name] == text end
    if fits then return i end
  end
  error("no such row in " .. list, 2)
end

-- Lines "debit credit sum": the entries, in order, of the operations that this test has saved.
-- Lines "account = sum": the account's rest today.
function expect_books(text)
  local wanted, rests = {}, {}
  for line in text:gmatch("[^\n]+") do
    line = line:gsub("^%s+", ""):gsub("%s+$", ""):gsub("%s+", " ")
    local account, sum = line:match("^(%S+) = (%S+)$")
    if account then rests[#rests + 1] = { account, sum }
    elseif line ~= "" then wanted[#wanted + 1] = line end
  end
  local got = {}
  for _, reference in ipairs(books.saved()) do
    if reference:sub(1, 6) == "O02015" then
      for _, entry in ipairs(books.entries(reference)) do
        got[#got + 1] = entry.debit .. " " .. entry.credit .. " " .. entry.text
      end
    end
  end
  local want, have = table.concat(wanted, "\n"), table.concat(got, "\n")
  if want ~= have then error("expected books\n" .. want .. "\ngot\n" .. have, 2) end
  local balances = #rests > 0 and books.balances() or {}
  for _, rest in ipairs(rests) do
    local have = books.text(balances[rest[1]] or 0)
    if have ~= rest[2] then
      error("expected " .. rest[1] .. " = " .. rest[2] .. ", got " .. have, 2)
    end
  end
end

function expect_clean()
  local findings = books.verify()
  if #findings > 0 then error("the books are not clean:\n" .. table.concat(findings, "\n"), 2) end
end
)lua";

}  // namespace tolvex::script
