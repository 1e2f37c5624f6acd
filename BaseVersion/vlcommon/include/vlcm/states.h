/**
 * @file
 * The state of adapter, services and devices: words and icons.
 *
 * Asked from the stack at each call. Words come from the language resource library (plain form: ANSI code
 * page); icons are identifiers in the icon library. No function here opens a trace scope.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * The state of the local adapter: not ready, connected (the stack has a connection), or idle.
 *
 * @param[out] buffer  receives the text; null gives FALSE; untouched unless the result is TRUE
 * @param[in]  size    room at @p buffer in bytes, terminator included; 0 fits no text
 *
 * @retval TRUE   the text was written
 * @retval FALSE  null argument (nothing is traced), no resource library, or too little room (both traced)
 */
VLCM_API BOOL VlCm_GetLocDevStatusString(_Out_writes_opt_(size) char* buffer, uint32_t size);

/**
 * The state of the local adapter: not ready, connected (the stack has a connection), or idle; UTF-16 form.
 *
 * @param[out] buffer  receives the text; null gives FALSE; untouched unless the result is TRUE
 * @param[in]  size    room at @p buffer in characters, terminator included; 0 fits no text
 *
 * @retval TRUE   the text was written
 * @retval FALSE  null argument (nothing is traced), no resource library, or too little room (both traced)
 */
VLCM_API BOOL VlCm_GetLocDevStatusStringW(_Out_writes_opt_(size) wchar_t* buffer, uint32_t size);

/**
 * The state of a local service: connected, idle, or not running (also while Bluetooth is not ready).
 *
 * @param[in]  server  server handle; 0 gives FALSE
 * @param[out] buffer  receives the text; null gives FALSE; untouched unless the result is TRUE
 * @param[in]  size    room at @p buffer in bytes, terminator included; 0 fits no text
 *
 * @retval TRUE   the text was written
 * @retval FALSE  null argument (nothing is traced), no resource library, or too little room (both traced)
 */
VLCM_API BOOL VlCm_GetLocSvcStatusString(uint32_t server, _Out_writes_opt_(size) char* buffer, uint32_t size);

/**
 * The state of a local service: connected, idle, or not running (also while Bluetooth is not ready); UTF-16
 * form.
 *
 * @param[in]  server  server handle; 0 gives FALSE
 * @param[out] buffer  receives the text; null gives FALSE; untouched unless the result is TRUE
 * @param[in]  size    room at @p buffer in characters, terminator included; 0 fits no text
 *
 * @retval TRUE   the text was written
 * @retval FALSE  null argument (nothing is traced), no resource library, or too little room (both traced)
 */
VLCM_API BOOL VlCm_GetLocSvcStatusStringW(uint32_t server, _Out_writes_opt_(size) wchar_t* buffer,
                                          uint32_t size);

/**
 * The state of a remote device: connected or idle, with the word for paired behind a comma when it is. While
 * Bluetooth is not ready every device reads as idle.
 *
 * @param[in]  device  device handle; 0 gives FALSE
 * @param[out] buffer  receives the text; null gives FALSE; untouched unless the result is TRUE
 * @param[in]  size    room at @p buffer in bytes, terminator included; 0 fits no text
 *
 * @retval TRUE   the text was written
 * @retval FALSE  null argument (nothing is traced), no resource library, or too little room (both traced)
 */
VLCM_API BOOL VlCm_GetRmtDevStatusString(uint32_t device, _Out_writes_opt_(size) char* buffer, uint32_t size);

/**
 * The state of a remote device: connected or idle, with the word for paired behind a comma when it is. While
 * Bluetooth is not ready every device reads as idle; UTF-16 form.
 *
 * @param[in]  device  device handle; 0 gives FALSE
 * @param[out] buffer  receives the text; null gives FALSE; untouched unless the result is TRUE
 * @param[in]  size    room at @p buffer in characters, terminator included; 0 fits no text
 *
 * @retval TRUE   the text was written
 * @retval FALSE  null argument (nothing is traced), no resource library, or too little room (both traced)
 */
VLCM_API BOOL VlCm_GetRmtDevStatusStringW(uint32_t device, _Out_writes_opt_(size) wchar_t* buffer,
                                          uint32_t size);

/**
 * The state of a remote service, by its shortcut: not ready, connected, or idle. It is connected when the
 * shortcut is, or when its device opened the related local service itself.
 *
 * @param[in]  shortcut  shortcut handle; 0 gives FALSE
 * @param[out] buffer  receives the text; null gives FALSE; untouched unless the result is TRUE
 * @param[in]  size    room at @p buffer in bytes, terminator included; 0 fits no text
 *
 * @retval TRUE   the text was written
 * @retval FALSE  null argument (nothing is traced), no resource library, or too little room (both traced)
 */
VLCM_API BOOL VlCm_GetRmtSvcStatusString(uint32_t shortcut, _Out_writes_opt_(size) char* buffer,
                                         uint32_t size);

/**
 * The state of a remote service, by its shortcut: not ready, connected, or idle. It is connected when the
 * shortcut is, or when its device opened the related local service itself; UTF-16 form.
 *
 * @param[in]  shortcut  shortcut handle; 0 gives FALSE
 * @param[out] buffer  receives the text; null gives FALSE; untouched unless the result is TRUE
 * @param[in]  size    room at @p buffer in characters, terminator included; 0 fits no text
 *
 * @retval TRUE   the text was written
 * @retval FALSE  null argument (nothing is traced), no resource library, or too little room (both traced)
 */
VLCM_API BOOL VlCm_GetRmtSvcStatusStringW(uint32_t shortcut, _Out_writes_opt_(size) wchar_t* buffer,
                                          uint32_t size);

/**
 * The icon of the local adapter.
 *
 * @retval 26  idle
 * @retval 27  connected
 * @retval 28  Bluetooth is not ready
 */
VLCM_API uint32_t VlCm_GetLocDevIconIDEx(void);

/**
 * The icon of a local service: its class's icon plus 0 idle, 1 connected, 2 not running or Bluetooth not
 * ready.
 *
 * @param[in] server        server handle; 0 is asked like any other
 * @param[in] serviceClass  Bluetooth service class
 *
 * @return the icon's identifier
 * @retval 0  the class has no icon of its own
 */
VLCM_API uint32_t VlCm_GetLocSvcIconIDEx(uint32_t server, uint16_t serviceClass);

/**
 * The icon of a remote device: its class's icon plus, by the first that holds, 2 Bluetooth not ready,
 * 1 connected, 4 the default device, 3 paired, 0 otherwise. An unknown class counts from icon 1.
 *
 * @param[in] device       device handle; 0 is asked like any other
 * @param[in] deviceClass  24-bit class of device
 *
 * @return the icon's identifier
 */
VLCM_API uint32_t VlCm_GetRmtDevIconIDEx(uint32_t device, uint32_t deviceClass);

/**
 * The icon of a remote service: its class's icon plus 2 Bluetooth not ready, 1 connected, 0 idle, and 3 for
 * a connected headset (0x1108) or hands-free (0x111E) shortcut without an audio link.
 *
 * @param[in] handle        shortcut or remote service handle; 0 is idle
 * @param[in] serviceClass  Bluetooth service class, which decides about the audio link
 * @param[in] isShortcut    not FALSE: @p handle is a shortcut's; FALSE: a remote service's
 *
 * @return the icon's identifier
 * @retval 0  the class has no icon of its own
 */
VLCM_API uint32_t VlCm_GetRmtSvcIconIDEx(uint32_t handle, uint16_t serviceClass, BOOL isShortcut);

VLCM_END
