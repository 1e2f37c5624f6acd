// Every call that can fail, failed once on each way: nothing is handed over, nothing is left.
#include "shell_scene.h"
#include "shortcuts/fake_link.h"

#include <shlobj.h>

using namespace shell_test;

namespace {

constexpr uint32_t kStackCode = 0x0555;

// A way to an item list.
struct Way {
    const char* label;
    std::function<size_t()> lists;                        // how many it gives, or hands over
    std::vector<std::pair<const char*, uint32_t>> needs;  // operations of the stack and their failing answers
    size_t allocations;                                   // of the library's own
    size_t joins;                                         // of item lists
};

class Failure : public ShellTest {
protected:
    Failure() {
        create_.answer([this](REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID* object) {
            link_.references = 1;
            link_.item_list = static_cast<LPITEMIDLIST>(CoTaskMemAlloc(kRoot.size()));
            memcpy(link_.item_list, kRoot.data(), kRoot.size());
            link_.item_list_result = S_OK;
            *object = static_cast<IShellLinkA*>(&link_);
            return S_OK;
        });
    }
    ~Failure() override { RegDeleteKeyA(HKEY_LOCAL_MACHINE, "Software\\VLShellFolderCache"); }

    static size_t given(LPITEMIDLIST list) { return taken(list).empty() ? 0 : 1; }
    size_t handed_by(void (*browse)(uint32_t)) {
        handed.clear();
        browse(kPhone);
        return handed.size();
    }

    const std::vector<std::pair<const char*, uint32_t>> file_needs = {
        {"Btsdk_GetRemoteDeviceProperty", kStackCode},
        {"Btsdk_GetShortCutByDeviceHandle", 0},
        {"Btsdk_GetShortCutProperty", kStackCode}};
    const std::vector<std::pair<const char*, uint32_t>> phone_needs = {
        {"Btsdk_GetRemoteDeviceProperty", kStackCode},
        {"Btsdk_GetRemoteDeviceClass", kStackCode},
        {"Btsdk_GetRemoteDeviceAddress", kStackCode}};
    const std::vector<std::pair<const char*, uint32_t>> own_needs = {
        {"Btsdk_GetRemoteDeviceAddress", kStackCode},
        {"Btsdk_GetRemoteDeviceHandle", 0},
        {"Btsdk_GetShortCutByDeviceHandle", 0},
        {"Btsdk_GetShortCutProperty", kStackCode}};
    const Way ways[5] = {
        {"files", [] { return given(VlCm_GetAbsoluteFTPSvcPidlOf(kPhone, as_list(kRoot))); }, file_needs, 2,
         2},
        {"phone folder", [] { return given(VlCm_GetAbsoluteMobileFolderPidlOf(kPhone, as_list(kRoot), 0)); },
         phone_needs, 2, 2},
        {"browse files", [this] { return handed_by(VlCm_BrowseFTPSvcFolderOf); }, file_needs, 2, 2},
        {"browse phone folder",
         [this] { return handed_by([](uint32_t device) { VlCm_BrowseMobileFolderOf(device, 0); }); },
         phone_needs, 2, 2},
        {"browse own folder", [this] { return handed_by(VlCm_BrowseFTPSvcFolderOfEx); }, own_needs, 2, 1},
    };

private:
    shortcuts_test::FakeLink link_;
    support::CallPatch<HRESULT(REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID*)> create_{"CoCreateInstance",
                                                                                     CoCreateInstance};
};

}  // namespace

TEST_F(Failure, OfAnyAnswerThatIsNeededGivesNothing) {
    support::for_each_row(ways, [](const Way& way) {
        EXPECT_EQ(way.lists(), 1U);
        for (const auto& [operation, answer] : way.needs) {
            VlSim_Fail(operation, 1, answer);
            EXPECT_EQ(way.lists(), 0U) << operation;
            VlSim_ClearFaults();
        }
        EXPECT_EQ(way.lists(), 1U);
    });
}

TEST_F(Failure, OfAnAnswerEndsTheQuestions) {
    support::for_each_row(ways, [](const Way& way) {
        for (const auto& [operation, answer] : way.needs) {
            support::clear_sdk_log();
            VlSim_Fail(operation, 1, answer);
            way.lists();
            VlSim_ClearFaults();
            EXPECT_EQ(support::sdk_operations().back(), operation);
        }
    });
}

TEST_F(Failure, OfTheFolderCacheGivesAListWithoutAClass) {
    const Way& way = ways[4];
    for (const char* operation : {"Btsdk_RegCreateKeyForX64Reg", "Btsdk_RegEnumValueForX64Reg"}) {
        VlSim_Fail(operation, 1, kStackCode);
        EXPECT_EQ(way.lists(), 1U) << operation;
        EXPECT_EQ(item_at(handed.at(0).list, 1),
                  (Bytes{20, 0, 0x2E, 0x80, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    }
}

TEST_F(Failure, ACacheThatDidNotOpenIsNeitherReadNorClosed) {
    support::CallPatch create("Btsdk_RegCreateKeyForX64Reg", Btsdk_RegCreateKeyForX64Reg);
    create.answer([](HKEY root, const char* key, HKEY* made) {
        EXPECT_EQ(root, HKEY_LOCAL_MACHINE);
        EXPECT_STREQ(key, "Software\\VLShellFolderCache");
        *made = reinterpret_cast<HKEY>(0x1234);  // rubbish beside a failure
        return kStackCode;
    });
    EXPECT_EQ(ways[4].lists(), 1U);
    EXPECT_TRUE(support::sdk_calls("Btsdk_RegEnumValueForX64Reg").empty());
    EXPECT_TRUE(support::sdk_calls("Btsdk_RegCloseKeyForX64Reg").empty());
}

TEST_F(Failure, OfAnyAllocationGivesNothing) {
    support::for_each_row(ways, [this](const Way& way) {
        blocks().fail_nth(0);
        const size_t before = blocks().allocations();
        EXPECT_EQ(way.lists(), 1U);
        EXPECT_EQ(blocks().allocations() - before, way.allocations);
        for (size_t n = 1; n <= way.allocations; ++n) {
            blocks().fail_nth(n);
            EXPECT_EQ(way.lists(), 0U) << n;
        }
        blocks().fail_nth(0);
    });
}

TEST_F(Failure, OfAllocationsIsNotTraced) {
    blocks().fail_from(1);
    for (const Way& way : ways) way.lists();
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(Failure, ToJoinListsGivesNothing) {
    support::for_each_row(ways, [](const Way& way) {
        for (size_t n = 1; n <= way.joins; ++n) {
            support::CallPatch join("ILCombine", ILCombine);
            join.fail_nth(n, LPITEMIDLIST{nullptr});
            EXPECT_EQ(way.lists(), 0U) << n;
            EXPECT_EQ(join.count(), n);
        }
    });
}

TEST_F(Failure, BlocksOfAnItemAre116Bytes) {
    support::CallPatch alloc("CoTaskMemAlloc", CoTaskMemAlloc);
    EXPECT_EQ(ways[0].lists(), 1U);
    EXPECT_EQ(ways[1].lists(), 1U);
    EXPECT_EQ(ways[4].lists(), 1U);
    const std::vector<std::tuple<SIZE_T>> expected = {{116}, {116}, {116}, {116}, {42}, {116}};
    EXPECT_EQ(alloc.calls(), expected);
}

TEST_F(Failure, OfTheHandOffLeavesNothing) {
    support::CallPatch created("CreateFileMappingA", CreateFileMappingA);
    support::CallPatch mapped("MapViewOfFile", MapViewOfFile);
    const Way browsing[] = {ways[2], ways[3], ways[4]};
    support::for_each_row(browsing, [&](const Way& way) {
        created.fail_nth(created.count() + 1, HANDLE{nullptr}, ERROR_ACCESS_DENIED);
        EXPECT_EQ(way.lists(), 0U);
        mapped.fail_nth(mapped.count() + 1, static_cast<void*>(nullptr), ERROR_ACCESS_DENIED);
        EXPECT_EQ(way.lists(), 0U);
    });
    EXPECT_EQ(support::trace_lines().size(), 6U);
    EXPECT_FALSE(section_exists());
}
