// The service class that a handle of each kind stands for.
#include "stack_faults.h"

#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlCommon.h"
#include "VlSDK.h"

#include <string.h>

using namespace shortcuts_test;

namespace {

constexpr uint16_t kUntouched = 0xBEEF;

struct Kind {
    const char* label;
    uint16_t kind;
    uint32_t handle;  // of the built-in neighbourhood
    uint16_t service_class;
    const char* operation;
    const char* call;
};

const Kind kKinds[] = {
    {"connection", 1, 401, 0x111E, "Btsdk_GetConnectionProperty",
     "Btsdk_GetConnectionProperty(401, out) = 0"},
    {"shortcut", 2, 203, 0x1103, "Btsdk_GetShortCutProperty",
     "Btsdk_GetShortCutProperty({shortcut 203}) = 0"},
    {"remote service", 3, 107, 0x1103, "Btsdk_GetRemoteServiceAttributes",
     "Btsdk_GetRemoteServiceAttributes(107, {}) = 0"},
    {"local server", 4, 305, 0x1116, "Btsdk_GetServerAttributes", "Btsdk_GetServerAttributes(305, {}) = 0"},
};

class ServiceClass : public support::SuiteTest {
protected:
    struct Answer {
        uint32_t result;
        uint16_t service_class;
        bool operator==(const Answer&) const = default;
    };
    static Answer ask(uint32_t handle, uint16_t kind) {
        Answer answer{0, kUntouched};
        support::clear_sdk_log();
        answer.result = VlCm_GetServiceClass(handle, kind, &answer.service_class);
        return answer;
    }
};

// Fills a record and fails all the same.
constexpr uint16_t kLeftBehind = 0x1234;
uint32_t fill_connection(BtHandle, ConnectionProperty* record) {
    record->serviceClass = kLeftBehind;
    return kFailed;
}
uint32_t fill_shortcut(ShortcutProperty* record) {
    record->serviceClass = kLeftBehind;
    return kFailed;
}
uint32_t fill_attributes(BtHandle, ServerAttributes* record) {
    record->serviceClass = kLeftBehind;
    return kFailed;
}

template <typename Record>
void expect_zero(Record record) {
    const Record zero{};
    EXPECT_EQ(memcmp(&record, &zero, sizeof zero), 0);
}

}  // namespace

TEST_F(ServiceClass, ComesFromTheRecordOfTheHandlesKindByOneCall) {
    support::for_each_row(kKinds, [](const Kind& row) {
        EXPECT_EQ(ask(row.handle, row.kind), (Answer{0, row.service_class}));
        EXPECT_EQ(support::sdk_calls(), Lines{row.call});
    });
}

TEST_F(ServiceClass, OfAnotherKindIs772AndNothingIsAsked) {
    for (const uint16_t kind :
         std::initializer_list<uint16_t>{0, 5, 6, 0x0101, 0x0102, 0x0104, 0x7FFF, 0x8001, 0xFFFF}) {
        EXPECT_EQ(ask(401, kind), (Answer{772, kUntouched})) << kind;
        EXPECT_TRUE(support::sdk_calls().empty()) << kind;
    }
}

TEST_F(ServiceClass, WithoutAnOutputIs773BeforeTheKindIsLookedAt) {
    blocks().fail_from(1);
    for (const uint16_t kind : std::initializer_list<uint16_t>{0, 1, 2, 3, 4, 5})
        EXPECT_EQ(VlCm_GetServiceClass(401, kind, nullptr), 773u);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(ServiceClass, WithoutMemoryIs774) {
    support::for_each_row(kKinds, [this](const Kind& row) {
        EXPECT_EQ(ask(row.handle, row.kind).result, 0u);
        blocks().fail_nth(1);
        EXPECT_EQ(ask(row.handle, row.kind), (Answer{774, kUntouched}));
        EXPECT_TRUE(support::sdk_calls().empty());
        blocks().fail_nth(0);
    });
}

TEST_F(ServiceClass, IsTheStacksCodeWhenItFails) {
    support::for_each_row(kKinds, [](const Kind& row) {
        VlSim_Fail(row.operation, 1, kFailed);
        EXPECT_EQ(ask(row.handle, row.kind), (Answer{kFailed, kUntouched}));
        EXPECT_EQ(support::sdk_operations(), Lines{row.operation});
    });
}

TEST_F(ServiceClass, OfAFailedReadIsNotStored) {
    const Hook connection("Btsdk_GetConnectionProperty", fill_connection);
    const Hook shortcut("Btsdk_GetShortCutProperty", fill_shortcut);
    const Hook service("Btsdk_GetRemoteServiceAttributes", fill_attributes);
    const Hook server("Btsdk_GetServerAttributes", fill_attributes);
    support::for_each_row(kKinds, [](const Kind& row) {
        EXPECT_EQ(ask(row.handle, row.kind), (Answer{kFailed, kUntouched}));
    });
}

TEST_F(ServiceClass, OfHandle0OrAnUnknownOneIsTheStacksAnswer) {
    constexpr uint32_t kUnknownHandle = 0x0401;
    support::for_each_row(kKinds, [](const Kind& row) {
        for (const uint32_t handle : {0U, 0xFFFFFFFFU}) {
            EXPECT_EQ(ask(handle, row.kind), (Answer{kUnknownHandle, kUntouched}));
            EXPECT_EQ(support::sdk_operations(), Lines{row.operation});
        }
    });
}

TEST_F(ServiceClass, AsksWithZeroedRecords) {
    support::CallPatch connection("Btsdk_GetConnectionProperty", Btsdk_GetConnectionProperty);
    connection.answer([](BtHandle, ConnectionProperty* record) { return expect_zero(*record), 0U; });
    support::CallPatch shortcut("Btsdk_GetShortCutProperty", Btsdk_GetShortCutProperty);
    shortcut.answer([](ShortcutProperty* record) {
        ShortcutProperty rest = *record;
        EXPECT_EQ(rest.shortcut, 9u);
        rest.shortcut = 0;
        return expect_zero(rest), 0U;
    });
    support::CallPatch service("Btsdk_GetRemoteServiceAttributes", Btsdk_GetRemoteServiceAttributes);
    service.answer([](BtHandle, ServerAttributes* record) { return expect_zero(*record), 0U; });
    support::CallPatch server("Btsdk_GetServerAttributes", Btsdk_GetServerAttributes);
    server.answer([](BtHandle, ServerAttributes* record) { return expect_zero(*record), 0U; });
    for (const Kind& row : kKinds) EXPECT_EQ(ask(9, row.kind), (Answer{0, 0}));
    EXPECT_EQ(connection.count() + shortcut.count() + service.count() + server.count(), 4u);
}

TEST_F(ServiceClass, OpensItsScopeOnEveryPathAndWritesNoLine) {
    for (const Kind& row : kKinds) ask(row.handle, row.kind);
    ask(401, 5);
    VlCm_GetServiceClass(401, 1, nullptr);
    EXPECT_EQ(support::trace_scopes(), Lines(6, "512 VlCm_GetServiceClass"));
    EXPECT_TRUE(support::trace_lines().empty());
}
