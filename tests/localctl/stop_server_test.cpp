// Stopping a local server; one in use only after a question.
#include "localctl_test.h"

using namespace localctl_test;

namespace {

constexpr unsigned kRunning = 301, kInUse = 304, kUnknown = 999;
constexpr uint32_t kStopMessage = 0x490D0203;

class StopServer : public LocalControlTest {
protected:
    static std::string stop_request(unsigned server) { return relayed(kStopMessage, server); }
    static std::string status_of(unsigned server, unsigned result = 0) {
        return "Btsdk_GetServerStatus(" + std::to_string(server) + ", out) = " + std::to_string(result);
    }
    static Lines traced(const Lines& inside) { return nested("VlCm_StopServer", inside); }
    static Lines posted(const std::string& server) {
        return traced(Lines{line("Stop Server: " + server + "\r\n")} + nested("VlCm_PostMsg2Vltray"));
    }

    MessageBoxes boxes;
    LanguageLibraryLoads library;
};

}  // namespace

TEST_F(StopServer, OfHandle0IsRefusedBeforeAnythingIsAsked) {
    EXPECT_EQ(VlCm_StopServer(nullptr, 0), FALSE);
    EXPECT_EQ(support::trace_log(), traced({line("error!!! Invalid service handle.\r\n")}));
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_EQ(library.count(), 0u);
}

TEST_F(StopServer, WithoutAStatusIsRefused) {
    VlSim_Fail("Btsdk_GetServerStatus", 1, 5);
    EXPECT_EQ(VlCm_StopServer(nullptr, kRunning), FALSE);
    EXPECT_EQ(support::trace_log(), traced({line("error!!! Can not get the server's status.\r\n")}));
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_GetServerStatus"});
    support::clear_trace_log();
    EXPECT_EQ(VlCm_StopServer(nullptr, kUnknown), FALSE);
    EXPECT_EQ(support::trace_log(), traced({line("error!!! Can not get the server's status.\r\n")}));
    EXPECT_EQ(boxes.count(), 0u);
}

TEST_F(StopServer, AStatusWithAFailureIsNotLookedAt) {
    support::CallPatch status("Btsdk_GetServerStatus", Btsdk_GetServerStatus);
    status.answer([](BtHandle, uint32_t* written) { return *written = 3U, 0x80000000U; });
    EXPECT_EQ(VlCm_StopServer(nullptr, kRunning), FALSE);
    EXPECT_EQ(boxes.count(), 0u);
    EXPECT_TRUE(requests().empty());
}

TEST_F(StopServer, AsksNothingUnlessItIsInUse) {
    support::CallPatch status("Btsdk_GetServerStatus", Btsdk_GetServerStatus);
    for (const uint32_t each : {0U, 1U, 2U, 4U, 0x103U, 0xFFFFFFFFU}) {
        support::clear_sdk_log();
        status.answer([each](BtHandle, uint32_t* written) { return *written = each, 0U; });
        EXPECT_EQ(VlCm_StopServer(nullptr, kRunning), TRUE) << each;
        EXPECT_EQ(requests(), Lines{stop_request(kRunning)}) << each;
    }
    EXPECT_EQ(boxes.count(), 0u);
    EXPECT_EQ(library.count(), 0u);
}

TEST_F(StopServer, IsTracedAndThenRequestedFromTheAgent) {
    EXPECT_EQ(VlCm_StopServer(nullptr, kRunning), TRUE);
    EXPECT_EQ(support::sdk_calls(), (Lines{status_of(kRunning), stop_request(kRunning)}));
    EXPECT_EQ(support::trace_log(), posted("0x0000012d"));
    EXPECT_EQ(support::trace_formats(), Lines{"Stop Server: 0x%08x\r\n"});
}

TEST_F(StopServer, AHandleOf32BitsStaysWhole) {
    support::CallPatch status("Btsdk_GetServerStatus", Btsdk_GetServerStatus);
    status.answer([](BtHandle, uint32_t* written) { return *written = 1U, 0U; });
    EXPECT_EQ(VlCm_StopServer(nullptr, 0xFEDCBA98), TRUE);
    EXPECT_EQ(std::get<0>(status.calls().at(0)), 0xFEDCBA98u);
    EXPECT_EQ(requests(), Lines{stop_request(0xFEDCBA98)});
    EXPECT_EQ(support::trace_log(), posted("0xfedcba98"));
}

TEST_F(StopServer, InUseIsStoppedAfterYes) {
    EXPECT_EQ(VlCm_StopServer(nullptr, kInUse), TRUE);
    const Box question{false, nullptr, text_of(1212), text_of(1211), 36, text_of(1212), text_of(1211)};
    EXPECT_EQ(boxes.seen(), std::vector<Box>{question});
    EXPECT_EQ(support::sdk_calls(), (Lines{status_of(kInUse), stop_request(kInUse)}));
    EXPECT_EQ(support::trace_log(), posted("0x00000130"));
    EXPECT_EQ(library.count(), 1u);
    EXPECT_FALSE(library.is_loaded());
}

TEST_F(StopServer, InUseIsLeftAloneAfterNo) {
    boxes.press(IDNO);
    EXPECT_EQ(VlCm_StopServer(nullptr, kInUse), FALSE);
    EXPECT_EQ(boxes.count(), 1u);
    EXPECT_EQ(support::sdk_calls(), Lines{status_of(kInUse)});
    EXPECT_EQ(support::trace_log(), traced({}));
    EXPECT_FALSE(library.is_loaded());
}

TEST_F(StopServer, TheQuestionBelongsToTheOwner) {
    const support::TestWindow owner({.title = "owner of the question"});
    for (const int button : {IDYES, IDNO}) {
        boxes.press(button);
        EXPECT_EQ(VlCm_StopServer(owner.handle(), kInUse), button == IDYES ? TRUE : FALSE);
        ASSERT_FALSE(boxes.seen().empty());
        EXPECT_EQ(boxes.seen().back().owner, owner.handle());
    }
}

TEST_F(StopServer, NothingButNoRefuses) {
    for (const int answer : {0, 1, 2, 6, 8}) {
        support::clear_sdk_log();
        boxes.show_none(answer);
        EXPECT_EQ(VlCm_StopServer(nullptr, kInUse), TRUE) << answer;
        EXPECT_EQ(requests(), Lines{stop_request(kInUse)}) << answer;
    }
    boxes.show_none(7);
    EXPECT_EQ(VlCm_StopServer(nullptr, kInUse), FALSE);
}

TEST_F(StopServer, InUseIsRefusedWithoutTheLanguageLibrary) {
    library.fail();
    EXPECT_EQ(VlCm_StopServer(nullptr, kInUse), FALSE);
    EXPECT_EQ(support::trace_log(), traced({line("error!!! Can not load resource library.\r\n")}));
    EXPECT_EQ(boxes.count(), 0u);
    EXPECT_TRUE(requests().empty());
    EXPECT_EQ(VlCm_StopServer(nullptr, kRunning), TRUE) << "this one needs no texts";
}

TEST_F(StopServer, TheTextsAreLoadedIntoZeroedBuffers) {
    TextLoads loads;
    VlCm_StopServer(nullptr, kInUse);
    EXPECT_EQ(loads.seen(),
              (std::vector<TextLoads::Load>{{false, 1211, 100, true}, {false, 1212, 200, true}}));
}

TEST_F(StopServer, MissingTextsGiveAnEmptyQuestion) {
    TextLoads loads;
    loads.remove(1211);
    loads.remove(1212);
    boxes.show_none(IDYES);
    EXPECT_EQ(VlCm_StopServer(nullptr, kInUse), TRUE);
    EXPECT_EQ(boxes.seen(), (std::vector<Box>{{false, nullptr, L"", L"", 36, L"", L""}}));
}

TEST_F(StopServer, LongTextsAreCutToTheirBuffers) {
    TextLoads loads;
    loads.replace(1211, std::wstring(300, 'c'));
    loads.replace(1212, std::wstring(300, 'q'));
    boxes.show_none(IDNO);
    VlCm_StopServer(nullptr, kInUse);
    ASSERT_EQ(boxes.count(), 1u);
    EXPECT_EQ(boxes.seen().at(0).caption, std::wstring(99, 'c'));
    EXPECT_EQ(boxes.seen().at(0).text, std::wstring(199, 'q'));
}

TEST_F(StopServer, TheLanguageLibraryIsFreedBeforeTheRequest) {
    support::CallPatch relay("Btsdk_PostMessageToCtrlCenter", Btsdk_PostMessageToCtrlCenter);
    relay.answer([](uint32_t, uint32_t) {
        EXPECT_FALSE(LanguageLibraryLoads::is_loaded());
        return 0U;
    });
    EXPECT_EQ(VlCm_StopServer(nullptr, kInUse), TRUE);
    EXPECT_EQ(relay.count(), 1u);
}

TEST_F(StopServer, IsDoneAlsoWhenTheAgentCannotBeReached) {
    VlSim_Fail("Btsdk_PostMessageToCtrlCenter", 0, 1);
    EXPECT_EQ(VlCm_StopServer(nullptr, kRunning), TRUE);
}
