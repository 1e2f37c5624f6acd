// Files on their way from a sender through the library and the tray agent to the device's inbox.
#include "suite_programs.h"

#include "VlSim.h"
#include "event_log.h"
#include "file_hash.h"
#include "file_watch.h"
#include "frame/unique.h"
#include "send_list.h"
#include "text.h"

using namespace programs;
using namespace suite;

namespace {

using Names = std::vector<std::wstring>;

class Sending : public SuitePrograms {
protected:
    // Waits until the inbox holds exactly these files.
    [[nodiscard]] ::testing::AssertionResult inbox_holds(const Names& names) const {
        const std::wstring folder = inbox();
        if (wait_in_folder(folder, kDeadline_ms, [&] { return names_in(folder) == names; })) {
            return ::testing::AssertionSuccess();
        }
        auto failure = ::testing::AssertionFailure() << "the inbox holds";
        for (const std::wstring& name : names_in(folder)) failure << " [" << utf8(name) << "]";
        return failure;
    }
    [[nodiscard]] uint32_t send(const std::string& path, uint32_t service_class = kObjectPush) const {
        return VlCm_SendFilestoBtDevice(SendList(service_class, {path}).from(0), phone(), 0, 0);
    }
    // All that was relayed before is in the agent's log when this comes back.
    [[nodiscard]] ::testing::AssertionResult relayed_and_logged() {
        VlCm_PostMsg2Vltray(1, 1, ++marks_);
        return logs(L"VlTray", "relayed 0x00010001 parameter " + hex(static_cast<UINT_PTR>(marks_)));
    }
    [[nodiscard]] std::string arrived(const wchar_t* name) const {
        return content_of(inbox() + L"\\" + name);
    }

private:
    AgentProcess agent_;
    LPARAM marks_ = 0;
};

// All byte values, more than one block, no round size.
std::string binary_content() {
    std::string bytes;
    for (unsigned i = 0; i < 300001; ++i) bytes += static_cast<char>(i * 7 + i / 256);
    return bytes;
}

}  // namespace

TEST_F(Sending, DeliversAFileByteForByteByEveryWay) {
    const struct {
        const char* label;
        uint32_t service_class;
        const char* relayed;
        const char* taken;
        const wchar_t* name;
    } rows[] = {
        {"push", kObjectPush, "relayed 0x43020205 parameter ", "object push: took 1 record", L"1.bin"},
        {"ftp", kFileTransfer, "relayed 0x43050205 parameter ", "file transfer: took 1 record", L"2.bin"},
        {"print", kDirectPrinting, "relayed 0x42070205 parameter ", "direct printing: took 1 record",
         L"3.bin"},
    };
    const std::string content = binary_content();
    Names names;
    support::for_each_row(rows, [&](const auto& row) {
        const std::wstring source = make_file(row.name, content);
        EXPECT_EQ(send(utf8(source), row.service_class), 0u);
        names.push_back(row.name);
        EXPECT_TRUE(inbox_holds(names));
        EXPECT_TRUE(arrived(row.name) == content);
        EXPECT_TRUE(logs(L"VlTray", row.relayed + hex(phone())));
        EXPECT_TRUE(logs(L"VlTray", row.taken));
    });
}

TEST_F(Sending, OfAnotherServiceClassReachesNobody) {
    EXPECT_EQ(send(utf8(make_file(L"a.txt", "a")), 0x1101), 0u);
    EXPECT_TRUE(relayed_and_logged());
    EXPECT_TRUE(names_in(inbox()).empty());
}

TEST_F(Sending, NumbersNamesThatAreTaken) {
    const std::string path = utf8(make_file(L"letter.tar.gz", "one"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(send(path), 0u);
        EXPECT_TRUE(logs(L"VlTray", "object push: took 1 record", static_cast<size_t>(i) + 1));
    }
    EXPECT_TRUE(inbox_holds({L"letter.tar (2).gz", L"letter.tar (3).gz", L"letter.tar.gz"}));
    EXPECT_EQ(arrived(L"letter.tar (3).gz"), "one");
}

TEST_F(Sending, NumbersNamesWithoutExtensionAtTheirEnd) {
    const std::string path = utf8(make_file(L"README", "one"));
    EXPECT_EQ(send(path), 0u);
    EXPECT_TRUE(inbox_holds({L"README"}));
    EXPECT_EQ(send(path), 0u);
    EXPECT_TRUE(inbox_holds({L"README", L"README (2)"}));
}

TEST_F(Sending, ReportsASourceThatIsMissing) {
    const std::string path = utf8(work_folder() + L"\\gone.txt");
    EXPECT_EQ(send(path), 0u);
    EXPECT_TRUE(logs(L"VlTray", "failed " + path + ": no such file"));
    EXPECT_TRUE(names_in(inbox()).empty());  // no half-made file either
}

TEST_F(Sending, ReportsADeviceThatTheStackDoesNotKnow) {
    const std::string path = utf8(make_file(L"a.txt", "a"));
    const SendList list(kObjectPush, {path});
    EXPECT_EQ(VlCm_SendFilestoBtDevice(list.from(0), 0xBAD, 0, 0), 0u);
    EXPECT_TRUE(logs(L"VlTray", "failed " + path + ": no device 0x00000bad"));
}

TEST_F(Sending, RefusesPathsThatAreNotFull) {
    EXPECT_EQ(send("letter.txt"), 0u);
    EXPECT_TRUE(logs(L"VlTray", "failed letter.txt: not a full path"));
}

TEST_F(Sending, TakesNamesInUtf8) {
    const std::wstring name = L"Gr\u00FC\u00DFe \u660E\u65E5.txt";
    EXPECT_EQ(send(utf8(make_file(name, "hello"))), 0u);
    EXPECT_TRUE(inbox_holds({name}));
}

TEST_F(Sending, TakesNamesInTheAnsiCodePage) {
    const std::wstring name = L"caf\u00E9 \u00FC.txt";
    const std::string path = ansi(make_file(name, "hello"));
    if (GetACP() != CP_UTF8) ASSERT_FALSE(is_utf8(path));
    EXPECT_EQ(send(path), 0u);
    EXPECT_TRUE(inbox_holds({name}));
}

TEST_F(Sending, AListOfTwoArrivesShiftedFromTheSecondRecordOn) {
    const std::string first = utf8(make_file(L"a.txt", "a"));
    const std::string second = utf8(make_file(L"b.txt", "b"));
    const SendList list(kObjectPush, {first, second});
    EXPECT_EQ(VlCm_SendFilestoBtDevice(list.from(0), phone(), 0, 0), 0u);
    EXPECT_TRUE(inbox_holds({L"a.txt"}));
    EXPECT_TRUE(logs(L"VlTray", "object push: took 2 records"));
    EXPECT_TRUE(logs(L"VlTray", "failed " + second.substr(4) + ": not a full path"));
}

TEST_F(Sending, ContactsGoToThePhone) {
    const SendList list(kObjectPush, {utf8(make_file(L"anna.vcf", "BEGIN:VCARD"))});
    EXPECT_EQ(VlCm_SendContactsToMobilePhone(list.from(0), phone()), 0u);
    EXPECT_TRUE(inbox_holds({L"anna.vcf"}));
    EXPECT_TRUE(logs(L"VlTray", "relayed 0x60390206 parameter " + hex(phone())));
    EXPECT_TRUE(logs(L"VlTray", "contacts to phone: took 1 record"));
}

TEST_F(Sending, ContactsReachOutlookWithoutADevice) {
    VlOutlookContactRecord record = {};
    for (size_t i = 0; i < sizeof record.contact; ++i) record.contact[i] = static_cast<uint8_t>(i * 3);
    EXPECT_EQ(VlCm_SendContactsToOutLook(&record), 0u);
    EXPECT_TRUE(logs(L"VlTray", "relayed 0x42080205 parameter 0x00000000"));
    EXPECT_TRUE(logs(L"VlTray", "contacts to Outlook: took 1 record"));
    EXPECT_TRUE(logs(L"VlTray", "contact sha256 " + sha256_of_bytes(record.contact, sizeof record.contact)));
}

namespace {

// The image sender does not wait: its section outlives the call only as long as somebody holds it.
vl::UniqueHandle& held_section() {
    static vl::UniqueHandle section;
    return section;
}

uint32_t hold_section_and_relay(uint32_t message, uint32_t parameter) {
    held_section().reset(OpenFileMappingA(FILE_MAP_READ, FALSE, "SHARE_MEM_SENDIMAGE"));
    return Btsdk_PostMessageToCtrlCenter(message, parameter);
}

}  // namespace

TEST_F(Sending, ImagesReachTheAgentWhileTheirSectionLives) {
    VlSim_Hook("Btsdk_PostMessageToCtrlCenter", reinterpret_cast<void*>(hold_section_and_relay));
    const SendList list(kImagingResponder, {utf8(make_file(L"sea.jpg", "picture"))});
    EXPECT_EQ(VlCm_SendImagestoBtDevice(list.from(0), phone()), 0u);
    EXPECT_TRUE(logs(L"VlTray", "relayed 0x42020205 parameter " + hex(phone())));
    EXPECT_TRUE(logs(L"VlTray", "imaging: took 1 record"));
    EXPECT_TRUE(inbox_holds({L"sea.jpg"}));
    held_section().reset();
    VlSim_ClearFaults();
}

namespace {

// From the file's start-of-frame segment.
std::string jpeg_dimensions(const std::string& bytes) {
    const size_t frame = bytes.find("\xFF\xC0");
    if (frame == std::string::npos || frame + 9 > bytes.size()) return "no JPEG";
    const auto number = [&](size_t at) {
        return static_cast<unsigned char>(bytes[frame + at]) * 256 +
               static_cast<unsigned char>(bytes[frame + at + 1]);
    };
    return std::to_string(number(7)) + " x " + std::to_string(number(5));
}

}  // namespace

TEST_F(Sending, PicturesArriveTogetherWithAThumbnail) {
    VlSim_Hook("Btsdk_PostMessageToCtrlCenter", reinterpret_cast<void*>(hold_section_and_relay));
    const std::string picture = content_of(L"" PICTURES "plain.png");
    const SendList list(kImagingResponder, {utf8(make_file(L"sea.png", picture))});
    EXPECT_EQ(VlCm_SendImagestoBtDevice(list.from(0), phone()), 0u);
    EXPECT_TRUE(inbox_holds({L"sea.png", L"sea.png.thumb.jpg"}));
    const std::string arrived_as = utf8(inbox() + L"\\sea.png");
    EXPECT_TRUE(logs(L"VlTray", "picture " + arrived_as + ": PNG, 320 x 200 pixels, " +
                                    std::to_string(picture.size()) + " bytes"));
    EXPECT_TRUE(logs(L"VlTray", std::string("delivered ") + list.from(0)->path + " as " + arrived_as));
    EXPECT_TRUE(arrived(L"sea.png") == picture);
    EXPECT_EQ(jpeg_dimensions(arrived(L"sea.png.thumb.jpg")), "160 x 120");
    held_section().reset();
    VlSim_ClearFaults();
}

TEST_F(Sending, WhatIsNoPictureArrivesAlone) {
    VlSim_Hook("Btsdk_PostMessageToCtrlCenter", reinterpret_cast<void*>(hold_section_and_relay));
    const SendList list(kImagingResponder, {utf8(make_file(L"sea.jpg", "no picture"))});
    EXPECT_EQ(VlCm_SendImagestoBtDevice(list.from(0), phone()), 0u);
    EXPECT_TRUE(logs(L"VlTray", "no picture: " + utf8(inbox() + L"\\sea.jpg")));
    EXPECT_TRUE(logs(L"VlTray",
                     std::string("delivered ") + list.from(0)->path + " as " + utf8(inbox() + L"\\sea.jpg")));
    EXPECT_EQ(names_in(inbox()), Names{L"sea.jpg"});
    held_section().reset();
    VlSim_ClearFaults();
}

TEST_F(Sending, ARequestWithoutAListIsReported) {
    VlCm_PostMsg2Vltray(0x0205, 0x4302, static_cast<LPARAM>(phone()));
    EXPECT_TRUE(logs(L"VlTray", "object push: nothing to take"));
}

TEST_F(Sending, TheSendToolHandsOverOneFileAtATime) {
    const std::string first = utf8(make_file(L"a b.txt", "first"));
    const std::string second = utf8(make_file(L"c.txt", "second"));
    support::ChildProcess tool("Veltrin Quill.exe", {{"push", std::to_string(phone()), first, second}});
    EXPECT_EQ(tool.wait(), 0u);
    EXPECT_TRUE(inbox_holds({L"a b.txt", L"c.txt"}));
    EXPECT_EQ(count_lines(L"VlTray", "object push: took 1 record"), 2u);
    EXPECT_EQ(count_lines(L"VlTray", "object push: took 2 records"), 0u);
    EXPECT_EQ(arrived(L"c.txt"), "second");
}

TEST_F(Sending, OneFileAtATimeComesFromTheSendToolsNameAlone) {
    const struct {
        const char* label;
        const wchar_t* name;
        size_t lists_of_two;
    } rows[] = {
        {"the name in capitals", L"VELTRIN QUILL.EXE", 0},
        {"another name", L"Quill Copy.exe", 1},
    };
    const std::string first = utf8(make_file(L"a.txt", "a"));
    const std::string second = utf8(make_file(L"b.txt", "b"));
    support::for_each_row(rows, [&](const auto& row) {
        const std::wstring copy = work_folder() + L"\\" + row.name;
        ASSERT_TRUE(CopyFileW((program_folder() + L"\\Veltrin Quill.exe").c_str(), copy.c_str(), TRUE));
        support::ChildProcess tool(utf8(copy), {{"push", std::to_string(phone()), first, second}});
        EXPECT_EQ(tool.wait(), 0u);
        EXPECT_TRUE(relayed_and_logged());
        EXPECT_EQ(count_lines(L"VlTray", "object push: took 2 records"), row.lists_of_two);
    });
}
