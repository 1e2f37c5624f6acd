// The values in a card's lines: which number, and how much of a text.
#include "card_test.h"

#include <objbase.h>

namespace {

class CardValues : public CardTest {};

constexpr size_t kLimit = 259;

std::string cut(const std::string& value) { return value.substr(0, kLimit); }

}  // namespace

TEST_F(CardValues, OfAMobileNumberAloneStandOnTheNamesLine) {
    EXPECT_EQ(card_of([](VlContact& c) { put_phone(c, 0, VLCM_PHONE_CELL, "123"); }),
              "BEGIN:VCARD\r\nVERSION:2.1\r\nN;CHARSET=utf-8:TEL;CELL;VOICE:123\r\nEND:VCARD\r\n");
}

TEST_F(CardValues, TakeTheFirstNumberOfAType) {
    const auto two = [](VlContact& c) {
        put_names(c, "Li", "", "");
        put_phone(c, 3, VLCM_PHONE_CELL, "first");
        put_phone(c, 4, VLCM_PHONE_CELL, "second");
    };
    const std::string names = "N;CHARSET=utf-8:Li\r\nFN;CHARSET=utf-8:Li\r\n";
    EXPECT_EQ(card_of(two), whole_card(names + "TEL;CELL;VOICE:first\r\n"));
}

TEST_F(CardValues, PassOverEmptyNumbers) {
    const auto fill = [](VlContact& c) {
        put_phone(c, 0, VLCM_PHONE_CELL, "");
        put_phone(c, 1, VLCM_PHONE_CELL, "1");
    };
    EXPECT_EQ(card_of(fill), nameless_card("TEL;CELL;VOICE:1\r\n"));
}

TEST_F(CardValues, LookThroughTenNumbersWhateverTheCapacitySays) {
    for (const uint32_t capacity : {0U, 1U, 10U, 100U}) {
        const auto tenth = [&](VlContact& c) {
            *c.phoneCapacity = capacity;
            put_phone(c, 9, VLCM_PHONE_WORK, "1");
        };
        EXPECT_EQ(card_of(tenth), nameless_card("TEL;WORK;VOICE:1\r\n")) << capacity;
    }
}

TEST_F(CardValues, DoNotLookBehindTheTenthNumber) {
    constexpr size_t kPhones = 560;
    VlContactPhone eleventh{};
    eleventh.type = VLCM_PHONE_CELL;
    put(eleventh.number, "11");
    support::CallPatch allocating("CoTaskMemAlloc", CoTaskMemAlloc);
    allocating.answer([&](SIZE_T size) {
        if (size != kPhones) return allocating.real(size);
        void* const block = allocating.real(size + sizeof eleventh);
        memcpy(static_cast<char*>(block) + size, &eleventh, sizeof eleventh);
        return block;
    });
    EXPECT_EQ(card_of([](VlContact& c) { *c.phoneCapacity = 11; }), nameless_card(""));
}

TEST_F(CardValues, CutNumbersAtFortyCharacters) {
    const std::string digits = "1234567890123456789012345678901234567890abcd";
    for (const size_t length : {size_t{39}, size_t{40}, size_t{41}, size_t{43}, size_t{44}}) {
        const auto fill = [&](VlContact& c) { put_phone(c, 0, VLCM_PHONE_CELL, digits.substr(0, length)); };
        EXPECT_EQ(card_of(fill),
                  nameless_card("TEL;CELL;VOICE:" + digits.substr(0, std::min<size_t>(length, 40)) + "\r\n"));
    }
}

TEST_F(CardValues, CutNamesAt259BytesAndEndTheirLines) {
    const std::string a(255, 'a'), b(255, 'b'), c(255, 'c');
    const struct {
        const char* label;
        std::string family, given, additional;
    } rows[] = {
        {"all long", a, b, c},
        {"room for a separator and three", a, "bbb", ""},
        {"no room for the fourth", a, "bbbb", ""},
        {"family and given fill it", a, "b", "c"},
        {"the separator is the last", a, "bb", "c"},
    };
    support::for_each_row(rows, [this](const auto& row) {
        std::string n = row.family + ";" + row.given;
        if (!row.additional.empty()) n += ";" + row.additional;
        EXPECT_EQ(
            card_of([&](VlContact& contact) { put_names(contact, row.family, row.given, row.additional); }),
            whole_card("N;CHARSET=utf-8:" + cut(n) +
                       "\r\nFN;CHARSET=utf-8:" + cut(row.family + row.given + row.additional) + "\r\n"));
    });
}

TEST_F(CardValues, CutAddressesAt259BytesAndEndTheirLines) {
    const std::string street(255, 's');
    const auto fill = [&](VlContact& c) {
        put(c.addresses[2].street, street);
        put(c.addresses[2].locality, "loc");
        put(c.addresses[2].country, "country");
    };
    EXPECT_EQ(card_of(fill),
              nameless_card("ADR;WORK;PREF;CHARSET=utf-8:;" + cut(";" + street + ";loc") + "\r\n"));
}

TEST_F(CardValues, EndAtTheEndsOfFieldsWithoutTerminator) {
    const std::string full(256, 'f');
    const auto fill = [&](VlContact& c) {
        put(c.name->given, full);
        put(c.name->text4, "not this");
        put(c.organisation->company, full);
        put(c.organisation->title, full);
        put(c.urls[0].text, full);
        c.urls[1].words[0] = 0x61616161;
        put(c.emails[0].address, full.substr(0, 44));
        c.emails[1].words[0] = 0x61616161;
    };
    const auto line = [](const std::string& head, const std::string& value) {
        return head + ";CHARSET=utf-8:" + value + "\r\n";
    };
    EXPECT_EQ(card_of(fill),
              whole_card(line("N", ";" + full) + line("FN", full) + line("ORG", full) + line("TITLE", full) +
                         line("URL;WORK", full) + line("EMAIL;PREF;INTERNET", full.substr(0, 44))));
}

TEST_F(CardValues, AreNeitherEscapedNorFoldedNorConverted) {
    const std::string text = "a;b,c\\d\r\ne=\xC3\xBC\xFF:" + std::string(100, 'x');
    const auto fill = [&](VlContact& c) {
        put_names(c, text, "", "");
        put(c.organisation->title, text);
    };
    EXPECT_EQ(card_of(fill), whole_card("N;CHARSET=utf-8:" + text + "\r\nFN;CHARSET=utf-8:" + text +
                                        "\r\nTITLE;CHARSET=utf-8:" + text + "\r\n"));
}
