#include "guard.h"

#include "bounded_text.h"

#include <windows.h>

namespace {

struct Guard {
    const char* function;
    bool caught;
};

}  // namespace

extern "C" char vl_guard_return_point[];
extern "C" uint32_t vl_guard_call(vl::GuardedBody body, void* context, Guard* guard);

// One form for every compiler: a frame that names its own handler. The guard stands at 0x28.
asm(R"(
    .text
    .globl vl_guard_call
    .def vl_guard_call; .scl 2; .type 32; .endef
    .seh_proc vl_guard_call
vl_guard_call:
    subq $0x38, %rsp
    .seh_stackalloc 0x38
    .seh_handler vl_guard_handler, @except
    .seh_endprologue
    movq %r8, 0x28(%rsp)
    movq %rcx, %rax
    movq %rdx, %rcx
    callq *%rax
    nop
    .globl vl_guard_return_point
vl_guard_return_point:
    addq $0x38, %rsp
    ret
    .seh_endproc
)");

// Called by the system for every exception that passes the frame above.
extern "C" EXCEPTION_DISPOSITION vl_guard_handler(EXCEPTION_RECORD* record, void* frame, CONTEXT* context,
                                                  DISPATCHER_CONTEXT* dispatcher) {
    constexpr DWORD kUnwinding = 0x2 | 0x4;
    if (record->ExceptionFlags & kUnwinding) return ExceptionContinueSearch;

    auto guard = *reinterpret_cast<Guard**>(static_cast<char*>(frame) + 0x28);
    if (vl::report_caught_exception(record->ExceptionCode, guard->function) != 1) {
        return ExceptionContinueSearch;
    }
    guard->caught = true;
    // Does not return: execution goes on at the return point with 0 as the result.
    RtlUnwindEx(frame, vl_guard_return_point, record, nullptr, context, dispatcher->HistoryTable);
    return ExceptionContinueSearch;
}

namespace vl {

int report_caught_exception(unsigned int code, const char* function) {
    char text[200] = {};
    format_bounded(text, sizeof text,
                   "VLTRACE_MODULE_BCOMMON: Catch exception:0x%08x in function %s processID=%d\r\n", code,
                   function ? function : "UnKnown", static_cast<int>(GetCurrentProcessId()));
    OutputDebugStringA(text);
    return 1;
}

uint32_t run_guarded(GuardedBody body, void* context, const char* function, const char* handler_line) {
    Guard guard{function, false};
    const uint32_t result = vl_guard_call(body, context, &guard);
    if (!guard.caught) return result;
    OutputDebugStringA(handler_line);
    return 0;
}

}  // namespace vl
