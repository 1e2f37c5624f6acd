// The runtime's own nothrow operators throw inside and abort when no memory is left even for the
// exception. These answer null, which the library's failure paths rely on.
#include <stdlib.h>

#include <new>

void* operator new(size_t bytes, const std::nothrow_t& /*tag*/) noexcept { return malloc(bytes ? bytes : 1); }
void* operator new[](size_t bytes, const std::nothrow_t& /*tag*/) noexcept {
    return malloc(bytes ? bytes : 1);
}
void operator delete(void* block) noexcept { free(block); }
void operator delete[](void* block) noexcept { free(block); }
void operator delete(void* block, size_t /*bytes*/) noexcept { free(block); }
void operator delete[](void* block, size_t /*bytes*/) noexcept { free(block); }
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept { free(block); }
void operator delete[](void* block, const std::nothrow_t& /*tag*/) noexcept { free(block); }
