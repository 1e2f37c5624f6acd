// A buffer of exactly `bytes` bytes that ends at a no-access page and is filled with a pattern:
// one byte too far raises an access violation, and the untouched rest can be told.
#pragma once

#include <windows.h>

#include <stddef.h>
#include <string.h>

namespace support {

class GuardedBuffer {
public:
    static constexpr unsigned char kFill = 0xCD;

    explicit GuardedBuffer(size_t bytes) : bytes_(bytes) {
        const size_t room = (bytes + kPage - 1) / kPage * kPage;
        base_ = static_cast<unsigned char*>(
            VirtualAlloc(nullptr, room + kPage, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
        DWORD old = 0;
        VirtualProtect(base_ + room, kPage, PAGE_NOACCESS, &old);
        data_ = base_ + room - bytes;
        memset(base_, kFill, room);
    }
    ~GuardedBuffer() { VirtualFree(base_, 0, MEM_RELEASE); }
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;

    template <typename T = char>
    [[nodiscard]] T* as() const {
        return reinterpret_cast<T*>(data_);
    }
    [[nodiscard]] size_t size() const { return bytes_; }

    // True when nothing was written from `offset` to the end, nor just before the buffer.
    [[nodiscard]] bool untouched_from(size_t offset) const {
        for (const unsigned char* p = data_ + offset; p != data_ + bytes_; ++p) {
            if (*p != kFill) return false;
        }
        for (const unsigned char* p = base_; p != data_; ++p) {
            if (*p != kFill) return false;
        }
        return true;
    }

private:
    static constexpr size_t kPage = 4096;
    size_t bytes_;
    unsigned char* base_;
    unsigned char* data_;
};

}  // namespace support
