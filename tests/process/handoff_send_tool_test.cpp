// The program that hands over one file at a time, known by its file name.
#include "handoff_test.h"

#include <string.h>

namespace {

class SendTool : public HandoffTest {
protected:
    // Sends under the given own path and gives the whole section.
    Bytes sent_as(const std::string& own_path, const RecordList& list) {
        own_name.answer([own_path](HMODULE, char* path, DWORD size) {
            const size_t length = own_path.size() < size ? own_path.size() + 1 : size;
            memcpy(path, own_path.c_str(), length);  // as on older systems: cut without a terminator
            return static_cast<DWORD>(length);
        });
        Bytes section;
        on_wake_up = [&] {
            const uint32_t size = word_at(read_section("SHARE_MEM_SENDFILE", 12), 4);
            section = read_section("SHARE_MEM_SENDFILE", size);
        };
        EXPECT_EQ(files().send(list.first(), 0), 0U);
        return section;
    }

    CallPatch<DWORD(HMODULE, char*, DWORD)> own_name{"GetModuleFileNameA", GetModuleFileNameA};
};

// The section of a record that holds only service class and path.
Bytes single_record(uint32_t service_class, const std::string& path) {
    Bytes record(1632);
    put_word(&record[4], service_class);
    std::copy(path.begin(), path.end(), record.begin() + 8);
    return section_image(kFreshState, 1644, 1, record);
}

TEST_F(SendTool, HandsOverServiceClassAndPathOfTheFirstRecord) {
    RecordList list(files(), 3, 0x1106);
    constexpr char kPath[] = "C:\\out\\photo.jpg";
    memcpy(list.record(0) + 8, kPath, sizeof kPath);
    EXPECT_TRUE(sent_as("C:\\Veltrin\\Veltrin Quill.exe", list) ==
                single_record(0x1106, "C:\\out\\photo.jpg"));
    EXPECT_EQ(std::get<0>(relay.calls().at(0)), 0x43050205U);
}

TEST_F(SendTool, IsKnownByItsFileNameAlone) {
    struct Row {
        const char* label;
        std::string path;
        uint32_t count;
    };
    const Row rows[] = {
        {"as written", "C:\\Veltrin\\Veltrin Quill.exe", 1},
        {"lower case", "C:\\Veltrin\\veltrin quill.exe", 1},
        {"upper case", "C:\\VELTRIN\\VELTRIN QUILL.EXE", 1},
        {"mixed case", "d:\\x\\vElTrIn QuIlL.eXe", 1},
        {"no backslash", "Veltrin Quill.exe", 1},
        {"in the root", "\\Veltrin Quill.exe", 1},
        {"slash is no backslash", "C:/Veltrin Quill.exe", 3},
        {"folder of that name", "C:\\Veltrin Quill.exe\\other.exe", 3},
        {"longer name", "C:\\My Veltrin Quill.exe", 3},
        {"longer end", "C:\\Veltrin Quill.exe2", 3},
        {"shorter", "C:\\Veltrin Quill.ex", 3},
        {"two blanks", "C:\\Veltrin  Quill.exe", 3},
        {"another program", "C:\\Veltrin\\VlTray.exe", 3},
        {"nothing", "", 3},
        {"at the very end of the buffer", std::string(241, 'x') + "\\Veltrin Quill.exe", 1},
        {"cut by one", std::string(242, 'x') + "\\Veltrin Quill.exe", 3},
        {"no room for the name", std::string(300, '\\') + "Veltrin Quill.exe", 3},
    };
    const RecordList list(files(), 3);
    for_each_row(rows, [&](const Row& row) { EXPECT_EQ(word_at(sent_as(row.path, list), 8), row.count); });
}

TEST_F(SendTool, AsksForItsOwnPathOf260Bytes) {
    const RecordList list(files(), 1);
    EXPECT_EQ(files().send(list.first(), 0), 0U);
    ASSERT_EQ(own_name.count(), 1U);
    EXPECT_EQ(std::get<0>(own_name.calls()[0]), nullptr);
    EXPECT_EQ(std::get<2>(own_name.calls()[0]), 260U);
}

TEST_F(SendTool, IsNobodyWhenThePathIsNotTold) {
    own_name.fail_nth(1, 0, ERROR_ACCESS_DENIED);
    const RecordList list(files(), 3);
    Bytes header;
    on_wake_up = [&] { header = read_section("SHARE_MEM_SENDFILE", 12); };
    EXPECT_EQ(files().send(list.first(), 0), 0U);
    EXPECT_EQ(word_at(header, 8), 3U);
}

TEST_F(SendTool, CutsThePathAt259Bytes) {
    for (const size_t length : Sizes{258, 259, 260, 1000}) {
        RecordList list(files(), 2, 0x1105);
        memset(list.record(0) + 8, 'p', length);
        list.record(0)[8 + length] = 0;
        const std::string path(std::min<size_t>(length, 259), 'p');
        EXPECT_TRUE(sent_as("Veltrin Quill.exe", list) == single_record(0x1105, path)) << length;
    }
}

TEST_F(SendTool, IsAskedForByTheFileSenderAlone) {
    for_each_row(list_channels(), [&](const ListChannel& channel) {
        if (&channel == &files()) return;
        const RecordList list(channel, 2);
        EXPECT_EQ(channel.send(list.first(), 0), 0U);
    });
    EXPECT_EQ(own_name.count(), 0U);
}

}  // namespace
