#include "VlSDK.h"
#include "floor.h"

extern "C" void Floor_ExportCard(const void* details, VlContact* contact, const char* path,
                                 const CardLine* lines, uint32_t count) {
    HANDLE file = Btsdk_CreateFile(path, GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    Btsdk_PIMParseContactDetails2(details, contact);
    for (uint32_t i = 0; i < count; ++i) {
        uint32_t written = 0;
        Btsdk_WriteFile(file, lines[i].bytes, lines[i].size, &written, nullptr);
    }
    Btsdk_CloseHandle(file);
}
