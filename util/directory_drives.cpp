// Finding a removable drive.

#include <kadata/directory.h>
#include <winioctl.h>

#include "directory_support.h"

using namespace kadata::directory;

namespace {

constexpr int kMostDrives = 32;
constexpr ULONGLONG kSmallestMedium = 20;  // MiB; what is smaller is a floppy disk
constexpr int kMebibyteShift = 20;
constexpr DWORD kDescriptorRoom = 551;

class SystemDriveTable final : public IDriveTable {
public:
    DWORD LogicalDrives() const override { return GetLogicalDrives(); }
    UINT DriveType(const CString& root) const override { return GetDriveTypeW(root); }
    std::optional<ULONGLONG> TotalBytes(const CString& root) const override;
    std::optional<CString> VolumeLabel(const CString& root) const override;
    int BusType(TCHAR letter) const override;
};

std::optional<ULONGLONG> SystemDriveTable::TotalBytes(const CString& root) const {
    DWORD sectorsPerCluster = 0, bytesPerSector = 0, freeClusters = 0, clusters = 0;
    if (!GetDiskFreeSpaceW(root, &sectorsPerCluster, &bytesPerSector, &freeClusters, &clusters))
        return std::nullopt;
    return static_cast<ULONGLONG>(clusters) * bytesPerSector * sectorsPerCluster;
}

std::optional<CString> SystemDriveTable::VolumeLabel(const CString& root) const {
    TCHAR label[MAX_PATH] = {}, fileSystem[MAX_PATH] = {};
    if (!GetVolumeInformationW(root, label, MAX_PATH, nullptr, nullptr, nullptr, fileSystem, MAX_PATH))
        return std::nullopt;
    return CString(label);
}

int SystemDriveTable::BusType(TCHAR letter) const {
    CString path;
    path.Format(_T("\\\\?\\%c:"), letter);
    const FileHandle volume(
        CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!volume.IsOpen())
        return BusTypeUnknown;
    STORAGE_PROPERTY_QUERY query = {};
    query.PropertyId = StorageDeviceProperty;
    query.QueryType = PropertyStandardQuery;
    alignas(STORAGE_DEVICE_DESCRIPTOR) BYTE buffer[kDescriptorRoom] = {};
    auto& descriptor = *reinterpret_cast<STORAGE_DEVICE_DESCRIPTOR*>(buffer);
    descriptor.Size = kDescriptorRoom;
    DWORD returned = 0;
    const bool told = DeviceIoControl(volume.Get(), IOCTL_STORAGE_QUERY_PROPERTY, &query, sizeof query, buffer, kDescriptorRoom,
                                      &returned, nullptr);
    return told ? descriptor.BusType : BusTypeUnknown;
}

// The label of the drive's medium; nothing when the drive is not one to look for.
std::optional<CString> LabelOfSuitableMedium(const IDriveTable& drives, const CString& root, LPCTSTR wantedLabel) {
    if (drives.DriveType(root) != DRIVE_REMOVABLE)
        return std::nullopt;
    const std::optional<ULONGLONG> size = drives.TotalBytes(root);
    if (!size || *size >> kMebibyteShift < kSmallestMedium)
        return std::nullopt;
    std::optional<CString> label = drives.VolumeLabel(root);
    const bool anyLabel = wantedLabel == nullptr || *wantedLabel == 0;
    return label && (anyLabel || label->CompareNoCase(wantedLabel) == 0) ? label : std::nullopt;
}

// A drive whose device cannot be asked is none.
bool IsOnUsb(const IDriveTable& drives, TCHAR letter) {
    try {
        return drives.BusType(letter) == BusTypeUsb;
    } catch (CException* failure) {
        failure->Delete();
    } catch (...) {
    }
    return false;
}

}  // namespace

int CDirectory::FindRemovableUsbDrive(LPCTSTR volumeLabel, CString& drive, CString& label, int requireUsbBus) {
    return FindRemovableUsbDrive(SystemDriveTable(), volumeLabel, drive, label, requireUsbBus);
}

int CDirectory::FindRemovableUsbDrive(const IDriveTable& drives, LPCTSTR volumeLabel, CString& drive, CString& label,
                                      int requireUsbBus) {
    const CString wanted = volumeLabel;  // may be the text of an output
    drive.Empty();
    label.Empty();
    const DWORD present = drives.LogicalDrives();
    for (int i = 0; i < kMostDrives; ++i) {
        const TCHAR letter = static_cast<TCHAR>(_T('A') + i);
        const CString root = CString(letter) + _T(":\\");
        if ((present >> i & 1) == 0)
            continue;
        const std::optional<CString> found = LabelOfSuitableMedium(drives, root, wanted);
        if (!found || (requireUsbBus && !IsOnUsb(drives, letter)))
            continue;
        drive = root;
        label = *found;
        return 1;
    }
    return 0;
}
