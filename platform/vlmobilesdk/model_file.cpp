#include "model_file.h"

#include <stdio.h>
#include <windows.h>

#include <memory>
#include <nlohmann/json.hpp>

namespace vlmobile {
namespace {

using nlohmann::json;

constexpr DWORD kPathUnits = 32768;  // the longest path and the longest variable

std::wstring environment_text(const wchar_t* name) {
    std::wstring text(kPathUnits, L'\0');
    text.resize(GetEnvironmentVariableW(name, text.data(), kPathUnits));
    return text;
}

// With its closing backslash.
std::wstring module_folder() {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&module_folder), &module);
    std::wstring path(kPathUnits, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), kPathUnits));
    return path.substr(0, path.rfind(L'\\') + 1);
}

json parse_file(const std::wstring& path) {
    struct Closer {
        void operator()(FILE* file) const { fclose(file); }
    };
    const std::unique_ptr<FILE, Closer> file(_wfopen(path.c_str(), L"rb"));
    return file ? json::parse(file.get(), nullptr, /*allow_exceptions=*/false)
                : json(json::value_t::discarded);
}

// The member `key` of an object; null when there is none.
const json* member(const json& object, const char* key) {
    const auto found = object.find(key);  // of anything but an object: the end
    return found == object.end() ? nullptr : &*found;
}

std::string ansi_from_utf8(const std::string& text) {
    const int bytes = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');  // never more UTF-16 units than bytes
    const int units = MultiByteToWideChar(CP_UTF8, 0, text.data(), bytes, wide.data(), bytes);
    std::string ansi(static_cast<size_t>(units) * 4, '\0');
    ansi.resize(static_cast<size_t>(WideCharToMultiByte(CP_ACP, 0, wide.data(), units, ansi.data(),
                                                        static_cast<int>(ansi.size()), nullptr, nullptr)));
    return ansi;
}

bool read_text(const json* value, std::string& text) {
    if (value == nullptr || !value->is_string()) return false;
    text = ansi_from_utf8(*value->get_ptr<const json::string_t*>());
    return true;
}

bool read_names(const json* list, std::array<std::string, 2>& names) {
    if (list == nullptr || !list->is_array() || list->empty() || list->size() > names.size()) return false;
    size_t next = 0;
    for (const json& name : *list) {
        if (!read_text(&name, names[next++])) return false;
    }
    return true;
}

}  // namespace

std::wstring model_file() {
    const std::wstring named = environment_text(L"VLMOBILE_MODELS");
    return named.empty() ? module_folder() + L"mobile_models.json" : named;
}

std::optional<std::vector<Model>> read_models(const std::wstring& file, const char* series) {
    const json root = parse_file(file);
    const json* const list = member(root, series);
    if (list == nullptr || !list->is_array()) return std::nullopt;
    std::vector<Model> models(list->size());
    for (size_t i = 0; i < models.size(); ++i) {
        const json& entry = (*list)[i];
        if (!read_text(member(entry, "manufacturer"), models[i].manufacturer)) return std::nullopt;
        if (!read_names(member(entry, "models"), models[i].names)) return std::nullopt;
    }
    return models;
}

}  // namespace vlmobile
