// A contact on its way from a phone's details to a card, and with the tray agent to another phone.
#include "command_line.h"

#include "VlCommon.h"
#include "event_log.h"
#include "file_watch.h"
#include "send_list.h"
#include "text.h"

#include <filesystem>

using namespace programs;
using namespace suite;

namespace {

constexpr char kDetails[] = R"({
  "family": "王", "given": "芳", "department": "Sales", "company": "Acme",
  "phones": [{ "type": "cell", "number": "+86 138" }], "picture": "FF D8 FF"
})";
constexpr char kCard[] =
    "BEGIN:VCARD\r\nVERSION:2.1\r\nN;CHARSET=utf-8:王;芳\r\nFN;CHARSET=utf-8:王芳\r\n"
    "ORG;CHARSET=utf-8:Sales\r\nTEL;CELL;VOICE:+86 138\r\nEND:VCARD\r\n";

class ContactCommand : public CommandLine {
protected:
    [[nodiscard]] std::string details(const std::string& content = kDetails) const {
        return utf8(make_file(L"details.json", content));
    }
    [[nodiscard]] static std::wstring card() { return work_folder() + L"\\wang fang.vcf"; }
};

}  // namespace

TEST_F(ContactCommand, ExportsACard) {
    const Json facts = ask({"contact", "export", details(), utf8(card())});
    const Json expected = {
        {"name", "王 芳"}, {"file", utf8(card())}, {"bytes", sizeof kCard - 1}, {"named", true}};
    EXPECT_EQ(facts, expected);
    EXPECT_EQ(content_of(card()), kCard);
}

TEST_F(ContactCommand, ReplacesACard) {
    const std::string path = utf8(make_file(L"old.vcf", std::string(5000, 'x')));
    const Outcome told = run({"contact", "export", details(), path});
    EXPECT_EQ(told.exit_code, kYes) << told.output;
    EXPECT_NE(told.output.find("王 芳: " + path), std::string::npos) << told.output;
    EXPECT_EQ(content_of(wide(path)), kCard);
}

TEST_F(ContactCommand, WarnsOfACardWithoutAName) {
    const Outcome told = run({"contact", "export", details("{}"), utf8(card())});
    EXPECT_EQ(told.exit_code, kYes);
    EXPECT_NE(told.output.find("refuse a card without a name"), std::string::npos) << told.output;
    EXPECT_EQ(content_of(card()), "BEGIN:VCARD\r\nVERSION:2.1\r\nN;CHARSET=utf-8:END:VCARD\r\n");
}

TEST_F(ContactCommand, SaysWhyThereIsNoCard) {
    const std::string nowhere = utf8(work_folder()) + "\\no folder\\a.vcf";
    const struct {
        const char* label;
        std::string details, card;
        std::string why;
    } rows[] = {
        {"no details", "gone.json", utf8(card()), "no file \"gone.json\""},
        {"another format", details("BEGIN:VCARD"), utf8(card()), "does not understand"},
        {"no folder", utf8(make_file(L"good.json", kDetails)), nowhere, "cannot write \"" + nowhere},
    };
    support::for_each_row(rows, [](const auto& row) {
        const Outcome told = run({"contact", "export", row.details, row.card});
        EXPECT_EQ(told.exit_code, kNo);
        EXPECT_NE(told.output.find(row.why), std::string::npos) << told.output;
        EXPECT_FALSE(std::filesystem::exists(wide(row.card)));
    });
}

TEST_F(ContactCommand, KeepsTheOldCardWhenThereIsNoRoomForANewOne) {
    const std::string path = utf8(make_file(L"old.vcf", "old"));
    const std::string nowhere = utf8(work_folder()) + "\\no folder";
    support::ChildProcess program("vlcm.exe", {.arguments = {"contact", "export", details(), path},
                                               .environment = {{"TMP", nowhere}, {"TEMP", nowhere}}});
    EXPECT_EQ(program.wait(), kNo);
    EXPECT_NE(program.output().find("folder for temporary files"), std::string::npos) << program.output();
    EXPECT_EQ(content_of(wide(path)), "old");
}

TEST_F(ContactCommand, RefusesWrongUsage) {
    EXPECT_EQ(run({"contact"}).exit_code, kUsage);
    EXPECT_EQ(run({"contact", "export", "one"}).exit_code, kUsage);
}

TEST_F(ContactCommand, CardReachesAPhoneThroughTheTrayAgent) {
    const std::string path = utf8(card());
    ASSERT_EQ(run({"contact", "export", details(), path}).exit_code, kYes);
    const AgentProcess agent;
    const SendList list(kObjectPush, {path});
    EXPECT_EQ(VlCm_SendContactsToMobilePhone(list.from(0), phone()), 0u);
    EXPECT_TRUE(logs(L"VlTray", "contacts to phone: took 1 record"));
    const std::wstring arrived = inbox() + L"\\wang fang.vcf";
    EXPECT_TRUE(wait_in_folder(inbox(), kDeadline_ms, [&] { return content_of(arrived) == kCard; }));
}
