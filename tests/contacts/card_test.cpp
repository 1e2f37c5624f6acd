#include "card_test.h"

#include "kept_cards.h"

#include "VlSDK.h"

CardTest::CardTest() : parser_("Btsdk_PIMParseContactDetails2", Btsdk_PIMParseContactDetails2) {
    char folder[MAX_PATH] = "";
    GetTempPathA(MAX_PATH, folder);
    path_ = std::string(folder) + "vlcm contact.vcf";
    DeleteFileA(path_.c_str());
    parser_.answer([this](const void*, void* contact) {
        if (fill_) fill_(*static_cast<VlContact*>(contact));
        return 0U;
    });
}

CardTest::~CardTest() { DeleteFileA(path_.c_str()); }

uint32_t CardTest::export_card() const {
    return VlCm_ConvertMBContactToVcfFile("any details", path_.c_str());
}

std::string CardTest::card_of(const Fill& fill) {
    const OwnedContact filled = new_contact();
    fill(*filled);
    fill_by(fill);
    EXPECT_EQ(export_card(), 1u);
    std::string card = file().value_or("(no file)");
    keep_card(*filled, card);
    return card;
}

std::string whole_card(const std::string& lines) {
    return "BEGIN:VCARD\r\nVERSION:2.1\r\n" + lines + "END:VCARD\r\n";
}

std::string nameless_card(const std::string& lines) { return whole_card("N;CHARSET=utf-8:" + lines); }
