// Whether a shortcut is the default one, enabled, connected.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <string.h>

#include <functional>

using namespace shortcuts_test;

namespace {

// Of the built-in neighbourhood: the device's default shortcut, one that is none, a connected one.
constexpr uint32_t kDefault = 201, kOther = 205, kConnected = 204, kUnknown = 9999;
constexpr uint32_t kUnknownHandle = 0x0401;  // the stack's answer

class ShortcutState : public support::SuiteTest {
protected:
    static std::string value(const char* pointer) {
        char json[64] = "";
        VlSim_Get(pointer, json, sizeof json);
        return json;
    }
    // Gives shortcut 201 an application parameter.
    static void parameter(const std::string& hex) {
        VlSim_Set("/shortcuts/0/parameter", ('"' + hex + '"').c_str());
    }
    // Lets a function answer the reading of shortcuts; it sees the record as it was given.
    void on_read(std::function<uint32_t(ShortcutProperty&)> answer) {
        reads_.answer([answer = std::move(answer)](ShortcutProperty* record) { return answer(*record); });
    }
    [[nodiscard]] size_t reads() const { return reads_.count(); }

private:
    support::CallPatch<uint32_t(ShortcutProperty*)> reads_{"Btsdk_GetShortCutProperty",
                                                           Btsdk_GetShortCutProperty};
};

// The record without what the caller may set.
bool rest_is_zero(ShortcutProperty record) {
    record.shortcut = 0;
    record.mask = 0;
    record.isDefault = 0;
    record.parameterLength = 0;
    record.parameter = nullptr;
    const ShortcutProperty zero{};
    return memcmp(&record, &zero, sizeof zero) == 0;
}

}  // namespace

TEST_F(ShortcutState, MakingAShortcutTheDefaultWritesItsFlagAlone) {
    EXPECT_EQ(VlCm_SetDefaultShortCut(kOther), 0u);
    EXPECT_EQ(support::sdk_calls(),
              Lines{"Btsdk_SetShortCutProperty({shortcut 205, mask 16, default 1}) = 0"});
    EXPECT_EQ(value("/shortcuts/4/default"), "true");
    EXPECT_EQ(value("/shortcuts/4/name"), "\"5C:F3:70:8B:21:02 1108 Headset\"");
}

TEST_F(ShortcutState, MakingAShortcutTheDefaultHandsOverAZeroedRecord) {
    support::CallPatch written("Btsdk_SetShortCutProperty", Btsdk_SetShortCutProperty);
    written.answer([](ShortcutProperty* record) {
        EXPECT_TRUE(rest_is_zero(*record));
        EXPECT_EQ(record->parameterLength, 0);
        EXPECT_EQ(record->parameter, nullptr);
        return 0U;
    });
    EXPECT_EQ(VlCm_SetDefaultShortCut(7), 0u);
    EXPECT_EQ(written.count(), 1u);
}

TEST_F(ShortcutState, MakingAShortcutTheDefaultGivesTheStacksCode) {
    EXPECT_EQ(VlCm_SetDefaultShortCut(kUnknown), kUnknownHandle);
    EXPECT_EQ(VlCm_SetDefaultShortCut(0), kUnknownHandle);
    VlSim_Fail("Btsdk_SetShortCutProperty", 1, kFailed);
    EXPECT_EQ(VlCm_SetDefaultShortCut(kOther), kFailed);
    EXPECT_EQ(support::sdk_operations(), Lines(3, "Btsdk_SetShortCutProperty"));
}

TEST_F(ShortcutState, MakingAShortcutTheDefaultWithoutMemoryGives774) {
    blocks().fail_nth(1);
    EXPECT_EQ(VlCm_SetDefaultShortCut(kOther), 774u);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(ShortcutState, MakingAShortcutTheDefaultOpensAScopeWithAClosingBlank) {
    VlCm_SetDefaultShortCut(kOther);
    VlCm_SetDefaultShortCut(0);
    EXPECT_EQ(support::trace_scopes(), Lines(2, "512 VlCm_SetDefaultShortCut "));
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(ShortcutState, IsDefaultByItsFlag) {
    EXPECT_EQ(VlCm_IsDefaultShortcut(kDefault), TRUE);
    EXPECT_EQ(VlCm_IsDefaultShortcut(kOther), FALSE);
    EXPECT_EQ(VlCm_IsDefaultShortcut(kUnknown), FALSE);
    EXPECT_EQ(support::sdk_calls(), (Lines{"Btsdk_GetShortCutProperty({shortcut 201, mask 16}) = 0",
                                           "Btsdk_GetShortCutProperty({shortcut 205, mask 16}) = 0",
                                           "Btsdk_GetShortCutProperty({shortcut 9999, mask 16}) = 1025"}));
}

TEST_F(ShortcutState, HandleZeroIsNoDefaultShortcutAndNothingIsAsked) {
    EXPECT_EQ(VlCm_IsDefaultShortcut(0), FALSE);
    EXPECT_EQ(reads(), 0u);
}

TEST_F(ShortcutState, IsDefaultOnlyWithFlag1OfASuccessfulRead) {
    const struct {
        const char* label;
        uint8_t flag;
        uint32_t result;
        BOOL expected;
    } rows[] = {
        {"set", 1, 0, TRUE},
        {"clear", 0, 0, FALSE},
        {"two", 2, 0, FALSE},
        {"all bits", 255, 0, FALSE},
        {"set, failed", 1, kFailed, FALSE},
        {"set, failed by 1", 1, 1, FALSE},
    };
    support::for_each_row(rows, [this](const auto& row) {
        on_read([&](ShortcutProperty& record) {
            EXPECT_TRUE(rest_is_zero(record));
            EXPECT_EQ(record.isDefault, 0);
            record.isDefault = row.flag;
            return row.result;
        });
        EXPECT_EQ(VlCm_IsDefaultShortcut(kDefault), row.expected);
    });
    EXPECT_EQ(reads(), std::size(rows));
}

TEST_F(ShortcutState, IsDefaultOpensItsScopeUnderTheShellModule) {
    VlCm_IsDefaultShortcut(kDefault);
    VlCm_IsDefaultShortcut(0);
    EXPECT_EQ(support::trace_scopes(), Lines(2, "1024 VlCm_IsDefaultShortcut"));
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(ShortcutState, IsEnabledByAParameterOfTheOneByte1) {
    const struct {
        const char* label;
        const char* parameter;
        BOOL expected;
    } rows[] = {
        {"1", "01", TRUE},         {"0", "00", FALSE},           {"2", "02", FALSE},
        {"all bits", "FF", FALSE}, {"two bytes", "0101", FALSE}, {"1 and 0", "0100", FALSE},
        {"none", "", FALSE},
    };
    support::for_each_row(rows, [](const auto& row) {
        parameter(row.parameter);
        support::clear_sdk_log();
        EXPECT_EQ(VlCm_IsShcEnabled(kDefault), row.expected);
        EXPECT_EQ(support::sdk_calls(),
                  Lines{"Btsdk_GetShortCutProperty({shortcut 201, mask 64, parameterLength 1}) = 0"});
    });
}

TEST_F(ShortcutState, IsEnabledOnlyWithLengthAndByte1OfASuccessfulRead) {
    const struct {
        const char* label;
        uint16_t length;
        uint8_t byte;
        uint32_t result;
        BOOL expected;
    } rows[] = {
        {"as it must be", 1, 1, 0, TRUE}, {"failed", 1, 1, kFailed, FALSE},    {"shorter", 0, 1, 0, FALSE},
        {"longer", 2, 1, 0, FALSE},       {"longer by 256", 257, 1, 0, FALSE}, {"byte 0", 1, 0, 0, FALSE},
        {"byte 129", 1, 129, 0, FALSE},
    };
    support::for_each_row(rows, [this](const auto& row) {
        on_read([&](ShortcutProperty& record) {
            EXPECT_TRUE(rest_is_zero(record));
            *static_cast<uint8_t*>(record.parameter) = row.byte;
            record.parameterLength = row.length;
            return row.result;
        });
        EXPECT_EQ(VlCm_IsShcEnabled(kDefault), row.expected);
    });
    EXPECT_EQ(reads(), std::size(rows));
}

TEST_F(ShortcutState, IsEnabledReadsIntoABlockOfOneByte) {
    on_read([this](ShortcutProperty& record) {
        EXPECT_TRUE(support::has_line(blocks().describe(support::LeakKind::kHeapBlock), "1 bytes"));
        EXPECT_EQ(record.parameterLength, 1);
        return 0U;
    });
    VlCm_IsShcEnabled(kDefault);
    EXPECT_EQ(reads(), 1u);
}

TEST_F(ShortcutState, IsNotEnabledWhenItCannotBeReadOrWithoutMemory) {
    parameter("01");
    EXPECT_EQ(VlCm_IsShcEnabled(0), FALSE);
    EXPECT_EQ(VlCm_IsShcEnabled(kUnknown), FALSE);
    VlSim_Fail("Btsdk_GetShortCutProperty", 1, kFailed);
    EXPECT_EQ(VlCm_IsShcEnabled(kDefault), FALSE);
    bool first = true;
    EXPECT_EQ(fail_each_allocation(blocks(),
                                   [&] {
                                       EXPECT_EQ(VlCm_IsShcEnabled(kDefault), first);
                                       first = false;
                                   }),
              2u);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(ShortcutState, IsEnabledOpensAScopeOfAnotherName) {
    VlCm_IsShcEnabled(kDefault);
    VlCm_IsShcEnabled(kUnknown);
    EXPECT_EQ(support::trace_scopes(), Lines(2, "512 VlCm_IsShcEnabling"));
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(ShortcutState, IsConnectedByItsConnection) {
    EXPECT_EQ(VlCm_IsShortcutConnected(kConnected), TRUE);
    EXPECT_EQ(VlCm_IsShortcutConnected(kOther), FALSE);
    EXPECT_EQ(support::sdk_calls(), (Lines{"Btsdk_GetShortCutProperty({shortcut 204}) = 0",
                                           "Btsdk_GetShortCutProperty({shortcut 205}) = 0"}));
    EXPECT_TRUE(support::trace_lines().empty());
    EXPECT_EQ(support::trace_scopes(), Lines(2, "512 VlCm_IsShortcutConnected"));
}

TEST_F(ShortcutState, AnyConnectionHandleCounts) {
    for (const uint32_t connection : {1U, 0x100U, 0x10000U, 0x80000000U}) {
        on_read([=](ShortcutProperty& record) {
            EXPECT_TRUE(rest_is_zero(record));
            record.connection = connection;
            return 0U;
        });
        EXPECT_EQ(VlCm_IsShortcutConnected(kOther), TRUE) << connection;
    }
}

TEST_F(ShortcutState, IsNotConnectedWhenItCannotBeReadWhichIsTraced) {
    EXPECT_EQ(VlCm_IsShortcutConnected(kUnknown), FALSE);
    EXPECT_EQ(VlCm_IsShortcutConnected(0), FALSE);
    VlSim_Fail("Btsdk_GetShortCutProperty", 1, kFailed);
    EXPECT_EQ(VlCm_IsShortcutConnected(kConnected), FALSE);
    on_read([](ShortcutProperty& record) {
        record.connection = 1;
        return kFailed;
    });
    EXPECT_EQ(VlCm_IsShortcutConnected(kConnected), FALSE);
    EXPECT_EQ(reads(), 4u);
    EXPECT_EQ(support::trace_lines(), Lines(4, "Fail to Btsdk_GetShortCutProperty\r\n"));
    EXPECT_TRUE(support::has_line(support::trace_log(), "=512 Fail to Btsdk_GetShortCutProperty\r\n"));
}
