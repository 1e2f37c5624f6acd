/**
 * @file
 * Lists handed from program to program through named shared memory.
 *
 * A sender puts a copy of its list into a named section, wakes the program that will act on it and
 * waits up to about 2 s for the list to be taken. The receiver calls the matching get function in its
 * own process and owns what it gets. The section's name is the only lock: while a hand-off is pending,
 * the next one of its kind, from any program, is refused. Both programs must run in one logon session.
 *
 * @attention Hand over one record at a time. A sender packs the records at their own size, but a
 * receiver of the 64-bit library steps 1636 bytes from one 1632-byte record to the next and 1200 from
 * one 1192-byte record to the next. From the second record on a longer list arrives shifted: record k
 * (counted from 0) is read 4 * k, or 8 * k, bytes too late, and the last one ends in zeros. Programs
 * that hand over several items make one call each.
 */
#pragma once

#include "base.h"
#include "mobile.h"

VLCM_BEGIN

/** An item to send: a file, an image or a contact for a phone. */
typedef struct VlSendRecord {
    uint32_t word0;            /**< 0 in records that the library makes; carried whole. */
    uint32_t serviceClass;     /**< Service class of the target service. */
    char path[VLCM_PATH_SIZE]; /**< Path of the file, terminated. */
    uint8_t rest[1356];        /**< Agreed between sender and receiver; carried whole. */
    struct VlSendRecord* next; /**< Next record; null at the end. */
} VlSendRecord;
VLCM_CHECK(sizeof(VlSendRecord) == 1632, "size");
VLCM_CHECK(offsetof(VlSendRecord, word0) == 0, "offset");
VLCM_CHECK(offsetof(VlSendRecord, serviceClass) == 4, "offset");
VLCM_CHECK(offsetof(VlSendRecord, path) == 8, "offset");
VLCM_CHECK(offsetof(VlSendRecord, rest) == 268, "offset");
VLCM_CHECK(offsetof(VlSendRecord, next) == 1624, "offset");

/** A contact for Outlook. */
typedef struct VlOutlookContactRecord {
    uint8_t contact[1184];               /**< Agreed between sender and receiver; carried whole. */
    struct VlOutlookContactRecord* next; /**< Next record; null at the end. */
} VlOutlookContactRecord;
VLCM_CHECK(sizeof(VlOutlookContactRecord) == 1192, "size");
VLCM_CHECK(offsetof(VlOutlookContactRecord, contact) == 0, "offset");
VLCM_CHECK(offsetof(VlOutlookContactRecord, next) == 1184, "offset");

/**
 * Hands a list of files to the tray agent, which sends them to a device. The agent is started when it
 * does not run, brought to the front, and woken by a message that depends on the service class of the
 * first record: object push (0x1105), file transfer (0x1106) or direct printing (0x1118); for any other
 * class no message is sent. Opens no trace scope.
 *
 * A program whose file name is "Veltrin Quill.exe", in any case, hands over one file at a time: of the
 * first record only service class and path (at most 259 bytes) are sent, and no further record.
 *
 * A structured exception, for example from a bad link in the list, is reported to the debugger output
 * and gives 0. The section then stays open in the calling process, so that further calls give 770.
 *
 * @param[in] list     first record; stays the caller's; the last record's link is null
 * @param[in] target   goes with the wake-up, cut to 32 bits: the device or connection
 * @param[in] unused1  not used
 * @param[in] unused2  not used
 *
 * @retval VLCM_OK                handed over, whether or not anybody took it, or an exception was caught
 * @retval VLCM_RESOURCE_FAILURE  a hand-off of files is pending, or there is no memory for it (traced)
 * @retval VLCM_NULL_OUTPUT       @p list is null
 * @retval VLCM_STACK_NOT_READY   the stack is not ready
 */
VLCM_API uint32_t VlCm_SendFilestoBtDevice(_In_opt_ const VlSendRecord* list, uintptr_t target,
                                           uintptr_t unused1, uintptr_t unused2);

/**
 * Takes the pending list of files.
 *
 * The section is not trusted: nothing outside its committed part is read, missing bytes are zero, a
 * record that would start behind them ends the list.
 *
 * @return the first record, every record freed with Btsdk_FreeMemory(); null when nothing is pending,
 *         the list is empty or there is no memory
 */
VLCM_API VlSendRecord* VlCm_GetFilePathInfo(void);

/**
 * Hands a list of images to the tray agent, which is woken only when the first record's service class
 * is imaging responder (0x111B). Opens the trace scope "VlCm_SendImagestoBtDevice" of the image module.
 *
 * @attention Does not wait for the images to be taken: unless they are taken at once, they are gone.
 *
 * @param[in] list    first record; stays the caller's; the last record's link is null
 * @param[in] target  goes with the wake-up: the device or connection
 *
 * @retval VLCM_OK                handed over, whether or not anybody took it
 * @retval VLCM_RESOURCE_FAILURE  a hand-off of images is pending, or there is no memory for it (traced)
 * @retval VLCM_NULL_OUTPUT       @p list is null
 * @retval VLCM_STACK_NOT_READY   the stack is not ready
 */
VLCM_API uint32_t VlCm_SendImagestoBtDevice(_In_opt_ const VlSendRecord* list, uint32_t target);

/**
 * Takes the pending list of images; otherwise as VlCm_GetFilePathInfo().
 *
 * @return the first record, every record freed with Btsdk_FreeMemory(); null when there is none
 */
VLCM_API VlSendRecord* VlCm_GetImagePathInfo(void);

/**
 * Hands a list of contacts to the tray agent, which sends them to a phone. The agent is always woken.
 * Opens no trace scope.
 *
 * @param[in] list    first record; stays the caller's; the last record's link is null
 * @param[in] target  goes with the wake-up: the device or connection
 *
 * @retval VLCM_OK                handed over, whether or not anybody took it
 * @retval VLCM_RESOURCE_FAILURE  a hand-off of contacts is pending, or there is no memory for it; the
 *                                trace line names the files' section
 * @retval VLCM_NULL_OUTPUT       @p list is null
 * @retval VLCM_STACK_NOT_READY   the stack is not ready
 */
VLCM_API uint32_t VlCm_SendContactsToMobilePhone(_In_opt_ const VlSendRecord* list, uint32_t target);

/**
 * Takes the pending list of contacts for a phone; otherwise as VlCm_GetFilePathInfo().
 *
 * @return the first record, every record freed with Btsdk_FreeMemory(); null when there is none
 */
VLCM_API VlSendRecord* VlCm_GetContactInfo(void);

/**
 * Hands a list of contacts to the tray agent, which puts them into Outlook. The agent is always woken,
 * with parameter 0. Opens no trace scope. Structured exceptions are treated as in
 * VlCm_SendFilestoBtDevice().
 *
 * @param[in] list  first record; stays the caller's; the last record's link is null
 *
 * @retval VLCM_OK                handed over, whether or not anybody took it, or an exception was caught
 * @retval VLCM_RESOURCE_FAILURE  a hand-off to Outlook is pending, or there is no memory for it (traced)
 * @retval VLCM_NULL_OUTPUT       @p list is null
 * @retval VLCM_STACK_NOT_READY   the stack is not ready
 */
VLCM_API uint32_t VlCm_SendContactsToOutLook(_In_opt_ const VlOutlookContactRecord* list);

/**
 * Takes the pending list of contacts for Outlook; otherwise as VlCm_GetFilePathInfo().
 *
 * @return the first record, every record freed with Btsdk_FreeMemory(); null when there is none
 */
VLCM_API VlOutlookContactRecord* VlCm_GetOutlookContactInfo(void);

/**
 * Hands a text message to the message editor "MAP_VlSMSEditor.exe", which is started from the
 * installation folder. While mobile support is active it is started only when the record's phone offers
 * the message access service (0x1132). The stack need not be ready. Opens the trace scope
 * "VlCm_SendSMS".
 *
 * @param[in] record  the message; stays the caller's
 *
 * @retval VLCM_OK                handed over, whether or not the editor was started and took it
 * @retval VLCM_RESOURCE_FAILURE  a message is pending, or there is no memory for it (traced)
 * @retval VLCM_NULL_OUTPUT       @p record is null (traced)
 */
VLCM_API uint32_t VlCm_SendSMS(_In_opt_ const VlSmsRecord* record);

/**
 * Takes the pending text message. The section is not trusted: bytes behind its committed part are zero.
 *
 * @return a record of VlCm_CreateMobileSMSInfo(), freed with Vlcm_SHFree(); null when nothing is
 *         pending (traced) or there is no memory
 */
VLCM_API VlSmsRecord* VlCm_GetSMSInfo(void);

VLCM_END
