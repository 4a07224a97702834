-- Lets `require` find the library in the workstation's resource folder, on every platform. A script begins with
--
--     dofile(reaper.GetResourcePath() .. "/Scripts/MERIDEK_FELSPAR/module_path.lua")
--     require "reaper_MERIDEK_FELSPAR"

local plugins = reaper.GetResourcePath() .. "/UserPlugins/?"
for _, suffix in ipairs {".so", ".dylib", ".dll"} do
    if not package.cpath:find(plugins .. suffix, 1, true) then
        package.cpath = package.cpath .. ";" .. plugins .. suffix
    end
end
