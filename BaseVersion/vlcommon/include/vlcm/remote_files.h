/**
 * @file
 * Files of a remote device shown like local ones: texts, icon, property sheet.
 *
 * The files are known by name, attributes, size and time alone; nothing is opened on either side. None of
 * these functions opens a trace scope of its own or writes a trace line.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/** What the property sheet shows of a remote file. The library carries the bytes unread. */
typedef struct VlRemoteFileRecord {
    uint8_t data[868]; /**< Agreed between the browser and the tray agent. */
} VlRemoteFileRecord;
VLCM_CHECK(sizeof(VlRemoteFileRecord) == 868, "size");

/**
 * The size of a file in words: a number with two decimals and "GB", "MB" or "KB", or the count of bytes
 * and the word for bytes in the user's language (string 1217 of "Vl2Res.dll"; empty when it is missing).
 * The number is computed in single precision and rounded with ties away from zero.
 *
 * With @p detail the exact count follows in parentheses, grouped with commas and with the word directly
 * behind it: "1.00 KB (1,024bytes)". Two traps that callers rely on: from 2 GiB to 4 GiB - 1 byte the
 * count is negative ("-2,147,483,648"; the sign is grouped like a digit: "-,100"), and from 4 GiB on it is
 * what VlCm_U64TOA() gives, which is too large for some sizes.
 *
 * @attention Each call leaves one more reference on "Vl2Res.dll", also one with bad arguments.
 *
 * @param[in]  sizeLow     lower 32 bits of the size
 * @param[in]  sizeHigh    upper 32 bits of the size
 * @param[out] buffer      receives UTF-8; null gives 0
 * @param[in]  bufferSize  room at @p buffer in bytes, terminator included; 0 gives 0
 * @param[in]  detail      non-zero: with the exact count; not heeded for the size 0
 *
 * @return length of the text in UTF-16 characters. For the size 0 this is so even when the text does not
 *         fit: it then ends where the room does, without a terminator
 * @retval 0  null or empty buffer, no "Vl2Res.dll", the text does not fit or has 260 bytes or
 *            more; the buffer is untouched
 */
VLCM_API uint32_t VlCm_GetFTPFileSizeString(uint32_t sizeLow, uint32_t sizeHigh,
                                            _Out_writes_opt_(bufferSize) char* buffer, uint32_t bufferSize,
                                            BOOL detail);

/**
 * The kind of a file in words, as the shell calls files of that extension, or folders.
 *
 * @attention Up to 80 bytes are written, whatever @p bufferSize says: it is compared with the text's length
 * in UTF-16 characters only. Give at least 80 bytes.
 *
 * @param[in]  name        UTF-8 name of the file, of which 259 UTF-16 characters count; null gives 0
 * @param[in]  attributes  file attributes, of which FILE_ATTRIBUTE_DIRECTORY alone counts
 * @param[out] buffer      receives UTF-8, cut after the last character that ends before byte 80; null
 *                         gives 0
 * @param[in]  bufferSize  the text must be shorter, in UTF-16 characters; 0 gives 0
 *
 * @return length of the whole text in UTF-16 characters, also when it was cut
 * @retval 0  null argument or size 0, the text is not shorter than @p bufferSize (buffer untouched); the
 *            shell does not tell (empty text)
 */
VLCM_API uint32_t VlCm_GetFTPFileDescription(_In_opt_z_ const char* name, uint32_t attributes,
                                             _Out_writes_opt_(80) char* buffer, uint32_t bufferSize);

/**
 * The time of a file in words: the short date and the time without seconds in the standard form of the
 * user's locale, with a blank between. The time is not converted to local time.
 *
 * @param[in]  fileTime    the time; null gives 0
 * @param[out] buffer      receives text in the ANSI code page; null gives 0; untouched unless the text fits
 * @param[in]  bufferSize  room at @p buffer in bytes, terminator included; 0 gives 0
 *
 * @return length of the text in bytes
 * @retval 0  null argument, size 0, no valid time, the text does not fit
 */
VLCM_API uint32_t VlCm_GetFTPFileTimeString(_In_opt_ const FILETIME* fileTime,
                                            _Out_writes_opt_(bufferSize) char* buffer, uint32_t bufferSize);

/**
 * The time of a file in words: the short date and the time without seconds in the standard form of the
 * user's locale, with a blank between. The time is not converted to local time. UTF-16 form.
 *
 * @param[in]  fileTime    the time; null gives 0
 * @param[out] buffer      receives UTF-16; null gives 0; untouched unless the text fits
 * @param[in]  bufferSize  room at @p buffer in characters, terminator included; 0 gives 0
 *
 * @return length of the text in characters
 * @retval 0  null argument, size 0, no valid time, the text does not fit
 */
VLCM_API uint32_t VlCm_GetFTPFileTimeStringW(_In_opt_ const FILETIME* fileTime,
                                             _Out_writes_opt_(bufferSize) wchar_t* buffer,
                                             uint32_t bufferSize);

/**
 * The icon of a file, by this computer's file associations.
 *
 * A folder's comes from the shell. A file's is that of its extension, from the last dot on: "shell32.dll"
 * index 0 without a dot, index 2 for ".exe" and ".EXE" (in these two spellings alone); otherwise the
 * "DefaultIcon" of the extension's class in the registry or, when the class has none or it is "%1" in
 * quotation marks (each file itself), that of the class's "CLSID". The value is cut at its last comma; the
 * number behind it is the index. The registry is read with the stack's operations, and nothing in a value
 * is expanded.
 *
 * @param[in]  name        UTF-8 name of the file, of which 259 UTF-16 characters count; null is invalid
 * @param[in]  attributes  file attributes; FILE_ATTRIBUTE_DIRECTORY makes it a folder
 * @param[out] iconFile    receives the icon file in the ANSI code page, VLCM_PATH_SIZE bytes; null is
 *                         invalid
 * @param[out] iconIndex   receives the index of the icon in it, negative for an identifier; null is invalid
 *
 * @retval S_OK          the icon was found, or the file has no extension, or it is a folder (with an empty
 *                       path and index 0 when the shell does not tell)
 * @retval E_FAIL        the extension has no class, or its class no icon: "shell32.dll", index 0
 * @retval E_INVALIDARG  a null argument; nothing is written
 */
VLCM_API HRESULT VlCm_GetFTPFileDefaultIcon(_In_opt_z_ const char* name, uint32_t attributes,
                                            _Out_writes_opt_(VLCM_PATH_SIZE) char* iconFile,
                                            _Out_opt_ int32_t* iconIndex);

/**
 * Has the tray agent show the property sheet of a remote file: brings the agent's window to the front,
 * puts the record into the section "SHARE_MEM_FTPFILEDATA", wakes the agent (which is started when it does
 * not run) and waits up to about 2 s until it has taken the record.
 *
 * @param[in] record     the file's record; stays the caller's
 * @param[in] parameter  goes with the wake-up
 *
 * @retval VLCM_OK                handed over, whether or not anybody took it
 * @retval VLCM_RESOURCE_FAILURE  another record is pending, or there is no memory for it
 * @retval VLCM_NULL_OUTPUT       @p record is null
 * @retval VLCM_STACK_NOT_READY   the stack is not ready
 */
VLCM_API uint32_t VlCm_ShowFTPFileProperty(_In_opt_ const VlRemoteFileRecord* record, uint32_t parameter);

/**
 * Takes the pending record, in the tray agent. The section is not trusted: bytes behind its committed part
 * are zero.
 *
 * @return the record, freed with Btsdk_FreeMemory(); null when nothing is pending, the section says that it
 *         is empty, or there is no memory
 */
VLCM_API VlRemoteFileRecord* VlCm_GetFTPFileData(void);

VLCM_END
