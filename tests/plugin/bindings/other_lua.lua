-- The module of an archive in an interpreter before Lua 5.3.4: it is refused, and the interpreter goes on.
reaper = {}
for _ = 1, 2 do
    local loaded, message = pcall(require, "reaper_MERIDEK_FELSPAR")
    assert(not loaded and message:find("reaper_MERIDEK_FELSPAR needs Lua 5.3.4 or a later 5.3", 1, true), message)
end
collectgarbage()
assert(next(reaper) == nil and MK_FELSPAR == nil)
