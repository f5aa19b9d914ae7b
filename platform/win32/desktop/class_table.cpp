#include "class_table.h"

#include <algorithm>
#include <map>
#include <mutex>

#include "../text/compare.h"
#include "class_registry.h"
#include "system_classes.h"

namespace kawin {
namespace {

constexpr ATOM kFirstAtom = 0xC000;
constexpr std::size_t kMostAtoms = 0x4000;

// Names as the table compares them.
std::u16string Folded(std::u16string_view name) {
    std::u16string folded(name);
    CharUpperBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    return folded;
}

struct Atoms {
    std::mutex mutex;
    std::map<std::u16string, ATOM> numbers;  // guarded by mutex; never shrinks
};

Atoms& TheAtoms() {
    static Atoms* const atoms = new Atoms;
    return *atoms;
}

// "#32770" is the atom 32770; 0 for any other name.
ATOM AtomInDigits(std::u16string_view name) noexcept {
    unsigned number = 0;
    for (const char16_t unit : name.substr(std::min<std::size_t>(name.size(), 1))) {
        if (unit < u'0' || unit > u'9' || number > 0xFFFF) {
            return 0;
        }
        number = number * 10 + (unit - u'0');
    }
    return !name.empty() && name.front() == u'#' && number <= 0xFFFF ? static_cast<ATOM>(number) : ATOM{0};
}

}  // namespace

ATOM FindAtom(std::u16string_view name) {
    if (const ATOM digits = AtomInDigits(name)) {
        return digits;
    }
    const std::u16string folded = Folded(name);
    Atoms& atoms = TheAtoms();
    const std::lock_guard lock(atoms.mutex);
    const auto found = atoms.numbers.find(folded);
    return found != atoms.numbers.end() ? found->second : ATOM{0};
}

ATOM AtomOf(std::u16string_view name) {
    if (const ATOM digits = AtomInDigits(name)) {
        return digits;
    }
    std::u16string folded = Folded(name);
    Atoms& atoms = TheAtoms();
    const std::lock_guard lock(atoms.mutex);
    if (atoms.numbers.size() >= kMostAtoms) {
        const auto found = atoms.numbers.find(folded);
        return found != atoms.numbers.end() ? found->second : ATOM{0};
    }
    const auto next = static_cast<ATOM>(kFirstAtom + atoms.numbers.size());
    return atoms.numbers.try_emplace(std::move(folded), next).first->second;
}

ATOM AtomOfName(LPCWSTR name) {
    return IS_INTRESOURCE(name) ? LOWORD(reinterpret_cast<ULONG_PTR>(name)) : FindAtom(name);
}

ClassRegistry& TheClasses() {
    static ClassRegistry* const classes = new ClassRegistry;
    return *classes;
}

ClassRef ClassRegistry::Find(ATOM atom, HINSTANCE instance) const noexcept {
    ClassRef global;
    for (const ClassRef& each : classes) {
        if (each->atom != atom) {
            continue;
        }
        if (each->instance == instance && !each->system) {
            return each;
        }
        if (each->system || (each->style & CS_GLOBALCLASS) != 0) {
            // The program's own comes before the system's.
            global = global == nullptr || global->system ? each : global;
        }
    }
    return global;
}

void RegisterSystemClassesOnce() {
    static std::once_flag once;
    std::call_once(once, RegisterSystemClasses);
}

ClassRef FindClass(LPCWSTR name, HINSTANCE instance) {
    RegisterSystemClassesOnce();
    const ATOM atom = name != nullptr ? AtomOfName(name) : ATOM{0};
    if (atom == 0) {
        return nullptr;
    }
    ClassRegistry& classes = TheClasses();
    const std::lock_guard lock(classes.mutex);
    return classes.Find(atom, instance);
}

ClassRef MakeClass(const WNDCLASSEXW& description) {
    auto made = std::make_shared<WindowClass>();
    if (IS_INTRESOURCE(description.lpszClassName)) {
        made->atom = LOWORD(reinterpret_cast<ULONG_PTR>(description.lpszClassName));
        made->name = u"#" + FromUtf8(std::to_string(made->atom));
    } else {
        made->name = description.lpszClassName;
        made->atom = AtomOf(made->name);
    }
    made->instance = description.hInstance;
    made->class_extra = description.cbClsExtra;
    made->window_extra = description.cbWndExtra;
    made->style = description.style;
    made->procedure = description.lpfnWndProc;
    made->icon = description.hIcon;
    made->small_icon = description.hIconSm;
    made->cursor = description.hCursor;
    made->background = description.hbrBackground;
    made->extra.resize(static_cast<std::size_t>(description.cbClsExtra));
    return made;
}

void RegisterSystemClass(const WNDCLASSEXW& description) {
    const ClassRef made = MakeClass(description);
    made->system = true;
    ClassRegistry& classes = TheClasses();
    const std::lock_guard lock(classes.mutex);
    classes.classes.push_back(made);
}

}  // namespace kawin
