/**
 * @file
 * Shortcuts: saved connections to one service of one remote device.
 */
#pragma once

#include "records.h"

VLSDK_BEGIN

/**
 * Reads a shortcut.
 *
 * The plain fields are always filled; the others when the mask asks for them: kShortcutMaskShellItem
 * service name and device class, kShortcutMaskDefault the default flag, kShortcutMaskParameter the
 * application parameter. For the parameter the caller gives a block and its length; at most that many
 * bytes are copied and the true length is set. Without a block only the length is set.
 *
 * @param[in,out] property  zeroed but for shortcut, mask, parameterLength and parameter
 * @return 0, or the stack's code: no such shortcut
 */
VLSDK_API uint32_t Btsdk_GetShortCutProperty(_Inout_ ShortcutProperty* property);

/**
 * Changes a shortcut. The mask tells what: 1 its name, kShortcutMaskShellItem its service name,
 * kShortcutMaskDefault the default flag (set: the other shortcuts of the service class lose it),
 * kShortcutMaskParameter the application parameter. All else stays, so a record that holds only the
 * handle, the mask and the fields of the mask is enough.
 *
 * @param[in] property  the shortcut's handle, the mask and what it names; a record that was read before
 *                      keeps the bytes that are the stack's
 * @return 0, or the stack's code: no such shortcut, or not stored
 */
VLSDK_API uint32_t Btsdk_SetShortCutProperty(_In_ ShortcutProperty* property);

/**
 * The default shortcut of a service class.
 * @param[in] serviceClass  16-bit service class
 * @return its handle; 0: the class has none
 */
VLSDK_API BtHandle Btsdk_GetDefaultShortCut(uint16_t serviceClass);

/**
 * The shortcuts of a device.
 * @param[in]  device        device handle
 * @param[in]  serviceClass  only those of this class; 0: of every class
 * @param[out] shortcuts     receives the handles; null: they are only counted
 * @param[in]  count         length of @p shortcuts in handles
 * @return their number without an array, else the number written
 */
VLSDK_API uint32_t Btsdk_GetShortCutByDeviceHandle(BtHandle device, uint16_t serviceClass,
                                                   _Out_writes_opt_(count) BtHandle* shortcuts,
                                                   uint32_t count);

/**
 * The shortcuts to one service of a device.
 * @param[in]  device     device handle
 * @param[in]  service    handle of a service of that device
 * @param[out] shortcuts  receives the handles; null: they are only counted
 * @param[in]  count      length of @p shortcuts in handles
 * @return their number without an array, else the number written
 */
VLSDK_API uint32_t Btsdk_GetShortCutByServiceHandle(BtHandle device, BtHandle service,
                                                    _Out_writes_opt_(count) BtHandle* shortcuts,
                                                    uint32_t count);

/**
 * The shortcuts of a service class, of all devices.
 * @param[in]  serviceClass  16-bit service class
 * @param[out] shortcuts     receives the handles; null: they are only counted
 * @param[in]  count         length of @p shortcuts in handles
 * @return their number without an array, else the number written
 */
VLSDK_API uint32_t Btsdk_GetShortCutByServiceClass(uint16_t serviceClass,
                                                   _Out_writes_opt_(count) BtHandle* shortcuts,
                                                   uint32_t count);

/**
 * All shortcuts.
 * @param[out] shortcuts  receives the handles; null: they are only counted
 * @param[in]  count      length of @p shortcuts in handles
 * @return their number without an array, else the number written
 */
VLSDK_API uint32_t Btsdk_GetAllShortCuts(_Out_writes_opt_(count) BtHandle* shortcuts, uint32_t count);

/**
 * Finds a shortcut by its name, byte for byte.
 * @param[in] name  UTF-8 text
 * @return its handle; 0: there is none
 */
VLSDK_API BtHandle Btsdk_GetShortCutByName(_In_ const char* name);

/**
 * Makes a shortcut.
 * @param[in,out] property  zeroed but for device, service, deviceValid, stackFlag, address, serviceClass,
 *                          mask (kShortcutMaskCreate), name, serviceName and deviceClass, and with
 *                          kShortcutMaskParameter the application parameter; receives the new handle
 * @return 0, or the stack's code: no such device or service, or not stored
 */
VLSDK_API uint32_t Btsdk_CreateShortCutEx(_Inout_ ShortcutProperty* property);

/**
 * Deletes a shortcut. Its connection, if there is one, stays.
 * @param[in] shortcut  shortcut handle
 * @return 0, or the stack's code: no such shortcut
 */
VLSDK_API uint32_t Btsdk_DeleteShortCut(BtHandle shortcut);

VLSDK_END
