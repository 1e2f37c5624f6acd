// Resources that callers in this process hold and have to give back.
#pragma once

#include "../locks.h"
#include "VlSim.h"

#include <cstdint>
#include <unordered_map>

namespace vlsim {

// A reset starts a new epoch: what was held before no longer counts, and may still be given back.
[[nodiscard]] uint32_t current_epoch();
void start_epoch();

template <typename Key, typename Value>
class Ledger {
public:
    void add(Key key, Value value) {
        const locks::Exclusive held(lock_);
        entries_.insert_or_assign(key, Entry{current_epoch(), std::move(value)});
    }

    // False when there is no such resource: given back twice, or never taken here.
    [[nodiscard]] bool remove(Key key) {
        const locks::Exclusive held(lock_);
        return entries_.erase(key) == 1;
    }

    // Uses a resource under the lock. @return false: no such resource
    template <typename Use>
    [[nodiscard]] bool use(Key key, Use use_value) {
        const locks::Exclusive held(lock_);
        const auto found = entries_.find(key);
        if (found == entries_.end()) return false;
        use_value(found->second.value);
        return true;
    }

    [[nodiscard]] uint32_t count() {
        const locks::Shared held(lock_);
        uint32_t live = 0;
        for (const auto& each : entries_) live += each.second.epoch == current_epoch();
        return live;
    }

private:
    struct Entry {
        uint32_t epoch;
        Value value;
    };
    SRWLOCK lock_ = SRWLOCK_INIT;
    std::unordered_map<Key, Entry> entries_;
};

[[nodiscard]] uint32_t live_enumerations();
[[nodiscard]] uint32_t live_blocks();
[[nodiscard]] uint32_t live_keys();
[[nodiscard]] uint32_t live_files();

}  // namespace vlsim
