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

-- Whether a text holds `part`, or a list holds it as an item.
function has(holder, part)
  if type(holder) == "string" then return holder:find(part, 1, true) ~= nil end
  for _, item in ipairs(holder) do
    if item == part then return true end
  end
  return false
end

function expect_part(text, part)
  if not has(text, part) then error(show(part) .. " is not in\n" .. show(text), 2) end
end

function expect_no_part(text, part)
  if has(text, part) then error(show(part) .. " is in\n" .. show(text), 2) end
end

local function expect_box(fits, text, reply)
  local box = message()
  if not box then error("no message is open, expected " .. show(text), 3) end
  if not fits(box.text, text) then
    error("expected message " .. show(text) .. ", got " .. show(box.text), 3)
  end
  if reply then answer(reply) end
end

function expect_message(text, reply)
  expect_box(function(shown, whole) return shown == whole end, text, reply)
end

function expect_message_part(part, reply) expect_box(has, part, reply) end

-- An entry of the menu of a row, and of a row in the list that a node of the tree shows.
function command(control, row, entry)
  right_click(control, row)
  pick(entry)
end

function list_command(node, row, entry)
  select("tvwLayout", node)
  command("lvwObjects", row, entry)
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
