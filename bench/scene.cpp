#include "scene.h"

#include "VlSim.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace bench {
namespace {

constexpr char kSettings[] =
    "[General]\r\n"
    "InstallDir=C:\\Program Files\\Veltrin\r\n"
    "CurrentVersion=Version 9.1.2\r\n"
    "VlCustomVersion=3\r\n"
    "[LocalBluetooth]\r\n"
    "VirtualDeviceNum=1\r\n"
    "[VirtualDevice0]\r\n"
    "VirtualDevice=COM9\r\n"
    "[VComm enum info]\r\n"
    "SerialNum1=31\r\n"
    "SerialNum2=41\r\n";

std::string settings_folder() {
    char folder[MAX_PATH];
    return std::string(folder, GetWindowsDirectoryA(folder, sizeof folder)) + "\\SysWOW64";
}

// What a program or test left there; it comes back at the end.
std::optional<std::string> content_of(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void write(const std::string& path, const std::string& content) {
    if (!(std::ofstream(path, std::ios::binary) << content)) throw std::runtime_error("cannot write " + path);
}

}  // namespace

Scene::Scene(const Suite& suite) : settings_path_(settings_folder() + "\\vlcs.ini") {
    BENCH_FUNCTION(suite.sdk, VlSim_Reset)();
    BENCH_FUNCTION(suite.sdk, VlSim_SetLogging)(0);
    CreateDirectoryA(settings_folder().c_str(), nullptr);
    earlier_settings_ = content_of(settings_path_);
    write(settings_path_, kSettings);
}

Scene::~Scene() {
    if (earlier_settings_) {
        std::ofstream(settings_path_, std::ios::binary) << *earlier_settings_;
    } else {
        DeleteFileA(settings_path_.c_str());
    }
}

}  // namespace bench
