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
