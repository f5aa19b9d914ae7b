#pragma once

// What sysfs tells of the device that holds a file system. Internal to the layer.

#include <string>

#include "../base/types.h"

namespace kawin {

// The numbers are those of STORAGE_BUS_TYPE.
enum class DeviceBus : BYTE {
    unknown = 0,
    scsi = 1,
    ata = 3,
    firewire = 4,
    fibre = 6,
    usb = 7,
    iscsi = 9,
    sas = 10,
    sata = 11,
    sd = 12,
    mmc = 13,
    virtual_disk = 14,
    file_backed = 15,
    nvme = 17
};

struct BlockDevice {
    bool found = false;
    bool removable = false;
    DeviceBus bus = DeviceBus::unknown;
    std::string name;    // the kernel's name of the partition: "sdb1"
    std::string number;  // "8:17"
    std::string vendor;  // this and the rest without blanks around them, empty when not told
    std::string product;
    std::string revision;
    std::string serial;
};

// Looks the device up by its number ("8:17"), else by `source` ("/dev/sdb1": file systems that span devices have no number of
// their own), and follows an encrypted or combined volume to the disk beneath it. `sysfs` is /sys or a test's folder.
BlockDevice ReadBlockDevice(const std::string& sysfs, const std::string& device_id, const std::string& source);

}  // namespace kawin
