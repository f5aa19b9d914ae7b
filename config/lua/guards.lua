-- guards.lua: runs before any other script, and takes away what would let a script end the host or write over its memory. The
-- originals stay in locals, which scripts cannot reach without the functions that are taken from `debug`.
--
-- The argument is `setfenv` as the engine wants it.

local guarded_setfenv = ...
local error, pcall, type = error, pcall, type
local byte, find, gmatch, gsub, match, sub = string.byte, string.find, string.gmatch, string.gsub, string.match, string.sub
local concat, loadstring_any = table.concat, loadstring
local open, stdin = io.open, io.stdin
local close, read = stdin.close, stdin.read

local LONGEST_PATTERN = 2000 -- characters: each may take a level of the processor's stack
local BYTECODE = 0x1B        -- its first byte; it is trusted by the interpreter and so can do anything
local HASH = 0x23

setfenv = guarded_setfenv

function os.exit()
    error("os.exit: the program is not the script's to end", 2)
end

-- Patterns.

local function check(pattern)
    if type(pattern) == "string" and #pattern > LONGEST_PATTERN then
        error("pattern too long", 3)
    end
end

function string.find(text, pattern, from, plain)
    if not plain then
        check(pattern)
    end
    return find(text, pattern, from, plain)
end

function string.match(text, pattern, from)
    check(pattern)
    return match(text, pattern, from)
end

function string.gmatch(text, pattern)
    check(pattern)
    return gmatch(text, pattern)
end
string.gfind = string.gmatch

function string.gsub(text, pattern, replacement, most)
    check(pattern)
    return gsub(text, pattern, replacement, most)
end

-- Chunks: source text only, wherever it comes from.

local function load_text(text, name)
    if type(text) == "string" and byte(text) == BYTECODE then
        return nil, "bytecode is not loaded"
    end
    return loadstring_any(text, name)
end
loadstring = load_text

local function pieces_of(reader)
    local pieces, count = {}, 0
    while true do
        local piece = reader()
        if piece == nil or piece == "" then
            return concat(pieces)
        end
        if type(piece) ~= "string" then
            error("reader function must return a string", 0)
        end
        count = count + 1
        pieces[count] = piece
    end
end

function load(reader, name)
    local read_all, text = pcall(pieces_of, reader)
    if not read_all then
        return nil, text
    end
    return load_text(text, name or "=(load)")
end

local function load_file(path)
    local file, message = stdin, nil
    if path ~= nil then
        file, message = open(path, "rb")
        if not file then
            return nil, "cannot open " .. message
        end
    end
    local text, problem = read(file, "*a")
    if path ~= nil then
        close(file)
    end
    if not text then
        return nil, "cannot read " .. (problem or "it")
    end
    if byte(text) == HASH then -- the line that names an interpreter; its end stays, for the line numbers
        text = gsub(text, "^[^\n]*", "")
    end
    return load_text(text, path ~= nil and "@" .. path or "=stdin")
end
loadfile = load_file

function dofile(path)
    local chunk, message = load_file(path)
    if not chunk then
        error(message, 0)
    end
    return chunk()
end

-- Modules: those that are written in Lua.

local separator = sub(package.config, 1, 1)

local function load_module(name)
    local file_name = gsub(gsub(name, "%.", separator), "%%", "%%%%")
    local tried = ""
    for template in gmatch(package.path, "[^;]+") do
        local path = gsub(template, "%?", file_name)
        local file = open(path, "rb")
        if file then
            close(file)
            local chunk, message = load_file(path)
            if not chunk then
                error("error loading module '" .. name .. "' from file '" .. path .. "':\n\t" .. message, 0)
            end
            return chunk
        end
        tried = tried .. "\n\tno file '" .. path .. "'"
    end
    return tried
end
package.loaders = { package.loaders[1], load_module }

function package.loadlib()
    return nil, "native code is not loaded", "absent"
end

-- Finalizers of a script's own: they run at any time, and what they raise would be the failure of somebody else's script. Without
-- newproxy, and without the metatable of files, there are none.

newproxy = nil

local files, methods = getmetatable(stdin), {}
for name, method in pairs(files) do
    if sub(name, 1, 2) ~= "__" then
        methods[name] = method
    end
end
files.__index = methods -- it was the metatable itself
files.__metatable = "file"

-- What reaches into the locals, the stack and the metatables of others.

for name in pairs(debug) do
    if name ~= "traceback" then
        debug[name] = nil
    end
end
