// A shortcut's application parameter, which the library reads by a call for its length and one for its bytes.
#pragma once

#include "VlSDK.h"

#include <gtest/gtest.h>

#include <string>

namespace shortcuts_test {

inline std::string length_read(uint32_t shortcut) {
    return "Btsdk_GetShortCutProperty({shortcut " + std::to_string(shortcut) + ", mask 64}) = 0";
}
inline std::string bytes_read(uint32_t shortcut, size_t length) {
    return "Btsdk_GetShortCutProperty({shortcut " + std::to_string(shortcut) + ", mask 64, parameterLength " +
           std::to_string(length) + "}) = 0";
}

// The application parameter of shortcuts as it is told by each of both reads.
struct Parameter {
    uint16_t told_length;  // by the first read
    uint16_t read_length;  // by the second one
    uint32_t first_result = 0, second_result = 0;
    uint16_t service_class = 0x1101;
};
// Byte i of a parameter is 100 + i.
inline uint32_t answer(const Parameter& parameter, ShortcutProperty& record) {
    record.serviceClass = parameter.service_class;
    const bool first = record.parameter == nullptr;
    const uint16_t room = record.parameterLength;
    EXPECT_EQ(room, first ? 0 : parameter.told_length);
    record.parameterLength = first ? parameter.told_length : parameter.read_length;
    for (uint16_t i = 0; !first && i < room && i < parameter.read_length; ++i) {
        static_cast<uint8_t*>(record.parameter)[i] = static_cast<uint8_t>(100 + i);
    }
    return first ? parameter.first_result : parameter.second_result;
}

}  // namespace shortcuts_test
