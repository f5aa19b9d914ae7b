// 10,000 patients in memory: one looked up by its external id, and by its names and birthday. The one that is wanted is the last,
// or there is none.

#include <benchmark/benchmark.h>
#include <kadata/record_arrays.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr int kPatients = 10000;
constexpr int kFamilies = 500;

// What both kinds of records are made of. Families share a surname; names and ids share their beginnings, as they do in
// practices.
struct Person {
    std::u16string first_name;
    std::u16string name;
    std::u16string ext_id;
    TIMESTAMP_STRUCT birthday;
};

std::u16string Numbered(const char16_t* text, int number) {
    const std::string digits = std::to_string(number);
    return text + std::u16string(digits.begin(), digits.end());
}

Person PersonOf(int number) {
    return {Numbered(u"Anna-Katharina ", number),
            Numbered(u"M\u00FCller-L\u00FCdenscheidt ", number % kFamilies),
            Numbered(u"PRACTICE-", 100000 + number),
            {static_cast<SQLSMALLINT>(1930 + number % 90), static_cast<SQLUSMALLINT>(1 + number / 7 % 12),
             static_cast<SQLUSMALLINT>(1 + number / 11 % 28), 0, 0, 0, 0}};
}

// The last one, or nobody, as a user would type it.
Person Wanted(const benchmark::State& state) {
    Person person = PersonOf(state.range(0) != 0 ? kPatients - 1 : kPatients);
    for (char16_t& unit : person.name) {
        unit = unit == u'M' ? u'm' : unit;
    }
    return person;
}

const CPatientArray& Patients() {
    static CPatientArray patients;
    for (int i = static_cast<int>(patients.GetSize()); i < kPatients; ++i) {
        const Person person = PersonOf(i);
        patients.Add(CPatient(person.first_name.c_str(), person.name.c_str(), person.birthday, person.ext_id.c_str()));
    }
    return patients;
}

const std::vector<Person>& Persons() {
    static std::vector<Person> persons;
    for (int i = static_cast<int>(persons.size()); i < kPatients; ++i) {
        persons.push_back(PersonOf(i));
    }
    return persons;
}

// The plain loop that the peers run, over records of their own.
template <class Matches>
void LoopOverPersons(benchmark::State& state, Matches matches) {
    const std::vector<Person>& persons = Persons();
    const Person wanted = Wanted(state);
    for (auto _ : state) {
        const Person* found = nullptr;
        for (const Person& person : persons) {
            if (matches(person, wanted)) {
                found = &person;
                break;
            }
        }
        benchmark::DoNotOptimize(found);
    }
}

bool SameBirthday(const Person& a, const Person& b) {
    return std::memcmp(&a.birthday, &b.birthday, sizeof(a.birthday)) == 0;
}

bool SameCaseless(const std::u16string& a, const std::u16string& b) {
    UErrorCode status = U_ZERO_ERROR;
    return u_strCaseCompare(a.data(), static_cast<int>(a.size()), b.data(), static_cast<int>(b.size()), U_FOLD_CASE_DEFAULT,
                            &status) == 0;
}

void KaDataExtId(benchmark::State& state) {
    const CPatientArray& patients = Patients();
    const CString wanted(Wanted(state).ext_id.c_str());
    CPatient found;
    for (auto _ : state) {
        benchmark::DoNotOptimize(patients.FindPatientByExtID(wanted, found));
    }
}

void StringExtId(benchmark::State& state) {
    LoopOverPersons(state, [](const Person& a, const Person& b) { return a.ext_id == b.ext_id; });
}

void IcuExtId(benchmark::State& state) {
    LoopOverPersons(state, [](const Person& a, const Person& b) { return SameCaseless(a.ext_id, b.ext_id); });
}

void KaDataNameBirth(benchmark::State& state) {
    const CPatientArray& patients = Patients();
    const Person person = Wanted(state);
    const CString first_name(person.first_name.c_str()), name(person.name.c_str());
    CPatient found;
    for (auto _ : state) {
        benchmark::DoNotOptimize(patients.FindPatientByNameAndBirth(first_name, name, person.birthday, found));
    }
}

// Field after field as they are named; case included, for the peer has no other way.
void StringNameBirth(benchmark::State& state) {
    LoopOverPersons(state, [](const Person& a, const Person& b) {
        return a.first_name == b.first_name && a.name == b.name && SameBirthday(a, b);
    });
}

void IcuNameBirth(benchmark::State& state) {
    LoopOverPersons(state, [](const Person& a, const Person& b) {
        return SameCaseless(a.first_name, b.first_name) && SameCaseless(a.name, b.name) && SameBirthday(a, b);
    });
}

// Argument: whether there is one.
BENCHMARK(KaDataExtId)->Name("search/ext_id/kadata/there")->Arg(1)->Arg(0);
BENCHMARK(StringExtId)->Name("search/ext_id/u16string/there")->Arg(1)->Arg(0);
BENCHMARK(IcuExtId)->Name("search/ext_id/icu/there")->Arg(1)->Arg(0);
BENCHMARK(KaDataNameBirth)->Name("search/name_birth/kadata/there")->Arg(1)->Arg(0);
BENCHMARK(StringNameBirth)->Name("search/name_birth/u16string/there")->Arg(1)->Arg(0);
BENCHMARK(IcuNameBirth)->Name("search/name_birth/icu/there")->Arg(1)->Arg(0);

}  // namespace
