// Pictures and attachments on the command line, as the library tells them.
#include "command_line.h"

#include "VlCommon.h"
#include "text.h"

using namespace programs;
using namespace suite;

namespace {

class Pictures : public CommandLine {
protected:
    [[nodiscard]] std::wstring picture(const wchar_t* name, const wchar_t* file) const {
        return make_file(file, content_of(std::wstring(L"" PICTURES) + name));
    }
};

class Attachments : public CommandLine {};

}  // namespace

TEST_F(Pictures, AreToldByFormatDimensionsAndSize) {
    const struct {
        const char* label;
        const wchar_t* name;
        Json format;
        unsigned width, height;
    } rows[] = {
        {"JPEG", L"plain.jpg", "JPEG", 1024, 768},
        {"GIF", L"plain.gif", "GIF", 320, 200},
        {"PNG", L"plain.png", "PNG", 320, 200},
        {"BMP", L"24bit.bmp", "BMP", 320, 200},
        {"another format", L"plain.tif", nullptr, 320, 200},
    };
    support::for_each_row(rows, [this](const auto& row) {
        const std::wstring path = picture(row.name, L"gr\u00F6\u00DFe");
        const Json facts = ask({"image", "info", ansi(path)});
        const Json expected = {{"file", utf8(path)},
                               {"format", row.format},
                               {"width", row.width},
                               {"height", row.height},
                               {"size", content_of(path).size()}};
        EXPECT_EQ(facts, expected);
    });
}

TEST_F(Pictures, AreToldInWordsToo) {
    const Outcome told = run({"image", "info", utf8(picture(L"plain.jpg", L"sea.jpg"))});
    EXPECT_EQ(told.exit_code, kYes);
    EXPECT_NE(told.output.find("sea.jpg: JPEG, 1024 x 768 pixels, "), std::string::npos) << told.output;
}

TEST_F(Pictures, ThatAreNoneOrMissingAreRefused) {
    const std::string text = utf8(make_file(L"text.jpg", "no picture"));
    const struct {
        const char* label;
        std::vector<std::string> arguments;
        const char* message;
    } rows[] = {
        {"no picture", {"image", "info", text}, "is no picture that Windows can read"},
        {"missing", {"image", "info", text + ".gone"}, "no file"},
        {"a folder", {"image", "info", utf8(work_folder())}, "no file"},
        {"thumbnail of no picture", {"image", "thumb", text, text + ".thumb"}, "cannot make a thumbnail"},
        {"thumbnail of a missing one", {"image", "thumb", text + ".gone", text}, "no file"},
    };
    support::for_each_row(rows, [](const auto& row) {
        const Outcome refused = run(row.arguments);
        EXPECT_EQ(refused.exit_code, kNo);
        EXPECT_NE(refused.output.find(row.message), std::string::npos) << refused.output;
    });
    EXPECT_EQ(names_in(work_folder()), std::vector<std::wstring>{L"text.jpg"});
}

TEST_F(Pictures, BecomeThumbnails) {
    const std::wstring source = picture(L"plain.jpg", L"sea.jpg");
    const std::wstring thumbnail = make_file(L"kl\u00E9in.jpg", "of before");
    const Json facts = ask({"image", "thumb", utf8(source), ansi(thumbnail)});
    EXPECT_EQ(facts.at("source"), utf8(source));
    EXPECT_EQ(facts.at("file"), utf8(thumbnail));
    EXPECT_EQ(facts.at("format"), "JPEG");
    EXPECT_EQ(facts.at("width"), 160);
    EXPECT_EQ(facts.at("height"), 120);
    EXPECT_EQ(facts.at("size"), content_of(thumbnail).size());
    EXPECT_EQ(ask({"image", "info", ansi(thumbnail)}).at("width"), 160);
}

TEST_F(Pictures, LeaveWhatWasThereWhenNoThumbnailCanBeMade) {
    const std::string text = utf8(make_file(L"text.jpg", "no picture"));
    const std::wstring thumbnail = make_file(L"thumb.jpg", "of before");
    EXPECT_EQ(run({"image", "thumb", text, utf8(thumbnail)}).exit_code, kNo);
    EXPECT_EQ(content_of(thumbnail), "of before");
}

TEST_F(Attachments, AreToldBySizeTypeAndTime) {
    const struct {
        const char* label;
        const wchar_t* name;
        Json type;
    } rows[] = {{"text", L"notes.txt.zip", "text/plain"},
                {"sound", L"kl\u00E4ng.wav", "audio/basic"},
                {"capitals", L"a.TXT", nullptr},
                {"anything else", L"sea.jpg", nullptr}};
    support::for_each_row(rows, [this](const auto& row) {
        const std::wstring path = make_file(row.name, "four words of text");
        const Json facts = ask({"attachment", ansi(path)});
        VlAttachmentProperty property = {};
        VlCm_GetAttachmentProp(ansi(path).c_str(), "", &property);
        const Json expected = {{"file", utf8(path)},
                               {"name", utf8(row.name)},
                               {"type", row.type},
                               {"size", 18},
                               {"time", property.time}};
        EXPECT_EQ(facts, expected);
    });
}

TEST_F(Attachments, AreToldInWordsToo) {
    const Outcome told = run({"attachment", utf8(make_file(L"a.txt", "four"))});
    EXPECT_EQ(told.exit_code, kYes);
    EXPECT_NE(told.output.find("a.txt: text/plain, 4 bytes, made 2"), std::string::npos) << told.output;
    EXPECT_NE(told.output.find("Z (local time)"), std::string::npos) << told.output;
}

TEST_F(Attachments, ThatAreMissingAreRefused) {
    const Outcome refused = run({"attachment", utf8(work_folder() + L"\\gone.txt")});
    EXPECT_EQ(refused.exit_code, kNo);
    EXPECT_NE(refused.output.find("no file"), std::string::npos) << refused.output;
}
