// Scripts and dotted paths through the front of the script engine: the first byte says which, and how it is read.

#include <kadata/lua_engine.h>
#include <kadata/utils.h>

#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

enum { SCRIPT, INT, FLOAT, BOOL, TEXT, GLOBAL, KINDS };

KALua& Engine() {
    static KALua* const engine = KALua::Instance();
    if (engine == nullptr) {
        std::abort();
    }
    return *engine;
}

// Endless loops are the host's own affair: such a script is compiled and not run.
bool MayLoop(std::string_view text) {
    for (const std::string_view word : {"while", "repeat", "for", "function", "load"}) {
        if (text.find(word) != text.npos) {
            return true;
        }
    }
    return false;
}

void Read(int kind, const CString& path) {
    try {
        switch (kind) {
            case INT:
                Engine().GetConfigInt(path);
                break;
            case FLOAT:
                Engine().GetConfigFloat(path);
                break;
            case BOOL:
                Engine().GetConfigBool(path);
                break;
            default:
                Engine().GetCStringGlobal(path);
        }
    } catch (int value) {
        if (value != 0) {
            std::abort();
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const int kind = data[0] % KINDS;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const CString text = CKalidoUtils::MB2WC(bytes);
    if (kind == SCRIPT || MayLoop(bytes)) {
        const bool ran = Engine().RunString(MayLoop(bytes) ? _T("return function() ") + text + _T("\nend") : text);
        if (ran && !bytes.empty() && bytes.front() == '\x1B' && !MayLoop(bytes)) {
            std::abort();  // bytecode
        }
    } else if (kind == TEXT) {
        Engine().GetConfigString(text);
    } else {
        Read(kind, text);
    }
    // Whatever it was, what is asked next is answered. The engine's own functions cannot be lost with the globals.
    if (!Engine().RunString(_T("return 1"))) {
        std::abort();
    }
    return 0;
}
