-- Names every track after the speaker of its first item and colours it, one colour a speaker.
-- The speaker is what stands before the first underscore or blank: "anna_012.wav" is Anna's.

local palette = {{198, 93, 87}, {214, 162, 78}, {122, 166, 92}, {84, 148, 176}, {142, 116, 178}}

local function speaker_of(track)
    local item = reaper.GetTrackMediaItem(track, 0)
    local take = item and reaper.GetActiveTake(item)
    local speaker = take and reaper.GetTakeName(take):match("^([^_ ]+)[_ ]")
    return speaker and speaker:sub(1, 1):upper() .. speaker:sub(2):lower()
end

local colours, speakers = {}, 0

local function colour_of(speaker)
    if not colours[speaker] then
        local rgb = palette[speakers % #palette + 1]
        colours[speaker] = reaper.ColorToNative(rgb[1], rgb[2], rgb[3])
        speakers = speakers + 1
    end
    return colours[speaker]
end

reaper.Undo_BeginBlock()
for index = 0, reaper.CountTracks(0) - 1 do
    local track = reaper.GetTrack(0, index)
    local speaker = speaker_of(track)
    if speaker then
        reaper.GetSetMediaTrackInfo_String(track, "P_NAME", speaker, true)
        reaper.SetTrackColor(track, colour_of(speaker))
    end
end
reaper.Undo_EndBlock("Colour tracks by speaker", -1)
reaper.ShowConsoleMsg("Speakers: " .. speakers .. "\n")
