#include "remote_path.h"

#include "vlcm/text.h"

#include <mbctype.h>

namespace vl::text {

// One walk with the runtime's own notion of lead bytes, as its character search _mbschr has it. The
// search itself is not called: that of some runtimes steps over the terminator behind a lead byte at
// the very end of the text.
void replace_separators(char* path, char from, char to) {
    for (char* at = path; *at != 0; ++at) {
        const auto byte = static_cast<unsigned char>(*at);
        if (byte >= 0x80 && _ismbblead(byte)) {  // no code page has lead bytes below
            if (*++at == 0) return;
        } else if (*at == from) {
            *at = to;
        }
    }
}

}  // namespace vl::text

using namespace vl;

extern "C" void VlCm_FormatFTPFilePath(char* path, int direction) {
    enum { kToRemote = 1, kToLocal = 2 };
    if (path == nullptr) return;
    if (direction == kToRemote) text::replace_separators(path, '\\', '/');
    if (direction == kToLocal) text::replace_separators(path, '/', '\\');
}
