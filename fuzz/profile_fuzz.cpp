// Profile files: read, changed and read again.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "win32/files/profile_text.h"

namespace {

void Require(bool good) {
    if (!good) {
        std::abort();
    }
}

// Every entry is found by its name, unless one of the same name is before it.
void ReadAll(const kawin::ProfileText& profile) {
    for (const std::u16string_view section : profile.SectionNames()) {
        const auto entries = profile.Entries(section);
        Require(entries.has_value());
        for (const kawin::ProfileText::Entry& entry : *entries) {
            Require(!entry.has_value || entry.key.empty() || profile.Value(section, entry.key).has_value());
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    kawin::ProfileText profile(bytes);
    ReadAll(profile);
    const bool wide = bytes.starts_with("\xFF\xFE");
    Require(profile.Bytes() == bytes.substr(0, size - (wide ? size % 2 : 0)));

    profile.Set(u"Location", u"ODBCSrc", u"DATA");
    const std::string changed = profile.Bytes();
    kawin::ProfileText again(changed);
    ReadAll(again);
    Require(again.Value(u"location", u"odbcsrc") == u"DATA");
    again.Remove(u"Location", u"ODBCSrc");
    again.Remove(u"Location");
    ReadAll(again);
    return 0;
}
