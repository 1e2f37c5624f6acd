/**
 * @file
 * Remote devices that the stack knows, and the local device.
 */
#pragma once

#include "records.h"

VLSDK_BEGIN

/**
 * Finds a device by its address.
 * @param[in] address  6 bytes, least significant first
 * @return its handle; 0: not known
 */
VLSDK_API BtHandle Btsdk_GetRemoteDeviceHandle(_In_reads_(6) const uint8_t* address);

/**
 * The address of a device.
 * @param[in]  device   device handle
 * @param[out] address  receives 6 bytes, least significant first
 * @return 0, or the stack's code: no such device
 */
VLSDK_API uint32_t Btsdk_GetRemoteDeviceAddress(BtHandle device, _Out_writes_(6) uint8_t* address);

/**
 * The class of a device.
 * @param[in]  device       device handle
 * @param[out] deviceClass  receives the 24-bit class of device
 * @return 0, or the stack's code: no such device
 */
VLSDK_API uint32_t Btsdk_GetRemoteDeviceClass(BtHandle device, _Out_ uint32_t* deviceClass);

/**
 * Address, name and class of a device.
 * @param[in]  device    device handle
 * @param[out] property  a zeroed record
 * @return 0, or the stack's code: no such device
 */
VLSDK_API uint32_t Btsdk_GetRemoteDeviceProperty(BtHandle device, _Out_ RemoteDeviceProperty* property);

/**
 * The parameter word of a device. Bit 31 set: its services are to be taken from the list of its
 * services rather than from its shortcuts.
 * @param[in]  device     device handle
 * @param[out] parameter  receives the word
 * @return 0, or the stack's code: no such device
 */
VLSDK_API uint32_t Btsdk_GetRemoteDeviceParam(BtHandle device, _Out_ uint32_t* parameter);

/**
 * The stack's own type of a device.
 * @param[in] device  device handle
 * @return the type, 1 for a low-energy device; 0 also for a device that is not known
 */
VLSDK_API uint32_t Btsdk_GetRemoteDeviceType(BtHandle device);

/**
 * The name of a device.
 * @param[in]     device  device handle
 * @param[out]    name    receives the UTF-8 name, cut and terminated; empty for a nameless device
 * @param[in,out] length  in: room at @p name in bytes, 16 bits of it count; out: the bytes written,
 *                        terminator included, in the low 16 bits alone
 * @return 0, or the stack's code: no such device
 */
VLSDK_API uint32_t Btsdk_GetRemoteDeviceName(BtHandle device, _Out_ char* name, _Inout_ uint32_t* length);

/**
 * Tells whether a device is connected.
 * @param[in] device  device handle
 * @return 1: yes; 0: no, or no such device. Only these 8 bits of the result register mean anything
 */
VLSDK_API uint8_t Btsdk_IsDeviceConnected(BtHandle device);

/**
 * Tells whether a device is paired.
 * @param[in]  device  device handle
 * @param[out] paired  a zeroed word; receives 1 or 0, perhaps in its low 8 bits alone
 * @return 0, or the stack's code: no such device
 */
VLSDK_API uint32_t Btsdk_IsDevicePaired(BtHandle device, _Inout_ uint32_t* paired);

/**
 * Starts a walk over the known devices.
 * @param[in] mask         what to walk over; 0: everything
 * @param[in] deviceClass  only devices of this class; 0: of every class
 * @return enumeration handle; 0: no device is known
 */
VLSDK_API BtHandle Btsdk_StartEnumRemoteDevice(uint32_t mask, uint32_t deviceClass);

/**
 * The next device of a walk.
 * @param[in]  enumeration  from Btsdk_StartEnumRemoteDevice()
 * @param[out] property     a zeroed record
 * @return device handle; 0: the walk is over, nothing was written
 */
VLSDK_API BtHandle Btsdk_EnumRemoteDevice(BtHandle enumeration, _Out_ RemoteDeviceProperty* property);

/**
 * Ends a walk over devices.
 * @param[in] enumeration  from Btsdk_StartEnumRemoteDevice(); not 0
 * @return 0, or the stack's code: no such walk
 */
VLSDK_API uint32_t Btsdk_EndEnumRemoteDevice(BtHandle enumeration);

/**
 * The class of the local device.
 * @param[out] deviceClass  receives the 24-bit class of device
 * @return 0, or the stack's code
 */
VLSDK_API uint32_t Btsdk_GetLocalDeviceClass(_Out_ uint32_t* deviceClass);

/**
 * Changes the class of the local device.
 * @param[in] deviceClass  24-bit class of device
 * @return 0, or the stack's code
 */
VLSDK_API uint32_t Btsdk_SetLocalDeviceClass(uint32_t deviceClass);

VLSDK_END
