// Sections of a hostile or broken writer: no receiver reads outside the view or gives a broken list.
#include "handoff_test.h"

#include "VlSim.h"

#include <string.h>

#include <random>

namespace {

class HostileSection : public HandoffTest {
protected:
    // Takes the pending section and compares with what its bytes allow.
    static void check(const ListChannel& channel, const Bytes& image) {
        const bool wide = (word_at(image, 0) & 0x10000000) != 0;
        const bool empty = word_at(image, 4) == 0;
        const size_t stride = wide ? channel.stride : channel.record_size;
        const auto expected =
            empty ? std::vector<Bytes>() : expected_records(image, channel.record_size, stride);
        EXPECT_TRUE(take_apart(channel.take(), channel.record_size) == expected);
    }
};

TEST_F(HostileSection, EndsTheListWhereTheCommittedPartEnds) {
    struct Row {
        const char* label;
        uint32_t total_size;
        uint32_t count;
    };
    constexpr Row kRows[] = {
        {"one too many", 1644, 2},          {"count huge", 1644, 0xFFFFFFFF},
        {"total size huge", 0xFFFFFFFF, 3}, {"all huge", 0xFFFFFFFF, 0xFFFFFFFF},
        {"total size tiny", 1, 100},        {"sign bit", 0x80000000, 0x80000001},
    };
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for_each_row(kRows, [&](const Row& row) {
            const Bytes image = section_image(kFreshState, row.total_size, row.count, Bytes(1632, 0x5A));
            const TestSection section(channel.section, image);
            check(channel, image);
            EXPECT_EQ(section.state(), kTakenState);
        });
    });
}

// Record k is read when its first byte lies inside, and never when it is the first one outside.
TEST_F(HostileSection, ReadsARecordThatBeginsInTheLastBytes) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for (const size_t stride : {channel.record_size, channel.stride}) {
            for (size_t pages = 1; pages <= 64; ++pages) {
                const size_t end = pages * kPageBytes;
                Bytes image(end, 0x33);
                put_word(&image[0], stride == channel.stride ? kFreshState : 1);
                put_word(&image[4], static_cast<uint32_t>(end));
                put_word(&image[8], 0xFFFFFFFF);
                const TestSection section(channel.section, image);
                const size_t fitting = (end - kHeaderBytes + stride - 1) / stride;
                EXPECT_EQ(take_apart(channel.take(), channel.record_size).size(), fitting) << pages;
            }
        }
    });
}

TEST_F(HostileSection, TruncatedToLessThanAHeader) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for (const size_t size : Sizes{1, 4, 8, 11}) {
            const TestSection section(channel.section, size);  // its page is there all the same
            put_word(section.view(), kFreshState);
            put_word(section.view() + 4, 1644);
            put_word(section.view() + 8, 3);
            EXPECT_EQ(take_apart(channel.take(), channel.record_size).size(), 3U) << size;
        }
    });
}

TEST_F(HostileSection, SurvivesTenThousandRandomHeaders) {
    std::mt19937 random(20240229);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same headers in each run
    constexpr uint32_t kCounts[] = {0, 1, 2, 3, 4, 5, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, 3 * kPageBytes);
        for (int round = 0; round < 2500 && !HasFailure(); ++round) {
            Bytes image(3 * kPageBytes, static_cast<unsigned char>(round));
            put_word(&image[0], random());
            put_word(&image[4], random() % 8 == 0 ? 0 : random());
            put_word(&image[8], random() % 2 == 0 ? random() : kCounts[random() % std::size(kCounts)]);
            section.fill(image);
            check(channel, image);
            EXPECT_EQ(section.state(), kTakenState) << round;
        }
    });
}

TEST_F(HostileSection, LinksInTheSectionAreNotFollowed) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const size_t size = channel.record_size;
        const TestSection section(channel.section, section_image(1, 1, 2, Bytes(2 * size, 0xA5)));
        void* list = channel.take();
        void *second = nullptr, *end = list;
        memcpy(&second, static_cast<char*>(list) + size - sizeof second, sizeof second);
        memcpy(&end, static_cast<char*>(second) + size - sizeof end, sizeof end);
        ASSERT_EQ(end, nullptr);
        EXPECT_EQ(take_apart(list, size).size(), 2U);
    });
}

// A peer that changes the header all the time while it is read.
class FlippingPeer {
public:
    explicit FlippingPeer(unsigned char* header) : header_(header) {
        thread_ = CreateThread(nullptr, 0, run, this, 0, nullptr);
    }
    ~FlippingPeer() {
        InterlockedExchange(&stop_, 1);
        WaitForSingleObject(thread_, INFINITE);
        CloseHandle(thread_);
    }
    FlippingPeer(const FlippingPeer&) = delete;
    FlippingPeer& operator=(const FlippingPeer&) = delete;

private:
    static DWORD WINAPI run(void* self) {
        static_cast<FlippingPeer*>(self)->flip();
        return 0;
    }
    void flip() {
        constexpr uint32_t kCounts[] = {0, 1, 2, 0xFFFFFFFF, 0x00100000};
        for (size_t i = 0; InterlockedCompareExchange(&stop_, 0, 0) == 0; ++i) {
            put_word(header_, i % 3 == 0 ? kFreshState : 1);
            put_word(header_ + 4, i % 7 == 0 ? 0 : 0xFFFFFFFF);
            put_word(header_ + 8, kCounts[i % std::size(kCounts)]);
        }
    }

    unsigned char* header_;
    volatile LONG stop_ = 0;
    HANDLE thread_;
};

TEST_F(HostileSection, SurvivesAHeaderThatChangesWhileItIsRead) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, kPageBytes);
        const FlippingPeer peer(section.view());
        const size_t most = (kPageBytes - kHeaderBytes + channel.record_size - 1) / channel.record_size;
        for (int round = 0; round < 1000; ++round) {
            EXPECT_LE(take_apart(channel.take(), channel.record_size).size(), most);
        }
    });
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 0U);
}

TEST_F(HostileSection, AnObjectOfAnotherKindHoldsTheName) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, channel.section);
        EXPECT_EQ(channel.take(), nullptr);
        CloseHandle(event);
    });
    EXPECT_EQ(support::trace_log(), std::vector<std::string>{});
}

TEST_F(HostileSection, ReadOnlySectionsAreNoHandOff) {
    CallPatch allocated("Btsdk_MallocMemory", Btsdk_MallocMemory);
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const Bytes image = RecordList(channel, 1).image();
        const ReadOnlySection section(channel.section, image);
        EXPECT_EQ(channel.take(), nullptr);
        EXPECT_TRUE(read_section(channel.section, image.size()) == image);
    });
    EXPECT_EQ(allocated.count(), 0U);
    EXPECT_EQ(support::trace_log(), std::vector<std::string>{});
}

// Some systems map what they should refuse.
TEST_F(HostileSection, ViewsThatCanOnlyBeReadAreNoHandOff) {
    CallPatch mapped("MapViewOfFile", MapViewOfFile);
    mapped.answer([&](HANDLE section, DWORD, DWORD high, DWORD low, SIZE_T size) {
        return mapped.real(section, FILE_MAP_READ, high, low, size);
    });
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, RecordList(channel, 1).image());
        EXPECT_EQ(channel.take(), nullptr);
        EXPECT_EQ(section.state(), kFreshState);
    });
}

TEST_F(HostileSection, ReservedSectionsAreNoHandOff) {
    CallPatch allocated("Btsdk_MallocMemory", Btsdk_MallocMemory);
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, 16 * kPageBytes, SEC_RESERVE);
        EXPECT_EQ(channel.take(), nullptr);
    });
    EXPECT_EQ(allocated.count(), 0U);
    EXPECT_EQ(support::trace_log(), std::vector<std::string>{});
}

TEST_F(HostileSection, OnlyTheCommittedPartOfAReservedSectionIsRead) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, 16 * kPageBytes, SEC_RESERVE);
        ASSERT_NE(VirtualAlloc(section.view(), 2 * kPageBytes, MEM_COMMIT, PAGE_READWRITE), nullptr);
        Bytes image(2 * kPageBytes, 0x77);
        put_word(&image[0], kFreshState);
        put_word(&image[8], 0xFFFF);
        section.fill(image);
        check(channel, image);
        EXPECT_EQ(section.state(), kTakenState);
    });
}

TEST_F(HostileSection, AViewThatIsNotWritableIsNoHandOff) {
    struct Row {
        const char* label;
        DWORD state;
        DWORD protect;
        size_t records;
    };
    constexpr Row kRows[] = {
        {"committed and writable", MEM_COMMIT, PAGE_READWRITE, 1},
        {"not cached", MEM_COMMIT, PAGE_READWRITE | PAGE_NOCACHE, 1},
        {"write-combined", MEM_COMMIT, PAGE_READWRITE | PAGE_WRITECOMBINE, 1},
        {"read-only", MEM_COMMIT, PAGE_READONLY, 0},
        {"no access", MEM_COMMIT, PAGE_NOACCESS, 0},
        {"guard page", MEM_COMMIT, PAGE_READWRITE | PAGE_GUARD, 0},
        {"copy on write", MEM_COMMIT, PAGE_WRITECOPY, 0},
        {"reserved", MEM_RESERVE, PAGE_READWRITE, 0},
        {"free", MEM_FREE, PAGE_NOACCESS, 0},
    };
    CallPatch queried("VirtualQuery", VirtualQuery);
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for_each_row(kRows, [&](const Row& row) {
            const TestSection section(channel.section, RecordList(channel, 1).image());
            queried.answer([&](const void* address, MEMORY_BASIC_INFORMATION* region, SIZE_T size) {
                const SIZE_T result = queried.real(address, region, size);
                region->State = row.state;
                region->Protect = row.protect;
                return result;
            });
            EXPECT_EQ(take_apart(channel.take(), channel.record_size).size(), row.records);
            EXPECT_EQ(section.state(), row.records == 1 ? kTakenState : kFreshState);
        });
    });
}

TEST_F(HostileSection, AViewThatCannotBeQueriedIsNoHandOff) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        const TestSection section(channel.section, RecordList(channel, 1).image());
        CallPatch queried("VirtualQuery", VirtualQuery);
        queried.fail_nth(1, 0, ERROR_INVALID_ADDRESS);
        EXPECT_EQ(channel.take(), nullptr);
        EXPECT_EQ(section.state(), kFreshState);
    });
}

}  // namespace
