/**
 * @file
 * Services of remote devices, and the servers of the local one.
 *
 * Both are described by ServerAttributes. The walks fill the service class alone; the others fill what
 * the mask asks for besides: kServerMaskName the name, kServerMaskExtension the extended-attribute
 * block, which the caller frees with Btsdk_FreeMemory(). Byte 6 of a serial-port server's block is its
 * COM port number. The block is null when there are no extended attributes.
 */
#pragma once

#include "records.h"

VLSDK_BEGIN

/**
 * Starts a walk over the services of a device.
 * @param[in] device  device handle
 * @return enumeration handle; 0: no such device, or it has no services
 */
VLSDK_API BtHandle Btsdk_StartEnumRemoteService(BtHandle device);

/**
 * The next service of a walk.
 * @param[in]  enumeration  from Btsdk_StartEnumRemoteService()
 * @param[out] attributes   a zeroed record
 * @return service handle; 0: the walk is over, nothing was written
 */
VLSDK_API BtHandle Btsdk_EnumRemoteService(BtHandle enumeration, _Out_ ServerAttributes* attributes);

/**
 * Ends a walk over services.
 * @param[in] enumeration  from Btsdk_StartEnumRemoteService(); not 0
 * @return 0, or the stack's code: no such walk
 */
VLSDK_API uint32_t Btsdk_EndEnumRemoteService(BtHandle enumeration);

/**
 * Describes a service of a remote device.
 * @param[in]     service     service handle
 * @param[in,out] attributes  zeroed but for the mask
 * @return 0, or the stack's code: no such service
 */
VLSDK_API uint32_t Btsdk_GetRemoteServiceAttributes(BtHandle service, _Inout_ ServerAttributes* attributes);

/**
 * Stores a word with a service, such as whether the user selected it.
 * @param[in] service    service handle
 * @param[in] parameter  the word
 * @return 0, or the stack's code: no such service
 */
VLSDK_API uint32_t Btsdk_SetRemoteServiceParam(BtHandle service, uint32_t parameter);

/**
 * Starts a walk over the local servers.
 * @return enumeration handle; 0: there is no server
 */
VLSDK_API BtHandle Btsdk_StartEnumLocalServer(void);

/**
 * The next server of a walk.
 * @param[in]  enumeration  from Btsdk_StartEnumLocalServer()
 * @param[out] attributes   a zeroed record
 * @return server handle; 0: the walk is over, nothing was written
 */
VLSDK_API BtHandle Btsdk_EnumLocalServer(BtHandle enumeration, _Out_ ServerAttributes* attributes);

/**
 * Ends a walk over servers.
 * @param[in] enumeration  from Btsdk_StartEnumLocalServer(); not 0
 * @return 0, or the stack's code: no such walk
 */
VLSDK_API uint32_t Btsdk_EndEnumLocalServer(BtHandle enumeration);

/**
 * The status of a server.
 * @param[in]  server  server handle
 * @param[out] status  receives 1 (started), 2 (stopped) or 3 (carries a live connection)
 * @return 0, or the stack's code: no such server
 */
VLSDK_API uint32_t Btsdk_GetServerStatus(BtHandle server, _Out_ uint32_t* status);

/**
 * Describes a local server.
 * @param[in]     server      server handle
 * @param[in,out] attributes  zeroed but for the mask
 * @return 0, or the stack's code: no such server
 */
VLSDK_API uint32_t Btsdk_GetServerAttributes(BtHandle server, _Inout_ ServerAttributes* attributes);

/**
 * Starts a local server.
 * @param[in] server  server handle
 * @return 0, or the stack's code: no such server
 */
VLSDK_API uint32_t Btsdk_StartServer(BtHandle server);

/**
 * Stops a local server; a connection that it carries is cut.
 * @param[in] server  server handle
 * @return 0, or the stack's code: no such server
 */
VLSDK_API uint32_t Btsdk_StopServer(BtHandle server);

VLSDK_END
