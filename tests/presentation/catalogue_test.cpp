// The catalogue of service and device classes, against a transcription of its own.
#include "vlcm/catalogue.h"
#include "presentation/catalogue_tables.h"
#include "support/call_patch.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include <map>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using support::CallPatch;

namespace {

class Catalogue : public support::SuiteTest {};

// Key, then its columns; a semicolon ends a row.
using Columns = std::vector<unsigned>;
using Table = std::map<unsigned, Columns>;

// Class, icon, local description, remote description, name.
const char kServices[] = R"(
    1101 106 1844 1856 1154; 1102 1 0 0 1155; 1103 111 0 1864 1156;
    1104 101 0 57933 1157; 1105 116 1845 1857 1180; 1106 121 1846 1858 1181;
    1107 101 0 0 1158; 1108 131 0 1867 1159; 1109 1 1847 0 1160;
    110a 136 1848 0 1161; 110b 136 1832 1866 1162; 110c 1 0 0 1163;
    110d 1 0 0 1153; 110e 1 0 0 1164; 110f 141 0 0 1153;
    1110 126 0 0 1165; 1111 146 1849 1859 1166; 1112 1 1850 0 1167;
    1113 1 0 0 1153; 1114 1 0 0 1153; 2001 76 1852 1860 1168;
    1115 76 1852 1860 1168; 1116 76 1853 1861 1169; 1117 76 1854 1862 1170;
    1118 156 57673 1870 57675; 1119 156 0 0 1153; 111a 81 0 0 1153;
    111b 81 1855 1863 57669; 111c 81 0 0 1172; 111d 81 0 0 1173;
    111e 131 0 1868 1174; 111f 151 1851 0 1175; 1124 86 0 1869 1176;
    1125 91 0 0 1177; 1126 91 0 1870 1177; 1127 91 0 0 1153;
    112d 96 0 1871 1178; 1200 1 0 0 1179; 112f 121 0 57931 57932;
    1132 256 0 1984 1992; 1800 285 0 57939 57940; 0001 285 0 624 630;
    0002 285 0 620 625; 0003 0 0 617 625; 0004 285 0 623 629;
    0005 285 0 0 626; 0006 285 0 621 627; 0007 285 0 622 628;
)";

// Class, icon, remote description, name.
const char kLowEnergyServices[] = R"(
    1802 279 1984 1992; 1803 282 1984 1992; 1809 280 1984 1992; 180d 283 1984 1992; 1812 281 1984 1992;
)";

// Class, icon, major name, minor name, group.
const char kDevices[] = R"(
    1f00 1 1207 1101 0; 0100 6 1204 1103 1; 0104 6 1204 1103 1; 0108 6 1204 1104 1;
    010c 11 1204 1105 2; 0110 16 1204 1106 3; 0114 16 1204 1107 3; 0118 16 1204 1108 3;
    0200 21 1201 1109 4; 0204 21 1201 1110 4; 0208 21 1201 1111 4; 020c 21 1201 1112 4;
    0210 31 1201 1113 5; 0214 31 1201 1114 5; 0218 31 1201 1115 5; 0300 31 1202 1116 6;
    0320 31 1202 1116 6; 0340 31 1202 1116 6; 0360 31 1202 1116 6; 0380 31 1202 1116 6;
    03a0 31 1202 1116 6; 03c0 31 1202 1116 6; 03e0 31 1202 1116 6; 0400 41 1203 1124 7;
    0404 41 1203 1125 7; 0408 41 1203 1126 7; 040c 41 1203 1126 7; 0410 41 1203 1128 7;
    0414 298 1203 1129 8; 0418 41 1203 1130 8; 041c 41 1203 1131 8; 0420 41 1203 1132 0;
    0424 41 1203 1133 0; 0428 298 1203 1134 8; 042c 61 1203 1135 0; 0430 61 1203 1136 0;
    0434 61 1203 1137 0; 0438 61 1203 1138 0; 043c 61 1203 1139 0; 0440 61 1203 1140 0;
    0448 61 1203 1141 0; 0500 46 1205 1142 9; 0540 51 1205 1142 10; 0580 56 1205 1143 11;
    05c0 46 1205 1144 9; 0504 46 1205 1145 12; 0508 46 1205 1146 12; 050c 46 1205 1147 12;
    0510 46 1205 1148 9; 0511 46 1205 1101 9; 0600 66 1206 1101 13; 0610 6 1206 1149 1;
    0620 66 1206 1150 13; 0640 36 1206 1151 14; 0680 36 1206 1152 15; 1800 278 57941 57941 16;
)";

Table parse(const char* text) {
    Table table;
    std::istringstream rows(text);
    for (std::string row; std::getline(rows, row, ';');) {
        std::istringstream columns(row);
        unsigned key = 0;
        if (!(columns >> std::hex >> key)) continue;
        Columns values;
        for (unsigned value = 0; columns >> std::dec >> value;) values.push_back(value);
        EXPECT_TRUE(table.emplace(key, values).second) << "twice: " << std::hex << key;
    }
    return table;
}

const Columns& row_of(const Table& table, unsigned key, const Columns& unknown) {
    const auto found = table.find(key);
    return found == table.end() ? unknown : found->second;
}

std::map<unsigned, unsigned> icon_numbers() {
    std::map<unsigned, unsigned> numbers = {{250, 161}, {278, 175}, {285, 181}, {298, 183}};
    for (unsigned k = 0; k <= 31; ++k) numbers[1 + 5 * k] = 5 * k;
    return numbers;
}

unsigned index_of(unsigned icon) {
    static const std::map<unsigned, unsigned> numbers = icon_numbers();
    const auto found = numbers.find(icon);
    return found == numbers.end() ? 0 : found->second;
}

void expect_service(unsigned key, const Columns& row) {
    ASSERT_EQ(VlCm_GetSvcIconID(key), row[0]) << std::hex << key;
    ASSERT_EQ(VlCm_GetSvcIconIndex(key), index_of(row[0])) << std::hex << key;
}

// The names take the class as 16 bits.
void expect_service_texts(unsigned key, const Columns& row) {
    const auto service = static_cast<unsigned short>(key);
    ASSERT_EQ(VlCm_GetLocSvcDesStrID(service), row[1]) << std::hex << key;
    ASSERT_EQ(VlCm_GetRmtSvcDesStrID(service), row[2]) << std::hex << key;
    ASSERT_EQ(VlCm_GetServiceClsNameStringID(service), row[3]) << std::hex << key;
}

void expect_device(unsigned key, const Columns& row) {
    ASSERT_EQ(VlCm_GetDeviceIconID(key), row[0]) << std::hex << key;
    ASSERT_EQ(VlCm_GetDeviceIconIndex(key), index_of(row[0])) << std::hex << key;
    ASSERT_EQ(VlCm_GetDevMajorClsNameID(key), row[1]) << std::hex << key;
    ASSERT_EQ(VlCm_GetDevMinorClsNameID(key), row[2]) << std::hex << key;
    ASSERT_EQ(VlCm_GetDeviceClsNameStringID(key), row[2]) << std::hex << key;
}

const Columns kUnknownService = {1, 0, 0, 1153};
const Columns kUnknownDevice = {1, 1101, 1101};

TEST_F(Catalogue, AnswersEveryServiceClass) {
    const Table services = parse(kServices);
    ASSERT_EQ(services.size(), 48U);
    for (unsigned key = 0; key <= 0xFFFF && !HasFatalFailure(); ++key) {
        const Columns& row = row_of(services, key, kUnknownService);
        expect_service(key, row);
        expect_service_texts(key, row);
    }
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(Catalogue, ComparesServiceClassesWhole) {
    std::mt19937 random(31);
    for (const char* text : {kServices, kLowEnergyServices}) {
        for (const auto& [key, row] : parse(text)) {
            for (int round = 0; round < 200 && !HasFatalFailure(); ++round) {
                const unsigned above = key | static_cast<unsigned>(1 + random() % 0xFFFF) << 16;
                expect_service(above, kUnknownService);
                ASSERT_EQ(VlCm_GetLESvcIconID(above), 278U) << std::hex << above;
            }
        }
    }
    for (int round = 0; round < 100000 && !HasFatalFailure(); ++round) {
        const unsigned above = random() | 0x10000;
        expect_service(above, kUnknownService);
    }
}

TEST_F(Catalogue, AnswersEveryLowEnergyServiceClass) {
    const Table services = parse(kLowEnergyServices);
    ASSERT_EQ(services.size(), 5U);
    for (unsigned key = 0; key <= 0xFFFF; ++key) {
        ASSERT_EQ(VlCm_GetLESvcIconID(key), row_of(services, key, {278})[0]) << std::hex << key;
    }
}

// Service bits of a class of device, and whatever is above them, do not count.
TEST_F(Catalogue, AnswersEveryDeviceClassUnderAnyUpperBits) {
    const Table devices = parse(kDevices);
    ASSERT_EQ(devices.size(), 56U);
    std::mt19937 random(13);
    for (unsigned key = 0; key <= 0x1FFF; ++key) {
        const Columns& row = row_of(devices, key, kUnknownDevice);
        for (const unsigned upper : {0U, 0x2000U, 0xFFFFE000U, static_cast<unsigned>(random()) & ~0x1FFFU}) {
            expect_device(key | upper, row);
            if (HasFatalFailure()) return;
        }
    }
    EXPECT_TRUE(support::trace_log().empty());
}

// Columns that no export shows.
TEST_F(Catalogue, KeepsTheColumnsThatNobodyReads) {
    const Table devices = parse(kDevices), services = parse(kLowEnergyServices);
    for (const auto& row : vl::catalogue::kDevices) {
        EXPECT_EQ(devices.at(row.device_class),
                  (Columns{row.icon, row.major_name, row.minor_name, row.group}));
    }
    for (const auto& row : vl::catalogue::kLowEnergyServices) {
        EXPECT_EQ(services.at(row.service_class),
                  (Columns{row.icon, row.remote_description, row.class_name}));
        EXPECT_EQ(row.local_description, 0U);
    }
    EXPECT_STREQ(vl::catalogue::kIconFile, "vlLangInDepRes.dll,");
}

TEST_F(Catalogue, NumbersTheBaseIcons) {
    ASSERT_EQ(icon_numbers().size(), 36U);
    for (unsigned icon = 0; icon <= 0xFFFF; ++icon)
        ASSERT_EQ(VlCm_GetIconIndexByID(icon), index_of(icon)) << icon;
    for (const auto& [icon, index] : icon_numbers()) {
        EXPECT_EQ(VlCm_GetIconIndexByID(icon | 0x10000U), 0U) << icon;
        EXPECT_EQ(VlCm_GetIconIndexByID(icon | 0x80000000U), 0U) << icon;
    }
}

TEST_F(Catalogue, TellsItsSizes) {
    EXPECT_EQ(VlCm_GetSvcIconInfoCount(), 48U);
    EXPECT_EQ(VlCm_GetDeviceIconInfoCount(), 56U);
}

TEST_F(Catalogue, GivesEveryLowEnergyDeviceOneIcon) {
    for (const unsigned key : {0U, 0x1800U, 0x020CU, 0xFFFFFFFFU})
        EXPECT_EQ(VlCm_GetLEDeviceIconID(key), 278U);
}

TEST_F(Catalogue, AnswersTheCasesThatMislead) {
    EXPECT_EQ(VlCm_GetSvcIconID(0x1101), 106U);
    EXPECT_EQ(VlCm_GetSvcIconIndex(0x1101), 105U);
    EXPECT_EQ(VlCm_GetSvcIconIndex(0x1132), 0U) << "icon 256 has no index";
    EXPECT_EQ(VlCm_GetSvcIconID(0x1234), 1U);
    EXPECT_EQ(VlCm_GetServiceClsNameStringID(0x1234), 1153U);
    EXPECT_EQ(VlCm_GetSvcIconID(0x0003), 0U) << "a row whose icon is 0";
    EXPECT_EQ(VlCm_GetDeviceIconID(0x5A020C), 21U) << "service bits set";
    EXPECT_EQ(VlCm_GetDeviceIconID(0x000704), 1U) << "wearable";
    EXPECT_EQ(VlCm_GetDevMinorClsNameID(0x000510), 1148U);
    EXPECT_EQ(VlCm_GetDevMinorClsNameID(0x000511), 1101U) << "a row of its own";
    EXPECT_EQ(VlCm_GetDeviceIconID(0x000511), 46U);
    EXPECT_EQ(VlCm_GetDeviceIconID(0x000512), 1U) << "format bits without a row";
    EXPECT_EQ(VlCm_GetLESvcIconID(0x1809), 280U);
    EXPECT_EQ(VlCm_GetLESvcIconID(0x1101), 278U);
}

TEST_F(Catalogue, TakesNoMemory) {
    const size_t before = blocks().allocations();
    VlCm_GetSvcIconIndex(0x1101);
    VlCm_GetDeviceClsNameStringID(0x020C);
    VlCm_GetLESvcIconID(0x1809);
    EXPECT_EQ(blocks().allocations(), before);
}

// The name as it was passed, and what the real call gave.
class LoadedLibraries {
public:
    LoadedLibraries() {
        patch_.answer([this](LPCSTR name) {
            names_.emplace_back(name);
            return patch_.real(name);
        });
    }
    void fail() { patch_.fail_from(1, nullptr, ERROR_MOD_NOT_FOUND); }
    [[nodiscard]] size_t count() const { return patch_.count(); }
    [[nodiscard]] const std::vector<std::string>& names() const { return names_; }

private:
    CallPatch<HMODULE(LPCSTR)> patch_{"LoadLibraryA", LoadLibraryA};
    std::vector<std::string> names_;
};

TEST_F(Catalogue, LoadsTheLanguageLibraryByItsBareNameEachTime) {
    LoadedLibraries loaded;
    std::vector<HMODULE> modules;
    for (const unsigned selector : {0U, 1U, 0U}) modules.push_back(VlCm_GetLangDepResLib(selector));
    EXPECT_EQ(loaded.names(), (std::vector<std::string>{"Vl2Res.dll", "Vl2Res.dll", "Vl2Res.dll"}));
    for (const HMODULE module : modules) {
        ASSERT_NE(module, nullptr);
        EXPECT_EQ(module, GetModuleHandleA("Vl2Res.dll"));
        char text[100];
        EXPECT_GT(LoadStringA(module, VlCm_GetServiceClsNameStringID(0x1101), text, sizeof text), 0);
    }
    for (const HMODULE module : modules) FreeLibrary(module);
    EXPECT_EQ(GetModuleHandleA("Vl2Res.dll"), nullptr) << "each call gave one reference";
}

TEST_F(Catalogue, LoadsNothingForAnotherSelector) {
    LoadedLibraries loaded;
    for (const unsigned selector : {2U, 3U, 256U, 0x10000U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(VlCm_GetLangDepResLib(selector), nullptr) << selector;
    }
    EXPECT_EQ(loaded.count(), 0U);
}

TEST_F(Catalogue, GivesNoLanguageLibraryWhenItCannotBeLoaded) {
    LoadedLibraries loaded;
    loaded.fail();
    EXPECT_EQ(VlCm_GetLangDepResLib(0), nullptr);
    EXPECT_EQ(VlCm_GetLangDepResLib(1), nullptr);
    EXPECT_EQ(loaded.count(), 2U);
    EXPECT_TRUE(support::trace_log().empty());
}

}  // namespace
