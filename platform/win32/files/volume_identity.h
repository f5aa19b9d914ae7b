#pragma once

// Label and identifier of the file system in a drive. Internal to the layer.

#include <string>
#include <string_view>

#include "drive_table.h"

namespace kawin {

struct VolumeIdentity {
    std::string label;  // bytes as the file system holds them; empty without one
    std::string uuid;   // as the system writes it: "ABCD-1234" for FAT; empty when not known
};

// From udev's data of the device, else from the links in by-label and by-uuid.
VolumeIdentity ReadVolumeIdentity(const DriveSources& sources, const Drive& drive);

// The 32-bit serial number of an identifier: what Windows shows for FAT and NTFS, for longer ones all digits folded together;
// 0 for text without hexadecimal digits.
DWORD SerialFromUuid(std::string_view uuid);

}  // namespace kawin
