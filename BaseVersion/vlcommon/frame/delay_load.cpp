// Binds delay-loaded functions: the DLL comes from the system folder by its full path; when it or
// the function is missing, the call returns the answer chosen in delay_answers.h.
#include "delay_answers.h"
#include "system_library.h"
#include "unique.h"

#include <windows.h>

#include <delayimp.h>
#include <stddef.h>

extern "C" IMAGE_DOS_HEADER __ImageBase;

// dlltool's thunks keep the integer arguments only; float arguments (GDI+) travel in xmm0..3.
asm(R"(
    .text
    .globl __delayLoadHelper2
    .def __delayLoadHelper2; .scl 2; .type 32; .endef
    .seh_proc __delayLoadHelper2
__delayLoadHelper2:
    subq $0x68, %rsp
    .seh_stackalloc 0x68
    .seh_endprologue
    movups %xmm0, 0x20(%rsp)
    movups %xmm1, 0x30(%rsp)
    movups %xmm2, 0x40(%rsp)
    movups %xmm3, 0x50(%rsp)
    call delay_load_bind
    movups 0x20(%rsp), %xmm0
    movups 0x30(%rsp), %xmm1
    movups 0x40(%rsp), %xmm2
    movups 0x50(%rsp), %xmm3
    addq $0x68, %rsp
    ret
    .seh_endproc
)");

// The descriptors of all delay libraries stand in .text$2; a zero one ends them.
asm(R"(
    .section .text$2zz,"xr"
    .globl delay_descriptors_end
delay_descriptors_end:
    .zero 32
    .text
)");

namespace {

template <typename T>
T* at(DWORD rva) {
    return reinterpret_cast<T*>(reinterpret_cast<char*>(&__ImageBase) + rva);
}

HMODULE module_of(const ImgDelayDescr& descriptor) {
    auto slot = at<HMODULE>(descriptor.rvaHmod);
    if (*slot == nullptr) {
        vl::UniqueModule loaded(vl::load_system_library(at<const char>(descriptor.rvaDLLName)));
        // A second thread may have been faster: its reference stays, ours goes. The reference that
        // stays is never given back: a bound function may be called as long as the process lives.
        void* const held = loaded.get();
        if (held && InterlockedExchangePointer(reinterpret_cast<void**>(slot), held) != held) {
            static_cast<void>(loaded.release());
        }
    }
    return *slot;
}

}  // namespace

extern "C" FARPROC delay_load_bind(const ImgDelayDescr* descriptor, FARPROC* slot) {
    const DWORD last_error = GetLastError();
    const auto index = slot - at<FARPROC>(descriptor->rvaIAT);
    const auto& name = at<const IMAGE_THUNK_DATA>(descriptor->rvaINT)[index];
    const char* function =
        at<const char>(static_cast<DWORD>(name.u1.AddressOfData) + offsetof(IMAGE_IMPORT_BY_NAME, Name));

    HMODULE module = module_of(*descriptor);
    FARPROC target = module ? GetProcAddress(module, function) : nullptr;
    if (target == nullptr) {
        return vl::delay_answer_for(at<const char>(descriptor->rvaDLLName), function);  // not cached
    }
    InterlockedExchangePointer(reinterpret_cast<void**>(slot), reinterpret_cast<void*>(target));
    SetLastError(last_error);
    return target;
}
