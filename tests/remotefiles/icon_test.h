// The fixture of the icon's tests: an extension of their own in the real registry.
#pragma once

#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "vlcm/remote_files.h"

#include <string>
#include <vector>

struct Icon {
    HRESULT result;
    std::string file;
    int32_t index;

    bool operator==(const Icon& other) const {
        return result == other.result && file == other.file && index == other.index;
    }
};
inline void PrintTo(const Icon& icon, std::ostream* out) {
    *out << std::hex << icon.result << std::dec << " \"" << icon.file << "\" " << icon.index;
}

class IconTest : public support::SuiteTest {
protected:
    static constexpr char kFile[] = "photo.vltest";
    static constexpr char kClass[] = "VlTest.File";
    static constexpr char kClassId[] = "{7B0C1F6E-2A53-4A0D-9C55-3D5A1F0E7C11}";

    static Icon ask(const std::string& name, uint32_t attributes = 0) {
        char file[VLCM_PATH_SIZE];
        memset(file, 'x', sizeof file);
        int32_t index = 12345;
        const HRESULT result = VlCm_GetFTPFileDefaultIcon(name.c_str(), attributes, file, &index);
        const void* end = memchr(file, 0, sizeof file);
        EXPECT_NE(end, nullptr);
        return {result, end != nullptr ? file : "", index};
    }
    static Icon found(const std::string& file, int32_t index) { return {S_OK, file, index}; }
    static Icon not_found() { return {E_FAIL, "shell32.dll", 0}; }

    void set_class(const std::string& name = kClass) {
        registry_.set(HKEY_CLASSES_ROOT, ".vltest", nullptr, name);
    }
    void set_class_icon(const std::string& location) {
        registry_.set(HKEY_CLASSES_ROOT, "VlTest.File\\DefaultIcon", nullptr, location);
    }
    void set_class_id(const std::string& id = kClassId) {
        registry_.set(HKEY_CLASSES_ROOT, "VlTest.File\\CLSID", nullptr, id);
    }
    void set_class_id_icon(const std::string& location) {
        registry_.set(HKEY_LOCAL_MACHINE, class_id_key().c_str(), nullptr, location);
    }
    static std::string class_id_key() {
        return std::string("SOFTWARE\\Classes\\CLSID\\") + kClassId + "\\DefaultIcon";
    }
    support::RegistryScope& registry() { return registry_; }

private:
    support::RegistryScope registry_;
};
