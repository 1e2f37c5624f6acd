// Which services and devices a user interface shows, and which services answer each other.
//
// To show a service, add its class to a list; to let an installation hide a class, add its key. A class
// without a key is never hidden.
#pragma once

#include <stdint.h>

namespace vl::presentation {

struct FilterKey {
    uint32_t key;      // service class, or major device class (class of device masked with 0x1F00)
    const char* name;  // of the setting that hides it
};

// Section "UnSupportedProfile". One key hides headset and hands-free, one all network services.
inline constexpr FilterKey kProfileKeys[] = {
    {0x1101, "BTSDK_CLS_SERIAL_PORT"},   {0x1103, "BTSDK_CLS_DIALUP_NET"},
    {0x1105, "BTSDK_CLS_OBEX_OBJ_PUSH"}, {0x1106, "BTSDK_CLS_OBEX_FILE_TRANS"},
    {0x1108, "BTSDK_CLS_HANDSFREE"},     {0x111E, "BTSDK_CLS_HANDSFREE"},
    {0x110B, "BTSDK_CLS_AUDIO_SINK"},    {0x1111, "BTSDK_CLS_FAX"},
    {0x1115, "BTSDK_CLS_PAN_PAN"},       {0x1116, "BTSDK_CLS_PAN_PAN"},
    {0x1117, "BTSDK_CLS_PAN_PAN"},       {0x2001, "BTSDK_CLS_PAN_PAN"},
    {0x1118, "BTSDK_CLS_DIRECT_PRINT"},  {0x111B, "BTSDK_CLS_IMAG_RESPONDER"},
    {0x111F, "BTSDK_CLS_HANDSFREE_AG"},  {0x1124, "BTSDK_CLS_HID"},
    {0x1126, "BTSDK_CLS_HCR_PRINT"},
};

// Section "FilteredDevice".
inline constexpr FilterKey kDeviceKeys[] = {
    {0x0100, "BTSDK_DEVCLS_COMPUTER"}, {0x0200, "BTSDK_DEVCLS_PHONE"},        {0x0300, "BTSDK_DEVCLS_LAP"},
    {0x0400, "BTSDK_DEVCLS_AUDIO"},    {0x0500, "BTSDK_DEVCLS_PERIPHERAL"},   {0x0600, "BTSDK_DEVCLS_IMAGE"},
    {0x0700, "BTSDK_DEVCLS_WEARABLE"}, {0x1F00, "BTSDK_DEVCLS_UNCLASSIFIED"},
};

inline constexpr uint16_t kShownLocalServices[] = {
    0x1101, 0x1105, 0x1106, 0x1111, 0x1117, 0x1116, 0x1115, 0x110B, 0x111B, 0x111F, 0x1118,
};

// 0x1118 and 0x111F are shown on condition.
inline constexpr uint16_t kShownRemoteServices[] = {
    0x1101, 0x1105, 0x1106, 0x1111, 0x1117, 0x1116, 0x1115, 0x1103, 0x1110,
    0x110B, 0x1108, 0x111E, 0x1124, 0x1126, 0x111B, 0x1104, 0x112F, 0x1132,
};

// A remote audio service and the local service of the same link's other direction.
struct ServiceRelation {
    uint16_t remote;
    uint16_t local;
};
inline constexpr ServiceRelation kServiceRelations[] = {
    {0x1108, 0x1112},  // headset, its gateway
    {0x111E, 0x111F},  // hands-free, its gateway
    {0x110B, 0x110A},  // audio sink, source
};

}  // namespace vl::presentation
