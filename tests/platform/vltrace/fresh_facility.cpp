#include "fresh_facility.h"

#include "support/child_process.h"

namespace vltrace_test {

FreshFacility::FreshFacility(const char* target, const char* modules) {
    static int number = 0;
    path_ = support::bin_folder() + "VlTrace-" + std::to_string(GetCurrentProcessId()) + "-" +
            std::to_string(++number) + ".dll";
    CopyFileA((support::bin_folder() + "VlTrace.dll").c_str(), path_.c_str(), FALSE);
    SetEnvironmentVariableA("VLTRACE", target);
    SetEnvironmentVariableA("VLTRACE_MODULES", modules);
    module_ = LoadLibraryA(path_.c_str());
    SetEnvironmentVariableA("VLTRACE", nullptr);
    SetEnvironmentVariableA("VLTRACE_MODULES", nullptr);
    construct_ = function<ScopeBytes*(ScopeBytes*, unsigned long, char*)>(kConstructor);
    destroy_ = function<void(ScopeBytes*)>(kDestructor);
    write_ = function<void(unsigned long, const char*, ...)>("VlTrace_UserDef");
}

void FreshFacility::unload() {
    if (module_ == nullptr) return;
    FreeLibrary(module_);
    module_ = nullptr;
    DeleteFileA(path_.c_str());
}

}  // namespace vltrace_test
