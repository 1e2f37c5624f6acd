#include "texts.h"

namespace veltrin {

std::wstring text(UINT id) {
    constexpr int kRoom = 256;
    wchar_t buffer[kRoom];
    const int length = LoadStringW(GetModuleHandleW(nullptr), id, buffer, kRoom);
    return {buffer, static_cast<size_t>(length)};
}

std::wstring text(UINT id, const std::wstring& first, const std::wstring& second) {
    std::wstring result;
    const std::wstring format = text(id);
    for (size_t i = 0; i < format.size(); ++i) {
        const wchar_t next = i + 1 < format.size() ? format[i + 1] : L'\0';
        if (format[i] == L'%' && (next == L'1' || next == L'2')) {
            result += next == L'1' ? first : second;
            ++i;
        } else {
            result += format[i];
        }
    }
    return result;
}

}  // namespace veltrin
