#include "VlSDK.h"
#include "VlTrace.h"
#include "floor.h"

#include <shlobj.h>
#include <string.h>

extern "C" int Floor_ReadEdition() {
    constexpr char kFile[] = "\\SysWOW64\\vlcs.ini";
    char path[MAX_PATH + sizeof kFile];
    SHGetFolderPathA(nullptr, CSIDL_WINDOWS, nullptr, SHGFP_TYPE_DEFAULT, path);
    memcpy(path + strlen(path), kFile, sizeof kFile);
    return static_cast<int>(Btsdk_GetPrivateProfileInt("General", "VlCustomVersion", 0, path));
}

extern "C" void Floor_TraceScope() { CVlTraceFunc scope(512, const_cast<char*>("Floor_TraceScope")); }
