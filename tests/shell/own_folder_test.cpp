// Devices that are shell folders of their own: the cache of folder classes, and the list handed over.
#include "shell_scene.h"

#include <objbase.h>

using namespace shell_test;

namespace {

constexpr char kCache[] = "Software\\VLShellFolderCache";
constexpr char kClassName[] = "{8E3F1A02-9B4C-4D5E-8F60-718293A4B5C6}";
constexpr char kOtherClassName[] = "{11111111-2222-3333-4444-555555555555}";
const Bytes kClass = {0x02, 0x1A, 0x3F, 0x8E, 0x4C, 0x9B, 0x5E, 0x4D,
                      0x8F, 0x60, 0x71, 0x82, 0x93, 0xA4, 0xB5, 0xC6};
const Bytes kOtherClass = {0x11, 0x11, 0x11, 0x11, 0x22, 0x22, 0x33, 0x33,
                           0x44, 0x44, 0x55, 0x55, 0x55, 0x55, 0x55, 0x55};
const Bytes kNoClass(16, 0);
const Bytes kMyComputerItem = {20,   0,    0x1F, 0x50, 0xE0, 0x4F, 0xD0, 0x20, 0xEA, 0x3A,
                               0x69, 0x10, 0xA2, 0xD8, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D};
const Item kOwnFilesItem{0xC0000016, kPhoneClass, 0x1106, kPhoneAddress, "OBEX File Transfer"};
const Lines kBrowseScopes = {"512 VlCm_BrowseFolder", "512 VlCm_GetInstallDir"};

Bytes folder_item(const Bytes& id) {
    Bytes item = {20, 0, 0x2E, 0x80};
    item.insert(item.end(), id.begin(), id.end());
    return item;
}

bool cache_exists() {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kCache, 0, KEY_READ | KEY_WOW64_64KEY, &key) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

class OwnFolder : public ShellTest {
protected:
    // The first text that is no identifier makes the system keep a key open: it is no leak.
    static void SetUpTestSuite() {
        CLSID id;
        EXPECT_NE(CLSIDFromString(L"no class", &id), S_OK);
    }

    OwnFolder() { registry_.make_key(HKEY_LOCAL_MACHINE, kCache); }

    void cache(const char* name, const Bytes& data, DWORD type = REG_BINARY) {
        registry_.set(HKEY_LOCAL_MACHINE, kCache, name, type, data);
    }
    // The class in the list that is handed over.
    Bytes class_found() {
        handed.clear();
        VlCm_BrowseFTPSvcFolderOfEx(kPhone);
        if (handed.size() != 1) return {};
        EXPECT_EQ(item_at(handed[0].list, 0), kMyComputerItem);
        EXPECT_EQ(item_at(handed[0].list, 2), bytes_of(kOwnFilesItem));
        const Bytes folder = item_at(handed[0].list, 1);
        EXPECT_EQ(folder, folder_item({folder.begin() + 4, folder.end()}));
        return {folder.begin() + 4, folder.end()};
    }

private:
    support::RegistryScope registry_;
};

// Values that the stack tells instead of the registry's.
struct ToldValue {
    uint32_t result;
    const char* name;
    Bytes data;
};
using EnumValue = uint32_t(HKEY, uint32_t, char*, uint32_t*, uint32_t*, void*, uint32_t*);

class ToldCache {
public:
    explicit ToldCache(std::vector<ToldValue> values) : values_(std::move(values)) {
        patch_.answer([this](HKEY, uint32_t index, char* name, uint32_t* name_length, uint32_t*, void* data,
                             uint32_t* length) {
            EXPECT_EQ(index, asked++);
            EXPECT_EQ(*name_length, 260U);
            EXPECT_EQ(*length, 6U);
            EXPECT_EQ(Bytes(static_cast<uint8_t*>(data), static_cast<uint8_t*>(data) + 6), Bytes(6, 0));
            if (index >= values_.size()) return uint32_t{ERROR_NO_MORE_ITEMS};
            const ToldValue& value = values_[index];
            *length = static_cast<uint32_t>(value.data.size());
            memcpy(data, value.data.data(), value.data.size() < 6 ? value.data.size() : 6);
            strcpy(name, value.name);
            *name_length = static_cast<uint32_t>(strlen(value.name));
            return value.result;
        });
    }
    uint32_t asked = 0;

private:
    std::vector<ToldValue> values_;
    support::CallPatch<EnumValue> patch_{"Btsdk_RegEnumValueForX64Reg", Btsdk_RegEnumValueForX64Reg};
};

}  // namespace

TEST_F(OwnFolder, HandsOverMyComputerTheFolderAndTheService) {
    cache(kClassName, kPhoneAddress);
    VlCm_BrowseFTPSvcFolderOfEx(kPhone);
    const Bytes expected = list_of({kMyComputerItem, folder_item(kClass), bytes_of(kOwnFilesItem)});
    EXPECT_EQ(expected.size(), 20U + 20U + 114U + 2U);
    EXPECT_EQ(handed, (std::vector<HandedOver>{{1, static_cast<uint32_t>(expected.size()), expected}}));
    EXPECT_EQ(support::trace_scopes(), kBrowseScopes);
}

TEST_F(OwnFolder, AsksTheStackInOrder) {
    VlCm_BrowseFTPSvcFolderOfEx(kPhone);
    const Lines expected = {"Btsdk_GetRemoteDeviceAddress", "Btsdk_RegCreateKeyForX64Reg",
                            "Btsdk_RegEnumValueForX64Reg",  "Btsdk_RegCloseKeyForX64Reg",
                            "Btsdk_GetRemoteDeviceHandle",  "Btsdk_GetShortCutByDeviceHandle",
                            "Btsdk_GetShortCutProperty",    "Btsdk_GetPrivateProfileString"};
    EXPECT_EQ(support::sdk_operations(), expected);
}

TEST_F(OwnFolder, OfADeviceThatIsNotInTheCacheHasNoClass) {
    EXPECT_EQ(class_found(), kNoClass);
    cache(kOtherClassName, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(class_found(), kNoClass);
}

TEST_F(OwnFolder, ValuesWhoseDataIsNotExactlySixBytesAreSkipped) {
    Bytes five(kPhoneAddress.begin(), kPhoneAddress.end() - 1);
    Bytes seven = kPhoneAddress;
    seven.push_back(0);
    cache("{00000000-0000-0000-0000-000000000005}", five);
    cache("{00000000-0000-0000-0000-000000000006}", {});
    cache("{00000000-0000-0000-0000-000000000007}", seven);
    EXPECT_EQ(class_found(), kNoClass);
    cache(kClassName, kPhoneAddress);
    EXPECT_EQ(class_found(), kClass);
}

TEST_F(OwnFolder, ValueMayBeOfAnyType) {
    cache(kClassName, kPhoneAddress, REG_NONE);
    EXPECT_EQ(class_found(), kClass);
}

TEST_F(OwnFolder, AddressesAreComparedWhole) {
    for (size_t i = 0; i < 6; ++i) {
        Bytes other = kPhoneAddress;
        other[i] ^= 1;
        cache(kOtherClassName, other);
        EXPECT_EQ(class_found(), kNoClass) << i;
    }
}

TEST_F(OwnFolder, FirstValueOfTheAddressWins) {
    ToldCache told({{0, kOtherClassName, {1, 2, 3, 4, 5, 6}},
                    {0, kClassName, kPhoneAddress},
                    {0, kOtherClassName, kPhoneAddress}});
    EXPECT_EQ(class_found(), kClass);
    EXPECT_EQ(told.asked, 2U);
}

TEST_F(OwnFolder, EachLookHasFreshBuffersAndTheNextIndex) {
    // The name of the first is longer than the second's, the data of the first is the device's.
    Bytes seven = kPhoneAddress;
    seven.push_back(0);
    Bytes five(kPhoneAddress.begin(), kPhoneAddress.end() - 1);
    ToldCache told(
        {{0, "{8E3F1A02-9B4C-4D5E-8F60-718293A4B5C6} and more", seven}, {0, "{x}", five}, {0, "", {}}});
    EXPECT_EQ(class_found(), kNoClass);
    EXPECT_EQ(told.asked, 4U);
}

TEST_F(OwnFolder, AValueThatDoesNotFitIsSkippedWhateverWasWritten) {
    ToldCache told({{ERROR_MORE_DATA, kOtherClassName, kPhoneAddress}, {0, kClassName, kPhoneAddress}});
    EXPECT_EQ(class_found(), kClass);
    EXPECT_EQ(told.asked, 2U);
}

TEST_F(OwnFolder, AValueWithANameThatIsTooLongIsSkipped) {
    cache(std::string(300, 'a').c_str(), kPhoneAddress);
    EXPECT_EQ(class_found(), kNoClass);
    cache(kClassName, kPhoneAddress);
    EXPECT_EQ(class_found(), kClass);
}

TEST_F(OwnFolder, AnyOtherFailureEndsTheSearch) {
    for (const uint32_t result :
         {uint32_t{ERROR_NO_MORE_ITEMS}, uint32_t{ERROR_ACCESS_DENIED}, 1U, 0x0555U}) {
        ToldCache told({{result, kOtherClassName, kPhoneAddress}, {0, kClassName, kPhoneAddress}});
        EXPECT_EQ(class_found(), kNoClass) << result;
        EXPECT_EQ(told.asked, 1U);
    }
}

TEST_F(OwnFolder, ANameThatIsNoClassIdentifierEndsTheSearchWithNone) {
    for (const char* name : {"", "no class", "{8E3F1A02-9B4C-4D5E-8F60-718293A4B5C6", "{8E3F1A02}"}) {
        ToldCache told({{0, name, kPhoneAddress}, {0, kClassName, kPhoneAddress}});
        EXPECT_EQ(class_found(), kNoClass) << name;
        EXPECT_EQ(told.asked, 1U);
    }
}

TEST_F(OwnFolder, AClassThatIsHalfParsedWhenParsingFailsIsNone) {
    cache(kClassName, kPhoneAddress);
    support::CallPatch parse("CLSIDFromString", CLSIDFromString);
    parse.answer([](LPCOLESTR text, LPCLSID id) {
        EXPECT_EQ(std::wstring(text), L"{8E3F1A02-9B4C-4D5E-8F60-718293A4B5C6}");
        memset(id, 0xEE, sizeof *id);
        return HRESULT{CO_E_CLASSSTRING};
    });
    EXPECT_EQ(class_found(), kNoClass);
    EXPECT_EQ(parse.count(), 1U);
}

TEST_F(OwnFolder, CacheIsMadeWhenItIsMissing) {
    ASSERT_EQ(RegDeleteKeyA(HKEY_LOCAL_MACHINE, kCache), ERROR_SUCCESS);
    ASSERT_FALSE(cache_exists());
    EXPECT_EQ(class_found(), kNoClass);
    EXPECT_TRUE(cache_exists());
}

TEST_F(OwnFolder, OfNoDeviceIsNotLookedFor) {
    VlCm_BrowseFTPSvcFolderOfEx(0);
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(OwnFolder, OfADeviceWithoutFileTransferOpensNothing) {
    VlCm_BrowseFTPSvcFolderOfEx(6);
    EXPECT_EQ(support::sdk_operations().back(), "Btsdk_GetShortCutByDeviceHandle");
    EXPECT_TRUE(starts.empty());
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(OwnFolder, OfADeviceThatTheStackDoesNotKnowOpensNothing) {
    VlCm_BrowseFTPSvcFolderOfEx(4711);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetRemoteDeviceAddress"});
    EXPECT_TRUE(starts.empty());
}
