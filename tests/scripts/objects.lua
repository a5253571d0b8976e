-- The object contract without a screen, as an integrator uses it.

test("a stored operation is read with its entries, currency and addressees", function()
  local operation = object "O02015001"
  expect(operation:get "OIDR", "O02015001")
  local entries = operation:rows "BR"
  expect(#entries > 0, true)
  expect(type(entries[1].SumA), "number")
  expect(entries[#entries + 1], nil)
  expect(#entries[1]:rows "BRProperties" > 0, true, "addressees")
  expect(object "O0201500999999", nil)
end)

test("empty and null are told apart", function()
  local fresh = object "O0201500"
  expect(fresh:get "OIDR", empty)
  local stored = object "O02015001"
  expect(stored:get "VATRegisterIndication" ~= empty, true)
  fresh:set("Comment", null)
  expect(fresh:get "Comment", null)
  expect(null == empty, false)
end)

test("an operation is made, refused, saved and read back", function()
  local operation = object "O0201500"
  operation:set("DateD", "2004.03.31")
  operation:set("Number", "T-1")
  operation:set("BROperGroupID", 2)
  local made = operation:methods("AddBR", { "2721", "500", 100.5, {} })
  expect(made.code, 0)
  expect(#made.value, 36)

  local refused = operation:methods("AddBR", { "2721" })
  expect(refused.code, 777)
  expect(refused.text, "Method AddBR_0:\r\nKlaidingi parametrai !")

  fault(1, 1205, "Duomenų bazė užimta, bandykite dar kartą!")
  local failed = operation:save()
  expect(failed.code, 1205)
  expect(#operation:rows "BR", 1, "entries after a failed save")

  expect(operation:save().code, 0)
  local reference = operation:reference()
  expect(object(reference):rows("BR")[1].SumA, 100.5)
  expect_books [[ 2721 500 100,50 ]]
  expect_clean()
end)

test("keyed reads reach the store by name, wrong ones are refused", function()
  local operation = object "O0201500"
  local debts = operation:properties("Debts1", "'0','240','2004.03.31','O00001003',1")
  expect(debts.code, 0)
  expect(#debts.value, 1)
  expect(debts.value[1].LikutisLt, 1360)
  local call = trace()[#trace()]
  expect(call.name, "GetDebts1")
  expect(call.parameters, "'0','240','2004.03.31','O00001003',1")

  local unknown = books.call "GetNothing"
  expect(unknown.code, 1206)
  local wrong = books.call("GetDebts1", "'0'")
  expect(wrong.code, 1207)
  expect_part(wrong.text, "GetDebts1")
end)

test("a failing read is shown once and returned", function()
  local operation = object "O0201500"
  fault(1, 1299, "Ryšys nutrūko")
  local result = operation:properties("CurrencyList", "2004.03.31")
  expect(result.code, 1299)
  expect(result.text, "Ryšys nutrūko")
  expect(table.concat(shown(), "|"), "Ryšys nutrūko")
  expect(operation:properties("CurrencyList", "2004.03.31").code, 0)
  expect(#shown(), 0)
end)

test("balances of the demo company", function()
  local rests = books.balances "2004.03.31"
  for account, sum in pairs { ["2711"] = 47090, ["204"] = 32600, ["240"] = 1360, ["536"] = 100,
                              ["636"] = 30, ["301"] = 82000 } do
    expect(rests[account], sum, account)
  end
end)
