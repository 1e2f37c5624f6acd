/**
 * @file
 * Service and device classes: their icons and string identifiers.
 *
 * The answers come from constant tables in the library; none of these functions opens a trace scope or
 * asks the stack. String identifiers index the string table of "Vl2Res.dll" (VlCm_GetLangDepResLib()),
 * icon identifiers the icons of "vlLangInDepRes.dll". An icon identifier is the base of five state
 * variants: + 0 idle, + 1 connected, + 2 Bluetooth not ready, + 3 paired, or connected without audio,
 * + 4 default device.
 *
 * Service classes are compared whole: a value above 0xFFFF is unknown. Of a device class only the low 13
 * bits count (major class, minor class, format bits); a minor class without a row of its own is unknown,
 * whatever its major class.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * The base icon of a service class.
 *
 * @param[in] serviceClass  Bluetooth service class, or a small value of the stack's own
 * @return icon identifier; 0 for the class 0x0003, whose row has no icon
 * @retval 1  unknown class
 */
VLCM_API unsigned int VlCm_GetSvcIconID(unsigned int serviceClass);

/**
 * The place of a service class's icon in the icon file: VlCm_GetIconIndexByID() of VlCm_GetSvcIconID().
 *
 * @param[in] serviceClass  Bluetooth service class, or a small value of the stack's own
 * @return icon index, to be appended to "vlLangInDepRes.dll,"
 * @retval 0  unknown class, or an icon without an index
 */
VLCM_API unsigned int VlCm_GetSvcIconIndex(unsigned int serviceClass);

/**
 * The name of a service class.
 *
 * @param[in] serviceClass  Bluetooth service class, or a small value of the stack's own
 * @return string identifier
 * @retval 1153  unknown class; some known ones share it
 */
VLCM_API unsigned int VlCm_GetServiceClsNameStringID(unsigned short serviceClass);

/**
 * The description of a service that this computer offers.
 *
 * @param[in] serviceClass  Bluetooth service class, or a small value of the stack's own
 * @return string identifier
 * @retval 0  unknown class, or no description
 */
VLCM_API unsigned int VlCm_GetLocSvcDesStrID(unsigned short serviceClass);

/**
 * The description of a service that a remote device offers.
 *
 * @param[in] serviceClass  Bluetooth service class, or a small value of the stack's own
 * @return string identifier
 * @retval 0  unknown class, or no description
 */
VLCM_API unsigned int VlCm_GetRmtSvcDesStrID(unsigned short serviceClass);

/**
 * The number of service classes that the library knows.
 *
 * @retval 48  always
 */
VLCM_API unsigned int VlCm_GetSvcIconInfoCount(void);

/**
 * The base icon of a low-energy service class.
 *
 * @param[in] serviceClass  Bluetooth service class
 * @return icon identifier
 * @retval 278  unknown class: the icon of a low-energy device
 */
VLCM_API unsigned int VlCm_GetLESvcIconID(unsigned int serviceClass);

/**
 * The base icon of a device class.
 *
 * @param[in] deviceClass  Bluetooth class of device
 * @return icon identifier
 * @retval 1  unknown class
 */
VLCM_API unsigned int VlCm_GetDeviceIconID(unsigned int deviceClass);

/**
 * The place of a device class's icon in the icon file: VlCm_GetIconIndexByID() of
 * VlCm_GetDeviceIconID().
 *
 * @param[in] deviceClass  Bluetooth class of device
 * @return icon index, to be appended to "vlLangInDepRes.dll,"
 * @retval 0  unknown class
 */
VLCM_API unsigned int VlCm_GetDeviceIconIndex(unsigned int deviceClass);

/**
 * The name of a device's major class.
 *
 * @param[in] deviceClass  Bluetooth class of device
 * @return string identifier
 * @retval 1101  unknown class
 */
VLCM_API unsigned int VlCm_GetDevMajorClsNameID(unsigned int deviceClass);

/**
 * The name of a device's minor class.
 *
 * @param[in] deviceClass  Bluetooth class of device
 * @return string identifier
 * @retval 1101  unknown class; some known ones share it
 */
VLCM_API unsigned int VlCm_GetDevMinorClsNameID(unsigned int deviceClass);

/**
 * The class name that is shown for a device: its minor class, as VlCm_GetDevMinorClsNameID() tells it.
 *
 * @param[in] deviceClass  Bluetooth class of device
 * @return string identifier
 * @retval 1101  unknown class; some known ones share it
 */
VLCM_API unsigned int VlCm_GetDeviceClsNameStringID(unsigned int deviceClass);

/**
 * The number of device classes that the library knows.
 *
 * @retval 56  always
 */
VLCM_API unsigned int VlCm_GetDeviceIconInfoCount(void);

/**
 * The base icon of a low-energy device.
 *
 * @param[in] deviceClass  not looked at
 * @retval 278  always
 */
VLCM_API unsigned int VlCm_GetLEDeviceIconID(unsigned int deviceClass);

/**
 * The place of an icon in the icon file.
 *
 * @param[in] iconId  base icon identifier
 * @return icon index, to be appended to "vlLangInDepRes.dll,"
 * @retval 0  the first icon, and every one without an index: state variants, 256, 279 to 283
 */
VLCM_API unsigned int VlCm_GetIconIndexByID(unsigned int iconId);

/**
 * Loads the language-dependent resource library "Vl2Res.dll", by bare name: it has to lie on the
 * DLL search path, in practice beside the program.
 *
 * @param[in] selector  0 or 1; anything else loads nothing
 * @return module handle, loaded anew at each call: the caller frees it with FreeLibrary
 * @retval NULL  another selector, or the library could not be loaded
 */
VLCM_API HMODULE VlCm_GetLangDepResLib(unsigned int selector);

VLCM_END
