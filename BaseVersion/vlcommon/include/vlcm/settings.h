/**
 * @file
 * Where the suite's settings files and folders are.
 *
 * All paths are text in the ANSI code page. A size is only tested for being non-zero: give at least
 * VLCM_PATH_SIZE bytes. A path is cut at 259 bytes; nothing reports failure.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * The suite's installation folder, without a closing backslash.
 *
 * The value of "InstallDir" in section "General" of the common settings file, read at each call; one
 * closing backslash is taken off. Opens the trace scope "VlCm_GetInstallDir".
 *
 * @param[out] path  receives the folder; empty text when the setting is missing; null: nothing is done
 * @param[in]  size  room at @p path in bytes; 0: nothing is done
 */
VLCM_API void VlCm_GetInstallDir(_Out_writes_opt_(size) char* path, unsigned int size);

/**
 * The folder of the suite's COM services, without a closing backslash.
 *
 * As VlCm_GetInstallDir(), from the key "COMServiceDir"; trace scope "VlCm_GetCOMServiceDir".
 *
 * @param[out] path  receives the folder; empty text when the setting is missing; null: nothing is done
 * @param[in]  size  room at @p path in bytes; 0: nothing is done
 */
VLCM_API void VlCm_GetCOMServiceDir(_Out_writes_opt_(size) char* path, unsigned int size);

/**
 * The common settings file: "vlcs.ini" in the folder "SysWOW64" of the Windows folder, where the
 * suite's 32-bit components find it too. The folder comes from the shell; when the shell cannot tell,
 * the names are appended to whatever it left in the buffer.
 *
 * @param[out] path  receives the path; null: nothing is done
 * @param[in]  size  room at @p path in bytes, at least VLCM_PATH_SIZE; 0: nothing is done
 */
VLCM_API void VlCm_GetCommonSettingFilePath(_Out_writes_opt_(size) char* path, unsigned int size);

/**
 * The personal settings file: "vlps.ini" in the folder "veltrin" of the user's local application
 * data. Folder and an empty file are made when they are missing; an existing file is left untouched.
 *
 * @param[out] path  receives the path; null: nothing is done
 * @param[in]  size  room at @p path in bytes, at least VLCM_PATH_SIZE; 0: nothing is done
 */
VLCM_API void VlCm_GetPersonalSettingFilePath(_Out_writes_opt_(size) char* path, unsigned int size);

/**
 * The file of settings per remote device, "REMOTEDEVICE.ini", beside the common settings file.
 *
 * @param[out] path  receives the path; null: nothing is done
 * @param[in]  size  room at @p path in bytes, at least VLCM_PATH_SIZE; 0: nothing is done
 */
VLCM_API void VlCm_GetRmoteDeviniPath(_Out_writes_opt_(size) char* path, unsigned int size);

/**
 * The file of shortcut data, "SHORTCUT.ini", beside the common settings file.
 *
 * @param[out] path  receives the path; null: nothing is done
 * @param[in]  size  room at @p path in bytes, at least VLCM_PATH_SIZE; 0: nothing is done
 */
VLCM_API void VlCm_GetShortCutPath(_Out_writes_opt_(size) char* path, unsigned int size);

/**
 * The provider data file, "QVNProvider.ini" in the installation folder. Without an installation
 * folder the result is a backslash and the file name. Opens the trace scopes "VlCm_GetQVNProviderPath"
 * and, inside it, "VlCm_GetInstallDir".
 *
 * @param[out] path  receives the path; null: nothing is written
 * @param[in]  size  room at @p path in bytes, at least VLCM_PATH_SIZE; 0: nothing is written
 */
VLCM_API void VlCm_GetQVNProviderPath(_Out_writes_opt_(size) char* path, unsigned int size);

/**
 * The mobile data file, "QVNMobile.ini" in the installation folder; otherwise as
 * VlCm_GetQVNProviderPath(), trace scope "VlCm_GetQVNMobilePath".
 *
 * @param[out] path  receives the path; null: nothing is written
 * @param[in]  size  room at @p path in bytes, at least VLCM_PATH_SIZE; 0: nothing is written
 */
VLCM_API void VlCm_GetQVNMobilePath(_Out_writes_opt_(size) char* path, unsigned int size);

/**
 * Whether this is the 64-bit library.
 *
 * @retval TRUE always
 */
VLCM_API BOOL VlCm_IsX64Platform(void);

/**
 * Whether Windows is Vista or later, as GetVersionExA tells it to this program.
 *
 * @retval TRUE   major version 6 or more
 * @retval FALSE  an earlier Windows, or the query failed
 */
VLCM_API BOOL VlCm_IsWindowsVistaAbove(void);

VLCM_END
