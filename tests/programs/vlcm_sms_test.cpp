// A text message on its way: from the command line to the message editor, which has the tray agent use the
// phone's connection.
#include "command_line.h"

#include "VlCommon.h"
#include "VlSim.h"
#include "file_hash.h"
#include "frame/unique.h"
#include "text.h"
#include "text_message.h"

#include <stdexcept>

using namespace programs;
using namespace suite;

namespace {

// The first exception makes the runtime create a lock that it keeps.
const bool exceptions_are_warm = [] {
    try {
        throw std::length_error("");
    } catch (const std::length_error&) {
        return true;
    }
}();

constexpr wchar_t kWideText[] = L"See you at eight, Gr\u00FC\u00DFe";
const std::string kText = utf8(kWideText);
const std::string kGivenText = ansi(kWideText);  // command lines are started in the ANSI code page
constexpr char kNumber[] = "+49 30 1234567";
constexpr BtHandle kConnection = 77;

class TextMessages : public CommandLine {
protected:
    [[nodiscard]] std::string message_line() const {
        const VlSmsRecord record = to_record({phone(), kNumber, kText});
        return "message for device " + hex(phone()) + " sha256 " + sha256_of_bytes(&record, sizeof record);
    }
    void connect_phone() const {
        const std::string device = std::to_string(phone()), handle = std::to_string(kConnection);
        EXPECT_EQ(
            VlSim_Set("/connections",
                      ("[{\"handle\": " + handle + ", \"device\": " + device + ", \"role\": 1}]").c_str()),
            0u);
    }
};

void close_editor() {
    HWND window = FindWindowA(nullptr, kEditorTitle);
    ASSERT_NE(window, nullptr);
    PostMessageA(window, WM_CLOSE, 0, 0);
}

}  // namespace

TEST_F(TextMessages, ReachTheEditorAndItsPhonesConnectionIsUsedUntilItCloses) {
    ASSERT_EQ(VlSim_Patch(R"({"mobileActive": 1})"), 0u);
    connect_phone();
    const AgentProcess agent;
    const Json sent = ask({"sms", kPhoneName, kGivenText, "--to", kNumber});
    EXPECT_EQ(sent.at("status"), 0);
    EXPECT_EQ(sent.at("editor"), true);
    EXPECT_TRUE(logs(L"MAP_VlSMSEditor", message_line()));
    EXPECT_TRUE(logs(L"MAP_VlSMSEditor", std::string("to ") + kNumber + ": " + kText));
    const std::string connection = "phone connection " + hex(kConnection);
    EXPECT_TRUE(logs(L"VlTray", connection + " in use, 1 in use"));
    close_editor();
    EXPECT_TRUE(logs(L"VlTray", connection + " ended, 0 in use"));
    EXPECT_TRUE(logs(L"MAP_VlSMSEditor", "ended"));
}

TEST_F(TextMessages, ForAPhoneThatIsNotConnectedNeedNoAgent) {
    ASSERT_EQ(VlSim_Patch(R"({"mobileActive": 0})"), 0u);
    const Outcome sent = run({"sms", kPhoneName, kGivenText, "--to", kNumber});
    EXPECT_EQ(sent.exit_code, kYes) << sent.output;
    EXPECT_NE(sent.output.find("handed over"), std::string::npos) << sent.output;
    EXPECT_TRUE(logs(L"MAP_VlSMSEditor", message_line()));
    EXPECT_TRUE(logs(L"MAP_VlSMSEditor", "the phone is not connected"));
    EXPECT_EQ(process_of_window(kTrayTitle), 0u);
}

TEST_F(TextMessages, ForAPhoneWithoutMessagesOpenNoEditorWhileMobilesAreActive) {
    ASSERT_EQ(VlSim_Patch(R"({"mobileActive": 1})"), 0u);
    ASSERT_EQ(VlSim_Set("/devices/0/services", "[]"), 0u);
    const Json sent = ask({"sms", kPhoneName, kGivenText, "--to", kNumber}, kNo);
    EXPECT_EQ(sent.at("status"), 0);
    EXPECT_EQ(sent.at("editor"), false);
    EXPECT_EQ(process_of_window(kEditorTitle), 0u);
}

TEST_F(TextMessages, ThatArePendingRefuseTheNext) {
    const vl::UniqueHandle pending(
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 14096, "SHARE_MEM_SMSINFO"));
    const Json sent = ask({"sms", kPhoneName, kGivenText, "--to", kNumber}, kNo);
    EXPECT_EQ(sent.at("status"), VLCM_RESOURCE_FAILURE);
    EXPECT_EQ(sent.at("meaning"), "another hand-off is pending, or there is no memory");
}

TEST_F(TextMessages, TravelInTheirRecordWholeOrNotAtAll) {
    const TextMessage longest = {7, std::string(63, '1'), std::string(14023, 't')};
    const TextMessage back = from_record(to_record(longest));
    EXPECT_EQ(back.device, longest.device);
    EXPECT_EQ(back.number, longest.number);
    EXPECT_EQ(back.text, longest.text);
    EXPECT_THROW((void)to_record({7, std::string(64, '1'), ""}), std::length_error);
    EXPECT_THROW((void)to_record({7, "", std::string(14024, 't')}), std::length_error);
}

TEST_F(TextMessages, WhoseNumberIsTooLongAreRefused) {
    const Outcome sent = run({"sms", kPhoneName, kGivenText, "--to", std::string(64, '1')});
    EXPECT_EQ(sent.exit_code, kNo);
    EXPECT_NE(sent.output.find("longer than 63 bytes"), std::string::npos) << sent.output;
    EXPECT_EQ(process_of_window(kEditorTitle), 0u);
}
