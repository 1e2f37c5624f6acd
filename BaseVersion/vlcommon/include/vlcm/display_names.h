/**
 * @file
 * The names of services and devices, as the user interface shows them.
 *
 * Class names come from the language resource library (plain form: ANSI code page), device names from the
 * stack (UTF-8). No function here opens a trace scope.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * The name under which a local service is shown: its class name; a serial port adds its COM port in
 * parentheses, or, when it was made on demand, takes the name that the common settings file gives to its
 * port.
 *
 * @param[in]  server  server handle; 0 gives 772
 * @param[out] buffer  receives the name; null gives 772; untouched unless the result is 0
 * @param[in]  size    room at @p buffer in bytes, terminator included; 0 passes for the largest size: the
 *                     whole name is copied, so never give it
 *
 * @retval 0    success
 * @retval 770  the language resource library cannot be loaded
 * @retval 772  null argument
 * @retval 775  the name does not fit
 * @return otherwise the stack's code of reading the server's attributes
 */
VLCM_API uint32_t VlCm_GetLocSvcDisplayName(uint32_t server, _Out_writes_opt_(size) char* buffer,
                                            uint32_t size);

/**
 * The name under which a local service is shown: its class name; a serial port adds its COM port in
 * parentheses, or, when it was made on demand, takes the name that the common settings file gives to its
 * port; UTF-16 form.
 *
 * @param[in]  server  server handle; 0 gives 772
 * @param[out] buffer  receives the name; null gives 772; untouched unless the result is 0
 * @param[in]  size    room at @p buffer in characters, terminator included; 0 passes for the largest size:
 *                     the whole name is copied, so never give it
 *
 * @retval 0    success
 * @retval 770  the language resource library cannot be loaded
 * @retval 772  null argument
 * @retval 775  the name does not fit
 * @return otherwise the stack's code of reading the server's attributes
 */
VLCM_API uint32_t VlCm_GetLocSvcDisplayNameW(uint32_t server, _Out_writes_opt_(size) wchar_t* buffer,
                                             uint32_t size);

/**
 * The name under which a remote service is shown, by its shortcut: its class name; a serial port adds its COM
 * port in parentheses.
 *
 * @param[in]  shortcut  shortcut handle; 0 gives 772
 * @param[out] buffer    receives the name; null gives 772; untouched unless the result is 0
 * @param[in]  size      room at @p buffer in bytes, terminator included; 0 passes for the largest size: the
 *                       whole name is copied, so never give it
 *
 * @retval 0    success
 * @retval 770  the language resource library cannot be loaded
 * @retval 772  null argument
 * @retval 775  the name does not fit
 * @return otherwise the stack's code of reading the shortcut
 */
VLCM_API uint32_t VlCm_GetRmtSvcDisplayName(uint32_t shortcut, _Out_writes_opt_(size) char* buffer,
                                            uint32_t size);

/**
 * The name under which a remote service is shown, by its shortcut: its class name; a serial port adds its COM
 * port in parentheses; UTF-16 form.
 *
 * @param[in]  shortcut  shortcut handle; 0 gives 772
 * @param[out] buffer    receives the name; null gives 772; untouched unless the result is 0
 * @param[in]  size      room at @p buffer in characters, terminator included; 0 passes for the largest size:
 *                     the whole name is copied, so never give it
 *
 * @retval 0    success
 * @retval 770  the language resource library cannot be loaded
 * @retval 772  null argument
 * @retval 775  the name does not fit
 * @return otherwise the stack's code of reading the shortcut
 */
VLCM_API uint32_t VlCm_GetRmtSvcDisplayNameW(uint32_t shortcut, _Out_writes_opt_(size) wchar_t* buffer,
                                             uint32_t size);

/**
 * The name under which a remote device is shown: the stack's name for it, or its address as text, byte 5
 * first, when it has none.
 *
 * @param[in]  address  6 bytes, least significant first; null gives 772
 * @param[out] buffer   receives the name, UTF-8, at most 99 bytes; null gives 772; untouched unless the
 *                      result is 0
 * @param[in]  size     room at @p buffer in bytes, terminator included; 0 passes for the largest size: the
 *                      whole name is copied, so never give it
 *
 * @retval 0    success
 * @retval 772  null argument
 * @retval 775  the name does not fit
 */
VLCM_API uint32_t VlCm_GetRmtDevDisplayName(_In_reads_opt_(6) const uint8_t* address,
                                            _Out_writes_opt_(size) char* buffer, uint32_t size);

/**
 * What kind of device a class of device is, in words: the name of its minor class. An unknown class, and one
 * whose name does not fit, has the text for an unknown kind, cut to the buffer.
 *
 * @param[in]  deviceClass  24-bit class of device
 * @param[out] buffer       receives the text; null gives FALSE
 * @param[in]  size         room at @p buffer in bytes, terminator included; 0 gives FALSE
 *
 * @retval TRUE   a text was written
 * @retval FALSE  no buffer, or the language resource library cannot be loaded; nothing was written
 */
VLCM_API BOOL VlCm_GetDevTypeStrByDevCls(uint32_t deviceClass, _Out_writes_opt_(size) char* buffer,
                                         uint32_t size);

/**
 * What kind of device a class of device is, in words: the name of its minor class. An unknown class, and one
 * whose name does not fit, has the text for an unknown kind, cut to the buffer; UTF-16 form.
 *
 * @param[in]  deviceClass  24-bit class of device
 * @param[out] buffer       receives the text; null gives FALSE
 * @param[in]  size         room at @p buffer in characters, terminator included; 0 gives FALSE
 *
 * @retval TRUE   a text was written
 * @retval FALSE  no buffer, or the language resource library cannot be loaded; nothing was written
 */
VLCM_API BOOL VlCm_GetDevTypeStrByDevClsW(uint32_t deviceClass, _Out_writes_opt_(size) wchar_t* buffer,
                                          uint32_t size);

VLCM_END
