#include "support/settings_scope.h"

#include <gtest/gtest.h>

using support::read_file;
using support::RegistryScope;
using support::SettingsFile;
using support::SettingsScope;

namespace {

constexpr char kFile[] = "C:\\vlcm support\\sub\\test.ini";
constexpr char kKey[] = "Software\\VlcmSupport\\A\\B";

std::string registry_text(const char* key, const char* name) {
    char text[64] = "";
    DWORD size = sizeof text;
    RegGetValueA(HKEY_CURRENT_USER, key, name, RRF_RT_REG_SZ, nullptr, text, &size);
    return text;
}

DWORD registry_number(const char* key, const char* name) {
    DWORD number = 0, size = sizeof number;
    RegGetValueA(HKEY_CURRENT_USER, key, name, RRF_RT_REG_DWORD, nullptr, &number, &size);
    return number;
}

bool key_exists(const char* key) {
    HKEY open = nullptr;
    const bool there = RegOpenKeyExA(HKEY_CURRENT_USER, key, 0, KEY_READ, &open) == ERROR_SUCCESS;
    if (there) RegCloseKey(open);
    return there;
}

// Each starts without what a run that was ended left behind.
class SettingsScopeTest : public ::testing::Test {
protected:
    SettingsScopeTest() { DeleteFileA(kFile); }
};
class RegistryScopeTest : public ::testing::Test {
protected:
    RegistryScopeTest() { RegDeleteTreeA(HKEY_CURRENT_USER, "Software\\VlcmSupport"); }
};

}  // namespace

TEST_F(SettingsScopeTest, SetsAValueAndTakesANewFileAway) {
    {
        SettingsScope settings;
        settings.set(kFile, "General", "Key", "value");
        EXPECT_EQ(SettingsScope::get(kFile, "general", "KEY"), "value");
        EXPECT_TRUE(read_file(kFile).has_value());
    }
    EXPECT_FALSE(read_file(kFile).has_value());
    EXPECT_EQ(SettingsScope::get(kFile, "General", "Key"), "");
}

TEST_F(SettingsScopeTest, PutsBackTheFileByteForByte) {
    SettingsScope outer;
    const std::string before = "; a comment\n[General]\r\nKey=old\n";
    outer.content(kFile, before);
    {
        SettingsScope settings;
        settings.set(kFile, "General", "Key", "new");
        settings.set(kFile, "General", "Key", "newer");
        EXPECT_EQ(SettingsScope::get(kFile, "General", "Key"), "newer");
    }
    EXPECT_EQ(read_file(kFile), before);
    EXPECT_EQ(SettingsScope::get(kFile, "General", "Key"), "old");
}

TEST_F(SettingsScopeTest, KnowsTheSuitesFiles) {
    EXPECT_EQ(support::settings_path(SettingsFile::kCommon), "C:\\windows\\SysWOW64\\vlcs.ini");
    EXPECT_EQ(support::settings_path(SettingsFile::kRemoteDevices),
              "C:\\windows\\SysWOW64\\REMOTEDEVICE.ini");
    EXPECT_EQ(support::settings_path(SettingsFile::kShortcuts), "C:\\windows\\SysWOW64\\SHORTCUT.ini");
    const std::string personal = support::settings_path(SettingsFile::kPersonal);
    EXPECT_NE(personal.find("\\veltrin\\vlps.ini"), std::string::npos) << personal;
}

TEST_F(SettingsScopeTest, TakesTheSuitesFilesAwayUntilTheEnd) {
    SettingsScope outer;
    outer.common("General", "Key", "old");
    {
        SettingsScope settings;
        settings.clear_all();
        EXPECT_EQ(SettingsScope::get(SettingsFile::kCommon, "General", "Key"), "");
        settings.common("General", "Key", "new");
        EXPECT_EQ(SettingsScope::get(SettingsFile::kCommon, "General", "Key"), "new");
    }
    EXPECT_EQ(SettingsScope::get(SettingsFile::kCommon, "General", "Key"), "old");
}

TEST_F(RegistryScopeTest, MakesKeysAndTakesThemAway) {
    {
        RegistryScope registry;
        registry.set(HKEY_CURRENT_USER, kKey, "Name", "text");
        registry.set(HKEY_CURRENT_USER, kKey, "Number", DWORD{7});
        registry.set(HKEY_CURRENT_USER, kKey, nullptr, "default");
        EXPECT_EQ(registry_text(kKey, "Name"), "text");
        EXPECT_EQ(registry_number(kKey, "Number"), 7u);
        EXPECT_EQ(registry_text(kKey, nullptr), "default");
    }
    EXPECT_FALSE(key_exists("Software\\VlcmSupport"));
}

TEST_F(RegistryScopeTest, PutsBackValuesOfBefore) {
    RegistryScope outer;
    outer.set(HKEY_CURRENT_USER, kKey, "Name", "old");
    {
        RegistryScope registry;
        registry.set(HKEY_CURRENT_USER, kKey, "Name", DWORD{1});
        registry.remove_value(HKEY_CURRENT_USER, kKey, "Name");
        registry.set(HKEY_CURRENT_USER, kKey, "Other", "new");
        EXPECT_EQ(registry_text(kKey, "Name"), "");
    }
    EXPECT_EQ(registry_text(kKey, "Name"), "old");
    EXPECT_EQ(registry_text(kKey, "Other"), "");
}
