/**
 * @file
 * Readiness and features of the stack, and live connections.
 */
#pragma once

#include "records.h"

VLSDK_BEGIN

/**
 * Tells whether the stack runs with a local device.
 * @return 1: yes. Only these 8 bits of the result register mean anything
 */
VLSDK_API uint8_t Btsdk_IsBluetoothReady(void);

/**
 * Tells whether an audio connection exists.
 * @param[out] exists  a zeroed word; receives 1 or 0, perhaps in its low 8 bits alone
 * @return 0, or the stack's code
 */
VLSDK_API uint32_t Btsdk_AGAP_IsAudioConnExisted(_Inout_ uint32_t* exists);

/**
 * Tells whether the phone functions are active.
 * @return 0: no; any other value: yes
 */
VLSDK_API uint32_t Btsdk_IsMobileActive(void);

/**
 * Tells whether the stack supports the AD function.
 * @return exactly 1: yes
 */
VLSDK_API uint32_t Btsdk_IsSupportADFunction(void);

/**
 * Starts a walk over the live connections, in both directions.
 * @return enumeration handle; 0: there is no connection
 */
VLSDK_API BtHandle Btsdk_StartEnumConnection(void);

/**
 * The next connection of a walk.
 * @param[in]  enumeration  from Btsdk_StartEnumConnection()
 * @param[out] property     a zeroed record
 * @return connection handle; 0: the walk is over, nothing was written
 */
VLSDK_API BtHandle Btsdk_EnumConnection(BtHandle enumeration, _Out_ ConnectionProperty* property);

/**
 * Ends a walk over connections.
 * @param[in] enumeration  from Btsdk_StartEnumConnection(); not 0
 * @return 0, or the stack's code: no such walk
 */
VLSDK_API uint32_t Btsdk_EndEnumConnection(BtHandle enumeration);

/**
 * The connections that remote devices made to local servers.
 * @param[out] connections  receives the handles; null: they are only counted
 * @param[in]  count        length of @p connections in handles
 * @return their number without an array, else the number written; never negative
 */
VLSDK_API int32_t Btsdk_GetAllIncomingConnections(_Out_writes_opt_(count) BtHandle* connections,
                                                  uint32_t count);

/**
 * Reads a connection.
 * @param[in]  connection  connection handle
 * @param[out] property    a zeroed record
 * @return 0, or the stack's code: no such connection
 */
VLSDK_API uint32_t Btsdk_GetConnectionProperty(BtHandle connection, _Out_ ConnectionProperty* property);

VLSDK_END
