// A copy of VlCommon.dll: freshly loaded, nothing bound yet, and unloaded for good at the end, which
// the test program's own library never is.
#pragma once

#include <windows.h>

#include <string>

class LibraryCopy {
public:
    LibraryCopy() { load(); }
    ~LibraryCopy() {
        unload();
        DeleteFileA(path().c_str());
    }
    LibraryCopy(const LibraryCopy&) = delete;
    LibraryCopy& operator=(const LibraryCopy&) = delete;

    void load() {
        if (module_ != nullptr) return;
        CopyFileA("VlCommon.dll", path().c_str(), FALSE);
        module_ = LoadLibraryA(path().c_str());
    }
    void unload() {
        if (module_ != nullptr) FreeLibrary(module_);
        module_ = nullptr;
    }
    [[nodiscard]] HMODULE module() const { return module_; }

    // One of its exports, typed by the library's own declaration.
    template <typename Function>
    [[nodiscard]] Function* get(const char* name, Function* /*type*/) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }

private:
    static std::string path() {
        char folder[MAX_PATH];
        GetTempPathA(MAX_PATH, folder);
        return std::string(folder) + "VlCommonCopy" + std::to_string(GetCurrentProcessId()) + ".dll";
    }
    HMODULE module_ = nullptr;
};
