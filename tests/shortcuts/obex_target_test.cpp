// The shortcut that serves an OBEX connection, against a table written down a second time.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"
#include "shortcuts/obex_target_table.h"

#include <string.h>

using namespace shortcuts_test;

namespace {

using Bytes = std::vector<uint8_t>;

struct Target {
    const char* label;
    const char* text;  // a UUID as it is printed, or the characters themselves
    uint16_t service_class;
};

const Target kTargets[] = {
    {"OPP", "", 0x1105},
    {"Sync", "IRMC-SYNC", 0x1104},
    {"FTP", "F9EC7BC4-953C-11D2-984E-525400DC9E09", 0x1106},
    {"IMG-Push", "E33D9545-8374-4AD7-9EC5-C16BE31EDE8E", 0x111B},
    {"IMG-Pull", "8EE9B3D0-4608-11D5-841A-0002A5325B4E", 0x111B},
    {"IMG-Print", "92353350-4608-11D5-841A-0002A5325B4E", 0x111B},
    {"IMG-AutoArchive", "940126C0-4608-11D5-841A-0002A5325B4E", 0x111C},
    {"IMG-Camera", "947E7420-4608-11D5-841A-0002A5325B4E", 0x111B},
    {"IMG-Display", "94C7CD20-4608-11D5-841A-0002A5325B4E", 0x111B},
    {"IMG-ReferencedObject", "8E61F95D-1A79-11D4-8EA4-00805F9B9834", 0x111D},
    {"IMG-ArchivedObject", "8E61F95E-1A79-11D4-8EA4-00805F9B9834", 0x111C},
    {"BPP-DirectPrint", "00001118-0000-1000-8000-00805F9B34FB", 0x1122},
    {"BPP-ReferencePrint", "00001119-0000-1000-8000-00805F9B34FB", 0x1122},
    {"BPP-RefelectedUI", "00001121-0000-1000-8000-00805F9B34FB", 0x1122},
    {"BPP-Status", "00001123-0000-1000-8000-00805F9B34FB", 0x1122},
    {"BPP-ReferencedObject", "00001120-0000-1000-8000-00805F9B34FB", 0x1122},
    {"PBAP", "796135F0-F0C5-11D8-0966-0800200C9A66", 0x1130},
    {"MAP", "BB582B40-420C-11DB-B0DE-0800200C9A66", 0x1132},
};

bool is_uuid(const Target& target) { return strlen(target.text) == 36; }

Bytes bytes_of(const Target& target) {
    if (!is_uuid(target)) return {target.text, target.text + strlen(target.text)};
    Bytes bytes;
    for (const char* at = target.text; *at != 0;) {
        if (*at == '-') {
            ++at;
            continue;
        }
        bytes.push_back(static_cast<uint8_t>(std::stoul(std::string(at, 2), nullptr, 16)));
        at += 2;
    }
    return bytes;
}

// One that nothing else of the description helps to find.
uint32_t ask(const uint8_t* target, uint8_t length, uint32_t device = 1) {
    VlObexConnection connection;
    memset(&connection, 0xFF, sizeof connection);
    connection.device = device;
    connection.target = target;
    connection.targetLength = length;
    support::clear_sdk_log();
    return VlCm_GetShcHdlByObexProp(&connection);
}
uint32_t ask(const Bytes& target, uint32_t device = 1) {
    return ask(target.data(), static_cast<uint8_t>(target.size()), device);
}

// Each device has two shortcuts of each class: 10000 times the device plus the class, and one more.
std::string shortcuts_of_every_class() {
    std::string json;
    for (const uint32_t device : {1U, 2U}) {
        for (const uint32_t service_class :
             {0x1104U, 0x1105U, 0x1106U, 0x111BU, 0x111CU, 0x111DU, 0x1122U, 0x1130U, 0x1132U}) {
            for (const uint32_t which : {0U, 100000U}) {
                json += json.empty() ? "[" : ",";
                json += "{\"handle\": " + std::to_string(which + 10000 * device + service_class) +
                        ", \"device\": " + std::to_string(device) +
                        ", \"class\": " + std::to_string(service_class) + "}";
            }
        }
    }
    return json + "]";
}

class ObexTarget : public support::SuiteTest {
protected:
    void SetUp() override { VlSim_Set("/shortcuts", shortcuts_of_every_class().c_str()); }
};

std::string asked_for(uint32_t device, uint16_t service_class, uint32_t result) {
    return "Btsdk_GetShortCutByDeviceHandle(" + std::to_string(device) + ", " +
           std::to_string(service_class) + ", out, 1) = " + std::to_string(result);
}

}  // namespace

TEST_F(ObexTarget, EachRowFindsTheFirstShortcutOfItsClassByOneCall) {
    support::for_each_row(kTargets, [](const Target& row) {
        for (const uint32_t device : {1U, 2U}) {
            EXPECT_EQ(ask(bytes_of(row), device), 10000 * device + row.service_class);
            EXPECT_EQ(support::sdk_calls(), Lines{asked_for(device, row.service_class, 1)});
        }
    });
}

TEST_F(ObexTarget, TableHasTheseRowsInThisOrder) {
    ASSERT_EQ(std::size(vl::shortcuts::kObexTargets), std::size(kTargets));
    for (size_t i = 0; i < std::size(kTargets); ++i) {
        const auto& row = vl::shortcuts::kObexTargets[i];
        const Bytes bytes = bytes_of(kTargets[i]);
        EXPECT_EQ(row.name, kTargets[i].label);
        EXPECT_EQ(row.length, bytes.size());
        EXPECT_EQ(Bytes(row.bytes.begin(), row.bytes.begin() + row.length), bytes) << row.name;
        EXPECT_EQ(row.service_class, kTargets[i].service_class) << row.name;
    }
}

TEST_F(ObexTarget, EveryByteCounts) {
    support::for_each_row(kTargets, [](const Target& row) {
        const Bytes bytes = bytes_of(row);
        for (size_t i = 0; i < bytes.size(); ++i) {
            Bytes changed = bytes;
            changed[i] ^= 0x80;  // no row becomes another one
            EXPECT_EQ(ask(changed), 0u) << i;
            EXPECT_TRUE(support::sdk_calls().empty()) << i;
        }
    });
}

TEST_F(ObexTarget, OfAnotherLengthHasNoShortcut) {
    for (unsigned length = 1; length <= 255; ++length) {
        if (length == 9 || length == 16) continue;
        for (const Target& row : kTargets) {
            Bytes bytes = bytes_of(row);
            bytes.resize(255);
            ASSERT_EQ(ask(bytes.data(), static_cast<uint8_t>(length)), 0u) << row.label << ' ' << length;
            ASSERT_TRUE(support::sdk_calls().empty());
        }
    }
}

TEST_F(ObexTarget, LengthDecidesWhichRowsAreCompared) {
    Bytes sync = bytes_of(kTargets[1]);
    sync.resize(16);
    EXPECT_EQ(ask(sync.data(), 16), 0u);
    EXPECT_EQ(ask(sync.data(), 9), 10000u + 0x1104);
    EXPECT_EQ(ask(bytes_of(kTargets[2]).data(), 9), 0u);
}

TEST_F(ObexTarget, OfLength0IsObjectPushWhateverItsBytes) {
    const uint8_t byte = 0x49;
    EXPECT_EQ(ask(&byte, 0), 10000u + 0x1105);
    EXPECT_EQ(ask(nullptr, 0), 10000u + 0x1105);
}

TEST_F(ObexTarget, NullMatchesNoRowWithBytes) {
    for (const uint8_t length : std::initializer_list<uint8_t>{9, 16, 1, 255}) {
        EXPECT_EQ(ask(nullptr, length), 0u) << unsigned{length};
        EXPECT_TRUE(support::sdk_calls().empty());
    }
}

TEST_F(ObexTarget, IsReadNoFurtherThanItsLength) {
    support::for_each_row(kTargets, [](const Target& row) {
        const Bytes bytes = bytes_of(row);
        const support::GuardedBuffer guarded(bytes.size());
        memcpy(guarded.as<uint8_t>(), bytes.data(), bytes.size());
        EXPECT_EQ(ask(guarded.as<uint8_t>(), static_cast<uint8_t>(bytes.size())), 10000u + row.service_class);
    });
}

TEST_F(ObexTarget, OfNoDescriptionIsNone) {
    EXPECT_EQ(VlCm_GetShcHdlByObexProp(nullptr), 0u);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(ObexTarget, HasNoShortcutWhenTheDeviceHasNoneOrTheStackFails) {
    EXPECT_EQ(ask(nullptr, 0, 3), 0u);
    EXPECT_EQ(support::sdk_calls(), Lines{asked_for(3, 0x1105, 0)});
    EXPECT_EQ(ask(nullptr, 0, 0), 0u);
    EXPECT_EQ(support::sdk_calls(), Lines{asked_for(0, 0x1105, 0)});
    VlSim_Fail("Btsdk_GetShortCutByDeviceHandle", 1, 0);
    EXPECT_EQ(ask(nullptr, 0), 0u);
    VlSim_Fail("Btsdk_GetShortCutByDeviceHandle", 1, 1);
    EXPECT_EQ(ask(nullptr, 0), 0u);
}

TEST_F(ObexTarget, TakesTheHandleWhateverTheStacksResult) {
    support::CallPatch found("Btsdk_GetShortCutByDeviceHandle", Btsdk_GetShortCutByDeviceHandle);
    for (const uint32_t result : {0U, 1U, kFailed}) {
        found.answer([result](BtHandle, uint16_t, BtHandle* shortcut, uint32_t) {
            EXPECT_EQ(*shortcut, 0u);
            *shortcut = 4711;
            return result;
        });
        EXPECT_EQ(ask(nullptr, 0), 4711u) << result;
    }
    EXPECT_EQ(found.count(), 3u);
}

TEST_F(ObexTarget, IsNotTraced) {
    ask(nullptr, 0);
    ask(nullptr, 16);
    VlCm_GetShcHdlByObexProp(nullptr);
    EXPECT_TRUE(support::trace_log().empty());
}
