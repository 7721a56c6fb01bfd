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
