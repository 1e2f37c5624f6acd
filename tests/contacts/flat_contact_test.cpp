// Flat contacts of a phone's own memory.
#include "contact_use.h"

#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

namespace {

constexpr size_t kSize = 1176;

class FlatContact : public support::SuiteTest {
protected:
    FlatContact() {
        for (size_t i = 0; i < kSize; ++i) source_.as<char>()[i] = static_cast<char>(i % 251 + 1);
    }
    [[nodiscard]] std::string bytes(const support::GuardedBuffer& buffer) const {
        return {buffer.as<char>(), kSize};
    }
    support::GuardedBuffer source_{kSize};
    support::GuardedBuffer destination_{kSize};
};

}  // namespace

TEST_F(FlatContact, IsCopiedWholeAndNotAByteMore) {
    VlCm_CopyPBAPContactItemMbToPBAP(destination_.as<VlFlatContact>(), source_.as<VlFlatContact>());
    EXPECT_EQ(bytes(destination_), bytes(source_));
    EXPECT_TRUE(destination_.untouched_from(kSize));
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(FlatContact, WithANullRecordTouchesNothing) {
    VlCm_CopyPBAPContactItemMbToPBAP(destination_.as<VlFlatContact>(), nullptr);
    VlCm_CopyPBAPContactItemMbToPBAP(nullptr, source_.as<VlFlatContact>());
    VlCm_CopyPBAPContactItemMbToPBAP(nullptr, nullptr);
    EXPECT_TRUE(destination_.untouched_from(0));
}
