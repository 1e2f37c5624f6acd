/**
 * @file
 * Types and status numbers that every part of the interface shares.
 */
#pragma once

#include <sal.h>
#include <stddef.h>
#include <stdint.h>
#include <windows.h>

/** Marks what the library exports. */
#ifndef VLCM_API
#define VLCM_API __declspec(dllimport)
#endif

#ifdef __cplusplus
/** Checks a record's layout while compiling, in C and in C++. */
#define VLCM_CHECK(condition, text) static_assert(condition, text)
/** Opens the C part of a header. */
#define VLCM_BEGIN extern "C" {
/** Closes the C part of a header. */
#define VLCM_END }
#else
/** Checks a record's layout while compiling, in C and in C++. */
#define VLCM_CHECK(condition, text) _Static_assert(condition, text)
/** Opens the C part of a header. */
#define VLCM_BEGIN
/** Closes the C part of a header. */
#define VLCM_END
#endif

/** Room, in bytes and with the terminator, that a caller gives for a path. */
#define VLCM_PATH_SIZE 260

/** Status numbers. */
enum VlCmStatus {
    VLCM_OK = 0,                 /**< Success. */
    VLCM_RESOURCE_FAILURE = 770, /**< Resource library or shared memory failed. */
    VLCM_NOT_READY = 771,        /**< Bluetooth is not ready. */
    VLCM_INVALID_ARGUMENT = 772, /**< An argument is invalid. */
    VLCM_NULL_OUTPUT = 773,      /**< An output (for senders: the list) is null. */
    VLCM_OUT_OF_MEMORY = 774,    /**< No memory. */
    VLCM_BUFFER_TOO_SMALL = 775, /**< The caller's buffer is too small. */
    VLCM_STACK_NOT_READY = 784   /**< Senders: the stack is not ready. */
};
