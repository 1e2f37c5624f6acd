// One of the mobile SDK's two lists as a test sets it, byte by byte. It watches how it is walked.
#pragma once

#include "support/call_patch.h"
#include "vlcm/phone_models.h"

#include "VlMobileSDK.h"

#include <gtest/gtest.h>

#include <string.h>

#include <string>
#include <vector>

template <typename Entry>
class FakeList {
public:
    FakeList();

    std::vector<Entry> entries;
    bool can_start = true;
    uint32_t more = 1;  // what a fetch answers that gave an entry

    [[nodiscard]] size_t starts() const { return start_.count(); }
    [[nodiscard]] size_t fetches() const { return next_.count(); }
    [[nodiscard]] size_t ends() const { return end_.count(); }

private:
    // A pointer: its upper half counts.
    void* const walk_ = reinterpret_cast<void*>(0x123456789ABC);

    void* start(uint32_t flags) {
        EXPECT_EQ(flags, 0U);
        at_ = 0;
        return can_start ? walk_ : nullptr;
    }
    uint32_t next(void* walk, void* entry) {
        EXPECT_EQ(walk, walk_);
        EXPECT_EQ(std::string(static_cast<const char*>(entry), sizeof(Entry)),
                  std::string(sizeof(Entry), '\0'))
            << "the entry is zeroed before each fetch";
        if (at_ == entries.size()) return 0;
        memcpy(entry, &entries[at_++], sizeof(Entry));
        return more;
    }
    uint32_t end(void* walk) {
        EXPECT_EQ(walk, walk_);
        return 0;
    }

    size_t at_ = 0;
    support::CallPatch<void*(uint32_t)> start_;
    support::CallPatch<uint32_t(void*, void*)> next_;
    support::CallPatch<uint32_t(void*)> end_;
};

template <>
inline FakeList<SymbianModelEntry>::FakeList()
    : start_("MB_StartEnumSymbianModels", MB_StartEnumSymbianModels),
      next_("MB_EnumSymbianModels", MB_EnumSymbianModels),
      end_("MB_EndEnumSymbianModels", MB_EndEnumSymbianModels) {
    start_.answer([this](uint32_t flags) { return start(flags); });
    next_.answer([this](void* walk, void* entry) { return next(walk, entry); });
    end_.answer([this](void* walk) { return end(walk); });
}

template <>
inline FakeList<S40ModelEntry>::FakeList()
    : start_("MB_StartEnumModels_S40", MB_StartEnumModels_S40),
      next_("MB_EnumModels_S40", MB_EnumModels_S40),
      end_("MB_EndEnumModels_S40", MB_EndEnumModels_S40) {
    start_.answer([this](uint32_t flags) { return start(flags); });
    next_.answer([this](void* walk, void* entry) { return next(walk, entry); });
    end_.answer([this](void* walk) { return end(walk); });
}
