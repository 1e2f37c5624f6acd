// Structured exceptions inside the two guarded senders: reported, answered by 0, and the process lives on.
#include "handoff_test.h"
#include "support/child_process.h"
#include "support/debug_output.h"
#include "support/role.h"

#include <stdio.h>
#include <string.h>

namespace {

using Strings = std::vector<std::string>;

constexpr size_t kLink = sizeof(void*);
const char* const kGuarded[] = {"files", "outlook"};

const char* function_of(const ListChannel& channel) {
    return &channel == &files() ? "VlCm_SendFilestoBtDevice" : "VlCm_SendContactsToOutLook";
}

// Pages of which some cannot be touched.
class Pages {
public:
    explicit Pages(size_t count)
        : base_(static_cast<unsigned char*>(
              VirtualAlloc(nullptr, count * kPageBytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE))) {}
    ~Pages() { VirtualFree(base_, 0, MEM_RELEASE); }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;

    [[nodiscard]] unsigned char* at(size_t page, size_t offset = 0) const {
        return base_ + page * kPageBytes + offset;
    }
    void forbid(size_t page) const { protect(page, PAGE_NOACCESS); }
    void allow(size_t page) const { protect(page, PAGE_READWRITE); }

private:
    void protect(size_t page, DWORD access) const {
        DWORD old = 0;
        VirtualProtect(at(page), kPageBytes, access, &old);
    }
    unsigned char* base_;
};

void set_link(unsigned char* record, size_t record_size, const void* next) {
    memcpy(record + record_size - kLink, &next, kLink);
}

class GuardedSend : public HandoffTest {
protected:
    // One send that faults: 0, both lines and nothing else, no wake-up, no wait.
    void faults(const ListChannel& channel, const void* list, DWORD code = EXCEPTION_ACCESS_VIOLATION) {
        const support::DebugOutput debugger;
        EXPECT_EQ(channel.send(list, 0), 0U);
        char report[200];
        snprintf(report, sizeof report,
                 "VLTRACE_MODULE_BCOMMON: Catch exception:0x%08lx in function %s processID=%lu\r\n", code,
                 function_of(channel), GetCurrentProcessId());
        EXPECT_EQ(debugger.lines(),
                  (Strings{report, std::string(function_of(channel)) + " catch exception\r\n"}));
        EXPECT_EQ(relay.count(), woken_);
        EXPECT_EQ(sleeps.count(), slept_);
    }

    // A good list goes through as ever.
    void works(const ListChannel& channel) {
        const support::DebugOutput debugger;
        const RecordList list(channel, 2);
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
        EXPECT_EQ(relay.count(), ++woken_);
        slept_ = sleeps.count();
        EXPECT_EQ(debugger.text(), "");
    }

    // The fault left the section open: further hand-offs of the channel are refused until it is closed.
    void left_open(const ListChannel& channel) {
        EXPECT_TRUE(section_exists(channel.section));
        support::clear_trace_log();
        const RecordList list(channel, 1);
        EXPECT_EQ(channel.send(list.first(), 0), 770U);
        EXPECT_EQ(lines(), Strings{channel.already_exists});
    }

    template <typename Body>
    void for_each_guarded(Body body) {
        for (const char* label : kGuarded) {
            SCOPED_TRACE(label);
            body(list_channel(label));
        }
    }

private:
    size_t woken_ = 0, slept_ = 0;
};

TEST_F(GuardedSend, SurvivesABadListPointer) {
    const Pages pages(1);
    pages.forbid(0);
    const std::pair<const char*, const void*> rows[] = {
        {"first page", reinterpret_cast<void*>(0x10)},
        {"one", reinterpret_cast<void*>(1)},
        {"kernel", reinterpret_cast<void*>(0xFFFF800000000000)},
        {"no address at all", reinterpret_cast<void*>(0x0123456789ABCDEF)},
        {"no access", pages.at(0)},
        {"no access, unaligned", pages.at(0, 3)},
    };
    for_each_guarded([&](const ListChannel& channel) {
        for (const auto& [label, list] : rows) {
            SCOPED_TRACE(label);
            faults(channel, list);
            EXPECT_FALSE(section_exists(channel.section));
        }
        works(channel);
    });
}

TEST_F(GuardedSend, SurvivesABadLinkInEachRecord) {
    const Pages forbidden(1);
    forbidden.forbid(0);
    const void* const links[] = {reinterpret_cast<void*>(8), forbidden.at(0),
                                 reinterpret_cast<void*>(0xFFFFFFFFFFFFFFFF)};
    for_each_guarded([&](const ListChannel& channel) {
        for (size_t bad = 0; bad < 5; ++bad) {
            for (const void* link : links) {
                RecordList list(channel, 5);
                set_link(list.record(bad), channel.record_size, link);
                faults(channel, list.first());
                EXPECT_FALSE(section_exists(channel.section));
            }
        }
        works(channel);
    });
}

// Each record in a page of its own, ending with it.
TEST_F(GuardedSend, SurvivesAMissingPageAtEachRecord) {
    constexpr size_t kRecords = 5;
    for_each_guarded([&](const ListChannel& channel) {
        const Pages pages(kRecords);
        const auto record = [&](size_t k) { return pages.at(k, kPageBytes - channel.record_size); };
        for (size_t k = 0; k < kRecords; ++k) {
            set_link(record(k), channel.record_size, k + 1 < kRecords ? record(k + 1) : nullptr);
        }
        for (size_t k = 0; k < kRecords; ++k) {
            pages.forbid(k);
            faults(channel, record(0));
            pages.allow(k);
            EXPECT_FALSE(section_exists(channel.section));
        }
        works(channel);
    });
}

// An array over many pages: wherever one is missing, its links are missed first.
TEST_F(GuardedSend, SurvivesAMissingPageInsideAnArray) {
    constexpr size_t kRecords = 20;
    for_each_guarded([&](const ListChannel& channel) {
        const size_t pages_used = (kRecords * channel.record_size + kPageBytes - 1) / kPageBytes;
        const Pages pages(pages_used);
        link_records(pages.at(0), kRecords, channel.record_size);
        for (size_t k = 0; k < pages_used; ++k) {
            pages.forbid(k);
            faults(channel, pages.at(0));
            pages.allow(k);
            EXPECT_FALSE(section_exists(channel.section));
        }
        works(channel);
    });
}

// The record lies across two pages and only its first bytes are missing: the link can be followed, so
// that the fault comes while the section is filled.
class FaultWhileCopying : public GuardedSend {
protected:
    // A list whose record number `bad` (of `count`) cannot be read but for its last `readable` bytes.
    struct TornList {
        TornList(const ListChannel& channel, size_t count, size_t bad, size_t readable)
            : good(count * channel.record_size), torn(2) {
            const size_t size = channel.record_size;
            unsigned char* last = torn.at(1) + readable - size;
            std::vector<unsigned char*> order;
            for (size_t i = 0; i < count; ++i) order.push_back(i == bad ? last : &good[i * size]);
            for (size_t i = 0; i < count; ++i)
                set_link(order[i], size, i + 1 < count ? order[i + 1] : nullptr);
            torn.forbid(0);
            first = order[0];
        }
        Bytes good;
        Pages torn;
        const void* first;
    };
};

TEST_F(FaultWhileCopying, LeavesTheSectionOpen) {
    allow_leak("guarded send after a fault", std::size(kGuarded));
    for_each_guarded([&](const ListChannel& channel) {
        const TornList list(channel, 1, 0, kLink);
        faults(channel, list.first);
        left_open(channel);
    });
}

TEST_F(FaultWhileCopying, IsSurvivedInsideEachRecord) {
    for_each_guarded([&](const ListChannel& channel) {
        for (size_t bad = 0; bad < 5; ++bad) {
            for (const size_t readable :
                 {kLink, kLink + 1, channel.record_size / 2, channel.record_size - 1}) {
                const TornList list(channel, 5, bad, readable);
                faults(channel, list.first);
                EXPECT_NE(checks().leaks(support::LeakKind::kView), "");
                left_open(channel);
                checks().clean_up();
                EXPECT_FALSE(section_exists(channel.section));
            }
        }
        works(channel);
    });
}

TEST_F(FaultWhileCopying, LeavesTheRecordsBeforeItInTheSection) {
    for_each_guarded([&](const ListChannel& channel) {
        TornList list(channel, 3, 2, kLink);
        std::fill_n(list.good.begin(), channel.record_size - kLink, static_cast<unsigned char>(0x41));
        faults(channel, list.first);
        const Bytes section = read_section(channel.section, 12 + channel.record_size);
        EXPECT_EQ(word_at(section, 0), kFreshState);
        EXPECT_EQ(word_at(section, 8), 3U);
        EXPECT_EQ(Bytes(section.begin() + 12, section.end() - kLink),
                  Bytes(channel.record_size - kLink, 0x41));
        checks().clean_up();
    });
}

TEST_F(GuardedSend, CoversTheReadinessCall) {
    CallPatch ready("Btsdk_IsBluetoothReady", Btsdk_IsBluetoothReady);
    ready.answer([]() -> uint8_t {
        RaiseException(0xE0001234, 0, 0, nullptr);
        return 1;
    });
    for_each_guarded([&](const ListChannel& channel) {
        const RecordList list(channel, 1);
        faults(channel, list.first(), 0xE0001234);
        EXPECT_FALSE(section_exists(channel.section));
    });
}

TEST_F(GuardedSend, CoversTheSendToolsSingleRecord) {
    CallPatch own_name("GetModuleFileNameA", GetModuleFileNameA);
    own_name.answer(
        [](HMODULE, char* path, DWORD) -> DWORD { return memcpy(path, "veltrin quill.exe", 18), 17; });
    faults(files(), reinterpret_cast<void*>(0x10));
    EXPECT_FALSE(section_exists(files().section));
}

TEST_F(GuardedSend, CoversTheWakeUpAndLeavesItsScopeOpen) {
    allow_leak("guarded send after a fault", std::size(kGuarded));
    allow_leak("scope of the faulting wake-up", std::size(kGuarded));
    relay.answer([](uint32_t, uint32_t) -> uint32_t {
        RaiseException(EXCEPTION_ILLEGAL_INSTRUCTION, 0, 0, nullptr);
        return 0;
    });
    for_each_guarded([&](const ListChannel& channel) {
        const support::DebugOutput debugger;
        const RecordList list(channel, 1);
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
        ASSERT_EQ(debugger.lines().size(), 2U);
        EXPECT_NE(debugger.lines()[0].find("exception:0xc000001d in function "), std::string::npos);
        EXPECT_EQ(sleeps.count(), 0U);
        left_open(channel);
    });
}

// Ends a process by its unhandled exception at once: a debugger would be started otherwise.
LONG WINAPI end_by_exception(EXCEPTION_POINTERS* exception) {
    ExitProcess(exception->ExceptionRecord->ExceptionCode);
}

// send_bad_list CHANNEL: sends a list that cannot be read; ends with the sender's answer or the fault.
TEST_ROLE(send_bad_list) {
    SetUnhandledExceptionFilter(end_by_exception);
    return static_cast<int>(list_channel(arguments.at(0)).send(reinterpret_cast<void*>(0x10), 0));
}

TEST_F(GuardedSend, IsTheOnlyKind) {
    for (const char* label : {"images", "contacts"}) {
        const support::RoleResult result = support::run_role("send_bad_list", {label});
        EXPECT_EQ(result.exit_code, DWORD{EXCEPTION_ACCESS_VIOLATION}) << label;
    }
    for (const char* label : kGuarded) {
        EXPECT_EQ(support::run_role("send_bad_list", {label}).exit_code, 0U) << label;
    }
}

}  // namespace
