// Deleting remote devices: arguments, the question, the requests.
#include "delete_devices_test.h"

#include "support/guarded_buffer.h"

using namespace localctl_test;

namespace {

struct CountRow {
    const char* label;
    unsigned count;
    UINT_PTR bytes;
};
constexpr CountRow kUnreadable[] = {
    {"one too many", 3, 12},
    {"2^30: no bytes in 32 bits", 0x40000000, 0x100000000},
    {"2^30 + 2: eight bytes in 32 bits", 0x40000002, 0x100000008},
    {"the most", 0xFFFFFFFF, 0x3FFFFFFFC},
};

const std::string kInvalid = line("error!!! Invalid parameter.\r\n");

}  // namespace

TEST_F(DeleteDevices, WithoutHandlesIsRefusedBeforeAnythingIsAsked) {
    const unsigned device = kPhone;
    both_forms([&](const Form& form) {
        EXPECT_EQ(form.run(nullptr, nullptr, 1), FALSE);
        EXPECT_EQ(form.run(nullptr, &device, 0), FALSE);
        EXPECT_EQ(form.run(nullptr, nullptr, 0), FALSE);
        EXPECT_EQ(support::trace_log(),
                  form.traced({kInvalid}) + form.traced({kInvalid}) + form.traced({kInvalid}));
        EXPECT_TRUE(support::sdk_calls().empty());
        EXPECT_EQ(library.count(), 0u);
    });
}

TEST_F(DeleteDevices, HandlesThatCannotBeReadAreRefused) {
    const support::GuardedBuffer handles(2 * sizeof(unsigned));
    handles.as<unsigned>()[0] = handles.as<unsigned>()[1] = kPrinter;
    both_forms([&](const Form& form) {
        support::for_each_row(kUnreadable, [&](const CountRow& row) {
            support::clear_trace_log();
            support::CallPatch readable("IsBadReadPtr", IsBadReadPtr);
            EXPECT_EQ(form.run(nullptr, handles.as<unsigned>(), row.count), FALSE);
            EXPECT_EQ(support::trace_log(), form.traced({kInvalid}));
            const std::tuple<const void*, UINT_PTR> call(handles.as<unsigned>(), row.bytes);
            ASSERT_EQ(readable.count(), 1u);
            EXPECT_EQ(readable.calls().at(0), call);
        });
        EXPECT_EQ(form.run(nullptr, handles.as<unsigned>() + 2, 1), FALSE) << "a no-access page";
        EXPECT_EQ(form.run(nullptr, reinterpret_cast<const unsigned*>(16), 1), FALSE) << "no page";
        EXPECT_TRUE(support::sdk_calls().empty());
    });
    EXPECT_EQ(VlCm_DeleteDevices(nullptr, handles.as<unsigned>(), 2), TRUE) << "up to the last byte";
}

TEST_F(DeleteDevices, NeedsBluetoothReady) {
    both_forms([&](const Form& form) {
        support::CallPatch ready("Btsdk_IsBluetoothReady", Btsdk_IsBluetoothReady);
        for (const int each : {0, 2, 255}) {
            support::clear_trace_log();
            ready.answer([each] { return static_cast<uint8_t>(each); });
            EXPECT_EQ(remove(form, {kPhone}), FALSE) << each;
            EXPECT_EQ(support::trace_log(), form.traced({line("error!!! The bluetooth is not ready.\r\n")}));
        }
        EXPECT_TRUE(support::sdk_calls().empty());
        EXPECT_EQ(library.count(), 0u);
        EXPECT_EQ(boxes.count(), 0u);
    });
}

TEST_F(DeleteDevices, NeedsTheLanguageLibrary) {
    library.fail();
    connect(kPhone);
    both_forms([&](const Form& form) {
        EXPECT_EQ(remove(form, {kPhone}), FALSE);
        EXPECT_EQ(support::trace_log(), form.traced({line("error!!! Can not load resource library.\r\n")}));
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_IsBluetoothReady"});
        EXPECT_EQ(boxes.count(), 0u);
    });
}

TEST_F(DeleteDevices, AreAllRequestedInOrderAfterYes) {
    both_forms([&](const Form& form) {
        EXPECT_EQ(remove(form, {kKeyboard, kPrinter, kCamera}), TRUE);
        EXPECT_EQ(boxes.seen(), std::vector<Box>{question(form)});
        EXPECT_EQ(support::sdk_calls().front().find("Btsdk_IsBluetoothReady()"), 0u);
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_IsBluetoothReady"} + kLooks + (kLooks + kPost) +
                                                 (kLooks + kPost) + (kLooks + kPost));
        EXPECT_EQ(requests(), (Lines{deletion(kKeyboard), deletion(kPrinter), deletion(kCamera)}));
        EXPECT_EQ(support::trace_log(),
                  form.traced(posted("0x00000004") + posted("0x00000003") + posted("0x00000007")));
        EXPECT_EQ(support::trace_formats(), Lines(3, "Delete device: 0x%08x\r\n"));
        EXPECT_FALSE(library.is_loaded());
    });
}

TEST_F(DeleteDevices, AreLeftAloneAfterNo) {
    boxes.press(IDNO);
    both_forms([&](const Form& form) {
        EXPECT_EQ(remove(form, {kKeyboard, kPrinter}), FALSE);
        EXPECT_EQ(boxes.seen(), std::vector<Box>{question(form)});
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_IsBluetoothReady"} + kLooks);
        EXPECT_EQ(support::trace_log(), form.traced({}));
        EXPECT_FALSE(library.is_loaded());
    });
}

TEST_F(DeleteDevices, TheQuestionBelongsToTheOwner) {
    const support::TestWindow owner({.title = "owner of the question"});
    both_forms([&](const Form& form) {
        const unsigned device = kPrinter;
        EXPECT_EQ(form.run(owner.handle(), &device, 1), TRUE);
        EXPECT_EQ(boxes.seen(), std::vector<Box>{question(form, owner.handle())});
    });
}

TEST_F(DeleteDevices, NothingButNoRefuses) {
    both_forms([&](const Form& form) {
        for (const int answer : {0, 1, 2, 6, 8}) {
            support::clear_sdk_log();
            boxes.show_none(answer);
            EXPECT_EQ(remove(form, {kPrinter}), TRUE) << answer;
            EXPECT_EQ(requests(), Lines{deletion(kPrinter)}) << answer;
        }
        boxes.show_none(7);
        EXPECT_EQ(remove(form, {kPrinter}), FALSE);
    });
}

TEST_F(DeleteDevices, TheQuestionIsLoadedIntoZeroedBuffers) {
    both_forms([&](const Form& form) {
        TextLoads loads;
        remove(form, {kPrinter});
        EXPECT_EQ(loads.seen(),
                  (std::vector<TextLoads::Load>{{form.wide, 1213, 100, true}, {form.wide, 1214, 260, true}}));
    });
}

TEST_F(DeleteDevices, ALongQuestionIsCutToItsBuffers) {
    boxes.show_none(IDNO);
    both_forms([&](const Form& form) {
        TextLoads loads;
        loads.replace(1213, std::wstring(300, 'c'));
        loads.replace(1214, std::wstring(300, 'q'));
        remove(form, {kPrinter});
        ASSERT_EQ(boxes.count(), 1u);
        EXPECT_EQ(boxes.seen().at(0).caption, std::wstring(99, 'c'));
        EXPECT_EQ(boxes.seen().at(0).text, std::wstring(259, 'q'));
    });
}

TEST_F(DeleteDevices, OfType1GoAlsoWhileTheyAreConnected) {
    connect(kBelt);  // of type 1
    both_forms([&](const Form& form) {
        EXPECT_EQ(remove(form, {kBelt, kPrinter, kBelt}), TRUE);
        EXPECT_EQ(boxes.seen(), std::vector<Box>{question(form)});
        EXPECT_EQ(requests(), (Lines{deletion(kBelt), deletion(kPrinter), deletion(kBelt)}));
    });
}

TEST_F(DeleteDevices, OnlyTheLowByte1MeansConnected) {
    support::CallPatch connected("Btsdk_IsDeviceConnected", Btsdk_IsDeviceConnected);
    for (const int each : {0, 2, 255}) {
        connected.answer([each](BtHandle) { return static_cast<uint8_t>(each); });
        EXPECT_EQ(remove(kPlain, {kPrinter}), TRUE) << each;
    }
    EXPECT_EQ(requests(), Lines(3, deletion(kPrinter)));
}

TEST_F(DeleteDevices, HandlesOf32BitsStayWhole) {
    EXPECT_EQ(remove(kPlain, {0xFEDCBA98}), TRUE);
    EXPECT_EQ(requests(), Lines{deletion(0xFEDCBA98)});
    EXPECT_EQ(support::trace_log(), kPlain.traced(posted("0xfedcba98")));
}

TEST_F(DeleteDevices, AreAllRequestedAlsoWhenTheAgentCannotBeReached) {
    VlSim_Fail("Btsdk_PostMessageToCtrlCenter", 0, 1);
    EXPECT_EQ(remove(kPlain, {kPrinter, kCamera}), TRUE);
    EXPECT_EQ(requests().size(), 2u);
}
