// The MIME type of an attachment, by its name.
#include "support/guarded_buffer.h"
#include "support/suite_test.h"
#include "support/trace_log.h"

#include "vlcm/images.h"

#include <gtest/gtest.h>

namespace {

struct Function {
    const char* label;
    void (*call)(const char*, char*);
    const char* scope;
};
const Function kFunctions[] = {{"VlCm_GetAttType", VlCm_GetAttType, "8 GetAttType"},
                               {"VlCm_GetAttachmentType", VlCm_GetAttachmentType, "8 GetAttachmentType"}};

constexpr char kText[] = "text/plain";
constexpr char kSound[] = "audio/basic";
const struct {
    const char* label;
    const char* type;  // null: none
} kNames[] = {
    {"a.txt", kText},    {"a.wav", kSound},    {"notes.txt.zip", kText},
    {"a.wave", kSound},  {"a.wav.txt", kText}, {"a.txt.wav", kText},
    {".txt", kText},     {".wav", kSound},     {"C:\\a.txt\\b.jpg", kText},
    {"a.TXT", nullptr},  {"a.Txt", nullptr},   {"a.WAV", nullptr},
    {"txt", nullptr},    {"wav", nullptr},     {"atxt", nullptr},
    {"a.tx", nullptr},   {"a.jpg", nullptr},   {"", nullptr},
    {"a. txt", nullptr}, {"a.wa v", nullptr},
};

class AttachmentType : public support::SuiteTest {};

}  // namespace

TEST_F(AttachmentType, IsToldByAPartOfTheName) {
    support::for_each_row(kFunctions, [](const Function& function) {
        support::for_each_row(kNames, [&](const auto& row) {
            const size_t length = row.type == nullptr ? 0 : strlen(row.type) + 1;
            const support::GuardedBuffer type(length + 3);
            function.call(row.label, type.as<char>());
            if (row.type != nullptr) EXPECT_STREQ(type.as<char>(), row.type);
            EXPECT_TRUE(type.untouched_from(length));
        });
    });
    EXPECT_TRUE(support::trace_lines().empty());
}

TEST_F(AttachmentType, OpensAScopeOfItsOwnName) {
    support::for_each_row(kFunctions, [](const Function& function) {
        support::clear_trace_log();
        const support::GuardedBuffer type(12);
        function.call("a.wav", type.as<char>());
        EXPECT_EQ(support::trace_scopes(), std::vector<std::string>{function.scope});
    });
}

TEST_F(AttachmentType, NeedsNameAndBuffer) {
    support::for_each_row(kFunctions, [](const Function& function) {
        support::clear_trace_log();
        const support::GuardedBuffer type(12);
        function.call(nullptr, type.as<char>());
        function.call("a.txt", nullptr);
        EXPECT_TRUE(type.untouched_from(0));
        EXPECT_EQ(support::trace_scopes(), std::vector<std::string>(2, function.scope));
    });
}
