#include "block_device.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

namespace kawin {
namespace {

namespace fs = std::filesystem;

constexpr int kDeepestStack = 8;  // encrypted volume over logical volume over partition is three

bool IsBlank(char c) {
    return static_cast<unsigned char>(c) <= ' ';
}

// First line of a small attribute file, without blanks around it; empty when it cannot be read.
std::string Attribute(const fs::path& file) {
    std::string text;
    std::ifstream in(file);
    std::getline(in, text);
    while (!text.empty() && IsBlank(text.back())) {
        text.pop_back();
    }
    text.erase(0, static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsBlank) - text.begin()));
    return text;
}

std::string FirstOf(const fs::path& folder, std::initializer_list<const char*> names) {
    for (const char* const name : names) {
        if (std::string text = Attribute(folder / name); !text.empty()) {
            return text;
        }
    }
    return {};
}

std::optional<fs::path> Resolve(const fs::path& link) {
    std::error_code error;
    fs::path real = fs::canonical(link, error);
    return error ? std::nullopt : std::optional<fs::path>(std::move(real));
}

std::optional<fs::path> DeviceFolder(const fs::path& sysfs, const std::string& device_id, const std::string& source) {
    if (std::optional<fs::path> by_number = Resolve(sysfs / "dev/block" / device_id)) {
        return by_number;
    }
    constexpr std::string_view kDevices = "/dev/";
    if (device_id.substr(0, 2) != "0:" || source.substr(0, kDevices.size()) != kDevices) {
        return std::nullopt;
    }
    return Resolve(sysfs / "class/block" / fs::path(source).filename());
}

// The device below an encrypted, logical or combined one; the first of several.
std::optional<fs::path> Below(const fs::path& device) {
    std::error_code error;
    const fs::directory_iterator first(device / "slaves", error);
    return !error && first != fs::directory_iterator() ? Resolve(first->path()) : std::nullopt;
}

bool HasNumber(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

struct BusName {
    std::string_view component;  // of the device's path; a number follows where `numbered`
    bool numbered;
    DeviceBus bus;
};

// The first row that any component fits wins: a USB disk is a SCSI disk too, and an ATA disk is.
constexpr BusName kBuses[] = {
    {"usb", true, DeviceBus::usb},
    {"fw", true, DeviceBus::firewire},
    {"nvme", true, DeviceBus::nvme},
    {"mmc", true, DeviceBus::mmc},
    {"ata", true, DeviceBus::sata},
    {"session", true, DeviceBus::iscsi},
    {"rport-", false, DeviceBus::fibre},
    {"end_device-", false, DeviceBus::sas},
    {"virtio", true, DeviceBus::virtual_disk},
    {"VMBUS:", false, DeviceBus::virtual_disk},
    {"vmbus_", false, DeviceBus::virtual_disk},
    {"loop", true, DeviceBus::file_backed},
    {"zram", true, DeviceBus::virtual_disk},
    {"dm-", true, DeviceBus::virtual_disk},
    {"md", true, DeviceBus::virtual_disk},
    {"vbd-", false, DeviceBus::virtual_disk},
    {"host", true, DeviceBus::scsi},
};

bool Fits(std::string_view component, const BusName& name) {
    const bool begins = component.substr(0, name.component.size()) == name.component;
    return begins && (!name.numbered || HasNumber(component.substr(name.component.size())));
}

DeviceBus BusOf(const fs::path& disk) {
    for (const BusName& name : kBuses) {
        if (std::any_of(disk.begin(), disk.end(), [&name](const fs::path& part) { return Fits(part.native(), name); })) {
            const bool card = name.bus == DeviceBus::mmc && Attribute(disk / "device/type") == "SD";
            return card ? DeviceBus::sd : name.bus;
        }
    }
    return DeviceBus::unknown;
}

}  // namespace

BlockDevice ReadBlockDevice(const std::string& sysfs, const std::string& device_id, const std::string& source) {
    BlockDevice device;
    std::optional<fs::path> folder = DeviceFolder(sysfs, device_id, source);
    if (!folder) {
        return device;
    }
    device.found = true;
    device.name = folder->filename();
    device.number = Attribute(*folder / "dev");
    for (int depth = 0; depth < kDeepestStack; ++depth) {
        std::optional<fs::path> below = Below(*folder);
        if (!below) {
            break;
        }
        folder = std::move(below);
    }
    std::error_code error;
    const fs::path disk = fs::exists(*folder / "partition", error) ? folder->parent_path() : *folder;
    device.removable = Attribute(disk / "removable") == "1";
    device.bus = BusOf(disk.lexically_relative(fs::weakly_canonical(sysfs, error)));
    device.vendor = Attribute(disk / "device/vendor");
    device.product = FirstOf(disk / "device", {"model", "name"});
    device.revision = FirstOf(disk / "device", {"rev", "firmware_rev", "fwrev"});
    device.serial = FirstOf(disk / "device", {"serial"});
    return device;
}

}  // namespace kawin
