#include "scene.h"

#include "VlSim.h"

#include <stdio.h>

namespace bench {
namespace {

constexpr char kSettings[] =
    "[General]\r\n"
    "InstallDir=C:\\Program Files\\Veltrin\r\n"
    "CurrentVersion=Version 9.1.2\r\n"
    "VlCustomVersion=3\r\n";

std::string settings_folder() {
    char folder[MAX_PATH];
    return std::string(folder, GetWindowsDirectoryA(folder, sizeof folder)) + "\\SysWOW64";
}

bool write_new_file(const std::string& path) {
    FILE* file = fopen(path.c_str(), "wbx");
    if (file == nullptr) return false;
    fputs(kSettings, file);
    fclose(file);
    return true;
}

}  // namespace

Scene::Scene(const Suite& suite) {
    BENCH_FUNCTION(suite.sdk, VlSim_Reset)();
    BENCH_FUNCTION(suite.sdk, VlSim_SetLogging)(0);
    CreateDirectoryA(settings_folder().c_str(), nullptr);
    const std::string path = settings_folder() + "\\vlcs.ini";
    if (write_new_file(path)) made_file_ = path;
}

Scene::~Scene() {
    if (!made_file_.empty()) DeleteFileA(made_file_.c_str());
}

}  // namespace bench
