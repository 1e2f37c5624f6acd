// Sees each single access to one page of this process: the page is made inaccessible, every access is
// let through by one machine step. For the thread that makes the accesses; one watch at a time.
#pragma once

#include <windows.h>

#include <stddef.h>

#include <functional>
#include <vector>

class PageWatch {
public:
    struct Access {
        size_t offset;  // within the page
        bool write;
    };

    PageWatch();
    ~PageWatch();
    PageWatch(const PageWatch&) = delete;
    PageWatch& operator=(const PageWatch&) = delete;

    void start(void* page);
    void stop();
    // Runs before the nth access (from 1), with the page readable and writable.
    void before_access(std::function<void(size_t nth)> action) { action_ = std::move(action); }

    [[nodiscard]] const std::vector<Access>& accesses() const { return accesses_; }
    // Reads that began within a field.
    [[nodiscard]] size_t reads(size_t offset, size_t bytes) const;

private:
    static LONG CALLBACK on_exception(EXCEPTION_POINTERS* exception);
    LONG on_access(const EXCEPTION_RECORD& record, CONTEXT& context);
    LONG on_step();
    void protect(DWORD access);

    void* handler_;
    unsigned char* page_ = nullptr;
    bool stepping_ = false;
    std::vector<Access> accesses_;
    std::function<void(size_t)> action_;
};
