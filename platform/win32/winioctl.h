#pragma once

// Asking a device: the storage property query for the device descriptor.

#include "windows.h"

constexpr DWORD IOCTL_STORAGE_QUERY_PROPERTY = 0x002D1400;

enum STORAGE_PROPERTY_ID { StorageDeviceProperty = 0 };
enum STORAGE_QUERY_TYPE { PropertyStandardQuery = 0, PropertyExistsQuery = 1 };

struct STORAGE_PROPERTY_QUERY {
    STORAGE_PROPERTY_ID PropertyId;
    STORAGE_QUERY_TYPE QueryType;
    BYTE AdditionalParameters[1];
};

struct STORAGE_DESCRIPTOR_HEADER {
    DWORD Version;
    DWORD Size;
};

enum STORAGE_BUS_TYPE {
    BusTypeUnknown = 0x00,
    BusTypeScsi = 0x01,
    BusTypeAtapi = 0x02,
    BusTypeAta = 0x03,
    BusType1394 = 0x04,
    BusTypeFibre = 0x06,
    BusTypeUsb = 0x07,
    BusTypeiScsi = 0x09,
    BusTypeSas = 0x0A,
    BusTypeSata = 0x0B,
    BusTypeSd = 0x0C,
    BusTypeMmc = 0x0D,
    BusTypeVirtual = 0x0E,
    BusTypeFileBackedVirtual = 0x0F,
    BusTypeNvme = 0x11
};

// The texts that the offsets point to are plain characters with a terminator, counted from the descriptor's begin; offset 0 is
// none.
struct STORAGE_DEVICE_DESCRIPTOR {
    DWORD Version;
    DWORD Size;  // with its texts
    BYTE DeviceType;
    BYTE DeviceTypeModifier;
    BOOLEAN RemovableMedia;
    BOOLEAN CommandQueueing;
    DWORD VendorIdOffset;
    DWORD ProductIdOffset;
    DWORD ProductRevisionOffset;
    DWORD SerialNumberOffset;
    STORAGE_BUS_TYPE BusType;
    DWORD RawPropertiesLength;
    BYTE RawDeviceProperties[1];
};
using PSTORAGE_DEVICE_DESCRIPTOR = STORAGE_DEVICE_DESCRIPTOR*;

// Asks the volume behind `device` (opened as \\.\X: or \\?\X:) for StorageDeviceProperty. As much of the descriptor as fits is
// written and its Size says what the whole needs, so a buffer of one STORAGE_DESCRIPTOR_HEADER asks for the size.
// ERROR_INVALID_FUNCTION for another code, property or query, for a file and for a drive that is no block device,
// ERROR_INSUFFICIENT_BUFFER when not even the header fits, ERROR_NOT_READY when the drive is gone, ERROR_INVALID_HANDLE. Always
// at once: `overlapped` must be null.
KADATA_API BOOL DeviceIoControl(HANDLE device, DWORD code, LPVOID in, DWORD in_size, LPVOID out, DWORD out_size, LPDWORD returned,
                                LPOVERLAPPED overlapped) noexcept;
