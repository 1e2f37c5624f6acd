/**
 * @file
 * Connection shortcuts: the stack's stored recipes for connecting one remote service of one device.
 *
 * Each function asks the stack at that moment; failures answer no (0) unless said otherwise.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/** What a handle given to VlCm_GetServiceClass() is. */
enum VlCmHandleKind {
    VLCM_HANDLE_CONNECTION = 1,     /**< Live connection. */
    VLCM_HANDLE_SHORTCUT = 2,       /**< Shortcut. */
    VLCM_HANDLE_REMOTE_SERVICE = 3, /**< Remote service. */
    VLCM_HANDLE_LOCAL_SERVER = 4    /**< Local server. */
};

/** An OBEX connection, filled by the caller of VlCm_GetShcHdlByObexProp(). */
typedef struct VlObexConnection {
    uint32_t device;       /**< Device handle. */
    uint32_t reserved4;    /**< Not read. */
    const uint8_t* target; /**< Bytes of the OBEX Target header; may be null with length 0. */
    uint8_t targetLength;  /**< Bytes at target. */
    uint8_t reserved17[7]; /**< Not read. */
} VlObexConnection;
VLCM_CHECK(sizeof(VlObexConnection) == 24, "size");
VLCM_CHECK(offsetof(VlObexConnection, device) == 0, "offset");
VLCM_CHECK(offsetof(VlObexConnection, target) == 8, "offset");
VLCM_CHECK(offsetof(VlObexConnection, targetLength) == 16, "offset");

/**
 * The service class that a handle stands for, from the stack's record of its kind. Opens the trace
 * scope "VlCm_GetServiceClass".
 *
 * @param[in]  handle        connection, shortcut, remote service or local server; 0 is asked like any
 *                           other
 * @param[in]  kind          a VlCmHandleKind
 * @param[out] serviceClass  receives the class; written on success only
 *
 * @retval 0    success
 * @retval 772  another kind
 * @retval 773  @p serviceClass is null; tested first
 * @retval 774  no memory
 * @return otherwise the stack's code
 */
VLCM_API uint32_t VlCm_GetServiceClass(uint32_t handle, uint16_t kind, _Out_opt_ uint16_t* serviceClass);

/**
 * Makes a shortcut the default one of its device. The flags of other shortcuts are left to the
 * stack. Opens the trace scope "VlCm_SetDefaultShortCut " (with a closing blank).
 *
 * @param[in] shortcut  shortcut handle
 *
 * @retval 0    success
 * @retval 774  no memory
 * @return otherwise the stack's code
 */
VLCM_API uint32_t VlCm_SetDefaultShortCut(uint32_t shortcut);

/**
 * Whether a shortcut is the default one of its device. Opens the trace scope
 * "VlCm_IsDefaultShortcut" under module 1024.
 *
 * @param[in] shortcut  shortcut handle; 0 gives FALSE without asking the stack
 *
 * @retval TRUE   it is
 * @retval FALSE  it is not, or cannot be read
 */
VLCM_API BOOL VlCm_IsDefaultShortcut(uint32_t shortcut);

/**
 * Whether a shortcut is enabled: its application parameter is the one byte 1. Opens the trace scope
 * "VlCm_IsShcEnabling".
 *
 * @param[in] shortcut  shortcut handle
 *
 * @retval TRUE   it is
 * @retval FALSE  another parameter, a longer one, no memory, or it cannot be read
 */
VLCM_API BOOL VlCm_IsShcEnabled(uint32_t shortcut);

/**
 * Whether a shortcut is connected now. Opens the trace scope "VlCm_IsShortcutConnected"; a record that
 * cannot be read is traced.
 *
 * @param[in] shortcut  shortcut handle
 *
 * @retval TRUE   it has a connection
 * @retval FALSE  it has none, or cannot be read
 */
VLCM_API BOOL VlCm_IsShortcutConnected(uint32_t shortcut);

/**
 * Whether a live connection has a service class and one of some roles. Opens the trace scope
 * "VlCm_ExistSameSvcClsConnection"; a walk that cannot start is traced.
 *
 * @param[in] serviceClass  Bluetooth service class
 * @param[in] mask          roles wanted, compared with the two role bits of each connection; 0 finds none
 *
 * @retval TRUE   there is one
 * @retval FALSE  there is none, or the connections cannot be walked
 */
VLCM_API BOOL VlCm_ExistSameSvcClsConnection(uint16_t serviceClass, uint32_t mask);

/**
 * How many live connections a device has.
 *
 * @param[in] device  device handle
 *
 * @return their number; 0 when the connections cannot be walked
 */
VLCM_API uint32_t VlCm_GetConnectionNumByDevHdl(uint32_t device);

/**
 * Whether to offer a device's automatic default connection: "AutoConnectShc" in the device's section
 * of the file of remote devices is not empty. The section is named by the address, byte 0 first.
 *
 * @param[in] device  device handle
 *
 * @retval TRUE   offer it
 * @retval FALSE  no such entry
 */
VLCM_API BOOL VlCm_ShouldShowDefaultConn(uint32_t device);

/**
 * The shortcut that serves an OBEX connection, by its Target header. A Target of length 0 is object
 * push; an unknown one has no shortcut.
 *
 * @param[in] connection  the connection; null gives 0
 *
 * @return the first shortcut of the device for the Target's service class; 0 when there is none
 */
VLCM_API uint32_t VlCm_GetShcHdlByObexProp(_In_opt_ const VlObexConnection* connection);

/**
 * The device that a Send-To link points at: the address behind the first ten characters of the link's
 * arguments, which are not looked at.
 *
 * @param[in]  path     the link file, UTF-8; one that cannot be loaded has no arguments
 * @param[out] address  receives 6 bytes, least significant first; may be null
 *
 * @retval TRUE   the link has arguments; also, with @p address untouched, when the shell's link object
 *                cannot be made
 * @retval FALSE  it has none
 */
VLCM_API BOOL VlCm_GetBtAddrByShcParam(_In_opt_ const char* path, _Out_writes_opt_(6) uint8_t* address);

/**
 * Makes a shortcut to a remote service, named by device address (byte 5 first), service class and service
 * name. A nameless service is called by its class. After a shortcut to a network role (0x1115, 0x1116,
 * 0x1117) the device's shortcuts to roles that it no longer offers are deleted. Opens the trace scope
 * "VlCm_CreateShortCut".
 *
 * @param[in]  device    device handle; 0 gives 772
 * @param[in]  service   remote service handle; 0 gives 772
 * @param[out] shortcut  receives the new handle, on success only; may be null
 *
 * @retval 0    success
 * @retval 770  the service is nameless and the language resource library cannot be loaded
 * @retval 771  Bluetooth is not ready
 * @retval 772  a handle is 0
 * @return otherwise the stack's code
 */
VLCM_API uint32_t VlCm_CreateShortCut(uint32_t device, uint32_t service, _Out_opt_ uint32_t* shortcut);

/**
 * Deletes a shortcut. Opens the trace scope "VlCm_DeleteShortCut".
 *
 * @param[in] shortcut  shortcut handle; 0 gives 772
 *
 * @retval 0    success
 * @retval 771  Bluetooth is not ready
 * @retval 772  the handle is 0
 * @return otherwise the stack's code, also when there is no such shortcut
 */
VLCM_API uint32_t VlCm_DeleteShortCut(uint32_t shortcut);

/**
 * Deletes a device's idle serial-port shortcuts whose service the device no longer lists, and releases their
 * virtual COM ports first. Of the listed services the first shortcut each is spared, at most 16. Opens the
 * trace scope "VlCm_DelAllShortcutsBySvcClsForSpecialDevice".
 *
 * @param[in] device        device handle
 * @param[in] serviceClass  0x1101; for another class nothing is deleted
 */
VLCM_API void VlCm_DelAllShortcutsBySvcClsForSpecialDevice(uint32_t device, uint16_t serviceClass);

/**
 * Lets the tray agent connect a device's automatic default connection, the shortcut that
 * "AutoConnectShc" in the device's section of the file of remote devices names. Without one nothing
 * happens.
 *
 * @param[in] device  device handle
 */
VLCM_API void VlCm_ConnectDefaultShcByDevhdl(uint32_t device);

/**
 * The name under which a connection made by an application is shown: the name of the service class and, in
 * parentheses, the device's name (the text for an unknown device when it has none), cut at 271 bytes.
 * Opens the trace scope "VlCm_CreateAppConnNameBySvcCls".
 *
 * @param[in]  device        device handle
 * @param[in]  serviceClass  Bluetooth service class
 * @param[out] buffer        receives the first bytes of the name, without a terminator when it is shorter
 *                           than the name; null gives FALSE
 * @param[in]  size          room at @p buffer in bytes; the smaller of it and 256 is written, 0 bytes for 0
 *
 * @retval TRUE   the bytes were written
 * @retval FALSE  no buffer, or the language resource library cannot be loaded
 */
VLCM_API BOOL VlCm_CreateAppConnName(uint32_t device, uint16_t serviceClass,
                                     _Out_writes_bytes_opt_(size) char* buffer, uint32_t size);

VLCM_END
