// Starting the connection manager.
#include "process_test.h"

using namespace process_test;

namespace {

using OpenConnectMgrDlg = ProcessTest;

TEST_F(OpenConnectMgrDlg, PassesTheValueInEightLowerCaseDigits) {
    const struct {
        uint32_t value;
        const char* text;
    } kRows[] = {
        {255, "0x000000ff"}, {0, "0x00000000"}, {0xFFFFFFFF, "0xffffffff"}, {0xABCDEF01, "0xabcdef01"}};
    calls.on_create_process = [](PROCESS_INFORMATION*) { return FALSE; };
    for (const auto& row : kRows) {
        VlCm_OpenConnectMgrDlg(row.value);
        EXPECT_EQ(calls.take(),
                  Lines{start_of_command_line(R"(C:\Suite\VlMgr.exe )" + std::string(row.text))});
    }
}

TEST_F(OpenConnectMgrDlg, OpensOnlyTheFoldersScope) {
    calls.fail("CreateProcessA");
    VlCm_OpenConnectMgrDlg(1);
    EXPECT_EQ(trace(), scope_of("VlCm_GetInstallDir"));
}

TEST_F(OpenConnectMgrDlg, LeavesBothHandlesOpenAndWaitsForNothing) {
    VlCm_OpenConnectMgrDlg(2);
    EXPECT_EQ(calls.take(), Lines{start_of_command_line(R"(C:\Suite\VlMgr.exe 0x00000002)")});
    EXPECT_EQ(calls.open_handles(), (Lines{"process", "thread"}));
    allow_leak("connection manager started");
}

TEST_F(OpenConnectMgrDlg, BoundsTheFolderOnly) {
    const std::string folder = "C:\\" + std::string(256, 'x');
    ASSERT_EQ(folder.size(), 259U);
    install_dir(folder);
    calls.fail("CreateProcessA");
    VlCm_OpenConnectMgrDlg(0x12345678);
    EXPECT_EQ(calls.take(), Lines{start_of_command_line(folder + R"(\VlMgr.exe 0x12345678)")});
}

TEST_F(OpenConnectMgrDlg, StartsFromTheRootWithoutAFolder) {
    install_dir("");
    calls.fail("CreateProcessA");
    VlCm_OpenConnectMgrDlg(3);
    EXPECT_EQ(calls.take(), Lines{start_of_command_line(R"(\VlMgr.exe 0x00000003)")});
}

}  // namespace
