#include "floor/floor.h"
#include "rows.h"
#include "vlcm/send_to.h"

#include "VlSim.h"

#include <shlobj.h>
#include <stdio.h>

#include <memory>

namespace bench {
namespace {

constexpr uint32_t kLinks = 5;
constexpr uint8_t kStranger[6] = {};

// The Send-To folder of this prefix with a link for each of the devices, and a link to the namespace, so
// that no program is started to make it.
class Menu {
public:
    explicit Menu(const Suite& suite)
        : load_(BENCH_FUNCTION(suite.sdk, VlSim_LoadScenario)),
          sync_(BENCH_FUNCTION(suite.library, VlCm_SyncSend2btShc)) {
        char menu[MAX_PATH] = "";
        SHGetFolderPathA(nullptr, CSIDL_SENDTO, nullptr, SHGFP_TYPE_DEFAULT, menu);
        folder_ = std::string(menu) + "\\Bluetooth";
    }
    ~Menu() {
        for (const std::string& name : names()) {
            SetFileAttributesA((folder_ + "\\" + name).c_str(), FILE_ATTRIBUTE_NORMAL);
            DeleteFileA((folder_ + "\\" + name).c_str());
        }
        SetFileAttributesA(folder_.c_str(), FILE_ATTRIBUTE_NORMAL);
        RemoveDirectoryA(folder_.c_str());
        DeleteFileA((folder_ + ".lnk").c_str());
    }
    Menu(const Menu&) = delete;
    Menu& operator=(const Menu&) = delete;

    void prepare() {
        load_(scenario().c_str());
        FILE* file = fopen((folder_ + ".lnk").c_str(), "ab");
        if (file != nullptr) fclose(file);
        for (uint8_t i = 1; i <= kLinks; ++i) {
            const uint8_t address[6] = {i};
            sync_(address, TRUE);
        }
    }
    [[nodiscard]] size_t count() const { return names().size(); }

private:
    static std::string scenario() {
        std::string devices;
        for (uint32_t i = 1; i <= kLinks; ++i) {
            char device[100];
            snprintf(device, sizeof device, R"(%s{"name": "Device %u", "address": "00:00:00:00:00:0%u"})",
                     i > 1 ? ", " : "", i, i);
            devices += device;
        }
        return R"({"ready": true, "devices": [)" + devices + "]}";
    }
    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> found;
        WIN32_FIND_DATAA entry;
        HANDLE listing = FindFirstFileA((folder_ + "\\*.*").c_str(), &entry);
        if (listing == INVALID_HANDLE_VALUE) return found;
        do {
            if (entry.cFileName[0] != '.') found.emplace_back(entry.cFileName);
        } while (FindNextFileA(listing, &entry));
        FindClose(listing);
        return found;
    }

    std::string folder_;
    decltype(&VlSim_LoadScenario) load_;
    decltype(&VlCm_SyncSend2btShc) sync_;
};

}  // namespace

std::vector<Row> send_to_rows(const Suite& suite) {
    constexpr double kTarget = 1.05;
    constexpr size_t kFiles = kLinks + 2;  // the link without a device, the settings file
    const auto menu = std::make_shared<Menu>(suite);
    const auto floor = BENCH_FUNCTION(suite.floor, Floor_SyncSendTo);
    const auto library = BENCH_FUNCTION(suite.library, VlCm_SyncSend2btShc);
    return {{.name = "Send-To folder with 5 links, nothing to change",
             .floor_text = "folder paths, two texts, every link read, one written",
             .target = kTarget,
             .floor = calling(suite.floor.handle(), timed([=] { keep(floor()); })),
             .library = calling(suite.library.handle(), timed([=] { library(kStranger, FALSE); })),
             .allowance = {.platform_calls = 110, .bytes_copied = 16384},
             .prepare = [=] { menu->prepare(); },
             .agree =
                 [=] {
                     library(kStranger, FALSE);
                     return floor() == kLinks && menu->count() == kFiles;
                 }}};
}

}  // namespace bench
