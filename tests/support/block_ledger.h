// What one DLL takes and does not give back: memory of each allocator, mapped views, loaded modules,
// seen through its own imports, so that the noise of other modules does not count. It also makes
// allocations fail. One at a time.
#pragma once

#include "support/import_patch.h"
#include "support/leak_kind.h"

#include <memory>
#include <string>
#include <vector>

namespace support {

class BlockLedger {
public:
    // module: null watches nothing.
    explicit BlockLedger(HMODULE module);
    ~BlockLedger();
    BlockLedger(const BlockLedger&) = delete;
    BlockLedger& operator=(const BlockLedger&) = delete;

    [[nodiscard]] size_t live(LeakKind kind) const;
    [[nodiscard]] size_t live_blocks() const { return live(LeakKind::kHeapBlock); }
    // Frees of a heap block that was not live: freed twice, or never taken.
    [[nodiscard]] size_t wrong_frees() const;
    // One line for each live thing of a kind, in the order in which they were taken.
    [[nodiscard]] std::vector<std::string> describe(LeakKind kind) const;
    // Gives live things of a kind back, so that later tests are not disturbed.
    void release_all(LeakKind kind);

    // Allocations asked for so far, of all kinds of memory, and which of them fail: counted from the
    // call on. fail_nth(0) lets all succeed again.
    [[nodiscard]] size_t allocations() const;
    void fail_every(size_t n);
    void fail_nth(size_t n);
    void fail_from(size_t n);

private:
    std::vector<std::unique_ptr<ImportPatch>> patches_;
};

}  // namespace support
