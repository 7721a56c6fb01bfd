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
