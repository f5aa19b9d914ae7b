# cmake -D TARGET=FILE.cpp -D HEADER=FILE.h -D FOLDER=FOLDER -D DEFAULTS=NAME,... -D GUARDS=NAME -P EmbedScripts.cmake
# Writes scripts of the folder as texts of C++, a line for each line.

# literal(variable name prefix suffix): the script, each of its lines between prefix"…" and the suffix.
function(literal variable name prefix suffix)
    file(READ ${FOLDER}/${name}.lua text)
    string(REPLACE "\\" "\\\\" text "${text}")
    string(REPLACE "\"" "\\\"" text "${text}")
    string(REGEX REPLACE "\n$" "" text "${text}")
    string(REPLACE "\n" "\\n\"${suffix}\n    ${prefix}\"" text "${text}")
    set(${variable} "    ${prefix}\"${text}\\n\"${suffix}" PARENT_SCOPE)
endfunction()

set(scripts "")
string(REPLACE "," ";" names "${DEFAULTS}")
foreach(name IN LISTS names)
    literal(script ${name} "_T(" ")")
    string(APPEND scripts "${script},\n")
endforeach()
literal(guards ${GUARDS} "" "")

file(CONFIGURE OUTPUT ${TARGET} @ONLY CONTENT [[
// Made from the scripts in config/lua.
#include "@HEADER@"

namespace kadata::lua {

std::span<const LPCTSTR> DefaultScripts() {
    static const LPCTSTR scripts[] = {
@scripts@    };
    return scripts;
}

std::string_view Guards() {
    return
@guards@;
}

}  // namespace kadata::lua
]])
