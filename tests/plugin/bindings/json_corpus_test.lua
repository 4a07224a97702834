-- Reads JSON texts out of a file, each behind a line of its name and size: those named "y_..." must be accepted,
-- "n_..." refused, "i_..." may be either. What is accepted must survive being written and read again.

reaper = {}
require "reaper_MERIDEK_FELSPAR"

local exceptions = {
    ["n_multidigit_number_then_00.json"] = 0, -- a text ends at its first NUL
}

--- Whether `back` is what a text keeps of `value`: booleans become numbers, empty tables null, and lists close up,
--- in the order in which Lua walks them.
local function is_kept(value, back)
    if type(value) == "boolean" then return back == (value and 1 or 0) end
    if type(value) ~= "table" then return back == value end
    if next(value) == nil then return back == nil end
    if type(back) ~= "table" then return false end
    local count, count_back, kept = 0, 0, 0
    for key, inner in pairs(value) do
        count = count + 1
        local inner_back = back[type(key) == "number" and count or key]
        if not is_kept(inner, inner_back) then return false end
        if inner_back ~= nil then kept = kept + 1 end
    end
    for _ in pairs(back) do count_back = count_back + 1 end
    return kept == count_back
end

local function survives(value)
    local code, text = reaper.MK_Json_Serialize(value)
    if type(value) ~= "table" then return code == 0 and text == "null" end
    local read, back = reaper.MK_Json_Deserialize(text)
    return code == 0 and read == 0 and is_kept(value, back)
end

local counts, failures = { y = 0, n = 0, i = 0 }, 0
io.input(arg[1])
for line in io.lines() do
    local name, size = line:match("^(%S+) (%d+)$")
    local kind = name:sub(1, 1)
    local code, value = reaper.MK_Json_Deserialize(io.read(tonumber(size)))
    local wanted = exceptions[name] or ({ y = 0, n = 1 })[kind] or code
    if code ~= wanted or code == 0 and not survives(value) or code ~= 0 and value ~= nil then
        print(name .. ": code " .. code)
        failures = failures + 1
    end
    counts[kind] = counts[kind] + 1
end
print(("%d to accept, %d to refuse, %d of either, %d failed"):format(counts.y, counts.n, counts.i, failures))
assert(counts.y > 90 and counts.n > 180 and failures == 0)
