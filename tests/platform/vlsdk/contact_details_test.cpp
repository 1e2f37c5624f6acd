// Contact details and the phone-book record that they become.
#include "stack_test.h"

#include "vlcm/contacts.h"

#include <objbase.h>

#include <functional>
#include <iterator>
#include <string>

namespace vlsim_test {
namespace {

constexpr uint32_t kDone = 0, kNullPointer = 0x0402, kNotSupported = 0x0404;

// A record with its parts, as the stack's callers make it.
struct Record {
    VlContactName name{};
    VlContactOrganisation organisation{};
    VlContactBlob blob{};
    VlContactPhone phones[VLCM_CONTACT_PHONES]{};
    VlContactAddress addresses[VLCM_CONTACT_ADDRESSES]{};
    VlContactEmail emails[VLCM_CONTACT_EMAILS]{};
    VlContactUrl urls[VLCM_CONTACT_URLS]{};
    VlContact head{};

    Record() {
        head.size = sizeof head;
        head.name = &name;
        head.organisation = &organisation;
        head.blob = &blob;
        head.phones = phones;
        head.addresses = addresses;
        head.emails = emails;
        head.urls = urls;
    }
    ~Record() { CoTaskMemFree(blob.block); }
    Record(const Record&) = delete;
    Record& operator=(const Record&) = delete;
};

uint32_t parse(const std::string& details, Record& record) {
    return Btsdk_PIMParseContactDetails2(details.c_str(), &record.head);
}

// "[<head>0<tail>,<head>1<tail>,...]"
std::string numbered_list(size_t count, const char* head, const char* tail) {
    std::string list = "[";
    for (size_t i = 0; i < count; ++i) list += (i != 0 ? "," : "") + (head + std::to_string(i)) + tail;
    return list + "]";
}

class ContactDetails : public StackTest {};

}  // namespace

TEST_F(ContactDetails, FillTheRecordsTexts) {
    Record r;
    ASSERT_EQ(parse(R"({"family": "F", "given": "G", "additional": "A", "company": "C", "department": "D",
                        "title": "T", "emails": ["e1", "e2"], "urls": ["u1"],
                        "work": {"street": "S", "locality": "L", "region": "R", "postalCode": "P",
                                 "country": "N"},
                        "home": {"street": "H"}, "other": {"street": "O"}})",
                    r),
              kDone);
    const struct {
        const char* field;
        const char* expected;
    } rows[] = {
        {r.name.family, "F"},
        {r.name.given, "G"},
        {r.name.additional, "A"},
        {r.organisation.company, "C"},
        {r.organisation.department, "D"},
        {r.organisation.title, "T"},
        {r.emails[0].address, "e1"},
        {r.emails[1].address, "e2"},
        {r.urls[0].text, "u1"},
        {r.addresses[VLCM_ADDRESS_WORK].street, "S"},
        {r.addresses[VLCM_ADDRESS_WORK].locality, "L"},
        {r.addresses[VLCM_ADDRESS_WORK].region, "R"},
        {r.addresses[VLCM_ADDRESS_WORK].postalCode, "P"},
        {r.addresses[VLCM_ADDRESS_WORK].country, "N"},
        {r.addresses[VLCM_ADDRESS_HOME].street, "H"},
        {r.addresses[VLCM_ADDRESS_OTHER].street, "O"},
    };
    for (const auto& row : rows) EXPECT_STREQ(row.field, row.expected);
}

TEST_F(ContactDetails, NamePhoneTypesOrGiveTheirNumbers) {
    Record r;
    ASSERT_EQ(parse(R"({"phones": [{"type": "cell", "number": "1"}, {"type": "home", "number": "2"},
                        {"type": "work", "number": "3"}, {"type": "voice", "number": "4"},
                        {"type": 9, "number": "5"}, {"number": "6"}]})",
                    r),
              kDone);
    const uint32_t types[] = {6, 1, 2, 0, 9, 0};
    for (size_t i = 0; i < std::size(types); ++i) {
        EXPECT_EQ(r.phones[i].type, types[i]) << i;
        EXPECT_EQ(r.phones[i].number, std::to_string(i + 1));
    }
    EXPECT_STREQ(r.phones[6].number, "");
}

TEST_F(ContactDetails, AreCutToTheirFields) {
    Record r;
    const std::string text(300, 'x');
    ASSERT_EQ(parse(R"({"family": ")" + text + R"(", "phones": [{"number": ")" + text +
                        R"("}], "emails": [")" + text + "\"]}",
                    r),
              kDone);
    EXPECT_EQ(r.name.family, text.substr(0, 255));
    EXPECT_STREQ(r.name.additional, "");
    EXPECT_EQ(r.phones[0].number, text.substr(0, 43));
    EXPECT_EQ(r.emails[0].address, text.substr(0, 43));
}

TEST_F(ContactDetails, LeaveOutEntriesWithoutRoom) {
    Record r;
    const std::string details = R"({"phones": )" + numbered_list(11, R"({"number": ")", "\"}") +
                                R"(, "emails": )" + numbered_list(4, "\"", "\"") + R"(, "urls": )" +
                                numbered_list(4, "\"", "\"") + "}";
    ASSERT_EQ(parse(details, r), kDone);
    EXPECT_STREQ(r.phones[0].number, "0");
    EXPECT_STREQ(r.phones[9].number, "9");
    EXPECT_STREQ(r.emails[0].address, "0");
    EXPECT_STREQ(r.emails[2].address, "2");
    EXPECT_STREQ(r.urls[0].text, "0");
    EXPECT_STREQ(r.urls[2].text, "2");
}

TEST_F(ContactDetails, PutAPictureIntoABlockOfTheTaskAllocator) {
    Record r;
    ASSERT_EQ(parse(R"({"picture": "FF D8 01"})", r), kDone);
    EXPECT_EQ(*reinterpret_cast<const uint32_t*>(r.blob.head), 3u);
    ASSERT_NE(r.blob.block, nullptr);
    EXPECT_EQ(std::string(static_cast<const char*>(r.blob.block), 3), "\xFF\xD8\x01");
}

TEST_F(ContactDetails, TakeTextsThatAreNotUtf8InHexadecimal) {
    Record r;
    ASSERT_EQ(parse(R"({"family": {"hex": "47 FC"}})", r), kDone);
    EXPECT_STREQ(r.name.family, "G\xFC");
}

TEST_F(ContactDetails, OfAnotherFormatWriteNothing) {
    const char* const kOthers[] = {
        "",
        "BEGIN:VCARD",
        "[]",
        R"({"family": 1})",
        R"({"given": "G", "phones": {}})",
        R"({"given": "G", "picture": "F"})",
        R"({"given": "G", "phones": [{"type": "fax"}]})",
    };
    for (const char* details : kOthers) {
        Record r;
        EXPECT_EQ(parse(details, r), kNotSupported) << details;
        EXPECT_STREQ(r.name.given, "");
        EXPECT_EQ(r.blob.block, nullptr);
    }
}

TEST_F(ContactDetails, NeedAFreshRecordWithItsParts) {
    const struct {
        const char* report;
        uint32_t answer;
        std::function<void(Record&)> spoil;
    } rows[] = {
        {"null name", kNullPointer, [](Record& r) { r.head.name = nullptr; }},
        {"null organisation", kNullPointer, [](Record& r) { r.head.organisation = nullptr; }},
        {"null blob", kNullPointer, [](Record& r) { r.head.blob = nullptr; }},
        {"null phones", kNullPointer, [](Record& r) { r.head.phones = nullptr; }},
        {"null addresses", kNullPointer, [](Record& r) { r.head.addresses = nullptr; }},
        {"null emails", kNullPointer, [](Record& r) { r.head.emails = nullptr; }},
        {"null urls", kNullPointer, [](Record& r) { r.head.urls = nullptr; }},
        {"size is not 1296", kDone, [](Record& r) { r.head.size = 0; }},
        {"blob record not fresh", kDone, [](Record& r) { r.blob.block = CoTaskMemAlloc(1); }},
        {"record not fresh", kDone, [](Record& r) { r.name.family[0] = 'x'; }},
        {"record not fresh", kDone, [](Record& r) { r.phones[0].number[0] = '1'; }},
    };
    for (const auto& row : rows) {
        Record r;
        row.spoil(r);
        EXPECT_EQ(parse("{}", r), row.answer) << row.report;
        EXPECT_EQ(take_misuse(),
                  std::vector<std::string>{std::string("Btsdk_PIMParseContactDetails2: ") + row.report});
    }
}

}  // namespace vlsim_test
