/**
 * @file
 * The suite's folder in the user's Send-To menu: one shell link for each of up to five devices, by which
 * files go straight to that device.
 *
 * A device's link starts "VlSend2bt.exe" of the installation folder with the arguments
 * "-DEV_ADDR=XX:XX:XX:XX:XX:XX", byte 5 of the address first; VlCm_GetBtAddrByShcParam() reads it back.
 * Links without such arguments are neither counted nor changed. The functions work on the caller's
 * thread, which may or may not be in a COM apartment; steps that fail are passed over in silence.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * Adds a device to the Send-To folder or takes it out, after putting the folder itself right: it is made
 * when it is missing, with its "Desktop.ini" and the link that names no device; the system's own
 * Bluetooth entry is hidden; from Vista on, "VlExecuteModule.exe" is started when the link to the shell
 * namespace is missing.
 *
 * Added: a device whose link exists has it renamed when the device's name changed. A new one takes the
 * place of the link that was accessed longest ago when there are exactly five. Its file name is the
 * device's name (a text of the language library for a nameless one), with "(1)", "(2)", ... while other
 * links bear it. A name that is no file name gets no link. Nothing is done for a device that the stack
 * does not know; it can still be taken out.
 *
 * Nothing at all is done while Bluetooth is not ready, or without "Vl2Res.dll" and the folder's name in
 * it (string 667).
 *
 * @param[in] address  the device, 6 bytes, least significant first; null: nothing is done
 * @param[in] add      0: take out; any other value: add
 */
VLCM_API void VlCm_SyncSend2btShc(_In_reads_opt_(6) const uint8_t* address, BOOL add);

/**
 * Puts the folder right as VlCm_SyncSend2btShc() does and compares every device link in it with the
 * devices that the stack knows: the links of known ones are renamed when the device's name changed, all
 * others are deleted, which is all of them when the stack knows no device. For the first run in a user's
 * session, because devices are known to all users and links belong to one.
 */
VLCM_API void VlCm_SyncSend2btShcForMultiUser(void);

/**
 * Makes the link to the suite's shell namespace beside the Send-To folder, in place of an existing one.
 * It leads to the root of the namespace, which "Bluetooth Devices.lnk" in the installation folder tells,
 * and there to the item for sending.
 *
 * @return the shell's result of making and saving the link
 * @retval E_FAIL  no "Vl2Res.dll", no string 667 in it, no root of the namespace, or no memory; nothing
 *                 was written
 */
VLCM_API HRESULT VlCm_CreateVistaSend2btShc(void);

VLCM_END
