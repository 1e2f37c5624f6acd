/**
 * @file
 * The stack SDK: devices, services, shortcuts, connections, settings files, registry and memory.
 *
 * Only what the suite's common library calls is declared. All operations use the platform's one
 * 64-bit calling convention and undecorated names. 0 is success and no handle unless said otherwise.
 */
#pragma once

#include <sal.h>
#include <stddef.h>
#include <stdint.h>
#include <windows.h>

#ifndef VLSDK_API
#define VLSDK_API __declspec(dllimport)
#endif

#ifdef __cplusplus
#define VLSDK_CHECK(condition, text) static_assert(condition, text)
extern "C" {
#else
#define VLSDK_CHECK(condition, text) _Static_assert(condition, text)
#endif

typedef uint32_t BtHandle; /**< Device, service, shortcut, connection or enumeration; 0 = none. */

/** A saved connection to one remote service. Bytes not named belong to the stack. */
typedef struct ShortcutProperty {
    BtHandle shortcut;        /**< Input: which shortcut. */
    BtHandle connection;      /**< Non-zero while connected. */
    BtHandle device;          /**< Valid when deviceValid is 1. */
    BtHandle service;         /**< Remote service that the shortcut connects to. */
    uint8_t deviceValid;      /**< 1: use device; otherwise look the address up. */
    uint8_t stackFlag;        /**< Set to 1 when a shortcut is created. */
    uint8_t address[6];       /**< Of the remote device. */
    uint16_t serviceClass;    /**< Of the remote service. */
    uint16_t mask;            /**< Input: what is asked for, see ShortcutMask. */
    char name[164];           /**< Shortcut name, UTF-8. */
    char serviceName[80];     /**< Service name, UTF-8. */
    uint32_t deviceClass;     /**< Of the remote device. */
    uint8_t isDefault;        /**< 1: default shortcut of its service class. */
    uint8_t reserved277;      /**< The stack's. */
    uint16_t parameterLength; /**< Bytes at parameter: in its room, out its true length. */
    void *parameter;          /**< Application parameter, the caller's block (mask 64). */
} ShortcutProperty;
VLSDK_CHECK(sizeof(ShortcutProperty) == 288, "size");
VLSDK_CHECK(offsetof(ShortcutProperty, shortcut) == 0, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, connection) == 4, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, device) == 8, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, service) == 12, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, deviceValid) == 16, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, stackFlag) == 17, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, address) == 18, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, serviceClass) == 24, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, mask) == 26, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, name) == 28, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, serviceName) == 192, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, deviceClass) == 272, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, isDefault) == 276, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, reserved277) == 277, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, parameterLength) == 278, "offset");
VLSDK_CHECK(offsetof(ShortcutProperty, parameter) == 280, "offset");

/** Query masks of a shortcut record. */
enum ShortcutMask {
    kShortcutMaskPlain = 0,     /**< The plain fields. */
    kShortcutMaskShellItem = 4, /**< For shell items. */
    kShortcutMaskCreate = 13,   /**< For a new shortcut. */
    kShortcutMaskDefault = 16,  /**< The default flag. */
    kShortcutMaskParameter = 64 /**< The application parameter. */
};

/** A live connection. */
typedef struct ConnectionProperty {
    uint32_t roleAndFlags;  /**< The low two bits are the role. */
    BtHandle device;        /**< Remote device. */
    BtHandle service;       /**< Remote service used. */
    uint16_t serviceClass;  /**< Of the connection. */
    uint8_t reserved14[14]; /**< The stack's. */
} ConnectionProperty;
VLSDK_CHECK(sizeof(ConnectionProperty) == 28, "size");
VLSDK_CHECK(offsetof(ConnectionProperty, roleAndFlags) == 0, "offset");
VLSDK_CHECK(offsetof(ConnectionProperty, device) == 4, "offset");
VLSDK_CHECK(offsetof(ConnectionProperty, service) == 8, "offset");
VLSDK_CHECK(offsetof(ConnectionProperty, serviceClass) == 12, "offset");
VLSDK_CHECK(offsetof(ConnectionProperty, reserved14) == 14, "offset");

/** A local server or a remote service. */
typedef struct ServerAttributes {
    uint16_t mask;         /**< Input: what is asked for, see ServerMask. */
    uint16_t serviceClass; /**< Of the server or service. */
    uint32_t reserved4;    /**< The stack's. */
    char name[80];         /**< Service name, UTF-8 (mask 1). */
    void *extension;       /**< Extended attributes (mask 8); freed with Btsdk_FreeMemory. */
    uint8_t reserved96[8]; /**< The stack's. */
} ServerAttributes;
VLSDK_CHECK(sizeof(ServerAttributes) == 104, "size");
VLSDK_CHECK(offsetof(ServerAttributes, mask) == 0, "offset");
VLSDK_CHECK(offsetof(ServerAttributes, serviceClass) == 2, "offset");
VLSDK_CHECK(offsetof(ServerAttributes, reserved4) == 4, "offset");
VLSDK_CHECK(offsetof(ServerAttributes, name) == 8, "offset");
VLSDK_CHECK(offsetof(ServerAttributes, extension) == 88, "offset");
VLSDK_CHECK(offsetof(ServerAttributes, reserved96) == 96, "offset");

/** Query masks of a server record. */
enum ServerMask {
    kServerMaskPlain = 0,    /**< The plain fields. */
    kServerMaskName = 1,     /**< The name. */
    kServerMaskExtension = 8 /**< The extended-attribute block. */
};

/** A known remote device. */
typedef struct RemoteDeviceProperty {
    uint8_t reserved0[8];   /**< The stack's. */
    uint8_t address[6];     /**< Least significant byte first. */
    char name[66];          /**< UTF-8. */
    uint32_t deviceClass;   /**< 24-bit class of device. */
    uint8_t reserved84[32]; /**< The stack's. */
} RemoteDeviceProperty;
VLSDK_CHECK(sizeof(RemoteDeviceProperty) == 116, "size");
VLSDK_CHECK(offsetof(RemoteDeviceProperty, reserved0) == 0, "offset");
VLSDK_CHECK(offsetof(RemoteDeviceProperty, address) == 8, "offset");
VLSDK_CHECK(offsetof(RemoteDeviceProperty, name) == 14, "offset");
VLSDK_CHECK(offsetof(RemoteDeviceProperty, deviceClass) == 80, "offset");
VLSDK_CHECK(offsetof(RemoteDeviceProperty, reserved84) == 84, "offset");

/** @name Readiness and features */
/**@{*/
VLSDK_API uint8_t Btsdk_IsBluetoothReady(void);
VLSDK_API uint32_t Btsdk_AGAP_IsAudioConnExisted(_Out_ uint32_t *exists);
VLSDK_API uint32_t Btsdk_IsMobileActive(void);
VLSDK_API uint32_t Btsdk_IsSupportADFunction(void);
/**@}*/

/** @name Shortcuts */
/**@{*/
VLSDK_API uint32_t Btsdk_GetShortCutProperty(_Inout_ ShortcutProperty *property);
VLSDK_API uint32_t Btsdk_SetShortCutProperty(_In_ ShortcutProperty *property);
VLSDK_API BtHandle Btsdk_GetDefaultShortCut(uint16_t serviceClass);
VLSDK_API uint32_t Btsdk_GetShortCutByDeviceHandle(BtHandle device, uint16_t serviceClass,
                                                   _Out_writes_opt_(count) BtHandle *shortcuts,
                                                   uint32_t count);
VLSDK_API uint32_t Btsdk_GetShortCutByServiceHandle(BtHandle device, BtHandle service,
                                                    _Out_writes_opt_(count) BtHandle *shortcuts,
                                                    uint32_t count);
VLSDK_API uint32_t Btsdk_GetShortCutByServiceClass(uint16_t serviceClass,
                                                   _Out_writes_opt_(count) BtHandle *shortcuts,
                                                   uint32_t count);
VLSDK_API uint32_t Btsdk_GetAllShortCuts(_Out_writes_opt_(count) BtHandle *shortcuts, uint32_t count);
VLSDK_API BtHandle Btsdk_GetShortCutByName(_In_ const char *name);
VLSDK_API uint32_t Btsdk_CreateShortCutEx(_Inout_ ShortcutProperty *property);
VLSDK_API uint32_t Btsdk_DeleteShortCut(BtHandle shortcut);
/**@}*/

/** @name Remote devices */
/**@{*/
VLSDK_API BtHandle Btsdk_GetRemoteDeviceHandle(_In_reads_(6) const uint8_t *address);
VLSDK_API uint32_t Btsdk_GetRemoteDeviceAddress(BtHandle device, _Out_writes_(6) uint8_t *address);
VLSDK_API uint32_t Btsdk_GetRemoteDeviceClass(BtHandle device, _Out_ uint32_t *deviceClass);
VLSDK_API uint32_t Btsdk_GetRemoteDeviceProperty(BtHandle device, _Out_ RemoteDeviceProperty *property);
VLSDK_API uint32_t Btsdk_GetRemoteDeviceParam(BtHandle device, _Out_ uint32_t *parameter);
VLSDK_API uint32_t Btsdk_GetRemoteDeviceType(BtHandle device);
VLSDK_API uint32_t Btsdk_GetRemoteDeviceName(BtHandle device, _Out_ char *name, _Inout_ uint32_t *length);
VLSDK_API uint8_t Btsdk_IsDeviceConnected(BtHandle device);
VLSDK_API uint32_t Btsdk_IsDevicePaired(BtHandle device, _Out_ uint32_t *paired);
VLSDK_API BtHandle Btsdk_StartEnumRemoteDevice(uint32_t mask, uint32_t deviceClass);
VLSDK_API BtHandle Btsdk_EnumRemoteDevice(BtHandle enumeration, _Out_ RemoteDeviceProperty *property);
VLSDK_API uint32_t Btsdk_EndEnumRemoteDevice(BtHandle enumeration);
/**@}*/

/** @name Remote services */
/**@{*/
VLSDK_API BtHandle Btsdk_StartEnumRemoteService(BtHandle device);
VLSDK_API BtHandle Btsdk_EnumRemoteService(BtHandle enumeration, _Out_ ServerAttributes *attributes);
VLSDK_API uint32_t Btsdk_EndEnumRemoteService(BtHandle enumeration);
VLSDK_API uint32_t Btsdk_GetRemoteServiceAttributes(BtHandle service, _Inout_ ServerAttributes *attributes);
VLSDK_API uint32_t Btsdk_SetRemoteServiceParam(BtHandle service, uint32_t parameter);
/**@}*/

/** @name Local device and servers */
/**@{*/
VLSDK_API uint32_t Btsdk_GetLocalDeviceClass(_Out_ uint32_t *deviceClass);
VLSDK_API uint32_t Btsdk_SetLocalDeviceClass(uint32_t deviceClass);
VLSDK_API BtHandle Btsdk_StartEnumLocalServer(void);
VLSDK_API BtHandle Btsdk_EnumLocalServer(BtHandle enumeration, _Out_ ServerAttributes *attributes);
VLSDK_API uint32_t Btsdk_EndEnumLocalServer(BtHandle enumeration);
VLSDK_API uint32_t Btsdk_GetServerStatus(BtHandle server, _Out_ uint32_t *status);
VLSDK_API uint32_t Btsdk_GetServerAttributes(BtHandle server, _Inout_ ServerAttributes *attributes);
VLSDK_API uint32_t Btsdk_StartServer(BtHandle server);
VLSDK_API uint32_t Btsdk_StopServer(BtHandle server);
/**@}*/

/** @name Connections */
/**@{*/
VLSDK_API BtHandle Btsdk_StartEnumConnection(void);
VLSDK_API BtHandle Btsdk_EnumConnection(BtHandle enumeration, _Out_ ConnectionProperty *property);
VLSDK_API uint32_t Btsdk_EndEnumConnection(BtHandle enumeration);
VLSDK_API int32_t Btsdk_GetAllIncomingConnections(_Out_writes_opt_(count) BtHandle *connections,
                                                  uint32_t count);
VLSDK_API uint32_t Btsdk_GetConnectionProperty(BtHandle connection, _Out_ ConnectionProperty *property);
/**@}*/

/** @name Tray agent and virtual COM ports */
/**@{*/
VLSDK_API uint32_t Btsdk_PostMessageToCtrlCenter(uint32_t message, uint32_t parameter);
VLSDK_API uint32_t Btsdk_CommNumToSerialNum(int32_t port);
VLSDK_API uint32_t Btsdk_PlugOutVComm(uint32_t serial, uint32_t flag);
VLSDK_API uint32_t Btsdk_DeinitCommObj(uint8_t port);
/**@}*/

/** @name Files, memory and contact parsing */
/**@{*/
VLSDK_API HANDLE Btsdk_CreateFile(_In_ const char *path, uint32_t access, uint32_t disposition,
                                  uint32_t attributes, _In_opt_ HANDLE pattern);
VLSDK_API BOOL Btsdk_WriteFile(HANDLE file, _In_reads_bytes_(size) const void *data, uint32_t size,
                               _Out_opt_ uint32_t *written, _In_opt_ void *overlapped);
VLSDK_API BOOL Btsdk_CloseHandle(HANDLE file);
VLSDK_API uint32_t Btsdk_PIMParseContactDetails2(_In_ const void *details, _Inout_ void *contact);
VLSDK_API void *Btsdk_MallocMemory(uint32_t size);
VLSDK_API void Btsdk_FreeMemory(_In_opt_ void *block);
/**@}*/

/** @name Settings files, as the Win32 operations; the path comes last */
/**@{*/
VLSDK_API uint32_t Btsdk_GetPrivateProfileString(_In_opt_ const char *section, _In_opt_ const char *key,
                                                 _In_opt_ const char *fallback, _Out_writes_(size) char *text,
                                                 uint32_t size, _In_ const char *path);
VLSDK_API uint32_t Btsdk_GetPrivateProfileInt(_In_ const char *section, _In_ const char *key,
                                              int32_t fallback, _In_ const char *path);
VLSDK_API uint32_t Btsdk_GetPrivateProfileSection(_In_ const char *section, _Out_writes_(size) char *text,
                                                  uint32_t size, _In_ const char *path);
VLSDK_API BOOL Btsdk_WritePrivateProfileString(_In_ const char *section, _In_opt_ const char *key,
                                               _In_opt_ const char *value, _In_ const char *path);
VLSDK_API BOOL Btsdk_WritePrivateProfileInt(_In_ const char *section, _In_ const char *key, int32_t value,
                                            _In_ const char *path);
VLSDK_API BOOL Btsdk_GetPrivateProfileStruct(_In_ const char *section, _In_ const char *key,
                                             _Out_writes_bytes_(size) void *record, uint32_t size,
                                             _In_ const char *path);
VLSDK_API BOOL Btsdk_WritePrivateProfileStruct(_In_ const char *section, _In_ const char *key,
                                               _In_reads_bytes_(size) void *record, uint32_t size,
                                               _In_ const char *path);
/**@}*/

/** @name Registry, as the Win32 operations; a null value name is the default value */
/**@{*/
VLSDK_API uint32_t Btsdk_RegOpenKey(HKEY root, _In_ const char *sub, _Out_ HKEY *key);
VLSDK_API uint32_t Btsdk_RegCreateKey(HKEY root, _In_ const char *sub, _Out_ HKEY *key);
VLSDK_API uint32_t Btsdk_RegCloseKey(HKEY key);
VLSDK_API uint32_t Btsdk_RegEnumKey(HKEY key, uint32_t index, _Out_writes_(size) char *name, uint32_t size);
VLSDK_API uint32_t Btsdk_RegEnumValue(HKEY key, uint32_t index, _Out_ char *name,
                                      _Inout_ uint32_t *nameLength, _Out_opt_ uint32_t *type,
                                      _Out_opt_ void *data, _Inout_opt_ uint32_t *dataLength);
VLSDK_API uint32_t Btsdk_RegQueryInfoKey(HKEY key, _Out_opt_ uint32_t *subKeys, _Out_opt_ uint32_t *values);
VLSDK_API uint32_t Btsdk_RegQueryStringValue(HKEY key, _In_opt_ const char *value,
                                             _Out_writes_(size) char *text, uint32_t size);
VLSDK_API uint32_t Btsdk_RegQueryIntValue(HKEY key, _In_opt_ const char *value, _Out_ uint32_t *number);
VLSDK_API uint32_t Btsdk_RegQueryBinaryValue(HKEY key, _In_opt_ const char *value, _Out_ void *data,
                                             _Inout_ uint32_t *size);
VLSDK_API uint32_t Btsdk_RegCreateKeyForX64Reg(HKEY root, _In_ const char *sub, _Out_ HKEY *key);
VLSDK_API uint32_t Btsdk_RegEnumValueForX64Reg(HKEY key, uint32_t index, _Out_ char *name,
                                               _Inout_ uint32_t *nameLength, _Out_opt_ uint32_t *type,
                                               _Out_opt_ void *data, _Inout_opt_ uint32_t *dataLength);
VLSDK_API uint32_t Btsdk_RegCloseKeyForX64Reg(HKEY key);
/**@}*/

#ifdef __cplusplus
}
#endif
