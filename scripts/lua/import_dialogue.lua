-- Imports localised lines against the lines of the base language, levelled to them, and lays the lines that
-- found no partner behind the rest, each under a region of its name.
--
--     felspar run import_dialogue.lua --save import.rpp -- SUBJECT_FOLDER BASE_FOLDER

local own_folder = select(2, reaper.get_action_context()):match("^.*[/\\]") or ""
dofile(own_folder .. "module_path.lua")
require "reaper_MERIDEK_FELSPAR"

local subject, base = ...
if not base then
    local answered, folders =
        reaper.GetUserInputs("Import dialogue", 2, "Subject folder,Base folder,extrawidth=300", ",")
    if not answered then return end
    subject, base = folders:match("^(.-),(.*)$")
end

local from_start, levelled, not_ridden, lightest = 0, true, false, 0
local seconds_between = 0.5

local function mark(path)
    if reaper.InsertMedia(path, 0) == 0 then return end
    local item = reaper.GetSelectedMediaItem(0, 0)
    local begin = reaper.GetMediaItemInfo_Value(item, "D_POSITION")
    local length = reaper.GetMediaItemInfo_Value(item, "D_LENGTH")
    local red = reaper.ColorToNative(220, 40, 40) | 0x1000000
    reaper.AddProjectMarker2(0, true, begin, begin + length, "No partner: " .. path:match("[^/\\]+$"), -1, red)
    reaper.SetEditCurPos(begin + length + seconds_between, false, false)
end

reaper.Undo_BeginBlock()
local code, unmatched = reaper.MK_LINGOMAT_InsertMediaItems(
    subject, base, 0, seconds_between, from_start, levelled, not_ridden, lightest, {})
if code == 0 and #unmatched > 0 then
    table.sort(unmatched)
    reaper.SetOnlyTrackSelected(reaper.MK_InsertTrackSearchUniqueOnly(0, "no partner"))
    reaper.CSurf_GoEnd()
    for _, path in ipairs(unmatched) do mark(path) end
end
reaper.Undo_EndBlock("Import dialogue", -1)

reaper.ShowConsoleMsg(code == 0 and "Lines without a partner: " .. #unmatched .. "\n" or "The import failed\n")
