// vlcm item: what it tells of a list is compared with the list's bytes.
#include "command_line.h"
#include "shell_link.h"

#include "VlSim.h"
#include "devices.h"
#include "item_list.h"
#include "text.h"

using namespace programs;
using namespace suite;

namespace {

class VlcmItem : public CommandLine {
protected:
    static void SetUpTestSuite() { warm_up_links(); }

    VlcmItem() {
        for (const Service& service : services_of(phone())) {
            BtHandle made = 0;
            EXPECT_EQ(VlCm_CreateShortCut(phone(), service.handle, &made), 0u);
        }
    }
    // The file transfer of the phone, below My Computer.
    [[nodiscard]] Bytes files_list() const {
        LPITEMIDLIST list =
            VlCm_GetAbsoluteFTPSvcPidlOf(phone(), reinterpret_cast<LPCITEMIDLIST>(kMyComputer.data()));
        const auto* const first = reinterpret_cast<const uint8_t*>(list);
        Bytes bytes(first, first + kMyComputer.size() + 114 + 114);
        Vlcm_SHFree(list);
        return bytes;
    }
};

const Json kDevice = {
    {"kind", "device"},         {"type", "0x40000012"},           {"deviceClass", "0x5a020c"},
    {"serviceClass", "0x0000"}, {"address", "00:11:22:33:44:55"}, {"serviceName", ""}};
const Json kFiles = {
    {"kind", "files"},          {"type", "0xc0000302"},           {"deviceClass", "0x5a020c"},
    {"serviceClass", "0x1106"}, {"address", "00:11:22:33:44:55"}, {"serviceName", "Files"}};

// Each expected member is there with its value.
void expect_members(const Json& facts, const Json& expected) {
    for (const auto& [member, value] : expected.items()) EXPECT_EQ(facts.at(member), value) << member;
}

}  // namespace

TEST_F(VlcmItem, TellsEveryItemOfAFileOfItsBytes) {
    const Bytes list = files_list();
    const std::wstring path = make_file(L"list \u00FC.bin", std::string(list.begin(), list.end()));
    const Json facts = ask({"item", "show", ansi(path)});
    EXPECT_EQ(facts.at("size"), list.size());
    EXPECT_EQ(facts.at("terminated"), true);
    const Json& items = facts.at("items");
    ASSERT_EQ(items.size(), 3u);
    expect_members(
        items[0],
        {{"kind", "shell class"}, {"size", 20}, {"class", "{20D04FE0-3AEA-1069-A2D8-08002B30309D}"}});
    expect_members(items[1], kDevice);
    expect_members(items[2], kFiles);
    EXPECT_EQ(items[2].at("bytes"), hex_digits({list.end() - 116, list.end() - 2}));
}

TEST_F(VlcmItem, TellsHexadecimalDigitsForPeople) {
    const Outcome told = run({"item", "show", hex_digits(files_list())});
    EXPECT_EQ(told.exit_code, kYes);
    const char* const kLines[] = {
        "shell class {20D04FE0-3AEA-1069-A2D8-08002B30309D}",
        "device 0x40000012 00:11:22:33:44:55 class 0x5a020c",
        "files 0xc0000302 00:11:22:33:44:55 class 0x5a020c service 0x1106 \"Files\""};
    for (const char* line : kLines) EXPECT_NE(told.output.find(line), std::string::npos) << told.output;
}

TEST_F(VlcmItem, TellsThePlacesOfADeviceAsTheLibraryBuildsThem) {
    const struct {
        const char* label;
        Json last;
    } rows[] = {
        {"files", kFiles},
        {"phonebook", {{"kind", "phonebook folder"}, {"type", "0xc0080002"}}},
        {"messages", {{"kind", "message folder"}, {"type", "0xc1000002"}}},
    };
    support::for_each_row(rows, [](const auto& row) {
        const Json facts = ask({"item", "show", "--of", kPhoneName, "--place", row.label});
        ASSERT_EQ(facts.at("items").size(), 2u);
        expect_members(facts.at("items")[0], kDevice);
        expect_members(facts.at("items")[1], row.last);
    });
}

TEST_F(VlcmItem, ReadsTheTargetOfAShellLink) {
    const std::wstring path = work_folder() + L"\\root.lnk";
    make_link(path, kMyComputer);
    const Json facts = ask({"item", "show", ansi(path)});
    ASSERT_EQ(facts.at("items").size(), 1u);
    expect_members(facts.at("items")[0], {{"class", "{20D04FE0-3AEA-1069-A2D8-08002B30309D}"}});
}

TEST_F(VlcmItem, TellsOnlyTheSizeOfItemsOfOthers) {
    Bytes suite = files_list();
    suite.erase(suite.begin(), suite.begin() + 20);  // behind My Computer
    suite[6] ^= 1;                                   // signature
    Bytes shell = kMyComputer;
    shell[2] = 0x31;  // an item of a file, not of a class
    EXPECT_EQ(ask({"item", "show", hex_digits(suite)}).at("items")[0].at("text"), "another's, 114 bytes");
    EXPECT_EQ(ask({"item", "show", hex_digits(suite)}).at("items")[1].at("kind"), "files");
    EXPECT_EQ(ask({"item", "show", hex_digits(shell)}).at("items")[0].at("text"), "another's, 20 bytes");
}

TEST_F(VlcmItem, SaysNoToABrokenListAndTellsWhatItCan) {
    const struct {
        const char* label;
        std::string digits;
        size_t items;
    } rows[] = {
        {"no terminator", "0400aabb", 1},       {"cut inside an item", "0400aabb0900cc", 1},
        {"an item of one byte", "0100", 0},     {"one byte", "04", 0},
        {"half a terminator", "0400aabb00", 1},
    };
    support::for_each_row(rows, [](const auto& row) {
        const Json facts = ask({"item", "show", row.digits}, kNo);
        EXPECT_EQ(facts.at("terminated"), false);
        EXPECT_EQ(facts.at("items").size(), row.items);
    });
    EXPECT_NE(run({"item", "show", "0400aabb"}).output.find("the list is broken here"), std::string::npos);
}

TEST_F(VlcmItem, SaysNoWhenThereIsNothingToShow) {
    EXPECT_NE(run({"item", "show", "no such file"}).output.find("neither a file nor hexadecimal digits"),
              std::string::npos);
    EXPECT_EQ(run({"item", "show", "abc"}).exit_code, kNo);
    EXPECT_EQ(run({"item", "show", "--of", "nobody"}).exit_code, kNo);
    EXPECT_EQ(VlSim_Patch(R"({"shortcuts": []})"), 0u);
    const Outcome none = run({"item", "show", "--of", kPhoneName});
    EXPECT_EQ(none.exit_code, kNo);
    EXPECT_NE(none.output.find("no item list"), std::string::npos);
}

TEST_F(VlcmItem, NeedsExactlyOneList) {
    EXPECT_EQ(run({"item", "show"}).exit_code, kUsage);
    EXPECT_EQ(run({"item", "show", "0000", "--of", kPhoneName}).exit_code, kUsage);
    EXPECT_EQ(run({"item", "show", "--of", kPhoneName, "--place", "attic"}).exit_code, kUsage);
    EXPECT_EQ(run({"item"}).exit_code, kUsage);
}
