#include "memory.h"

#include "VlSDK.h"
#include "live.h"
#include "misuse.h"
#include "operation.h"

#include <cstdlib>
#include <cstring>

namespace vlsim {
namespace {

// What fresh blocks are filled with: a reader that trusts them to be zero is wrong every time.
constexpr int kFresh = 0xCD;

Ledger<void*, uint32_t> blocks;

void* allocate(uint32_t size) {
    void* const block = std::malloc(size != 0 ? size : 1);
    if (!block) return nullptr;
    std::memset(block, kFresh, size);
    blocks.add(block, size);
    return block;
}

void release(void* block) {
    if (!block) return;
    if (blocks.remove(block)) {
        std::free(block);
    } else {
        report_misuse("Btsdk_FreeMemory", "block freed twice or not from this allocator");
    }
}

}  // namespace

void* new_block(const std::vector<uint8_t>& content) {
    if (content.empty()) return nullptr;
    void* const block = allocate(static_cast<uint32_t>(content.size()));
    if (block) std::memcpy(block, content.data(), content.size());
    return block;
}

uint32_t live_blocks() { return blocks.count(); }

}  // namespace vlsim

using vlsim::call;

void* Btsdk_MallocMemory(uint32_t size) { return call<"Btsdk_MallocMemory">(vlsim::allocate, size); }

void Btsdk_FreeMemory(void* block) { call<"Btsdk_FreeMemory">(vlsim::release, block); }
