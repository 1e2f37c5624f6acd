/**
 * @file
 * The message relay to the tray agent, and virtual COM ports.
 */
#pragma once

#include "base.h"

VLSDK_BEGIN

/**
 * Passes a message on to the tray agent, in whatever process it runs. Does not wait for an answer.
 * @param[in] message    the message: kind in the upper, code in the lower 16 bits
 * @param[in] parameter  goes with it
 * @return 0: on its way; another value: there is no tray agent
 */
VLSDK_API uint32_t Btsdk_PostMessageToCtrlCenter(uint32_t message, uint32_t parameter);

/**
 * The serial number of a virtual COM port.
 * @param[in] port  COM port number
 * @return the serial number; 0: no such port
 */
VLSDK_API uint32_t Btsdk_CommNumToSerialNum(int32_t port);

/**
 * Takes a virtual COM port out of the system.
 * @param[in] serial  serial number from Btsdk_CommNumToSerialNum()
 * @param[in] flag    16
 * @return 0, or the stack's code: no such port
 */
VLSDK_API uint32_t Btsdk_PlugOutVComm(uint32_t serial, uint32_t flag);

/**
 * Closes the stack's side of a virtual COM port.
 * @param[in] port  COM port number
 * @return 0, or the stack's code: no such port
 */
VLSDK_API uint32_t Btsdk_DeinitCommObj(uint8_t port);

VLSDK_END
