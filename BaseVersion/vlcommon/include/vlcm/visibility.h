/**
 * @file
 * Which services and devices a user interface shows, and which services answer each other.
 *
 * Settings are read from the common settings file at each call. No function here opens a trace scope.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * Whether the installation hides a profile: its key in section "UnSupportedProfile" is not 0. The key is
 * looked at only when the stack's read of the whole section gives 0.
 *
 * @param[in] serviceClass  Bluetooth service class
 *
 * @retval TRUE   hidden
 * @retval FALSE  not hidden, or the class has no key
 */
VLCM_API BOOL VlCm_ShouldFilterCurProfile(uint16_t serviceClass);

/**
 * Whether the installation hides a kind of device: the key of its major class in section "FilteredDevice"
 * is not 0. The key is looked at only when the stack's read of the whole section does not give 0.
 *
 * @param[in] deviceClass  24-bit class of device
 *
 * @retval TRUE   hidden
 * @retval FALSE  not hidden, or the major class has no key
 */
VLCM_API BOOL VlCm_ShouldFilterCurDevCls(uint32_t deviceClass);

/**
 * Whether local services of a class are shown.
 *
 * @param[in] serviceClass  Bluetooth service class
 *
 * @retval TRUE   shown
 * @retval FALSE  hidden by the installation, or never shown
 */
VLCM_API BOOL VlCm_ShouldShowThisLocalServer(uint16_t serviceClass);

/**
 * Whether a local service is shown, by its class.
 *
 * @param[in] server  server handle
 *
 * @retval TRUE   shown
 * @retval FALSE  hidden by the installation, never shown, or it cannot be read
 */
VLCM_API BOOL VlCm_ShouldShowThisLocalServerEx(uint32_t server);

/**
 * Whether remote services of a class are shown. Direct printing (0x1118) is with mobile support or basic
 * printing; the hands-free gateway (0x111F) is with mobile support while the local adapter presents itself
 * as a headset.
 *
 * @param[in] serviceClass  Bluetooth service class
 *
 * @retval TRUE   shown
 * @retval FALSE  hidden by the installation, or not shown
 */
VLCM_API BOOL VlCm_ShouldShowThisRemoteService(uint16_t serviceClass);

/**
 * Whether a remote service is shown, by its class.
 *
 * @param[in] service  remote service handle
 *
 * @retval TRUE   shown
 * @retval FALSE  hidden by the installation, not shown, or it cannot be read
 */
VLCM_API BOOL VlCm_ShouldShowThisRemoteServiceEx(uint32_t service);

/**
 * Whether a remote service's state also depends on connections to a local service.
 *
 * @param[in] serviceClass  remote service class
 *
 * @retval TRUE   0x1108, 0x111E or 0x110B
 * @retval FALSE  another class
 */
VLCM_API BOOL VlCm_ShouldRefreshThisRmtSvcByLocSvcConn(uint16_t serviceClass);

/**
 * Whether connections to a local service change a remote service's state.
 *
 * @param[in] serviceClass  local service class
 *
 * @retval TRUE   0x1112, 0x111F or 0x110A
 * @retval FALSE  another class
 */
VLCM_API BOOL VlCm_ShouldRefreshRmtSvcByThisLocSvcConn(uint16_t serviceClass);

/**
 * The remote service class that a local one answers.
 *
 * @param[in] localClass  local service class
 *
 * @return the remote class
 * @retval 0  there is none
 */
VLCM_API uint16_t VlCm_GetRmtSvcClsByRelevantLocSvcCls(uint16_t localClass);

/**
 * The local service class that answers a remote one.
 *
 * @param[in] remoteClass  remote service class
 *
 * @return the local class
 * @retval 0  there is none
 */
VLCM_API uint16_t VlCm_GetLocSvcClsByRelevantRmtSvcCls(uint16_t remoteClass);

/**
 * The first local server of a class.
 *
 * @param[in] serviceClass  Bluetooth service class
 *
 * @return its server handle
 * @retval 0  there is none, or the servers cannot be walked
 */
VLCM_API uint32_t VlCm_GetLocSvcHdlBySvcCls(uint16_t serviceClass);

/**
 * The connection that a remote device opened to a local service.
 *
 * @param[in]  device      device handle; 0 gives FALSE and leaves @p connection
 * @param[in]  localClass  local service class
 * @param[out] connection  receives the connection handle, 0 when there is none; may be null
 *
 * @retval TRUE   there is one
 * @retval FALSE  there is none, or no memory
 */
VLCM_API BOOL VlCm_IsSpecialIncomingConnectionExist(uint32_t device, uint16_t localClass,
                                                    _Out_opt_ uint32_t* connection);

VLCM_END
