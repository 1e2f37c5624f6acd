// Models that are kept for phones. The program runs on a single-byte and on a double-byte code page.
#include "device_model.h"
#include "support/call_patch.h"
#include "support/guarded_buffer.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "vlcm/settings.h"

#include "VlSDK.h"
#include "VlSim.h"

#include <functional>

namespace {

using Lines = std::vector<std::string>;

constexpr uint8_t kAddress[6] = {0x11, 0x22, 0x33, 0x44, 0x55, 0x66};
constexpr char kSection[] = "665544332211";
constexpr char kFile[] = "VlMobileModel.ini";
constexpr char kPlugIns[] = "C:\\Veltrin\\Mobile\\msmplugs\\";
constexpr char kRead[] = "Btsdk_GetPrivateProfileString";
constexpr char kWrite[] = "Btsdk_WritePrivateProfileString";

// Where Windows keeps the settings files that are given as bare names.
std::string model_file() {
    char folder[MAX_PATH] = "";
    GetWindowsDirectoryA(folder, sizeof folder);
    return std::string(folder) + "\\" + kFile;
}

std::string read_of(const char* key, unsigned size, size_t length) {
    return std::string(kRead) + "(\"" + kSection + "\", \"" + key + "\", \"\", out, " + std::to_string(size) +
           ", \"" + kFile + "\") = " + std::to_string(length);
}

std::string write_of(const std::string& key, const std::string& text, int result = 1) {
    return std::string(kWrite) + "(\"" + kSection + "\", \"" + key + "\", \"" + text + "\", \"" + kFile +
           "\") = " + std::to_string(result);
}

class ModelFile : public support::SuiteTest {
protected:
    ModelFile() {
        settings().content(model_file(), std::nullopt);
        settings().common("General", "InstallDir", "C:\\Veltrin");
    }
    void keep(const char* key, const std::string& text) { settings().set(model_file(), kSection, key, text); }
    void keep_all() {
        keep("manu", "Norvik");
        keep("model1", "N740");
        keep("model2", "Norvik N740 Navigator");
        keep("base", "Base.dll");
        keep("plug", "Plug.dll");
    }
    static std::string kept(const char* key) {
        return support::SettingsScope::get(model_file(), kSection, key);
    }
};

using GetModel = ModelFile;
using SetModel = ModelFile;
using DeleteModel = ModelFile;
using PhoneBookModel = ModelFile;

const VlDeviceModel kModel =
    device_model({"Norvik", "N740", "Norvik N740 Navigator", "C:\\x\\y\\Base.dll", "plugs\\Plug.dll"});

}  // namespace

TEST_F(GetModel, ReadsTheSectionOfTheAddressFromTheFileOfABareName) {
    keep_all();
    VlDeviceModel model = patterned_model();
    EXPECT_EQ(VlCm_GetDeviceModel(kAddress, &model), 1);
    EXPECT_STREQ(model.manu, "Norvik");
    EXPECT_STREQ(model.model1, "N740");
    EXPECT_STREQ(model.model2, "Norvik N740 Navigator");
    EXPECT_EQ(model.base, std::string(kPlugIns) + "Base.dll");
    EXPECT_EQ(model.plug, std::string(kPlugIns) + "Plug.dll");
    const Lines reads = {read_of("manu", 64, 6), read_of("model1", 64, 4), read_of("model2", 64, 21),
                         read_of("base", 260, 8), read_of("plug", 260, 8)};
    Lines calls = support::sdk_calls(kRead);
    ASSERT_EQ(calls.size(), 6U);
    EXPECT_NE(calls.back().find("InstallDir"), std::string::npos) << "the folder comes last, and once";
    calls.pop_back();
    EXPECT_EQ(calls, reads);
}

TEST_F(GetModel, OpensNoScopeButThatOfTheFolder) {
    keep_all();
    VlDeviceModel model;
    EXPECT_EQ(VlCm_GetDeviceModel(kAddress, &model), 1);
    EXPECT_EQ(support::trace_log(), (Lines{">512 VlCm_GetInstallDir", "<512 VlCm_GetInstallDir"}));
}

TEST_F(GetModel, WithoutAManufacturerIsNotFoundWhateverElseIsKept) {
    keep("model1", "N740");
    keep("base", "Base.dll");
    VlDeviceModel model = patterned_model(), expected = patterned_model();
    expected.manu[0] = 0;
    EXPECT_EQ(VlCm_GetDeviceModel(kAddress, &model), 0);
    EXPECT_TRUE(is_same_memory(model, expected)) << "only the empty manufacturer was written";
    EXPECT_EQ(support::sdk_calls(), Lines{read_of("manu", 64, 0)});
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(GetModel, WithoutModulesGivesTheFolderItself) {
    keep("manu", "Norvik");
    VlDeviceModel model = patterned_model();
    EXPECT_EQ(VlCm_GetDeviceModel(kAddress, &model), 1);
    EXPECT_STREQ(model.model1, "");
    EXPECT_STREQ(model.model2, "");
    EXPECT_STREQ(model.base, kPlugIns);
    EXPECT_STREQ(model.plug, kPlugIns);
}

TEST_F(GetModel, WithoutAnInstallationFolderStartsAtTheRoot) {
    keep_all();
    settings().content(support::settings_path(support::SettingsFile::kCommon), std::nullopt);
    VlDeviceModel model;
    EXPECT_EQ(VlCm_GetDeviceModel(kAddress, &model), 1);
    EXPECT_STREQ(model.base, "\\Mobile\\msmplugs\\Base.dll");
}

TEST_F(GetModel, CutsPathsAt259Bytes) {
    keep("manu", "Norvik");
    for (const size_t name : {size_t{259} - strlen(kPlugIns), size_t{260} - strlen(kPlugIns), size_t{259}}) {
        keep("base", std::string(name, 'b'));
        keep("plug", std::string(name, 'p'));
        const support::GuardedBuffer room(sizeof(VlDeviceModel));
        auto* model = room.as<VlDeviceModel>();
        EXPECT_EQ(VlCm_GetDeviceModel(kAddress, model), 1);
        EXPECT_EQ(model->base, (kPlugIns + std::string(name, 'b')).substr(0, 259)) << name;
        EXPECT_EQ(model->plug, (kPlugIns + std::string(name, 'p')).substr(0, 259)) << name;
    }
}

TEST_F(GetModel, CutsNamesAt63Bytes) {
    const std::string text(70, 'm');
    for (const char* key : {"manu", "model1", "model2"}) keep(key, text);
    VlDeviceModel model = patterned_model();
    EXPECT_EQ(VlCm_GetDeviceModel(kAddress, &model), 1);
    for (const char* name : {model.manu, model.model1, model.model2}) EXPECT_EQ(name, text.substr(0, 63));
}

TEST_F(GetModel, WithoutAddressOrRecordAsksNothing) {
    VlDeviceModel model = patterned_model();
    EXPECT_EQ(VlCm_GetDeviceModel(nullptr, &model), 0);
    EXPECT_EQ(VlCm_GetDeviceModel(kAddress, nullptr), 0);
    EXPECT_EQ(VlCm_GetDeviceModel(nullptr, nullptr), 0);
    EXPECT_TRUE(is_same_memory(model, patterned_model()));
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(GetModel, NamesTheSectionInUpperCaseWithTwoDigitsForEachByte) {
    const struct {
        const char* label;
        uint8_t address[6];
        const char* section;
    } rows[] = {
        {"letters", {0xAB, 0xCD, 0xEF, 0x9A, 0xBC, 0xDE}, "DEBC9AEFCDAB"},
        {"zeros", {0, 0, 0, 0, 0, 0}, "000000000000"},
        {"single digits", {1, 2, 3, 4, 5, 0x0F}, "0F0504030201"},
        {"all ones", {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, "FFFFFFFFFFFF"},
    };
    support::for_each_row(rows, [&](const auto& row) {
        settings().set(model_file(), row.section, "manu", row.label);
        VlDeviceModel model;
        EXPECT_EQ(VlCm_GetDeviceModel(row.address, &model), 1);
        EXPECT_STREQ(model.manu, row.label);
        const Lines reads = support::sdk_calls(kRead);
        EXPECT_NE(reads.at(0).find(std::string("(\"") + row.section + "\""), std::string::npos) << reads[0];
        support::clear_sdk_log();
    });
}

TEST_F(GetModel, TreatsEachReadThatFailsAsAnEmptyText) {
    keep_all();
    for (uint32_t failing = 1; failing <= 6; ++failing) {
        VlDeviceModel model = patterned_model();
        VlSim_Fail(kRead, failing, 0);
        EXPECT_EQ(VlCm_GetDeviceModel(kAddress, &model), failing != 1) << failing;
        if (failing == 1) {
            EXPECT_STREQ(model.manu, "");
            EXPECT_EQ(static_cast<unsigned char>(model.model1[0]), kPattern);
            continue;
        }
        const std::string folder = failing == 6 ? "\\Mobile\\msmplugs\\" : kPlugIns;
        EXPECT_STREQ(model.manu, "Norvik");
        EXPECT_STREQ(model.model1, failing == 2 ? "" : "N740");
        EXPECT_STREQ(model.model2, failing == 3 ? "" : "Norvik N740 Navigator");
        EXPECT_EQ(model.base, folder + (failing == 4 ? "" : "Base.dll"));
        EXPECT_EQ(model.plug, folder + (failing == 5 ? "" : "Plug.dll"));
    }
}

TEST_F(SetModel, WritesTheTextsAndTheModulesFileNamesInOrder) {
    VlDeviceModel model = kModel;
    EXPECT_EQ(VlCm_SetDeviceModel(kAddress, &model), 1);
    EXPECT_TRUE(is_same_memory(model, kModel)) << "the caller's record stays as it is";
    EXPECT_EQ(support::sdk_calls(), (Lines{write_of("manu", "Norvik"), write_of("model1", "N740"),
                                           write_of("model2", "Norvik N740 Navigator"),
                                           write_of("base", "Base.dll"), write_of("plug", "Plug.dll")}));
    EXPECT_EQ(kept("base"), "Base.dll");
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(SetModel, IsReadBackWithTheModulesInTheSuitesFolder) {
    EXPECT_EQ(VlCm_SetDeviceModel(kAddress, &kModel), 1);
    VlDeviceModel model;
    EXPECT_EQ(VlCm_GetDeviceModel(kAddress, &model), 1);
    EXPECT_STREQ(model.manu, "Norvik");
    EXPECT_EQ(model.base, std::string(kPlugIns) + "Base.dll");
    EXPECT_EQ(model.plug, std::string(kPlugIns) + "Plug.dll");
}

TEST_F(SetModel, KeepsTheNameBehindTheLastBackslashCharacter) {
    struct Row {
        const char* label;
        std::string path, name;
    };
    std::vector<Row> rows = {
        {"none", "Base.dll", "Base.dll"},
        {"slashes do not count", "a/b/Base.dll", "a/b/Base.dll"},
        {"leading", "\\Base.dll", "Base.dll"},
        {"at the end", "C:\\x\\", ""},
        {"empty", "", ""},
        {"several", "C:\\x\\y z\\B.dll", "B.dll"},
    };
    // 0x81 0x5C is one Chinese character; elsewhere a control character and a backslash.
    rows.push_back({"second byte", "C:\\x\\\x81\\.dll", GetACP() == 936 ? "\x81\\.dll" : ".dll"});
    rows.push_back({"lead byte at the end", "C:\\x\\y\x81", "y\x81"});
    support::for_each_row(rows, [&](const Row& row) {
        const VlDeviceModel model = device_model({.manu = "Norvik", .base = row.path, .plug = row.path});
        support::clear_sdk_log();
        EXPECT_EQ(VlCm_SetDeviceModel(kAddress, &model), 1);
        const Lines writes = support::sdk_calls();
        ASSERT_EQ(writes.size(), 5U);
        EXPECT_EQ(writes[3], write_of("base", row.name));
        EXPECT_EQ(writes[4], write_of("plug", row.name));
    });
}

TEST_F(SetModel, RunsOnTheCodePageThatTheTestNames) {
    const char* named = getenv("VLCM_TEST_CODE_PAGE");
    ASSERT_NE(named, nullptr) << "run by ctest, which sets language and code page";
    EXPECT_EQ(GetACP(), static_cast<UINT>(atoi(named)));
}

TEST_F(SetModel, ReadsNoFieldBeyondItsEnd) {
    const support::GuardedBuffer room(sizeof(VlDeviceModel));
    const std::string name(64, 'n'), path = "\\" + std::string(259, 'p');
    *room.as<VlDeviceModel>() = device_model({name, name, name, path, path});
    EXPECT_EQ(VlCm_SetDeviceModel(kAddress, room.as<VlDeviceModel>()), 1);
    EXPECT_EQ(kept("manu"), name.substr(0, 63));
    EXPECT_EQ(kept("model1"), name.substr(0, 63));
    EXPECT_EQ(kept("model2"), name.substr(0, 63));
    EXPECT_EQ(kept("base"), path.substr(1, 258));
    EXPECT_EQ(kept("plug"), path.substr(1, 258));
}

TEST_F(SetModel, WritesNothingElseWhenTheManufacturerCannotBeWritten) {
    VlSim_Fail(kWrite, 1, 0);
    EXPECT_EQ(VlCm_SetDeviceModel(kAddress, &kModel), 0);
    EXPECT_EQ(support::sdk_calls(), Lines{write_of("manu", "Norvik", 0)});
}

TEST_F(SetModel, GoesOnWhenAnotherTextCannotBeWritten) {
    for (uint32_t failing = 2; failing <= 5; ++failing) {
        support::clear_sdk_log();
        VlSim_Fail(kWrite, failing, 0);
        EXPECT_EQ(VlCm_SetDeviceModel(kAddress, &kModel), 1) << failing;
        EXPECT_EQ(support::sdk_calls().size(), 5U) << failing;
    }
}

TEST_F(SetModel, GivesTheStacksAnswerToTheManufacturer) {
    support::CallPatch writing(kWrite, Btsdk_WritePrivateProfileString);
    writing.answer([&](const char*, const char* key, const char*, const char*) {
        return strcmp(key, "manu") == 0 ? 0x700 : 1;
    });
    EXPECT_EQ(VlCm_SetDeviceModel(kAddress, &kModel), 0x700);
    EXPECT_EQ(writing.count(), 5U);
}

TEST_F(SetModel, WithoutAddressOrRecordWritesNothing) {
    EXPECT_EQ(VlCm_SetDeviceModel(nullptr, &kModel), 0);
    EXPECT_EQ(VlCm_SetDeviceModel(kAddress, nullptr), 0);
    EXPECT_EQ(VlCm_SetDeviceModel(nullptr, nullptr), 0);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(DeleteModel, TakesTheWholeSectionOutAndNoOther) {
    keep_all();
    keep("other", "x");
    settings().set(model_file(), "112233445566", "manu", "Tessaro");
    EXPECT_NE(VlCm_DeleteDeviceModel(kAddress), 0);
    EXPECT_EQ(support::sdk_calls(),
              Lines{std::string(kWrite) + "(\"" + kSection + "\", null, null, \"" + kFile + "\") = 1"});
    EXPECT_EQ(support::read_file(model_file())->find(kSection), std::string::npos);
    EXPECT_EQ(support::SettingsScope::get(model_file(), "112233445566", "manu"), "Tessaro");
    VlDeviceModel model;
    EXPECT_EQ(VlCm_GetDeviceModel(kAddress, &model), 0);
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(DeleteModel, GivesTheStacksAnswer) {
    support::CallPatch writing(kWrite, Btsdk_WritePrivateProfileString);
    for (const int answer : {0, 1, 0x700}) {
        writing.answer([=](const char*, const char*, const char*, const char*) { return answer; });
        EXPECT_EQ(VlCm_DeleteDeviceModel(kAddress), answer);
    }
    EXPECT_EQ(writing.count(), 3U);
}

TEST_F(DeleteModel, WithoutAnAddressWritesNothing) {
    EXPECT_EQ(VlCm_DeleteDeviceModel(nullptr), 0);
    EXPECT_TRUE(support::sdk_calls().empty());
}

TEST_F(PhoneBookModel, IsThePlaceholderUnderEitherName) {
    constexpr char kManufacturer[] = "QVN_PBAP_Manufacturer", kName[] = "QVN_PBAP_Model";
    const struct {
        const char* label;
        ModelTexts texts;
        BOOL expected;
    } rows[] = {
        {"first name", {kManufacturer, kName, ""}, 1},
        {"second name", {kManufacturer, "N740", kName}, 1},
        {"both names", {kManufacturer, kName, kName}, 1},
        {"neither name", {kManufacturer, "N740", "N810"}, 0},
        {"no names", {kManufacturer, "", ""}, 0},
        {"no manufacturer", {"", kName, kName}, 0},
        {"another manufacturer", {"Norvik", kName, kName}, 0},
        {"case of the manufacturer", {"qvn_pbap_manufacturer", kName, kName}, 0},
        {"case of the names", {kManufacturer, "qvn_pbap_model", "QVN_PBAP_MODEL"}, 0},
        {"longer manufacturer", {"QVN_PBAP_Manufacturer2", kName, kName}, 0},
        {"shorter manufacturer", {"QVN_PBAP_Manufacture", kName, kName}, 0},
        {"longer names", {kManufacturer, "QVN_PBAP_Model ", "QVN_PBAP_ModelX"}, 0},
        {"modules do not count", {kManufacturer, "", "", kName, kName}, 0},
    };
    support::for_each_row(rows, [&](const auto& row) {
        const VlDeviceModel model = device_model(row.texts);
        EXPECT_EQ(VlCm_IsPBAPModel(&model), row.expected);
    });
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_TRUE(support::trace_log().empty());
}

TEST_F(PhoneBookModel, IsNoNullRecord) { EXPECT_EQ(VlCm_IsPBAPModel(nullptr), 0); }

TEST_F(PhoneBookModel, ReadsNoFieldBeyondItsEnd) {
    const support::GuardedBuffer room(sizeof(VlDeviceModel));
    memset(room.as(), 'Q', sizeof(VlDeviceModel));
    EXPECT_EQ(VlCm_IsPBAPModel(room.as<VlDeviceModel>()), 0);
}
