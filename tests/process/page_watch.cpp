#include "page_watch.h"

#include <algorithm>

namespace {

constexpr size_t kPage = 4096;
constexpr DWORD kTrapFlag = 0x100;

PageWatch* g_watch = nullptr;  // of the one that lives

}  // namespace

PageWatch::PageWatch() : handler_(AddVectoredExceptionHandler(1, on_exception)) { g_watch = this; }

PageWatch::~PageWatch() {
    stop();
    RemoveVectoredExceptionHandler(handler_);
    g_watch = nullptr;
}

void PageWatch::start(void* page) {
    page_ = static_cast<unsigned char*>(page);
    protect(PAGE_NOACCESS);
}

void PageWatch::stop() {
    if (page_ != nullptr) protect(PAGE_READWRITE);
    page_ = nullptr;
}

size_t PageWatch::reads(size_t offset, size_t bytes) const {
    return static_cast<size_t>(std::count_if(accesses_.begin(), accesses_.end(), [&](const Access& access) {
        return !access.write && access.offset >= offset && access.offset < offset + bytes;
    }));
}

LONG CALLBACK PageWatch::on_exception(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    if (record.ExceptionCode == EXCEPTION_ACCESS_VIOLATION) {
        return g_watch->on_access(record, *exception->ContextRecord);
    }
    if (record.ExceptionCode == EXCEPTION_SINGLE_STEP) return g_watch->on_step();
    return EXCEPTION_CONTINUE_SEARCH;
}

LONG PageWatch::on_access(const EXCEPTION_RECORD& record, CONTEXT& context) {
    const size_t offset = record.ExceptionInformation[1] - reinterpret_cast<ULONG_PTR>(page_);
    if (page_ == nullptr || offset >= kPage) return EXCEPTION_CONTINUE_SEARCH;
    protect(PAGE_READWRITE);
    accesses_.push_back({offset, record.ExceptionInformation[0] != 0});
    if (action_) action_(accesses_.size());
    stepping_ = true;
    context.EFlags |= kTrapFlag;
    return EXCEPTION_CONTINUE_EXECUTION;
}

LONG PageWatch::on_step() {
    if (!stepping_) return EXCEPTION_CONTINUE_SEARCH;
    stepping_ = false;
    if (page_ != nullptr) protect(PAGE_NOACCESS);
    return EXCEPTION_CONTINUE_EXECUTION;
}

void PageWatch::protect(DWORD access) {
    DWORD old = 0;
    VirtualProtect(page_, kPage, access, &old);
}
