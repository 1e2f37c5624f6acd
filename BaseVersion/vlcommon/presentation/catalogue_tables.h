// What the library knows of service and device classes.
//
// The key stands first in a row (device rows: behind the group tag); string identifiers index
// Vl2Res.dll, icon identifiers vlLangInDepRes.dll. An icon identifier is the base of a block of five
// state variants. To add a row: put it where its class belongs, raise the count below the table, give
// its strings a text in every language of Vl2Res.dll. What a key without a row gets stands in the
// "unknown" row behind the table. Fields that are alike in all rows take no place: the icon file, a
// second icon (the icon again), a service's flag (1) and two spare words of a device (0).
#pragma once

#include <stddef.h>
#include <stdint.h>

#include <array>

namespace vl::catalogue {

// Every class's icon lies in this file; a client appends the icon index.
inline constexpr char kIconFile[256] = "vlLangInDepRes.dll,";

struct ServiceRow {
    uint16_t service_class;
    uint32_t icon;
    uint32_t local_description;   // 0: none
    uint32_t remote_description;  // 0: none
    uint32_t class_name;

    [[nodiscard]] constexpr uint16_t key() const { return service_class; }
};

// Aligned by column:
// clang-format off
inline constexpr ServiceRow kServices[] = {
    // class, icon, local, remote, name
    {0x1101, 106,  1844,  1856,  1154},  // Serial Port
    {0x1102,   1,     0,     0,  1155},  // LAN Access Using PPP
    {0x1103, 111,     0,  1864,  1156},  // Dial-up Networking
    {0x1104, 101,     0, 57933,  1157},  // IrMC Sync
    {0x1105, 116,  1845,  1857,  1180},  // OBEX Object Push
    {0x1106, 121,  1846,  1858,  1181},  // OBEX File Transfer
    {0x1107, 101,     0,     0,  1158},  // IrMC Sync Command
    {0x1108, 131,     0,  1867,  1159},  // Headset
    {0x1109,   1,  1847,     0,  1160},  // Cordless Telephony
    {0x110A, 136,  1848,     0,  1161},  // Audio Source
    {0x110B, 136,  1832,  1866,  1162},  // Audio Sink
    {0x110C,   1,     0,     0,  1163},  // A/V Remote Control Target
    {0x110D,   1,     0,     0,  1153},  // Advanced Audio Distribution
    {0x110E,   1,     0,     0,  1164},  // A/V Remote Control
    {0x110F, 141,     0,     0,  1153},  // A/V Remote Control Controller
    {0x1110, 126,     0,     0,  1165},  // Intercom
    {0x1111, 146,  1849,  1859,  1166},  // Fax
    {0x1112,   1,  1850,     0,  1167},  // Headset Audio Gateway
    {0x1113,   1,     0,     0,  1153},  // WAP
    {0x1114,   1,     0,     0,  1153},  // WAP Client
    {0x2001,  76,  1852,  1860,  1168},  // stack-specific
    {0x1115,  76,  1852,  1860,  1168},  // PAN User
    {0x1116,  76,  1853,  1861,  1169},  // Network Access Point
    {0x1117,  76,  1854,  1862,  1170},  // Group Ad-hoc Network
    {0x1118, 156, 57673,  1870, 57675},  // Direct Printing
    {0x1119, 156,     0,     0,  1153},  // Reference Printing
    {0x111A,  81,     0,     0,  1153},  // Imaging
    {0x111B,  81,  1855,  1863, 57669},  // Imaging Responder
    {0x111C,  81,     0,     0,  1172},  // Imaging Automatic Archive
    {0x111D,  81,     0,     0,  1173},  // Imaging Referenced Objects
    {0x111E, 131,     0,  1868,  1174},  // Hands-Free
    {0x111F, 151,  1851,     0,  1175},  // Hands-Free Audio Gateway
    {0x1124,  86,     0,  1869,  1176},  // Human Interface Device
    {0x1125,  91,     0,     0,  1177},  // Hardcopy Cable Replacement
    {0x1126,  91,     0,  1870,  1177},  // HCR Print
    {0x1127,  91,     0,     0,  1153},  // HCR Scan
    {0x112D,  96,     0,  1871,  1178},  // SIM Access
    {0x1200,   1,     0,     0,  1179},  // PnP Information
    {0x112F, 121,     0, 57931, 57932},  // Phonebook Access Server
    {0x1132, 256,     0,  1984,  1992},  // Message Access Server
    {0x1800, 285,     0, 57939, 57940},  // Generic Access
    {0x0001, 285,     0,   624,   630},  // stack-specific
    {0x0002, 285,     0,   620,   625},  // stack-specific
    {0x0003,   0,     0,   617,   625},  // stack-specific
    {0x0004, 285,     0,   623,   629},  // stack-specific
    {0x0005, 285,     0,     0,   626},  // stack-specific
    {0x0006, 285,     0,   621,   627},  // stack-specific
    {0x0007, 285,     0,   622,   628},  // stack-specific
};
// clang-format on
inline constexpr ServiceRow kUnknownService = {0, 1, 0, 0, 1153};

// Services over the low-energy radio; only their icons are asked for.
// Aligned by column:
// clang-format off
inline constexpr ServiceRow kLowEnergyServices[] = {
    {0x1802, 279, 0, 1984, 1992},  // Immediate Alert
    {0x1803, 282, 0, 1984, 1992},  // Link Loss
    {0x1809, 280, 0, 1984, 1992},  // Health Thermometer
    {0x180D, 283, 0, 1984, 1992},  // Heart Rate
    {0x1812, 281, 0, 1984, 1992},  // HID over GATT
};
// clang-format on
inline constexpr ServiceRow kUnknownLowEnergyService = {0, 278, 0, 0, 0};

// Major class, minor class and format bits of a class of device: what is compared.
inline constexpr uint32_t kDeviceClassMask = 0x1FFF;

struct DeviceRow {
    uint32_t group;  // kinds that belong together
    uint32_t device_class;
    uint32_t icon;
    uint32_t major_name;
    uint32_t minor_name;

    [[nodiscard]] constexpr uint16_t key() const {
        return static_cast<uint16_t>(device_class & kDeviceClassMask);
    }
};

// A class whose minor part has no row is unknown: it does not get the row of its major class.
// Aligned by column:
// clang-format off
inline constexpr DeviceRow kDevices[] = {
    // group, class, icon, major, minor
    { 0, 0x1F00,   1,  1207,  1101},  // Uncategorized: uncategorized
    { 1, 0x0100,   6,  1204,  1103},  // Computer: uncategorized
    { 1, 0x0104,   6,  1204,  1103},  // Computer: desktop workstation
    { 1, 0x0108,   6,  1204,  1104},  // Computer: server-class computer
    { 2, 0x010C,  11,  1204,  1105},  // Computer: laptop
    { 3, 0x0110,  16,  1204,  1106},  // Computer: handheld PC/PDA
    { 3, 0x0114,  16,  1204,  1107},  // Computer: palm-size PC/PDA
    { 3, 0x0118,  16,  1204,  1108},  // Computer: wearable computer
    { 4, 0x0200,  21,  1201,  1109},  // Phone: uncategorized
    { 4, 0x0204,  21,  1201,  1110},  // Phone: cellular
    { 4, 0x0208,  21,  1201,  1111},  // Phone: cordless
    { 4, 0x020C,  21,  1201,  1112},  // Phone: smartphone
    { 5, 0x0210,  31,  1201,  1113},  // Phone: wired modem or voice gateway
    { 5, 0x0214,  31,  1201,  1114},  // Phone: common ISDN access
    { 5, 0x0218,  31,  1201,  1115},  // Phone: minor 6
    { 6, 0x0300,  31,  1202,  1116},  // LAN/network access point: fully available
    { 6, 0x0320,  31,  1202,  1116},  // LAN/network access point: 1-17% utilised
    { 6, 0x0340,  31,  1202,  1116},  // LAN/network access point: 17-33% utilised
    { 6, 0x0360,  31,  1202,  1116},  // LAN/network access point: 33-50% utilised
    { 6, 0x0380,  31,  1202,  1116},  // LAN/network access point: 50-67% utilised
    { 6, 0x03A0,  31,  1202,  1116},  // LAN/network access point: 67-83% utilised
    { 6, 0x03C0,  31,  1202,  1116},  // LAN/network access point: 83-99% utilised
    { 6, 0x03E0,  31,  1202,  1116},  // LAN/network access point: no service available
    { 7, 0x0400,  41,  1203,  1124},  // Audio/video: uncategorized
    { 7, 0x0404,  41,  1203,  1125},  // Audio/video: wearable headset
    { 7, 0x0408,  41,  1203,  1126},  // Audio/video: hands-free
    { 7, 0x040C,  41,  1203,  1126},  // Audio/video: minor 3 (reserved)
    { 7, 0x0410,  41,  1203,  1128},  // Audio/video: microphone
    { 8, 0x0414, 298,  1203,  1129},  // Audio/video: loudspeaker
    { 8, 0x0418,  41,  1203,  1130},  // Audio/video: headphones
    { 8, 0x041C,  41,  1203,  1131},  // Audio/video: portable audio
    { 0, 0x0420,  41,  1203,  1132},  // Audio/video: car audio
    { 0, 0x0424,  41,  1203,  1133},  // Audio/video: set-top box
    { 8, 0x0428, 298,  1203,  1134},  // Audio/video: HiFi audio
    { 0, 0x042C,  61,  1203,  1135},  // Audio/video: VCR
    { 0, 0x0430,  61,  1203,  1136},  // Audio/video: video camera
    { 0, 0x0434,  61,  1203,  1137},  // Audio/video: camcorder
    { 0, 0x0438,  61,  1203,  1138},  // Audio/video: video monitor
    { 0, 0x043C,  61,  1203,  1139},  // Audio/video: video display and loudspeaker
    { 0, 0x0440,  61,  1203,  1140},  // Audio/video: video conferencing
    { 0, 0x0448,  61,  1203,  1141},  // Audio/video: gaming/toy
    { 9, 0x0500,  46,  1205,  1142},  // Peripheral: uncategorized
    {10, 0x0540,  51,  1205,  1142},  // Peripheral: keyboard
    {11, 0x0580,  56,  1205,  1143},  // Peripheral: pointing device
    { 9, 0x05C0,  46,  1205,  1144},  // Peripheral: combo keyboard/pointing
    {12, 0x0504,  46,  1205,  1145},  // Peripheral: joystick
    {12, 0x0508,  46,  1205,  1146},  // Peripheral: gamepad
    {12, 0x050C,  46,  1205,  1147},  // Peripheral: remote control
    { 9, 0x0510,  46,  1205,  1148},  // Peripheral: sensing device
    { 9, 0x0511,  46,  1205,  1101},  // Peripheral: sensing device with format bits 01
    {13, 0x0600,  66,  1206,  1101},  // Imaging: uncategorized
    { 1, 0x0610,   6,  1206,  1149},  // Imaging: display
    {13, 0x0620,  66,  1206,  1150},  // Imaging: camera
    {14, 0x0640,  36,  1206,  1151},  // Imaging: scanner
    {15, 0x0680,  36,  1206,  1152},  // Imaging: printer
    {16, 0x1800, 278, 57941, 57941},  // low-energy device, stack-specific
};
// clang-format on
inline constexpr DeviceRow kUnknownDevice = {0, 0, 1, 1101, 1101};

inline constexpr uint32_t kLowEnergyDeviceIcon = 278;

// The place of an icon in its file.
struct IconRow {
    uint16_t icon;
    uint32_t index;

    [[nodiscard]] constexpr uint16_t key() const { return icon; }
};

inline constexpr size_t kNumberedIcons = 36;

// The base icons stand five apart, their state variants between them; the later ones are listed.
consteval std::array<IconRow, kNumberedIcons> number_icons() {
    constexpr IconRow kLater[] = {{250, 161}, {278, 175}, {285, 181}, {298, 183}};
    std::array<IconRow, kNumberedIcons> rows{};
    size_t next = 0;
    for (uint16_t index = 0; index <= 155; index = static_cast<uint16_t>(index + 5)) {
        rows[next++] = {static_cast<uint16_t>(index + 1), index};
    }
    for (const IconRow& row : kLater) rows[next++] = row;
    return rows;
}

inline constexpr std::array<IconRow, kNumberedIcons> kIconNumbers = number_icons();
inline constexpr IconRow kUnnumberedIcon = {0, 0};

template <typename Rows>
consteval bool keys_are_unique(const Rows& rows) {
    for (size_t i = 0; i < std::size(rows); ++i) {
        for (size_t j = 0; j < i; ++j) {
            if (rows[i].key() == rows[j].key()) return false;
        }
    }
    return true;
}

static_assert(std::size(kServices) == 48 && keys_are_unique(kServices));
static_assert(std::size(kLowEnergyServices) == 5 && keys_are_unique(kLowEnergyServices));
static_assert(std::size(kDevices) == 56 && keys_are_unique(kDevices));
static_assert(std::size(kIconNumbers) == 36 && keys_are_unique(kIconNumbers));
static_assert(kIconNumbers[31].icon == 156 && kIconNumbers[31].index == 155);

}  // namespace vl::catalogue
