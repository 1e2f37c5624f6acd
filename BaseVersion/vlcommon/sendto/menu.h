// Where the links of the Send-To menu are, and what they point at.
#pragma once

#include "frame/settings.h"
#include "frame/wide_path.h"
#include "presentation/language_library.h"

namespace vl::sendto {

// Text of the ANSI code page as UTF-16; empty when it does not fit.
WidePath wide(const char* local);

// The user's Send-To folder in the ANSI code page; empty when the shell cannot tell.
PathBuffer menu_folder();
// A file of Windows' system folder; `rest` begins with a backslash. Empty when the shell cannot tell.
PathBuffer system_file(const char* rest);
PathBuffer send_program();

// The name of the suite's folder in the Send-To menu, as the language library has it.
struct FolderName {
    explicit FolderName(const LanguageLibrary& texts) { texts.load(kTextId, text); }

    static constexpr uint32_t kTextId = 667;
    char text[50] = {};
};

// `name` in `folder`. Empty when it does not fit, or when the name is none that stays in the folder:
// devices are free in their names.
WidePath file_in(const WidePath& folder, const wchar_t* name);

// The suite's folder in the menu `folder`, and the link to its shell namespace beside it.
WidePath send_folder(const WidePath& menu, const FolderName& name);
WidePath namespace_link(const WidePath& menu, const FolderName& name);

}  // namespace vl::sendto
