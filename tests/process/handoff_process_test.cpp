// Sender and receiver in different processes, for every channel and both ways round.
#include "handoff_test.h"
#include "support/child_process.h"
#include "support/role.h"

#include "VlSim.h"

#include <shellapi.h>
#include <string.h>

namespace {

using support::ChildProcess;
using support::NamedEvent;

constexpr char kHanded[] = "handoff test: handed over";
constexpr char kTaken[] = "handoff test: taken";

std::string joined(const std::vector<Bytes>& records) {
    std::string all;
    for (const Bytes& record : records) all.append(record.begin(), record.end());
    return all;
}

VlSmsRecord sample_message() {
    VlSmsRecord message{};
    for (size_t i = 0; i < sizeof message.rest; ++i) message.rest[i] = static_cast<uint8_t>(i * 31 + i / 99);
    return message;
}

std::string bytes_of(const VlSmsRecord& message) {
    return std::string(reinterpret_cast<const char*>(&message), sizeof message);
}

// Where a receiver in another process leaves what it took.
class ResultFile {
public:
    ResultFile() {
        char folder[MAX_PATH] = "", path[MAX_PATH] = "";
        GetTempPathA(sizeof folder, folder);
        GetTempFileNameA(folder, "got", 0, path);
        path_ = path;
    }
    ~ResultFile() { DeleteFileA(path_.c_str()); }
    ResultFile(const ResultFile&) = delete;
    ResultFile& operator=(const ResultFile&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string content() const { return support::read_file(path_).value_or(""); }

private:
    std::string path_;
};

// take CHANNEL FILE: leaves the records, without links, in the file.
TEST_ROLE(take) {
    VlSim_SetLogging(0);
    const ListChannel& channel = list_channel(arguments.at(0));
    const std::vector<Bytes> records = take_apart(channel.take(), channel.record_size);
    support::write_file(arguments.at(1), joined(records));
    return records.empty() ? 1 : 0;
}

TEST_ROLE(take_message) {
    VlSmsRecord* message = VlCm_GetSMSInfo();
    if (message == nullptr) return 1;
    support::write_file(arguments.at(0), bytes_of(*message));
    Vlcm_SHFree(message);
    return 0;
}

// In a sending process: tells the test when the section is filled and waits for it to be taken.
struct MeetingAtWakeUp {
    MeetingAtWakeUp() {
        find_window.answer([](const char*, const char*) { return reinterpret_cast<HWND>(0x4242); });
        foreground.answer([](HWND) { return TRUE; });
        relay.answer([this](uint32_t, uint32_t) { return meet(), 0U; });
        started.answer([this](HWND, const char*, const char*, const char*, const char*, INT) {
            return meet(), reinterpret_cast<HINSTANCE>(33);
        });
        mobile_active.answer([] { return 0U; });
    }
    void meet() {
        handed.set();
        EXPECT_TRUE(taken.wait());
    }
    NamedEvent handed{kHanded}, taken{kTaken};
    support::SleepPatch sleeps;
    CallPatch<HWND(const char*, const char*)> find_window{"FindWindowA", FindWindowA};
    CallPatch<BOOL(HWND)> foreground{"SetForegroundWindow", SetForegroundWindow};
    CallPatch<uint32_t(uint32_t, uint32_t)> relay{"Btsdk_PostMessageToCtrlCenter",
                                                  Btsdk_PostMessageToCtrlCenter};
    CallPatch<HINSTANCE(HWND, const char*, const char*, const char*, const char*, INT)> started{
        "ShellExecuteA", ShellExecuteA};
    CallPatch<uint32_t()> mobile_active{"Btsdk_IsMobileActive", Btsdk_IsMobileActive};
};

// hand_over CHANNEL COUNT: ends with the number of waits, 0 when the list was taken in time.
TEST_ROLE(hand_over) {
    MeetingAtWakeUp meeting;
    const ListChannel& channel = list_channel(arguments.at(0));
    const RecordList list(channel, std::stoul(arguments.at(1)));
    EXPECT_EQ(channel.send(list.first(), 0), 0U);
    return static_cast<int>(meeting.sleeps.count());
}

TEST_ROLE(hand_over_message) {
    MeetingAtWakeUp meeting;
    const VlSmsRecord message = sample_message();
    EXPECT_EQ(VlCm_SendSMS(&message), 0U);
    return static_cast<int>(meeting.sleeps.count());
}

// flip SECTION: changes a header as fast as it can until the test says stop.
TEST_ROLE(flip) {
    NamedEvent handed(kHanded), stop(kTaken);
    const HANDLE section = OpenFileMappingA(FILE_MAP_WRITE, FALSE, arguments.at(0).c_str());
    const auto header = static_cast<unsigned char*>(MapViewOfFile(section, FILE_MAP_WRITE, 0, 0, 12));
    for (uint32_t i = 0; !stop.wait(0); ++i) {
        for (uint32_t k = 0; k < 10000; ++k) {
            put_word(header, k % 2 == 0 ? kFreshState : 1);
            put_word(header + 4, k % 5 == 0 ? 0 : 0xFFFFFFFF);
            put_word(header + 8, k % 3 == 0 ? 0xFFFFFFFF : k % 4);
        }
        handed.set();
    }
    UnmapViewOfFile(header);
    CloseHandle(section);
    return 0;
}

class AcrossProcesses : public HandoffTest {
protected:
    AcrossProcesses() { VlSim_SetLogging(0); }

    // What arrives of a list in this build's own receiver.
    static std::string arriving(const ListChannel& channel, const RecordList& list) {
        return joined(expected_records(list.image(), channel.record_size, channel.stride));
    }
};

TEST_F(AcrossProcesses, ListsReachAReceiverInAnotherProcess) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for (const size_t count : Sizes{1, 2, 10, 1000, 50000}) {
            const ResultFile result;
            on_wake_up = [&] {
                EXPECT_EQ(support::run_role("take", {channel.label, result.path()}).exit_code, 0U);
            };
            const RecordList list(channel, count);
            EXPECT_EQ(channel.send(list.first(), 0), 0U);
            EXPECT_TRUE(result.content() == arriving(channel, list)) << count << " records";
            EXPECT_EQ(sleeps.count(), 0U) << "taken before the first look";
        }
    });
}

TEST_F(AcrossProcesses, ListsArriveFromASenderInAnotherProcess) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        for (const size_t count : Sizes{1, 2, 10, 1000}) {
            NamedEvent handed(kHanded), taken(kTaken);
            ChildProcess sender(support::own_path(),
                                support::role_options("hand_over", {channel.label, std::to_string(count)}));
            ASSERT_TRUE(handed.wait());
            const auto records = take_apart(channel.take(), channel.record_size);
            taken.set();
            EXPECT_TRUE(joined(records) == arriving(channel, RecordList(channel, count))) << count;
            EXPECT_EQ(sender.wait(), 0U) << sender.output();
            EXPECT_FALSE(section_exists(channel.section));
        }
    });
}

TEST_F(AcrossProcesses, AReceiverTakesTheListDuringAnyWait) {
    const ListChannel& channel = list_channel("contacts");
    const ResultFile result;
    sleeps.on_sleep([&](size_t nth) {
        if (nth != 7) return;
        EXPECT_EQ(support::run_role("take", {channel.label, result.path()}).exit_code, 0U);
    });
    const RecordList list(channel, 1);
    EXPECT_EQ(channel.send(list.first(), 0), 0U);
    EXPECT_EQ(sleeps.count(), 7U);
    EXPECT_TRUE(result.content() == arriving(channel, list));
}

TEST_F(AcrossProcesses, APendingHandOffBlocksEveryOtherProcess) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        NamedEvent handed(kHanded), taken(kTaken);
        ChildProcess sender(support::own_path(), support::role_options("hand_over", {channel.label, "1"}));
        ASSERT_TRUE(handed.wait());
        const RecordList list(channel, 1);
        EXPECT_EQ(channel.send(list.first(), 0), 770U);
        EXPECT_EQ(lines(), std::vector<std::string>{channel.already_exists});
        support::clear_trace_log();
        taken.set();
        EXPECT_NE(sender.wait(), ChildProcess::kStillRunning);
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
    });
}

TEST_F(AcrossProcesses, AKilledSenderLeavesNothingPending) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        NamedEvent handed(kHanded), taken(kTaken);
        ChildProcess sender(support::own_path(), support::role_options("hand_over", {channel.label, "5"}));
        ASSERT_TRUE(handed.wait());
        EXPECT_TRUE(section_exists(channel.section));
        sender.kill();
        EXPECT_EQ(channel.take(), nullptr);
        const RecordList list(channel, 1);
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
    });
}

TEST_F(AcrossProcesses, AMessageReachesAReceiverInAnotherProcess) {
    CallPatch mobile_active("Btsdk_IsMobileActive", Btsdk_IsMobileActive);
    mobile_active.answer([] { return 0U; });
    CallPatch started("ShellExecuteA", ShellExecuteA);
    const ResultFile result;
    started.answer([&](HWND, const char*, const char*, const char*, const char*, INT) {
        EXPECT_EQ(support::run_role("take_message", {result.path()}).exit_code, 0U);
        return reinterpret_cast<HINSTANCE>(33);
    });
    const VlSmsRecord message = sample_message();
    EXPECT_EQ(VlCm_SendSMS(&message), 0U);
    EXPECT_TRUE(result.content() == bytes_of(message));
    EXPECT_EQ(sleeps.count(), 0U);
}

TEST_F(AcrossProcesses, AMessageArrivesFromASenderInAnotherProcess) {
    NamedEvent handed(kHanded), taken(kTaken);
    ChildProcess sender(support::own_path(), support::role_options("hand_over_message"));
    ASSERT_TRUE(handed.wait());
    const VlSmsRecord second{};
    EXPECT_EQ(VlCm_SendSMS(&second), 770U);
    VlSmsRecord* message = VlCm_GetSMSInfo();
    taken.set();
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(bytes_of(*message) == bytes_of(sample_message()));
    Vlcm_SHFree(message);
    EXPECT_EQ(sender.wait(), 0U) << sender.output();
}

TEST_F(AcrossProcesses, TheSendToolUnderAnyCaseHandsOverOneRecord) {
    struct Row {
        const char* label;  // the program's file name
        size_t records;
    };
    constexpr Row kRows[] = {
        {"Veltrin Quill.exe", 1}, {"veltrin QUILL.EXE", 1}, {"Veltrin Quill2.exe", 3}, {"Veltrin.exe", 3}};
    for_each_row(kRows, [&](const Row& row) {
        NamedEvent handed(kHanded), taken(kTaken);
        const support::ProgramCopy program(row.label);
        ChildProcess sender(program.path(), support::role_options("hand_over", {"files", "3"}));
        ASSERT_TRUE(handed.wait());
        const auto records = take_apart(files().take(), files().record_size);
        taken.set();
        EXPECT_EQ(sender.wait(), 0U) << sender.output();
        ASSERT_EQ(records.size(), row.records);
        if (row.records != 1) return;
        RecordList list(files(), 3);
        Bytes expected(1624);
        memcpy(&expected[4], list.record(0) + 4, 4);
        strncpy(reinterpret_cast<char*>(&expected[8]), reinterpret_cast<char*>(list.record(0) + 8), 259);
        EXPECT_EQ(records[0], expected);
    });
}

TEST_F(AcrossProcesses, ReceiversSurviveAPeerThatChangesTheHeader) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        NamedEvent running(kHanded), stop(kTaken);
        const TestSection section(channel.section, 2 * kPageBytes);
        ChildProcess peer(support::own_path(), support::role_options("flip", {channel.section}));
        ASSERT_TRUE(running.wait());
        const size_t most = (2 * kPageBytes - kHeaderBytes + channel.record_size - 1) / channel.record_size;
        for (int round = 0; round < 500; ++round) {
            EXPECT_LE(take_apart(channel.take(), channel.record_size).size(), most);
        }
        stop.set();
        EXPECT_EQ(peer.wait(), 0U) << peer.output();
    });
}

}  // namespace
