/**
 * @file
 * Control interface of the simulated print spooler: scenario, call log, faults, misuse reports.
 *
 * Printers, jobs, ports and drivers are one JSON document shared by all processes that use the same folder
 * (environment variable VLSIM_HOME). Log, faults and misuse reports belong to the calling process. All
 * texts are UTF-8; functions of the spooler are named as they are exported ("EnumPrintersA"). Functions
 * that fill a text return its whole length without terminator and write at most size bytes, terminated.
 */
#pragma once

#include <stdint.h>

#ifndef VLSPOOL_API
#define VLSPOOL_API __declspec(dllimport)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** @name Scenario: 0 is success, another value a text that is no valid document (nothing changes) */
/**@{*/

/** Loads the built-in scenario, switches the log on and clears log, faults and misuse reports. */
VLSPOOL_API uint32_t VlSpool_Reset(void);
/** Replaces the whole state. @param json a scenario; "{}" is a spooler without anything */
VLSPOOL_API uint32_t VlSpool_LoadScenario(const char* json);
/** Sets one value. @param pointer RFC 6901, e.g. "/printers/0/jobs" @param json the value as JSON */
VLSPOOL_API uint32_t VlSpool_Set(const char* pointer, const char* json);
/** Reads one value as JSON. @param pointer "" is the whole state @return 0 when there is none */
VLSPOOL_API uint32_t VlSpool_Get(const char* pointer, char* json, uint32_t size);
/**@}*/

/** @name Call log */
/**@{*/

/** Calls made since the log was cleared. @param function null: of all functions */
VLSPOOL_API uint32_t VlSpool_CallCount(const char* function);
/** One call, e.g. `OpenPrinterA("Office", access 0xf000c) = 1`. */
VLSPOOL_API uint32_t VlSpool_GetCall(uint32_t index, char* text, uint32_t size);
/** Forgets all calls. */
VLSPOOL_API void VlSpool_ClearLog(void);
/**@}*/

/** @name Faults */
/**@{*/

/**
 * Makes one call of a function fail: it returns FALSE, sets the last error and does nothing.
 * @param function its name @param nth which call from now, from 1; 0: every call @param error last error
 */
VLSPOOL_API void VlSpool_Fail(const char* function, uint32_t nth, uint32_t error);
/** Takes all faults away. */
VLSPOOL_API void VlSpool_ClearFaults(void);
/**@}*/

/** @name What this process did wrong, and what it left open */
/**@{*/

/** Printer handles that were not closed. */
VLSPOOL_API uint32_t VlSpool_OpenHandles(void);
/** Reports so far: a handle that is none or was closed, a level that is not simulated, ... */
VLSPOOL_API uint32_t VlSpool_MisuseCount(void);
/** One report as a line of text. */
VLSPOOL_API uint32_t VlSpool_GetMisuse(uint32_t index, char* text, uint32_t size);
/** Forgets the reports, for tests that make them on purpose. */
VLSPOOL_API void VlSpool_ClearMisuse(void);
/**@}*/

#ifdef __cplusplus
}
#endif
