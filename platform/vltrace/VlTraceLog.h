/**
 * @file
 * In-process log of the stand-in trace facility, for tests. Off until it is switched on; scopes are
 * counted while it is on or a readable trace is written. Functions that fill a text return its whole
 * length; at most size bytes are written, terminated; null only asks for the length.
 */
#pragma once

#include <stdint.h>

#ifndef VLTRACELOG_API
#define VLTRACELOG_API __declspec(dllimport)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Switches the log on (1) or off (0) and empties it. Open scopes, unbalanced scopes and reports are
 * counted from zero again: a scope that is still open may be left later without being counted.
 */
VLTRACELOG_API void VlTraceLog_Enable(uint32_t on);
/** Empties the log; open scopes stay counted. */
VLTRACELOG_API void VlTraceLog_Clear(void);
/** Entries so far. */
VLTRACELOG_API uint32_t VlTraceLog_Count(void);
/**
 * One entry: ">512 VlCm_GetInstallDir" (entered), "<512 VlCm_GetInstallDir" (left) or
 * "=512 " and the formatted line with its line end.
 * @return the whole length; at most size bytes are written, terminated
 */
VLTRACELOG_API uint32_t VlTraceLog_Get(uint32_t index, char* text, uint32_t size);
/** The format as it was passed, for an "=" entry; empty for the others. @return as VlTraceLog_Get() */
VLTRACELOG_API uint32_t VlTraceLog_GetFormat(uint32_t index, char* text, uint32_t size);
/** Scopes entered and not left, in all threads. */
VLTRACELOG_API uint32_t VlTraceLog_OpenScopes(void);
/** One open scope: module, name and thread. @param index innermost scope last @return as VlTraceLog_Get() */
VLTRACELOG_API uint32_t VlTraceLog_GetOpenScope(uint32_t index, char* text, uint32_t size);
/**
 * Scopes left twice, left in another order than entered, left by another thread, never entered,
 * abandoned (another scope was entered at the same place) or still open when their thread ended.
 */
VLTRACELOG_API uint32_t VlTraceLog_Unbalanced(void);
/** What was wrong with one unbalanced scope. @return as VlTraceLog_Get() */
VLTRACELOG_API uint32_t VlTraceLog_GetReport(uint32_t index, char* text, uint32_t size);

#ifdef __cplusplus
}
#endif
