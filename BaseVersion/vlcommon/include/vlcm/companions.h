/**
 * @file
 * The tray agent and the companion programs: finding, starting, waking and closing them.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * Allocates memory that is handed between programs, the shell and the library (COM task allocator).
 *
 * @param[in] size  bytes
 *
 * @return the block, freed with Vlcm_SHFree(); null when there is no memory
 */
VLCM_API void* Vlcm_SHAlloc(uint32_t size);

/**
 * Frees a block of Vlcm_SHAlloc().
 *
 * @param[in] block  the block; null does nothing
 */
VLCM_API void Vlcm_SHFree(_In_opt_ void* block);

VLCM_END
