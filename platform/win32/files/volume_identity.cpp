#include "volume_identity.h"

#include <charconv>
#include <filesystem>
#include <fstream>

#include "block_device.h"

namespace kawin {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kSerialDigits = 8;
constexpr std::size_t kNtfsDigits = 16;

std::optional<unsigned> Hex(std::string_view digits) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    const bool all = error == std::errc() && end == digits.data() + digits.size() && !digits.empty();
    return all ? std::optional<unsigned>(value) : std::nullopt;
}

// udev writes what might hurt in a file name as \x and two hexadecimal digits.
std::string Decode(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        const std::optional<unsigned> byte =
            text.substr(0, 2) == "\\x" && text.size() >= 4 ? Hex(text.substr(2, 2)) : std::nullopt;
        out.push_back(byte ? static_cast<char>(*byte) : text[0]);
        text.remove_prefix(byte ? 4 : 1);
    }
    return out;
}

VolumeIdentity FromUdev(const fs::path& file) {
    constexpr std::string_view kLabel = "E:ID_FS_LABEL_ENC=";
    constexpr std::string_view kUuid = "E:ID_FS_UUID=";
    VolumeIdentity identity;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        if (line.compare(0, kLabel.size(), kLabel) == 0) {
            identity.label = Decode(std::string_view(line).substr(kLabel.size()));
        } else if (line.compare(0, kUuid.size(), kUuid) == 0) {
            identity.uuid = line.substr(kUuid.size());
        }
    }
    return identity;
}

// The name of the link in `folder` that points to the device.
std::string NameOfLink(const fs::path& folder, const std::string& device_name) {
    std::error_code error;
    for (fs::directory_iterator link(folder, error); !error && link != fs::directory_iterator(); link.increment(error)) {
        std::error_code ignored;
        if (fs::read_symlink(link->path(), ignored).filename() == device_name) {
            return Decode(link->path().filename().native());
        }
    }
    return {};
}

}  // namespace

VolumeIdentity ReadVolumeIdentity(const DriveSources& sources, const Drive& drive) {
    const BlockDevice device = ReadBlockDevice(sources.sysfs, drive.device_id, drive.device);
    if (!device.found) {
        return {};
    }
    VolumeIdentity identity = FromUdev(fs::path(sources.udev_data) / ("b" + device.number));
    if (identity.label.empty()) {
        identity.label = NameOfLink(fs::path(sources.disk_links) / "by-label", device.name);
    }
    if (identity.uuid.empty()) {
        identity.uuid = NameOfLink(fs::path(sources.disk_links) / "by-uuid", device.name);
    }
    return identity;
}

DWORD SerialFromUuid(std::string_view uuid) {
    std::string digits;
    for (const char c : uuid) {
        if (Hex(std::string_view(&c, 1))) {
            digits.push_back(c);
        }
    }
    std::string_view rest = digits;
    if (rest.size() == kNtfsDigits) {
        rest.remove_prefix(kNtfsDigits - kSerialDigits);
    }
    DWORD serial = 0;
    for (; !rest.empty(); rest.remove_prefix(std::min(rest.size(), kSerialDigits))) {
        serial ^= Hex(rest.substr(0, kSerialDigits)).value_or(0);
    }
    return serial;
}

}  // namespace kawin
