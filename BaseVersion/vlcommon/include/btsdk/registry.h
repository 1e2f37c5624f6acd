/**
 * @file
 * Registry: the Win32 operations in the ANSI code page. Results are Win32 codes, 0 for success.
 *
 * A null value name is the default value. An operation that fails, also for lack of room
 * (ERROR_MORE_DATA, 234), has written nothing. The operations "ForX64Reg" work on the 64-bit view.
 */
#pragma once

#include "base.h"

VLSDK_BEGIN

/**
 * Opens a key.
 * @param[in]  root  root key or open key
 * @param[in]  sub   path below it; null or empty: the key itself
 * @param[out] key   receives the key, closed with Btsdk_RegCloseKey()
 * @return 0, or a Win32 code
 */
VLSDK_API uint32_t Btsdk_RegOpenKey(_In_ HKEY root, _In_opt_ const char* sub, _Out_ HKEY* key);

/**
 * Opens a key and makes it when it is missing.
 * @param[in]  root  root key or open key
 * @param[in]  sub   path below it
 * @param[out] key   receives the key, closed with Btsdk_RegCloseKey()
 * @return 0, or a Win32 code
 */
VLSDK_API uint32_t Btsdk_RegCreateKey(_In_ HKEY root, _In_ const char* sub, _Out_ HKEY* key);

/**
 * Closes a key. Each is closed once.
 * @param[in] key  from Btsdk_RegOpenKey() or Btsdk_RegCreateKey()
 * @return 0, or a Win32 code
 */
VLSDK_API uint32_t Btsdk_RegCloseKey(_In_ HKEY key);

/**
 * The name of a sub-key.
 * @param[in]  key    open key
 * @param[in]  index  which, from 0
 * @param[out] name   receives the name, terminated
 * @param[in]  size   room at @p name in bytes
 * @return 0; ERROR_NO_MORE_ITEMS (259): there are fewer; another Win32 code
 */
VLSDK_API uint32_t Btsdk_RegEnumKey(_In_ HKEY key, uint32_t index, _Out_writes_(size) char* name,
                                    uint32_t size);

/**
 * Name, type and data of a value.
 * @param[in]     key         open key
 * @param[in]     index       which, from 0
 * @param[out]    name        receives the name, terminated
 * @param[in,out] nameLength  in: room at @p name in bytes; out: the name's length without terminator
 * @param[out]    type        receives the registry type; null: not wanted
 * @param[out]    data        receives the data; null: not wanted
 * @param[in,out] dataLength  in: room at @p data in bytes; out: the data's length; null: only with null data
 * @return 0; ERROR_NO_MORE_ITEMS (259): there are fewer; another Win32 code
 */
VLSDK_API uint32_t Btsdk_RegEnumValue(_In_ HKEY key, uint32_t index, _Out_ char* name,
                                      _Inout_ uint32_t* nameLength, _Out_opt_ uint32_t* type,
                                      _Out_opt_ void* data, _Inout_opt_ uint32_t* dataLength);

/**
 * Counts what a key holds.
 * @param[in]  key      open key
 * @param[out] subKeys  receives the number of sub-keys; null: not wanted
 * @param[out] values   receives the number of values; null: not wanted
 * @return 0, or a Win32 code
 */
VLSDK_API uint32_t Btsdk_RegQueryInfoKey(_In_ HKEY key, _Out_opt_ uint32_t* subKeys,
                                         _Out_opt_ uint32_t* values);

/**
 * Reads a text value (REG_SZ, or REG_EXPAND_SZ without expanding it).
 * @param[in]  key    open key
 * @param[in]  value  its name; null: the default value
 * @param[out] text   receives the text, terminated
 * @param[in]  size   room at @p text in bytes
 * @return 0; ERROR_INVALID_DATATYPE: no text; another Win32 code
 */
VLSDK_API uint32_t Btsdk_RegQueryStringValue(_In_ HKEY key, _In_opt_ const char* value,
                                             _Out_writes_(size) char* text, uint32_t size);

/**
 * Reads a number (REG_DWORD).
 * @param[in]  key     open key
 * @param[in]  value   its name; null: the default value
 * @param[out] number  receives the number
 * @return 0; ERROR_INVALID_DATATYPE: no number; another Win32 code
 */
VLSDK_API uint32_t Btsdk_RegQueryIntValue(_In_ HKEY key, _In_opt_ const char* value, _Out_ uint32_t* number);

/**
 * Reads the bytes of a value of any type.
 * @param[in]     key    open key
 * @param[in]     value  its name; null: the default value
 * @param[out]    data   receives the bytes
 * @param[in,out] size   in: room at @p data in bytes; out: their number
 * @return 0, or a Win32 code
 */
VLSDK_API uint32_t Btsdk_RegQueryBinaryValue(_In_ HKEY key, _In_opt_ const char* value, _Out_ void* data,
                                             _Inout_ uint32_t* size);

/**
 * As Btsdk_RegCreateKey(), in the 64-bit view.
 * @param[in]  root  root key or open key
 * @param[in]  sub   path below it
 * @param[out] key   receives the key, closed with Btsdk_RegCloseKeyForX64Reg()
 * @return 0, or a Win32 code
 */
VLSDK_API uint32_t Btsdk_RegCreateKeyForX64Reg(_In_ HKEY root, _In_ const char* sub, _Out_ HKEY* key);

/**
 * As Btsdk_RegEnumValue(), in the 64-bit view.
 * @param[in]     key         from Btsdk_RegCreateKeyForX64Reg()
 * @param[in]     index       which, from 0
 * @param[out]    name        receives the name, terminated
 * @param[in,out] nameLength  in: room at @p name in bytes; out: the name's length without terminator
 * @param[out]    type        receives the registry type; null: not wanted
 * @param[out]    data        receives the data; null: not wanted
 * @param[in,out] dataLength  in: room at @p data in bytes; out: the data's length; null: only with null data
 * @return 0; ERROR_NO_MORE_ITEMS (259): there are fewer; another Win32 code
 */
VLSDK_API uint32_t Btsdk_RegEnumValueForX64Reg(_In_ HKEY key, uint32_t index, _Out_ char* name,
                                               _Inout_ uint32_t* nameLength, _Out_opt_ uint32_t* type,
                                               _Out_opt_ void* data, _Inout_opt_ uint32_t* dataLength);

/**
 * As Btsdk_RegCloseKey(), for a key of the 64-bit view.
 * @param[in] key  from Btsdk_RegCreateKeyForX64Reg()
 * @return 0, or a Win32 code
 */
VLSDK_API uint32_t Btsdk_RegCloseKeyForX64Reg(_In_ HKEY key);

VLSDK_END
