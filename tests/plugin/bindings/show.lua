-- Values as a text: `show(...)`; a table's entries in order.

local function text_of(value)
    if type(value) ~= "table" then return tostring(value) end
    local entries = {}
    for key, inner in pairs(value) do entries[#entries + 1] = tostring(key) .. "=" .. text_of(inner) end
    table.sort(entries)
    return "{" .. table.concat(entries, " ") .. "}"
end

function show(...)
    local texts = table.pack(...)
    for i = 1, texts.n do texts[i] = text_of(texts[i]) end
    return table.concat(texts, " ")
end
