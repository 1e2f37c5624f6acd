/**
 * @file
 * Records that cross the boundary between the stack and its callers.
 *
 * A caller zeroes the whole record and sets its inputs before every call, each step of a walk
 * included. Texts are UTF-8, terminated, cut to their field. Bytes that are not named belong to the
 * stack; who writes a record back that was read leaves them as they are.
 */
#pragma once

#include "base.h"

VLSDK_BEGIN

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
    uint8_t isDefault;        /**< 1: default shortcut of its device. */
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

VLSDK_END
