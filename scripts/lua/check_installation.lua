-- Tells whether the workstation has loaded the library, and whether it answers: run it as an action. With an item of
-- an audio file selected it also reads the item's levels.

local failures = 0

local function check(what, is_well)
    reaper.ShowConsoleMsg((is_well and "ok      " or "FAILED  ") .. what .. "\n")
    if not is_well then failures = failures + 1 end
end

local function module_answers()
    local code, object = reaper.MK_Json_Deserialize('{"list": [1, 2.5, "three"]}')
    return code == 0 and #object.list == 3 and object.list[3] == "three"
end

check("the workstation has loaded the library", reaper.APIExists("MK_GetTrackItemMute"))

local own_folder = select(2, reaper.get_action_context()):match("^.*[/\\]") or ""
dofile(own_folder .. "module_path.lua")
local is_found, problem = pcall(require, "reaper_MERIDEK_FELSPAR")
check("require finds the library" .. (is_found and "" or ": " .. tostring(problem)), is_found)
check("the library answers", is_found and module_answers())

local function is_audio(item)
    local take = reaper.GetActiveTake(item)
    local kind = take and reaper.GetMediaSourceType(reaper.GetMediaItemTake_Source(take), "") or "EMPTY"
    return kind ~= "EMPTY" and not kind:find("^MIDI")
end

local item = reaper.GetSelectedMediaItem(0, 0)
if item and is_found and is_audio(item) then
    check("the library reads the item's levels", (reaper.MK_GetMediaItemPeakList(item)))
end
if reaper.APIExists("BR_EnvAlloc") then
    check("the SWS extension is there, for the ride and the loudness functions", true)
else
    reaper.ShowConsoleMsg("note    the SWS extension is not there: the ride and the loudness functions need it\n")
end
reaper.ShowConsoleMsg(failures == 0 and "All is well.\n" or "Failed: " .. failures .. "\n")
