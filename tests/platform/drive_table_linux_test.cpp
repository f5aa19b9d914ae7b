// Drives of a system that is handed in: what is mounted, what sysfs says of the disks, what udev knows of the volumes.

#include <files/drive_table.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <tchar.h>
#include <windows.h>
#include <winioctl.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <tuple>

#include "support/handles.h"
#include "support/last_error.h"
#include "support/native_path_linux.h"
#include "support/temp_folder.h"

namespace {

namespace fs = std::filesystem;
using test::ErrorOf, test::Narrow, test::TempFolder;

struct Disk {
    std::string name;    // "sdb"
    std::string number;  // of its only partition, NAME1
    std::string path;    // of its folder below sysfs, without the name
    bool removable = false;
};

const Disk kInternal{"sda", "8:1", "devices/pci0000:00/ata1/host0/block"};
const Disk kStick{"sdb", "8:17", "devices/pci0000:00/0000:00:14.0/usb1/1-2/host6/block", true};
const Disk kUsbDisk{"sdc", "8:33", "devices/pci0000:00/0000:00:14.0/usb2/2-1/host7/block"};
const Disk kCard{"mmcblk0", "179:1", "devices/pci0000:00/mmc_host/mmc0/mmc0:0001/block", true};
const Disk kOptical{"sr", "11:0", "devices/pci0000:00/ata2/host1/block", true};

struct HandedInSystem {
    HandedInSystem() {
        for (const Disk& disk : {kInternal, kStick, kUsbDisk, kCard, kOptical})
            Add(disk);
        fs::create_directories(root_ / "udev");
    }
    ~HandedInSystem() {
        unsetenv("KADATA_DRIVES");
        kawin::HandInDriveSources({});
    }

    // A folder that can be mounted at; its path as a mount table writes it.
    std::string Point(const std::string& name) const {
        fs::create_directories(root_ / name);
        return (root_ / name).native();
    }

    // Hands in "/" and these lines.
    void Mount(const std::string& lines) const {
        Write("mountinfo", "1 0 8:1 / / rw - ext4 /dev/sda1 rw\n" + lines);
        const auto below = [this](const char* name) { return (root_ / name).native(); };
        kawin::HandInDriveSources({below("mountinfo"), below("sysfs"), below("udev"), below("disk")});
    }

    void MountStick(const std::string& file_system = "vfat") const {
        Mount("40 1 8:17 / " + Point("stick") + " rw - " + file_system + " /dev/sdb1 rw\n");
    }

    void Write(const fs::path& name, const std::string& text) const {
        fs::create_directories((root_ / name).parent_path());
        std::ofstream(root_ / name) << text;
    }

    void Link(const fs::path& name, const fs::path& target) const {
        fs::create_directories((root_ / name).parent_path());
        fs::create_symlink(target, root_ / name);
    }

    void Add(const Disk& disk) const {
        const fs::path folder = fs::path("sysfs") / disk.path / disk.name;
        const fs::path partition = folder / (disk.name + "1");
        Write(folder / "removable", disk.removable ? "1\n" : "0\n");
        Write(folder / "device/vendor", "Maker   \n");
        Write(folder / "device/model", "Stick 16\n");
        Write(partition / "partition", "1\n");
        Write(partition / "dev", disk.number + "\n");
        Link("sysfs/dev/block/" + disk.number, root_ / partition);
        Link("sysfs/class/block/" + disk.name + "1", root_ / partition);
    }

    const TempFolder folder_;
    const fs::path root_ = test::Native(folder_.Path());
};

// "C3 D2 ": each drive with its type.
std::string LettersAndTypes() {
    std::string text;
    for (TCHAR root[] = _T("A:\\"); root[0] <= _T('Z'); ++root[0])
        if ((GetLogicalDrives() >> (root[0] - _T('A')) & 1) != 0)
            text += static_cast<char>(root[0]) + std::to_string(GetDriveTypeW(root)) + " ";
    return text;
}

TEST(LinuxFiles, GivesLettersToRemovableMediaAndToWhatTheEnvironmentNames) {
    const HandedInSystem system;
    const std::string a = system.Point("a"), b = system.Point("b"), blank = system.Point("my stick");
    std::string escaped = blank;
    escaped.replace(escaped.rfind(' '), 1, "\\040");
    system.Link("sysfs/devices/virtual/block/dm-0/slaves/sdb1", system.root_ / "sysfs" / kStick.path / "sdb/sdb1");
    system.Write("sysfs/devices/virtual/block/dm-0/dev", "254:0\n");
    system.Link("sysfs/dev/block/254:0", system.root_ / "sysfs/devices/virtual/block/dm-0");

    const auto at = [](const std::string& point, const char* number, const char* device, const char* file_system = "vfat") {
        return std::string("40 1 ") + number + " / " + point + " rw shared:7 - " + file_system + " /dev/" + device + " rw\n";
    };
    const std::tuple<const char*, std::string, std::string, std::string> rows[] = {
        {"in the order of mounting", at(a, "8:33", "sdc1") + at(b, "8:17", "sdb1"), "", "C3 D2 E2 "},
        {"a card, an optical disc", at(a, "179:1", "mmcblk0p1") + at(b, "11:0", "sr0", "iso9660"), "", "C3 D2 E5 "},
        {"a blank in the name", at(escaped, "8:17", "sdb1"), "", "C3 D2 "},
        {"one medium twice", at(a, "8:17", "sdb1") + at(b, "8:17", "sdb1"), "", "C3 D2 "},
        {"covered by another", at(a, "8:17", "sdb1") + "41 40 0:50 / " + a + " rw - tmpfs tmpfs rw\n", "", "C3 "},
        {"encrypted", at(a, "254:0", "mapper/luks", "ext4"), "", "C3 D2 "},
        {"without a number of its own", at(a, "0:44", "sdb1", "btrfs"), "", "C3 D2 "},
        {"damaged lines", "40 1 8:17\n\n40 1 8:17 / " + a + " rw vfat\n - - -\n" + at("relative", "8:17", "sdb1"), "", "C3 "},
        {"named letters are not used for media", at(a, "8:17", "sdb1"), "D=" + b, "C3 D3 E2 "},
        {"a medium named by its letter", at(a, "8:17", "sdb1"), "u=" + a + "/", "C3 U2 "},
        {"a folder of a medium", at(a, "8:17", "sdb1"), "U=" + system.Point("a/sub"), "C3 D2 U3 "},
        {"on the net, in memory, missing", at(a, "0:60", "x", "nfs4") + at(b, "0:61", "x", "tmpfs"),
         "N=" + a + ";R=" + b + ";M=" + a + "/none", "C3 M1 N4 R6 "},
        {"nonsense is passed over", "", ";=;E;E=;E=relative;1=/x;C=" + a + ";;F=" + b, "C3 F3 "},
    };
    for (const auto& [what, mounts, overrides, drives] : rows) {
        SCOPED_TRACE(what);
        setenv("KADATA_DRIVES", overrides.c_str(), 1);
        system.Mount(mounts);
        EXPECT_EQ(LettersAndTypes(), drives);
    }
}

TEST(LinuxFiles, LeadsPathsToTheMediumAndBack) {
    const HandedInSystem system;
    system.MountStick();
    test::WriteBytes(test::Widen("C:" + (system.root_ / "stick/on it").native()), "12345");
    WIN32_FIND_DATAW data;
    const HANDLE search = FindFirstFileW(_T("d:\\*"), &data);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    EXPECT_EQ(Narrow(data.cFileName), "on it");  // and no dots: it is a root
    EXPECT_TRUE(FindClose(search));

    const fs::path before = fs::current_path();
    TCHAR path[MAX_PATH];
    EXPECT_TRUE(SetCurrentDirectoryW(_T("D:\\")));
    EXPECT_EQ(GetCurrentDirectoryW(MAX_PATH, path), 3u);
    EXPECT_EQ(Narrow(path), "D:\\");
    EXPECT_NE(GetFullPathNameW(_T("..\\x"), MAX_PATH, path, nullptr), 0u);
    EXPECT_EQ(Narrow(path), "D:\\x");
    fs::current_path(before);
}

TEST(LinuxFiles, TellsLabelSerialAndFileSystem) {
    const HandedInSystem system;
    const auto information = [] {
        TCHAR label[MAX_PATH], file_system[MAX_PATH];
        DWORD serial = 0;
        EXPECT_TRUE(GetVolumeInformationW(_T("D:\\"), label, MAX_PATH, &serial, nullptr, nullptr, file_system, MAX_PATH));
        char number[16];
        snprintf(number, sizeof number, " %08X ", serial);
        return Narrow(label) + number + Narrow(file_system);
    };
    system.MountStick("exfat");
    system.Link("disk/by-label/Other", "../../sda1");
    system.Link("disk/by-label/Praxis\\x20\xC3\x84rzte", "../../sdb1");
    system.Link("disk/by-uuid/1A2B-3C4D", "../../sdb1");
    EXPECT_EQ(information(), "Praxis \xC3\x84rzte 1A2B3C4D exFAT");

    system.MountStick("ntfs3");
    system.Write(
        "udev/b8:17",
        "S:disk/by-uuid/x\nE:ID_FS_LABEL=From_udev\nE:ID_FS_LABEL_ENC=From\\x20udev\\x2\nE:ID_FS_UUID=0123456789ABCDEF\n");
    EXPECT_EQ(information(), "From udev\\x2 89ABCDEF NTFS");

    TCHAR small[4];
    EXPECT_EQ(ErrorOf(GetVolumeInformationW(_T("D:\\"), small, 4, nullptr, nullptr, nullptr, nullptr, 0)), ERROR_MORE_DATA);
}

// The bytes written of what is told of the device, or nothing with the last error set.
std::string Ask(HANDLE volume, DWORD size, DWORD code = IOCTL_STORAGE_QUERY_PROPERTY) {
    STORAGE_PROPERTY_QUERY query{StorageDeviceProperty, PropertyStandardQuery, {}};
    std::string bytes(size, '\0');
    DWORD returned = 99;
    const BOOL told = DeviceIoControl(volume, code, &query, sizeof query, bytes.data(), size, &returned, nullptr);
    EXPECT_EQ(told == FALSE, returned == 0);
    return bytes.substr(0, returned);
}

TEST(LinuxFiles, DescribesTheDeviceOfADrive) {
    const HandedInSystem system;
    system.MountStick();
    const test::Handle volume(CreateFileW(_T("\\\\?\\D:"), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
    const std::string bytes = Ask(volume, 551);
    STORAGE_DEVICE_DESCRIPTOR descriptor;
    ASSERT_GT(bytes.size(), sizeof descriptor);
    memcpy(&descriptor, bytes.data(), sizeof descriptor);
    EXPECT_EQ(descriptor.Size, bytes.size());
    EXPECT_EQ(descriptor.BusType, BusTypeUsb);
    EXPECT_EQ(descriptor.RemovableMedia, 1);
    EXPECT_STREQ(bytes.c_str() + descriptor.VendorIdOffset, "Maker");
    EXPECT_STREQ(bytes.c_str() + descriptor.ProductIdOffset, "Stick 16");
    EXPECT_EQ(descriptor.SerialNumberOffset, 0u);

    EXPECT_EQ(Ask(volume, sizeof(STORAGE_DESCRIPTOR_HEADER)), bytes.substr(0, sizeof(STORAGE_DESCRIPTOR_HEADER)));
    EXPECT_EQ(ErrorOf(!Ask(volume, 7).empty()), ERROR_INSUFFICIENT_BUFFER);
    EXPECT_EQ(ErrorOf(!Ask(volume, 551, IOCTL_STORAGE_QUERY_PROPERTY + 4).empty()), ERROR_INVALID_FUNCTION);
    system.Mount("");
    EXPECT_EQ(ErrorOf(!Ask(volume, 551).empty()), ERROR_NOT_READY);
}

}  // namespace
