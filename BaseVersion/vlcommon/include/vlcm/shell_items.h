/**
 * @file
 * Item identifier lists of the suite's shell namespace, and opening a folder of it.
 *
 * The namespace extension shows Bluetooth devices, their services and the folders of phones. A place in
 * it is a list of items: the namespace root, the device, and what is opened of the device. Every list
 * that is given out is one block of Vlcm_SHAlloc(), freed with Vlcm_SHFree().
 */
#pragma once

#include "base.h"

#include <shtypes.h>

VLCM_BEGIN

/** First word of what is the suite's own in an item; items of other extensions have another one. */
#define VLCM_SHELL_ITEM_SIGNATURE 0xAA444666U

/** Service class in an item that stands for the network classes 0x1115, 0x1116 and 0x1117. */
#define VLCM_SHELL_ITEM_NETWORK 0x2001U

/** @name Item types: what an item stands for. */
/** @{ */
#define VLCM_ITEM_PHONE_FOLDER_OTHER 0x00000000U  /**< Phone folder of neither flag. */
#define VLCM_ITEM_SERVICE_OF_DEVICE 0x00000006U   /**< Service, named by device and class. */
#define VLCM_ITEM_SPECIAL_DEVICE 0x00000012U      /**< Device, class with all of 0x500 or of 0x680. */
#define VLCM_ITEM_SERVICE 0x00000102U             /**< Service, named by shortcut. */
#define VLCM_ITEM_SEND_TO 0x00001002U             /**< Target of the Send-To link; nothing else is set. */
#define VLCM_ITEM_DEVICE 0x40000012U              /**< Any other device. */
#define VLCM_ITEM_FILES_OF_DEVICE 0xC0000016U     /**< File transfer (0x1106), by device and class. */
#define VLCM_ITEM_FILES 0xC0000302U               /**< File transfer (0x1106), by shortcut. */
#define VLCM_ITEM_PHONEBOOK_FOLDER 0xC0080002U    /**< Phone folder of VLCM_PHONE_FOLDER_PHONEBOOK. */
#define VLCM_ITEM_PHONEBOOK_OF_DEVICE 0xC0080006U /**< Phonebook access (0x112F), by device and class. */
#define VLCM_ITEM_MESSAGE_FOLDER 0xC1000002U      /**< Phone folder of VLCM_PHONE_FOLDER_MESSAGES. */
#define VLCM_ITEM_MESSAGES_OF_DEVICE 0xC1000006U  /**< Message access (0x1132), by device and class. */
/** @} */

/** Which folder of a phone; the phonebook goes first when both are given. */
enum VlPhoneFolder {
    VLCM_PHONE_FOLDER_PHONEBOOK = 0x00080000, /**< Its phonebook. */
    VLCM_PHONE_FOLDER_MESSAGES = 0x01000000   /**< Its messages. */
};

#pragma pack(push, 1)
/** One item of the suite, with the terminator that ends a list of it alone. Little-endian. */
typedef struct VlShellItem {
    uint16_t size;         /**< 114: the item without its terminator. */
    uint32_t payloadSize;  /**< 112. */
    uint32_t signature;    /**< VLCM_SHELL_ITEM_SIGNATURE. */
    uint32_t type;         /**< Item type, VLCM_ITEM_... */
    uint32_t deviceClass;  /**< Class of device, as the stack tells it. */
    uint32_t serviceClass; /**< In service items; see VLCM_SHELL_ITEM_NETWORK. Else 0. */
    uint8_t address[6];    /**< Of the device, least significant byte first. */
    char serviceName[86];  /**< In service items, at most 79 bytes and the terminator. Else zero. */
    uint16_t terminator;   /**< 0. */
} VlShellItem;

/** How the hand-off section "SHARE_MEM_FTPPIDL" begins; the item list follows. */
typedef struct VlItemListHandOff {
    uint32_t state;    /**< 1 from the sender, 2 when the helper program has taken the list. */
    uint32_t listSize; /**< Bytes of the list, its terminator included. */
} VlItemListHandOff;
#pragma pack(pop)
VLCM_CHECK(sizeof(VlShellItem) == 116, "size");
VLCM_CHECK(offsetof(VlShellItem, size) == 0, "offset");
VLCM_CHECK(offsetof(VlShellItem, payloadSize) == 2, "offset");
VLCM_CHECK(offsetof(VlShellItem, signature) == 6, "offset");
VLCM_CHECK(offsetof(VlShellItem, type) == 10, "offset");
VLCM_CHECK(offsetof(VlShellItem, deviceClass) == 14, "offset");
VLCM_CHECK(offsetof(VlShellItem, serviceClass) == 18, "offset");
VLCM_CHECK(offsetof(VlShellItem, address) == 22, "offset");
VLCM_CHECK(offsetof(VlShellItem, serviceName) == 28, "offset");
VLCM_CHECK(offsetof(VlShellItem, terminator) == 114, "offset");
VLCM_CHECK(sizeof(VlItemListHandOff) == 8, "size");
VLCM_CHECK(offsetof(VlItemListHandOff, state) == 0, "offset");
VLCM_CHECK(offsetof(VlItemListHandOff, listSize) == 4, "offset");

/**
 * Opens a folder window on a place of the shell's namespace.
 *
 * Puts the list into the named section "SHARE_MEM_FTPPIDL" (a VlItemListHandOff and the list), opens
 * "VlExecuteModule.exe" in the installation folder with the word "QVN_VLEXECUTEMODULE_BROWSEFTPFOLDER"
 * and looks up to 20 times, 100 ms apart, whether it has taken the list. Nothing tells whether a window
 * came up. Opens a trace scope of its name.
 *
 * @attention The section's name is the only lock: while a list waits to be taken, in any program, a
 * further one is dropped with the line "Error! A same name memory file already exists!!!!!!!!".
 *
 * @param[in] list  absolute item list; stays the caller's; null: nothing is done
 */
VLCM_API void VlCm_BrowseFolder(_In_opt_ LPCITEMIDLIST list);

/**
 * The place of a device's file transfer service: @p root, the device's item, the item of its first
 * shortcut to file transfer (0x1106). The stack is asked for the device's record and for the shortcut. A
 * shortcut that cannot be read is traced. Opens no trace scope.
 *
 * @param[in] device  device handle
 * @param[in] root    the namespace root; stays the caller's; null gives null
 *
 * @return a new list, freed with Vlcm_SHFree(); null: no such device, no such shortcut, or no memory
 */
VLCM_API LPITEMIDLIST VlCm_GetAbsoluteFTPSvcPidlOf(uint32_t device, _In_opt_ LPCITEMIDLIST root);

/**
 * The place of a folder of a phone: @p root, the phone's item, the folder's item. Opens the trace scope
 * "FillMobileItemPidlInfo" around the making of the last.
 *
 * @param[in] device  device handle
 * @param[in] root    the namespace root; stays the caller's; null gives null
 * @param[in] flags   which folder, see VlPhoneFolder; other bits do not count
 *
 * @return a new list, freed with Vlcm_SHFree(); null: no such device, or no memory
 */
VLCM_API LPITEMIDLIST VlCm_GetAbsoluteMobileFolderPidlOf(uint32_t device, _In_opt_ LPCITEMIDLIST root,
                                                         uint32_t flags);

/**
 * Opens a window on a folder of a phone: VlCm_BrowseFolder() with the list of
 * VlCm_GetAbsoluteMobileFolderPidlOf(). The root is what the shell link "Bluetooth Devices.lnk" in the
 * installation folder points at; reading it opens the trace scope "GetMyBtPlaceRootPidl". Without root
 * or list nothing is opened.
 *
 * @param[in] device  device handle; 0: nothing is done
 * @param[in] flags   which folder, see VlPhoneFolder
 */
VLCM_API void VlCm_BrowseMobileFolderOf(uint32_t device, uint32_t flags);

/**
 * Opens a window on a device's file transfer service: VlCm_BrowseFolder() with the list of
 * VlCm_GetAbsoluteFTPSvcPidlOf() under the root that VlCm_BrowseMobileFolderOf() takes. Without root or
 * list nothing is opened.
 *
 * @param[in] device  device handle; 0: nothing is done
 */
VLCM_API void VlCm_BrowseFTPSvcFolderOf(uint32_t device);

/**
 * The same for devices that are shell folders of their own, below My Computer: the list is My Computer,
 * the device's folder class, the item of its file transfer service (VLCM_ITEM_FILES_OF_DEVICE).
 *
 * The folder class comes from the registry key "Software\VLShellFolderCache" of HKEY_LOCAL_MACHINE,
 * 64-bit view, which is made when it is missing: the name of the first value whose data is the device's
 * 6-byte address. A device that is not there has an all-zero class. Without device address or service
 * nothing is opened.
 *
 * @param[in] device  device handle; 0: nothing is done
 */
VLCM_API void VlCm_BrowseFTPSvcFolderOfEx(uint32_t device);

VLCM_END
