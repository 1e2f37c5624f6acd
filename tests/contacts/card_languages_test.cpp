// From the details of a simulated phone to a card, in many scripts: the whole road.
#include "contact_use.h"
#include "kept_cards.h"

#include "support/suite_test.h"

namespace {

struct CardRow {
    const char* label;
    const char* details;
    const char* lines;
};

const CardRow kRows[] = {
    {"Chinese",
     R"({"family": "王", "given": "小芳", "company": "北京公司", "phones": [{"type": "cell", "number": "+86 138"}],
         "work": {"street": "长安街1号", "locality": "北京", "country": "中国"}})",
     "N;CHARSET=utf-8:王;小芳\r\nFN;CHARSET=utf-8:王小芳\r\nORG;CHARSET=utf-8:北京公司\r\n"
     "TEL;CELL;VOICE:+86 138\r\nADR;WORK;PREF;CHARSET=utf-8:;;长安街1号;北京;;;中国\r\n"},
    {"Arabic",
     R"({"family": "الأحمد", "given": "محمد", "additional": "علي", "title": "مهندس", "emails": ["m@example.org"]})",
     "N;CHARSET=utf-8:الأحمد;محمد;علي\r\nFN;CHARSET=utf-8:الأحمدمحمدعلي\r\nTITLE;CHARSET=utf-8:مهندس\r\n"
     "EMAIL;PREF;INTERNET;CHARSET=utf-8:m@example.org\r\n"},
    {"emoji", R"({"given": "👩‍👩‍👧😀", "department": "🚀"})",
     "N;CHARSET=utf-8:;👩‍👩‍👧😀\r\nFN;CHARSET=utf-8:👩‍👩‍👧😀\r\nORG;CHARSET=utf-"
     "8:"
     "🚀\r\n"},
    {"umlauts and accents", R"({"family": "Müßig", "given": "Zoë", "picture": "FF D8 FF"})",
     "N;CHARSET=utf-8:Müßig;Zoë\r\nFN;CHARSET=utf-8:MüßigZoë\r\n"},
    {"Hindi", R"({"additional": "देवनागरी"})", "N;CHARSET=utf-8:;देवनागरी\r\nFN;CHARSET=utf-8:देवनागरी\r\n"},
};

class CardLanguages : public support::SuiteTest {};

}  // namespace

TEST_F(CardLanguages, AreWrittenInUtf8AsThePhoneSentThem) {
    char path[MAX_PATH] = "";
    GetTempPathA(MAX_PATH, path);
    strcat_s(path, sizeof path, "vlcm language.vcf");
    support::for_each_row(kRows, [&](const CardRow& row) {
        EXPECT_EQ(VlCm_ConvertMBContactToVcfFile(row.details, path), 1u);
        const std::string card = support::read_file(path).value_or("(no file)");
        EXPECT_EQ(card, std::string("BEGIN:VCARD\r\nVERSION:2.1\r\n") + row.lines + "END:VCARD\r\n");
        keep_card(row.details, card);
    });
    DeleteFileA(path);
}
