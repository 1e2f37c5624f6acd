/**
 * @file
 * What all headers of the stack SDK share.
 */
#pragma once

#include <sal.h>
#include <stddef.h>
#include <stdint.h>
#include <windows.h>

#ifndef VLSDK_API
#define VLSDK_API __declspec(dllimport) /**< Empty when the stack itself is built. */
#endif

#ifdef __cplusplus
#define VLSDK_BEGIN extern "C" {                                    /**< Starts the declarations. */
#define VLSDK_END }                                                 /**< Ends the declarations. */
#define VLSDK_CHECK(condition, text) static_assert(condition, text) /**< Asserts a record's layout. */
#else
#define VLSDK_BEGIN                                                  /**< Starts the declarations. */
#define VLSDK_END                                                    /**< Ends the declarations. */
#define VLSDK_CHECK(condition, text) _Static_assert(condition, text) /**< Asserts a record's layout. */
#endif

/** Device, service, server, shortcut, connection or enumeration, as the stack issued it; 0 = none. */
typedef uint32_t BtHandle;
