-- The module in Lua's own interpreter, where there is no host: lua5.3 stock_lua_test.lua

local module = "reaper_MERIDEK_FELSPAR"
local names = {
    "GetTrackItemList", "GetTrackItemChildList", "GetTrackIdChildList", "GetSelectedTrackIdChildList",
    "GetTrackDepthList", "GetSamePerfectTrackNameList", "GetIncludePerfectTrackNameList", "GetFilePathList",
    "GetStringSplitList", "GetUserInputList", "GetMediaItemPeakList", "GetMediaIdPeakList",
    "GetSelectedMediaIdPeakList", "GetPathInfo", "Json_Deserialize", "Json_Serialize",
    "SetMediaItemListRIDESCRIBER", "LINGOMAT_InsertMediaItems",
}

local folder = arg[0]:match("^(.*)/")
dofile(folder .. "/show.lua")

local function expect(wanted, ...)
    local shown = show(...)
    if shown ~= wanted then error(shown .. " instead of " .. wanted, 2) end
end

for _, no_table in ipairs { false, 1, "text" } do
    reaper = no_table or nil
    local loaded, message = pcall(require, module)
    assert(not loaded and message:find("attempt to index a " .. type(reaper) .. " value"), message)
end
reaper = {}
assert(require(module) == reaper and require(module) == reaper)
package.loaded[module] = nil
assert(require(module) == reaper)
for _, functions in ipairs { reaper, MK_FELSPAR } do
    local count = 0
    for _ in pairs(functions) do count = count + 1 end
    assert(count == #names, count)
end
for _, name in ipairs(names) do
    local entry = MK_FELSPAR["MK_" .. name]
    assert(type(entry) == "function" and rawequal(reaper["MK_" .. name], entry), name)
end

expect("true {1=a 2= 3=b}", reaper.MK_GetStringSplitList("a,;b", ",;"))
expect("true {1= 2=f}", reaper.MK_GetStringSplitList(",f,", ","))
expect("true {1=g,h}", reaper.MK_GetStringSplitList("g,h", ""))
expect("true {}", reaper.MK_GetStringSplitList(1, 2))
local found, files = reaper.MK_GetFilePathList(folder, "lua")
for i, file in ipairs(files) do files[i] = file:gsub("\\", "/") end -- the system's own separator
table.sort(files)
assert(found and files[#files] == folder .. "/two_luas.lua", show(files))
local code, path = reaper.MK_GetPathInfo(arg[0])
assert(code == 0 and path.ParentName == "bindings" and path.Extension == "lua" and path.Type == "File", show(path))
expect("Folder", select(2, reaper.MK_GetPathInfo(folder)).Type)
expect("1 {}", reaper.MK_GetPathInfo("/no such path"))
if package.config:sub(1, 1) == "\\" then -- Windows
    local _, temporary = reaper.MK_GetPathInfo(os.getenv("TEMP") .. "\\")
    assert(temporary.Type == "Folder", show(temporary))
    local of_server = "\\\\.\\" .. temporary.ParentPath -- begins like the path of a server
    local _, named = reaper.MK_GetPathInfo(of_server)
    assert(named.FilePath == of_server, show(named))
end

expect('0 [1,2.5,"a",1]', reaper.MK_Json_Serialize { 1, 2.5, "a", true })
expect('0 {"a":"x","k":null}', reaper.MK_Json_Serialize { k = {}, a = "x", f = print })
expect("0 [3,0,5000000000.0,null]", reaper.MK_Json_Serialize { 3.0, -0.0, 5000000000, 0 / 0 })
expect('0 {"a":"x"}', reaper.MK_Json_Serialize { a = "x\0y", [print] = 1 })
expect("0 [1]", reaper.MK_Json_Serialize { [7] = 1 })
expect("0 null", reaper.MK_Json_Serialize {})
expect("0 null", reaper.MK_Json_Serialize("no table"))
expect("1 nil", reaper.MK_Json_Serialize { 1, a = 2 })
expect("1 ", reaper.MK_Json_Serialize { "\xff" })
expect("0 {1=1 3={k=true} 4=0.5 5={}}", reaper.MK_Json_Deserialize('[1,null,{"k":true,"none":null},0.5,{}]'))
expect("0 -1294967296", reaper.MK_Json_Deserialize("3000000000"))
expect("1 nil", reaper.MK_Json_Deserialize())
for _, text in ipairs { "[1]\0x", "\xef\xbb\xbf[1]", "[1]\r\n\t " } do
    expect("0 {1=1}", reaper.MK_Json_Deserialize(text))
end
expect("0 {1=\u{1f600} 2=1e+300 3=0.0}", reaper.MK_Json_Deserialize('["\\ud83d\\ude00",1e300,1e-400]'))
for _, text in ipairs { "", " ", "nul", "[01]", "[-]", "[1,]", "[1]x", "[NaN]", "[1e400]", "{1:2}", "['a']", '["\t"]',
                        '["\0"]', '["\\x"]', '["\\ud800"]', '{"a"}', "[1}", '["a' } do
    expect("1 nil", reaper.MK_Json_Deserialize(text))
end
for _, no_utf8 in ipairs { "\xff", "\xc0\xaf", "\xed\xa0\x80", "\xe3\x81", "\xf4\xbf\xbf\xbf" } do
    expect("1 nil", reaper.MK_Json_Deserialize('["' .. no_utf8 .. '"]'))
end
local loop = {}
loop.loop = loop
expect("1 nil", reaper.MK_Json_Serialize(loop))
local nested = { 1 }
for _ = 2, 1000 do nested = { nested } end
expect("0", (reaper.MK_Json_Serialize(nested)))
expect("1 nil", reaper.MK_Json_Serialize { nested })
for levels, wanted in pairs { [1000] = "0", [1001] = "1", [1000000] = "1" } do
    expect(wanted, (reaper.MK_Json_Deserialize(("["):rep(levels) .. ("]"):rep(levels))))
end

expect("false {}", reaper.MK_GetMediaItemPeakList(io.stdout))
expect("false {}", reaper.MK_GetUserInputList("title", 1, "caption", ""))
expect("0 {}", reaper.MK_LINGOMAT_InsertMediaItems(folder, folder, 0, 0, 0, 1, 1, 0, { "group" }))
