-- The module may have a Lua of its own inside, which works on this interpreter's states: tables, strings, errors,
-- coroutines and finalizers that begin in one copy of Lua and end in the other. lua5.3 two_luas.lua

local module = "reaper_MERIDEK_FELSPAR"

local function expect_error(part, ...)
    local ok, message = pcall(...)
    assert(not ok and tostring(message):find(part, 1, true), message)
end

-- Errors. The module raises them only while it loads, through `reaper`.
reaper = 1
expect_error("attempt to index a number value", require, module)
reaper = setmetatable({}, { __newindex = function() error("raised by the script", 0) end })
expect_error("raised by the script", require, module)
reaper = setmetatable({}, { __newindex = function() error({ code = 7 }) end })
local _, thrown = pcall(require, module)
assert(thrown.code == 7)
reaper = setmetatable({}, { __newindex = function() coroutine.yield() end })
local loader = coroutine.create(function() return require(module) end)
local resumed, why = coroutine.resume(loader)
assert(not resumed and why:find("attempt to yield across a C-call boundary", 1, true), why)
local handled
xpcall(function() reaper = nil; require(module) end, function(message) handled = message end)
assert(handled:find("attempt to index a nil value", 1, true))
reaper = {}
assert(require(module) == reaper)

local serialize, deserialize = reaper.MK_Json_Serialize, reaper.MK_Json_Deserialize
local split = reaper.MK_GetStringSplitList

-- Round trips: every value is made by one copy and read by the other.
for i = 1, 20000 do
    local given = { i, i / 3, "text " .. i, { ["key " .. i % 97] = { i % 2 == 0 and "even" or "odd" } }, ("x"):rep(i % 200) }
    local code, text = serialize(given)
    local again, got = deserialize(text)
    assert(code == 0 and again == 0)
    assert(got[1] == i and got[2] == i / 3 and got[3] == "text " .. i and got[5] == given[5])
    assert(got[4]["key " .. i % 97][1] == given[4]["key " .. i % 97][1])
end

-- Tables of the module are full tables: they grow, shrink, hold weak keys and get metatables.
local ok, pieces = split(("a,"):rep(300), ",")
assert(ok and #pieces == 300)
for i = 301, 3000 do pieces[i] = "b" .. i end
for i = 1, 3000 do pieces[i] = nil end
assert(next(pieces) == nil)
local _, empty = deserialize("[]")
empty.grown, empty[1] = true, 1
assert(empty.grown and #empty == 1)
setmetatable(pieces, { __index = function(_, key) return key .. "!" end, __len = function() return 5 end })
assert(pieces.missing == "missing!" and #pieces == 5)
local weak = setmetatable({}, { __mode = "k" })
weak[select(2, split("a,b", ","))] = true
collectgarbage()
assert(next(weak) == nil, "a table of the module is collected")

-- Strings of the module are the interpreter's: short ones are the same object, long ones equal.
local _, made = deserialize('["short","' .. ("long"):rep(100) .. '"]')
assert(({ short = 1 })[made[1]] == 1 and ({ [("long"):rep(100)] = 2 })[made[2]] == 2)

-- Collection at every allocation, with finalizers that call the module while it allocates.
local finalized = 0
local function with_finalizer()
    return setmetatable(select(2, split("f,g", ",")), { __gc = function(self)
        finalized = finalized + 1
        assert(self[1] == "f" and select(2, serialize { self[2] }) == '["g"]')
    end })
end
collectgarbage("setpause", 0)
collectgarbage("setstepmul", 100000)
for i = 1, 300 do
    with_finalizer()
    local _, list = split(("p" .. i .. ","):rep(20), ",")
    assert(#list == 20 and list[20] == "p" .. i)
end
collectgarbage("setpause", 200)
collectgarbage("setstepmul", 200)
collectgarbage()
collectgarbage()
assert(finalized == 300, finalized)

-- Nothing is kept: what was made and dropped is given back.
local function churn()
    for _ = 1, 2000 do
        local _, list = split(("word,"):rep(50), ",")
        deserialize(select(2, serialize { list }))
    end
    collectgarbage()
    collectgarbage()
    return collectgarbage("count")
end
churn()
local before = churn()
assert(churn() - before < 8, "kilobytes")

-- Coroutines, with the module called at any depth of them, and abandoned ones.
local function words(text)
    return coroutine.wrap(function()
        local _, list = split(text, " ")
        for _, word in ipairs(list) do coroutine.yield((select(2, serialize { word }))) end
    end)
end
local told = {}
for i = 1, 500 do
    local next_word = words("one two three")
    told[#told + 1] = next_word() .. next_word()
    if i % 2 == 0 then next_word = nil end
end
assert(told[1] == '["one"]["two"]' and told[500] == told[1])
local function nested(depth)
    return coroutine.wrap(function()
        if depth == 0 then return (select(2, serialize { "deepest" })) end
        return nested(depth - 1)
    end)()
end
assert(nested(100) == '["deepest"]')

-- A hook of the script that raises an error: at the call of the function, and at the call inside that pushes its results.
local function split_with_error_at(nth)
    return pcall(function()
        debug.sethook(function()
            nth = nth - 1
            if nth == 0 then
                debug.sethook()
                error("from a hook")
            end
        end, "c")
        return split("a,b", ",")
    end)
end
assert(split_with_error_at(1) == false)
local returned, succeeded, none = split_with_error_at(2)
assert(returned and succeeded == false and none == nil)
local done, list = split("still,right", ",")
assert(done and list[1] == "still" and list[2] == "right")
print("two copies of Lua: passed")
