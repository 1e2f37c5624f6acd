/**
 * @file
 * Control interface of the simulated stack: scenario, call log, faults, hooks, misuse reports.
 *
 * The state (devices, services, shortcuts, ...) is one JSON document shared by all processes that use
 * the same folder (environment variable VLSIM_HOME). Log, faults, hooks and misuse reports belong to
 * the calling process. All texts are UTF-8; operations are named as they are exported
 * ("Btsdk_GetAllShortCuts"). Functions that fill a text return its whole length without terminator and
 * write at most size bytes, terminated.
 */
#pragma once

#include <stdint.h>

#ifndef VLSIM_API
#define VLSIM_API __declspec(dllimport)
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** What VlSim_LiveCount() counts in the calling process. */
enum VlSimResource {
    VLSIM_ENUMERATIONS = 0, /**< Started and not ended. */
    VLSIM_BLOCKS = 1,       /**< Blocks of the stack's allocator that nobody freed. */
    VLSIM_KEYS = 2,         /**< Registry keys opened through the stack. */
    VLSIM_FILES = 3         /**< Files opened through the stack. */
};

/** @name Scenario: 0 is success, another value a text that is no valid document (nothing changes) */
/**@{*/

/** Loads the built-in neighbourhood and clears log, faults, hooks, misuse reports and live counts. */
VLSIM_API uint32_t VlSim_Reset(void);
/** Replaces the whole state. @param json a scenario; "{}" is a stack without anything, not ready */
VLSIM_API uint32_t VlSim_LoadScenario(const char* json);
/** Replaces the whole state. @param path a scenario file */
VLSIM_API uint32_t VlSim_LoadScenarioFile(const char* path);
/** Merges into the state (RFC 7386). @param json e.g. {"ready": false} */
VLSIM_API uint32_t VlSim_Patch(const char* json);
/** Sets one value. @param pointer RFC 6901, e.g. "/devices/0/name" @param json the value as JSON */
VLSIM_API uint32_t VlSim_Set(const char* pointer, const char* json);
/** Reads one value as JSON. @param pointer "" is the whole state @return 0 when there is none */
VLSIM_API uint32_t VlSim_Get(const char* pointer, char* json, uint32_t size);
/** The folder in which files sent to a device arrive; made when missing. @return 0: no such device */
VLSIM_API uint32_t VlSim_GetInboxFolder(uint32_t device, char* path, uint32_t size);
/**@}*/

/** @name Call log */
/**@{*/

/** Calls made since the log was cleared. @param operation null: of all operations */
VLSIM_API uint32_t VlSim_CallCount(const char* operation);
/** One call, e.g. `Btsdk_GetPrivateProfileInt("General", "VlCustomVersion", 0, "C:\x.ini") = 4`. */
VLSIM_API uint32_t VlSim_GetCall(uint32_t index, char* text, uint32_t size);
/** Forgets all calls. */
VLSIM_API void VlSim_ClearLog(void);
/** Switches the log on (1, the state after a reset) or off (0, the state before the first one). */
VLSIM_API void VlSim_SetLogging(uint32_t on);
/**@}*/

/** @name Faults and hooks */
/**@{*/

/**
 * Makes one call of an operation fail: it returns `code` and writes nothing.
 * @param operation its name @param nth which call from now, from 1; 0: every call @param code result
 */
VLSIM_API void VlSim_Fail(const char* operation, uint32_t nth, uint32_t code);
/**
 * Answers an operation by another function of the same prototype; null: by the stack again. Inside the
 * function, the same operation is answered by the stack, so that it can pass a call on.
 */
VLSIM_API void VlSim_Hook(const char* operation, void* function);
/** Takes all faults and hooks away. */
VLSIM_API void VlSim_ClearFaults(void);
/**@}*/

/** @name Misuse of the stack's contract, as seen in this process */
/**@{*/

/** Reports so far: a record not zeroed, memory freed twice, an enumeration ended twice, ... */
VLSIM_API uint32_t VlSim_MisuseCount(void);
/** One report as a line of text. */
VLSIM_API uint32_t VlSim_GetMisuse(uint32_t index, char* text, uint32_t size);
/** Forgets the reports, for tests that make them on purpose. */
VLSIM_API void VlSim_ClearMisuse(void);
/** Resources not yet given back. @param kind a VlSimResource */
VLSIM_API uint32_t VlSim_LiveCount(uint32_t kind);
/**@}*/

#ifdef __cplusplus
}
#endif
