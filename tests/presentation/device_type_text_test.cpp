// What kind of device a class of device is, in words.
#include "vlcm/catalogue.h"
#include "vlcm/display_names.h"

#include "language_library_use.h"
#include "support/sdk_log.h"
#include "support/suite_test.h"
#include "support/trace_log.h"
#include "twin.h"

#include <set>

namespace {

constexpr uint32_t kSmartphone = 0x5A020C, kUncategorised = 0x001F00;
constexpr UINT kUnknownKind = 1200, kUnknownClass = 1101, kSmartphoneName = 1112, kPhoneName = 1201;
constexpr uint32_t kEnough = 300;

template <typename Char>
class DeviceTypeText : public support::SuiteTest {
protected:
    static Outcome<Char> ask(uint32_t device_class, uint32_t size = kEnough) {
        return outcome_of<Char>([=](Char* buffer, uint32_t room) { return call(device_class, buffer, room); },
                                size, size < kEnough ? size : kEnough);
    }
    static uint32_t call(uint32_t device_class, Char* buffer, uint32_t size) {
        return static_cast<uint32_t>(form_of<Char>(VlCm_GetDevTypeStrByDevCls, VlCm_GetDevTypeStrByDevClsW)(
            device_class, buffer, size));
    }
    static std::basic_string<Char> text(uint32_t device_class, uint32_t size = kEnough) {
        const auto found = ask(device_class, size);
        EXPECT_EQ(found.result, 1u);
        EXPECT_FALSE(found.untouched);
        return found.text;
    }
};
TYPED_TEST_SUITE(DeviceTypeText, TwinForms, TwinFormName);

TYPED_TEST(DeviceTypeText, NeedsABufferWithRoom) {
    const LanguageLibraryUse library;
    EXPECT_EQ(this->call(kSmartphone, nullptr, kEnough), 0u);
    TypeParam room = TypeParam{'x'};
    EXPECT_EQ(this->call(kSmartphone, &room, 0), 0u);
    EXPECT_EQ(room, TypeParam{'x'});
    EXPECT_EQ(library.tries(), 0u);
}

TYPED_TEST(DeviceTypeText, NeedsTheLanguageLibrary) {
    LanguageLibraryUse library;
    library.fail();
    const auto found = this->ask(kSmartphone);
    EXPECT_EQ(found.result, 0u);
    EXPECT_TRUE(found.untouched);
    EXPECT_TRUE(support::trace_log().empty());
}

TYPED_TEST(DeviceTypeText, IsTheNameOfTheMinorClass) {
    std::set<UINT> seen;
    for (uint32_t device_class = 0; device_class <= 0x1FFC; device_class += 4) {
        const UINT major = VlCm_GetDevMajorClsNameID(device_class);
        const UINT minor = VlCm_GetDevMinorClsNameID(device_class);
        const bool known = major != kUnknownClass && minor != kUnknownClass;
        if (!seen.insert(known ? minor : kUnknownKind).second) continue;
        EXPECT_EQ(this->text(device_class), resource_text<TypeParam>(known ? minor : kUnknownKind))
            << std::hex << device_class;
    }
    EXPECT_GT(seen.size(), 40u);
    EXPECT_EQ(this->text(kSmartphone), resource_text<TypeParam>(kSmartphoneName));
    EXPECT_TRUE(support::trace_log().empty());
    EXPECT_TRUE(support::sdk_calls().empty());
}

TYPED_TEST(DeviceTypeText, IsTheUnknownKindWhenEitherNameIsUnknown) {
    const auto unknown = resource_text<TypeParam>(kUnknownKind);
    EXPECT_EQ(this->text(kUncategorised), unknown) << "only the minor name is unknown";
    EXPECT_EQ(this->text(0x000600), unknown);
    EXPECT_EQ(this->text(0x000511), unknown);
    EXPECT_EQ(this->text(0x000900), unknown) << "no row";
    EXPECT_EQ(this->text(0), unknown);
}

TYPED_TEST(DeviceTypeText, LoadsBothNamesOrTheUnknownKindWithTheCallersSize) {
    const StringLoads<TypeParam> strings;
    using Loads = std::vector<std::pair<UINT, int>>;
    this->ask(kSmartphone, 100);
    EXPECT_EQ(strings.loads(), (Loads{{kPhoneName, 260}, {kSmartphoneName, 260}}));
    this->ask(kUncategorised, 17);
    this->ask(kSmartphone, 3);
    EXPECT_EQ(strings.loads(), (Loads{{kPhoneName, 260},
                                      {kSmartphoneName, 260},
                                      {kUnknownKind, 17},
                                      {kPhoneName, 260},
                                      {kSmartphoneName, 260},
                                      {kUnknownKind, 3}}));
}

TYPED_TEST(DeviceTypeText, ThatDoesNotFitIsTheUnknownKindCutToTheBuffer) {
    StringLoads<TypeParam> strings;
    const auto unknown = ascii<TypeParam>("Unknown kind of thing");
    const auto smartphone = ascii<TypeParam>("Smart");
    strings.set(kUnknownKind, unknown);
    strings.set(kSmartphoneName, smartphone);
    for (uint32_t size = 1; size <= 5; ++size) {
        EXPECT_EQ(this->text(kSmartphone, size), unknown.substr(0, size - 1)) << size;
    }
    EXPECT_EQ(this->text(kSmartphone, 6), smartphone);
    EXPECT_EQ(this->text(kUncategorised, 6), unknown.substr(0, 5));
    EXPECT_EQ(this->text(kUncategorised, 22), unknown);
}

// The real loader, with real texts.
TYPED_TEST(DeviceTypeText, IsCutByTheLoader) {
    const auto unknown = resource_text<TypeParam>(kUnknownKind);
    for (const uint32_t size : {1u, 2u, 5u}) {
        EXPECT_EQ(this->text(kUncategorised, size), unknown.substr(0, size - 1)) << size;
        EXPECT_EQ(this->text(kSmartphone, size), unknown.substr(0, size - 1)) << size;
    }
    const auto length = static_cast<uint32_t>(resource_text<TypeParam>(kSmartphoneName).size());
    EXPECT_NE(this->text(kSmartphone, length), resource_text<TypeParam>(kSmartphoneName));
    EXPECT_EQ(this->text(kSmartphone, length + 1), resource_text<TypeParam>(kSmartphoneName));
}

TYPED_TEST(DeviceTypeText, TakesSizesAsUnsigned) {
    const auto unknown = resource_text<TypeParam>(kUnknownKind);
    for (const uint32_t size : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        EXPECT_EQ(this->text(kUncategorised, size), unknown) << size;
        EXPECT_EQ(this->text(kSmartphone, size), resource_text<TypeParam>(kSmartphoneName)) << size;
    }
}

TYPED_TEST(DeviceTypeText, IsEmptyWhenItsTextIsMissing) {
    StringLoads<TypeParam> strings;
    strings.remove(kUnknownKind);
    EXPECT_TRUE(this->text(kUncategorised).empty());
    EXPECT_TRUE(this->text(kSmartphone, 1).empty());
    strings.remove(kSmartphoneName);
    EXPECT_TRUE(this->text(kSmartphone, 1).empty());
}

TYPED_TEST(DeviceTypeText, CutsNamesToItsWorkBuffer) {
    StringLoads<TypeParam> strings;
    const auto longest = ascii<TypeParam>(std::string(400, 'n'));
    strings.set(kPhoneName, longest);
    strings.set(kSmartphoneName, longest);
    EXPECT_EQ(this->text(kSmartphone), longest.substr(0, 259));
    EXPECT_EQ(this->text(kSmartphone, 260), longest.substr(0, 259));
    EXPECT_NE(this->text(kSmartphone, 259), longest.substr(0, 258)) << "the unknown kind";
}

TYPED_TEST(DeviceTypeText, FreesTheLanguageLibraryOnEveryPath) {
    const LanguageLibraryUse library;
    this->ask(kSmartphone);
    this->ask(kSmartphone, 1);
    this->ask(kUncategorised);
    EXPECT_EQ(library.loads(), 3u);
    EXPECT_EQ(library.frees(), 3u);
}

}  // namespace
