// Deleting remote devices: the one that is connected ends the walk and is named.
#include "delete_devices_test.h"

using namespace localctl_test;

namespace {

struct NameRow {
    const char* label;
    unsigned device;
    const char* name;  // as JSON; null: as it is
    std::wstring shown;
};
const NameRow kNames[] = {
    {"ASCII", kKeyboard, nullptr, L"Keyboard K380"},
    {"Latin", kHeadset, nullptr, L"B\u00FCro Headset Gr\u00F6\u00DFe L"},
    {"Cyrillic", kLaptop, nullptr,
     L"\u041D\u043E\u0443\u0442\u0431\u0443\u043A \u041C\u0430\u0440\u0438\u043D\u044B"},
    {"Japanese", kPrinter, nullptr, L"\u30D7\u30EA\u30F3\u30BF\u30FC 3\u968E"},
    {"beyond 16 bits", kCamera, R"("\ud83d\udcf7")", L"\xD83D\xDCF7"},
    {"nameless: its address", kNameless, nullptr, L"7C:2F:80:55:E1:0A"},
    {"no UTF-8", kCamera, R"({"hex": "4772FC6E"})", L"Gr\uFFFDn"},
    {"cut within a character", kCamera, R"({"hex": "4772C3"})", L"Gr\uFFFD"},
    {"with a format", kCamera, R"("100%s %d%%n")", L"100%s %d%%n"},
};

std::wstring with_name(std::wstring format, const std::wstring& name) {
    return format.replace(format.find(L"%s"), 2, name);
}

class DeleteRefusal : public DeleteDevices {
protected:
    static Box refusal(const std::wstring& name, HWND owner = nullptr) {
        const std::wstring message = with_name(text_of(1216), name);
        return {true, owner, message, text_of(1215), 16, message, text_of(1215)};
    }
    static void set_name(unsigned device, const char* json) {
        VlSim_Set(("/devices/" + std::to_string(device - 1) + "/name").c_str(), json);
    }
};

}  // namespace

TEST_F(DeleteRefusal, OfASingleDeviceComesWithoutAQuestion) {
    connect(kKeyboard);
    both_forms([&](const Form& form) {
        EXPECT_EQ(remove(form, {kKeyboard}), FALSE);
        EXPECT_EQ(boxes.seen(), std::vector<Box>{refusal(L"Keyboard K380")});
        EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_IsBluetoothReady"} + kLooks + kNaming);
        EXPECT_EQ(support::trace_log(), form.traced({}));
        EXPECT_FALSE(library.is_loaded());
    });
}

TEST_F(DeleteRefusal, OfTheFirstDeviceEndsItForAll) {
    connect(kKeyboard);
    both_forms([&](const Form& form) {
        EXPECT_EQ(remove(form, {kKeyboard, kPrinter}), FALSE);
        EXPECT_EQ(boxes.seen(), std::vector<Box>{refusal(L"Keyboard K380")});
        EXPECT_TRUE(requests().empty());
    });
}

TEST_F(DeleteRefusal, LeavesThoseBeforeItRequested) {
    connect(kKeyboard);
    both_forms([&](const Form& form) {
        EXPECT_EQ(remove(form, {kPrinter, kKeyboard, kCamera}), FALSE);
        EXPECT_EQ(boxes.seen(), (std::vector<Box>{question(form), refusal(L"Keyboard K380")}));
        EXPECT_EQ(requests(), Lines{deletion(kPrinter)});
        EXPECT_EQ(support::sdk_operations(),
                  Lines{"Btsdk_IsBluetoothReady"} + kLooks + (kLooks + kPost) + kLooks + kNaming);
        EXPECT_EQ(support::trace_log(), form.traced(posted("0x00000003")));
        EXPECT_FALSE(library.is_loaded());
    });
}

TEST_F(DeleteRefusal, OfTheLastDeviceComesToo) {
    connect(kKeyboard);
    EXPECT_EQ(remove(kPlain, {kPrinter, kCamera, kKeyboard}), FALSE);
    EXPECT_EQ(requests(), (Lines{deletion(kPrinter), deletion(kCamera)}));
    EXPECT_EQ(boxes.seen(), (std::vector<Box>{question(kPlain), refusal(L"Keyboard K380")}));
}

TEST_F(DeleteRefusal, ComesAlsoForADeviceThatConnectsDuringTheQuestion) {
    support::CallPatch connected("Btsdk_IsDeviceConnected", Btsdk_IsDeviceConnected);
    connected.answer([&](BtHandle) { return static_cast<uint8_t>(connected.count() >= 2); });
    EXPECT_EQ(remove(kPlain, {kKeyboard}), FALSE);
    EXPECT_EQ(boxes.seen(), (std::vector<Box>{question(kPlain), refusal(L"Keyboard K380")}));
    EXPECT_TRUE(requests().empty());
}

TEST_F(DeleteRefusal, TypesOtherThan1AreHeldByAConnection) {
    connect(kKeyboard);
    for (const unsigned type : {0U, 2U, 0x101U, 0xFFFFFFFFU}) {
        set_type(kKeyboard, type);
        EXPECT_EQ(remove(kPlain, {kKeyboard}), FALSE) << type;
    }
    EXPECT_EQ(boxes.seen(), std::vector<Box>(4, refusal(L"Keyboard K380")));
}

TEST_F(DeleteRefusal, BelongsToTheOwner) {
    const support::TestWindow owner({.title = "owner of the refusal"});
    connect(kKeyboard);
    both_forms([&](const Form& form) {
        const unsigned device = kKeyboard;
        EXPECT_EQ(form.run(owner.handle(), &device, 1), FALSE);
        EXPECT_EQ(boxes.seen(), std::vector<Box>{refusal(L"Keyboard K380", owner.handle())});
    });
}

TEST_F(DeleteRefusal, NamesTheDeviceInUtf16) {
    both_forms([&](const Form& form) {
        support::for_each_row(kNames, [&](const NameRow& row) {
            boxes.forget();
            if (row.name != nullptr) set_name(row.device, row.name);
            connect(row.device);
            EXPECT_EQ(remove(form, {row.device}), FALSE);
            EXPECT_EQ(boxes.seen(), std::vector<Box>{refusal(row.shown)});
        });
    });
}

TEST_F(DeleteRefusal, ALongNameIsCutAt99Bytes) {
    set_name(kCamera, ("\"" + std::string(150, 'n') + "\"").c_str());
    connect(kCamera);
    boxes.show_none(IDOK);
    EXPECT_EQ(remove(kPlain, {kCamera}), FALSE);
    ASSERT_EQ(boxes.count(), 1u);
    EXPECT_EQ(boxes.seen().at(0).text, with_name(text_of(1216), std::wstring(99, 'n')));
}

TEST_F(DeleteRefusal, ShowsNothingWithoutAnAddress) {
    connect(kKeyboard);
    both_forms([&](const Form& form) {
        TextLoads loads;
        VlSim_Fail("Btsdk_GetRemoteDeviceAddress", 1, 5);
        EXPECT_EQ(remove(form, {kKeyboard}), FALSE);
        EXPECT_EQ(boxes.count(), 0u);
        EXPECT_TRUE(loads.seen().empty());
        EXPECT_EQ(support::sdk_operations().back(), "Btsdk_GetRemoteDeviceAddress");
        EXPECT_EQ(support::trace_log(), form.traced({}));
        EXPECT_FALSE(library.is_loaded());
    });
}

TEST_F(DeleteRefusal, ItsTextsAreLoadedIntoZeroedBuffers) {
    connect(kKeyboard);
    both_forms([&](const Form& form) {
        TextLoads loads;
        remove(form, {kKeyboard});
        EXPECT_EQ(loads.seen(),
                  (std::vector<TextLoads::Load>{{form.wide, 1215, 100, true}, {form.wide, 1216, 200, true}}));
    });
}

TEST_F(DeleteRefusal, ThePlainFormsTextsAreInTheAnsiCodePage) {
    connect(kHeadset);
    TextLoads loads;
    loads.replace(1215,
                  L"\xDC"
                  L"ber");
    loads.replace(1216, L"\xE4 %s \xF6");
    boxes.show_none(IDOK);
    EXPECT_EQ(remove(kPlain, {kHeadset}), FALSE);
    ASSERT_EQ(boxes.count(), 1u);
    EXPECT_EQ(boxes.seen().at(0).caption, local_to_wide("\xDC"
                                                        "ber"));
    const std::wstring name = L"B\u00FCro Headset Gr\u00F6\u00DFe L";
    EXPECT_EQ(boxes.seen().at(0).text, local_to_wide("\xE4 ") + name + local_to_wide(" \xF6"));
}

TEST_F(DeleteRefusal, TheWideFormsTextsAreTakenAsTheyAre) {
    connect(kHeadset);
    TextLoads loads;
    loads.replace(1215, L"\u041D\u0435\u0442");
    loads.replace(1216, L"\u30D7 %s \u968E");
    EXPECT_EQ(remove(kWide, {kHeadset}), FALSE);
    ASSERT_EQ(boxes.count(), 1u);
    EXPECT_EQ(boxes.seen().at(0).shown_caption, L"\u041D\u0435\u0442");
    EXPECT_EQ(boxes.seen().at(0).shown_text, L"\u30D7 B\u00FCro Headset Gr\u00F6\u00DFe L \u968E");
}

TEST_F(DeleteRefusal, MissingTextsGiveAnEmptyMessage) {
    connect(kKeyboard);
    boxes.show_none(0);
    both_forms([&](const Form& form) {
        TextLoads loads;
        loads.remove(1215);
        loads.remove(1216);
        EXPECT_EQ(remove(form, {kKeyboard}), FALSE);
        EXPECT_EQ(boxes.seen(), (std::vector<Box>{{true, nullptr, L"", L"", 16, L"", L""}}));
    });
}

TEST_F(DeleteRefusal, ALongMessageIsCutAt259Characters) {
    set_name(kCamera, ("\"" + std::string(99, 'n') + "\"").c_str());
    connect(kCamera);
    boxes.show_none(IDOK);
    both_forms([&](const Form& form) {
        TextLoads loads;
        loads.replace(1215, std::wstring(300, 'c'));
        loads.replace(1216, std::wstring(190, 'm') + L"%s" + std::wstring(100, 'm'));
        EXPECT_EQ(remove(form, {kCamera}), FALSE);
        ASSERT_EQ(boxes.count(), 1u);
        EXPECT_EQ(boxes.seen().at(0).caption, std::wstring(99, 'c'));
        EXPECT_EQ(boxes.seen().at(0).text, std::wstring(190, 'm') + std::wstring(69, 'n'));
    });
}
