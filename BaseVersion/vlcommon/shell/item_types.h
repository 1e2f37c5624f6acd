// Types of the namespace's items by what they stand for. Each is decided by the first row that fits.
#pragma once

#include "vlcm/shell_items.h"

#include <stdint.h>

namespace vl::shell {

inline constexpr uint16_t kFileTransferClass = 0x1106;

struct ServiceItemType {
    uint16_t service_class;
    uint32_t type;
};

// Services that are named by device and class; a class without a row is a plain one.
inline constexpr ServiceItemType kServiceOfDeviceTypes[] = {
    {kFileTransferClass, VLCM_ITEM_FILES_OF_DEVICE},
    {0x112F, VLCM_ITEM_PHONEBOOK_OF_DEVICE},
    {0x1132, VLCM_ITEM_MESSAGES_OF_DEVICE},
};

constexpr uint32_t type_of_service_of_device(uint16_t service_class) {
    for (const ServiceItemType& row : kServiceOfDeviceTypes) {
        if (row.service_class == service_class) return row.type;
    }
    return VLCM_ITEM_SERVICE_OF_DEVICE;
}

constexpr uint32_t type_of_service(uint16_t service_class) {
    return service_class == kFileTransferClass ? VLCM_ITEM_FILES : VLCM_ITEM_SERVICE;
}

constexpr uint32_t type_of_phone_folder(uint32_t flags) {
    if ((flags & VLCM_PHONE_FOLDER_PHONEBOOK) != 0) return VLCM_ITEM_PHONEBOOK_FOLDER;
    if ((flags & VLCM_PHONE_FOLDER_MESSAGES) != 0) return VLCM_ITEM_MESSAGE_FOLDER;
    return VLCM_ITEM_PHONE_FOLDER_OTHER;
}

// Masks of class bits, not class numbers: a class with more bits set is of the type too.
constexpr uint32_t type_of_device(uint32_t device_class) {
    constexpr uint32_t kUncategorised = 0x1F;
    const bool categorised = ((device_class >> 8) & 0x1F) != kUncategorised;
    const bool special = (device_class & 0x500) == 0x500 || (device_class & 0x680) == 0x680;
    return categorised && special ? VLCM_ITEM_SPECIAL_DEVICE : VLCM_ITEM_DEVICE;
}

// The three network classes share one folder and have no name of their own in it.
constexpr bool is_network_class(uint16_t service_class) {
    return service_class >= 0x1115 && service_class <= 0x1117;
}

}  // namespace vl::shell
