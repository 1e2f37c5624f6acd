// Handing a number to the dialer.
#include "process_test.h"

using namespace process_test;

namespace {

constexpr char kTitle[] = "Veltrin Dialer";
const std::string kLook = look_for(kTitle);
const std::string kWake = "PostMessageA(dialer, 0x584, 0, 0)";
const std::string kWakeLate = "PostMessageA(late, 0x584, 0, 0)";
const std::string kExit = "FreeLibraryAndExitThread(library, 0)";
const std::string kStart = start_of_file(R"(C:\Suite\VlDialer.exe)");
const std::string kTakeReference = "GetModuleHandleExA(4)";
const std::string kStartWorker = "CreateThread(null, 0, given, null, 0, null)";
constexpr char kAddress[] = "00:11:22:33:44:55";
constexpr char kNumber[] = "+49 (30) 1234#5*";

class DialPhone : public ProcessTest {
protected:
    // All calls up to the worker's end. The caller's CloseHandle may come anywhere between the worker's.
    Lines finish_worker() {
        EXPECT_TRUE(calls.worker_ended());
        Lines lines = calls.take();
        EXPECT_EQ(std::erase(lines, "CloseHandle(worker)"), 1U);
        return lines;
    }
    Lines start_lines() {
        return Lines{kLook, kStart} + close_program() + Lines{kTakeReference, kStartWorker};
    }
};

TEST_F(DialPhone, LeavesTheNumberInThePersonalSettingsAndWakesTheDialer) {
    QueueWindow dialer(kTitle);
    calls.name(dialer.handle(), "dialer");
    VlCm_DialPhone(kAddress, kNumber);
    EXPECT_EQ(calls.take(), (Lines{kLook, kWake}));
    EXPECT_EQ(personal_setting("DialParameter", "DeviceAddress"), kAddress);
    EXPECT_EQ(personal_setting("DialParameter", "PhoneNum"), kNumber);
    EXPECT_EQ(trace(), scope_of("VlCm_DialPhone"));
}

TEST_F(DialPhone, LeavesTheNumberBeforeItLooksForTheDialer) {
    QueueWindow dialer(kTitle);
    std::string found;
    calls.on_call = [&](const std::string& call) {
        if (call == kLook) found = personal_setting("DialParameter", "PhoneNum");
    };
    VlCm_DialPhone(kAddress, kNumber);
    EXPECT_EQ(found, kNumber);
}

TEST_F(DialPhone, ChangesNothingWithoutAddressOrNumber) {
    QueueWindow dialer(kTitle);
    personal_setting("DialParameter", "PhoneNum", "before");
    const struct {
        const char* address;
        const char* number;
    } kRows[] = {{kAddress, nullptr}, {nullptr, kNumber}, {nullptr, nullptr}};
    for (const auto& row : kRows) {
        VlCm_DialPhone(row.address, row.number);
        EXPECT_EQ(calls.take(), Lines{});
        EXPECT_EQ(personal_setting("DialParameter", "PhoneNum"), "before");
        EXPECT_EQ(personal_setting("DialParameter", "DeviceAddress"), "");
        EXPECT_EQ(VlSim_CallCount("Btsdk_WritePrivateProfileString"), 0U);
        EXPECT_EQ(trace(), scope_of("VlCm_DialPhone"));
    }
}

TEST_F(DialPhone, TakesEmptyTexts) {
    QueueWindow dialer(kTitle);
    personal_setting("DialParameter", "PhoneNum", "before");
    VlCm_DialPhone("", "");
    EXPECT_EQ(calls.count(kLook), 1U);
    EXPECT_EQ(personal_setting("DialParameter", "PhoneNum"), "");
}

TEST_F(DialPhone, StartsTheDialerAndWakesItFromAThread) {
    LateWindow dialer(calls, kTitle, 3);
    VlCm_DialPhone(kAddress, kNumber);
    EXPECT_EQ(finish_worker(),
              (start_lines() + repeated(3, {kLook, sleep_of(500)}) + Lines{kLook, kWakeLate, kExit}));
    EXPECT_EQ(personal_setting("DialParameter", "DeviceAddress"), kAddress);
}

TEST_F(DialPhone, WakesADialerThatIsThereAtOnce) {
    LateWindow dialer(calls, kTitle, 0);
    VlCm_DialPhone(kAddress, kNumber);
    EXPECT_EQ(finish_worker(), (start_lines() + Lines{kLook, kWakeLate, kExit}));
}

TEST_F(DialPhone, GivesUpAfterTenLooks) {
    VlCm_DialPhone(kAddress, kNumber);
    EXPECT_EQ(finish_worker(), (start_lines() + repeated(10, {kLook, sleep_of(500)}) + Lines{kExit}));
}

TEST_F(DialPhone, TheThreadHasAScopeOfItsOwn) {
    VlCm_DialPhone(kAddress, kNumber);
    finish_worker();
    Lines lines = trace();  // both threads' entries
    EXPECT_TRUE(support::has_in_order(lines, scope_of("DialPhone_Thread")));
    std::erase_if(lines, [](const std::string& entry) { return entry.substr(5) == "DialPhone_Thread"; });
    EXPECT_EQ(lines, nested("VlCm_DialPhone", scope_of("VlCm_GetInstallDir")));
}

TEST_F(DialPhone, StartsNoThreadForAProgramThatDoesNotStart) {
    calls.fail("CreateProcessA");
    VlCm_DialPhone(kAddress, kNumber);
    EXPECT_EQ(calls.take(), (Lines{kLook, kStart}));
    EXPECT_EQ(trace(), nested("VlCm_DialPhone", scope_of("VlCm_GetInstallDir")));
}

TEST_F(DialPhone, IsSilentWhenTheThreadCannotStart) {
    calls.fail("CreateThread");
    VlCm_DialPhone(kAddress, kNumber);
    EXPECT_EQ(calls.take(), start_lines() + Lines{"FreeLibrary(library)"});
    EXPECT_EQ(trace(), nested("VlCm_DialPhone", scope_of("VlCm_GetInstallDir")));
    EXPECT_EQ(calls.library_references(), 0);
}

TEST_F(DialPhone, StartsNoThreadWithoutAReferenceToTheLibrary) {
    calls.fail("GetModuleHandleExA");
    VlCm_DialPhone(kAddress, kNumber);
    EXPECT_EQ(calls.take(), (Lines{kLook, kStart} + close_program() + Lines{kTakeReference}));
}

TEST_F(DialPhone, TheThreadGivesItsReferenceBackAfterItsScope) {
    Lines before_exit;
    calls.on_call = [&](const std::string& call) {
        if (call == kExit) before_exit = support::trace_log();
    };
    VlCm_DialPhone(kAddress, kNumber);
    finish_worker();
    EXPECT_EQ(calls.library_references(), 0);
    EXPECT_TRUE(support::has_line(before_exit, "<512 DialPhone_Thread"));
}

TEST_F(DialPhone, GoesOnWhenTheNumberCannotBeLeft) {
    VlSim_Fail("Btsdk_WritePrivateProfileString", 0, 0);
    QueueWindow dialer(kTitle);
    calls.name(dialer.handle(), "dialer");
    VlCm_DialPhone(kAddress, kNumber);
    EXPECT_EQ(VlSim_CallCount("Btsdk_WritePrivateProfileString"), 2U);
    EXPECT_EQ(calls.take(), (Lines{kLook, kWake}));
}

}  // namespace
