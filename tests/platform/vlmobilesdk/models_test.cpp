// The mobile SDK stand-in: models from a file.
#include "VlMobileSDK.h"
#include "support/guarded_buffer.h"
#include "support/suite_test.h"

#include <stdio.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

using support::GuardedBuffer;

namespace {

// Models of one's own, named by the environment while the object lives.
class ModelFile {
public:
    explicit ModelFile(const std::string& text, const wchar_t* name = L"models_test.json") {
        wchar_t folder[MAX_PATH];
        GetTempPathW(MAX_PATH, folder);
        path_ = std::wstring(folder) + name;
        FILE* file = _wfopen(path_.c_str(), L"wb");
        if (file == nullptr) {
            ADD_FAILURE() << "no file to write models to";
        } else {
            fwrite(text.data(), 1, text.size(), file);
            fclose(file);
        }
        SetEnvironmentVariableW(L"VLMOBILE_MODELS", path_.c_str());
    }
    ~ModelFile() {
        SetEnvironmentVariableW(L"VLMOBILE_MODELS", nullptr);
        DeleteFileW(path_.c_str());
    }
    ModelFile(const ModelFile&) = delete;
    ModelFile& operator=(const ModelFile&) = delete;

private:
    std::wstring path_;
};

// Both series behind one interface.
struct Series {
    const char* label;
    const char* key;
    void* (*start)(uint32_t);
    uint32_t (*next)(void*, void*);
    uint32_t (*end)(void*);
    size_t entry_bytes, manufacturer_bytes;
};
const Series kSymbian = {
    "Symbian", "symbian", MB_StartEnumSymbianModels, MB_EnumSymbianModels, MB_EndEnumSymbianModels, 544, 32};
const Series kS40 = {"S40", "s40", MB_StartEnumModels_S40, MB_EnumModels_S40, MB_EndEnumModels_S40, 720, 64};
const Series kBoth[] = {kSymbian, kS40};

std::string file_of(const std::string& symbian, const std::string& s40) {
    return R"({"symbian": )" + symbian + R"(, "s40": )" + s40 + "}";
}

template <typename Entry>
std::vector<std::string> listed(const Series& series) {
    std::vector<std::string> lines;
    void* walk = series.start(0);
    EXPECT_NE(walk, nullptr);
    Entry entry;
    while (series.next(walk, &entry) != 0) {
        lines.push_back(std::string(entry.manufacturer) + "|" + entry.model1 + "|" + entry.model2);
    }
    EXPECT_EQ(series.next(walk, &entry), 0U) << "the end stays the end";
    EXPECT_EQ(series.end(walk), 0U);
    return lines;
}

TEST(MobileModels, AreListedInTheOrderOfTheFile) {
    const ModelFile file(file_of(R"([{"manufacturer": "A", "models": ["a1", "a2"]},
                                     {"manufacturer": "B", "models": ["b1"]}])",
                                 R"([{"manufacturer": "C", "models": ["", "c2"]}])"));
    EXPECT_EQ(listed<SymbianModelEntry>(kSymbian), (std::vector<std::string>{"A|a1|a2", "B|b1|"}));
    EXPECT_EQ(listed<S40ModelEntry>(kS40), std::vector<std::string>{"C||c2"});
}

TEST(MobileModels, AreInTheAnsiCodePage) {
    ASSERT_EQ(GetACP(), 1252U);
    const ModelFile file(
        file_of(R"([{"manufacturer": "M\u00FCller", "models": ["\u20AC1", "\u0E01"]}])", "[]"));
    EXPECT_EQ(listed<SymbianModelEntry>(kSymbian), std::vector<std::string>{"M\xFCller|\x80"
                                                                            "1|?"});
}

TEST(MobileModels, ComeFromTheFileBesideTheDllByDefault) {
    const auto symbian = listed<SymbianModelEntry>(kSymbian), s40 = listed<S40ModelEntry>(kS40);
    EXPECT_GE(symbian.size() + s40.size(), 12U);
    EXPECT_EQ(std::count(symbian.begin(), symbian.end(), "Norvik|N740|Norvik N740 Navigator"), 1);
}

TEST(MobileModels, FillTheWholeEntryAndNothingBehind) {
    const ModelFile file(file_of(R"([{"manufacturer": "A", "models": ["a1"]}])",
                                 R"([{"manufacturer": "A", "models": ["a1"]}])"));
    support::for_each_row(kBoth, [](const Series& series) {
        const GuardedBuffer entry(series.entry_bytes);
        void* walk = series.start(0);
        EXPECT_EQ(series.next(walk, entry.as()), 1U);
        std::string expected(series.entry_bytes, '\0');
        expected[0] = 'A';
        expected.replace(series.key == kSymbian.key ? 96 : 64, 2, "a1");
        EXPECT_EQ(std::string(entry.as(), series.entry_bytes), expected);
        EXPECT_TRUE(entry.untouched_from(series.entry_bytes));
        EXPECT_EQ(series.end(walk), 0U);
    });
}

TEST(MobileModels, MayBeNone) {
    const ModelFile file(file_of("[]", "[]"));
    EXPECT_TRUE(listed<SymbianModelEntry>(kSymbian).empty());
    EXPECT_TRUE(listed<S40ModelEntry>(kS40).empty());
}

TEST(MobileModels, CannotBeListedWithoutAFile) {
    SetEnvironmentVariableW(L"VLMOBILE_MODELS", L"C:\\no such folder\\models.json");
    for (const Series& series : kBoth) EXPECT_EQ(series.start(0), nullptr) << series.label;
    SetEnvironmentVariableW(L"VLMOBILE_MODELS", nullptr);
}

TEST(MobileModels, CannotBeListedFromADamagedFile) {
    const struct {
        const char* label;
        std::string text;
    } rows[] = {
        {"empty file", ""},
        {"no JSON", "symbian = A"},
        {"cut", R"({"symbian": [], "s40": [)"},
        {"no object", "[]"},
        {"lists missing", "{}"},
        {"no lists", file_of("{}", "7")},
        {"entry is no object", file_of("[1]", "[[]]")},
        {"manufacturer missing", file_of(R"([{"models": ["a"]}])", R"([{"models": ["a"]}])")},
        {"manufacturer is no text", file_of(R"([{"manufacturer": 1, "models": ["a"]}])",
                                            R"([{"manufacturer": null, "models": ["a"]}])")},
        {"models missing", file_of(R"([{"manufacturer": "A"}])", R"([{"manufacturer": "A"}])")},
        {"models are no list",
         file_of(R"([{"manufacturer": "A", "models": "a"}])", R"([{"manufacturer": "A", "models": {}}])")},
        {"no model",
         file_of(R"([{"manufacturer": "A", "models": []}])", R"([{"manufacturer": "A", "models": []}])")},
        {"three models", file_of(R"([{"manufacturer": "A", "models": ["a", "b", "c"]}])",
                                 R"([{"manufacturer": "A", "models": ["a", "b", "c"]}])")},
        {"model is no text", file_of(R"([{"manufacturer": "A", "models": [1]}])",
                                     R"([{"manufacturer": "A", "models": ["a", 1]}])")},
        {"second entry damaged", file_of(R"([{"manufacturer": "A", "models": ["a"]}, {}])",
                                         R"([{"manufacturer": "A", "models": ["a"]}, {}])")},
    };
    support::for_each_row(rows, [](const auto& row) {
        const ModelFile file(row.text);
        for (const Series& series : kBoth) EXPECT_EQ(series.start(0), nullptr) << series.label;
    });
}

TEST(MobileModels, MustFitTheirFields) {
    const auto list = [](size_t manufacturer, size_t model1, size_t model2) {
        return R"([{"manufacturer": ")" + std::string(manufacturer, 'm') + R"(", "models": [")" +
               std::string(model1, 'x') + R"(", ")" + std::string(model2, 'y') + R"("]}])";
    };
    for (const Series& series : kBoth) {
        SCOPED_TRACE(series.label);
        const size_t room = series.manufacturer_bytes;
        const struct {
            const char* label;
            std::string list;
            bool fits;
        } rows[] = {
            {"all full", list(room - 1, 63, 63), true},
            {"manufacturer too long", list(room, 1, 1), false},
            {"first model too long", list(1, 64, 1), false},
            {"second model too long", list(1, 1, 64), false},
        };
        support::for_each_row(rows, [&](const auto& row) {
            const ModelFile file(file_of(row.list, row.list));
            void* walk = series.start(0);
            EXPECT_EQ(walk != nullptr, row.fits);
            if (walk != nullptr) series.end(walk);
        });
    }
}

TEST(MobileModels, AreReadAnewAtEachStart) {
    void* walk = nullptr;
    {
        const ModelFile file(file_of(R"([{"manufacturer": "A", "models": ["a"]}])", "[]"));
        walk = MB_StartEnumSymbianModels(0);
    }
    const ModelFile file(file_of(R"([{"manufacturer": "B", "models": ["b"]}])", "[]"));
    EXPECT_EQ(listed<SymbianModelEntry>(kSymbian), std::vector<std::string>{"B|b|"});
    SymbianModelEntry entry;
    EXPECT_EQ(MB_EnumSymbianModels(walk, &entry), 1U);
    EXPECT_STREQ(entry.manufacturer, "A") << "an open walk keeps its models";
    EXPECT_EQ(MB_EndEnumSymbianModels(walk), 0U);
}

TEST(MobileModels, MayLieUnderAnyName) {
    const ModelFile file(file_of(R"([{"manufacturer": "A", "models": ["a"]}])", "[]"), L"\u6A21\u578B.json");
    EXPECT_EQ(listed<SymbianModelEntry>(kSymbian), std::vector<std::string>{"A|a|"});
}

TEST(MobileModels, RefuseWhatIsNoOpenWalk) {
    void* symbian = MB_StartEnumSymbianModels(0);
    S40ModelEntry entry{};
    EXPECT_EQ(MB_EnumModels_S40(symbian, &entry), 0U) << "a walk of the other series";
    EXPECT_EQ(MB_EndEnumModels_S40(symbian), static_cast<uint32_t>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(MB_EnumSymbianModels(nullptr, &entry), 0U);
    EXPECT_EQ(MB_EnumSymbianModels(symbian, nullptr), 0U);
    EXPECT_EQ(MB_EndEnumSymbianModels(symbian), 0U);
    EXPECT_EQ(MB_EnumSymbianModels(symbian, &entry), 0U) << "ended";
    EXPECT_EQ(MB_EndEnumSymbianModels(symbian), static_cast<uint32_t>(ERROR_INVALID_HANDLE));
    EXPECT_EQ(MB_EndEnumModels_S40(nullptr), static_cast<uint32_t>(ERROR_INVALID_HANDLE));
}

}  // namespace
