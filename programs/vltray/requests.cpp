#include "requests.h"

#include "VlSDK.h"
#include "file_hash.h"
#include "frame/bounded_text.h"
#include "frame/unique.h"
#include "protocol.h"
#include "remote_file.h"
#include "send_list.h"
#include "text.h"

#include <stddef.h>

namespace programs {

struct FileRequest {
    uint32_t message;
    const char* title;
    VlSendRecord* (*take)();
};

namespace {

VlSendRecord* take_files_list() { return VlCm_GetFilePathInfo(); }
VlSendRecord* take_image_list() { return VlCm_GetImagePathInfo(); }
VlSendRecord* take_contact_list() { return VlCm_GetContactInfo(); }

constexpr FileRequest kFileRequests[] = {
    {kPushFiles, "object push", take_files_list},
    {kTransferFiles, "file transfer", take_files_list},
    {kPrintFiles, "direct printing", take_files_list},
    {kSendImages, "imaging", take_image_list},
    {kContactsToPhone, "contacts to phone", take_contact_list},
};

const FileRequest* find_file_request(uint32_t message) {
    for (const FileRequest& request : kFileRequests) {
        if (request.message == message) return &request;
    }
    return nullptr;
}

// A list that a receiver of the library made: every record is freed on its own.
template <typename Record>
class TakenList {
public:
    explicit TakenList(Record* first) : first_(first) {}
    ~TakenList() {
        while (first_) {
            Record* record = first_;
            first_ = record->next;
            Btsdk_FreeMemory(record);
        }
    }
    TakenList(const TakenList&) = delete;
    TakenList& operator=(const TakenList&) = delete;

    [[nodiscard]] const Record* first() const { return first_; }
    [[nodiscard]] size_t size() const {
        size_t count = 0;
        for (const Record* record = first_; record; record = record->next) ++count;
        return count;
    }

private:
    Record* first_;
};

std::string taken_line(const char* title, size_t count) {
    if (count == 0) return std::string(title) + ": nothing to take";
    return std::string(title) + ": took " + std::to_string(count) + (count == 1 ? " record" : " records");
}

// The text as it came, printable: a shifted or spoilt record shows what is wrong with it.
std::string printable(std::string text) {
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < ' ') c = '?';
    }
    return utf8_from_narrow(text);
}

std::string shown_path(const VlSendRecord& record) {
    return printable({record.path, vl::bounded_length(record.path, sizeof record.path)});
}

// The property sheet in one line.
std::string sheet_line(const RemoteFile& file) {
    const RemoteFileTexts texts = texts_of(file);
    return "property sheet of \"" + printable(file.name) + "\": " + texts.type + ", " + texts.exact_size +
           ", " + texts.time + ", icon " + texts.icon_file + "," + std::to_string(texts.icon_index);
}

}  // namespace

void Requests::handle(uint32_t message, uint32_t parameter) {
    log_.line("relayed " + hex(message) + " parameter " + hex(parameter));
    if (const FileRequest* request = find_file_request(message)) {
        take_files(*request, parameter);
    } else if (message == kContactsToOutlook) {
        take_outlook_contacts();
    } else if (message == kUsePhoneConnection) {
        phones_.use(parameter);
    } else if (message == kEndPhoneConnection) {
        phones_.end(parameter);
    } else if (message == kShowFileProperty) {
        show_file_property();
    }
}

void Requests::take_files(const FileRequest& request, uint32_t device) {
    const TakenList<VlSendRecord> list(request.take());
    log_.line(taken_line(request.title, list.size()));
    for (const VlSendRecord* record = list.first(); record; record = record->next) {
        log_.line("record class " + hex(record->serviceClass) + " path " + shown_path(*record));
        std::wstring source = path_in_record(*record);
        if (source.empty()) {
            log_.line("failed " + shown_path(*record) + ": not a full path");
        } else {
            deliveries_.add({std::move(source), device, request.message == kSendImages});
        }
    }
}

// Contacts for Outlook have no device; their content is known to the sender and to Outlook only.
void Requests::take_outlook_contacts() const {
    const TakenList<VlOutlookContactRecord> list(VlCm_GetOutlookContactInfo());
    log_.line(taken_line("contacts to Outlook", list.size()));
    for (const VlOutlookContactRecord* record = list.first(); record; record = record->next) {
        log_.line("contact sha256 " + sha256_of_bytes(record->contact, sizeof record->contact));
    }
}

void Requests::show_file_property() const {
    const vl::UniqueSdkMemory block(VlCm_GetFTPFileData());
    const auto* record = static_cast<const VlRemoteFileRecord*>(block.get());
    if (record == nullptr) {
        log_.line("file property: nothing to take");
        return;
    }
    log_.line("file property: took the record, sha256 " + sha256_of_bytes(record, sizeof *record));
    log_.line(sheet_line(file_of(*record)));
}

}  // namespace programs
