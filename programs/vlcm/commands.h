// The sub-commands: each asks for facts and prints them for people.
#pragma once

#include "answer.h"

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace programs {

// Adapter, local services and devices with services and shortcuts. Hidden items are left out unless `all`.
[[nodiscard]] Answer ask_show(bool all);
void print_show(const Json& facts);

// Everything about one device, hidden items included.
[[nodiscard]] Answer ask_device(const std::string& address_or_name);
void print_device(const Json& facts);

// The COM ports that are taken, by whom, and the next free one. kNo: none is free.
[[nodiscard]] Answer ask_ports();
void print_ports(const Json& facts);

// The service and device classes that the library knows.
[[nodiscard]] Answer ask_catalogue();
void print_catalogue(const Json& facts);

// What to use for a device's audio and network. kNo: nothing for either.
[[nodiscard]] Answer ask_connectable(const std::string& address_or_name);
void print_connectable(const Json& facts);

struct Sending {
    std::string device;
    std::vector<std::string> files;
    std::string way;
};
// Hands files to the tray agent, one at a time. kNo: not all were handed over.
[[nodiscard]] Answer ask_send(const Sending& sending);
void print_send(const Json& facts);

struct ContactExport {
    std::string details;  // file with a contact's details, as the phone sent them
    std::string card;     // vCard file to write; one of the same name is replaced
};
// Writes a vCard of a contact.
[[nodiscard]] Answer ask_contact_export(const ContactExport& given);
void print_contact_export(const Json& facts);

// An item identifier list: a file of its bytes, a shell link, or hexadecimal digits; or else the place
// ("files", "phonebook", "messages") of a device.
struct ItemSource {
    std::string list;
    std::string device;
    std::string place;
};
// The list, item by item. kNo: it is broken, or the device has no such place.
[[nodiscard]] Answer ask_item_show(const ItemSource& source);
void print_item_show(const Json& facts);

// A file of a remote device.
struct FileDescription {
    std::string name;
    uint64_t size = 0;
    std::string time;  // "2011-03-14T15:09:26"; empty: none
    bool folder = false;
};
// Nothing for a text that is no time.
[[nodiscard]] std::optional<FILETIME> file_time_of(const std::string& text);
// What the library says of the file.
[[nodiscard]] Answer ask_file_describe(const FileDescription& given);
void print_file_describe(const Json& facts);
// Has the tray agent show the file's property sheet. kNo: it was not handed over.
[[nodiscard]] Answer ask_file_show(const FileDescription& given);
void print_file_show(const Json& facts);

// Paths and switches, with the keys that they come from.
[[nodiscard]] Answer ask_settings();
void print_settings(const Json& facts);

}  // namespace programs
