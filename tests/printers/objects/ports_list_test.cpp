// The list of ports, which no export shows.
#include "printers/spooler.h"

#include "VlSpool.h"
#include "support/block_ledger.h"
#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

namespace {

using Lines = std::vector<std::string>;

class PortsList : public support::SuiteTest {
protected:
    PortsList() {
        EXPECT_EQ(VlSpool_Reset(), 0u);
        EXPECT_EQ(VlSpool_LoadScenario(R"({"ports": [{"name": "LPT1:"}, {"name": "BT1:", "monitor": "M"}]})"),
                  0u);
        support::clear_trace_log();
    }
    ~PortsList() override { VlSpool_Reset(); }

    static Lines traced(const Lines& lines) {
        Lines entries{">512 MyEnumPorts"};
        for (const std::string& each : lines) entries.push_back("=512 " + each);
        entries.emplace_back("<512 MyEnumPorts");
        return entries;
    }
};

// The spooler's shared state is opened once in a process: before a test counts handles.
class Warm : public ::testing::Environment {
public:
    void SetUp() override {
        ASSERT_EQ(VlSpool_Reset(), 0u);
        vl::printers::enum_ports();
    }
};
const auto* const g_warm = ::testing::AddGlobalTestEnvironment(new Warm);

}  // namespace

TEST_F(PortsList, HoldsThePortsInOrder) {
    Lines names;
    const auto ports = vl::printers::enum_ports();
    for (const PORT_INFO_2A& port : ports) names.emplace_back(port.pPortName);
    EXPECT_EQ(names, (Lines{"LPT1:", "BT1:"}));
    EXPECT_TRUE(ports.complete());
    EXPECT_EQ(support::trace_log(), traced({"1 EnumPorts err: 7a\r\n", "2 EnumPorts err= 0 ret= 1 \r\n",
                                            "EnumPorts num of port= 2\r\n"}));
}

TEST_F(PortsList, MayBeEmpty) {
    VlSpool_LoadScenario("{}");
    const auto ports = vl::printers::enum_ports();
    EXPECT_EQ(ports.size(), 0u);
    EXPECT_TRUE(ports.complete());
    EXPECT_EQ(support::trace_log(), traced({"1 EnumPorts err: 0\r\n", "2 EnumPorts err= 0 ret= 1 \r\n",
                                            "EnumPorts num of port= 0\r\n"}));
}

TEST_F(PortsList, IsEmptyWhenTheSpoolerRefuses) {
    VlSpool_Fail("EnumPortsA", 2, ERROR_ACCESS_DENIED);
    const auto ports = vl::printers::enum_ports();
    EXPECT_EQ(ports.size(), 0u);
    EXPECT_EQ(ports.begin(), ports.end());
    EXPECT_FALSE(ports.complete());
    EXPECT_EQ(support::trace_log(), traced({"1 EnumPorts err: 7a\r\n", "2 EnumPorts err= 5 ret= 0 \r\n",
                                            "EnumPorts num of port= 0\r\n"}));
}

TEST_F(PortsList, ARefusedListHasNoEntriesWhateverItsCount) {
    support::CallPatch refused("EnumPortsA", EnumPortsA);
    refused.answer([](char*, DWORD, BYTE*, DWORD, DWORD* needed, DWORD* count) {
        *needed = 100;
        *count = 3;
        return FALSE;
    });
    const auto ports = vl::printers::enum_ports();
    EXPECT_EQ(ports.size(), 0u);
    EXPECT_EQ(support::trace_lines().back(), "EnumPorts num of port= 0\r\n");
}
