// Floors: the least that a call of the library can be, the bare platform calls that it cannot avoid.
// They live in a DLL of their own, so that a call costs what a call of the library costs and the
// platform calls can be counted in the same way.
#pragma once

#include "vlcm/contacts.h"
#include "vlcm/handoff.h"
#include "vlcm/images.h"
#include "vlcm/shell_items.h"

#include <stdint.h>

#ifndef FLOOR_API
#define FLOOR_API __declspec(dllimport)
#endif

// A line of a vCard.
struct CardLine {
    const char* bytes;
    uint32_t size;
};

extern "C" {

// One bare linear scan of a table's 16-bit keys; the row, or the number of rows.
FLOOR_API unsigned int Floor_FindService(unsigned int service_class);
FLOOR_API unsigned int Floor_FindDevice(unsigned int device_class);
FLOOR_API unsigned int Floor_FindIcon(unsigned int icon);

// Length query, one block, both conversion calls.
FLOOR_API int Floor_Convert(unsigned int from, unsigned int to, char* destination, const char* source,
                            unsigned int size);

// Two blocks, digits by 64-bit division.
FLOOR_API int Floor_DecimalText(unsigned int high, unsigned int low, char* buffer, unsigned int size);

// One folder query, one profile read.
FLOOR_API int Floor_ReadEdition(void);

// One trace scope.
FLOOR_API void Floor_TraceScope(void);

// The stack's record of a server, the language library, one text, the library freed.
FLOOR_API uint32_t Floor_LocalServiceName(uint32_t server, char* buffer, uint32_t size);
FLOOR_API uint32_t Floor_LocalServiceNameW(uint32_t server, wchar_t* buffer, uint32_t size);

// The language library, the stack's word on the state, one text, the library freed.
FLOOR_API BOOL Floor_AdapterStatus(char* buffer, uint32_t size);
FLOOR_API BOOL Floor_LocalServiceStatus(uint32_t server, char* buffer, uint32_t size);
FLOOR_API BOOL Floor_LocalServiceStatusW(uint32_t server, wchar_t* buffer, uint32_t size);
FLOOR_API BOOL Floor_RemoteDeviceStatus(uint32_t device, char* buffer, uint32_t size);

// The language library loaded, not freed; one text, one conversion, one copy.
FLOOR_API uint32_t Floor_SizeText(float kilobytes, char* buffer, uint32_t size);
FLOOR_API uint32_t Floor_SizeTextWithCount(float gigabytes, const wchar_t* count, char* buffer,
                                           uint32_t size);

// The time taken apart, date and time of day formatted, one copy.
FLOOR_API uint32_t Floor_TimeText(const FILETIME* file_time, char* buffer, uint32_t size);
FLOOR_API uint32_t Floor_TimeTextW(const FILETIME* file_time, wchar_t* buffer, uint32_t size);

// The operations of the stack that the ports' rules need, each parameter into one local block.
FLOOR_API BOOL Floor_ShortcutsOfPort(uint32_t* found, int port, uint32_t* count);
FLOOR_API BOOL Floor_IsPortUsed(int port);
FLOOR_API int Floor_FreePort(void);

// Readiness, own file name, agent's window, section, view, one memcpy of `count` records.
FLOOR_API uint32_t Floor_SendFiles(const VlSendRecord* records, uint32_t count);

// Section, view, for each record one block and one memcpy.
FLOOR_API VlSendRecord* Floor_GetFiles(void);

// File made, details read by the stack into a record that is there, each line written, file closed.
FLOOR_API void Floor_ExportCard(const void* details, VlContact* contact, const char* path,
                                const CardLine* lines, uint32_t count);

// The stack's records of a device and of what is opened of it, an item for each, joined to the root.
FLOOR_API LPITEMIDLIST Floor_FilesItemList(uint32_t device, LPCITEMIDLIST root);
FLOOR_API LPITEMIDLIST Floor_PhoneFolderItemList(uint32_t device, LPCITEMIDLIST root, uint32_t flags);
FLOOR_API void Floor_FreeItemList(LPITEMIDLIST list);

// One struct and one text written to the printer file; one number and one struct read from it. The size read.
FLOOR_API void Floor_WritePrinter(const char* key, const char* stored, uint32_t size);
FLOOR_API uint32_t Floor_ReadPrinter(const char* key, char* stored);

// A pass over the Send-To folder that changes nothing: texts, folder paths, every link read, the one without
// a device written. The number of devices' links.
FLOOR_API uint32_t Floor_SyncSendTo(void);

// One GDI+ session with its bare calls; no answer is looked at. The file opened, measured and closed.
FLOOR_API void Floor_ImageProperties(const char* path, VlImageProperty* property);
// The same with a thumbnail, saved by the system's own JPEG encoder.
FLOOR_API void Floor_Thumbnail(const char* source, const char* thumbnail);
}
