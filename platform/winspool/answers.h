// Lists as the spooler gives them: the records in front, their texts behind, all in the caller's block.
#pragma once

#include "ansi_text.h"
#include "document.h"

#include <windows.h>

#include <cstring>

namespace vlspool {

// The texts behind the records.
class Texts {
public:
    // Null: nothing is written, only counted.
    explicit Texts(BYTE* at) : at_(reinterpret_cast<char*>(at)) {}

    // Places a member of an item as ANSI text.
    char* place(const json& item, const char* member, const char* otherwise = "") {
        const std::string text = ansi_text(item.value(member, otherwise));
        char* const where = at_ ? at_ + used_ : nullptr;
        if (where) std::memcpy(where, text.c_str(), text.size() + 1);
        used_ += text.size() + 1;
        return where;
    }
    [[nodiscard]] size_t used() const { return used_; }

private:
    char* at_;
    size_t used_ = 0;
};

// The block that the caller gave.
struct Room {
    BYTE* block;
    DWORD size;
    DWORD* needed;
};

// Makes a record of each item. With too little room it only tells how much is needed.
template <typename Items, typename Fill>
BOOL give(const Items& items, const Room& room, Fill fill) {
    using Info = decltype(fill(*items.begin(), std::declval<Texts&>()));
    Texts counted(nullptr);
    for (const json& item : items) static_cast<void>(fill(item, counted));
    const size_t records = items.size() * sizeof(Info);
    *room.needed = static_cast<DWORD>(records + counted.used());
    if (room.size < *room.needed) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    Texts texts(room.block + records);
    size_t at = 0;
    for (const json& item : items) {
        const Info info = fill(item, texts);
        std::memcpy(room.block + at, &info, sizeof info);
        at += sizeof info;
    }
    return TRUE;
}

template <typename Fill>
BOOL give_list(const json& items, const Room& room, DWORD* count, Fill fill) {
    *count = 0;
    if (!give(items, room, fill)) return FALSE;
    *count = static_cast<DWORD>(items.size());
    return TRUE;
}

}  // namespace vlspool
