-- Calls each of the module's functions with what nobody should give it, and expects it to return. The chunk's
-- result, which is also printed, is the number of calls.

local loop = {}
loop[1], loop.loop = loop, loop
local nested = {}
for _ = 1, 5000 do nested = { nested } end
local values = {
    false, true, 0, -1, 1 << 31, math.mininteger, 1e308, 0 / 0, -1 / 0, "", "\xff\0x", ("x"):rep(1 << 20),
    ("[{"):rep(1 << 19), ("\xe3\x81"):rep(1 << 19), {}, { 1, x = 2 }, { "a", {}, print }, loop, nested,
    { [1.5] = 0 / 0, [true] = 1 }, print, coroutine.create(print), io.stdout, reaper,
}
local max_arguments = 9

local calls = 0
local function call(name, ...)
    calls = calls + 1
    assert(select("#", MK_FELSPAR[name](...)) > 0, name)
end

for name in pairs(MK_FELSPAR) do
    call(name)
    for _, value in ipairs(values) do
        local row = {}
        for place = 1, max_arguments do
            call(name, table.unpack({ [place] = value }, 1, place))
            row[place] = value
        end
        call(name, table.unpack(row))
    end
end

-- A hook that changes the arguments of what the module calls inside.
local functions = {}
for _, f in pairs(MK_FELSPAR) do functions[f] = true end
debug.sethook(function()
    local caller = debug.getinfo(3, "f")
    if caller and functions[caller.func] then debug.setlocal(2, 1, nil) end
end, "c")
for name in pairs(MK_FELSPAR) do call(name, "[1]", ",") end
debug.sethook()
print(calls .. " calls")
return calls
