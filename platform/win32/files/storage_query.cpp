#include <algorithm>
#include <cstring>
#include <string>

#include "../base/error_map.h"
#include "../text/no_throw.h"
#include "../winioctl.h"
#include "block_device.h"
#include "drive_table.h"
#include "file_object.h"

namespace kawin {
namespace {

static_assert(BusTypeUsb == static_cast<int>(DeviceBus::usb) && BusTypeNvme == static_cast<int>(DeviceBus::nvme) &&
              BusTypeSata == static_cast<int>(DeviceBus::sata) && BusTypeMmc == static_cast<int>(DeviceBus::mmc) &&
              BusTypeFileBackedVirtual == static_cast<int>(DeviceBus::file_backed));

// Appends the text with its terminator; its offset, 0 for an empty one.
DWORD AddText(std::string& bytes, const std::string& text) {
    if (text.empty()) {
        return 0;
    }
    const auto offset = static_cast<DWORD>(bytes.size());
    bytes.append(text.c_str(), text.size() + 1);
    return offset;
}

std::string Describe(const BlockDevice& device) {
    STORAGE_DEVICE_DESCRIPTOR descriptor{};
    std::string bytes(sizeof descriptor, '\0');
    descriptor.Version = sizeof descriptor;
    descriptor.RemovableMedia = device.removable;
    descriptor.BusType = static_cast<STORAGE_BUS_TYPE>(device.bus);
    descriptor.VendorIdOffset = AddText(bytes, device.vendor);
    descriptor.ProductIdOffset = AddText(bytes, device.product);
    descriptor.ProductRevisionOffset = AddText(bytes, device.revision);
    descriptor.SerialNumberOffset = AddText(bytes, device.serial);
    descriptor.Size = static_cast<DWORD>(bytes.size());
    memcpy(bytes.data(), &descriptor, sizeof descriptor);
    return bytes;
}

bool AsksForDescriptor(DWORD code, LPCVOID in, DWORD in_size) {
    STORAGE_PROPERTY_QUERY query;
    if (code != IOCTL_STORAGE_QUERY_PROPERTY || in == nullptr || in_size < sizeof query) {
        return false;
    }
    memcpy(&query, in, sizeof query);
    return query.PropertyId == StorageDeviceProperty && query.QueryType == PropertyStandardQuery;
}

// The error number; what fits of the answer is in `out`.
DWORD Answer(WCHAR letter, LPVOID out, DWORD out_size, DWORD& returned) {
    if (out == nullptr || out_size < sizeof(STORAGE_DESCRIPTOR_HEADER)) {
        return ERROR_INSUFFICIENT_BUFFER;
    }
    const std::optional<Drive> drive = FindDrive(letter);
    if (!drive) {
        return ERROR_NOT_READY;
    }
    const BlockDevice device = ReadBlockDevice(CurrentDriveSources().sysfs, drive->device_id, drive->device);
    if (!device.found) {
        return ERROR_INVALID_FUNCTION;
    }
    const std::string bytes = Describe(device);
    returned = std::min(out_size, static_cast<DWORD>(bytes.size()));
    memcpy(out, bytes.data(), returned);
    return ERROR_SUCCESS;
}

}  // namespace
}  // namespace kawin

BOOL DeviceIoControl(HANDLE device, DWORD code, LPVOID in, DWORD in_size, LPVOID out, DWORD out_size, LPDWORD returned,
                     LPOVERLAPPED overlapped) noexcept {
    return kawin::NoThrow([=]() -> BOOL {
        DWORD count = 0;
        const kawin::ObjectRef<kawin::FileObject> object = kawin::FindFile(device);
        DWORD error = object ? ERROR_INVALID_FUNCTION : ERROR_INVALID_HANDLE;
        if (object && overlapped == nullptr && object->Kind() == kawin::FileKind::volume &&
            kawin::AsksForDescriptor(code, in, in_size)) {
            error = kawin::Answer(object->Letter(), out, out_size, count);
        }
        if (returned != nullptr) {
            *returned = count;
        }
        return error == ERROR_SUCCESS || kawin::Fail(error);
    });
}
