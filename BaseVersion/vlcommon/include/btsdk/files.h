/**
 * @file
 * Files, memory and the contact parser.
 */
#pragma once

#include "base.h"

VLSDK_BEGIN

/**
 * Opens or makes a file, shared for reading, as CreateFileA() does.
 * @param[in] path         ANSI path
 * @param[in] access       GENERIC_READ, GENERIC_WRITE or both
 * @param[in] disposition  as in Win32: 1 new only, 2 always anew, 3 existing only, 4 either, 5 emptied
 * @param[in] attributes   file attributes and flags
 * @param[in] pattern      file whose attributes are taken over; null: none
 * @return the file, closed with Btsdk_CloseHandle(); INVALID_HANDLE_VALUE: failed, see GetLastError()
 */
VLSDK_API HANDLE Btsdk_CreateFile(_In_ const char* path, uint32_t access, uint32_t disposition,
                                  uint32_t attributes, _In_opt_ HANDLE pattern);

/**
 * Writes to a file as WriteFile() does.
 * @param[in]  file        from Btsdk_CreateFile()
 * @param[in]  data        bytes to write
 * @param[in]  size        their number
 * @param[out] written     receives the number written; null: not wanted
 * @param[in]  overlapped  an OVERLAPPED; null: at the file's position
 * @return TRUE, or FALSE: see GetLastError()
 */
VLSDK_API BOOL Btsdk_WriteFile(_In_ HANDLE file, _In_reads_bytes_(size) const void* data, uint32_t size,
                               _Out_opt_ uint32_t* written, _Inout_opt_ void* overlapped);

/**
 * Closes a file. Each is closed once.
 * @param[in] file  from Btsdk_CreateFile()
 * @return TRUE, or FALSE: no open file of the stack
 */
VLSDK_API BOOL Btsdk_CloseHandle(_In_ HANDLE file);

/**
 * Reads a phone's contact details into a phone-book record.
 * @param[in]     details  contact details in the phone's own format
 * @param[in,out] contact  phone-book record of 1296 bytes with its phone part, made by the caller
 * @return 0, or the stack's code: details not understood
 */
VLSDK_API uint32_t Btsdk_PIMParseContactDetails2(_In_ const void* details, _Inout_ void* contact);

/**
 * Takes memory from the stack's allocator. Its content is undefined.
 * @param[in] size  bytes
 * @return the block, freed with Btsdk_FreeMemory() and nothing else; null: no memory
 */
VLSDK_API void* Btsdk_MallocMemory(uint32_t size);

/**
 * Gives memory back to the stack's allocator.
 * @param[in] block  from Btsdk_MallocMemory(), or a block that the stack handed out; null: nothing is done
 */
VLSDK_API void Btsdk_FreeMemory(_In_opt_ void* block);

VLSDK_END
