// Configuration values: numbers and texts read again and again by their paths, beside the interpreter's own way, which compiles
// the path each time; and all default scripts run.

#include <benchmark/benchmark.h>
#include <kadata/lua_config.h>
#include <kadata/lua_engine.h>
#include <stdlib.h>

#include <fstream>
#include <iterator>
#include <lua.hpp>
#include <string>
#include <vector>

namespace {

const std::vector<std::string> kNumbers = {
    "KaFit.Level",
    "KaFit.DistanceMaps.Resolution",
    "KaFit.CellOptimization.count_iteration",
    "KaFit.RigidOptimization.Weights.Anterior.z_wConnect1121",
    "Biogeneric.MinArea",
    "MinimalWallThickness.TankOffsetForImplants",
    "RestorationParameters.EstimateNormals.ExtensionAngleMolar",
    "Test.param3",
};
const std::vector<std::string> kTexts = {"Test.param2", "Test.param5.param3"};
constexpr const char* kScripts[] = {
    "biogeneric", "minimal_wall_thickness", "restoration_generation", "restoration_parameters", "ka_fit", "test"};

void Check(bool good) {
    if (!good) {
        abort();
    }
}

std::string ReadScript(const char* name) {
    std::ifstream file(std::string(KADATA_SCRIPTS "/") + name + ".lua");
    Check(file.good());
    return {std::istreambuf_iterator<char>(file), {}};
}

KALua& Engine() {
    static KALua& engine = *[] {
        KALua* const made = KALua::Instance();
        Check(made != nullptr && KaCLuaConfig::Load());
        return made;
    }();
    return engine;
}

struct Peer {
    lua_State* state = luaL_newstate();
    std::vector<std::string> scripts;

    Peer() {
        luaL_openlibs(state);
        for (const char* const name : kScripts) {
            scripts.push_back(ReadScript(name));
        }
        Load();
    }
    void Run(const std::string& text) const {
        Check(luaL_loadstring(state, text.c_str()) == 0 && lua_pcall(state, 0, 0, 0) == 0);
    }
    void Load() const {
        for (const std::string& script : scripts) {
            Run(script);
        }
    }
    // Leaves the value on the stack.
    void Read(const std::string& assignment) const {
        lua_settop(state, 0);
        Run(assignment);
        lua_getglobal(state, "evalExpr");
    }
};

const Peer& ThePeer() {
    static const Peer& peer = *new Peer;
    return peer;
}

std::vector<CString> Wide(const std::vector<std::string>& texts) {
    std::vector<CString> wide;
    for (const std::string& text : texts) {
        wide.emplace_back(text.c_str());
    }
    return wide;
}

std::vector<std::string> Assignments(const std::vector<std::string>& paths) {
    std::vector<std::string> all;
    for (const std::string& path : paths) {
        all.push_back("evalExpr=" + path);
    }
    return all;
}

template <class Texts, class Read>
void Repeat(benchmark::State& state, const Texts& texts, Read&& read) {
    std::size_t i = 0;
    for (auto _ : state) {
        read(texts[i]);
        i = i + 1 < texts.size() ? i + 1 : 0;
    }
}

void KaDataInt(benchmark::State& state) {
    KALua& engine = Engine();
    Repeat(state, Wide(kNumbers), [&](const CString& path) { benchmark::DoNotOptimize(engine.GetConfigInt(path)); });
}

void LoadStringInt(benchmark::State& state) {
    const Peer& peer = ThePeer();
    Repeat(state, Assignments(kNumbers), [&](const std::string& assignment) {
        peer.Read(assignment);
        Check(lua_isnumber(peer.state, -1) != 0);
        benchmark::DoNotOptimize(lua_tointeger(peer.state, -1));
    });
}

void KaDataText(benchmark::State& state) {
    KALua& engine = Engine();
    Repeat(state, Wide(kTexts), [&](const CString& path) { benchmark::DoNotOptimize(engine.GetConfigString(path)); });
}

void LoadStringText(benchmark::State& state) {
    const Peer& peer = ThePeer();
    Repeat(state, Assignments(kTexts), [&](const std::string& assignment) {
        peer.Read(assignment);
        Check(lua_isstring(peer.state, -1) != 0);
        benchmark::DoNotOptimize(std::string(lua_tostring(peer.state, -1)));
    });
}

void KaDataLoad(benchmark::State& state) {
    Engine();
    for (auto _ : state) {
        KaCLuaConfig::Load();
    }
}

void LoadStringLoad(benchmark::State& state) {
    const Peer& peer = ThePeer();
    for (auto _ : state) {
        peer.Load();
    }
}

BENCHMARK(KaDataInt)->Name("lua/read_int/kadata/defaults");
BENCHMARK(LoadStringInt)->Name("lua/read_int/loadstring/defaults");
BENCHMARK(KaDataText)->Name("lua/read_string/kadata/defaults");
BENCHMARK(LoadStringText)->Name("lua/read_string/loadstring/defaults");
BENCHMARK(KaDataLoad)->Name("lua/load_defaults/kadata/six");
BENCHMARK(LoadStringLoad)->Name("lua/load_defaults/loadstring/six");

}  // namespace
