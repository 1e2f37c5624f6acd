#include "localctl_test.h"

#include "support/message_box_answerer.h"

#include <string.h>

#include <algorithm>

namespace localctl_test {

Lines operator+(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

Lines nested(const std::string& name, const Lines& inside) {
    return Lines{">512 " + name} + inside + Lines{"<512 " + name};
}

std::string line(const std::string& text) { return "=512 " + text; }

std::wstring text_of(unsigned id) {
    const HMODULE library = LoadLibraryA("Vl2Res.dll");
    wchar_t text[512] = L"";
    EXPECT_GT(LoadStringW(library, id, text, 512), 0) << id;
    FreeLibrary(library);
    return text;
}

std::wstring local_to_wide(const std::string& text) {
    wchar_t wide[512] = L"";
    MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, wide, 512);
    return wide;
}

std::string LocalControlTest::relayed(uint32_t message, unsigned value) {
    return "Btsdk_PostMessageToCtrlCenter(" + std::to_string(message) + ", " + std::to_string(value) +
           ") = 0";
}

void LocalControlTest::connect(unsigned device) {
    VlSim_Set(("/devices/" + std::to_string(device - 1) + "/connected").c_str(), "true");
}

void LocalControlTest::set_type(unsigned device, unsigned type) {
    VlSim_Set(("/devices/" + std::to_string(device - 1) + "/type").c_str(), std::to_string(type).c_str());
}

template <typename Show>
int MessageBoxes::meet(Box box, Show show) {
    int result = result_;
    if (!hidden_) {
        const bool asks = (box.type & MB_TYPEMASK) == MB_YESNO;
        support::MessageBoxAnswerer answerer(asks ? button_ : IDOK);
        result = show();
        EXPECT_TRUE(answerer.answered());
        box.shown_text = answerer.text();
        box.shown_caption = answerer.title();
    }
    seen_.push_back(box);
    return result;
}

MessageBoxes::MessageBoxes() {
    narrow_.answer([this](HWND owner, LPCSTR text, LPCSTR caption, UINT type) {
        return meet({false, owner, local_to_wide(text), local_to_wide(caption), type, L"", L""},
                    [=, this] { return narrow_.real(owner, text, caption, type); });
    });
    wide_.answer([this](HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
        return meet({true, owner, text, caption, type, L"", L""},
                    [=, this] { return wide_.real(owner, text, caption, type); });
    });
}

void MessageBoxes::show_none(int result) {
    hidden_ = true;
    result_ = result;
}

template <typename Char, typename Real>
int TextLoads::load(unsigned id, Char* buffer, int size, Real real) {
    const bool zeroed = std::all_of(buffer, buffer + size, [](Char each) { return each == 0; });
    seen_.push_back({sizeof(Char) != 1, id, size, zeroed});
    const auto found = texts_.find(id);
    if (found == texts_.end()) return real();
    const size_t length = std::min(found->second.size(), static_cast<size_t>(size) - 1);
    if (length == 0) return 0;
    std::transform(found->second.begin(), found->second.begin() + static_cast<ptrdiff_t>(length), buffer,
                   [](wchar_t each) { return static_cast<Char>(each); });
    buffer[length] = 0;
    return static_cast<int>(length);
}

TextLoads::TextLoads() {
    narrow_.answer([this](HINSTANCE library, UINT id, LPSTR buffer, int size) {
        return load(id, buffer, size, [=, this] { return narrow_.real(library, id, buffer, size); });
    });
    wide_.answer([this](HINSTANCE library, UINT id, LPWSTR buffer, int size) {
        return load(id, buffer, size, [=, this] { return wide_.real(library, id, buffer, size); });
    });
}

LanguageLibraryLoads::LanguageLibraryLoads() {
    patch_.answer([this](LPCSTR name) -> HMODULE {
        if (strcmp(name, "Vl2Res.dll") != 0) return patch_.real(name);
        ++loads_;
        if (!missing_) return patch_.real(name);
        SetLastError(ERROR_MOD_NOT_FOUND);
        return nullptr;
    });
}

}  // namespace localctl_test
