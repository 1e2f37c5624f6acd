// The dialling thread keeps the library in the process until it ends.
#include "library_copy.h"
#include "process_test.h"

#include <memory>

using namespace process_test;

namespace {

constexpr DWORD kDeadlineMs = 20000;

HANDLE g_waiting = nullptr;  // set by the thread in its first pause
HANDLE g_go_on = nullptr;    // ends the pause
HANDLE g_thread = nullptr;

void WINAPI pause_thread(DWORD /*milliseconds*/) {
    SetEvent(g_waiting);
    WaitForSingleObject(g_go_on, kDeadlineMs);
}
BOOL WINAPI pretend_program(const char*, char*, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*, BOOL, DWORD,
                            void*, const char*, STARTUPINFOA*, PROCESS_INFORMATION*) {
    return TRUE;
}
HANDLE WINAPI keep_thread(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE routine,
                          void* argument, DWORD flags, DWORD* identifier) {
    HANDLE thread = CreateThread(security, stack, routine, argument, flags, identifier);
    DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &g_thread, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    return thread;
}

class LibraryReference : public ProcessTest {
protected:
    LibraryReference() {
        g_waiting = CreateEventA(nullptr, FALSE, FALSE, nullptr);
        g_go_on = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    }
    ~LibraryReference() override {
        for (HANDLE handle : {g_waiting, g_go_on, g_thread}) CloseHandle(handle);
    }
    // Dials through the copy and unloads it while its thread pauses. The patches go before the thread
    // does, as long as there is something to put back.
    void dial_and_unload() {
        const HMODULE module = copy_.module();
        const support::ImportPatch sleep(module, "Sleep", pause_thread);
        const support::ImportPatch program(module, "CreateProcessA", pretend_program);
        const support::ImportPatch thread(module, "CreateThread", keep_thread);
        copy_.entry<decltype(VlCm_DialPhone)>("VlCm_DialPhone")("00:11:22:33:44:55", "110");
        EXPECT_EQ(WaitForSingleObject(g_waiting, kDeadlineMs), WAIT_OBJECT_0);
        copy_.unload();
        EXPECT_TRUE(LibraryCopy::is_loaded());
    }
    LibraryCopy copy_;
};

TEST_F(LibraryReference, OutlivesTheCallersUnloading) {
    dial_and_unload();
    const QueueWindow dialer("Veltrin Dialer");  // ends the thread at its next look
    SetEvent(g_go_on);
    EXPECT_EQ(WaitForSingleObject(g_thread, kDeadlineMs), WAIT_OBJECT_0);
    EXPECT_FALSE(LibraryCopy::is_loaded());
    EXPECT_TRUE(dialer.got(0x584));
}

}  // namespace
