-- Plots the peak level of every selected item, or of all when none is selected: one row for each tenth of a
-- second, from silence on the left to full scale on the right.

local own_folder = select(2, reaper.get_action_context()):match("^.*[/\\]") or ""
dofile(own_folder .. "module_path.lua")
require "reaper_MERIDEK_FELSPAR"

local records_a_row = 100 -- there is one a millisecond
local lowest_db, columns = -60, 60

local function loudest(peaks, first)
    local level = lowest_db
    for index = first, math.min(first + records_a_row - 1, #peaks) do
        level = math.max(level, peaks[index].MaxPeak, peaks[index].MinPeak)
    end
    return level
end

local function plot(item)
    local read, peaks = reaper.MK_GetMediaItemPeakList(item)
    if not read then return end
    reaper.ShowConsoleMsg(reaper.GetTakeName(reaper.GetActiveTake(item)) .. "\n")
    for first = 1, #peaks, records_a_row do
        local level = loudest(peaks, first)
        local bar = ("#"):rep(math.floor((level - lowest_db) / -lowest_db * columns + 0.5))
        reaper.ShowConsoleMsg(("%7.1f s %6.1f dB |%s\n"):format(peaks[first].Time, level, bar))
    end
end

local selected = reaper.CountSelectedMediaItems(0)
local count = selected > 0 and selected or reaper.CountMediaItems(0)
for index = 0, count - 1 do
    plot(selected > 0 and reaper.GetSelectedMediaItem(0, index) or reaper.GetMediaItem(0, index))
end
