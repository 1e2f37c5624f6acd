// The name under which a connection made by an application is shown.
#include "VlCommon.h"
#include "scene.h"
#include "support/call_patch.h"
#include "support/guarded_buffer.h"

#include <string.h>

namespace {

using scene::Lines;
using support::CallPatch;
using support::GuardedBuffer;

constexpr uint32_t kPhone = 1;
constexpr uint16_t kSerialPort = 0x1101;
constexpr uint32_t kSerialPortText = 1154, kNamelessText = 1101;

const Lines kScope = {">512 VlCm_CreateAppConnNameBySvcCls", "<512 VlCm_CreateAppConnNameBySvcCls"};

std::string resource(uint32_t id) {
    char text[256] = {};
    const HMODULE library = VlCm_GetLangDepResLib(0);
    LoadStringA(library, id, text, sizeof text);
    FreeLibrary(library);
    return text;
}

class AppConnName : public support::SuiteTest {
protected:
    AppConnName() { call_device("Lena's phone"); }
    static void call_device(const std::string& name) {
        scene::set("\"devices\": [{\"handle\": 1, \"name\": \"" + name + "\"}]");
    }
    static std::string name_of(uint16_t service_class = kSerialPort) {
        char buffer[300];
        memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(VlCm_CreateAppConnName(kPhone, service_class, buffer, sizeof buffer), TRUE);
        for (size_t i = 256; i < sizeof buffer; ++i) EXPECT_EQ(buffer[i], '#') << i;
        return {buffer, strnlen(buffer, 256)};
    }
};

TEST_F(AppConnName, IsTheClassAndTheDeviceInParentheses) {
    EXPECT_EQ(name_of(), resource(kSerialPortText) + "(Lena's phone)");
    EXPECT_EQ(support::sdk_calls(), Lines{"Btsdk_GetRemoteDeviceName(1, out, {256}) = 0"});
    EXPECT_EQ(support::trace_log(), kScope);
    EXPECT_EQ(name_of(0x1105), resource(1180) + "(Lena's phone)");
}

TEST_F(AppConnName, NeedsABuffer) {
    CallPatch load("LoadLibraryA", LoadLibraryA);
    EXPECT_EQ(VlCm_CreateAppConnName(kPhone, kSerialPort, nullptr, 256), FALSE);
    EXPECT_EQ(load.count(), 0U);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_EQ(support::trace_log(), kScope);
}

TEST_F(AppConnName, NeedsTheLibrary) {
    CallPatch load("LoadLibraryA", LoadLibraryA);
    load.fail_from(1, nullptr, ERROR_MOD_NOT_FOUND);
    const GuardedBuffer buffer(256);
    EXPECT_EQ(VlCm_CreateAppConnName(kPhone, kSerialPort, buffer.as<char>(), 256), FALSE);
    EXPECT_TRUE(buffer.untouched_from(0));
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_EQ(support::trace_log(), kScope);
}

TEST_F(AppConnName, OfANamelessDeviceHasTheTextForIt) {
    call_device("");
    const std::string nameless = resource(kNamelessText);
    ASSERT_FALSE(nameless.empty());
    EXPECT_EQ(name_of(), resource(kSerialPortText) + "(" + nameless + ")");
}

TEST_F(AppConnName, OfADeviceWhoseNameCannotBeReadHasTheTextForIt) {
    const std::string expected = resource(kSerialPortText) + "(" + resource(kNamelessText) + ")";
    VlSim_Fail("Btsdk_GetRemoteDeviceName", 1, scene::kStackCode);
    EXPECT_EQ(name_of(), expected);
    CallPatch name("Btsdk_GetRemoteDeviceName", Btsdk_GetRemoteDeviceName);
    name.answer([](BtHandle, char* text, uint32_t*) {
        memcpy(text, "left over", sizeof "left over");
        return scene::kStackCode;
    });
    EXPECT_EQ(name_of(), expected);
}

TEST_F(AppConnName, LoadsAtMost255CharactersOfEachTextAndFreesTheLibrary) {
    call_device("");
    CallPatch load("LoadLibraryA", LoadLibraryA);
    CallPatch text("LoadStringA", LoadStringA);
    CallPatch release("FreeLibrary", FreeLibrary);
    name_of();
    ASSERT_EQ(text.count(), 2U);
    EXPECT_EQ(std::get<1>(text.calls()[0]), kSerialPortText);
    EXPECT_EQ(std::get<3>(text.calls()[0]), 255);
    EXPECT_EQ(std::get<1>(text.calls()[1]), kNamelessText);
    EXPECT_EQ(std::get<3>(text.calls()[1]), 255);
    EXPECT_EQ(load.count(), 1U);
    EXPECT_EQ(release.count(), 1U);
}

TEST_F(AppConnName, GoesOnWithoutAText) {
    CallPatch text("LoadStringA", LoadStringA);
    text.fail_from(1, 0, ERROR_RESOURCE_NAME_NOT_FOUND);
    EXPECT_EQ(name_of(), "(Lena's phone)");
    call_device("");
    EXPECT_EQ(name_of(), "()");
}

TEST_F(AppConnName, OfALongDeviceNameEndsWithTheBuffer) {
    CallPatch text("LoadStringA", LoadStringA);
    text.fail_from(1, 0);
    struct Row {
        const char* label;
        size_t length;
        std::string shown;
    };
    const Row rows[] = {
        {"all fits", 253, "(" + std::string(253, 'd') + ")"},
        {"fills the copy", 254, "(" + std::string(254, 'd') + ")"},
        {"the parenthesis is cut", 255, "(" + std::string(255, 'd')},
        {"the device's last byte is cut", 256, "(" + std::string(255, 'd')},
    };
    support::for_each_row(rows, [](const Row& row) {
        call_device(std::string(row.length, 'd'));
        EXPECT_EQ(name_of(), row.shown);
    });
}

TEST_F(AppConnName, OfADeviceNameWithoutTerminatorLosesItsLastByte) {
    CallPatch name("Btsdk_GetRemoteDeviceName", Btsdk_GetRemoteDeviceName);
    name.answer([](BtHandle, char* text, uint32_t* length) {
        memset(text, 'd', *length);
        return 0U;
    });
    CallPatch text("LoadStringA", LoadStringA);
    text.fail_from(1, 0);
    EXPECT_EQ(name_of(), "(" + std::string(255, 'd'));
}

TEST_F(AppConnName, OfTwoLongTextsStaysInItsWorkBuffer) {
    call_device(std::string(255, 'd'));
    CallPatch text("LoadStringA", LoadStringA);
    text.answer([](HINSTANCE, UINT, LPSTR buffer, int size) {
        memset(buffer, 'c', static_cast<size_t>(size) - 1);
        buffer[size - 1] = 0;
        return size - 1;
    });
    EXPECT_EQ(name_of(), std::string(254, 'c') + "(d");
}

TEST_F(AppConnName, IsCopiedByteByByteUpTo256) {
    const std::string whole = resource(kSerialPortText) + "(Lena's phone)";
    for (const size_t size : {size_t{0}, size_t{1}, size_t{5}, whole.size() - 1, whole.size(),
                              whole.size() + 1, size_t{255}, size_t{256}, size_t{257}, size_t{300}}) {
        const GuardedBuffer buffer(size);
        EXPECT_EQ(VlCm_CreateAppConnName(kPhone, kSerialPort, buffer.as<char>(), static_cast<uint32_t>(size)),
                  TRUE);
        const size_t copied = std::min<size_t>(size, 256);
        std::string expected = whole;
        expected.resize(copied);  // cut without a terminator, or zeros behind it
        EXPECT_EQ(std::string(buffer.as<char>(), copied), expected) << size;
        EXPECT_TRUE(buffer.untouched_from(copied)) << size;
    }
}

TEST_F(AppConnName, TakesASizeAsUnsigned) {
    const GuardedBuffer buffer(256);
    EXPECT_EQ(VlCm_CreateAppConnName(kPhone, kSerialPort, buffer.as<char>(), 0xFFFFFFFF), TRUE);
    EXPECT_STREQ(buffer.as<char>(), (resource(kSerialPortText) + "(Lena's phone)").c_str());
}

}  // namespace
