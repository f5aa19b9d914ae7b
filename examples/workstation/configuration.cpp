#include "configuration.h"

#include <kadata/directory.h>
#include <kadata/log.h>
#include <kadata/lua_config.h>
#include <kadata/lua_engine.h>
#include <kadata/utils.h>

#include <string>

#include "console.h"

namespace {

// Leaves the paths of all values in a list.
constexpr LPCTSTR LIST_PATHS = _T(R"lua(
ConfigPaths = {}
local function add(prefix, values)
    for name, value in pairs(values) do
        local path = prefix .. "." .. name
        if type(value) == "table" then
            add(path, value)
        else
            ConfigPaths[#ConfigPaths + 1] = path
        end
    end
end
for _, name in ipairs { "Biogeneric", "MinimalWallThickness", "RestorationGeneration", "RestorationParameters", "KaFit" } do
    add(name, _G[name])
end
table.sort(ConfigPaths)
)lua");

CString ReadScript(const CString& path) {
    CFile file(path, CFile::modeRead | CFile::shareDenyWrite);
    std::string bytes(static_cast<std::size_t>(file.GetLength()), '\0');
    bytes.resize(file.Read(bytes.data(), static_cast<UINT>(bytes.size())));
    return CKalidoUtils::MB2WC(bytes);
}

void RunOwnScripts(KALua& lua) {
    const CString folder = KaCLuaState::Instance()->GetConfigDirectoryName();
    CStringArray names;
    if (CDirectory::Exist(folder) != 0) {
        CDirectory::ListFiles(folder, names, _T("*.lua"), ~DWORD{FILE_ATTRIBUTE_DIRECTORY});
    }
    for (INT_PTR i = 0; i < names.GetSize(); ++i) {
        if (!lua.RunString(ReadScript(CDirectory::Concat(folder, names[i])))) {
            CLog::Print(CLogError(CLogError::HANDLED), _T("the configuration script %s fails"), static_cast<LPCTSTR>(names[i]));
        }
    }
}

CString ValueOf(KALua& lua, const CString& path) {
    try {
        return lua.GetConfigBool(path) ? _T("true") : _T("false");
    } catch (int) {
        return lua.GetConfigString(path);
    }
}

}  // namespace

std::optional<std::vector<SConfigValue>> LoadConfiguration() {
    KALua* const lua = KALua::Instance();
    if (lua == nullptr) {
        return std::nullopt;
    }
    KaCLuaConfig::Load();
    RunOwnScripts(*lua);
    std::vector<SConfigValue> all;
    const int count = lua->RunString(LIST_PATHS) ? lua->GetConfigInt(_T("#ConfigPaths")) : 0;
    for (int i = 1; i <= count; ++i) {
        CString entry;
        entry.Format(_T("ConfigPaths[%d]"), i);
        const CString path = lua->GetConfigString(entry);
        all.push_back({path, ValueOf(*lua, path)});
    }
    return all;
}

int PrintConfiguration() {
    const std::optional<std::vector<SConfigValue>> values = LoadConfiguration();
    if (!values) {
        PrintError(_T("there is no Lua 5.1 on this machine"));
        return 1;
    }
    PrintValues(*values);
    return values->empty() ? 1 : 0;
}
