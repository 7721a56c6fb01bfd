-- HEX

local function checkValue(bytes)
    local value = 0
    for bit = 0, 7 do
        local weight, isOdd = 2 ^ bit, false
        for at = 1, #bytes do
            if math.floor(bytes:byte(at) / weight) % 2 == 1 then isOdd = not isOdd end
        end
        if isOdd then value = value + weight end
    end
    return value
end

-- The bytes without the signs of a register at work, which stand in the midst of its answers, too, and where
-- each of the others was.
local function withoutSigns(bytes, toRegister)
    local text, places = {}, {}
    for at = 1, #bytes do
        local byte = bytes:sub(at, at)
        if toRegister or byte ~= acknowledge then
            text[#text + 1] = byte
            places[#places + 1] = at
        end
    end
    return table.concat(text), places
end

local function hexCommand(code, question)
    for _, command in ipairs(hexCommands) do
        if command.code == code and (not command.question or command.question == question) then return command end
    end
end

local function hexError(code)
    local number = tonumber(code, 16)
    if number == 0 then return nil end
    local text = number and hexErrors[number]
    return text and ('%s "%s"'):format(fromLatin1(code), text) or fromLatin1(code)
end

local function hexItem(value, first, last, number, row)
    row = row or {name = ""}
    local text = row.isUtf8 and isUtf8(value) and value or fromCp866(value)
    return {
        name = row.name, label = row.name ~= "" and row.name or "field" .. number,
        value = text, first = first, last = last,
    }
end

local function splitFields(text, first, last)
    local list = {}
    while first <= last do
        local found = text:find(separator, first, true) or last + 1
        local behind = math.min(found, last + 1)
        list[#list + 1] = {value = text:sub(first, behind - 1), first = first, last = behind - 1}
        first = behind + 1
    end
    return list
end

-- Commands that have several questions are known by the first field of the request: questionOf tells that of an id.
local function readHex(bytes, toRegister, questionOf)
    local text, places = withoutSigns(bytes, toRegister)
    local head, idAt = 6, 2
    if toRegister then head, idAt = 8, 6 end
    local hasEnd = #text > 3 and text:sub(-3, -3) == endOfText
    local isWhole = hasEnd and #text >= head + 3
    local list = splitFields(text, head + 1, hasEnd and #text - 3 or #text)
    local code = text:sub(idAt + 1, idAt + 2)
    local meaning = {
        protocol = "HEX", kind = toRegister and "request" or "answer", code = fromLatin1(code), items = {},
        id = ("%02X"):format(text:byte(idAt) or 0), question = list[1] and list[1].value or "",
    }
    local command = hexCommand(code, toRegister and meaning.question or questionOf(meaning.id) or "")
    meaning.name = command and command.name
    local rows = command and (toRegister and command.request or command.answer) or {}
    for number, field in ipairs(list) do
        meaning.items[number] = hexItem(
            field.value, places[field.first], places[field.last], number, rows[number])
    end
    if toRegister then
        meaning.password = text:sub(2, 5)
    else
        meaning.result = fromLatin1(text:sub(idAt + 3, idAt + 4))
        meaning.error = hexError(text:sub(idAt + 3, idAt + 4))
    end
    if not isWhole then
        meaning.fault = "broken off"
    else
        meaning.check = fromLatin1(text:sub(-2))
        if tonumber(text:sub(-2), 16) ~= checkValue(text:sub(2, -3)) then meaning.fault = "check value" end
    end
    return meaning
end
