#include "stack_test.h"

#include <windows.h>

#include <filesystem>

namespace vlsim_test {
namespace {

constexpr char kFolderMark[] = "vlsim-test-";

std::string environment(const char* name) {
    char value[MAX_PATH] = "";
    GetEnvironmentVariableA(name, value, sizeof value);
    return value;
}

// Set before the first call to the stack; a child keeps its parent's folder, and its parent removes it.
class HomeFolder {
public:
    HomeFolder() : folder_(environment("VLSIM_HOME")) {
        if (folder_.find(kFolderMark) != std::string::npos) return;
        owner_ = true;
        folder_ = (std::filesystem::temp_directory_path() / kFolderMark).string() +
                  std::to_string(GetCurrentProcessId());
        SetEnvironmentVariableA("VLSIM_HOME", folder_.c_str());
    }
    ~HomeFolder() {
        std::error_code ignored;
        if (owner_) std::filesystem::remove_all(folder_, ignored);
    }
    HomeFolder(const HomeFolder&) = delete;
    HomeFolder& operator=(const HomeFolder&) = delete;
    [[nodiscard]] const std::string& path() const { return folder_; }

private:
    std::string folder_;
    bool owner_ = false;
};

const HomeFolder home;

template <typename Read>
std::vector<std::string> read_all(uint32_t count, Read read) {
    std::vector<std::string> lines;
    for (uint32_t index = 0; index < count; ++index) {
        std::string line(read(index, nullptr, 0), 0);
        read(index, line.data(), static_cast<uint32_t>(line.size() + 1));
        lines.push_back(line);
    }
    return lines;
}

// Walks with an Enum operation; `describe` takes what a record tells.
template <typename Record, typename Describe>
std::vector<Walked> walk(BtHandle enumeration, BtHandle (*next)(BtHandle, Record*), uint32_t (*end)(BtHandle),
                         Describe describe) {
    std::vector<Walked> items;
    if (enumeration == 0) return items;
    while (true) {
        Record record{};
        const BtHandle handle = next(enumeration, &record);
        if (handle == 0) break;
        Walked item = describe(record);
        item.handle = handle;
        items.push_back(item);
    }
    EXPECT_EQ(end(enumeration), 0u);
    return items;
}

Walked of_server(const ServerAttributes& record) { return {0, record.serviceClass, record.name}; }

}  // namespace

std::string home_folder() { return home.path(); }

StackTest::StackTest() { EXPECT_EQ(VlSim_Reset(), 0u); }

StackTest::~StackTest() {
    for (const std::string& report : take_misuse()) ADD_FAILURE() << report;
    EXPECT_EQ(VlSim_LiveCount(VLSIM_ENUMERATIONS), 0u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_BLOCKS), 0u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_KEYS), 0u);
    EXPECT_EQ(VlSim_LiveCount(VLSIM_FILES), 0u);
    VlSim_ClearFaults();
}

std::vector<std::string> StackTest::take_misuse() {
    auto reports = read_all(VlSim_MisuseCount(), VlSim_GetMisuse);
    VlSim_ClearMisuse();
    return reports;
}

std::string state_value(const std::string& pointer) {
    std::string json(VlSim_Get(pointer.c_str(), nullptr, 0), 0);
    VlSim_Get(pointer.c_str(), json.data(), static_cast<uint32_t>(json.size() + 1));
    return json;
}

std::vector<std::string> logged_calls() { return read_all(VlSim_CallCount(nullptr), VlSim_GetCall); }

ShortcutProperty shortcut_query(BtHandle shortcut, uint16_t mask) {
    ShortcutProperty record{};
    record.shortcut = shortcut;
    record.mask = mask;
    return record;
}

std::vector<Walked> walk_devices() {
    return walk<RemoteDeviceProperty>(Btsdk_StartEnumRemoteDevice(0, 0), Btsdk_EnumRemoteDevice,
                                      Btsdk_EndEnumRemoteDevice, [](const RemoteDeviceProperty& record) {
                                          return Walked{0, 0, record.name};
                                      });
}

std::vector<Walked> walk_services(BtHandle device) {
    return walk<ServerAttributes>(Btsdk_StartEnumRemoteService(device), Btsdk_EnumRemoteService,
                                  Btsdk_EndEnumRemoteService, of_server);
}

std::vector<Walked> walk_servers() {
    return walk<ServerAttributes>(Btsdk_StartEnumLocalServer(), Btsdk_EnumLocalServer,
                                  Btsdk_EndEnumLocalServer, of_server);
}

std::vector<Walked> walk_connections() {
    return walk<ConnectionProperty>(Btsdk_StartEnumConnection(), Btsdk_EnumConnection,
                                    Btsdk_EndEnumConnection, [](const ConnectionProperty& record) {
                                        return Walked{0, record.serviceClass, ""};
                                    });
}

}  // namespace vlsim_test
