// Handing a text message to the message editor.
#include "handoff_test.h"
#include "page_watch.h"
#include "support/guarded_buffer.h"
#include "taken_states.h"

#include <objbase.h>
#include <shellapi.h>
#include <string.h>

namespace {

using Strings = std::vector<std::string>;

constexpr char kSection[] = "SHARE_MEM_SMSINFO";
constexpr size_t kSectionBytes = 14096;
constexpr uint16_t kMessageAccess = 0x1132;

VlSmsRecord sample_message(BtHandle device) {
    VlSmsRecord message{};
    message.device = device;
    for (size_t i = 0; i < sizeof message.rest; ++i) message.rest[i] = static_cast<uint8_t>(i * 7 + i / 256);
    return message;
}

Bytes message_image(uint32_t state, const VlSmsRecord& message) {
    Bytes image(kSectionBytes);
    put_word(image.data(), state);
    memcpy(&image[4], &message, sizeof message);
    return image;
}

class TextMessage : public HandoffTest {
protected:
    TextMessage() {
        settings().common("General", "InstallDir", "C:\\Veltrin\\");
        started.answer([this](HWND window, const char* verb, const char* file, const char* arguments,
                              const char* folder, INT show) {
            EXPECT_EQ(window, nullptr);
            EXPECT_STREQ(verb, "open");
            EXPECT_STREQ(file, "MAP_VlSMSEditor.exe");
            EXPECT_EQ(arguments, nullptr);
            EXPECT_STREQ(folder, "C:\\Veltrin\\");
            EXPECT_EQ(show, SW_SHOW);
            if (on_start) on_start();
            return reinterpret_cast<HINSTANCE>(33);
        });
        mobile_active.answer([] { return 0U; });
    }

    const VlSmsRecord message = sample_message(5);
    std::function<void()> on_start;
    CallPatch<HINSTANCE(HWND, const char*, const char*, const char*, const char*, INT)> started{
        "ShellExecuteA", ShellExecuteA};
    CallPatch<uint32_t()> mobile_active{"Btsdk_IsMobileActive", Btsdk_IsMobileActive};
};

using SendTextMessage = TextMessage;

TEST_F(SendTextMessage, WritesStateAndRecord) {
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    Bytes section;
    on_start = [&] { section = read_section(kSection, kSectionBytes); };
    EXPECT_EQ(VlCm_SendSMS(&message), 0U);
    EXPECT_TRUE(section == message_image(1, message));
    ASSERT_EQ(created.count(), 1U);
    EXPECT_EQ(std::get<2>(created.calls()[0]), DWORD{PAGE_READWRITE});
    EXPECT_EQ(std::get<4>(created.calls()[0]), kSectionBytes);
    EXPECT_FALSE(section_exists(kSection));
}

TEST_F(SendTextMessage, ReadsNothingBehindTheRecord) {
    support::GuardedBuffer buffer(sizeof message);
    memcpy(buffer.as(), &message, sizeof message);
    EXPECT_EQ(VlCm_SendSMS(buffer.as<VlSmsRecord>()), 0U);
    EXPECT_EQ(started.count(), 1U);
}

TEST_F(SendTextMessage, RefusesANullRecord) {
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    EXPECT_EQ(VlCm_SendSMS(nullptr), 773U);
    const Strings expected = {">512 VlCm_SendSMS", "=512 Error! The pointer is NULL!!!\r\n",
                              "<512 VlCm_SendSMS"};
    EXPECT_EQ(support::trace_log(), expected);
    EXPECT_EQ(created.count(), 0U);
}

TEST_F(SendTextMessage, NeedsNoReadyStack) {
    CallPatch ready("Btsdk_IsBluetoothReady", Btsdk_IsBluetoothReady);
    EXPECT_EQ(VlCm_SendSMS(&message), 0U);
    EXPECT_EQ(ready.count(), 0U);
}

TEST_F(SendTextMessage, WakesNobodyThroughTheAgent) {
    EXPECT_EQ(VlCm_SendSMS(&message), 0U);
    EXPECT_EQ(relay.count(), 0U);
    const Strings expected = {"512 VlCm_SendSMS", "512 VlCm_GetInstallDir"};
    EXPECT_EQ(support::trace_scopes(), expected);
}

TEST_F(SendTextMessage, LiftsTheAgentsWindowFoundOrNotBeforeTheEditorStarts) {
    for (const HWND window : {HWND{}, reinterpret_cast<HWND>(0x77)}) {
        tray = window;
        size_t lifted_before_start = 0;
        on_start = [&] { lifted_before_start = foreground.count(); };
        const size_t before = foreground.count();
        EXPECT_EQ(VlCm_SendSMS(&message), 0U);
        EXPECT_EQ(lifted_before_start - before, 1U);
        EXPECT_EQ(std::get<0>(foreground.calls().back()), window);
    }
}

TEST_F(SendTextMessage, StartsTheEditorOnlyForPhonesThatHaveMessages) {
    struct Row {
        const char* label;
        uint32_t active;
        BtHandle phone;
        uint32_t shortcuts;  // of the message access service
        size_t starts;
    };
    constexpr Row kRows[] = {
        {"inactive, no service", 0, 5, 0, 1}, {"inactive, service", 0, 5, 1, 1},
        {"inactive, no phone", 0, 0, 1, 1},   {"active, no service", 1, 5, 0, 0},
        {"active, service", 1, 5, 1, 1},      {"active by another value", 0x100, 5, 0, 0},
        {"active, no phone", 1, 0, 1, 0},
    };
    CallPatch shortcuts("Btsdk_GetShortCutByDeviceHandle", Btsdk_GetShortCutByDeviceHandle);
    CallPatch services("Btsdk_StartEnumRemoteService", Btsdk_StartEnumRemoteService);
    services.answer([](BtHandle) { return 0U; });
    for_each_row(kRows, [&](const Row& row) {
        mobile_active.answer([&] { return row.active; });
        shortcuts.answer([&](BtHandle device, uint16_t service, BtHandle*, uint32_t) {
            EXPECT_EQ(device, row.phone);
            EXPECT_EQ(service, kMessageAccess);
            return row.shortcuts;
        });
        const VlSmsRecord sms = sample_message(row.phone);
        const size_t starts = started.count(), pauses = sleeps.count();
        EXPECT_EQ(VlCm_SendSMS(&sms), 0U);
        EXPECT_EQ(started.count() - starts, row.starts);
        EXPECT_EQ(sleeps.count() - pauses, 20U) << "waits whether the editor was started or not";
    });
}

TEST_F(SendTextMessage, GoesOnWhenTheEditorDoesNotStart) {
    started.fail_nth(1, nullptr, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(VlCm_SendSMS(&message), 0U);
    EXPECT_EQ(sleeps.lengths(), std::vector<DWORD>(20, 100));
}

TEST_F(SendTextMessage, SleepsWhileTheStateIsOne) {
    expect_sleeps_while_the_state_is_one(on_start, sleeps, [&] { return VlCm_SendSMS(&message); });
}

TEST_F(SendTextMessage, UnmapsBeforeItCloses) {
    Strings steps;
    CallPatch unmapped("UnmapViewOfFile", UnmapViewOfFile);
    unmapped.answer([&](const void* view) { return steps.emplace_back("unmap"), unmapped.real(view); });
    CallPatch closed("CloseHandle", CloseHandle);
    closed.answer([&](HANDLE handle) { return steps.emplace_back("close"), closed.real(handle); });
    EXPECT_EQ(VlCm_SendSMS(&message), 0U);
    EXPECT_EQ(steps, (Strings{"unmap", "close"}));
}

class SendTextMessageFailure : public TextMessage {
protected:
    void refused(const std::string& line) {
        EXPECT_EQ(VlCm_SendSMS(&message), 770U);
        const Strings expected = {">512 VlCm_SendSMS", "=512 " + line, "<512 VlCm_SendSMS"};
        EXPECT_EQ(support::trace_log(), expected);
        EXPECT_EQ(started.count() + sleeps.count() + foreground.count(), 0U);
    }
};

TEST_F(SendTextMessageFailure, SectionCannotBeCreated) {
    CallPatch created("CreateFileMappingA", CreateFileMappingA);
    created.fail_nth(1, nullptr, ERROR_ALREADY_EXISTS);
    refused("Error! Can not create memory file!!!!!!!!\r\n");
}

TEST_F(SendTextMessageFailure, AnEarlierMessageIsPending) {
    const TestSection pending(kSection, kSectionBytes);
    CallPatch mapped("MapViewOfFile", MapViewOfFile);
    refused("Error! A same name memory file already exists!!!!!!!!\r\n");
    EXPECT_EQ(mapped.count(), 0U);
    EXPECT_EQ(pending.state(), 0U);
}

TEST_F(SendTextMessageFailure, AnObjectOfAnotherKindHoldsTheName) {
    const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, kSection);
    refused("Error! Can not create memory file!!!!!!!!\r\n");
    CloseHandle(event);
}

TEST_F(SendTextMessageFailure, ViewCannotBeMapped) {
    CallPatch mapped("MapViewOfFile", MapViewOfFile);
    mapped.fail_nth(1, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    CallPatch closed("CloseHandle", CloseHandle);
    refused("Error! Can not map view of the memory file!!!!!!!!\r\n");
    EXPECT_EQ(closed.count(), 1U);
}

class TakeTextMessage : public TextMessage {
protected:
    // Takes the message, compares its bytes, frees it.
    static void expect_taken(const Bytes& expected) {
        VlSmsRecord* taken = VlCm_GetSMSInfo();
        ASSERT_NE(taken, nullptr);
        EXPECT_EQ(memcmp(taken, expected.data(), sizeof *taken), 0);
        Vlcm_SHFree(taken);
    }
};

TEST_F(TakeTextMessage, GivesTheWholeRecordInTaskMemory) {
    const TestSection section(kSection, message_image(1, message));
    CallPatch allocated("CoTaskMemAlloc", CoTaskMemAlloc);
    const Bytes image = message_image(1, message);
    expect_taken(Bytes(image.begin() + 4, image.end()));
    EXPECT_EQ(section.state(), kTakenState);
    ASSERT_EQ(allocated.count(), 1U);
    EXPECT_EQ(std::get<0>(allocated.calls()[0]), 14092U);
    EXPECT_EQ(support::trace_scopes(), Strings{"512 VlCm_CreateMobileSMSInfo"});
}

TEST_F(TakeTextMessage, SetsTheStateBeforeItAllocates) {
    const TestSection section(kSection, message_image(1, message));
    CallPatch allocated("CoTaskMemAlloc", CoTaskMemAlloc);
    uint32_t state = 0;
    allocated.answer([&](SIZE_T size) {
        state = section.state();
        return allocated.real(size);
    });
    Vlcm_SHFree(VlCm_GetSMSInfo());
    EXPECT_EQ(state, kTakenState);
}

TEST_F(TakeTextMessage, TakesAnyState) {
    for (const uint32_t state : {0U, 1U, 2U, kFreshState, 0xFFFFFFFFU}) {
        const Bytes image = message_image(state, message);
        const TestSection section(kSection, image);
        expect_taken(Bytes(image.begin() + 4, image.end()));
        EXPECT_EQ(section.state(), kTakenState);
    }
}

TEST_F(TakeTextMessage, TellsThatNothingIsPending) {
    CallPatch opened("OpenFileMappingA", OpenFileMappingA);
    EXPECT_EQ(VlCm_GetSMSInfo(), nullptr);
    EXPECT_EQ(support::trace_log(), Strings{"=512 Error! Can not open memory file!!!!!!!\r\n"});
    ASSERT_EQ(opened.count(), 1U);
    EXPECT_EQ(std::get<0>(opened.calls()[0]), DWORD{FILE_MAP_READ | FILE_MAP_WRITE});
}

TEST_F(TakeTextMessage, TellsThatTheSectionCannotBeMapped) {
    const TestSection section(kSection, message_image(1, message));
    CallPatch mapped("MapViewOfFile", MapViewOfFile);
    mapped.fail_nth(1, nullptr, ERROR_NOT_ENOUGH_MEMORY);
    CallPatch closed("CloseHandle", CloseHandle);
    EXPECT_EQ(VlCm_GetSMSInfo(), nullptr);
    EXPECT_EQ(support::trace_log(), Strings{"=512 Error! Can not map view of the memory file!!!!!!!!\r\n"});
    EXPECT_EQ(closed.count(), 1U);
    EXPECT_EQ(section.state(), 1U);
}

TEST_F(TakeTextMessage, GivesNothingWithoutMemoryButTakesTheMessage) {
    const TestSection section(kSection, message_image(1, message));
    CallPatch allocated("CoTaskMemAlloc", CoTaskMemAlloc);
    allocated.fail_nth(1, nullptr);
    EXPECT_EQ(VlCm_GetSMSInfo(), nullptr);
    EXPECT_EQ(lines(), Strings{"error!!! CreateMobileProcInfo: can not alloc memory.\r\n"});
    EXPECT_EQ(section.state(), kTakenState);
}

TEST_F(TakeTextMessage, FillsATruncatedMessageWithZeros) {
    for (const size_t pages : Sizes{1, 2, 3}) {
        Bytes image(pages * kPageBytes, 0x6B);
        const TestSection section(kSection, image);
        image.resize(kSectionBytes);
        expect_taken(Bytes(image.begin() + 4, image.end()));
    }
}

TEST_F(TakeTextMessage, TakesNothingFromMemoryThatIsNotCommitted) {
    const TestSection section(kSection, 16 * kPageBytes, SEC_RESERVE);
    EXPECT_EQ(VlCm_GetSMSInfo(), nullptr);
    EXPECT_EQ(support::trace_log(), Strings{});
}

TEST_F(TakeTextMessage, TakesNothingFromMemoryThatCanOnlyBeRead) {
    const Bytes image = message_image(1, message);
    const ReadOnlySection section(kSection, image);
    EXPECT_EQ(VlCm_GetSMSInfo(), nullptr);
    EXPECT_EQ(support::trace_log(), Strings{"=512 Error! Can not map view of the memory file!!!!!!!!\r\n"});
    EXPECT_TRUE(read_section(kSection, image.size()) == image);
}

TEST_F(TakeTextMessage, AnObjectOfAnotherKindHoldsTheName) {
    const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, kSection);
    EXPECT_EQ(VlCm_GetSMSInfo(), nullptr);
    EXPECT_EQ(support::trace_log(), Strings{"=512 Error! Can not open memory file!!!!!!!\r\n"});
    CloseHandle(event);
}

}  // namespace
