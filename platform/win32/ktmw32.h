#pragma once

// Transactions of the registry. "KtmW32.dll" has these functions by name, too.
//
// A change made through a handle of RegCreateKeyTransactedW or RegOpenKeyTransactedW, and RegDeleteKeyTransactedW, is seen by
// others when the transaction is committed; all changes in one hive are then there, or none. While it is open, nobody else writes
// to the hives that it has touched: others wait, and fail after five seconds; so commit soon. The thread that began it gets
// ERROR_TRANSACTIONAL_CONFLICT at once when it changes the same hive outside the transaction.

#include <windows.h>

struct GUID;

// A handle for CloseHandle, which rolls back what has not been committed; INVALID_HANDLE_VALUE after a failure. `timeout` is 0 or
// INFINITE; the unit of work, isolation level and flags are null and 0 (ERROR_INVALID_PARAMETER); the rest is not kept.
KADATA_API HANDLE CreateTransaction(SECURITY_ATTRIBUTES* security, GUID* unit_of_work, DWORD options, DWORD isolation_level,
                                    DWORD isolation_flags, DWORD timeout, LPWSTR description) noexcept;

// ERROR_TRANSACTION_ALREADY_COMMITTED, ERROR_TRANSACTION_ALREADY_ABORTED; when a hive cannot be written, the registry's error,
// and the transaction is rolled back.
KADATA_API BOOL CommitTransaction(HANDLE transaction) noexcept;
KADATA_API BOOL RollbackTransaction(HANDLE transaction) noexcept;
