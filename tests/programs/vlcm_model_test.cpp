// vlcm model: what it keeps and tells is compared with what the library answers here.
#include "command_line.h"

#include "VlCommon.h"
#include "event_log.h"
#include "text.h"

using namespace programs;
using namespace suite;

namespace {

constexpr char kStranger[] = "A0:B1:C2:D3:E4:F5";
constexpr uint8_t kStrangerBytes[6] = {0xF5, 0xE4, 0xD3, 0xC2, 0xB1, 0xA0};

std::string model_file() {
    char folder[MAX_PATH] = "";
    GetWindowsDirectoryA(folder, sizeof folder);
    return std::string(folder) + "\\VlMobileModel.ini";
}

class ModelCommand : public CommandLine {
protected:
    ModelCommand() { settings().content(model_file(), std::nullopt); }

    static void keep(const char* manufacturer, const char* model) {
        VlDeviceModel record = {};
        strcpy_s(record.manu, manufacturer);
        strcpy_s(record.model1, model);
        EXPECT_NE(VlCm_SetDeviceModel(kStrangerBytes, &record), 0);
    }
};

}  // namespace

TEST_F(ModelCommand, KeepsTellsAndForgetsAModel) {
    const Json set = ask({"model", "set", kPhoneName, "--manufacturer", ansi(L"M\u00FCller"), "--model",
                          "N740", "--base", "C:\\x\\Base.dll"});
    EXPECT_EQ(set.at("address"), "00:11:22:33:44:55");
    EXPECT_EQ(set.at("manufacturer"), "M\xC3\xBCller");
    EXPECT_EQ(set.at("base"), utf8(program_folder()) + "\\Mobile\\msmplugs\\Base.dll");
    EXPECT_EQ(support::SettingsScope::get(model_file(), "001122334455", "manu"), "M\xFCller");
    EXPECT_EQ(support::SettingsScope::get(model_file(), "001122334455", "base"), "Base.dll");
    EXPECT_EQ(ask({"model", "get", "00:11:22:33:44:55"}), set);
    EXPECT_EQ(ask({"model", "delete", kPhoneName}).at("deleted"), true);
    const Outcome gone = run({"model", "get", kPhoneName});
    EXPECT_EQ(gone.exit_code, kNo);
    EXPECT_NE(gone.output.find("no model is kept for 00:11:22:33:44:55"), std::string::npos) << gone.output;
}

TEST_F(ModelCommand, TakesTheAddressOfAPhoneThatTheStackDoesNotKnow) {
    keep("Tessaro", "Corda");
    EXPECT_EQ(ask({"model", "get", "a0:b1:c2:d3:e4:f5"}).at("model"), "Corda");
    EXPECT_EQ(run({"model", "delete", kStranger}).exit_code, kYes);
    VlDeviceModel record;
    EXPECT_EQ(VlCm_GetDeviceModel(kStrangerBytes, &record), 0);
    EXPECT_EQ(run({"model", "delete", kStranger}).exit_code, kNo);
}

TEST_F(ModelCommand, MatchesTheKeptOrTheNamedModel) {
    struct Row {
        const char* label;
        const char* manufacturer;
        const char* model;
        Json symbian;
        bool series40, phone_book;
    };
    const Row rows[] = {
        {"Symbian",
         "Norvik",
         "n740",
         {{"manufacturer", "Norvik"}, {"model", "N740"}, {"alternative", "Norvik N740 Navigator"}},
         false,
         false},
        {"Series 40", "Ostermark", "o-5", nullptr, true, false},
        {"phone book", "QVN_PBAP_Manufacturer", "QVN_PBAP_Model", nullptr, false, true},
        {"unknown", "Ostermark", "N740", nullptr, false, false},
    };
    support::for_each_row(rows, [](const Row& row) {
        const bool known = !row.symbian.is_null() || row.series40 || row.phone_book;
        const Json named = ask({"model", "match", "--manufacturer", row.manufacturer, "--model", row.model},
                               known ? kYes : kNo);
        EXPECT_EQ(named.at("symbian"), row.symbian);
        EXPECT_EQ(named.at("series40"), row.series40);
        EXPECT_EQ(named.at("phoneBook"), row.phone_book);
        keep(row.manufacturer, row.model);
        EXPECT_EQ(ask({"model", "match", kStranger}, known ? kYes : kNo), named);
    });
}

TEST_F(ModelCommand, IsToldForPeople) {
    keep("Norvik", "N740");
    const std::string model = run({"model", "get", kStranger}).output;
    EXPECT_NE(model.find("manufacturer   Norvik"), std::string::npos) << model;
    const std::string match = run({"model", "match", kStranger}).output;
    EXPECT_NE(match.find("Symbian list    Norvik N740"), std::string::npos) << match;
}

TEST_F(ModelCommand, RefusesWhatTheRecordCannotHold) {
    const Outcome refused = run({"model", "set", kStranger, "--manufacturer", std::string(64, 'm')});
    EXPECT_EQ(refused.exit_code, kNo);
    EXPECT_NE(refused.output.find("longer than 63 bytes"), std::string::npos) << refused.output;
    EXPECT_EQ(run({"model", "set", kStranger, "--model", "N740"}).exit_code, kUsage) << "no manufacturer";
    EXPECT_EQ(run({"model"}).exit_code, kUsage);
    EXPECT_EQ(run({"model", "get", "nobody"}).exit_code, kNo);
    EXPECT_FALSE(support::read_file(model_file()).has_value()) << "nothing was written";
}
