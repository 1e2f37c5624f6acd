// The mobile SDK's results as the suite's error numbers.
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "vlcm/phone_models.h"

#include <limits.h>

#include <map>
#include <random>

namespace {

class MobileError : public support::SuiteTest {};

constexpr uint32_t kGeneral = 0x6001;
const std::map<int32_t, uint32_t> kErrors = {
    {-1, 0x6001},  {-5, 0x6002},  {-7, 0x6003},  {-8, 0x6004},  {-9, 0x6005},  {-10, 0x6006}, {-12, 0x6007},
    {-15, 0x6008}, {-64, 0x6009}, {-71, 0x600A}, {-76, 0x600B}, {-83, 0x600C}, {-94, 0x600D}, {-95, 0x600E},
};

uint32_t expected(int32_t result) {
    const auto row = kErrors.find(result);
    return row != kErrors.end() ? row->second : kGeneral;
}

}  // namespace

TEST_F(MobileError, OfEachKnownResultHasItsNumber) {
    EXPECT_EQ(kErrors.size(), 14U);
    for (const auto& [result, error] : kErrors) EXPECT_EQ(VlCm_MapMobileErrorCode(result), error) << result;
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(MobileError, OfSuccessIsTheGeneralOne) { EXPECT_EQ(VlCm_MapMobileErrorCode(0), kGeneral); }

TEST_F(MobileError, OfAnyOtherResultIsTheGeneralOne) {
    for (int32_t result = -500; result <= 500; ++result) {
        EXPECT_EQ(VlCm_MapMobileErrorCode(result), expected(result)) << result;
    }
    for (const int32_t result : {INT_MIN, INT_MAX, -65536 - 95, 0xFFA1, 0xA1, -96, -94 - 256}) {
        EXPECT_EQ(VlCm_MapMobileErrorCode(result), kGeneral) << result;
    }
    std::mt19937 random(12);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same values at every run
    for (int i = 0; i < 1000; ++i) {
        const auto result = static_cast<int32_t>(random());
        EXPECT_EQ(VlCm_MapMobileErrorCode(result), expected(result)) << result;
    }
}
