-- Frames in their order

-- The last request of each id; the bytes of the last of all; and by number of the frame what was found when it came
-- first, since Wireshark asks for frames again in any order.
local asked, lastRequest, found = {}, "", {}

function frspf.init()
    asked, lastRequest, found = {}, "", {}
end

local function decode(bytes, toRegister, isEcho, questionOf)
    local first = bytes:sub(1, 1)
    if first == startOfText then
        local meaning = readHex(bytes, toRegister or isEcho, questionOf)
        if isEcho then meaning.kind = "echo" end
        return meaning
    elseif bytes:find("^<%?xml") or bytes:find("^<Arm") then
        return readDocument(bytes)
    elseif bytes == enquiry then
        return {kind = "ENQ", protocol = "HEX", items = {}}
    elseif bytes == acknowledge then
        return {kind = "ACK", protocol = "HEX", items = {}}
    elseif toRegister and first == escape then
        return {kind = "picture", protocol = "HEX", isBytes = true, items = {}}
    end
    return {kind = "unknown", isBytes = true, items = {}}
end

local function firstLook(bytes, toRegister, pinfo)
    local isEcho = not toRegister and bytes == lastRequest and bytes:sub(1, 1) == startOfText
    local meaning = decode(bytes, toRegister, isEcho, function(id) return asked[id] and asked[id].meaning.question end)
    local entry = {meaning = meaning, number = pinfo.number, time = pinfo.abs_ts}
    if toRegister then lastRequest = bytes end
    if meaning.kind == "request" then
        asked[meaning.id] = entry
    elseif meaning.kind == "answer" and asked[meaning.id] then
        entry.request = asked[meaning.id]
        entry.request.answer = pinfo.number
    end
    return entry
end
