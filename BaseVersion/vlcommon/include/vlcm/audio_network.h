/**
 * @file
 * The suite's policy for audio and network connections.
 *
 * Each function asks the stack and the common settings file at that moment; when the stack cannot be asked
 * the answer is 0.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * The shortcut to use for a device's voice: the last hands-free one, else the last headset one. When bit 31
 * of the device's parameter is set, the device's services are looked at and each one without a shortcut
 * gets one; otherwise its existing shortcuts are.
 *
 * @param[in] device  device handle; 0 gives 0
 *
 * @return shortcut handle
 * @retval 0  there is none
 */
VLCM_API uint32_t VlCm_GetCurrHFHSShc(uint32_t device);

/**
 * The shortcut to use for networking with a device. While this computer serves a network: the device's user
 * role, else access point, else group network; otherwise access point, group network, user. Opens the trace
 * scope "VlCm_GetCurrPanShc"; what is found is traced.
 *
 * @param[in] device  device handle
 *
 * @return shortcut handle, of several of a role the last
 * @retval 0  there is none, or no memory
 */
VLCM_API uint32_t VlCm_GetCurrPanShc(uint32_t device);

/**
 * Whether a device has a live network connection. Opens the trace scope
 * "VlCm_IsConnectingPANOnThisDevice"; a walk that cannot start is traced.
 *
 * @param[in] device  device handle
 *
 * @retval 1  it has (the whole result register is 0 or 1)
 * @retval 0  it has not, or the connections cannot be walked
 */
VLCM_API uint8_t VlCm_IsConnectingPANOnThisDevice(uint32_t device);

/**
 * Whether an A2DP connection may not be made now: another audio device is connected and
 * "IsSupportMultiAudioConnected" in section "VlConfig" is 0 (default 1), or any audio link is up and
 * "IsSupportBothA2dpSinkSource" in section "VLConfig" is not 1 (default 0).
 *
 * @param[in] device  the device to connect; matters to the first rule only
 *
 * @retval TRUE   forbidden
 * @retval FALSE  allowed
 */
VLCM_API BOOL VlCm_IsA2DPConnectionForbid(uint32_t device);

/**
 * The connection that carries the service-level link of a headset or hands-free shortcut: its own, or one
 * from the other side. Opens the trace scope "VlCm_GetHSHFSLCConnHdl".
 *
 * @param[in] unused    not used
 * @param[in] shortcut  shortcut handle; 0 gives 0
 *
 * @return connection handle
 * @retval 0  there is none, the shortcut cannot be read, or no memory (traced)
 */
VLCM_API uint32_t VlCm_GetHSHFSLCConnHdl(uint32_t unused, uint32_t shortcut);

/**
 * Starts or stops the local A2DP service, unless "IsSupportBothA2dpSinkSource" in section "VLConfig" is 1.
 *
 * @param[in] serviceClass  0x110A (source) or 0x110B (sink); another gives FALSE
 * @param[in] start         not FALSE: start; FALSE: stop
 *
 * @retval TRUE   the stack was asked to change the service
 * @retval FALSE  it is so already, or not changed
 */
VLCM_API BOOL VlCm_ControlA2DPService(uint16_t serviceClass, BOOL start);

/**
 * Starts or stops any local service.
 *
 * @param[in] serviceClass  Bluetooth service class
 * @param[in] start         not FALSE: start; FALSE: stop
 *
 * @retval TRUE   the stack was asked to change the service
 * @retval FALSE  it is so already, or there is no such service
 */
VLCM_API BOOL VlCm_ControlA2DPHFPService(uint16_t serviceClass, BOOL start);

VLCM_END
