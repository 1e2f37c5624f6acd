// Every call of the export that can fail, failed once.
#include "card_test.h"

#include "VlSDK.h"
#include "VlSim.h"
#include "support/sdk_log.h"
#include "vlcm/companions.h"

#include <algorithm>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

constexpr size_t kBlocksOfARecord = 14;

class CardFailure : public CardTest {
protected:
    CardFailure() {
        fill_by([](VlContact& contact) {
            put_names(contact, "Wang", "Fang", "");
            put(contact.organisation->title, "Boss");
            contact.blob->block = Vlcm_SHAlloc(100);
        });
    }
    Lines lines_ = {"BEGIN:VCARD\r\nVERSION:2.1\r\n", "N;CHARSET=utf-8:Wang;Fang\r\n",
                    "FN;CHARSET=utf-8:WangFang\r\n", "TITLE;CHARSET=utf-8:Boss\r\n", "END:VCARD\r\n"};
};

}  // namespace

TEST_F(CardFailure, NoMemoryForTheContactIsZeroAndMakesNoFile) {
    for (size_t nth = 1; nth <= kBlocksOfARecord; ++nth) {
        blocks().fail_nth(nth);
        EXPECT_EQ(export_card(), 0u) << nth;
        EXPECT_EQ(file(), std::nullopt) << nth;
    }
    EXPECT_EQ(support::sdk_operations(), Lines());
}

TEST_F(CardFailure, NoMemoryForThePhonesRecordIsZeroAndLeavesAnEmptyFile) {
    for (size_t nth = kBlocksOfARecord + 1; nth <= 2 * kBlocksOfARecord; ++nth) {
        support::write_file(path(), "old");
        support::clear_sdk_log();
        blocks().fail_nth(nth);
        EXPECT_EQ(export_card(), 0u) << nth;
        EXPECT_EQ(file(), "") << nth;
        EXPECT_EQ(support::sdk_operations(), (Lines{"Btsdk_CreateFile", "Btsdk_CloseHandle"})) << nth;
    }
}

TEST_F(CardFailure, ExportTakesNoMoreMemoryThanTwoRecords) {
    fill_by({});
    EXPECT_EQ(export_card(), 1u);
    EXPECT_EQ(blocks().allocations(), 2 * kBlocksOfARecord);
}

TEST_F(CardFailure, FileThatCannotBeMadeIsOneAllTheSame) {
    VlSim_Fail("Btsdk_CreateFile", 1, 0xFFFFFFFF);
    EXPECT_EQ(export_card(), 1u);
    EXPECT_EQ(support::sdk_operations(), Lines{"Btsdk_CreateFile"});
    EXPECT_EQ(VlCm_ConvertMBContactToVcfFile("details", "C:\\no such folder\\a.vcf"), 1u);
    EXPECT_EQ(VlCm_ConvertMBContactToVcfFile("details", ""), 1u);
    EXPECT_EQ(support::sdk_calls("Btsdk_WriteFile"), Lines());
}

TEST_F(CardFailure, NullHandleIsAFileLikeAnyOther) {
    support::CallPatch creating("Btsdk_CreateFile", Btsdk_CreateFile);
    creating.answer([](auto...) { return static_cast<HANDLE>(nullptr); });
    support::CallPatch writing("Btsdk_WriteFile", Btsdk_WriteFile);
    writing.answer([](HANDLE file, auto...) {
        EXPECT_EQ(file, nullptr);
        return TRUE;
    });
    support::CallPatch closing("Btsdk_CloseHandle", Btsdk_CloseHandle);
    closing.answer([](HANDLE file) {
        EXPECT_EQ(file, nullptr);
        return TRUE;
    });
    EXPECT_EQ(export_card(), 1u);
    EXPECT_EQ(writing.count(), lines_.size());
    EXPECT_EQ(closing.count(), 1u);
}

TEST_F(CardFailure, DetailsThatAreNotUnderstoodMakeAnEmptyCard) {
    support::CallPatch parsing("Btsdk_PIMParseContactDetails2", Btsdk_PIMParseContactDetails2);
    parsing.fail_nth(1, 0x0404);
    EXPECT_EQ(export_card(), 1u);
    EXPECT_EQ(file(), nameless_card(""));
}

TEST_F(CardFailure, ParsersAnswerIsNotTested) {
    support::CallPatch parsing("Btsdk_PIMParseContactDetails2", Btsdk_PIMParseContactDetails2);
    parsing.answer([](const void*, void* contact) {
        put_names(*static_cast<VlContact*>(contact), "Li", "", "");
        return 0x0404U;
    });
    EXPECT_EQ(export_card(), 1u);
    EXPECT_EQ(file(), whole_card("N;CHARSET=utf-8:Li\r\nFN;CHARSET=utf-8:Li\r\n"));
}

TEST_F(CardFailure, LineThatCannotBeWrittenIsPassedOver) {
    for (size_t nth = 1; nth <= lines_.size(); ++nth) {
        VlSim_Fail("Btsdk_WriteFile", static_cast<uint32_t>(nth), FALSE);
        EXPECT_EQ(export_card(), 1u) << nth;
        std::string expected;
        for (size_t i = 0; i < lines_.size(); ++i) {
            if (i + 1 != nth) expected += lines_[i];
        }
        EXPECT_EQ(file(), expected) << nth;
    }
}

TEST_F(CardFailure, FileThatCannotBeClosedIsOneAllTheSame) {
    support::CallPatch closing("Btsdk_CloseHandle", Btsdk_CloseHandle);
    closing.answer([&](HANDLE file) {
        closing.real(file);
        return FALSE;
    });
    EXPECT_EQ(export_card(), 1u);
    EXPECT_EQ(closing.count(), 1u);
}
