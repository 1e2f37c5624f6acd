// Requests to the tray agent to use or end a phone's connection.
#include "support/call_patch.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/test_window.h"
#include "support/trace_log.h"
#include "vlcm/mobile.h"

#include "VlSDK.h"

#include <tuple>

namespace {

using Lines = std::vector<std::string>;

struct Request {
    const char* label;
    BOOL (*ask)(uint32_t);
    uint32_t message;
};
const Request kRequests[] = {
    {"VlCm_UseMobileConnection", VlCm_UseMobileConnection, 0x60350206},
    {"VlCm_DisconnectMobilePhone", VlCm_DisconnectMobilePhone, 0x60360206},
};

class PhoneConnection : public support::SuiteTest {
protected:
    PhoneConnection() {
        relay.answer([this](uint32_t, uint32_t) { return result; });
    }
    uint32_t result = 0;
    support::TestWindow agent{{.title = "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}"}};
    support::CallPatch<uint32_t(uint32_t, uint32_t)> relay{"Btsdk_PostMessageToCtrlCenter",
                                                           Btsdk_PostMessageToCtrlCenter};
};

}  // namespace

TEST_F(PhoneConnection, IsRelayedToTheAgentWithItsHandle) {
    support::for_each_row(kRequests, [&](const Request& request) {
        for (const uint32_t connection : {1U, 401U, 0x80000000U, 0xFFFFFFFFU}) {
            EXPECT_EQ(request.ask(connection), 1);
            const std::tuple<uint32_t, uint32_t> expected(request.message, connection);
            EXPECT_EQ(relay.calls().back(), expected);
        }
    });
    EXPECT_EQ(relay.count(), 8U);
}

TEST_F(PhoneConnection, OfHandleZeroIsRefusedAndNotRelayed) {
    support::for_each_row(kRequests, [&](const Request& request) {
        support::clear_trace_log();
        EXPECT_EQ(request.ask(0), 0);
        EXPECT_EQ(support::trace_log(),
                  (Lines{std::string(">512 ") + request.label, std::string("<512 ") + request.label}));
    });
    EXPECT_EQ(relay.count(), 0U);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(PhoneConnection, OpensItsScopeAndInsideThatOfTheRelay) {
    support::for_each_row(kRequests, [&](const Request& request) {
        support::clear_trace_log();
        EXPECT_EQ(request.ask(7), 1);
        const Lines scopes = support::trace_scopes();
        ASSERT_GE(scopes.size(), 2U);
        EXPECT_EQ(scopes[0], std::string("512 ") + request.label);
        EXPECT_EQ(scopes[1], "512 VlCm_PostMsg2Vltray");
        EXPECT_EQ(support::trace_log().back(), std::string("<512 ") + request.label);
    });
}

TEST_F(PhoneConnection, CountsAsAskedForWhateverTheRelayAnswers) {
    result = 5;
    support::for_each_row(kRequests, [&](const Request& request) { EXPECT_EQ(request.ask(7), 1); });
}
