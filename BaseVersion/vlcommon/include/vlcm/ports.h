/**
 * @file
 * COM ports of serial-type services, servers and modems.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * The COM port of a local serial-port server, from the stack's extended attributes.
 *
 * @param[in] server  server handle
 *
 * @return the port number
 * @retval -1  the server cannot be read or has no such attributes
 */
VLCM_API int VlCm_GetLocalSPPSvrComPort(uint32_t server);

/**
 * The COM port of a shortcut to a serial-type service, from its application parameter: byte 9 for
 * dial-up networking (0x1103) and fax (0x1111), byte 5 for serial port (0x1101), hard-copy print (0x1126)
 * and scan (0x1127). Opens the trace scope "VlCm_GetComPortByShortcut".
 *
 * @param[in] shortcut      shortcut handle
 * @param[in] serviceClass  decides which byte is taken, whatever the shortcut's own class
 *
 * @return the port number
 * @retval -1  another class, no or too short a parameter, no memory, or it cannot be read
 */
VLCM_API int VlCm_GetComPortByShortcut(uint32_t shortcut, uint16_t serviceClass);

/**
 * The shortcuts of serial-type services that name a COM port in byte 5 or byte 9 of their parameter,
 * whatever their class: a looser test than VlCm_GetComPortByShortcut(). Opens the trace scope
 * "VlCm_GetShortcutsByComPort".
 *
 * @param[out]    shortcuts  receives handles; null: matches are only counted
 * @param[in]     port       COM port number
 * @param[in,out] count      in: room at @p shortcuts in handles; out, with result TRUE only: all matches,
 *                           which may be more than were stored; null gives FALSE
 *
 * @retval TRUE   the shortcuts were looked through
 * @retval FALSE  there are no shortcuts at all, or no memory
 */
VLCM_API BOOL VlCm_GetShortcutsByComPort(_Out_writes_opt_(*count) uint32_t* shortcuts, int port,
                                         _Inout_opt_ uint32_t* count);

/**
 * Whether a COM port is taken: by a local serial-port server, by a shortcut of a serial-type service, or by
 * a virtual device of the common settings file ("VirtualDevice" in the sections "VirtualDevice0" and
 * following, as many as "VirtualDeviceNum" in section "LocalBluetooth" says). Asked in this order, up to
 * the first yes. Opens the trace scope "VlCm_IsComportBeenUsed".
 *
 * @param[in] port  COM port number; -1 is never taken
 *
 * @retval TRUE   it is taken
 * @retval FALSE  it is free
 */
VLCM_API BOOL VlCm_IsComportBeenUsed(int port);

/**
 * The first plugged-in virtual COM port that is free: of the list "SerialNum1", "SerialNum2", ... in
 * section "VComm enum info" of the common settings file (at most 254; 0 ends it), each a port times ten
 * plus a digit that is not 0 when the port is plugged in. Opens the trace scope
 * "VlCm_GetPluginAndNotUsedComport".
 *
 * @return the port number
 * @retval 0  there is none
 */
VLCM_API int VlCm_GetPluginAndNotUsedComport(void);

/**
 * Whether a local serial-port server was made on demand and is not one of the two fixed ones, whose ports
 * ("COM9", case counts) stand in "VirtualDevice" of the sections "LocalSPPService0" and
 * "LocalSPPService1" of the common settings file. Opens the trace scope "VlCm_IsDynamicLocSppSvc".
 *
 * @param[in] server  server handle
 *
 * @retval TRUE   it is; also when it has no COM port
 * @retval FALSE  it is a fixed one, of another class, or cannot be read
 */
VLCM_API BOOL VlCm_IsDynamicLocSppSvc(uint32_t server);

/**
 * The name of the modem that the system has attached to a COM port, from the registry's modem class.
 * Opens the trace scope "VlCm_MatchModemNameByComPort"; what is looked at is traced.
 *
 * @param[in]     port    COM port number, 1 to 256
 * @param[out]    buffer  receives the name; null gives FALSE
 * @param[in,out] size    in: room at @p buffer in bytes, which must exceed the name with its terminator;
 *                        out, when a modem was found: the bytes of the name with its terminator; null
 *                        gives FALSE
 *
 * @retval TRUE   the name was written
 * @retval FALSE  wrong argument, no such modem (outputs untouched), no memory, or too little room
 */
VLCM_API BOOL VlCm_FindModemNameByComPort(int port, _Out_writes_bytes_opt_(*size) char* buffer,
                                          _Inout_opt_ uint16_t* size);

VLCM_END
