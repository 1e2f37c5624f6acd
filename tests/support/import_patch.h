// Replaces a function in the import tables (ordinary and delayed) of one loaded DLL while the object
// lives. Delayed imports are found when the PE header lists them.
#pragma once

#include <windows.h>

#include <map>
#include <string>
#include <vector>

namespace support {

// VlCommon.dll when it is loaded, otherwise the test program, which then is made of its objects.
HMODULE library_under_test();

class ImportPatch {
public:
    ImportPatch(HMODULE module, const char* function, void* replacement);
    template <typename R, typename... A>
    ImportPatch(HMODULE module, const char* function, R (*replacement)(A...))
        : ImportPatch(module, function, reinterpret_cast<void*>(replacement)) {}
    ~ImportPatch();
    ImportPatch(const ImportPatch&) = delete;
    ImportPatch& operator=(const ImportPatch&) = delete;

    [[nodiscard]] size_t slots() const { return slots_.size(); }  // 0: the DLL does not import it
    // What was called before. A delayed import that is not bound yet is bound elsewhere: to call its
    // thunk would write over the patch.
    template <typename F>
    [[nodiscard]] F original() const {
        return reinterpret_cast<F>(original_address());
    }

private:
    struct Slot {
        void** address;
        void* restored;   // a thunk of the DLL itself while a delayed import is not bound
        const char* dll;  // null: an ordinary import
    };

    [[nodiscard]] void* original_address() const;
    void patch_names(const IMAGE_THUNK_DATA* name, void** slot, const char* dll, void* replacement);
    void walk_imports(void* replacement);
    void walk_delayed(void* replacement);

    HMODULE module_;
    std::string function_;
    std::vector<Slot> slots_;
};

// Functions that the DLL asks for by GetProcAddress: names with a row get the replacement (null: "not
// there"), all others the real function. One at a time.
class ProcAddressPatch {
public:
    ProcAddressPatch(HMODULE module, std::map<std::string, void*> rows);
    [[nodiscard]] size_t slots() const { return patch_.slots(); }

private:
    ImportPatch patch_;
};

}  // namespace support
