-- Reads the frames of a trace that "frctl trace pcapng" made. The tables above are those of the program: hexCommands,
-- xmlCommands, hexErrors, tagNames, letters. Runs in Lua 5.1 and later.

local startOfText, endOfText, enquiry, acknowledge, escape, separator = "\2", "\3", "\5", "\6", "\27", "\28"

local frspf = Proto("frspf", "Fiscal register")

local fields = {
    protocol = ProtoField.string("frspf.protocol", "Protocol"),
    kind = ProtoField.string("frspf.kind", "Kind"),
    password = ProtoField.string("frspf.password", "Password"),
    id = ProtoField.string("frspf.id", "Id"),
    code = ProtoField.string("frspf.code", "Code"),
    name = ProtoField.string("frspf.name", "Command"),
    envelope = ProtoField.string("frspf.envelope", "Envelope"),
    result = ProtoField.string("frspf.result", "Result"),
    -- Of whatever has no name in the tables.
    other = ProtoField.string("frspf.field", "Field"),
    check = ProtoField.string("frspf.check", "Check value"),
    error = ProtoField.string("frspf.error", "Refused"),
    fault = ProtoField.string("frspf.fault", "Fault"),
    bytes = ProtoField.bytes("frspf.bytes", "Bytes"),
    request = ProtoField.framenum("frspf.request", "Answers the request in", base.NONE, frametype.REQUEST),
    answer = ProtoField.framenum("frspf.answer", "Answered in", base.NONE, frametype.RESPONSE),
    taken = ProtoField.relative_time("frspf.taken", "Time since the request"),
}
local dataFields = {}

local function addDataField(name)
    if name ~= "" and not dataFields[name] then
        dataFields[name] = ProtoField.string("frspf.data." .. name, name)
    end
end

local refused = ProtoExpert.new(
    "frspf.expert.refused", "The register refused", expert.group.RESPONSE_CODE, expert.severity.WARN)
local bad = ProtoExpert.new("frspf.expert.bad", "Bad frame", expert.group.MALFORMED, expert.severity.ERROR)

for _, command in ipairs(hexCommands) do
    for _, field in ipairs(command.request) do addDataField(field.name) end
    for _, field in ipairs(command.answer) do addDataField(field.name) end
end
for _, name in pairs(tagNames) do addDataField(name) end

local all = {}
for _, field in pairs(fields) do all[#all + 1] = field end
for _, field in pairs(dataFields) do all[#all + 1] = field end
frspf.fields = all
frspf.experts = {refused, bad}

-- Texts

local function utf8Of(code)
    local function tail(shift) return 0x80 + math.floor(code / shift) % 0x40 end
    if code < 0x80 then return string.char(code) end
    if code < 0x800 then return string.char(0xC0 + math.floor(code / 0x40), tail(1)) end
    if code < 0x10000 then return string.char(0xE0 + math.floor(code / 0x1000), tail(0x40), tail(1)) end
    return string.char(0xF0 + math.floor(code / 0x40000), tail(0x1000), tail(0x40), tail(1))
end

-- Size of the letter that begins there; nil where none does.
local function letterSize(text, at)
    local first, second = text:byte(at, at + 1)
    if first < 0x80 then return 1 end
    local size = first >= 0xC2 and first < 0xE0 and 2 or first >= 0xE0 and first < 0xF0 and 3
        or first >= 0xF0 and first < 0xF5 and 4
    if not size or not text:find("^" .. ("[\128-\191]"):rep(size - 1), at + 1) then return nil end
    local isForbidden = first == 0xE0 and second < 0xA0 or first == 0xED and second > 0x9F
        or first == 0xF0 and second < 0x90 or first == 0xF4 and second > 0x8F
    return not isForbidden and size or nil
end

local function isUtf8(text)
    local at = 1
    while at <= #text do
        local size = letterSize(text, at)
        if not size then return false end
        at = at + size
    end
    return true
end

local function fromCp866(bytes)
    return (bytes:gsub("[\128-\255]", function(byte) return letters[byte:byte()] end))
end

local function fromLatin1(bytes)
    return (bytes:gsub("[\128-\255]", function(byte) return utf8Of(byte:byte()) end))
end

-- As Wireshark takes it, which ends a text at a zero and shows other signs that cannot be printed in several ways:
-- Unicode's pictures stand for them.
local function shown(text)
    if not isUtf8(text) then text = text:gsub("[\128-\255]", "\239\191\189") end
    return (text:gsub("[%z\1-\31]", function(sign) return utf8Of(0x2400 + sign:byte()) end))
end

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

-- XML

local references = {lt = "<", gt = ">", amp = "&", quot = '"', apos = "'"}

local function unescaped(text)
    return (text:gsub("&(#?)(x?)(%w+);", function(number, hexadecimal, word)
        if number == "" then return references[hexadecimal .. word] end
        local code = tonumber(word, hexadecimal == "x" and 16 or 10)
        return code and code < 0x110000 and utf8Of(code)
    end))
end

local function attributesOf(text)
    local attributes = {}
    for name, _, value in text:gmatch("([^%s=]+)%s*=%s*([\"'])(.-)%2") do attributes[name] = unescaped(value) end
    return attributes
end

-- What stands there that is neither text nor an element: where it ends, and the bounds of a text in it.
local function markupAt(text, at)
    local first, last, behind = text:match("^<!%[CDATA%[().-()%]%]>()", at)
    if first then return behind, first, last - 1 end
    return text:match("^<%?.-%?>()", at) or text:match("^<!%-%-.-%-%->()", at) or text:match("^<!%u[^>]*>()", at)
end

-- Tells open(name, attributes), write(text, first, isRaw) and close() what the document holds, in order; returns what
-- is wrong with it.
local function readXml(text, on)
    local names, at, hasRoot = {}, 1, false
    local function write(first, last, isRaw)
        if first > last then return end
        local value = text:sub(first, last)
        if #names > 0 then on.write(isRaw and value or unescaped(value), first) end
        return #names == 0 and value:find("%S")
    end
    local function element(slash, name, rest)
        if slash == "/" then
            if table.remove(names) ~= name then return "elements do not match" end
            on.close()
        elseif hasRoot and #names == 0 then
            return "more than one root"
        else
            hasRoot = true
            names[#names + 1] = name
            on.open(name, attributesOf(rest))
            if rest:sub(-1) == "/" then
                names[#names] = nil
                on.close()
            end
        end
    end
    while at <= #text do
        local tag = text:find("<", at, true) or #text + 1
        if write(at, tag - 1) then return "text outside of the root" end
        if tag > #text then break end
        local behind, first, last = markupAt(text, tag)
        if first then write(first, last, true) end
        if not behind then
            local slash, name, rest, following = text:match("^<(/?)([^%s/<>]+)([^<>]*)>()", tag)
            local fault = not name and "broken off" or element(slash, name, rest)
            if fault then return fault end
            behind = following
        end
        at = behind
    end
    return (#names > 0 or not hasRoot) and "broken off" or nil
end

local listType, deepestTree = "6", 64

-- The leaves of the tree of data. offset is what lies before the text in the frame; nil where that cannot be told.
local function readTree(text, offset)
    local leaves, nodes, isDeep = {}, {}, false
    local fault = readXml(text, {
        open = function(_, attributes)
            local above = nodes[#nodes]
            local node = {path = "", type = attributes.t or "", name = tagNames[attributes.n] or "", children = 0, text = ""}
            if above then
                above.children = above.children + 1
                local own = tagNames[attributes.n] or attributes.n or ""
                node.path = above.type == listType and ("%s[%d]"):format(above.path, above.children)
                    or above.path == "" and own or above.path .. "." .. own
            end
            nodes[#nodes + 1] = node
            isDeep = isDeep or #nodes - 1 > deepestTree
        end,
        write = function(value, first)
            local node = nodes[#nodes]
            node.text = node.text .. value
            node.first, node.last = node.first or first, first + #value - 1
        end,
        close = function()
            local node = table.remove(nodes)
            if node.children > 0 or node.path == "" then return end
            leaves[#leaves + 1] = {
                name = node.name, label = node.path, value = node.text,
                first = offset and node.first and offset + node.first, last = offset and node.last and offset + node.last,
            }
        end,
    })
    return leaves, isDeep and "the tree is too deep" or fault
end

-- The texts of the elements without children by name, what lies before them in the document, and the root's name.
local function readTexts(bytes)
    local texts, offsets, root, current = {}, {}, nil, nil
    local fault = readXml(bytes, {
        open = function(name)
            if root then texts[name] = texts[name] or "" end
            root, current = root or name, name
        end,
        write = function(value, first)
            if not current then return end
            local before = texts[current] or ""
            if value:find("%S") then offsets[current] = first - 1 - #before end
            texts[current] = before .. value
        end,
        close = function() current = nil end,
    })
    return texts, offsets, root, fault
end

local function xmlError(texts)
    if texts.Result == "0" then return nil end
    local words = {}
    for word in (texts.ErrorDescription or ""):gmatch("%S+") do words[#words + 1] = word end
    return ('%s.%s "%s"'):format(texts.ErrorCategory or "", texts.ErrorCode or "", table.concat(words, " "))
end

local function readDocument(bytes)
    local texts, offsets, root, fault = readTexts(bytes)
    local isRequest = root == "ArmRequest"
    local parts = {}
    for _, name in ipairs({"ProtocolLabel", "ProtocolVersion", "msgFFDVer", "msgContVer"}) do
        parts[#parts + 1] = texts[name]
    end
    local number = (texts.Command or ""):match("^%s*(%d+)%s*$")
    local meaning = {
        protocol = "XML", kind = isRequest and "request" or "answer", id = texts.RequestId or "",
        code = number and ("%d"):format(number) or "", name = xmlCommands[tonumber(number)],
        envelope = table.concat(parts, " "), result = texts.Result, fault = fault, items = {},
        error = not isRequest and xmlError(texts) or nil,
    }
    local data = isRequest and "RequestData" or "ResponseData"
    local tree = texts[data] or ""
    if tree:find("%S") then
        local treeFault
        -- A tree that was escaped lies elsewhere, byte by byte.
        local isRaw = offsets[data] and bytes:sub(offsets[data] + 1, offsets[data] + #tree) == tree
        meaning.items, treeFault = readTree(tree, isRaw and offsets[data] or nil)
        meaning.fault = treeFault and "the data: " .. treeFault or fault
    end
    return meaning
end

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

-- What is shown

local function titleOf(meaning)
    local words = {meaning.protocol}
    if not meaning.code or meaning.kind == "echo" then words[#words + 1] = meaning.kind end
    if meaning.code then words[#words + 1] = ("%s(%s)"):format(meaning.name or "", meaning.code) end
    if meaning.fault then
        words[#words + 1] = "BAD: " .. meaning.fault
    elseif meaning.kind == "answer" then
        words[#words + 1] = meaning.error and "error " .. meaning.error or "ok"
    end
    return table.concat(words, " ")
end

local function infoOf(meaning)
    local words = {titleOf(meaning)}
    for _, item in ipairs(meaning.items) do
        if item.value ~= "" then words[#words + 1] = item.label .. "=" .. item.value end
    end
    return shown(table.concat(words, " "))
end

local function showItem(item, tree, buffer)
    local field, value = dataFields[item.name] or fields.other, shown(item.value)
    local label = shown(item.label .. ": " .. item.value)
    if item.first and item.last and item.last >= item.first and item.last <= buffer:len() then
        tree:add(field, buffer(item.first - 1, item.last - item.first + 1), value, label)
    else
        tree:add(field, value, label)
    end
end

local function showTimes(entry, tree)
    if entry.answer then tree:add(fields.answer, entry.answer):set_generated() end
    if not entry.request then return end
    tree:add(fields.request, entry.request.number):set_generated()
    local microseconds = math.floor((entry.time - entry.request.time) * 1e6 + 0.5)
    local seconds = math.floor(microseconds / 1e6)
    tree:add(fields.taken, NSTime.new(seconds, (microseconds - seconds * 1e6) * 1000)):set_generated()
end

local function show(entry, buffer, tree)
    local meaning = entry.meaning
    tree:append_text(", " .. shown(titleOf(meaning)))
    for _, name in ipairs({"protocol", "kind", "password", "id", "code", "name", "envelope", "result"}) do
        if meaning[name] and meaning[name] ~= "" then tree:add(fields[name], shown(meaning[name])) end
    end
    for _, item in ipairs(meaning.items) do showItem(item, tree, buffer) end
    if meaning.isBytes then tree:add(fields.bytes, buffer()) end
    if meaning.check then tree:add(fields.check, meaning.check) end
    if meaning.error and meaning.error ~= "" then
        tree:add(fields.error, shown(meaning.error)):add_proto_expert_info(refused, shown(meaning.error))
    end
    if meaning.fault then
        tree:add(fields.fault, meaning.fault):add_proto_expert_info(bad, meaning.fault)
    end
    showTimes(entry, tree)
end

function frspf.dissector(buffer, pinfo, tree)
    local toRegister = pinfo.p2p_dir == P2P_DIR_SENT
    found[pinfo.number] = found[pinfo.number] or firstLook(buffer():raw(), toRegister, pinfo)
    local meaning = found[pinfo.number].meaning
    pinfo.cols.protocol = meaning.protocol and "FR " .. meaning.protocol or "FR"
    pinfo.cols.src = toRegister and "host" or "register"
    pinfo.cols.dst = toRegister and "register" or "host"
    pinfo.cols.info = infoOf(meaning)
    show(found[pinfo.number], buffer, tree:add(frspf, buffer()))
    return buffer:len()
end

-- The link type that the file names.
DissectorTable.get("wtap_encap"):add(wtap.USER0, frspf)
