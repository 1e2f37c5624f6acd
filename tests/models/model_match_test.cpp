// Looking models up in the mobile SDK's lists. The program runs on a single-byte and a double-byte code page.
#include "device_model.h"
#include "fake_list.h"
#include "support/guarded_buffer.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include <mbstring.h>

using support::CallPatch;

namespace {

struct Symbian {
    using Entry = SymbianModelEntry;
    static BOOL match(const VlDeviceModel* model) { return VlCm_IsMatchSymbianModelExist(model, nullptr); }
};
struct S40 {
    using Entry = S40ModelEntry;
    static BOOL match(const VlDeviceModel* model) { return VlCm_IsMatchS40ModelExist(model); }
};

template <typename Series>
class ModelList : public support::SuiteTest {
protected:
    using Entry = typename Series::Entry;

    static Entry entry(const ModelTexts& texts) {
        Entry made;
        memset(&made, kPattern, sizeof made);
        set_field(made.manufacturer, texts.manu);
        set_field(made.model1, texts.model1);
        set_field(made.model2, texts.model2);
        return made;
    }
    BOOL match(const ModelTexts& listed, const ModelTexts& wanted) {
        list.entries = {entry(listed)};
        const VlDeviceModel model = device_model(wanted);
        return Series::match(&model);
    }

    FakeList<Entry> list;
};
struct SeriesNames {
    template <typename Series>
    static std::string GetName(int /*index*/) {
        return std::is_same_v<Series, Symbian> ? "Symbian" : "S40";
    }
};
using BothSeries = ::testing::Types<Symbian, S40>;
TYPED_TEST_SUITE(ModelList, BothSeries, SeriesNames);

using SymbianList = ModelList<Symbian>;
using S40List = ModelList<S40>;

struct MatchRow {
    const char* label;
    ModelTexts listed, wanted;
    BOOL expected;
};

bool on_double_byte_code_page() { return GetACP() == 936; }

}  // namespace

TYPED_TEST(ModelList, MatchesEachOfTheFourPairsOfNames) {
    const MatchRow rows[] = {
        {"first and first", {"M", "a", "x"}, {"M", "a", "y"}, 1},
        {"first and second", {"M", "a", "x"}, {"M", "y", "a"}, 1},
        {"second and first", {"M", "x", "a"}, {"M", "a", "y"}, 1},
        {"second and second", {"M", "x", "a"}, {"M", "y", "a"}, 1},
        {"none", {"M", "a", "b"}, {"M", "c", "d"}, 0},
        {"only a part", {"M", "abc", "abc"}, {"M", "ab", "bc"}, 0},
        {"only a beginning", {"M", "ab", "b"}, {"M", "abc", "bc"}, 0},
        {"all empty", {"M", "", ""}, {"M", "", ""}, 0},
        {"listed empty", {"M", "", ""}, {"M", "a", ""}, 0},
        {"wanted empty", {"M", "a", ""}, {"M", "", ""}, 0},
        {"firsts empty", {"M", "", "a"}, {"M", "", "b"}, 0},
        {"seconds empty", {"M", "a", ""}, {"M", "b", ""}, 0},
        {"crosswise empty", {"M", "", "a"}, {"M", "b", ""}, 0},
        {"one pair beside empty ones", {"M", "", "a"}, {"M", "a", ""}, 1},
        {"case", {"M", "N740 Navigator", ""}, {"M", "n740 nAVIGATOR", ""}, 1},
        {"modules do not count", {"M", "a", ""}, {"M", "", "", "a", "a"}, 0},
    };
    support::for_each_row(
        rows, [&](const MatchRow& row) { EXPECT_EQ(this->match(row.listed, row.wanted), row.expected); });
    EXPECT_TRUE(support::sdk_calls().empty());
    EXPECT_TRUE(support::trace_log().empty());
}

TYPED_TEST(ModelList, WantsTheManufacturerInTheListedOne) {
    const MatchRow rows[] = {
        {"same", {"Norvik", "a", ""}, {"Norvik", "a", ""}, 1},
        {"beginning", {"Norvik Oyj", "a", ""}, {"Norvik", "a", ""}, 1},
        {"middle", {"The Norvik Co", "a", ""}, {"Norvik", "a", ""}, 1},
        {"end", {"A Norvik", "a", ""}, {"Norvik", "a", ""}, 1},
        {"the other way round", {"Norvik", "a", ""}, {"Norvik Oyj", "a", ""}, 0},
        {"another", {"Tessaro", "a", ""}, {"Norvik", "a", ""}, 0},
        {"case counts", {"NORVIK", "a", ""}, {"Norvik", "a", ""}, 0},
        {"none wanted", {"Tessaro", "a", ""}, {"", "a", ""}, 1},
        {"none wanted, none listed", {"", "a", ""}, {"", "a", ""}, 1},
        {"none listed", {"", "a", ""}, {"Norvik", "a", ""}, 0},
    };
    support::for_each_row(
        rows, [&](const MatchRow& row) { EXPECT_EQ(this->match(row.listed, row.wanted), row.expected); });
}

TYPED_TEST(ModelList, IsWalkedUpToTheFirstFitAndEnded) {
    using Listed = typename TypeParam::Entry;
    const Listed other = this->entry({"M", "x", ""}), fit = this->entry({"M", "a", ""});
    const struct {
        const char* label;
        std::vector<Listed> entries;
        BOOL expected;
        size_t fetches;
    } rows[] = {
        {"nothing listed", {}, 0, 1},        {"no fit", {other, other, other}, 0, 4},
        {"first", {fit, other, fit}, 1, 1},  {"second", {other, fit, fit}, 1, 2},
        {"last", {other, other, fit}, 1, 3},
    };
    const VlDeviceModel model = device_model({"M", "a"});
    support::for_each_row(rows, [&](const auto& row) {
        FakeList<Listed>& walked = this->list;
        walked.entries = row.entries;
        const size_t starts = walked.starts(), fetches = walked.fetches(), ends = walked.ends();
        EXPECT_EQ(TypeParam::match(&model), row.expected);
        EXPECT_EQ(walked.starts() - starts, 1U);
        EXPECT_EQ(walked.fetches() - fetches, row.fetches);
        EXPECT_EQ(walked.ends() - ends, 1U);
    });
}

TYPED_TEST(ModelList, ThatCannotBeStartedIsNeitherWalkedNorEnded) {
    this->list.can_start = false;
    EXPECT_EQ(this->match({"M", "a"}, {"M", "a"}), 0);
    EXPECT_EQ(this->list.starts(), 1U);
    EXPECT_EQ(this->list.fetches() + this->list.ends(), 0U);
}

TYPED_TEST(ModelList, GoesOnUntilAFetchAnswersZero) {
    for (const uint32_t more : {1U, 2U, 0x100U, 0x80000000U, 0xFFFFFFFFU}) {
        this->list.more = more;
        EXPECT_EQ(this->match({"M", "a"}, {"M", "a"}), 1) << more;
    }
}

TYPED_TEST(ModelList, IsNotAskedForANullModel) {
    EXPECT_EQ(TypeParam::match(nullptr), 0);
    EXPECT_EQ(this->list.starts(), 0U);
}

TYPED_TEST(ModelList, ReadsNoFieldBeyondItsEnd) {
    const std::string name(64, 'n'), manufacturer(sizeof(TypeParam::Entry::manufacturer), 'm');
    const support::GuardedBuffer room(sizeof(VlDeviceModel));
    *room.as<VlDeviceModel>() = device_model({"mm", "x", name, "b", std::string(260, 'p')});
    this->list.entries = {this->entry({manufacturer, "y", name})};
    EXPECT_EQ(TypeParam::match(room.as<VlDeviceModel>()), 1);
    *room.as<VlDeviceModel>() = device_model({name, "x", name});
    this->list.entries = {this->entry({"nn", name, name})};
    EXPECT_EQ(TypeParam::match(room.as<VlDeviceModel>()), 0) << "63 bytes are wanted";
}

// The terminator behind a lead byte is no second half: what follows does not count.
TYPED_TEST(ModelList, EndsATextBehindATrailingLeadByte) {
    const std::string rest(1, '\0');
    EXPECT_EQ(this->match({"M", "Ab\x81" + rest + "x"}, {"M", "aB\x81" + rest + "y"}), 1);
    const std::string full = std::string(62, 'a') + "\x81";
    EXPECT_EQ(this->match({"M", full}, {"M", full}), 1);
}

TYPED_TEST(ModelList, ComparesNamesByCharactersOrBytes) {
    // On the double-byte code page these are two Chinese characters, elsewhere a control character and
    // a letter in either case.
    const bool by_bytes = std::is_same_v<TypeParam, S40> || !on_double_byte_code_page();
    EXPECT_EQ(this->match({"M",
                           "\x81"
                           "A"},
                          {"M",
                           "\x81"
                           "a"}),
              by_bytes);
    EXPECT_EQ(this->match({"M",
                           "\x81"
                           "A"},
                          {"M",
                           "\x81"
                           "A"}),
              1);
    EXPECT_EQ(this->match({"M", "\xB7\xA2\xCF\xD6 X"}, {"M", "\xB7\xA2\xCF\xD6 x"}), 1);
}

// How far the runtime's search heeds characters is the runtime's own matter.
TYPED_TEST(ModelList, SearchesTheManufacturerAsTheRuntimeDoes) {
    const std::string listed = "\xC0\xC1\xC2\xC3", across = "\xC1\xC2";
    const bool found = std::is_same_v<TypeParam, S40> ||
                       _mbsstr(reinterpret_cast<const unsigned char*>(listed.c_str()),
                               reinterpret_cast<const unsigned char*>(across.c_str())) != nullptr;
    EXPECT_EQ(this->match({listed, "a"}, {across, "a"}), found);
    EXPECT_EQ(this->match({listed, "a"}, {"\xC2\xC3", "a"}), 1);
}

TEST_F(SymbianList, IsSearchedByTheMultibyteSearch) {
    CallPatch search("_mbsstr",
                     static_cast<unsigned char* (*)(const unsigned char*, const unsigned char*)>(_mbsstr));
    search.answer([](const unsigned char* text, const unsigned char* part) -> unsigned char* {
        EXPECT_STREQ(reinterpret_cast<const char*>(text), "Norvik Oyj");
        EXPECT_STREQ(reinterpret_cast<const char*>(part), "Norvik");
        return nullptr;
    });
    EXPECT_EQ(match({"Norvik Oyj", "a"}, {"Norvik", "a"}), 0);
    EXPECT_EQ(search.count(), 1U);
}

TEST_F(S40List, IsSearchedAndComparedByBytes) {
    CallPatch search("_mbsstr",
                     static_cast<unsigned char* (*)(const unsigned char*, const unsigned char*)>(_mbsstr));
    CallPatch comparison("_mbsicmp", _mbsicmp);
    EXPECT_EQ(match({"Norvik Oyj", "a"}, {"Norvik", "A"}), 1);
    EXPECT_EQ(search.count() + comparison.count(), 0U);
}

TEST_F(SymbianList, HandsTheWholeFittingEntryBack) {
    list.entries = {entry({"M", "x"}), entry({"M", "a", "first"}), entry({"M", "a", "second"})};
    const VlDeviceModel model = device_model({"M", "a"});
    const support::GuardedBuffer room(sizeof(SymbianModelEntry));
    EXPECT_EQ(VlCm_IsMatchSymbianModelExist(&model, room.as<SymbianModelEntry>()), 1);
    EXPECT_EQ(memcmp(room.as(), &list.entries[1], sizeof(SymbianModelEntry)), 0);
}

TEST_F(SymbianList, HandsNothingBackWithoutAFit) {
    const VlDeviceModel model = device_model({"M", "a"});
    const support::GuardedBuffer room(sizeof(SymbianModelEntry));
    list.entries = {entry({"M", "x"})};
    EXPECT_EQ(VlCm_IsMatchSymbianModelExist(&model, room.as<SymbianModelEntry>()), 0);
    EXPECT_EQ(VlCm_IsMatchSymbianModelExist(nullptr, room.as<SymbianModelEntry>()), 0);
    list.can_start = false;
    EXPECT_EQ(VlCm_IsMatchSymbianModelExist(&model, room.as<SymbianModelEntry>()), 0);
    EXPECT_TRUE(room.untouched_from(0));
}

namespace {

class SimulatedLists : public support::SuiteTest {};

}  // namespace

TEST_F(SimulatedLists, KnowTheirPhones) {
    const struct {
        const char* label;
        ModelTexts texts;
        BOOL symbian, s40;
    } rows[] = {
        {"Symbian", {"Norvik", "n740", ""}, 1, 0},
        {"Symbian by its second name", {"Tessaro", "", "t-6630"}, 1, 0},
        {"Series 40", {"Ostermark", "", "O5 OUTDOOR"}, 0, 1},
        {"another manufacturer's", {"Ostermark", "N740", ""}, 0, 0},
        {"in both lists by the maker alone", {"Norvik", "", ""}, 0, 0},
    };
    support::for_each_row(rows, [](const auto& row) {
        const VlDeviceModel model = device_model(row.texts);
        SymbianModelEntry entry = {};
        EXPECT_EQ(VlCm_IsMatchSymbianModelExist(&model, &entry), row.symbian);
        EXPECT_EQ(VlCm_IsMatchS40ModelExist(&model), row.s40);
        EXPECT_EQ(entry.manufacturer, row.symbian ? row.texts.manu : std::string());
    });
}

TEST_F(SimulatedLists, ThatCannotBeReadKnowNone) {
    SetEnvironmentVariableW(L"VLMOBILE_MODELS", L"C:\\no such folder\\models.json");
    const VlDeviceModel model = device_model({"Norvik", "N740"});
    EXPECT_EQ(VlCm_IsMatchSymbianModelExist(&model, nullptr), 0);
    EXPECT_EQ(VlCm_IsMatchS40ModelExist(&model), 0);
    SetEnvironmentVariableW(L"VLMOBILE_MODELS", nullptr);
}
