#include "VlSDK.h"
#include "floor/floor.h"
#include "patched_imports.h"
#include "rows.h"
#include "vlcm/handoff.h"

#include <string.h>

#include <memory>

namespace bench {
namespace {

constexpr double kCallTarget = 1.05;
constexpr double kCopyTarget = 1 / 0.9;
constexpr size_t kStride = sizeof(VlSendRecord) + 4;  // of a receiver
constexpr uint32_t kWaitingFrom64Bit = 0x10000001;
constexpr uint32_t kTaken = 2;

struct Header {
    uint32_t state;
    uint32_t total_size;
    uint32_t count;
};

// The same records twice: one by one from the heap and linked, as programs build a list, and side by
// side for the floor.
class Records {
public:
    explicit Records(uint32_t count) : adjacent_(count) {
        for (VlSendRecord& record : adjacent_) {
            memset(&record, 'r', sizeof record);
            record.serviceClass = 0x1101;  // a class without a message to the tray agent
            record.next = nullptr;
            linked_.push_back(std::make_unique<VlSendRecord>(record));
            if (linked_.size() > 1) linked_[linked_.size() - 2]->next = linked_.back().get();
        }
    }
    [[nodiscard]] uint32_t count() const { return static_cast<uint32_t>(adjacent_.size()); }
    [[nodiscard]] const std::vector<VlSendRecord>& adjacent() const { return adjacent_; }
    [[nodiscard]] const VlSendRecord* list() const { return linked_.front().get(); }
    // The adjacent ones as a list.
    [[nodiscard]] const VlSendRecord* adjacent_list() {
        for (size_t i = 1; i < adjacent_.size(); ++i) adjacent_[i - 1].next = &adjacent_[i];
        return adjacent_.data();
    }

private:
    std::vector<VlSendRecord> adjacent_;
    std::vector<std::unique_ptr<VlSendRecord>> linked_;
};

// The waiting is taken out of a hand-off: in the library, Sleep does at once what a receiver does
// within the time. Everything else is the library's own.
class AnsweredWait : public PatchedImports {
public:
    explicit AnsweredWait(HMODULE library) : PatchedImports(library) {
        replace("MapViewOfFile", map_view);
        replace("Sleep", take);
    }

private:
    static void* WINAPI map_view(HANDLE section, DWORD access, DWORD high, DWORD low, SIZE_T size) {
        view() = MapViewOfFile(section, access, high, low, size);
        return view();
    }
    static void WINAPI take(DWORD /*milliseconds*/) { *static_cast<volatile uint32_t*>(view()) = kTaken; }
    static void*& view() {
        static void* last = nullptr;
        return last;
    }
};

// A list that waits to be taken, wide enough for a receiver's stride.
class PendingList {
public:
    explicit PendingList(const std::vector<VlSendRecord>& records) {
        const auto count = static_cast<uint32_t>(records.size());
        const auto size = static_cast<uint32_t>(sizeof(Header) + count * kStride);
        section_ =
            CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, size, "SHARE_MEM_SENDFILE");
        header_ = static_cast<Header*>(MapViewOfFile(section_, FILE_MAP_WRITE, 0, 0, 0));
        if (header_ == nullptr) throw std::runtime_error("no memory for a list");
        *header_ = {kWaitingFrom64Bit, size, count};
        auto out = reinterpret_cast<char*>(header_ + 1);
        for (const VlSendRecord& record : records) {
            memcpy(out, &record, sizeof record);
            out += kStride;
        }
    }
    ~PendingList() {
        UnmapViewOfFile(header_);
        CloseHandle(section_);
    }
    PendingList(const PendingList&) = delete;
    PendingList& operator=(const PendingList&) = delete;

    void offer() { header_->state = kWaitingFrom64Bit; }

private:
    HANDLE section_ = nullptr;
    Header* header_ = nullptr;
};

struct Sending {
    const char* name;
    double target;
    bool adjacent;  // records that lie side by side
};

using SharedRecords = std::shared_ptr<Records>;

Row send_row(const Suite& suite, const SharedRecords& records, const Sending& sending) {
    const uint32_t count = records->count();
    const VlSendRecord* list = sending.adjacent ? records->adjacent_list() : records->list();
    const auto floor = BENCH_FUNCTION(suite.floor, Floor_SendFiles);
    const auto library = BENCH_FUNCTION(suite.library, VlCm_SendFilestoBtDevice);
    const HMODULE patched = suite.library.handle();
    const auto by_floor = [=] { return floor(records->adjacent().data(), count); };
    const auto by_library = [=] { return library(list, 0, 0, 0); };
    const Body library_body = timed([=] { keep(by_library()); });
    return {.name = sending.name,
            .floor_text = "the same platform calls, one memcpy into a fresh section",
            .target = sending.target,
            .floor = calling(suite.floor.handle(), timed([=] { keep(by_floor()); })),
            .library = {[=](size_t calls) {
                            const AnsweredWait wait(patched);
                            return library_body(calls);
                        },
                        [=] {
                            const AnsweredWait wait(patched);
                            return calling(patched, library_body).count();
                        }},
            .allowance = {.platform_calls = 13, .bytes_copied = count * sizeof(VlSendRecord)},
            .agree =
                [=] {
                    const AnsweredWait wait(patched);
                    return by_floor() == VLCM_OK && by_library() == VLCM_OK;
                },
            .series = sending.adjacent ? "" : "hand over",
            .records = count};
}

// Takes a list and gives its memory back.
class Receiver {
public:
    using Get = VlSendRecord* (*)();
    using Free = void (*)(void*);

    Receiver(const Suite& suite, Get get) : get_(get), free_(BENCH_FUNCTION(suite.sdk, Btsdk_FreeMemory)) {}

    void take_and_free() const { free_list(get_()); }
    [[nodiscard]] std::vector<std::string> take_texts() const {
        std::vector<std::string> texts;
        VlSendRecord* first = get_();
        for (const VlSendRecord* record = first; record != nullptr; record = record->next) {
            texts.emplace_back(reinterpret_cast<const char*>(record), offsetof(VlSendRecord, next));
        }
        free_list(first);
        return texts;
    }

private:
    void free_list(VlSendRecord* record) const {
        while (record != nullptr) {
            VlSendRecord* next = record->next;
            free_(record);
            record = next;
        }
    }

    Get get_;
    Free free_;
};

Row receive_row(const Suite& suite, const SharedRecords& records, const char* name, double target) {
    const uint32_t count = records->count();
    const Receiver floor(suite, BENCH_FUNCTION(suite.floor, Floor_GetFiles));
    const Receiver library(suite, BENCH_FUNCTION(suite.library, VlCm_GetFilePathInfo));
    const auto taking = [=](const Receiver& receiver) {
        return [=](size_t calls) {
            PendingList list(records->adjacent());
            return timed([&] {
                list.offer();
                receiver.take_and_free();
            })(calls);
        };
    };
    return {.name = name,
            .floor_text = "section and view; per record one block, one memcpy, one release",
            .target = target,
            .floor = calling(suite.floor.handle(), taking(floor)),
            .library = calling(suite.library.handle(), taking(library)),
            .allowance = {.platform_calls = 9 + count,
                          .allocations = count,
                          .bytes_copied = count * sizeof(VlSendRecord)},
            .agree =
                [=] {
                    PendingList list(records->adjacent());
                    const auto expected = floor.take_texts();
                    list.offer();
                    return expected.size() == count && library.take_texts() == expected;
                },
            .series = "take",
            .records = count};
}

}  // namespace

std::vector<Row> handoff_rows(const Suite& suite) {
    const auto one = std::make_shared<Records>(1);
    const auto some = std::make_shared<Records>(1'000);
    const auto many = std::make_shared<Records>(50'000);
    return {
        send_row(suite, one, {"hand over 1 record", kCallTarget, false}),
        send_row(suite, some, {"hand over 1,000 records", kCopyTarget, false}),
        send_row(suite, many, {"hand over 50,000 records", kCopyTarget, false}),
        send_row(suite, many, {"hand over 50,000 adjacent records", kCopyTarget, true}),
        receive_row(suite, one, "take 1 record", kCallTarget),
        receive_row(suite, some, "take 1,000 records", kCopyTarget),
        receive_row(suite, many, "take 50,000 records", kCopyTarget),
    };
}

}  // namespace bench
