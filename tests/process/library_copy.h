// A second copy of the library in this process, with nothing bound yet, which can be unloaded.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

namespace process_test {

class LibraryCopy {
public:
    LibraryCopy() {
        EXPECT_TRUE(CopyFileA("VlCommon.dll", kFile, FALSE));
        module_ = LoadLibraryA(kFile);
        EXPECT_NE(module_, nullptr);
    }
    ~LibraryCopy() {
        unload();
        DeleteFileA(kFile);
    }
    LibraryCopy(const LibraryCopy&) = delete;
    LibraryCopy& operator=(const LibraryCopy&) = delete;

    [[nodiscard]] HMODULE module() const { return module_; }
    [[nodiscard]] static bool is_loaded() { return GetModuleHandleA(kFile) != nullptr; }
    void unload() {
        if (module_ != nullptr) FreeLibrary(module_);
        module_ = nullptr;
    }
    // The copy's own export of that name.
    template <typename Function>
    Function* entry(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

private:
    static constexpr char kFile[] = "VlCommonCopy.dll";
    HMODULE module_ = nullptr;
};

}  // namespace process_test
