/**
 * @file
 * Settings files: the Win32 profile operations; the path comes last.
 *
 * Texts are in the ANSI code page; section and key names do not heed case. A path without a folder
 * means the Windows folder.
 */
#pragma once

#include "base.h"

VLSDK_BEGIN

/**
 * Reads a text.
 * @param[in]  section   section; null: the names of all sections, each terminated, one more zero at the end
 * @param[in]  key       key; null: the names of all keys of the section, likewise
 * @param[in]  fallback  text when there is no such key; null: empty
 * @param[out] text      receives the text, cut and terminated
 * @param[in]  size      room at @p text in bytes
 * @param[in]  path      settings file
 * @return characters copied, without the terminator
 */
VLSDK_API uint32_t Btsdk_GetPrivateProfileString(_In_opt_ const char* section, _In_opt_ const char* key,
                                                 _In_opt_ const char* fallback, _Out_writes_(size) char* text,
                                                 uint32_t size, _In_ const char* path);

/**
 * Reads a number.
 * @param[in] section   section
 * @param[in] key       key
 * @param[in] fallback  value when there is no such key
 * @param[in] path      settings file
 * @return the number at the start of the text, 0 when it starts with none; negative ones as 32 bits
 */
VLSDK_API uint32_t Btsdk_GetPrivateProfileInt(_In_ const char* section, _In_ const char* key,
                                              int32_t fallback, _In_ const char* path);

/**
 * Reads all lines of a section.
 * @param[in]  section  section
 * @param[out] text     receives "key=value" lines, each terminated, one more zero at the end
 * @param[in]  size     room at @p text in bytes
 * @param[in]  path     settings file
 * @return characters copied, without the last terminator; 0: no such section, or an empty one
 */
VLSDK_API uint32_t Btsdk_GetPrivateProfileSection(_In_ const char* section, _Out_writes_(size) char* text,
                                                  uint32_t size, _In_ const char* path);

/**
 * Writes a text.
 * @param[in] section  section, made when missing
 * @param[in] key      key; null (with a null value): the whole section is deleted
 * @param[in] value    text; null: the key is deleted
 * @param[in] path     settings file, made when missing
 * @return TRUE, or FALSE: see GetLastError()
 */
VLSDK_API BOOL Btsdk_WritePrivateProfileString(_In_ const char* section, _In_opt_ const char* key,
                                               _In_opt_ const char* value, _In_ const char* path);

/**
 * Writes a number in decimal digits.
 * @param[in] section  section, made when missing
 * @param[in] key      key
 * @param[in] value    the number
 * @param[in] path     settings file, made when missing
 * @return TRUE, or FALSE: see GetLastError()
 */
VLSDK_API BOOL Btsdk_WritePrivateProfileInt(_In_ const char* section, _In_ const char* key, int32_t value,
                                            _In_ const char* path);

/**
 * Reads a record that Btsdk_WritePrivateProfileStruct() wrote.
 * @param[in]  section  section
 * @param[in]  key      key
 * @param[out] record   receives the bytes
 * @param[in]  size     their number, exactly as written
 * @param[in]  path     settings file
 * @return TRUE, or FALSE: missing, of another size, or its checksum is wrong
 */
VLSDK_API BOOL Btsdk_GetPrivateProfileStruct(_In_ const char* section, _In_ const char* key,
                                             _Out_writes_bytes_(size) void* record, uint32_t size,
                                             _In_ const char* path);

/**
 * Writes a record as hexadecimal digits with a checksum.
 * @param[in] section  section, made when missing
 * @param[in] key      key
 * @param[in] record   the bytes
 * @param[in] size     their number
 * @param[in] path     settings file, made when missing
 * @return TRUE, or FALSE: see GetLastError()
 */
VLSDK_API BOOL Btsdk_WritePrivateProfileStruct(_In_ const char* section, _In_ const char* key,
                                               _In_reads_bytes_(size) void* record, uint32_t size,
                                               _In_ const char* path);

VLSDK_END
