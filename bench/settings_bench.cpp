// Settings of a workstation: a number read again and again, and a new number written each time, beside a prepared SQLite
// statement and LMDB.

#include <benchmark/benchmark.h>
#include <kadata/registry.h>
#include <lmdb.h>
#include <sqlite3.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

namespace {

constexpr const char* kName = "Software\\Kalido Dental Systems\\Bench\\Settings\\Database";
constexpr int kOthers = 300;                // settings that each store has beside the one
constexpr std::size_t kMapSize = 64 << 20;  // bytes of LMDB

void Check(bool good) {
    if (!good) {
        abort();
    }
}

// A folder of the run's own, on the disk that the other benchmarks write to.
std::string Folder(const char* who) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / ("kadata-bench-settings-" + std::string(who));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder.string();
}

CKalidoRegistry& Settings() {
    static CKalidoRegistry& settings = *[] {
        const std::string folder = Folder("kadata");
        SetEnvironmentVariableW(_T("KADATA_REGISTRY_DIR"), CString(folder.c_str()));
        auto* const made = new CKalidoRegistry(_T("Bench"));
        for (UINT i = 0; i < kOthers; ++i) {
            Check(made->WritePatientProfileEntry(_T("All"), _T("Column."), i, _T(".Name"), _T("x")) != FALSE);
        }
        Check(made->WriteDatabase(1) != FALSE);
        return made;
    }();
    return settings;
}

std::string OtherName(int number) {
    return "Software\\Kalido Dental Systems\\Bench\\Settings\\PatientProfile\\All\\Column." + std::to_string(number) + ".Name";
}

// One table with names and numbers, as the peer's users would lay it out; the same log and the same promise to the disk as ours.
struct Sqlite {
    sqlite3* database = nullptr;
    sqlite3_stmt* get = nullptr;
    sqlite3_stmt* put = nullptr;

    Sqlite() {
        Check(sqlite3_open((Folder("sqlite") + "/settings.db").c_str(), &database) == SQLITE_OK);
        Check(sqlite3_exec(database,
                           "PRAGMA journal_mode = WAL; PRAGMA synchronous = NORMAL;"
                           "CREATE TABLE settings (name TEXT PRIMARY KEY, value INTEGER) WITHOUT ROWID",
                           nullptr, nullptr, nullptr) == SQLITE_OK);
        Check(sqlite3_prepare_v2(database, "SELECT value FROM settings WHERE name = ?", -1, &get, nullptr) == SQLITE_OK);
        Check(sqlite3_prepare_v2(database,
                                 "INSERT INTO settings VALUES (?, ?) ON CONFLICT (name) DO UPDATE SET value = excluded.value", -1,
                                 &put, nullptr) == SQLITE_OK);
        for (int i = 0; i < kOthers; ++i) {
            Put(i, OtherName(i).c_str());
        }
        Put(1);
    }
    void Put(int value, const char* name = kName) const {
        sqlite3_bind_text(put, 1, name, -1, SQLITE_TRANSIENT);
        sqlite3_bind_int(put, 2, value);
        Check(sqlite3_step(put) == SQLITE_DONE);
        sqlite3_reset(put);
    }
    int Get() const {
        sqlite3_bind_text(get, 1, kName, -1, SQLITE_STATIC);
        Check(sqlite3_step(get) == SQLITE_ROW);
        const int value = sqlite3_column_int(get, 0);
        sqlite3_reset(get);
        return value;
    }
};

const Sqlite& Peer() {
    static const Sqlite& peer = *new Sqlite;
    return peer;
}

// A read transaction that is renewed for each read, as its manual advises.
struct Lmdb {
    MDB_env* environment = nullptr;
    MDB_dbi database = 0;
    MDB_txn* reader = nullptr;

    Lmdb() {
        Check(mdb_env_create(&environment) == 0 && mdb_env_set_mapsize(environment, kMapSize) == 0);
        Check(mdb_env_open(environment, Folder("lmdb").c_str(), 0, 0600) == 0);
        MDB_txn* writer = nullptr;
        Check(mdb_txn_begin(environment, nullptr, 0, &writer) == 0 && mdb_dbi_open(writer, nullptr, 0, &database) == 0);
        int value = 1;
        MDB_val name = Name(), data = {sizeof value, &value};
        Check(mdb_put(writer, database, &name, &data, 0) == 0);
        for (int i = 0; i < kOthers; ++i) {
            std::string other = OtherName(i);
            name = {other.size(), other.data()};
            Check(mdb_put(writer, database, &name, &data, 0) == 0);
        }
        Check(mdb_txn_commit(writer) == 0);
        Check(mdb_txn_begin(environment, nullptr, MDB_RDONLY, &reader) == 0);
        mdb_txn_reset(reader);
    }
    static MDB_val Name() { return {std::char_traits<char>::length(kName), const_cast<char*>(kName)}; }
    int Get() const {
        MDB_val name = Name(), data;
        Check(mdb_txn_renew(reader) == 0 && mdb_get(reader, database, &name, &data) == 0);
        const int value = *static_cast<const int*>(data.mv_data);
        mdb_txn_reset(reader);
        return value;
    }
};

void KaDataRead(benchmark::State& state) {
    const CKalidoRegistry& settings = Settings();
    for (auto _ : state) {
        benchmark::DoNotOptimize(settings.GetDatabase());
    }
}

void SqliteRead(benchmark::State& state) {
    const Sqlite& peer = Peer();
    for (auto _ : state) {
        benchmark::DoNotOptimize(peer.Get());
    }
}

void LmdbRead(benchmark::State& state) {
    static const Lmdb& peer = *new Lmdb;
    for (auto _ : state) {
        benchmark::DoNotOptimize(peer.Get());
    }
}

void KaDataWrite(benchmark::State& state) {
    CKalidoRegistry& settings = Settings();
    int value = 0;
    for (auto _ : state) {
        Check(settings.WriteDatabase(++value) != FALSE);
    }
}

void SqliteWrite(benchmark::State& state) {
    const Sqlite& peer = Peer();
    int value = 0;
    for (auto _ : state) {
        peer.Put(++value);
    }
}

BENCHMARK(KaDataRead)->Name("settings/read_int/kadata/again");
BENCHMARK(SqliteRead)->Name("settings/read_int/sqlite/again");
BENCHMARK(LmdbRead)->Name("settings/read_int/lmdb/again");
BENCHMARK(KaDataWrite)->Name("settings/write_int/kadata/new_value")->UseRealTime();
BENCHMARK(SqliteWrite)->Name("settings/write_int/sqlite/new_value")->UseRealTime();

}  // namespace
