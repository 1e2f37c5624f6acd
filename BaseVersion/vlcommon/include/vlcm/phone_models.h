/**
 * @file
 * Phone models: which model a paired phone is, and whether the mobile SDK knows it.
 *
 * The models are kept in "VlMobileModel.ini" in the Windows folder, one section per phone, named by the
 * phone's address as 12 upper-case hexadecimal digits, byte 5 first. All texts are in the ANSI code page;
 * a field without a terminator is read up to its last byte but one. No function here opens a trace scope
 * of its own name.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/** A phone's model and the modules that serve it. */
typedef struct VlDeviceModel {
    char manu[64];             /**< Manufacturer; a phone without one has no model. */
    char model1[64];           /**< Model name. */
    char model2[64];           /**< Alternative model name. */
    char base[VLCM_PATH_SIZE]; /**< Base module file: a full path when read, kept as its file name. */
    char plug[VLCM_PATH_SIZE]; /**< Plug-in module file: a full path when read, kept as its file name. */
} VlDeviceModel;
VLCM_CHECK(sizeof(VlDeviceModel) == 712, "size");
VLCM_CHECK(offsetof(VlDeviceModel, manu) == 0, "offset");
VLCM_CHECK(offsetof(VlDeviceModel, model1) == 64, "offset");
VLCM_CHECK(offsetof(VlDeviceModel, model2) == 128, "offset");
VLCM_CHECK(offsetof(VlDeviceModel, base) == 192, "offset");
VLCM_CHECK(offsetof(VlDeviceModel, plug) == 452, "offset");

/** A Symbian model of the mobile SDK; declared in VlMobileSDK.h. */
struct SymbianModelEntry;

/**
 * The model that is kept for a phone. Base and plug-in module come back as paths in the folder
 * "\Mobile\msmplugs\" of the installation folder, cut at 259 bytes; a module that is not kept yields the
 * folder itself. Opens the trace scope "VlCm_GetInstallDir" when there is a model.
 *
 * @param[in]  address  6 bytes in the stack's order; null gives FALSE
 * @param[out] model    receives the model; null gives FALSE. Without a model its manufacturer becomes
 *                      empty and the other fields stay as they were
 *
 * @retval TRUE   found
 * @retval FALSE  no manufacturer is kept for the phone, whatever else is
 */
VLCM_API BOOL VlCm_GetDeviceModel(_In_reads_opt_(6) const uint8_t* address, _Out_opt_ VlDeviceModel* model);

/**
 * Keeps a phone's model. Of the two modules only the file name, behind the last backslash character, is
 * kept.
 *
 * @param[in] address  6 bytes in the stack's order; null gives FALSE
 * @param[in] model    the model, which stays as it is; null gives FALSE
 *
 * @return the stack's answer to writing the manufacturer: 0 when it failed, and then nothing else is
 *         written; failures of the other texts are not told
 */
VLCM_API BOOL VlCm_SetDeviceModel(_In_reads_opt_(6) const uint8_t* address,
                                  _In_opt_ const VlDeviceModel* model);

/**
 * Forgets a phone's model: takes its whole section out.
 *
 * @param[in] address  6 bytes in the stack's order; null gives FALSE
 *
 * @return the stack's answer, 0 when it failed
 */
VLCM_API BOOL VlCm_DeleteDeviceModel(_In_reads_opt_(6) const uint8_t* address);

/**
 * Whether the mobile SDK lists a phone's model among the Symbian phones.
 *
 * An entry fits when its manufacturer contains the model's (case counts; an empty one is contained in
 * every text) and one of its two names equals one of the model's two names without regard to case; a
 * name that is empty equals none. Search and comparison go by characters of the ANSI code page, as the C
 * runtime does them. The first entry that fits is taken.
 *
 * @param[in]  model  the model; null gives FALSE
 * @param[out] entry  receives the whole entry when one fits; may be null
 *
 * @retval TRUE   an entry fits
 * @retval FALSE  none does, or the list cannot be read
 */
VLCM_API BOOL VlCm_IsMatchSymbianModelExist(_In_opt_ const VlDeviceModel* model,
                                            _Out_opt_ struct SymbianModelEntry* entry);

/**
 * Whether the mobile SDK lists a phone's model among the Series 40 phones; otherwise as
 * VlCm_IsMatchSymbianModelExist(), but search and comparison go by bytes.
 *
 * @param[in] model  the model; null gives FALSE
 *
 * @retval TRUE   an entry fits
 * @retval FALSE  none does, or the list cannot be read
 */
VLCM_API BOOL VlCm_IsMatchS40ModelExist(_In_opt_ const VlDeviceModel* model);

/**
 * Whether this is the placeholder for any phone that offers its phone book: manufacturer
 * "QVN_PBAP_Manufacturer" and, as either name, "QVN_PBAP_Model". Case counts.
 *
 * @param[in] model  the model; null gives FALSE
 *
 * @retval TRUE   the placeholder
 * @retval FALSE  any other model
 */
VLCM_API BOOL VlCm_IsPBAPModel(_In_opt_ const VlDeviceModel* model);

/**
 * The suite's error number for a result of the mobile SDK.
 *
 * @param[in] result  the mobile SDK's result
 *
 * @return 0x6001 to 0x600E; 0x6001 also for 0 and for every result without a number of its own
 */
VLCM_API uint32_t VlCm_MapMobileErrorCode(int32_t result);

VLCM_END
