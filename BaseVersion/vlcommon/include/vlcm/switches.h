/**
 * @file
 * What this edition of the suite offers: switches from the settings files, and version texts.
 *
 * Every switch is read anew at each call; a missing file, section or key gives the default.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * The edition number: "VlCustomVersion" in section "General" of the common settings file, default 0.
 * Opens the trace scope "VlCm_GetCustomVersion".
 *
 * @return the number as read
 */
VLCM_API int VlCm_GetCustomVersion(void);

/**
 * Whether serial devices over a UART are offered: "NeedSupportUARTDevice" in section "VLConfig" of the
 * common settings file. The default is 0 for the editions 1, 2 and 4, otherwise 1. Opens the trace
 * scope "VlCm_SupportDeviceFlag"; the edition is asked up to three times.
 *
 * @return the value as read, not reduced to 0 and 1
 */
VLCM_API int VlCm_SupportUartDeviceFlag(void);

/**
 * Whether the dialer's window is offered: "IsSupportDialerFunction" in section "vlconfig" of the
 * common settings file, default 0.
 *
 * @retval TRUE   the value is not 0
 * @retval FALSE  it is 0 or missing
 */
VLCM_API BOOL VlCm_ShouldShowDialerUI(void);

/**
 * Whether basic printing is offered: "IsSupportBPPFunction" in section "VlConfig" of the common
 * settings file, default 0.
 *
 * @retval TRUE   the value is not 0
 * @retval FALSE  it is 0 or missing
 */
VLCM_API BOOL VlCm_IsSupportBPPFunction(void);

/**
 * Whether dial-up networking through a phone is offered: "NeedSupportMobileDUNFunc" in section
 * "VLConfig" of the common settings file. The default is 1 for edition 3 and when VlCm_IsMobileActive()
 * holds, otherwise 0.
 *
 * @retval TRUE   the value is not 0
 * @retval FALSE  it is 0
 */
VLCM_API BOOL VlCm_IsMobileDUNActive(void);

/**
 * Whether file transfer of the mobile kind is offered.
 *
 * @retval FALSE always
 */
VLCM_API BOOL VlCm_IsMobileFTPActive(void);

/**
 * Whether a device class is that of a mobile device.
 *
 * @param[in] deviceClass  24-bit class of device
 *
 * @retval TRUE   major class 2 (phone), or minor class 5 in any major class
 * @retval FALSE  otherwise
 */
VLCM_API BOOL VlCm_IsMobileDevice(unsigned int deviceClass);

/**
 * Whether the extended information function is offered. When the stack's own answer is 1, it is offered
 * only with the value 0 of "Flag" in section "IsSupportADFunction" of the personal settings file.
 * Otherwise always below version 9 ("CurrentVersion" in section "General" of the common settings file),
 * and from 9 on unless that "Flag" is 1; its default is 1 when "DisableExtendVLInfoFunc" in section
 * "VlConfig" of the common settings file is not 0, otherwise 0.
 *
 * @retval TRUE   offered
 * @retval FALSE  not offered
 */
VLCM_API BOOL VlCm_IsSupportADFunction(void);

/**
 * One number of a version text such as "Version 9.1.2".
 *
 * What follows the first space (the whole text without one), cut at 259 bytes, is split on "."; empty
 * pieces are skipped.
 *
 * @param[in] text  the version; null gives 0
 * @param[in] part  which number, from 1
 *
 * @return the piece's leading decimal number; 0 when it has none or there is no such piece
 */
VLCM_API int VlCm_GetVersionNumByType(_In_opt_ const char* text, unsigned int part);

/**
 * The first number of a version text: VlCm_GetVersionNumByType() with part 1.
 *
 * @param[in] text  the version; null gives 0
 *
 * @return the major number; 0 when there is none
 */
VLCM_API int VlCm_GetVersionMajorNum(_In_opt_ const char* text);

VLCM_END
