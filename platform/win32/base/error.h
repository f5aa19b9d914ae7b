#pragma once

// The system's error numbers and the calling thread's last error.
//
// Every function of the layer that fails sets the thread's last error; one that succeeds leaves it alone unless its own
// header says otherwise.

#include "types.h"

constexpr DWORD ERROR_SUCCESS = 0;
constexpr DWORD NO_ERROR = 0;
constexpr DWORD ERROR_INVALID_FUNCTION = 1;
constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
constexpr DWORD ERROR_ACCESS_DENIED = 5;
constexpr DWORD ERROR_INVALID_HANDLE = 6;
constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr DWORD ERROR_BAD_FORMAT = 11;
constexpr DWORD ERROR_INVALID_DATA = 13;
constexpr DWORD ERROR_OUTOFMEMORY = 14;
constexpr DWORD ERROR_INVALID_DRIVE = 15;
constexpr DWORD ERROR_CURRENT_DIRECTORY = 16;
constexpr DWORD ERROR_NOT_SAME_DEVICE = 17;
constexpr DWORD ERROR_NO_MORE_FILES = 18;
constexpr DWORD ERROR_WRITE_PROTECT = 19;
constexpr DWORD ERROR_NOT_READY = 21;
constexpr DWORD ERROR_SEEK = 25;
constexpr DWORD ERROR_WRITE_FAULT = 29;
constexpr DWORD ERROR_READ_FAULT = 30;
constexpr DWORD ERROR_GEN_FAILURE = 31;
constexpr DWORD ERROR_SHARING_VIOLATION = 32;
constexpr DWORD ERROR_LOCK_VIOLATION = 33;
constexpr DWORD ERROR_HANDLE_EOF = 38;
constexpr DWORD ERROR_HANDLE_DISK_FULL = 39;
constexpr DWORD ERROR_NOT_SUPPORTED = 50;
constexpr DWORD ERROR_BAD_NETPATH = 53;
constexpr DWORD ERROR_BAD_NET_NAME = 67;
constexpr DWORD ERROR_FILE_EXISTS = 80;
constexpr DWORD ERROR_INVALID_PARAMETER = 87;
constexpr DWORD ERROR_BROKEN_PIPE = 109;
constexpr DWORD ERROR_BUFFER_OVERFLOW = 111;
constexpr DWORD ERROR_DISK_FULL = 112;
constexpr DWORD ERROR_CALL_NOT_IMPLEMENTED = 120;
constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
constexpr DWORD ERROR_INVALID_NAME = 123;
constexpr DWORD ERROR_MOD_NOT_FOUND = 126;
constexpr DWORD ERROR_PROC_NOT_FOUND = 127;
constexpr DWORD ERROR_NEGATIVE_SEEK = 131;
constexpr DWORD ERROR_DIR_NOT_ROOT = 144;
constexpr DWORD ERROR_DIR_NOT_EMPTY = 145;
constexpr DWORD ERROR_BAD_PATHNAME = 161;
constexpr DWORD ERROR_BUSY = 170;
constexpr DWORD ERROR_ALREADY_EXISTS = 183;
constexpr DWORD ERROR_BAD_EXE_FORMAT = 193;
constexpr DWORD ERROR_ENVVAR_NOT_FOUND = 203;
constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
constexpr DWORD ERROR_FILE_TOO_LARGE = 223;
constexpr DWORD ERROR_MORE_DATA = 234;
constexpr DWORD WAIT_TIMEOUT = 258;
constexpr DWORD ERROR_NO_MORE_ITEMS = 259;
constexpr DWORD ERROR_DIRECTORY = 267;
constexpr DWORD ERROR_NOT_OWNER = 288;
constexpr DWORD ERROR_TOO_MANY_POSTS = 298;
constexpr DWORD ERROR_INVALID_ADDRESS = 487;
constexpr DWORD ERROR_IO_DEVICE = 1117;
constexpr DWORD ERROR_STOPPED_ON_SYMLINK = 681;
constexpr DWORD ERROR_OPERATION_ABORTED = 995;
constexpr DWORD ERROR_NOACCESS = 998;
constexpr DWORD ERROR_STACK_OVERFLOW = 1001;
constexpr DWORD ERROR_INVALID_FLAGS = 1004;
constexpr DWORD ERROR_BADDB = 1009;
constexpr DWORD ERROR_BADKEY = 1010;
constexpr DWORD ERROR_CANTOPEN = 1011;
constexpr DWORD ERROR_CANTREAD = 1012;
constexpr DWORD ERROR_CANTWRITE = 1013;
constexpr DWORD ERROR_KEY_DELETED = 1018;
constexpr DWORD ERROR_NO_UNICODE_TRANSLATION = 1113;
constexpr DWORD ERROR_TOO_MANY_LINKS = 1142;
constexpr DWORD ERROR_NOT_FOUND = 1168;
constexpr DWORD ERROR_CANCELLED = 1223;
constexpr DWORD ERROR_NO_SYSTEM_RESOURCES = 1450;
constexpr DWORD ERROR_DISK_QUOTA_EXCEEDED = 1295;
constexpr DWORD ERROR_FILE_CORRUPT = 1392;
constexpr DWORD ERROR_DISK_CORRUPT = 1393;
constexpr DWORD ERROR_RESOURCE_DATA_NOT_FOUND = 1812;
constexpr DWORD ERROR_RESOURCE_TYPE_NOT_FOUND = 1813;
constexpr DWORD ERROR_RESOURCE_NAME_NOT_FOUND = 1814;
constexpr DWORD ERROR_RESOURCE_LANG_NOT_FOUND = 1815;
constexpr DWORD ERROR_CANT_ACCESS_FILE = 1920;
constexpr DWORD ERROR_CANT_RESOLVE_FILENAME = 1921;

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005U);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057U);

constexpr HRESULT HRESULT_FROM_WIN32(DWORD error) {
    return static_cast<HRESULT>(error == 0 ? 0 : ((error & 0xFFFF) | 0x80070000U));
}

// The last error of the calling thread; 0 before its first failure.
KADATA_API DWORD GetLastError() noexcept;
KADATA_API void SetLastError(DWORD error) noexcept;

// Whether a failing medium may stop the program with a question to the user. Kept and returned so that callers can save and
// restore it; nothing here ever asks.
constexpr UINT SEM_FAILCRITICALERRORS = 0x0001;
constexpr UINT SEM_NOOPENFILEERRORBOX = 0x8000;
KADATA_API UINT SetErrorMode(UINT mode) noexcept;
KADATA_API UINT GetErrorMode() noexcept;
