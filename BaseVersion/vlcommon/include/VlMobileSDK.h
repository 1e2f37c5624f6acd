/**
 * @file
 * The mobile SDK: the phone models that it supports.
 */
#pragma once

#include <sal.h>
#include <stddef.h>
#include <stdint.h>

#ifndef VLMOBILESDK_API
#define VLMOBILESDK_API __declspec(dllimport)
#endif

#ifdef __cplusplus
/** Checks a record's layout while compiling, in C and in C++. */
#define VLMOBILESDK_CHECK(condition, text) static_assert(condition, text)
extern "C" {
#else
/** Checks a record's layout while compiling, in C and in C++. */
#define VLMOBILESDK_CHECK(condition, text) _Static_assert(condition, text)
#endif

/** One Symbian phone model. */
typedef struct SymbianModelEntry {
    char manufacturer[32];    /**< Terminated text. */
    uint8_t reserved32[64];   /**< The SDK's. */
    char model1[64];          /**< Model name. */
    char model2[64];          /**< Alternative model name. */
    uint8_t reserved224[320]; /**< The SDK's. */
} SymbianModelEntry;
VLMOBILESDK_CHECK(sizeof(SymbianModelEntry) == 544, "size");
VLMOBILESDK_CHECK(offsetof(SymbianModelEntry, manufacturer) == 0, "offset");
VLMOBILESDK_CHECK(offsetof(SymbianModelEntry, model1) == 96, "offset");
VLMOBILESDK_CHECK(offsetof(SymbianModelEntry, model2) == 160, "offset");

/** One Series 40 phone model. */
typedef struct S40ModelEntry {
    char manufacturer[64];    /**< Terminated text. */
    char model1[64];          /**< Model name. */
    char model2[64];          /**< Alternative model name. */
    uint8_t reserved192[528]; /**< The SDK's. */
} S40ModelEntry;
VLMOBILESDK_CHECK(sizeof(S40ModelEntry) == 720, "size");
VLMOBILESDK_CHECK(offsetof(S40ModelEntry, manufacturer) == 0, "offset");
VLMOBILESDK_CHECK(offsetof(S40ModelEntry, model1) == 64, "offset");
VLMOBILESDK_CHECK(offsetof(S40ModelEntry, model2) == 128, "offset");

/** Starts the walk over the Symbian models. @param flags 0 @return enumeration, null on failure */
VLMOBILESDK_API void *MB_StartEnumSymbianModels(uint32_t flags);
/** Fetches the next model. @param enumeration from Start @param entry receives it @return 0 at the end */
VLMOBILESDK_API uint32_t MB_EnumSymbianModels(_In_ void *enumeration, _Out_writes_bytes_(544) void *entry);
/** Ends the walk. @param enumeration from Start @return 0 on success */
VLMOBILESDK_API uint32_t MB_EndEnumSymbianModels(_In_ void *enumeration);

/** Starts the walk over the Series 40 models. @param flags 0 @return enumeration, null on failure */
VLMOBILESDK_API void *MB_StartEnumModels_S40(uint32_t flags);
/** Fetches the next model. @param enumeration from Start @param entry receives it @return 0 at the end */
VLMOBILESDK_API uint32_t MB_EnumModels_S40(_In_ void *enumeration, _Out_writes_bytes_(720) void *entry);
/** Ends the walk. @param enumeration from Start @return 0 on success */
VLMOBILESDK_API uint32_t MB_EndEnumModels_S40(_In_ void *enumeration);

#ifdef __cplusplus
}
#endif
