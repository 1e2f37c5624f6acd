#include "floor/floor.h"
#include "rows.h"
#include "vlcm/companions.h"
#include "vlcm/shell_items.h"

#include "VlSim.h"

#include <string.h>

namespace bench {
namespace {

constexpr double kTarget = 1.05;
constexpr uint32_t kDevice = 1;

// A phone with file transfer.
constexpr char kScenario[] = R"({"ready": true,
    "devices": [{"handle": 1, "address": "11:22:33:44:55:66", "name": "Phone", "class": "0x5A020C",
                 "services": [{"handle": 1, "class": "0x1106", "name": "OBEX File Transfer"}]}],
    "shortcuts": [{"handle": 1, "device": 1, "service": 1}]})";

// My Computer stands for the root of the namespace.
constexpr uint8_t kRoot[] = {20,   0,    0x1F, 0x50, 0xE0, 0x4F, 0xD0, 0x20, 0xEA, 0x3A, 0x69,
                             0x10, 0xA2, 0xD8, 0x08, 0x00, 0x2B, 0x30, 0x30, 0x9D, 0,    0};
constexpr size_t kListSize = sizeof kRoot + 2 * offsetof(VlShellItem, terminator);

LPCITEMIDLIST root() { return reinterpret_cast<LPCITEMIDLIST>(kRoot); }

class ItemLists {
public:
    explicit ItemLists(const Suite& suite)
        : suite_(suite),
          load_(BENCH_FUNCTION(suite.sdk, VlSim_LoadScenario)),
          free_(BENCH_FUNCTION(suite.library, Vlcm_SHFree)),
          free_by_floor_(BENCH_FUNCTION(suite.floor, Floor_FreeItemList)) {}

    // floor() and library() make the same list.
    template <typename Floor, typename Library>
    [[nodiscard]] Row row(const char* name, uint64_t platform_calls, Floor floor, Library library) const {
        const auto release = free_;
        const auto release_by_floor = free_by_floor_;
        return {.name = name,
                .floor_text = "the stack's records, two items filled in, joined to the root twice",
                .target = kTarget,
                .floor = calling(suite_.floor.handle(), timed([=] { release_by_floor(floor()); })),
                .library = calling(suite_.library.handle(), timed([=] { release(library()); })),
                .allowance = {.platform_calls = platform_calls, .allocations = 2},
                .prepare = [load = load_] { load(kScenario); },
                .agree =
                    [=] {
                        LPITEMIDLIST expected = floor();
                        LPITEMIDLIST made = library();
                        const bool same =
                            expected != nullptr && made != nullptr && memcmp(expected, made, kListSize) == 0;
                        release_by_floor(expected);
                        release(made);
                        return same;
                    }};
    }

private:
    const Suite& suite_;
    decltype(&VlSim_LoadScenario) load_;
    decltype(&Vlcm_SHFree) free_;
    decltype(&Floor_FreeItemList) free_by_floor_;
};

}  // namespace

std::vector<Row> item_rows(const Suite& suite) {
    const ItemLists lists(suite);
    const auto files = [](auto function) { return [function] { return function(kDevice, root()); }; };
    const auto folder = [](auto function) {
        return [function] { return function(kDevice, root(), VLCM_PHONE_FOLDER_PHONEBOOK); };
    };
    // Three questions to the stack, two items, two joins; three lists given back without touching the last
    // error, and the result.
    constexpr uint64_t kCalls = 3 + 2 + 2 + 3 * 3 + 1;
    constexpr uint64_t kScope = 2;
    return {
        lists.row("item list of file transfer", kCalls,
                  files(BENCH_FUNCTION(suite.floor, Floor_FilesItemList)),
                  files(BENCH_FUNCTION(suite.library, VlCm_GetAbsoluteFTPSvcPidlOf))),
        lists.row("item list of a phone folder", kCalls + kScope,
                  folder(BENCH_FUNCTION(suite.floor, Floor_PhoneFolderItemList)),
                  folder(BENCH_FUNCTION(suite.library, VlCm_GetAbsoluteMobileFolderPidlOf))),
    };
}

}  // namespace bench
