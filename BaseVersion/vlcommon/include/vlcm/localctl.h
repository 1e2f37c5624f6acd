/**
 * @file
 * Local servers and device class, and remote devices with their services.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * Lets the tray agent stop a local server; one in use only after the user agreed. Opens the trace scope
 * "VlCm_StopServer".
 *
 * @param[in] owner   owner of the message box; may be null
 * @param[in] server  server handle; 0 gives FALSE (traced)
 *
 * @retval TRUE   the request was posted
 * @retval FALSE  the server's status cannot be read or the question not be loaded (traced), or the user
 *                said no
 */
VLCM_API BOOL VlCm_StopServer(_In_opt_ HWND owner, unsigned int server);

/**
 * Lets the tray agent delete remote devices after the user agreed. A connected device (unless of the stack's
 * type 1) is refused by a message that names it and ends the walk; as the first one it is refused without a
 * question. Requests already posted stay posted. Opens the trace scope "VlCm_DeleteDevices".
 *
 * @param[in] owner    owner of the message boxes; may be null
 * @param[in] devices  device handles; null or unreadable gives FALSE (traced)
 * @param[in] count    handles at @p devices; 0 gives FALSE (traced)
 *
 * @retval TRUE   all requests were posted
 * @retval FALSE  wrong argument, Bluetooth not ready or no resource library (traced), the user said no, or a
 *                device was refused
 */
VLCM_API BOOL VlCm_DeleteDevices(_In_opt_ HWND owner, _In_reads_opt_(count) const unsigned int* devices,
                                 unsigned int count);

/**
 * As VlCm_DeleteDevices() with UTF-16 messages; trace scope "VlCm_DeleteDevicesW".
 *
 * @param[in] owner    owner of the message boxes; may be null
 * @param[in] devices  device handles; null or unreadable gives FALSE (traced)
 * @param[in] count    handles at @p devices; 0 gives FALSE (traced)
 *
 * @retval TRUE   all requests were posted
 * @retval FALSE  wrong argument, Bluetooth not ready or no resource library (traced), the user said no, or a
 *                device was refused
 */
VLCM_API BOOL VlCm_DeleteDevicesW(_In_opt_ HWND owner, _In_reads_opt_(count) const unsigned int* devices,
                                  unsigned int count);

/**
 * As what the local adapter presents itself, from its class of device.
 *
 * @retval 0  desktop computer, any other class, or the class cannot be read
 * @retval 1  laptop computer
 * @retval 2  headset
 * @retval 3  printer
 */
VLCM_API unsigned int VlCm_GetLocalDeviceClass(void);

/**
 * Lets the local adapter present itself as another kind, and stores the kind in "DEFAULT_DEVCLASS" of section
 * "LocalBluetooth" of the common settings file. Computers keep the current service bits.
 *
 * @param[in] kind  as VlCm_GetLocalDeviceClass() gives it; another sets the class of kind 0 and is stored as
 *                  given
 *
 * @return the result of storing it: not 0 on success
 */
VLCM_API BOOL VlCm_SetLocalDeviceClass(unsigned int kind);

/**
 * Whether a local server of a class runs.
 *
 * @param[in] serviceClass  Bluetooth service class
 *
 * @retval TRUE   the first server of the class has a status other than 0 and 2
 * @retval FALSE  it has not, there is none, Bluetooth is not ready, or the stack cannot tell
 */
VLCM_API BOOL VlCm_IsServiceStarted(unsigned short serviceClass);

/**
 * The kind of a remote device, from the stack's type and its class of device.
 *
 * @param[in] device  device handle
 *
 * @return the kind's number
 * @retval 22  the stack's type 1
 * @retval 0   a class without a kind, or it cannot be read
 */
VLCM_API unsigned int VlCm_GetRemoteDeviceTypeByDevHandle(unsigned int device);

/**
 * Whether a device has a connection shortcut.
 *
 * @param[in] device  device handle
 *
 * @retval TRUE   at least one
 * @retval FALSE  none
 */
VLCM_API BOOL VlCm_IsAddedDevice(unsigned int device);

/**
 * Whether a remote service has a connection shortcut.
 *
 * @param[in] device   device handle
 * @param[in] service  remote service handle
 *
 * @retval TRUE   at least one
 * @retval FALSE  none
 */
VLCM_API BOOL VlCm_IsInstalledService(unsigned int device, unsigned int service);

/**
 * Tells the stack whether a remote service is selected. Opens the trace scope " VlCm_SetSelectedService"
 * (with a leading blank).
 *
 * @param[in] service   remote service handle
 * @param[in] selected  not FALSE: selected
 *
 * @retval 0 always
 */
VLCM_API unsigned int VlCm_SetSelectedService(unsigned int service, BOOL selected);

/**
 * Whether a remote device offers a service: it has a connection shortcut of that class, or one of its
 * known services has the class.
 *
 * @param[in] device        device handle; 0 gives FALSE
 * @param[in] serviceClass  Bluetooth service class
 *
 * @retval TRUE   the service is offered
 * @retval FALSE  it is not known, or the services cannot be enumerated
 */
VLCM_API BOOL VlCm_IsSupportService(unsigned int device, unsigned short serviceClass);

/**
 * The default device of a service class: that of its default shortcut. Hands-free (0x111E) and headset
 * (0x1108) stand in for each other. Opens the trace scope "VlCm_GetDefaultDevByServiceClass".
 *
 * @param[in] serviceClass  Bluetooth service class
 *
 * @return device handle
 * @retval 0  there is none, or the shortcut cannot be read
 */
VLCM_API unsigned int VlCm_GetDefaultDevByServiceClass(unsigned short serviceClass);

/**
 * Whether a device is the default device for hands-free, or for headset when hands-free has none.
 *
 * @param[in] device  device handle; 0 gives FALSE
 *
 * @retval TRUE   it is
 * @retval FALSE  it is not
 */
VLCM_API BOOL VlCm_IsDefaultDevice(unsigned int device);

VLCM_END
