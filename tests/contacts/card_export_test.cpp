// The export as a whole: its road through the stack, and who owns the inner block on it.
#include "card_test.h"

#include "VlSDK.h"
#include "VlSim.h"
#include "support/sdk_log.h"
#include "support/trace_log.h"
#include "vlcm/companions.h"

#include <objbase.h>

#include <algorithm>
#include <tuple>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

class CardExport : public CardTest {};

void fill_some(VlContact& contact) {
    put_names(contact, "Wang", "Fang", "");
    put_phone(contact, 0, VLCM_PHONE_CELL, "1");
}
const Lines kSomeLines = {"BEGIN:VCARD\r\nVERSION:2.1\r\n", "N;CHARSET=utf-8:Wang;Fang\r\n",
                          "FN;CHARSET=utf-8:WangFang\r\n", "TEL;CELL;VOICE:1\r\n", "END:VCARD\r\n"};

std::string joined(const Lines& lines) {
    std::string text;
    for (const std::string& line : lines) text += line;
    return text;
}

// One write and the bytes that it was given.
class WritePatch {
public:
    WritePatch() {
        patch_.answer(
            [this](HANDLE file, const void* data, uint32_t size, uint32_t* written, void* overlapped) {
                EXPECT_NE(written, nullptr);
                EXPECT_EQ(overlapped, nullptr);
                lines_.emplace_back(static_cast<const char*>(data), size);
                return patch_.real(file, data, size, written, overlapped);
            });
    }
    [[nodiscard]] const Lines& lines() const { return lines_; }

private:
    support::CallPatch<BOOL(HANDLE, const void*, uint32_t, uint32_t*, void*)> patch_{"Btsdk_WriteFile",
                                                                                     Btsdk_WriteFile};
    Lines lines_;
};

}  // namespace

TEST_F(CardExport, MakesTheFileAnewWithTheStatedArguments) {
    support::CallPatch creating("Btsdk_CreateFile", Btsdk_CreateFile);
    fill_by(fill_some);
    EXPECT_EQ(export_card(), 1u);
    ASSERT_EQ(creating.count(), 1u);
    const auto [path_given, access, disposition, attributes, pattern] = creating.calls()[0];
    EXPECT_EQ(path_given, path().c_str());
    EXPECT_EQ(access, GENERIC_WRITE);
    EXPECT_EQ(disposition, 2u);
    EXPECT_EQ(attributes, static_cast<uint32_t>(FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(pattern, nullptr);
}

TEST_F(CardExport, WritesLineByLineAndClosesTheFile) {
    WritePatch writing;
    fill_by(fill_some);
    EXPECT_EQ(export_card(), 1u);
    EXPECT_EQ(writing.lines(), kSomeLines);
    EXPECT_EQ(file(), joined(kSomeLines));
    const Lines operations = {"Btsdk_CreateFile", "Btsdk_WriteFile", "Btsdk_WriteFile",  "Btsdk_WriteFile",
                              "Btsdk_WriteFile",  "Btsdk_WriteFile", "Btsdk_CloseHandle"};
    EXPECT_EQ(support::sdk_operations(), operations);
}

TEST_F(CardExport, CreatesTheFileBeforeItReadsTheDetails) {
    bool there = false;
    fill_by([&](VlContact&) { there = file().has_value(); });
    EXPECT_EQ(export_card(), 1u);
    EXPECT_TRUE(there);
}

TEST_F(CardExport, ReplacesALongerFile) {
    support::write_file(path(), std::string(5000, 'x'));
    fill_by(fill_some);
    EXPECT_EQ(export_card(), 1u);
    EXPECT_EQ(file(), joined(kSomeLines));
}

TEST_F(CardExport, GivesTheDetailsToTheStackWithAFreshRecord) {
    char details[] = "details";
    support::CallPatch parsing("Btsdk_PIMParseContactDetails2", Btsdk_PIMParseContactDetails2);
    parsing.answer([](const void*, void* record) {
        const auto* contact = static_cast<const VlContact*>(record);
        EXPECT_EQ(contact->size, 1296u);
        EXPECT_EQ(*contact->phoneCapacity, 10u);
        EXPECT_EQ(contact->name->family[0], 0);
        EXPECT_EQ(contact->blob->block, nullptr);
        return 0U;
    });
    EXPECT_EQ(VlCm_ConvertMBContactToVcfFile(details, path().c_str()), 1u);
    ASSERT_EQ(parsing.count(), 1u);
    EXPECT_EQ(std::get<0>(parsing.calls()[0]), details);
}

TEST_F(CardExport, FreesTheInnerBlockOnceBeforeItWrites) {
    void* block = nullptr;
    fill_by([&](VlContact& contact) { block = contact.blob->block = Vlcm_SHAlloc(100); });
    support::CallPatch freeing("CoTaskMemFree", CoTaskMemFree);
    size_t times = 0;
    freeing.answer([&](void* freed) {
        if (freed == block) {
            ++times;
            EXPECT_EQ(VlSim_CallCount("Btsdk_WriteFile"), 0u);
        }
        if (freed != block || times == 1) freeing.real(freed);
    });
    EXPECT_EQ(export_card(), 1u);
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(times, 1u);
}

TEST_F(CardExport, OpensNoScopeAndWritesNoLine) {
    fill_by(fill_some);
    EXPECT_EQ(export_card(), 1u);
    EXPECT_EQ(VlCm_ConvertMBContactToVcfFile(nullptr, path().c_str()), 0u);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(CardExport, RefusesNullAndAsksNothing) {
    EXPECT_EQ(VlCm_ConvertMBContactToVcfFile(nullptr, path().c_str()), 0u);
    EXPECT_EQ(VlCm_ConvertMBContactToVcfFile("details", nullptr), 0u);
    EXPECT_EQ(VlCm_ConvertMBContactToVcfFile(nullptr, nullptr), 0u);
    EXPECT_EQ(support::sdk_operations(), Lines());
    EXPECT_EQ(blocks().allocations(), 0u);
    EXPECT_EQ(file(), std::nullopt);
}
