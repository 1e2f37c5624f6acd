// The mobile switch; new text-message records and their end.
#include "vlcm/companions.h"
#include "vlcm/mobile.h"

#include "support/call_patch.h"
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "VlSDK.h"

#include <objbase.h>

#include <string.h>

#include <string>
#include <tuple>
#include <vector>

namespace {

using Lines = std::vector<std::string>;
constexpr size_t kRecordSize = 14092;

class MobileSupport : public support::SuiteTest {};
class TextMessage : public support::SuiteTest {};

}  // namespace

TEST_F(MobileSupport, IsTheStacksAnswerInAll32Bits) {
    support::CallPatch stack("Btsdk_IsMobileActive", Btsdk_IsMobileActive);
    for (const uint32_t answer : {0U, 1U, 2U, 0x100U, 0x80000000U, 0xFFFFFFFFU}) {
        stack.answer([=] { return answer; });
        EXPECT_EQ(VlCm_IsMobileActive(), answer);
    }
    EXPECT_EQ(stack.count(), 6u);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(TextMessage, IsAZeroedRecordOfTheTaskAllocator) {
    support::CallPatch allocating("CoTaskMemAlloc", CoTaskMemAlloc);
    allocating.answer([&](SIZE_T size) {
        void* const block = allocating.real(size);
        return memset(block, 0xAA, size);
    });
    VlSmsRecord* const record = VlCm_CreateMobileSMSInfo();
    ASSERT_NE(record, nullptr);
    ASSERT_EQ(allocating.count(), 1u);
    EXPECT_EQ(std::get<0>(allocating.calls()[0]), kRecordSize);
    const std::string bytes(reinterpret_cast<const char*>(record), kRecordSize);
    EXPECT_EQ(bytes, std::string(kRecordSize, '\0'));
    Vlcm_SHFree(record);
}

TEST_F(TextMessage, OpensItsScope) {
    Vlcm_SHFree(VlCm_CreateMobileSMSInfo());
    EXPECT_EQ(support::trace_log(),
              (Lines{">512 VlCm_CreateMobileSMSInfo", "<512 VlCm_CreateMobileSMSInfo"}));
}

TEST_F(TextMessage, WithoutMemoryIsNullAndSaysSo) {
    support::CallPatch allocating("CoTaskMemAlloc", CoTaskMemAlloc);
    allocating.fail_nth(1, static_cast<void*>(nullptr));
    EXPECT_EQ(VlCm_CreateMobileSMSInfo(), nullptr);
    EXPECT_EQ(support::trace_log(), (Lines{">512 VlCm_CreateMobileSMSInfo",
                                           "=512 error!!! CreateMobileProcInfo: can not alloc memory.\r\n",
                                           "<512 VlCm_CreateMobileSMSInfo"}));
}

namespace {

// What a call with a bad record writes.
const Lines kRefused = {">512 VlCm_DestroyMobileSMSInfo",
                        "=512 error!!! DestroyMobileProcInfo: parameter is invalid.\r\n",
                        "<512 VlCm_DestroyMobileSMSInfo"};

}  // namespace

TEST_F(TextMessage, IsFreedByTheTaskAllocator) {
    VlSmsRecord* const record = VlCm_CreateMobileSMSInfo();
    support::clear_trace_log();
    support::CallPatch readable("IsBadReadPtr", IsBadReadPtr);
    support::CallPatch freed("CoTaskMemFree", CoTaskMemFree);
    VlCm_DestroyMobileSMSInfo(record);
    const std::tuple<const void*, UINT_PTR> asked(record, kRecordSize);
    ASSERT_EQ(readable.count(), 1u);
    EXPECT_EQ(readable.calls()[0], asked);
    ASSERT_EQ(freed.count(), 1u);
    EXPECT_EQ(std::get<0>(freed.calls()[0]), record);
    EXPECT_EQ(support::trace_log(),
              (Lines{">512 VlCm_DestroyMobileSMSInfo", "<512 VlCm_DestroyMobileSMSInfo"}));
}

TEST_F(TextMessage, ThatIsNullIsRefusedWithoutALook) {
    support::CallPatch readable("IsBadReadPtr", IsBadReadPtr);
    support::CallPatch freed("CoTaskMemFree", CoTaskMemFree);
    VlCm_DestroyMobileSMSInfo(nullptr);
    EXPECT_EQ(readable.count() + freed.count(), 0u);
    EXPECT_EQ(support::trace_log(), kRefused);
}

TEST_F(TextMessage, ThatCannotBeReadToItsEndIsLeftAlone) {
    const support::GuardedBuffer short_by_one(kRecordSize - 1);
    void* const kUnreadable[] = {short_by_one.as(), reinterpret_cast<void*>(16),
                                 short_by_one.as() + short_by_one.size()};
    support::CallPatch freed("CoTaskMemFree", CoTaskMemFree);
    for (void* record : kUnreadable) {
        support::clear_trace_log();
        VlCm_DestroyMobileSMSInfo(static_cast<VlSmsRecord*>(record));
        EXPECT_EQ(support::trace_log(), kRefused);
    }
    EXPECT_EQ(freed.count(), 0u);
}

TEST_F(TextMessage, ThatCanBeReadToItsEndIsFreed) {
    const support::GuardedBuffer exact(kRecordSize);
    support::CallPatch freed("CoTaskMemFree", CoTaskMemFree);
    freed.answer([](void*) {});  // it is no task memory
    VlCm_DestroyMobileSMSInfo(exact.as<VlSmsRecord>());
    EXPECT_EQ(freed.count(), 1u);
}
