/**
 * @file
 * Mobile phones: support switch, text-message records, use of a phone's connection.
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

/**
 * Frees a text-message record. A record that is null or whose 14092 bytes cannot all be read is left
 * alone (traced). Opens the trace scope "VlCm_DestroyMobileSMSInfo".
 *
 * @attention Readable is not allocated: only a record of VlCm_CreateMobileSMSInfo() or VlCm_GetSMSInfo()
 * may be given, and once.
 *
 * @param[in] record  the record; gone after the call
 */
VLCM_API void VlCm_DestroyMobileSMSInfo(_In_opt_ VlSmsRecord* record);

/**
 * Asks the tray agent to use a connection to a phone. The agent is started when it does not run, which
 * takes seconds; whether it acts on the request is not told. Opens the trace scope
 * "VlCm_UseMobileConnection".
 *
 * @param[in] connection  connection handle; 0: nothing is asked
 *
 * @retval TRUE   asked
 * @retval FALSE  @p connection is 0
 */
VLCM_API BOOL VlCm_UseMobileConnection(uint32_t connection);

/**
 * Asks the tray agent to end a connection to a phone; otherwise as VlCm_UseMobileConnection(), trace scope
 * "VlCm_DisconnectMobilePhone".
 *
 * @param[in] connection  connection handle; 0: nothing is asked
 *
 * @retval TRUE   asked
 * @retval FALSE  @p connection is 0
 */
VLCM_API BOOL VlCm_DisconnectMobilePhone(uint32_t connection);

VLCM_END
