// The lines of a card: when each is written, and how it reads.
#include "card_test.h"

#include <vector>

namespace {

class CardLines : public CardTest {};

// A text of an entry, by its place in the record.
struct FieldRow {
    const char* label;
    void (*fill)(VlContact&);
    const char* line;
};

void expect_lines(const std::vector<FieldRow>& rows,
                  const std::function<std::string(const FieldRow&)>& card) {
    support::for_each_row(rows, [&](const FieldRow& row) { EXPECT_EQ(card(row), nameless_card(row.line)); });
}

}  // namespace

TEST_F(CardLines, OfAnEmptyContactAreBeginAnUnfinishedNameAndEnd) {
    EXPECT_EQ(card_of([](VlContact&) {}), "BEGIN:VCARD\r\nVERSION:2.1\r\nN;CHARSET=utf-8:END:VCARD\r\n");
}

TEST_F(CardLines, NamesAreFamilyGivenAdditional) {
    const struct {
        const char* label;
        const char *family, *given, *additional;
        const char* lines;
    } rows[] = {
        {"family and given", "Wang", "Fang", "",
         "N;CHARSET=utf-8:Wang;Fang\r\nFN;CHARSET=utf-8:WangFang\r\n"},
        {"family", "Li", "", "", "N;CHARSET=utf-8:Li\r\nFN;CHARSET=utf-8:Li\r\n"},
        {"given", "", "Lei", "", "N;CHARSET=utf-8:;Lei\r\nFN;CHARSET=utf-8:Lei\r\n"},
        {"additional", "", "", "X", "N;CHARSET=utf-8:;X\r\nFN;CHARSET=utf-8:X\r\n"},
        {"family and additional", "Li", "", "X", "N;CHARSET=utf-8:Li;X\r\nFN;CHARSET=utf-8:LiX\r\n"},
        {"given and additional", "", "Lei", "X", "N;CHARSET=utf-8:;Lei;X\r\nFN;CHARSET=utf-8:LeiX\r\n"},
        {"all", "Li", "Lei", "X", "N;CHARSET=utf-8:Li;Lei;X\r\nFN;CHARSET=utf-8:LiLeiX\r\n"},
    };
    support::for_each_row(rows, [this](const auto& row) {
        const auto fill = [&](VlContact& c) { put_names(c, row.family, row.given, row.additional); };
        EXPECT_EQ(card_of(fill), whole_card(row.lines));
    });
}

TEST_F(CardLines, OrganisationIsTheDepartmentElseTheCompany) {
    const std::vector<FieldRow> rows = {
        {"company", [](VlContact& c) { put(c.organisation->company, "Acme"); }, "ORG;CHARSET=utf-8:Acme\r\n"},
        {"department", [](VlContact& c) { put(c.organisation->department, "Sales"); },
         "ORG;CHARSET=utf-8:Sales\r\n"},
        {"department in the company's place",
         [](VlContact& c) {
             put(c.organisation->company, "Acme");
             put(c.organisation->department, "Sales");
         },
         "ORG;CHARSET=utf-8:Sales\r\n"},
        {"title alone", [](VlContact& c) { put(c.organisation->title, "Boss"); },
         "TITLE;CHARSET=utf-8:Boss\r\n"},
        {"title behind the organisation",
         [](VlContact& c) {
             put(c.organisation->company, "Acme");
             put(c.organisation->title, "Boss");
         },
         "ORG;CHARSET=utf-8:Acme\r\nTITLE;CHARSET=utf-8:Boss\r\n"},
        {"fourth text", [](VlContact& c) { put(c.organisation->text4, "x"); }, ""},
    };
    expect_lines(rows, [this](const FieldRow& row) { return card_of(row.fill); });
}

TEST_F(CardLines, PhonesAreOneOfEachOfFourTypes) {
    const struct {
        const char* label;
        uint32_t type;
        const char* line;
    } rows[] = {
        {"cell", 6, "TEL;CELL;VOICE:+49 1\r\n"},
        {"home", 1, "TEL;HOME;VOICE:+49 1\r\n"},
        {"work", 2, "TEL;WORK;VOICE:+49 1\r\n"},
        {"voice", 0, "TEL;VOICE:+49 1\r\n"},
        {"3", 3, ""},
        {"4", 4, ""},
        {"5", 5, ""},
        {"7", 7, ""},
        {"another with the same low byte", 0x106, ""},
    };
    support::for_each_row(rows, [this](const auto& row) {
        EXPECT_EQ(card_of([&](VlContact& c) { put_phone(c, 0, row.type, "+49 1"); }),
                  nameless_card(row.line));
    });
}

TEST_F(CardLines, PhonesComeAsCellHomeWorkVoice) {
    const auto fill = [](VlContact& c) {
        put_names(c, "Li", "", "");
        put_phone(c, 0, VLCM_PHONE_VOICE, "1");
        put_phone(c, 1, VLCM_PHONE_WORK, "2");
        put_phone(c, 2, VLCM_PHONE_HOME, "3");
        put_phone(c, 3, VLCM_PHONE_CELL, "4");
    };
    EXPECT_EQ(card_of(fill),
              whole_card("N;CHARSET=utf-8:Li\r\nFN;CHARSET=utf-8:Li\r\n"
                         "TEL;CELL;VOICE:4\r\nTEL;HOME;VOICE:3\r\nTEL;WORK;VOICE:2\r\nTEL;VOICE:1\r\n"));
}

TEST_F(CardLines, AddressIsWrittenForAnyOfItsFiveTexts) {
    using Text = char(VlContactAddress::*)[256];
    const struct {
        const char* label;
        Text text;
        const char* value;
    } rows[] = {
        {"street", &VlContactAddress::street, ";x;;;;"},
        {"locality", &VlContactAddress::locality, ";;x;;;"},
        {"region", &VlContactAddress::region, ";;;x;;"},
        {"postal code", &VlContactAddress::postalCode, ";;;;x;"},
        {"country", &VlContactAddress::country, ";;;;;x"},
    };
    support::for_each_row(rows, [this](const auto& row) {
        const auto work = [&](VlContact& c) { put(c.addresses[2].*row.text, "x"); };
        const auto home = [&](VlContact& c) { put(c.addresses[1].*row.text, "x"); };
        const auto other = [&](VlContact& c) { put(c.addresses[0].*row.text, "x"); };
        const std::string value = row.value;
        EXPECT_EQ(card_of(work), nameless_card("ADR;WORK;PREF;CHARSET=utf-8:;" + value + "\r\n"));
        EXPECT_EQ(card_of(home), nameless_card("ADR;HOME;PREF;CHARSET=utf-8:;" + value + "\r\n"));
        EXPECT_EQ(card_of(other), nameless_card(""));
    });
}

TEST_F(CardLines, AddressWithTheUnusedTextsAloneIsNotWritten) {
    const auto fill = [](VlContact& c) {
        put(c.addresses[2].text5, "x");
        put(c.addresses[1].text7, "x");
    };
    EXPECT_EQ(card_of(fill), nameless_card(""));
}

TEST_F(CardLines, UrlAndEmailAreTheFirstOfTheirLists) {
    const std::vector<FieldRow> rows = {
        {"first URL", [](VlContact& c) { put(c.urls[0].text, "http://a"); },
         "URL;WORK;CHARSET=utf-8:http://a\r\n"},
        {"second URL", [](VlContact& c) { put(c.urls[1].text, "http://a"); }, ""},
        {"second list", [](VlContact& c) { put(c.second[0].text, "http://a"); }, ""},
        {"first e-mail", [](VlContact& c) { put(c.emails[0].address, "a@b"); },
         "EMAIL;PREF;INTERNET;CHARSET=utf-8:a@b\r\n"},
        {"second e-mail", [](VlContact& c) { put(c.emails[1].address, "a@b"); }, ""},
    };
    expect_lines(rows, [this](const FieldRow& row) { return card_of(row.fill); });
}

TEST_F(CardLines, StandInTheirOrder) {
    const auto fill = [](VlContact& c) {
        put_names(c, "Wang", "Fang", "Mei");
        put(c.organisation->company, "Acme");
        put(c.organisation->title, "Boss");
        put_phone(c, 0, VLCM_PHONE_HOME, "1");
        put_phone(c, 1, VLCM_PHONE_WORK, "2");
        put_phone(c, 2, VLCM_PHONE_CELL, "3");
        put_phone(c, 3, VLCM_PHONE_VOICE, "4");
        for (VlContactAddress& address : {std::ref(c.addresses[1]), std::ref(c.addresses[2])}) {
            put(address.street, "Main St 1");
            put(address.locality, "Springfield");
            put(address.region, "IL");
            put(address.postalCode, "62701");
            put(address.country, "USA");
        }
        put(c.urls[0].text, "http://a");
        put(c.emails[0].address, "a@b");
    };
    EXPECT_EQ(card_of(fill),
              "BEGIN:VCARD\r\n"
              "VERSION:2.1\r\n"
              "N;CHARSET=utf-8:Wang;Fang;Mei\r\n"
              "FN;CHARSET=utf-8:WangFangMei\r\n"
              "ORG;CHARSET=utf-8:Acme\r\n"
              "TITLE;CHARSET=utf-8:Boss\r\n"
              "TEL;CELL;VOICE:3\r\n"
              "TEL;HOME;VOICE:1\r\n"
              "TEL;WORK;VOICE:2\r\n"
              "TEL;VOICE:4\r\n"
              "ADR;WORK;PREF;CHARSET=utf-8:;;Main St 1;Springfield;IL;62701;USA\r\n"
              "ADR;HOME;PREF;CHARSET=utf-8:;;Main St 1;Springfield;IL;62701;USA\r\n"
              "URL;WORK;CHARSET=utf-8:http://a\r\n"
              "EMAIL;PREF;INTERNET;CHARSET=utf-8:a@b\r\n"
              "END:VCARD\r\n");
}
