#include "arguments.h"

#include "text.h"

#include <shellapi.h>

namespace programs {

std::vector<std::string> arguments_last_first() {
    int count = 0;
    wchar_t** words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = count - 1; i > 0; --i) result.push_back(utf8(words[i]));
    LocalFree(words);
    return result;
}

}  // namespace programs
