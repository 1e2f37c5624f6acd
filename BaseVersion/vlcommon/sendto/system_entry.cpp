#include "system_entry.h"

#include "frame/link_file.h"
#include "menu.h"

namespace vl::sendto {
namespace {

// A file of the menu; empty when it does not fit.
PathBuffer menu_file(const char* menu, const char* name) {
    PathBuffer path;
    if (strlen(menu) + 1 + strlen(name) < kPathSize) path.append(menu).append("\\").append(name);
    return path;
}

bool points_at(const PathBuffer& path, const char* lower_case_target) {
    const LinkFile link;
    if (!link) return false;
    link.load(wide(path.text()).text());
    char target[kPathSize];
    link.read_target(target);
    CharLowerA(target);
    return strcmp(target, lower_case_target) == 0;
}

}  // namespace

void hide_system_entry(const char* menu) {
    PathBuffer program = system_file("\\fsquirt.exe");
    if (program.text()[0] == 0) return;
    CharLowerA(program.data());
    WIN32_FIND_DATAA entry;
    const UniqueFind listing(FindFirstFileA(menu_file(menu, "*.lnk").text(), &entry));
    if (!listing) return;
    do {
        const PathBuffer path = menu_file(menu, entry.cFileName);
        if (!points_at(path, program.text())) continue;
        SetFileAttributesA(path.text(), entry.dwFileAttributes | FILE_ATTRIBUTE_HIDDEN);
        return;
    } while (FindNextFileA(listing.get(), &entry));
}

}  // namespace vl::sendto
