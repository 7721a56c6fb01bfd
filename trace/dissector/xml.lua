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
