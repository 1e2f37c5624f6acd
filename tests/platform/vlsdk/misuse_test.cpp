// Every report, each brought about by the misuse that it names.
#include "stack_test.h"

#include <functional>

namespace vlsim_test {
namespace {

using Lines = std::vector<std::string>;

class Misuse : public StackTest {};

template <typename Record>
Record dirty(size_t offset) {
    Record record{};
    reinterpret_cast<uint8_t*>(&record)[offset] = 1;
    return record;
}

struct Row {
    const char* report;
    std::function<void()> misuse;
};

void expect_reports(const std::vector<Row>& rows, Lines (*take)()) {
    for (const Row& row : rows) {
        SCOPED_TRACE(row.report);
        row.misuse();
        EXPECT_EQ(take(), Lines{row.report});
    }
}

TEST_F(Misuse, RecordThatIsNotZeroed) {
    const BtHandle devices = Btsdk_StartEnumRemoteDevice(0, 0);
    const BtHandle services = Btsdk_StartEnumRemoteService(1);
    const BtHandle servers = Btsdk_StartEnumLocalServer();
    const BtHandle connections = Btsdk_StartEnumConnection();
    const std::vector<Row> rows = {
        {"Btsdk_GetShortCutProperty: record not zeroed at offset 4",
         [] {
             auto record = dirty<ShortcutProperty>(4);
             record.shortcut = 201;
             EXPECT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
         }},
        {"Btsdk_GetShortCutProperty: record not zeroed at offset 277",
         [] {
             auto record = dirty<ShortcutProperty>(277);
             record.shortcut = 201;
             Btsdk_GetShortCutProperty(&record);
         }},
        {"Btsdk_GetRemoteDeviceProperty: record not zeroed at offset 115",
         [] {
             auto record = dirty<RemoteDeviceProperty>(115);
             Btsdk_GetRemoteDeviceProperty(1, &record);
         }},
        {"Btsdk_GetConnectionProperty: record not zeroed at offset 27",
         [] {
             auto record = dirty<ConnectionProperty>(27);
             Btsdk_GetConnectionProperty(401, &record);
         }},
        {"Btsdk_GetServerAttributes: record not zeroed at offset 2",
         [] {
             auto record = dirty<ServerAttributes>(2);
             Btsdk_GetServerAttributes(303, &record);
         }},
        {"Btsdk_GetRemoteServiceAttributes: record not zeroed at offset 103",
         [] {
             auto record = dirty<ServerAttributes>(103);
             Btsdk_GetRemoteServiceAttributes(101, &record);
         }},
        {"Btsdk_EnumRemoteDevice: record not zeroed at offset 0",
         [devices] {
             auto record = dirty<RemoteDeviceProperty>(0);
             Btsdk_EnumRemoteDevice(devices, &record);
         }},
        {"Btsdk_EnumRemoteService: record not zeroed at offset 0",
         [services] {
             auto record = dirty<ServerAttributes>(0);
             Btsdk_EnumRemoteService(services, &record);
         }},
        {"Btsdk_EnumLocalServer: record not zeroed at offset 8",
         [servers] {
             auto record = dirty<ServerAttributes>(8);
             Btsdk_EnumLocalServer(servers, &record);
         }},
        {"Btsdk_EnumConnection: record not zeroed at offset 12",
         [connections] {
             auto record = dirty<ConnectionProperty>(12);
             Btsdk_EnumConnection(connections, &record);
         }},
        {"Btsdk_IsDevicePaired: record not zeroed at offset 3",
         [] {
             uint32_t flag = 0x01000000;
             Btsdk_IsDevicePaired(1, &flag);
         }},
        {"Btsdk_AGAP_IsAudioConnExisted: record not zeroed at offset 0",
         [] {
             uint32_t flag = 1;
             Btsdk_AGAP_IsAudioConnExisted(&flag);
         }},
    };
    expect_reports(rows, take_misuse);
    Btsdk_EndEnumRemoteDevice(devices);
    Btsdk_EndEnumRemoteService(services);
    Btsdk_EndEnumLocalServer(servers);
    Btsdk_EndEnumConnection(connections);
}

TEST_F(Misuse, NewShortcutThatIsNotZeroed) {
    for (const size_t offset : {size_t{0}, size_t{4}, size_t{276}, size_t{277}}) {
        auto record = dirty<ShortcutProperty>(offset);
        Btsdk_CreateShortCutEx(&record);
        EXPECT_EQ(take_misuse().size(), 1u) << offset;
    }
}

TEST_F(Misuse, EnumerationThatIsUnknownOrEndedTwice) {
    const BtHandle walk = Btsdk_StartEnumConnection();
    const std::string name = std::to_string(walk);
    ServerAttributes attributes{};
    EXPECT_EQ(Btsdk_EnumLocalServer(walk, &attributes), 0u);  // of another kind
    EXPECT_NE(Btsdk_EndEnumLocalServer(walk), 0u);
    EXPECT_EQ(Btsdk_EndEnumConnection(walk), 0u);
    EXPECT_NE(Btsdk_EndEnumConnection(walk), 0u);
    ConnectionProperty record{};
    EXPECT_EQ(Btsdk_EnumConnection(walk, &record), 0u);
    EXPECT_NE(Btsdk_EndEnumRemoteService(0), 0u);
    EXPECT_NE(Btsdk_EndEnumRemoteDevice(0), 0u);
    EXPECT_EQ(take_misuse(),
              (Lines{"Btsdk_EnumLocalServer: unknown enumeration " + name,
                     "Btsdk_EndEnumLocalServer: enumeration " + name + " ended twice or never started",
                     "Btsdk_EndEnumConnection: enumeration " + name + " ended twice or never started",
                     "Btsdk_EnumConnection: unknown enumeration " + name,
                     "Btsdk_EndEnumRemoteService: enumeration 0 ended twice or never started",
                     "Btsdk_EndEnumRemoteDevice: enumeration 0 ended twice or never started"}));
}

TEST_F(Misuse, EnumerationThatIsNeverEndedStaysLive) {
    const BtHandle walk = Btsdk_StartEnumConnection();
    EXPECT_EQ(VlSim_LiveCount(VLSIM_ENUMERATIONS), 1u);
    EXPECT_EQ(Btsdk_EndEnumConnection(walk), 0u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_ENUMERATIONS), 0u);
    EXPECT_EQ(VlSim_LiveCount(99), 0u);
}

TEST_F(Misuse, WhatIsGivenBackTwiceOrWasNeverTaken) {
    const std::vector<Row> rows = {
        {"Btsdk_FreeMemory: block freed twice or not from this allocator",
         [] {
             void* const block = Btsdk_MallocMemory(8);
             Btsdk_FreeMemory(block);
             Btsdk_FreeMemory(block);
         }},
        {"Btsdk_FreeMemory: block freed twice or not from this allocator",
         [] {
             int foreign = 0;
             Btsdk_FreeMemory(&foreign);
         }},
        {"Btsdk_RegCloseKey: key closed twice or not opened here",
         [] {
             HKEY key = nullptr;
             Btsdk_RegOpenKey(HKEY_CURRENT_USER, "Software", &key);
             EXPECT_EQ(Btsdk_RegCloseKey(key), 0u);
             EXPECT_EQ(Btsdk_RegCloseKey(key), static_cast<uint32_t>(ERROR_INVALID_HANDLE));
         }},
        {"Btsdk_RegCloseKeyForX64Reg: key closed twice or not opened here",
         [] { Btsdk_RegCloseKeyForX64Reg(nullptr); }},
        {"Btsdk_CloseHandle: file closed twice or not opened here",
         [] { EXPECT_FALSE(Btsdk_CloseHandle(INVALID_HANDLE_VALUE)); }},
    };
    expect_reports(rows, take_misuse);
}

TEST_F(Misuse, RequiredPointerThatIsNull) {
    uint32_t number = 0;
    char text[4] = {};
    const BtHandle walk = Btsdk_StartEnumConnection();
    const std::vector<Row> rows = {
        {"Btsdk_GetShortCutProperty: null record", [] { EXPECT_NE(Btsdk_GetShortCutProperty(nullptr), 0u); }},
        {"Btsdk_SetShortCutProperty: null record", [] { EXPECT_NE(Btsdk_SetShortCutProperty(nullptr), 0u); }},
        {"Btsdk_CreateShortCutEx: null record", [] { EXPECT_NE(Btsdk_CreateShortCutEx(nullptr), 0u); }},
        {"Btsdk_GetShortCutByName: null name", [] { EXPECT_EQ(Btsdk_GetShortCutByName(nullptr), 0u); }},
        {"Btsdk_GetRemoteDeviceHandle: null address",
         [] { EXPECT_EQ(Btsdk_GetRemoteDeviceHandle(nullptr), 0u); }},
        {"Btsdk_GetRemoteDeviceAddress: null address",
         [] { EXPECT_NE(Btsdk_GetRemoteDeviceAddress(1, nullptr), 0u); }},
        {"Btsdk_GetRemoteDeviceClass: null class",
         [] { EXPECT_NE(Btsdk_GetRemoteDeviceClass(1, nullptr), 0u); }},
        {"Btsdk_GetRemoteDeviceParam: null parameter",
         [] { EXPECT_NE(Btsdk_GetRemoteDeviceParam(1, nullptr), 0u); }},
        {"Btsdk_GetRemoteDeviceProperty: null record",
         [] { EXPECT_NE(Btsdk_GetRemoteDeviceProperty(1, nullptr), 0u); }},
        {"Btsdk_GetRemoteDeviceName: null name",
         [&] { EXPECT_NE(Btsdk_GetRemoteDeviceName(1, nullptr, &number), 0u); }},
        {"Btsdk_GetRemoteDeviceName: null length",
         [&] { EXPECT_NE(Btsdk_GetRemoteDeviceName(1, text, nullptr), 0u); }},
        {"Btsdk_IsDevicePaired: null flag", [] { EXPECT_NE(Btsdk_IsDevicePaired(1, nullptr), 0u); }},
        {"Btsdk_GetLocalDeviceClass: null class", [] { EXPECT_NE(Btsdk_GetLocalDeviceClass(nullptr), 0u); }},
        {"Btsdk_AGAP_IsAudioConnExisted: null flag",
         [] { EXPECT_NE(Btsdk_AGAP_IsAudioConnExisted(nullptr), 0u); }},
        {"Btsdk_GetServerStatus: null status", [] { EXPECT_NE(Btsdk_GetServerStatus(301, nullptr), 0u); }},
        {"Btsdk_GetServerAttributes: null record",
         [] { EXPECT_NE(Btsdk_GetServerAttributes(301, nullptr), 0u); }},
        {"Btsdk_GetRemoteServiceAttributes: null record",
         [] { EXPECT_NE(Btsdk_GetRemoteServiceAttributes(101, nullptr), 0u); }},
        {"Btsdk_GetConnectionProperty: null record",
         [] { EXPECT_NE(Btsdk_GetConnectionProperty(401, nullptr), 0u); }},
        {"Btsdk_EnumConnection: null record", [=] { EXPECT_EQ(Btsdk_EnumConnection(walk, nullptr), 0u); }},
        {"Btsdk_PIMParseContactDetails2: null contact",
         [&] { EXPECT_NE(Btsdk_PIMParseContactDetails2(text, nullptr), 0u); }},
        {"Btsdk_RegOpenKey: null key",
         [] { EXPECT_NE(Btsdk_RegOpenKey(HKEY_CURRENT_USER, "Software", nullptr), 0u); }},
        {"Btsdk_RegCreateKey: null sub-key",
         [] {
             HKEY key = nullptr;
             EXPECT_NE(Btsdk_RegCreateKey(HKEY_CURRENT_USER, nullptr, &key), 0u);
         }},
        {"Btsdk_RegQueryBinaryValue: null size",
         [&] { EXPECT_NE(Btsdk_RegQueryBinaryValue(HKEY_CURRENT_USER, "x", text, nullptr), 0u); }},
    };
    expect_reports(rows, take_misuse);
    Btsdk_EndEnumConnection(walk);
}

TEST_F(Misuse, WriteBackThatChangedTheStacksByte) {
    ShortcutProperty record = shortcut_query(201);
    ASSERT_EQ(Btsdk_GetShortCutProperty(&record), 0u);
    record.mask = kShortcutMaskDefault;
    EXPECT_EQ(Btsdk_SetShortCutProperty(&record), 0u);
    EXPECT_EQ(take_misuse(), Lines());
    ++record.reserved277;
    EXPECT_EQ(Btsdk_SetShortCutProperty(&record), 0u);
    EXPECT_EQ(take_misuse(), Lines{"Btsdk_SetShortCutProperty: the stack's byte at offset 277 was changed"});
}

TEST_F(Misuse, ReportIsCutToItsRoom) {
    Btsdk_FreeMemory(this);
    char text[6] = {};
    EXPECT_GT(VlSim_GetMisuse(0, text, sizeof text), 20u);
    EXPECT_STREQ(text, "Btsdk");
    EXPECT_EQ(VlSim_GetMisuse(1, text, sizeof text), 0u);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(take_misuse().size(), 1u);
}

}  // namespace
}  // namespace vlsim_test
