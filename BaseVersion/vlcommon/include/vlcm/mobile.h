/**
 * @file
 * Mobile phones: support switch and text-message records.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/** A text message, shared with the message editor. */
typedef struct VlSmsRecord {
    uint32_t device;     /**< Device handle of the phone. */
    uint8_t rest[14088]; /**< Carried whole; its layout is the editor's. */
} VlSmsRecord;
VLCM_CHECK(sizeof(VlSmsRecord) == 14092, "size");
VLCM_CHECK(offsetof(VlSmsRecord, device) == 0, "offset");
VLCM_CHECK(offsetof(VlSmsRecord, rest) == 4, "offset");

/**
 * Whether mobile support is active, as the stack says.
 *
 * @return the stack's 32-bit answer; any non-zero value means active
 */
VLCM_API uint32_t VlCm_IsMobileActive(void);

/**
 * A new text-message record. Opens the trace scope "VlCm_CreateMobileSMSInfo".
 *
 * @return a zeroed record, freed with Vlcm_SHFree(); null when there is no memory (traced)
 */
VLCM_API VlSmsRecord* VlCm_CreateMobileSMSInfo(void);

VLCM_END
